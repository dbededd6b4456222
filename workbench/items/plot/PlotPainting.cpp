// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PlotPainting.h"

#include "items/plot/CustomPlot.h"

#include <QPicture>

namespace Workbench {

void paintPlot(QCustomPlot &plot, QPainter *painter, const QRectF &target)
{
    // The library draws through a painter class of its own, so it draws into a picture, which is then played.
    QPicture picture;
    {
        QCPPainter recorder;
        recorder.begin(&picture);
        recorder.setMode(QCPPainter::pmVectorized);
        recorder.setMode(QCPPainter::pmNoCaching);
        recorder.setMode(QCPPainter::pmNonCosmetic);
        plot.toPainter(&recorder, qRound(target.width()), qRound(target.height()));
    }
    painter->save();
    painter->setClipRect(target, Qt::IntersectClip);
    painter->translate(target.topLeft());
    // A picture is played at the device's resolution, on top of the painter's scale; ours is in scene units.
    painter->scale(qreal(picture.logicalDpiX()) / painter->device()->logicalDpiX(),
                   qreal(picture.logicalDpiY()) / painter->device()->logicalDpiY());
    painter->drawPicture(0, 0, picture);
    painter->restore();
}

} // namespace Workbench
