// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/IPlugin_v1_4.h"
#include "support/WrHandles.h"
#include "support/WrMainScene.h"
#include "support/WrMainWindow.h"

#include <QJsonObject>
#include <QPointer>

/// Base of a plug-in object: answers the host's questions from the embedded metadata and holds the host's main objects.
/// Until setMetaData() has accepted the metadata, all answers are empty.
class TPlugin : public QObject, public IPlugin_v1_4 {
    Q_OBJECT
    Q_INTERFACES(IPlugin IPlugin_v1_1 IPlugin_v1_2 IPlugin_v1_3 IPlugin_v1_4)

public:
    /// `licensed`: non-zero when the plug-in must not be used unless its metadata names a product that the host
    /// licenses.
    explicit TPlugin(int licensed);

    QString name() const override;
    QPair<int, int> version() const override;
    QString description() const override;
    /// Accepts metadata whose Qt dependency is 6.5, the version of the host's plug-in interface.
    bool setMetaData(const QJsonObject &metaData) override;
    void reserved5() override { }
    QVariantList command_line_options() const override;
    void reserved7() override { }
    QString id() const override;
    bool canCreateItem(int itemType) const override;
    void *reserved10() override { return nullptr; }
    QObject *createItem(int itemType) override;
    QString display_name() const override;

    QString location() const;
    QString product() const;

    /// Without a main window at construction, all of these are null, and again when the host has deleted its objects.
    const WrMainWindow &mainWindow() const { return m_mainWindow; }
    const WrUndoStack &sceneUndoStack() const { return m_sceneUndoStack; }
    const WrMainScene &mainScene() const { return m_mainScene; }
    const WrMainView &mainView() const { return m_mainView; }
    /// Nobody is there to answer a dialog.
    bool isHeadless() const { return m_isHeadless; }

    /// The item on the page that became active last; null if it is gone.
    QGraphicsWidget *activeItem() const { return m_activeItem; }

public Q_SLOTS:
    void onActiveItemChanged(QGraphicsWidget *item);

private:
    QJsonObject m_metaData;
    WrMainWindow m_mainWindow;
    WrUndoStack m_sceneUndoStack;
    WrMainScene m_mainScene;
    WrMainView m_mainView;
    int m_licensed;
    bool m_isHeadless;
    QPointer<QGraphicsWidget> m_activeItem;
};
