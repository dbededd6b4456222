// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/IntensityMap.h"

namespace Workbench {

void IntensityMap::draw(QCPPainter *painter)
{
    if (data()->isEmpty() || !keyAxis() || !valueAxis())
        return;
    if (data()->keySize() < 2 || data()->valueSize() < 2)
        return;
    updateMapImage();
    // Ranges reach from the centre of the first cell to the centre of the last.
    const QCPRange keys = data()->keyRange();
    const QCPRange values = data()->valueRange();
    const double halfKey = keys.size() / (data()->keySize() - 1) / 2;
    const double halfValue = values.size() / (data()->valueSize() - 1) / 2;
    const QRectF target = QRectF(coordsToPixels(keys.lower - halfKey, values.lower - halfValue),
                                 coordsToPixels(keys.upper + halfKey, values.upper + halfValue))
                              .normalized();
    const QImage image = mMapImage.convertToFormat(QImage::Format_RGB32)
                             .mirrored(keyAxis()->rangeReversed(), valueAxis()->rangeReversed());
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform, mInterpolate);
    painter->drawImage(target, image);
    painter->restore();
}

} // namespace Workbench

#include "moc_IntensityMap.cpp"
