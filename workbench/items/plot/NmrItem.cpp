// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/NmrItem.h"

#include "data/AtomSelection.h"
#include "items/plot/ContourLevelsDialog.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrPlot.h"
#include "data/PeakAssignments.h"
#include "items/plot/PeakEditor.h"
#include "items/plot/PlotContent.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneWheelEvent>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QMenu>
#include <QStyleOptionGraphicsItem>

#include <cmath>

namespace Workbench {

namespace {

constexpr double highestResolution = 4; // buffer pixels per scene unit

/// Shows the plot in windows, sharp at every scale, and draws it as vectors on paper.
class PlotProxy : public QGraphicsProxyWidget {
public:
    PlotProxy(NmrPlot *plot, DocumentItem *item) : QGraphicsProxyWidget(item), m_plot(plot), m_item(item)
    {
        setWidget(plot);
        // The item has the keyboard: on its way to an embedded widget a key would pass for a shortcut once more.
        setFocusPolicy(Qt::NoFocus);
    }

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

protected:
    void wheelEvent(QGraphicsSceneWheelEvent *event) override
    {
        // Only the item that one works with takes the wheel: one must be able to scroll past the others.
        if (m_item->isCurrent())
            QGraphicsProxyWidget::wheelEvent(event);
        else
            event->ignore();
    }

private:
    NmrPlot *m_plot;
    DocumentItem *m_item;
};

} // namespace

NmrItem::NmrItem(const QUuid &id, Looks looks, QGraphicsItem *parent)
    : DocumentItem(id, parent),
      m_data(new NmrData(this)),
      m_plot(looks == WithPlot ? new NmrPlot(m_data) : nullptr),
      m_editor(m_plot ? new PeakEditor(m_data, m_plot, this) : nullptr),
      m_proxy(m_plot ? new PlotProxy(m_plot, this) : nullptr)
{
    connect(m_data, &NmrData::entriesChanged, this, &NmrItem::updateTitle);
    connect(m_data, &NmrData::entryChanged, this, &NmrItem::updateTitle);
    connect(m_data, &NmrData::activeEntryChanged, this, &NmrItem::updateTitle);
    updateTitle();
    if (!m_plot)
        return;
    m_plot->setEditor(m_editor);
    connect(m_editor, &PeakEditor::activeChanged, this, [this](bool active) {
        setMode(active ? tr("Editing peaks: %1").arg(m_data->entryName(m_editor->target())) : QString());
    });
    connect(m_editor, &PeakEditor::reported, this, &NmrItem::reported);
    connect(m_plot, &NmrPlot::pointed, this, &NmrItem::pointed);
    connect(m_plot, &NmrPlot::peaksClicked, this, [this](const auto &peaks, Qt::KeyboardModifiers modifiers) {
        selectPeaks(peaks, modifiers.testFlag(Qt::ControlModifier));
    });
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
    if (!m_plot)
        return;
    // The keys are the item's own, not the window's: they are shown only.
    connect(menu->addAction(tr("Show Full Range") + QStringLiteral("\tHome")), &QAction::triggered, m_plot,
            &NmrPlot::fullReset);
    fillShowMenu(menu->addMenu(tr("Show")));
    if (m_plot->shownDimensions() == 2)
        connect(menu->addAction(tr("Contour Levels...")), &QAction::triggered, this, &NmrItem::editContourLevels);
}

void NmrItem::fillShowMenu(QMenu *menu)
{
    const auto add = [&](const QString &text, bool PlotOptions::*option) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setChecked(m_plot->options().*option);
        connect(action, &QAction::toggled, this, [this, option](bool on) {
            PlotOptions options = m_plot->options();
            options.*option = on;
            m_plot->setOptions(options);
        });
    };
    if (m_plot->shownDimensions() == 2)
        add(tr("Peak Crosses"), &PlotOptions::crosses);
    else
        add(tr("Peak Sticks"), &PlotOptions::sticks);
    add(tr("Peak Labels"), &PlotOptions::labels);
    add(tr("Legend"), &PlotOptions::legend);
}

void NmrItem::editContourLevels()
{
    QWidget *window = scene() && !scene()->views().isEmpty() ? scene()->views().constFirst()->window() : nullptr;
    const PlotOptions before = m_plot->options();
    const QPointer<NmrItem> stillThere(this);
    ContourLevelsDialog dialog(before.contours, window);
    connect(&dialog, &ContourLevelsDialog::changed, m_plot, [this](const ContourLevels &levels) {
        PlotOptions options = m_plot->options();
        options.contours = levels;
        m_plot->setOptions(options);
    });
    if (dialog.exec() != QDialog::Accepted && stillThere)
        m_plot->setOptions(before);
}

QVariantMap NmrItem::viewSettings() const
{
    return m_plot ? m_plot->options().toMap() : QVariantMap();
}

