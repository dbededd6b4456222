// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/DocumentItem.h"
#include "items/plot/PlotMarker.h"

namespace Workbench {

class MoleculeItem;
class NmrData;
class NmrPlot;
class PeakEditor;

/// A plot of NMR spectra on the page, with the spectra in it. Clicking a peak selects the atoms behind it in the linked
/// molecules and tables, and their selection marks its peaks, as far as plug-ins have noted in the molecule which
/// belong together.
class NmrItem : public DocumentItem {
    Q_OBJECT

public:
    /// Without a plot the item cannot be drawn: for documents that nobody looks at.
    enum Looks { WithPlot, WithoutPlot };

    /// A null id becomes a new one.
    explicit NmrItem(const QUuid &id = {}, Looks looks = WithPlot, QGraphicsItem *parent = nullptr);
    ~NmrItem() override;

    NmrData *nmrData() const { return m_data; }
    /// Null for an item without.
    NmrPlot *plot() const { return m_plot; }

    /// Null for an item without a plot.
    PeakEditor *peakEditor() const { return m_editor; }

    Q_INVOKABLE QObject *getNMRData();

    QVariantMap viewSettings() const override;
    void setViewSettings(const QVariantMap &settings) override;

    void receiveMessage(const QVariantMap &message, const DocumentItem *sender) override;
    void paintPicture(QPainter *painter, const QRectF &area) override;

    /// The points or peaks of the active spectrum that are in sight, a line each, tab-separated, under a header.
    QString numbersText() const;
    void copyNumbers();
    /// Until Esc, a drag marks an integral or a distance.
    void startMarking(PlotMarker::Mode mode);

Q_SIGNALS:
    /// What is under the cursor; empty when that is nothing.
    void pointed(const QString &text);

protected:
    bool sceneEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    void layoutContent(const QRectF &content) override;
    void fillContextMenu(QMenu *menu) override;
    /// The names of the spectra hold the sources.
    QString sourcedTitle() const override { return contentTitle(); }

private:
    void updateTitle();
    void updateMode();
    void fillShowMenu(QMenu *menu);
    void fillMarkMenu(QMenu *menu);
    void fillTraceMenu(QMenu *menu);
    void setIntegral(int index);
    void editTitle();
    void setSharesRange(bool shares);
    /// Hands the range of F2 to the plots that share it.
    void shareRange();
    QList<NmrItem *> plotsOfNucleus() const;
    template <typename Change>
    void changeOptions(Change change);
    void editContourLevels();
    void selectPeaks(const QList<QUuid> &peaks, bool toggle);
    QList<MoleculeItem *> molecules() const;

    NmrData *m_data;
    NmrPlot *m_plot;
    PeakEditor *m_editor;
    QGraphicsWidget *m_proxy;
};

} // namespace Workbench
