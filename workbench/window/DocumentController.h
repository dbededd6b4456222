// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QUuid>
#include <QVariantMap>

#include <functional>

class QMainWindow;

namespace Workbench {

class DataEngine;
class MainScene;
class PluginManager;
struct Document;

/// Which file the document is of, whether it has changes that no file has, and the commands that save and replace it.
/// Keeps the window's title. Turning, zooming and filtering change no document; the active spectrum of a stack, marks
/// and titles do.
class DocumentController : public QObject {
    Q_OBJECT
public:
    DocumentController(MainScene *scene, DataEngine *data, QMainWindow *window);

    /// For the tables of plug-ins.
    void setPluginManager(const PluginManager *plugins) { m_plugins = plugins; }

    /// Empty for a document that was never saved.
    QString fileName() const { return m_fileName; }
    bool isModified() const;

    /// Runs what reads a file into the document. An untitled document of nothing but files as they are has no changes.
    /// Until it is saved the document is called after the first file.
    void read(const std::function<void()> &readFile, const QString &file = {});

    /// Where files of this document are to be written, as a proposal: beside the first structure's file, or beside the
    /// document. Empty when nothing is known.
    QString proposedPath(const QString &suffix) const;

    /// Asks what is to become of unsaved changes; true when the document may go.
    bool mayReplace();
    /// True when the document is open in place of the one before. Throws std::exception with a text for the user, with
    /// everything as before.
    bool open(const QString &fileName);
    void newDocument();
    // Errors are shown in a message box. True when the document is in its file.
    bool save();
    bool saveAs();
    bool saveTo(const QString &fileName);

    /// For file dialogs.
    static QString nameFilter();

Q_SIGNALS:
    /// Under this name, by opening or saving.
    void fileUsed(const QString &fileName);
    void reported(const QString &text);

private:
    void touch();
    /// What fails on its way has changed nothing.
    void attempt(const std::function<void()> &change);
    /// Asks when another program has written the document's file since it was opened or saved here.
    bool mayOverwrite();
    QStringList replace(const Document &document, const QString &fileName);
    void setFile(const QString &fileName);
    void updateTitle();
    QString shownName() const;
    /// What was made of the looks of each item on the page, by its id.
    QHash<QUuid, QVariantMap> looks() const;

    MainScene *m_scene;
    DataEngine *m_data;
    QMainWindow *m_window;
    const PluginManager *m_plugins = nullptr;
    QString m_fileName;
    std::pair<QDateTime, qint64> m_fileState; ///< when it was written last, and its size, as opened or saved here
    QString m_firstFile;
    QString m_firstStructure;
    bool m_touched = false; ///< by a change that the undo stack does not know
    QHash<QUuid, QVariantMap> m_savedLooks;
    QTimer m_titleLater;
};

} // namespace Workbench