void NmrItem::setViewSettings(const QVariantMap &settings)
{
    if (m_plot)
        m_plot->setOptions(PlotOptions::fromMap(settings));
}

QList<MoleculeItem *> NmrItem::molecules() const
{
    QList<MoleculeItem *> found;
    for (DocumentItem *item : linkedItems()) {
        if (auto *molecule = qobject_cast<MoleculeItem *>(item))
            found.append(molecule);
    }
    return found;
}

void NmrItem::receiveMessage(const QVariantMap &message)
{
    if (!m_plot || !AtomSelection::isMessage(message))
        return;
    QSet<QUuid> peaks;
    for (const MoleculeItem *molecule : molecules())
        peaks.unite(molecule->assignments().peaksOf(AtomSelection::fromMessage(message)));
    m_plot->setLitPeaks(peaks);
}

void NmrItem::selectPeaks(const QList<QUuid> &peaks, bool toggle)
{
    QSet<QUuid> lit = toggle ? m_plot->litPeaks() : QSet<QUuid>();
    const bool takesAway = !peaks.isEmpty() && lit.contains(peaks.first());
    for (const QUuid &peak : peaks) {
        if (takesAway)
            lit.remove(peak);
        else
            lit.insert(peak);
    }
    if (lit == m_plot->litPeaks())
        return;
    m_plot->setLitPeaks(lit);
    QSet<int> atoms;
    for (const MoleculeItem *molecule : molecules())
        atoms.unite(molecule->assignments().atomsOf(lit.values()));
    if (!lit.isEmpty())
        Q_EMIT reported(atoms.isEmpty() ? tr("No atoms are assigned to this peak")
                                        : tr("%n atom(s) selected", nullptr, int(atoms.size())));
    sendMessage(AtomSelection::toMessage(atoms));
}

bool NmrItem::sceneEvent(QEvent *event)
{
    // What the plot does with a key comes before the window's shortcuts.
    if (event->type() == QEvent::ShortcutOverride && m_editor && m_editor->wantsKey(static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    return DocumentItem::sceneEvent(event);
}

void NmrItem::keyPressEvent(QKeyEvent *event)
{
    constexpr double step = 1.25, panned = 0.1;
    if (!m_plot)
        return DocumentItem::keyPressEvent(event);
    if (m_editor->keyPress(event))
        return event->accept();
    PlotContent *content = m_plot->content();
    if (!content || (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)))
        return DocumentItem::keyPressEvent(event);
    QCPAxis *f2 = content->ppmAxes().first();
    QCPAxis *f1 = content->ppmAxes().last();
    const bool two = f1 != f2;
    switch (event->key()) {
    case Qt::Key_Plus:
        m_plot->scaleIntensity(step);
        break;
    case Qt::Key_Minus:
        m_plot->scaleIntensity(1 / step);
        break;
    case Qt::Key_Home:
        content->resetRanges();
        break;
    case Qt::Key_Escape:
        m_plot->navigation().cancel();
        break;
    case Qt::Key_PageUp:
        m_plot->navigation().zoom(step);
        break;
    case Qt::Key_PageDown:
        m_plot->navigation().zoom(1 / step);
        break;
    case Qt::Key_Left: // ppm grow to the left and downwards
        m_plot->navigation().pan(f2, panned);
        break;
    case Qt::Key_Right:
        m_plot->navigation().pan(f2, -panned);
        break;
    case Qt::Key_Up:
        two ? m_plot->navigation().pan(f1, -panned) : m_plot->scaleIntensity(step);
        break;
    case Qt::Key_Down:
        two ? m_plot->navigation().pan(f1, panned) : m_plot->scaleIntensity(1 / step);
        break;
    default:
        return DocumentItem::keyPressEvent(event);
    }
    m_plot->replot(QCustomPlot::rpQueuedReplot);
    event->accept();
}

void NmrItem::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    if (event->reason() == QGraphicsSceneContextMenuEvent::Mouse && m_editor
        && m_editor->removeAt(m_proxy->mapFromScene(event->scenePos())))
        return event->accept();
    DocumentItem::contextMenuEvent(event);
}

void NmrItem::updateTitle()
{
    const QUuid active = m_data->activeEntryId();
    const Spectrum &spectrum = m_data->spectrum(active);
    QStringList nuclei;
    for (const SpectrumAxis &axis : spectrum.axes)
        nuclei.append(axis.nucleus());
    nuclei.removeAll(QString());
    const QString name = m_data->entryName(active);
    const QString nucleus = nuclei.join(u'–');
    QString title = spectrum.dimensions() == 2 ? tr("%1 spectrum, 2D").arg(nucleus) : tr("%1 spectrum").arg(nucleus);
    if (!name.isEmpty())
        title = nucleus.isEmpty() ? name : tr("%1 of %2").arg(nucleus, name);
    setTitle(title.simplified());
    update();
}

} // namespace Workbench
