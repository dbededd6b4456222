// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/NmrData.h"
#include "data/PeakListEdit.h"

#include <QPointF>

#include <optional>

class QKeyEvent;
class QMouseEvent;
class QPainter;

namespace Workbench {

class NmrPlot;
class PlotContent;
struct PeakMark;

/// Peaks set by hand. While it is active a click on the plot adds a peak at the nearest top (with Shift right there),
/// dragging a mark moves its peak, Ctrl and a click count it once more, Delete takes the chosen one away, Escape ends.
/// It works on a measured spectrum: simulated peaks follow from the calculation. Peaks at the same place go together.
class PeakEditor : public QObject {
    Q_OBJECT

public:
    /// Both must outlive it.
    PeakEditor(NmrData *data, NmrPlot *plot, QObject *parent);

    bool isActive() const { return m_active; }
    /// Stays off, and says why, where there is nothing to edit.
    void setActive(bool active);
    /// The spectrum that would be edited: the active one if it is measured, else the first measured one; null if none.
    QUuid target() const;

    // What the plot saw; true when it was meant for a mark.
    bool press(const QMouseEvent *event);
    bool move(const QMouseEvent *event);
    bool release(const QMouseEvent *event);
    /// A click beside all marks.
    void click(const QMouseEvent *event);
    bool wantsKey(const QKeyEvent *event) const;
    bool keyPress(const QKeyEvent *event);
    /// Takes away the peak there. False when there is none.
    bool removeAt(const QPointF &pixel);

    void paint(QPainter *painter) const;
    /// A mark that points at the pixel from above.
    static void drawMark(QPainter *painter, const QPointF &top);

    /// "5 measured, 36 simulated", of the stack.
    static QString counts(const NmrData &data);

Q_SIGNALS:
    /// Also when another spectrum is edited than before.
    void activeChanged(bool active);
    /// What was done, or cannot be done, for a status bar.
    void reported(const QString &text);

private:
    using Place = PeakListEdit::Place;

    /// Goes on with another spectrum when the target has changed, and ends when there is none.
    void follow();
    const Spectrum &spectrum() const;
    PlotContent *content() const;
    std::optional<PeakMark> markAt(const QPointF &pixel) const;
    /// All peaks at the place of one.
    QList<QUuid> together(const SpectrumPeak &peak) const;
    Place placeAt(const QPointF &pixel, bool snaps) const;
    Place snapped(Place place) const;
    QString text(const Place &place) const;
    void store(const QVariantMap &peaks, const QString &what, const QString &report);
    void countOnceMore();
    void remove(QList<QUuid> which);

    NmrData *m_data;
    NmrPlot *m_plot;
    bool m_active = false;
    QUuid m_edited; ///< the target, as the user was told
    QList<QUuid> m_chosen;
    bool m_storing = false; ///< what it changes itself, of which it says more
    bool m_pressed = false; ///< on a mark
    QPointF m_pressedAt;
    std::optional<Place> m_dragged; ///< where a mark is being dragged to
};

} // namespace Workbench
