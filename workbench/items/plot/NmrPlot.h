// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/plot/NmrData.h"

#include "items/plot/CustomPlot.h"
#include "items/plot/PlotMarker.h"
#include "items/plot/PlotNavigation.h"
#include "items/plot/PlotOptions.h"

#include <QSet>

#include <memory>

namespace Workbench {

class PeakEditor;
class PlotContent;
struct PlotEntry;

/// Draws the spectra of an NMR data object, in the number of dimensions of the active one. It is built when it is first
/// drawn, so that a program without a window does not pay for it. The mouse zooms and moves (see PlotNavigation), a
/// click names the peaks there, a double click shows all again.
class NmrPlot : public QCustomPlot {
    Q_OBJECT

public:
    explicit NmrPlot(NmrData *nmrData, QWidget *parent = nullptr);
    ~NmrPlot() override;

    /// Reads the data anew and shows all of it.
    Q_INVOKABLE void fullReset();

    /// Draws into the rectangle, laid out for its size: as vectors on devices that keep them, but for the colour map.
    void paintTo(QPainter *painter, const QRectF &target);

    /// What is shown at present, brought up to date; null for a mere note.
    PlotContent *content();

    const PlotOptions &options() const { return m_options; }
    void setOptions(const PlotOptions &options);

    /// Makes 1D spectra higher, each about its own base line; lets 2D spectra show contours lower down.
    void scaleIntensity(double factor);
    PlotNavigation &navigation() { return m_navigation; }
    PlotMarker &marker() { return m_marker; }
    /// Gives up what the button began that is down: nothing happens when it comes up. Whether there is one.
    bool cancelDrag();
    /// Null without data.
    QUuid activeEntry() const { return m_data ? m_data->activeEntryId() : QUuid(); }
    /// All that the label or the peak there says; empty for none.
    QString hoverText(const QPointF &pixel);
    /// Sees the mouse before it zooms. Not owned.
    void setEditor(PeakEditor *editor) { m_editor = editor; }

    /// For each entry, the names of sites by the labels of their atoms, "C1 ×4" of "C1": peaks are labelled with them.
    using SiteNames = QHash<QUuid, QHash<QString, QString>>;
    void setSiteNames(const SiteNames &names);
    /// Peaks that are marked, as those of selected atoms.
    void setLitPeaks(const QSet<QUuid> &peaks);
    const QSet<QUuid> &litPeaks() const { return m_litPeaks; }
    /// Places in ppm, F2 and F1, at which peaks of the entry would come to lie.
    void setPreview(const QUuid &entry, const QList<QPointF> &places);
    /// The peaks drawn or labelled there; those at the same place together.
    QList<QUuid> peaksAt(const QPointF &pixel);

    int shownDimensions() const;

Q_SIGNALS:
    void peaksClicked(const QList<QUuid> &peaks, Qt::KeyboardModifiers modifiers);
    /// What is under the cursor; empty when that is nothing.
    void pointed(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;
    void updateLayout() override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void invalidate(bool keepRanges);
    void rebuild();
    void clear();
    void showNote(const QString &text);
    void paintOverlay(QPainter *painter);
    QList<PlotEntry> shownEntries(QString &note) const;

    QPointer<NmrData> m_data;
    std::unique_ptr<PlotContent> m_content;
    PlotOptions m_options;
    PlotNavigation m_navigation;
    PlotMarker m_marker;
    PeakEditor *m_editor = nullptr;
    QSet<QUuid> m_litPeaks;
    SiteNames m_siteNames;
    QUuid m_previewEntry;
    QList<QPointF> m_preview;
    bool m_dirty = true;
    bool m_drawn = false; ///< what the content is now, by the library, at the window's size
    bool m_keepRanges = false;
    bool m_isDown = false; ///< a button, and what it began has not been given up
};

} // namespace Workbench
