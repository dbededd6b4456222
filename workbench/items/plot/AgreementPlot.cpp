// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/AgreementPlot.h"

#include "items/plot/PlotContent.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace Workbench {
namespace {

constexpr int namedSites = 3;
constexpr int labelSize = 11; // pixels

QCPRange withMargin(double low, double high)
{
    const double beyond = std::max(0.06 * (high - low), 1e-3);
    return {low - beyond, high + beyond};
}

void setUp(QCPAxisRect *rect, const QString &bottom, const QString &left)
{
    rect->setupFullAxesBox(true);
    for (QCPAxis *axis : {rect->axis(QCPAxis::atBottom), rect->axis(QCPAxis::atLeft)}) {
        axis->setLabelFont(PlotStyle::font(labelSize));
        axis->setTickLabelFont(PlotStyle::font(labelSize));
        axis->grid()->setVisible(false);
        axis->ticker()->setTickCount(5);
    }
    rect->axis(QCPAxis::atBottom)->setLabel(bottom);
    rect->axis(QCPAxis::atLeft)->setLabel(left);
}

void addLine(QCPAxisRect *rect, const QCPRange &range, double slope)
{
    auto *line = new QCPGraph(rect->axis(QCPAxis::atBottom), rect->axis(QCPAxis::atLeft));
    line->setPen(QPen(Qt::gray, 1, slope == 0 ? Qt::SolidLine : Qt::DashLine));
    line->setData({range.lower, range.upper}, {slope * range.lower, slope * range.upper});
}

void addPoints(QCPAxisRect *rect, const QVector<double> &x, const QVector<double> &y)
{
    auto *points = new QCPGraph(rect->axis(QCPAxis::atBottom), rect->axis(QCPAxis::atLeft));
    points->setLineStyle(QCPGraph::lsNone);
    points->setScatterStyle({QCPScatterStyle::ssDisc, PlotStyle::entryColor(0), 6});
    points->setData(x, y);
}

QCPItemText *addName(QCustomPlot *plot, QCPAxisRect *rect, double x, double y, const QString &name)
{
    auto *text = new QCPItemText(plot);
    text->position->setAxisRect(rect);
    text->position->setAxes(rect->axis(QCPAxis::atBottom), rect->axis(QCPAxis::atLeft));
    text->setClipAxisRect(rect);
    text->position->setCoords(x, y);
    text->setPadding(QMargins(6, 0, 6, 0));
    text->setFont(PlotStyle::font(labelSize - 1));
    text->setText(name);
    return text;
}

} // namespace

AgreementPlot::AgreementPlot(Looks looks, QWidget *parent) : QCustomPlot(parent), m_looks(looks)
{
    connect(this, &QCustomPlot::afterLayout, this, &AgreementPlot::placeNames);
    setComparisons({});
}

QSize AgreementPlot::fullSize() const
{
    return {std::max(1, plotLayout()->columnCount()) * 420, 520};
}

void AgreementPlot::setComparisons(const std::vector<NucleusComparison> &comparisons)
{
    m_marks.clear();
    m_names.clear();
    m_rects.clear();
    m_pairs = comparisons.empty() ? std::vector<SitePair>() : comparisons.front().agreement.pairs;
    clearPlottables();
    clearItems();
    plotLayout()->clear();
    plotLayout()->simplify();
    for (std::size_t i = 0; i < comparisons.size(); ++i)
        addColumn(int(i), comparisons[i]);
    if (!comparisons.empty())
        plotLayout()->setRowStretchFactors({0.01, m_looks == Full ? 2.0 : 1.3, 1});
    plotLayout()->setRowSpacing(m_looks == Full ? 5 : 0);
    replot(rpQueuedReplot);
}

void AgreementPlot::setMarkedSite(int site)
{
    for (QCPGraph *mark : m_marks)
        removePlottable(mark);
    m_marks.clear();
    const auto pair = std::find_if(m_pairs.begin(), m_pairs.end(), [&](const SitePair &p) { return p.site == site; });
    if (pair != m_pairs.end() && m_rects.size() == 2) {
        const double values[] = {pair->measured, pair->difference()};
        for (std::size_t i = 0; i < 2; ++i) {
            auto *mark = new QCPGraph(m_rects[i]->axis(QCPAxis::atBottom), m_rects[i]->axis(QCPAxis::atLeft));
            mark->setLineStyle(QCPGraph::lsNone);
            mark->setScatterStyle({QCPScatterStyle::ssCircle, PlotStyle::entryColor(1), 12});
            mark->setData({pair->calculated}, {values[i]});
            m_marks.push_back(mark);
        }
    }
    replot(rpQueuedReplot);
}

