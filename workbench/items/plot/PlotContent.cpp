// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PlotContent.h"

#include "data/Error.h"
#include "items/plot/HertzTicker.h"

#include <QCoreApplication>

#include <cmath>
#include <numeric>
#include <vector>

namespace Workbench {

QString PlotContent::ppmText(const QCPAxis *axis, double ppm)
{
    const int pixels = axis->orientation() == Qt::Horizontal ? axis->axisRect()->width() : axis->axisRect()->height();
    const double resolution = axis->range().size() / std::max(1, pixels);
    const int decimals = std::clamp(int(std::ceil(-std::log10(std::max(resolution, 1e-6)))), 1, 5);
    return Texts::tr("%1 ppm").arg(QString::number(ppm, 'f', decimals));
}

const PlotEntry &shownEntry(const QList<PlotEntry> &entries)
{
    const auto it = std::find_if(entries.begin(), entries.end(), [](const PlotEntry &entry) { return entry.shown; });
    return it == entries.end() ? entries.first() : *it;
}

namespace PlotStyle {

QFont font(int pixelSize, bool bold)
{
    QFont font;
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    return font;
}

namespace {

struct Named {
    QColor color;
    const char *name;
};
const Named palette[] = {{QColor(0x00, 0x72, 0xb2), QT_TRANSLATE_NOOP("Texts", "Blue")},
                         {QColor(0xd5, 0x5e, 0x00), QT_TRANSLATE_NOOP("Texts", "Vermilion")},
                         {QColor(0x00, 0x9e, 0x73), QT_TRANSLATE_NOOP("Texts", "Green")},
                         {QColor(0xcc, 0x79, 0xa7), QT_TRANSLATE_NOOP("Texts", "Purple")},
                         {QColor(0xe6, 0x9f, 0x00), QT_TRANSLATE_NOOP("Texts", "Orange")},
                         {QColor(0x56, 0xb4, 0xe9), QT_TRANSLATE_NOOP("Texts", "Sky blue")},
                         {QColor(0x00, 0x00, 0x00), QT_TRANSLATE_NOOP("Texts", "Black")}};

} // namespace

QColor entryColor(int n)
{
    const QColor color = palette[size_t(n) % std::size(palette)].color;
    // Beyond the palette darker, then lighter ones, so that 21 in a row are told apart; there is no darker black.
    switch (size_t(n) / std::size(palette) % 3) {
    case 1:
        return color.value() == 0 ? QColor(0x60, 0x60, 0x60) : color.darker(170);
    case 2:
        return color.value() == 0 ? QColor(0xa0, 0xa0, 0xa0) : color.lighter(150);
    default:
        return color;
    }
}

QStringList colorNames()
{
    QStringList names;
    for (const Named &named : palette)
        names.append(Texts::tr(named.name));
    return names;
}

void setUpShiftAxis(QCPAxis *axis, const SpectrumAxis &spectrum, bool hertz)
{
    if (!hertz || spectrum.frequency <= 0)
        return setUpAxis(axis, spectrum.label());
    setUpAxis(axis, Texts::tr("%1 frequency from 0 ppm / Hz").arg(spectrum.nucleus()).trimmed());
    axis->setTicker(QSharedPointer<HertzTicker>::create(spectrum.frequency));
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

namespace {

/// As many names in a row as there is room for.
class WrappedLegend : public QCPLegend {
public:
    WrappedLegend() { setFillOrder(QCPLayoutGrid::foColumnsFirst); }

    void update(UpdatePhase phase) override
    {
        if (phase == upPreparation) {
            const int room =
                parentPlot()->viewport().right() - outerRect().left() - margins().left() - margins().right();
            const std::vector<int> widths = itemWidths();
            int columns = std::max(1, int(widths.size()));
            while (columns > 1 && widthIn(columns, widths) > room)
                --columns;
            if (columns != wrap()) {
                setWrap(columns);
                setFillOrder(QCPLayoutGrid::foColumnsFirst); // which arranges them anew
            }
        }
        QCPLegend::update(phase);
    }

private:
    /// Of the items in their order. The last row may have places without one, which the library counts as items.
    std::vector<int> itemWidths() const
    {
        std::vector<int> widths;
        for (int i = 0; i < itemCount(); ++i) {
            if (const QCPAbstractLegendItem *shown = item(i))
                widths.push_back(shown->minimumOuterSizeHint().width());
        }
        return widths;
    }

    int widthIn(int columns, const std::vector<int> &items) const
    {
        std::vector<int> widths(std::size_t(columns), 0);
        for (std::size_t i = 0; i < items.size(); ++i)
            widths[i % widths.size()] = std::max(widths[i % widths.size()], items[i]);
        return std::accumulate(widths.begin(), widths.end(), (columns - 1) * columnSpacing());
    }
};

} // namespace

QCPLegend *makeLegend(QCustomPlot *plot, const QList<QCPAbstractPlottable *> &plottables,
                      const QCPAbstractPlottable *emphasised)
{
    auto *legend = new WrappedLegend;
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
