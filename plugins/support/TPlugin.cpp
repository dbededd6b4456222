// SPDX-License-Identifier: BSD-3-Clause
#include "support/TPlugin.h"

#include <QApplication>
#include <QJsonArray>

#include <algorithm>

namespace {

QMainWindow *findMainWindow()
{
    for (QWidget *widget : QApplication::allWidgets())
        if (widget->objectName() == QLatin1String("mainWindow"))
            if (auto *window = qobject_cast<QMainWindow *>(widget))
                return window;
    return nullptr;
}

} // namespace

TPlugin::TPlugin(int licensed)
    : QObject(qApp), m_licensed(licensed), m_isHeadless(qApp->property("isHeadless").toBool())
{
    QMainWindow *window = findMainWindow();
    if (!window)
        return;
    m_mainWindow = WrMainWindow(window);
    connect(window, &QObject::destroyed, this, [this] {
        m_mainWindow = WrMainWindow();
        m_mainView = WrMainView();
    });
    auto *scene = window->findChild<QGraphicsScene *>(QStringLiteral("mainScene"));
    m_mainScene = WrMainScene(scene);
    m_mainView = WrMainView(window->findChild<QGraphicsView *>(QStringLiteral("mainView")));
    if (!scene)
        return;
    m_sceneUndoStack = WrUndoStack(scene->findChild<QUndoStack *>(QStringLiteral("sceneUndoStack")));
    connect(scene, &QObject::destroyed, this, [this] {
        m_mainScene = WrMainScene();
        m_sceneUndoStack = WrUndoStack();
    });
    // By name: the signal is the host's own.
    connect(scene, SIGNAL(activeItemChanged(QGraphicsWidget *)), this, SLOT(onActiveItemChanged(QGraphicsWidget *)));
}

QString TPlugin::name() const
{
    return m_metaData.value(QLatin1String("name")).toString();
}

QPair<int, int> TPlugin::version() const
{
    const QJsonArray version = m_metaData.value(QLatin1String("version")).toArray();
    return {version.at(0).toInt(), version.at(1).toInt()};
}

QString TPlugin::description() const
{
    const QJsonObject texts = m_metaData.value(QLatin1String("description")).toObject();
    const QString english = QStringLiteral("en");
    QString language = m_mainWindow.property("language").toString();
    if (language.isEmpty())
        language = english;
    const QString text = texts.value(language).toString();
    return text.isEmpty() ? texts.value(english).toString() : text;
}

bool TPlugin::setMetaData(const QJsonObject &metaData)
{
    const QJsonArray dependencies = metaData.value(QLatin1String("dependencies")).toArray();
    const auto qt = std::find_if(dependencies.begin(), dependencies.end(), [](const auto &dependency) {
        return dependency.toObject().value(QLatin1String("name")).toString().toLower() == QLatin1String("qt");
    });
    if (qt == dependencies.end())
        return false;
    const QJsonArray version = (*qt).toObject().value(QLatin1String("version")).toArray();
    if (version.at(0).toInt() != 6 || version.at(1).toInt() != 5)
        return false;

    m_metaData = metaData;
    setObjectName(name());
    if (!metaData.contains(QLatin1String("product")))
        return !m_licensed;
    const QJsonObject licensedProduct = metaData.value(QLatin1String("product")).toObject();
    return m_mainWindow.checkProductLicense(licensedProduct.value(QLatin1String("name")).toString());
}

QVariantList TPlugin::command_line_options() const
{
    return m_metaData.value(QLatin1String("command_line_options")).toArray().toVariantList();
}

QString TPlugin::id() const
{
    return m_metaData.value(QLatin1String("id")).toString();
}

bool TPlugin::canCreateItem(int) const
{
    return false;
}

QObject *TPlugin::createItem(int)
{
    return nullptr;
}

QString TPlugin::display_name() const
{
    const QJsonValue displayName = m_metaData.value(QLatin1String("display_name"));
    return displayName.isUndefined() ? name() : displayName.toString();
}

QString TPlugin::location() const
{
    return m_metaData.value(QLatin1String("location")).toString();
}

QString TPlugin::product() const
{
    return m_metaData.value(QLatin1String("product")).toString();
}

void TPlugin::onActiveItemChanged(QGraphicsWidget *item)
{
    m_activeItem = item;
}

#include "moc_TPlugin.cpp"
