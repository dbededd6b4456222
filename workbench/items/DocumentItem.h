// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/structure/CalculationMethod.h"
#include "items/NoteBar.h"

#include <QGraphicsWidget>
#include <QPointer>
#include <QUuid>
#include <QVariantMap>

#include <memory>

class QMenu;

namespace Workbench {

/// Base of everything that lies on the document page: an identity, a frame with a title, links to other items and the
/// messages that pass over them, and a context menu to which plug-ins may add theirs. Scene units are pixels at 96 dpi.
class DocumentItem : public QGraphicsWidget {
    Q_OBJECT
    Q_PROPERTY(QUuid id READ id)

public:
    /// A null id becomes a new one.
    explicit DocumentItem(const QUuid &id, QGraphicsItem *parent = nullptr);
    ~DocumentItem() override;

    QUuid id() const { return m_id; }
    /// What it is called: the user's name for it, or the title of its content with the source that this is from.
    QString title() const;
    /// Of its content.
    QString contentTitle() const { return m_title; }
    void setTitle(const QString &title);
    /// The file that the content is of, without the folder; empty when it is of none.
    QString source() const { return m_source; }
    void setSource(const QString &source);
    /// What is known of the source beyond its name, such as how it was calculated.
    QString sourceNote() const { return m_sourceNote; }
    void setSourceNote(const QString &note) { m_sourceNote = note; }
    /// How the source was calculated; empty where nobody knows.
    const CalculationMethod &method() const { return m_method; }
    void setMethod(const CalculationMethod &method) { m_method = method; }
    /// By the user; empty for none.
    QString givenName() const { return m_givenName; }
    void setGivenName(const QString &name);
    /// What was doubtful in the file that it is of, whole sentences. Kept with the document until the user has enough
    /// of them.
    const QStringList &doubts() const { return m_doubts; }
    void setDoubts(const QStringList &doubts);
    /// Said in the title bar while a mode of working lasts, on the screen only; empty for none.
    void setMode(const QString &mode);
    const QString &mode() const { return m_mode; }
    /// Where it lies on paper and, when somebody has put it there by hand, in the workspace (else an empty rectangle).
    /// The page shows one of both as the geometry.
    struct Place {
        QRectF page;
        QRectF workspace;
        bool operator==(const Place &) const = default;
    };
    const Place &place() const { return m_place; }
    void setPlace(const Place &place) { m_place = place; }

    /// Shown under the title, and offered in the context menu.
    void setNotes(const QList<ItemNote> &notes);
    const QList<ItemNote> &notes() const { return m_noteBar->notes(); }
    const NoteBar *noteBar() const { return m_noteBar; }
    /// As on paper from now on: without marks and, unless they are wanted there, without notes.
    void setOnPaper(bool onPaper, bool withNotes = false);
    /// What the frame, the title bar and the notes leave to the content.
    QRectF contentRect() const;
    QList<DocumentItem *> linkedItems() const;
    /// Links to these and to no others. The others' links to this item follow.
    void setLinkedItems(const QList<DocumentItem *> &items);

    /// The current item of a document has a strong frame and can be resized.
    bool isCurrent() const { return m_current; }
    void setCurrent(bool current);

    /// Links this item and the other, both ways. Objects that are no document items are ignored.
    Q_INVOKABLE void linkObject(QObject *other);
    /// Hands a message map to every linked item. What they send back meanwhile does not reach this item, so that an
    /// answer to a selection never overwrites the selection.
    Q_INVOKABLE void sendMessage(QVariant message);
    /// `sender` is null where no item says it but the window.
    virtual void receiveMessage(const QVariantMap &message, const DocumentItem *sender);

    /// How the item is shown, to be kept with a document. Missing or senseless values leave the view as it is.
    virtual QVariantMap viewSettings() const { return {}; }
    /// Those that somebody has worked on: all but from where and through which filter one looks.
    virtual QVariantMap madeSettings() const { return viewSettings(); }
    virtual void setViewSettings(const QVariantMap &) { }

    /// The item's menu, made up afresh at each call and owned by the item.
    virtual QMenu *contextMenu();
    /// Adds a menu's actions to the context menu for as long as that menu exists.
    void addContextMenu(QMenu *menu);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) final;
    /// The content as on paper, without frame and title, laid out for the content's size.
    virtual void paintPicture(QPainter *painter, const QRectF &area);

    /// True when painting goes to paper or a picture file rather than to a window.
    static bool isPageOutput(const QPainter *painter, const QWidget *widget);

Q_SIGNALS:
    void titleChanged();
    void doubtsChanged();
    void notesChanged();
    /// What an action of the item has done, for a status bar.
    void reported(const QString &text);
    /// The user has moved or resized the item by hand: its geometry, no more.
    void geometryEdited(const QRectF &before, const QRectF &after);
    /// The user has given the item another name, or none, in its own dialog.
    void nameEdited(const QString &before);

protected:
    virtual void paintContent(QPainter *painter, const QRectF &content, bool pageOutput);
    virtual void layoutContent(const QRectF &content);
    virtual void fillContextMenu(QMenu *menu);

    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

    /// What sendMessage() does, for one item alone.
    void sendMessageTo(DocumentItem *item, const QVariantMap &message);

    /// For dialogs; null when nobody looks.
    QWidget *viewWindow() const;
    /// True for the title bar, by which the item is moved.
    bool isTitleBar(const QPointF &pos) const;

protected:
    /// The title with the source.
    virtual QString sourcedTitle() const;

private:
    void layOut();
    void showNotes();
    void fillPictureMenu(QMenu *menu);
    void copyPicture();
    void savePicture();
    void printPicture();

    QUuid m_id;
    QString m_title;
    QString m_source;
    QString m_sourceNote;
    CalculationMethod m_method;
    QString m_givenName;
    QStringList m_doubts;
    QString m_mode;
    Place m_place;
    NoteBar *m_noteBar;
    bool m_notesWanted = true;
    QList<QPointer<DocumentItem>> m_linked;
    QList<QPointer<QMenu>> m_pluginMenus;
    std::unique_ptr<QMenu> m_menu;
    bool m_sending = false;
    bool m_current = false;
    QGraphicsItem *m_grip;
    bool m_moving = false;
    QRectF m_geometryAtPress;
};

} // namespace Workbench
