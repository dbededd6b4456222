// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/NmrData.h"

#include "items/CustomPlot.h"

#include <memory>

class PlotContent;
struct PlotEntry;

/// Draws the spectra of an NMR data object, in the number of dimensions of the active one. It is built when it is first
/// drawn, so that a program without a window does not pay for it.
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

protected:
    void paintEvent(QPaintEvent *event) override;
    void updateLayout() override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void invalidate(bool keepRanges);
    void rebuild();
    void clear();
    void showNote(const QString &text);
    QList<PlotEntry> shownEntries(QString &note) const;
    int shownDimensions() const;

    QPointer<NmrData> m_data;
    std::unique_ptr<PlotContent> m_content;
    bool m_dirty = true;
    bool m_keepRanges = false;
};
