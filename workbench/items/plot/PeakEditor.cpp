// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/PeakEditor.h"

#include "analysis/PeakPicking.h"
#include "items/plot/NmrPlot.h"
#include "items/plot/PlotContent.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <cmath>

namespace Workbench {

namespace {

constexpr double markReach = 6; // pixels from a peak that still mean it
constexpr double snapReach = 8; // pixels from the cursor in which a top is looked for
constexpr double markHeight = 9;

const QColor markColor(0x2e, 0x7d, 0x32);
const QColor chosenColor(0xd8, 0x43, 0x15);

bool isSnapping(const QMouseEvent *event)
{
    return !event->modifiers().testFlag(Qt::ShiftModifier);
}

} // namespace

PeakEditor::PeakEditor(NmrData *data, NmrPlot *plot, QObject *parent) : QObject(parent), m_data(data), m_plot(plot)
{
    connect(data, &NmrData::entriesChanged, this, &PeakEditor::follow);
    connect(data, &NmrData::entryChanged, this, &PeakEditor::follow);
    connect(data, &NmrData::activeEntryChanged, this, &PeakEditor::follow);
}

void PeakEditor::follow()
{
    if (!m_active)
        return;
    if (target() != m_edited)
        setActive(!target().isNull());
    else if (!m_storing)
        Q_EMIT reported(counts(*m_data)); // undo changes them too
}

void PeakEditor::setActive(bool active)
{
    if (active && target().isNull()) {
        Q_EMIT reported(m_data->entryIds().isEmpty()
                            ? tr("There is no spectrum whose peaks could be edited")
                            : tr("A simulated spectrum's peaks follow from the calculation and cannot be edited: add "
                                 "a measured spectrum"));
        active = false;
    }
    m_chosen.clear();
    m_pressed = false;
    m_dragged.reset();
    if (active) {
        Q_EMIT reported(tr("Editing the peaks of %1: click adds (Shift: right there), drag moves, Delete or right "
                           "click removes, Ctrl+click counts once more, Esc ends")
                            .arg(m_data->entryName(target())));
    }
    const bool changed = active != m_active;
    m_active = active;
    m_edited = active ? target() : QUuid();
    m_plot->marker().setMode(PlotMarker::Mode::None); // one thing at a time
    if (active)
        m_plot->setCursor(Qt::CrossCursor);
    m_plot->update();
    if (changed && !active)
        Q_EMIT reported(counts(*m_data));
    // Also when it stays off: a button that was pressed has to come up again.
    Q_EMIT activeChanged(active);
}

QUuid PeakEditor::target() const
{
    const auto isEditable = [this](const QUuid &id) {
        // What is not drawn cannot be edited; a mere peak list is drawn with everything.
        const Spectrum &measured = m_data->spectrum(id);
        return !id.isNull() && !m_data->isSimulated(id)
            && (measured.isEmpty() || measured.dimensions() == m_data->shownSpectrum().dimensions());
    };
    if (isEditable(m_data->activeEntryId()))
        return m_data->activeEntryId();
    const QList<QUuid> ids = m_data->entryIds();
    const auto first = std::find_if(ids.cbegin(), ids.cend(), isEditable);
    return first == ids.cend() ? QUuid() : *first;
}

QString PeakEditor::counts(const NmrData &data)
{
    qsizetype measured = 0, simulated = 0;
    for (const QUuid &id : data.entryIds())
        (data.isSimulated(id) ? simulated : measured) += data.spectrum(id).peaks.size();
    return tr("Number of peaks: %1 measured, %2 simulated").arg(measured).arg(simulated);
}

const Spectrum &PeakEditor::spectrum() const
{
    return m_data->spectrum(target());
}

PlotContent *PeakEditor::content() const
{
    return m_plot->content();
}

std::optional<PeakMark> PeakEditor::markAt(const QPointF &pixel) const
{
    std::optional<PeakMark> nearest;
    double least = markReach;
    for (const PeakMark &mark : content() ? content()->peakMarks(target()) : QList<PeakMark>()) {
        // The mark sits above its top.
        const double y = std::clamp(pixel.y(), mark.top.y() - markHeight - 2, std::max(mark.top.y(), mark.foot));
        const double distance = std::hypot(pixel.x() - mark.top.x(), pixel.y() - y);
        if (distance < least) {
            least = distance;
            nearest = mark;
        }
    }
    return nearest;
}

QList<QUuid> PeakEditor::together(const SpectrumPeak &peak) const
{
    QList<QUuid> ids;
    for (const SpectrumPeak &other : spectrum().peaks) {
        if (other.f2 == peak.f2 && other.f1 == peak.f1)
            ids.append(other.id);
    }
    return ids;
}

PeakEditor::Place PeakEditor::placeAt(const QPointF &pixel, bool snaps) const
{
    const QList<QCPAxis *> axes = content()->ppmAxes();
    Place place{axes[0]->pixelToCoord(pixel.x()), axes.size() > 1 ? axes[1]->pixelToCoord(pixel.y()) : 0.0,
                content()->heightAt(target(), pixel)};
    if (spectrum().isEmpty())
        return place;
    const Place top = snapped(place);
    place.height = top.height;
    return snaps ? top : place;
}

PeakEditor::Place PeakEditor::snapped(Place place) const
{
    const auto &axes = spectrum().axes;
    const auto points = [&](int dimension, double ppm) { return (ppm - axes[dimension].first) / axes[dimension].step; };
    const auto pointsPerPixel = [&](int dimension) {
        const QCPAxis *axis = content()->ppmAxes().at(dimension);
        return std::abs((axis->pixelToCoord(1) - axis->pixelToCoord(0)) / axes[dimension].step);
    };
    if (axes.size() == 1) {
        if (const auto top = PeakPicking::summit(spectrum().real(), points(0, place.f2), snapReach * pointsPerPixel(0)))
            return {axes[0].ppm(top->point), 0.0, top->height};
    } else if (const auto top =
                   PeakPicking::summit2D(spectrum().real(), axes[0].size, points(0, place.f2), points(1, place.f1),
                                         snapReach * pointsPerPixel(0), snapReach * pointsPerPixel(1))) {
        return {axes[0].ppm(top->column), axes[1].ppm(top->row), top->height};
    }
    return place;
}

QString PeakEditor::text(const Place &place) const
{
    const QList<QCPAxis *> axes = content()->ppmAxes();
    QString text = PlotContent::ppmText(axes[0], place.f2);
    if (axes.size() > 1)
        text += QStringLiteral(", ") + PlotContent::ppmText(axes[1], place.f1);
    return text;
}

void PeakEditor::store(const QVariantMap &peaks, const QString &what, const QString &report)
{
    {
        const QScopedValueRollback storing(m_storing, true);
        m_data->setEntryPeaks(target(), peaks, what);
    }
    Q_EMIT reported(report + QStringLiteral(". ") + counts(*m_data));
}

bool PeakEditor::press(const QMouseEvent *event)
{
    if (!m_active || event->button() != Qt::LeftButton)
        return false;
    const auto mark = markAt(event->position());
    m_chosen = mark ? together(mark->peak) : QList<QUuid>();
    m_plot->update();
    if (!mark)
        return false;
    const Place place{mark->peak.f2, mark->peak.f1, mark->peak.height};
    Q_EMIT reported(m_chosen.size() > 1 ? tr("Peak at %1, counts %2 times").arg(text(place)).arg(m_chosen.size())
                                        : tr("Peak at %1").arg(text(place)));
    m_pressed = true;
    m_pressedAt = event->position();
    return true;
}

bool PeakEditor::move(const QMouseEvent *event)
{
    if (!m_pressed)
        return false;
    const QPointF pos = event->position();
    if (!m_dragged && (pos - m_pressedAt).manhattanLength() < QApplication::startDragDistance())
        return true;
    m_dragged = placeAt(pos, isSnapping(event));
    Q_EMIT reported(tr("Move to %1").arg(text(*m_dragged)));
    return true;
}

bool PeakEditor::release(const QMouseEvent *event)
{
    if (!m_pressed || event->button() != Qt::LeftButton)
        return false;
    m_pressed = false;
    if (const auto to = std::exchange(m_dragged, std::nullopt)) {
        store(PeakListEdit::moved(m_data->entryPeakList(target()), m_chosen, *to), tr("Move Peak"),
              tr("Peak moved to %1").arg(text(*to)));
    } else if (event->modifiers().testFlag(Qt::ControlModifier)) {
        countOnceMore();
    }
    return true;
}

void PeakEditor::countOnceMore()
{
    const auto &peaks = spectrum().peaks;
    const auto chosen = std::find_if(peaks.cbegin(), peaks.cend(),
                                     [&](const SpectrumPeak &peak) { return m_chosen.contains(peak.id); });
    if (chosen == peaks.cend())
        return;
    const SpectrumPeak peak = *chosen;
    const Place place{peak.f2, peak.f1, peak.height};
    store(PeakListEdit::added(m_data->entryPeakList(target()), place), tr("Count Peak"),
          tr("Peak at %1 counts %2 times").arg(text(place)).arg(m_chosen.size() + 1));
    m_chosen = together(peak);
}

void PeakEditor::click(const QMouseEvent *event)
{
    if (!content() || !content()->mainRect()->rect().contains(event->position().toPoint()))
        return;
    const Place place = placeAt(event->position(), isSnapping(event));
    const auto &peaks = spectrum().peaks;
    const auto known = std::find_if(peaks.cbegin(), peaks.cend(), [&](const SpectrumPeak &peak) {
        const QPointF there = content()->markPlace(target(), peak.f2, peak.f1);
        return QLineF(there, content()->markPlace(target(), place.f2, place.f1)).length() < 1;
    });
    if (known != peaks.cend()) {
        m_chosen = together(*known);
        Q_EMIT reported(
            tr("There is a peak at %1 already: Ctrl+click its mark to count it once more").arg(text(place)));
        return m_plot->update();
    }
    store(PeakListEdit::added(m_data->entryPeakList(target()), place), tr("Add Peak"),
          tr("Peak added at %1").arg(text(place)));
    if (!spectrum().peaks.isEmpty())
        m_chosen = {spectrum().peaks.last().id};
}

void PeakEditor::remove(QList<QUuid> which)
{
    const auto &peaks = spectrum().peaks;
    const auto first =
        std::find_if(peaks.cbegin(), peaks.cend(), [&](const SpectrumPeak &peak) { return which.contains(peak.id); });
    if (first == peaks.cend())
        return;
    const QString where = text({first->f2, first->f1, first->height});
    m_chosen.clear();
    store(PeakListEdit::removed(m_data->entryPeakList(target()), which), tr("Remove Peak"),
          tr("Peak at %1 removed").arg(where));
}

bool PeakEditor::removeAt(const QPointF &pixel)
{
    const auto mark = m_active ? markAt(pixel) : std::nullopt;
    if (mark)
        remove(together(mark->peak));
    return mark.has_value();
}

bool PeakEditor::wantsKey(const QKeyEvent *event) const
{
    // Delete must not take the whole item away while peaks are edited, whether one is chosen or not.
    return m_active
        && (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Escape);
}

bool PeakEditor::keyPress(const QKeyEvent *event)
{
    if (!wantsKey(event))
        return false;
    if (event->key() != Qt::Key_Escape) {
        if (m_chosen.isEmpty())
            Q_EMIT reported(tr("No peak is chosen: click one first"));
        else
            remove(m_chosen);
    } else if (m_plot->cancelDrag()) {
        m_pressed = false;
        m_dragged.reset();
    } else {
        setActive(false);
    }
    return true;
}

void PeakEditor::drawMark(QPainter *painter, const QPointF &top)
{
    const QPointF tip = top - QPointF(0, 1);
    painter->drawPolygon(QPolygonF{tip, tip + QPointF(-4.5, -markHeight), tip + QPointF(4.5, -markHeight)});
}

void PeakEditor::paint(QPainter *painter) const
{
    if (!m_active || !content())
        return;
    for (const PeakMark &mark : content()->peakMarks(target())) {
        const bool chosen = m_chosen.contains(mark.peak.id);
        if (chosen && m_dragged)
            continue;
        painter->setPen(QPen(Qt::white, 1));
        painter->setBrush(chosen ? chosenColor : markColor);
        drawMark(painter, mark.top);
    }
    if (m_dragged) {
        painter->setPen(QPen(Qt::white, 1));
        painter->setBrush(chosenColor);
        drawMark(painter, content()->markPlace(target(), m_dragged->f2, m_dragged->f1));
    }
}

} // namespace Workbench

#include "moc_PeakEditor.cpp"
