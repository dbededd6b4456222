// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/DocumentController.h"

#include "host/DataEngine.h"
#include "document/DocumentState.h"
#include "data/Elision.h"
#include "host/MainScene.h"
#include "window/Progress.h"
#include "formats/DocumentFile.h"
#include "formats/ExperimentFile.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/SaveDialog.h"

#include <QDir>
#include <QFileInfo>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QSessionManager>
#include <QUndoStack>

namespace Workbench {

namespace {

constexpr int titleDelay = 200; // ms

std::pair<QDateTime, qint64> stateOf(const QString &fileName)
{
    const QFileInfo file(fileName);
    return {file.lastModified(), file.size()};
}

auto waitCursor()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    return qScopeGuard([] { QGuiApplication::restoreOverrideCursor(); });
}

} // namespace

DocumentController::DocumentController(MainScene *scene, DataEngine *data, QMainWindow *window)
    : QObject(window), m_scene(scene), m_data(data), m_window(window)
{
    connect(scene->undoStack(), &QUndoStack::cleanChanged, this, &DocumentController::updateTitle);
    connect(data, &DataEngine::changed, this, &DocumentController::touch);
    connect(scene, &MainScene::itemAdded, this, [this](DocumentItem *item) {
        if (auto *spectra = qobject_cast<NmrItem *>(item))
            connect(spectra->nmrData(), &NmrData::activeEntryChanged, this, &DocumentController::touch);
        else
            touch(); // files that are read have no undo step
    });
    // Looks change in many places, and none of them says so; but all are painted then.
    m_titleLater.setSingleShot(true);
    m_titleLater.setInterval(titleDelay);
    connect(&m_titleLater, &QTimer::timeout, this, &DocumentController::updateTitle);
    connect(scene, &QGraphicsScene::changed, this, [this] {
        if (!m_titleLater.isActive())
            m_titleLater.start();
    });
#ifndef QT_NO_SESSIONMANAGER
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this,
        [this](QSessionManager &session) {
            if (!isModified() || !session.allowsInteraction())
                return;
            const bool mayEnd = mayReplace();
            session.release();
            if (!mayEnd)
                session.cancel();
        },
        Qt::DirectConnection);
#endif
    updateTitle();
}

bool DocumentController::isModified() const
{
    return m_touched || !m_scene->undoStack()->isClean() || looks() != m_savedLooks;
}

QHash<QUuid, QVariantMap> DocumentController::looks() const
{
    QHash<QUuid, QVariantMap> found;
    for (const DocumentItem *item : m_scene->documentItems()) {
        QVariantMap settings = item->madeSettings();
        settings.insert(QStringLiteral("Hidden"), !item->isVisible());
        found.insert(item->id(), settings);
    }
    return found;
}

void DocumentController::touch()
{
    m_touched = true;
    updateTitle();
}

void DocumentController::attempt(const std::function<void()> &change)
{
    const bool touchedBefore = m_touched;
    try {
        change();
    } catch (...) {
        m_touched = touchedBefore;
        updateTitle();
        throw;
    }
}

void DocumentController::read(const std::function<void()> &readFile, const QString &file)
{
    const bool nothingToSave = m_fileName.isEmpty() && !isModified();
    attempt(readFile);
    if (m_firstFile.isEmpty())
        m_firstFile = file;
    // A measurement's folder is no place for our files.
    if (m_firstStructure.isEmpty() && !ExperimentFile::isExperiment(file))
        m_firstStructure = file;
    if (nothingToSave)
        setFile({});
    updateTitle();
}

QString DocumentController::proposedPath(const QString &suffix) const
{
    const QString beside = m_fileName.isEmpty() ? m_firstStructure : m_fileName;
    const QString name = QFileInfo(beside.isEmpty() ? m_firstFile : beside).completeBaseName();
    const QString folder = beside.isEmpty() ? QDir::homePath() : QFileInfo(beside).absolutePath();
    return QDir(folder).filePath((name.isEmpty() ? tr("Untitled") : name) + u'.' + suffix);
}

QStringList DocumentController::replace(const Document &document, const QString &fileName)
{
    QStringList notes;
    attempt([&] { notes = DocumentState::restore(document, *m_scene, *m_data, m_plugins); });
    m_firstFile.clear();
    m_firstStructure.clear();
    for (QGraphicsView *view : m_scene->views())
        view->ensureVisible(QRectF(0, 0, 1, 1), 0, 0);
    setFile(fileName);
    return notes;
}

