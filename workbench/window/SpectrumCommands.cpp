// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/SpectrumCommands.h"

#include "analysis/PowderEntry.h"
#include "analysis/SpectrumRemarks.h"
#include "host/MainScene.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"
#include "window/PluginActions.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QMainWindow>
#include <QMessageBox>
#include <QStatusBar>
#include <QSettings>
#include <QUndoStack>

#include <algorithm>

namespace Workbench {

namespace {

const QString magresFormat = QStringLiteral("magres");
const QString createText = QStringLiteral("Create spectrum...");
const QString editText = QStringLiteral("Edit Spectrum...");
const QString referenceText = QStringLiteral("Auto reference");

} // namespace

SpectrumCommands::SpectrumCommands(MainScene *scene, QMenu *nmrMenu, QMainWindow *window)
    : QObject(window), m_scene(scene), m_nmrMenu(nmrMenu), m_window(window)
{
}

QAction *SpectrumCommands::ofPlugin(const QString &text) const
{
    return findAction(m_nmrMenu, text);
}

QUuid SpectrumCommands::simulatedIn(const NmrItem *item) const
{
    if (!item)
        return {};
    const NmrData &data = *item->nmrData();
    return data.isSimulated(data.activeEntryId()) ? data.activeEntryId() : item->nmrData()->simulatedEntry();
}

QString SpectrumCommands::whyNoCreate() const
{
    const TableItem *table = m_scene->currentTableItem();
    return table ? QString() : tr("Open a MAGRES file first: spectra are made from its table");
}

QString SpectrumCommands::whyNoEdit() const
{
    if (!ofPlugin(editText))
        return tr("No plug-in that makes spectra is loaded");
    return simulatedIn(m_scene->currentNmrItem()).isNull() ? tr("The current plot holds no simulated spectrum")
                                                           : QString();
}

QString SpectrumCommands::whyNoAutoReference() const
{
    if (!ofPlugin(referenceText))
        return tr("No plug-in that makes spectra is loaded");
    const NmrItem *item = m_scene->currentNmrItem();
    if (!item)
        return tr("There is no plot on the page: create a spectrum and add a measurement to it");
    const NmrData &data = *item->nmrData();
    const QList<QUuid> ids = data.entryIds();
    const auto simulated =
        std::count_if(ids.cbegin(), ids.cend(), [&](const QUuid &id) { return data.isSimulated(id); });
    if (simulated != 1 || ids.size() != 2)
        return tr("It needs one simulated spectrum and one measurement in the plot; the current plot holds %1 and %2")
            .arg(simulated)
            .arg(ids.size() - simulated);
    if (PowderOrigin::of(data.stackEntry(data.simulatedEntry())))
        return tr("A powder spectrum is fitted where it is edited");
    if (!shareAxes(data.stackEntry(ids[0]).nuclei(), data.stackEntry(ids[1]).nuclei()))
        return tr("The measurement is of other nuclei or dimensions than the simulated spectrum");
    return {};
}

void SpectrumCommands::create()
{
    TableItem *table = m_scene->currentTableItem();
    if (!table)
        return Q_EMIT reported(whyNoCreate());
    m_scene->setActiveItem(table);
    if (QAction *action = findAction(table->contextMenu(), createText))
        run(action, tr("Computing the spectrum..."));
    else
        Q_EMIT reported(tr("The plug-in of this table makes no spectra"));
}

void SpectrumCommands::edit()
{
    if (NmrItem *item = m_scene->currentNmrItem())
        edit(item, simulatedIn(item));
}

void SpectrumCommands::edit(NmrItem *item, const QUuid &entry)
{
    m_scene->setActiveItem(item);
    item->nmrData()->setActiveEntryId(entry);
    if (QAction *action = ofPlugin(editText))
        run(action, tr("Computing the spectrum..."));
}

void SpectrumCommands::moveToOwnPlot(NmrItem *item, const QUuid &entry)
{
    const SpectrumEntry moved = item->nmrData()->stackEntry(entry);
    QUndoStack *history = m_scene->undoStack();
    history->beginMacro(tr("Plot of Its Own for %1").arg(moved.name));
    auto *own = qobject_cast<NmrItem *>(m_scene->createNMRItem(m_scene->getEmptyRect(), moved.data, true));
    if (own) {
        own->nmrData()->setEntryName(own->nmrData()->entryIds().constFirst(), moved.name);
        item->nmrData()->removeEntry(entry);
    }
    history->endMacro();
    Q_EMIT reported(tr("%1 has a plot of its own now").arg(moved.name));
}

void SpectrumCommands::autoReference()
{
    if (NmrItem *item = m_scene->currentNmrItem())
        autoReference(item);
}

void SpectrumCommands::autoReference(NmrItem *item)
{
    m_scene->setActiveItem(item);
    QAction *action = ofPlugin(referenceText);
    if (!action || !isWanted(*item, simulatedIn(item)))
        return;
    announce(tr("Fitting the reference..."));
    run(action, tr("Fitting the reference..."));
}

namespace {

/// Puts back what the plug-in keeps for the next spectrum: parameters that nobody has looked at are nobody's choice.
class PluginSettingsKept {
public:
    PluginSettingsKept()
    {
        m_settings.beginGroup(group());
        for (const QString &key : m_settings.allKeys())
            m_before.insert(key, m_settings.value(key));
    }
    ~PluginSettingsKept()
    {
        for (const QString &key : m_settings.allKeys()) {
            if (!m_before.contains(key))
                m_settings.remove(key);
        }
        for (auto it = m_before.cbegin(); it != m_before.cend(); ++it)
            m_settings.setValue(it.key(), it.value());
    }
    Q_DISABLE_COPY_MOVE(PluginSettingsKept)

private:
    static QString group() { return QStringLiteral("magresPlugin"); }

