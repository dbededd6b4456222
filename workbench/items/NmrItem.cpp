// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/NmrItem.h"

#include "items/NmrData.h"
#include "items/NmrPlot.h"

#include <QGraphicsProxyWidget>
#include <QMenu>
#include <QStyleOptionGraphicsItem>

#include <cmath>

namespace {

constexpr double highestResolution = 4; // buffer pixels per scene unit

/// Shows the plot in windows, sharp at every scale, and draws it as vectors on paper.
class PlotProxy : public QGraphicsProxyWidget {
public:
    PlotProxy(NmrPlot *plot, QGraphicsItem *parent) : QGraphicsProxyWidget(parent), m_plot(plot) { setWidget(plot); }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *target) override
    {
        if (DocumentItem::isPageOutput(painter, target)) {
            m_plot->paintTo(painter, rect());
            return;
        }
        const double scale = QStyleOptionGraphicsItem::levelOfDetailFromTransform(painter->worldTransform())
            * target->devicePixelRatioF();
        const double resolution = std::clamp(scale, 1.0, highestResolution);
        if (std::abs(resolution - m_plot->bufferDevicePixelRatio()) > 0.01) {
            m_plot->setBufferDevicePixelRatio(resolution);
            m_plot->replot(QCustomPlot::rpQueuedReplot);
        }
        QGraphicsProxyWidget::paint(painter, option, target);
    }

private:
    NmrPlot *m_plot;
};

} // namespace

NmrItem::NmrItem(const QUuid &id, Looks looks, QGraphicsItem *parent)
    : DocumentItem(id, parent),
      m_data(new NmrData(this)),
      m_plot(looks == WithPlot ? new NmrPlot(m_data) : nullptr),
      m_proxy(m_plot ? new PlotProxy(m_plot, this) : nullptr)
{
    connect(m_data, &NmrData::entriesChanged, this, &NmrItem::updateTitle);
    connect(m_data, &NmrData::entryChanged, this, &NmrItem::updateTitle);
    connect(m_data, &NmrData::activeEntryChanged, this, &NmrItem::updateTitle);
    updateTitle();
}

NmrItem::~NmrItem() = default;

QObject *NmrItem::getNMRData()
{
    return m_data;
}

void NmrItem::layoutContent(const QRectF &content)
{
    if (m_proxy)
        m_proxy->setGeometry(content);
}

void NmrItem::fillContextMenu(QMenu *menu)
{
    if (m_plot)
        connect(menu->addAction(tr("Show Full Range")), &QAction::triggered, m_plot, &NmrPlot::fullReset);
}

void NmrItem::updateTitle()
{
    const QUuid active = m_data->activeEntryId();
    const Spectrum &spectrum = m_data->spectrum(active);
    QStringList nuclei;
    for (const SpectrumAxis &axis : spectrum.axes)
        nuclei.append(axis.nucleus());
    nuclei.removeAll(QString());
    QString title = spectrum.dimensions() == 2 ? tr("%1 spectrum, 2D").arg(nuclei.join(u'–'))
                                               : tr("%1 spectrum").arg(nuclei.join(u'–'));
    const QString name = m_data->entryName(active);
    if (!name.isEmpty())
        title += QStringLiteral(": ") + name;
    setTitle(title.simplified());
    update();
}