void DocumentController::setFile(const QString &fileName)
{
    m_fileName = fileName;
    m_fileState = stateOf(fileName);
    m_touched = false;
    m_savedLooks = looks();
    m_scene->undoStack()->setClean();
    updateTitle();
    if (!fileName.isEmpty())
        Q_EMIT fileUsed(fileName);
}

QString DocumentController::shownName() const
{
    if (!m_fileName.isEmpty())
        return QFileInfo(m_fileName).fileName();
    return m_firstFile.isEmpty() ? tr("Untitled") : QFileInfo(m_firstFile).completeBaseName();
}

void DocumentController::updateTitle()
{
    // The mark is for the window; one in the name has to be doubled.
    const QString mark = QStringLiteral("[*]");
    m_window->setWindowTitle(tr("%1%2 – Magres Workbench").arg(shownName().replace(mark, mark + mark), mark));
    m_window->setWindowModified(isModified());
}

bool DocumentController::mayReplace()
{
    if (!isModified())
        return true;
    QMessageBox box(QMessageBox::Warning, tr("Unsaved Changes"), tr("Save the changes to %1?").arg(shownName()),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, m_window);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(tr("What is not saved is lost."));
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && save());
}

bool DocumentController::open(const QString &fileName)
{
    if (!mayReplace())
        return false;
    QStringList notes;
    try {
        const auto cursor = waitCursor();
        Progress progress(tr("Opening %1...").arg(QFileInfo(fileName).fileName()), m_window);
        notes = replace(DocumentFile::read(fileName, std::ref(progress)), QFileInfo(fileName).absoluteFilePath());
    } catch (const DocumentFile::Cancelled &) {
        return false;
    }
    if (!notes.isEmpty())
        QMessageBox::warning(m_window, tr("A plug-in is missing"), elided(notes.join(QLatin1String("\n\n"))));
    return true;
}

void DocumentController::newDocument()
{
    if (mayReplace())
        replace({}, {});
}

bool DocumentController::save()
{
    if (m_fileName.isEmpty())
        return saveAs();
    return mayOverwrite() && saveTo(m_fileName);
}

bool DocumentController::mayOverwrite()
{
    if (!QFileInfo::exists(m_fileName) || stateOf(m_fileName) == m_fileState)
        return true;
    QMessageBox box(QMessageBox::Warning, tr("Changed Elsewhere"),
                    tr("%1 was changed by another program since it was opened here.").arg(shownName()),
                    QMessageBox::Save | QMessageBox::Cancel, m_window);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(tr("Saving replaces what was written there; \"Save As\" keeps both."));
    box.button(QMessageBox::Save)->setText(tr("&Replace"));
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Save;
}

bool DocumentController::saveAs()
{
    const QString fileName =
        askForFileToSave(m_window, tr("Save As"), proposedPath(QLatin1String(DocumentFile::suffix)), {nameFilter()});
    if (fileName.isEmpty())
        return false;
    // What it is, is lost for good; nobody means that who names a document.
    if (QFileInfo(fileName).size() > 0 && !DocumentFile::isDocument(fileName)) {
        QMessageBox::critical(m_window, tr("The document cannot be saved"),
                              tr("%1 is a file of another kind: choose another name").arg(fileName));
        return false;
    }
    return saveTo(fileName);
}

bool DocumentController::saveTo(const QString &fileName)
{
    try {
        const auto cursor = waitCursor();
        Progress progress(tr("Saving %1...").arg(QFileInfo(fileName).fileName()), m_window);
        DocumentFile::write(fileName, DocumentState::capture(*m_scene, *m_data, m_plugins), std::ref(progress));
    } catch (const DocumentFile::Cancelled &) {
        return false;
    } catch (const std::exception &error) {
        QMessageBox::critical(m_window, tr("The document cannot be saved"), elided(QString::fromUtf8(error.what())));
        return false;
    }
    setFile(QFileInfo(fileName).absoluteFilePath());
    Q_EMIT reported(tr("%1 is saved").arg(shownName()));
    return true;
}

QString DocumentController::nameFilter()
{
    return tr("Magres Workbench documents (*.%1)").arg(QLatin1String(DocumentFile::suffix));
}

} // namespace Workbench

#include "moc_DocumentController.cpp"
