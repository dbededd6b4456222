// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PeakLabelBand.h"

#include "items/plot/LabelPlacement.h"
#include "items/plot/PlotContent.h"

#include <cmath>

namespace Workbench {

namespace {

constexpr int bandFontSize = 10;
constexpr double lineSpacing = 12; // pixels between neighbouring texts
constexpr double treeHeight = 16; // the bent part of the lines
constexpr int mostLeaders = 30; // more lines down to the peaks would hide the curve
constexpr double mostOfHeight = 1.0 / 3;
constexpr double around = 6; // pixels about the text

} // namespace

PeakLabelBand::PeakLabelBand(QCustomPlot *plot, QCPAxis *ppmAxis, QCPAxis *intensityAxis)
    : QCPLayoutElement(plot), m_ppmAxis(ppmAxis), m_intensityAxis(intensityAxis)
{
    setMinimumMargins(QMargins(0, 0, 0, 0));
    setAutoMargins(QCP::msLeft | QCP::msRight);
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, 0);
}

void PeakLabelBand::setPeaks(const QList<Peak> &peaks)
{
    m_peaks = peaks;
    fitHeight();
}

QString PeakLabelBand::ppmText(const Label &label) const
{
    return QString::number(label.ppm, 'f', m_ppmAxis && m_ppmAxis->range().size() > 50 ? 1 : 2);
}

double PeakLabelBand::longestText() const
{
    return std::max(0.0, parentPlot()->viewport().height() * mostOfHeight - treeHeight - around);
}

QString PeakLabelBand::text(const Label &label) const
{
    const QString ppm = ppmText(label);
    if (label.shared.hasName())
        return label.shared.text() + QStringLiteral("  ") + ppm;
    // Measured peaks have no names; one that stands for several sites says so.
    const qsizetype count = label.shared.peaks().size();
    return count > 1 ? ppm + QStringLiteral(" \u00d7%1").arg(count) : ppm;
}

QString PeakLabelBand::fittedText(const Label &label, const QFontMetricsF &metrics) const
{
    // Names can be shortened, numbers cannot: 170.2 without its 1 is another shift.
    const QString whole = text(label);
    if (!label.shared.hasName() || metrics.horizontalAdvance(whole) <= longestText() + 1)
        return whole;
    const QString name = label.shared.text(), number = QStringLiteral("  ") + ppmText(label);
    const auto isEnd = [](QChar c) { return c == u' ' || c == u','; };
    const QString first = QString(name.cbegin(), std::find_if(name.cbegin(), name.cend(), isEnd) - name.cbegin());
    const QString shortened = first + QChar(0x2026) + number;
    return metrics.horizontalAdvance(shortened) <= longestText() + 1 ? shortened : number.trimmed();
}

QList<PeakLabelBand::Label> PeakLabelBand::labels() const
{
    if (!m_ppmAxis || m_ppmAxis->axisRect()->width() <= 0)
        return {};
    QList<Label> all;
    for (const Peak &peak : m_peaks) {
        if (m_ppmAxis->range().contains(peak.ppm)) {
            all.append({m_ppmAxis->coordToPixel(peak.ppm), 0.0, peak.top, {}, peak.ppm, peak.color});
            all.last().shared.add(peak.id, peak.label);
        }
    }
    std::stable_sort(all.begin(), all.end(), [](const Label &a, const Label &b) { return a.x < b.x; });
    QList<Label> merged;
    for (const Label &label : std::as_const(all)) {
        const bool joins = !merged.isEmpty() && label.x - merged.last().x < SharedLabel::distance
            && label.color == merged.last().color;
        if (!joins) {
            merged.append(label);
            continue;
        }
        merged.last().shared.add(label.shared);
        merged.last().top = std::max(merged.last().top, label.top);
    }
    const qsizetype room = qsizetype(m_ppmAxis->axisRect()->width() / lineSpacing);
    while (merged.size() > room)
        merged.erase(std::min_element(merged.begin(), merged.end(),
                                      [](const Label &a, const Label &b) { return a.top < b.top; }));
    std::vector<double> wanted;
    for (const Label &label : std::as_const(merged))
        wanted.push_back(label.x);
    const QRect area = m_ppmAxis->axisRect()->rect();
    const auto placed =
        LabelPlacement::spread(wanted, lineSpacing, area.left() + lineSpacing / 2, area.right() - lineSpacing / 2);
    for (qsizetype i = 0; i < merged.size(); ++i)
        merged[i].placed = placed[size_t(i)];
    return merged;
}

QStringList PeakLabelBand::visibleTexts() const
{
    QStringList texts;
    for (const Label &label : labels())
        texts.append(text(label));
    return texts;
}

QList<LabelArea> PeakLabelBand::areas() const
{
    QList<LabelArea> areas;
    const QFontMetricsF metrics(PlotStyle::font(bandFontSize));
    const double foot = m_ppmAxis ? m_ppmAxis->axisRect()->top() - treeHeight - 2 : 0.0;
    for (const Label &label : labels()) {
        const double length = std::min(metrics.horizontalAdvance(text(label)), longestText()) + 2;
        areas.append({QRectF(label.placed - lineSpacing / 2, foot - length, lineSpacing, length), label.shared.peaks(),
                      (label.shared.fullText() + QStringLiteral("  ") + ppmText(label)).trimmed()});
    }
    return areas;
}

void PeakLabelBand::fitHeight()
{
    const QFontMetricsF metrics(PlotStyle::font(bandFontSize));
    double longest = 0;
    for (const QString &text : visibleTexts())
        longest = std::max(longest, metrics.horizontalAdvance(text));
    longest = std::min(longest, longestText());
    const int height = longest > 0 ? int(std::ceil(longest + treeHeight + around)) : 8;
    setMinimumSize(0, height);
    setMaximumSize(QWIDGETSIZE_MAX, height);
}

QRect PeakLabelBand::clipRect() const
{
    // The lines reach down into the axis rect.
    return m_ppmAxis ? rect().united(m_ppmAxis->axisRect()->rect()) : rect();
}

void PeakLabelBand::applyDefaultAntialiasingHint(QCPPainter *painter) const
{
    painter->setAntialiasing(true);
}

void PeakLabelBand::draw(QCPPainter *painter)
{
    if (!m_ppmAxis || !m_intensityAxis)
        return;
    const QRect area = m_ppmAxis->axisRect()->rect();
    const double foot = area.top();
    const double head = foot - treeHeight;
    painter->setFont(PlotStyle::font(bandFontSize));
    const QFontMetricsF metrics(painter->font());
    const QList<Label> shown = labels();
    for (const Label &label : shown) {
        const QColor lineColor(0x90, 0x96, 0x9e);
        painter->setPen(QPen(lineColor, 0.7));
        painter->drawLine(QPointF(label.placed, head), QPointF(label.placed, head + 4));
        painter->drawLine(QPointF(label.placed, head + 4), QPointF(label.x, foot - 3));
        if (shown.size() <= mostLeaders) {
            painter->setPen(QPen(lineColor, 0.7, Qt::DotLine));
            const double apex = std::clamp(m_intensityAxis->coordToPixel(label.top) - 2, foot, double(area.bottom()));
            painter->drawLine(QPointF(label.x, foot - 3), QPointF(label.x, apex));
        }

        painter->setPen(label.color);
        painter->save();
        painter->translate(label.placed + metrics.ascent() / 2 - 1, head - 3);
        painter->rotate(-90);
        painter->drawText(QPointF(0, 0), fittedText(label, metrics));
        painter->restore();
    }
}

} // namespace Workbench

#include "moc_PeakLabelBand.cpp"
