// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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
    QString title() const { return m_title; }
    void setTitle(const QString &title);
    /// Said in the title bar while it holds, on the screen only; empty for nothing.
    void setNote(const QString &note);
    /// What the frame and the title bar leave to the content.
    QRectF contentRect() const;
    QList<DocumentItem *> linkedItems() const;

    /// The current item of a document has a strong frame and can be resized.
    bool isCurrent() const { return m_current; }
    void setCurrent(bool current);

    /// Links this item and the other, both ways. Objects that are no document items are ignored.
    Q_INVOKABLE void linkObject(QObject *other);
    /// Hands a message map to every linked item. What they send back meanwhile does not reach this item, so that an
    /// answer to a selection never overwrites the selection.
    Q_INVOKABLE void sendMessage(QVariant message);
    virtual void receiveMessage(const QVariantMap &message);

    /// How the item is shown, to be kept with a document. Missing or senseless values leave the view as it is.
    virtual QVariantMap viewSettings() const { return {}; }
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
    /// What an action of the item has done, for a status bar.
    void reported(const QString &text);
    /// The user has moved or resized the item by hand.
    void geometryEdited(const QRectF &before, const QRectF &after);

protected:
    virtual void paintContent(QPainter *painter, const QRectF &content, bool pageOutput);
    virtual void layoutContent(const QRectF &content);
    virtual void fillContextMenu(QMenu *menu);

    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

    /// For dialogs; null when nobody looks.
    QWidget *viewWindow() const;
    /// True for the title bar, by which the item is moved.
    bool isTitleBar(const QPointF &pos) const;

private:
    void fillPictureMenu(QMenu *menu);
    void copyPicture();
    void savePicture();
    void printPicture();

    QUuid m_id;
    QString m_title;
    QString m_note;
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