    QSettings m_settings;
    QVariantMap m_before;
};

} // namespace

void SpectrumCommands::fitRange(NmrItem *item, const QUuid &entry)
{
    NmrData *data = item->nmrData();
    QVariantHash parameters = data->entryOrigParams(entry, magresFormat);
    if (parameters.isEmpty() || !ofPlugin(editText) || !isWanted(*item, entry))
        return;
    m_scene->setActiveItem(item);
    const QUuid activeBefore = data->activeEntryId();
    data->announceEdit(tr("Fit Range"));
    data->setActiveEntryId(entry);
    // A range that nobody has chosen is that of the lines.
    for (const char *key : {"RangeF2User", "RangeF1User"})
        parameters.insert(QLatin1String(key), false);
    data->setEntryOrigParams(entry, magresFormat, parameters);
    announce(tr("Computing the spectrum..."));
    const PluginSettingsKept kept;
    m_acceptsAtOnce = true;
    run(ofPlugin(editText), tr("Computing the spectrum..."));
    m_acceptsAtOnce = false;
    const bool failed = data->withdrawEdit();
    data->setActiveEntryId(activeBefore);
    Q_EMIT reported(
        (failed ? tr("%1 is as it was: it could not be computed anew") : tr("%1 is computed in the range of its lines"))
            .arg(data->entryName(entry)));
}

bool SpectrumCommands::isWanted(const NmrItem &item, const QUuid &entry) const
{
    qint64 points = 1;
    for (const SpectrumAxis &axis : item.nmrData()->spectrum(entry).axes)
        points *= axis.size;
    if (points <= manyPoints)
        return true;
    const int answer =
        QMessageBox::question(m_window, tr("Many Points"),
                              tr("The spectrum has %L1 million points. To compute it again can take minutes. Go on?")
                                  .arg(double(points) / 1e6, 0, 'f', 1),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    return answer == QMessageBox::Yes;
}

void SpectrumCommands::announce(const QString &what)
{
    Q_EMIT reported(what);
    // Nothing is repainted while a plug-in works.
    if (m_window->isVisible()) {
        m_window->statusBar()->repaint();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
}

void SpectrumCommands::run(QAction *action, const QString &what)
{
    m_running = what;
    qApp->installEventFilter(this);
    action->trigger();
    qApp->removeEventFilter(this);
    m_running.clear();
    if (m_window->statusBar()->currentMessage() == what)
        m_window->statusBar()->clearMessage();
}

bool SpectrumCommands::eventFilter(QObject *watched, QEvent *event)
{
    auto *shown = event->type() == QEvent::Polish && m_acceptsAtOnce ? qobject_cast<QDialog *>(watched) : nullptr;
    if (shown && !qobject_cast<QMessageBox *>(shown)) {
        // What it offers is what is wanted.
        shown->setAttribute(Qt::WA_DontShowOnScreen);
        QMetaObject::invokeMethod(shown, &QDialog::accept, Qt::QueuedConnection);
    }
    // The plug-in goes to work when its dialog has been accepted and has gone.
    auto *dialog = event->type() == QEvent::Hide ? qobject_cast<QDialog *>(watched) : nullptr;
    if (dialog && dialog->result() == QDialog::Accepted && !qobject_cast<QMessageBox *>(dialog)) {
        Q_EMIT reported(m_running);
        m_window->statusBar()->repaint();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace Workbench

#include "moc_SpectrumCommands.cpp"
