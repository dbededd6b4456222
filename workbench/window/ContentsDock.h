// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>
#include <QHash>
#include <QTreeWidget>
#include <QUuid>

namespace Workbench {

class DataEngine;
class DocumentItem;
class MainScene;
class NmrItem;
struct Spectrum;

/// What the document holds, as a tree: structures with their formula and cell, the items and spectra that belong to
/// them, and measured spectra. Enter or a double click goes there, F2 renames, Delete removes, the box hides an item,
/// and spectra can be dragged onto a plot.
class ContentsDock : public QDockWidget {
    Q_OBJECT
public:
    ContentsDock(MainScene *scene, DataEngine *data, QWidget *parent);

    QTreeWidget *tree() const { return m_tree; }

    /// Of a dragged spectrum: the item's id, a space, the entry's id.
    static const QString &mimeType();
    /// Puts a copy of the dragged spectrum onto the plot. False when that cannot be.
    bool dropOnto(const QByteArray &dragged, NmrItem *target);

Q_SIGNALS:
    void reported(const QString &text);

private:
    void watch(DocumentItem *item);
    void updateLater();
    void fill();
    QTreeWidgetItem *structureNode(QHash<QString, QTreeWidgetItem *> &nodes, const QString &source);
    QString describe(const DocumentItem *table) const;
    static QString simulatedText(const QString &name, const QString &source, const Spectrum &spectrum);
    void addSpectra(QHash<QString, QTreeWidgetItem *> &nodes, NmrItem *item);
    void activate(QTreeWidgetItem *node);
    void rename(QTreeWidgetItem *node);
    void remove(QTreeWidgetItem *node);
    void setHidden(QTreeWidgetItem *node);
    void openMenu(const QPoint &pos);
    DocumentItem *itemOf(const QTreeWidgetItem *node) const;
    /// On the page; null when there is none.
    DocumentItem *itemOf(const QUuid &id) const;
    QUuid entryOf(const QTreeWidgetItem *node) const;

    MainScene *m_scene;
    DataEngine *m_data;
    QTreeWidget *m_tree;
    bool m_filling = false;
    bool m_waiting = false;
    mutable QHash<QUuid, QString> m_descriptions; ///< by data set
};

} // namespace Workbench