void AgreementPlot::addColumn(int column, const NucleusComparison &comparison)
{
    const Agreement &agreement = comparison.agreement;
    QVector<double> calculated, measured, differences;
    for (const SitePair &pair : agreement.pairs) {
        calculated.append(pair.calculated);
        measured.append(pair.measured);
        differences.append(pair.difference());
    }
    const auto [lowest, highest] = std::minmax_element(calculated.begin(), calculated.end());
    const auto [least, most] = std::minmax_element(measured.begin(), measured.end());
    const QCPRange shifts = withMargin(std::min(*lowest, *least), std::max(*highest, *most));
    const double worst = std::max(std::abs(agreement.largest), 1e-3);

    const QString title =
        tr("%1: %2, RMSD %3 ppm")
            .arg(comparison.nucleus, comparison.pairing.text(), QString::number(agreement.rmsd, 'f', 2));
    const bool isFull = m_looks == Full;
    auto *heading =
        new QCPTextElement(this, isFull ? title : QString(), PlotStyle::font(isFull ? labelSize + 1 : 1, true));
    auto *upper = new QCPAxisRect(this), *lower = new QCPAxisRect(this);
    plotLayout()->addElement(0, column, heading);
    plotLayout()->addElement(1, column, upper);
    plotLayout()->addElement(2, column, lower);
    if (column == 0)
        m_rects = {upper, lower};
    setUp(upper, QString(), isFull ? tr("Measured, ppm") : tr("Measured"));
    setUp(lower, tr("Calculated, ppm"), isFull ? tr("Difference, ppm") : tr("Difference"));
    auto *margins = new QCPMarginGroup(this);
    upper->setMarginGroup(QCP::msLeft | QCP::msRight, margins);
    lower->setMarginGroup(QCP::msLeft | QCP::msRight, margins);
    upper->axis(QCPAxis::atBottom)->setTickLabels(false);
    if (!isFull) {
        // The height is for points, and for few numbers beside them.
        for (QCPAxisRect *rect : {upper, lower})
            rect->setMinimumMargins(QMargins(15, 4, 15, 4));
        upper->axis(QCPAxis::atLeft)->ticker()->setTickCount(3);
        lower->axis(QCPAxis::atLeft)->ticker()->setTickCount(3);
    }

    for (QCPAxisRect *rect : {upper, lower})
        rect->axis(QCPAxis::atBottom)->setRange(shifts);
    upper->axis(QCPAxis::atLeft)->setRange(shifts);
    lower->axis(QCPAxis::atLeft)->setRange(-1.25 * worst, 1.25 * worst);
    addLine(upper, shifts, 1);
    addLine(lower, shifts, 0);
    addPoints(upper, calculated, measured);
    addPoints(lower, calculated, differences);

    std::vector<std::size_t> order(agreement.pairs.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return std::abs(agreement.pairs[a].difference()) > std::abs(agreement.pairs[b].difference());
    });
    order.resize(std::min<std::size_t>(order.size(), namedSites));
    for (std::size_t i : order) {
        const SitePair &pair = agreement.pairs[i];
        m_names.push_back(
            addName(this, lower, pair.calculated, pair.difference(), comparison.sites[std::size_t(pair.site)].name));
    }
}

/// Each name on the side of its point that looks into the plot, else on the other one; what would lie on another name
/// is left out.
void AgreementPlot::placeNames()
{
    std::vector<QRectF> taken;
    for (QCPItemText *name : m_names) {
        const QRectF room = name->clipAxisRect()->rect();
        const QPointF at = name->position->pixelPosition();
        QRectF box({}, QFontMetricsF(name->font()).size(0, name->text()));
        const double padding = name->padding().left();
        box.setWidth(box.width() + 2 * padding);
        const auto isFree = [&](Qt::Alignment side) {
            box.moveCenter(at);
            side == Qt::AlignLeft ? box.moveLeft(at.x()) : box.moveRight(at.x());
            return box.left() >= room.left() && box.right() <= room.right()
                && std::none_of(taken.begin(), taken.end(), [&](const QRectF &other) { return other.intersects(box); });
        };
        const bool isRight = at.x() > room.center().x();
        const Qt::Alignment inner = isRight ? Qt::AlignRight : Qt::AlignLeft;
        const Qt::Alignment outer = isRight ? Qt::AlignLeft : Qt::AlignRight;
        const Qt::Alignment side = isFree(inner) ? inner : outer;
        name->setVisible(isFree(side));
        name->setPositionAlignment(side | Qt::AlignVCenter);
        if (name->visible())
            taken.push_back(box);
    }
}

} // namespace Workbench

#include "moc_AgreementPlot.cpp"
