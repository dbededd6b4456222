// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PlotContent.h"

#include "data/Error.h"

#include <QCoreApplication>

#include <cmath>

namespace Workbench {

QString PlotContent::ppmText(const QCPAxis *axis, double ppm)
{
    const int pixels = axis->orientation() == Qt::Horizontal ? axis->axisRect()->width() : axis->axisRect()->height();
    const double resolution = axis->range().size() / std::max(1, pixels);
    const int decimals = std::clamp(int(std::ceil(-std::log10(std::max(resolution, 1e-6)))), 1, 5);
    return Texts::tr("%1 ppm").arg(QString::number(ppm, 'f', decimals));
}

namespace PlotStyle {

QFont font(int pixelSize, bool bold)
{
    QFont font;
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    return font;
}

QColor entryColor(int n)
{
    // Dark enough for thin lines on white, apart from one another in brightness too.
    static const QColor colors[] = {QColor(0x1b, 0x4f, 0x9c), QColor(0xc6, 0x28, 0x28), QColor(0x2e, 0x7d, 0x32),
                                    QColor(0xd8, 0x6c, 0x00), QColor(0x6a, 0x1b, 0x9a), QColor(0x00, 0x7c, 0x8a)};
    return colors[size_t(n) % std::size(colors)];
}

void setUpAxis(QCPAxis *axis, const QString &label)
{
    axis->setVisible(true);
    axis->setTicks(true);
    axis->setTickLabels(true);
    axis->setLabel(label);
    axis->setLabelFont(font(12));
    axis->setTickLabelFont(font(11));
    axis->setLabelColor(Qt::black);
    axis->setTickLabelColor(Qt::black);
    axis->setBasePen(QPen(Qt::black, 1));
    axis->setTickPen(QPen(Qt::black, 1));
    axis->setSubTickPen(QPen(Qt::black, 0.6));
    axis->setTickLengthIn(0);
    axis->setSubTickLengthIn(0);
    axis->setTickLengthOut(5);
    axis->setSubTickLengthOut(3);
    axis->setPadding(3);
    axis->setLabelPadding(3);
    axis->grid()->setVisible(false);
}

void fitTicks(QCPAxis *axis)
{
    const QRect area = axis->axisRect()->rect();
    const int count = axis->orientation() == Qt::Horizontal ? area.width() / 75 : area.height() / 35;
    axis->ticker()->setTickCount(std::clamp(count, 2, 15));
}

void setUpPlainAxis(QCPAxis *axis)
{
    setUpAxis(axis, QString());
    axis->setTicks(false);
    axis->setTickLabels(false);
    axis->setPadding(0);
}

QCPLegend *makeLegend(QCustomPlot *plot, const QList<QCPAbstractPlottable *> &plottables,
                      const QCPAbstractPlottable *emphasised)
{
    auto *legend = new QCPLegend;
    legend->setFillOrder(QCPLayoutGrid::foColumnsFirst);
    plot->plotLayout()->insertRow(0);
    plot->plotLayout()->addElement(0, plot->plotLayout()->columnCount() - 1, legend);
    legend->setLayer(QStringLiteral("legend"));
    legend->setBorderPen(Qt::NoPen);
    legend->setBrush(Qt::white);
    legend->setTextColor(Qt::black);
    legend->setFont(font(11));
    // As high as a line of text: the legend does not count descenders that reach below its icons.
    legend->setIconSize(22, 16);
    for (QCPAbstractPlottable *plottable : plottables) {
        plottable->addToLegend(legend);
        if (plottable == emphasised)
            legend->itemWithPlottable(plottable)->setFont(font(11, true));
    }
    plot->plotLayout()->setRowStretchFactor(0, 0.001);
    return legend;
}

} // namespace PlotStyle

} // namespace Workbench
