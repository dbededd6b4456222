// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/DocumentItem.h"

class NmrData;
class NmrPlot;

/// A plot of NMR spectra on the page, with the spectra in it.
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

    Q_INVOKABLE QObject *getNMRData();

protected:
    void layoutContent(const QRectF &content) override;
    void fillContextMenu(QMenu *menu) override;

private:
    void updateTitle();

    NmrData *m_data;
    NmrPlot *m_plot;
    QGraphicsWidget *m_proxy;
};
