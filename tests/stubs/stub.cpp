// SPDX-License-Identifier: BSD-3-Clause
#include "support/IPlugin_v1_4.h"

#include <QtWidgets>

#include <csignal>
#include <stdexcept>

/// A plug-in for tests of hosts: registers as a file filter, adds a menu entry, accepts metadata that depend on Qt 6.5,
/// says that it makes items of type 42, and reads files that begin with "stub" as one empty molecule. A file that
/// begins with "stub-fail" raises an exception after the molecule was made, and one that begins with "stub-kill" ends
/// the program at once.
class StubPlugin : public QObject, public IPlugin_v1_4 {
    Q_OBJECT
    Q_INTERFACES(IPlugin IPlugin_v1_1 IPlugin_v1_2 IPlugin_v1_3 IPlugin_v1_4)
public:
    StubPlugin()
    {
        auto *filters = qApp->property("fileFilters").value<QObject *>();
        QMetaObject::invokeMethod(filters, "addPluginFilter", Q_ARG(QObject *, this));
        for (QWidget *widget : QApplication::allWidgets()) {
            if (widget->objectName() == QLatin1String("mainWindow"))
                widget->property("nmrContextMenu").value<QMenu *>()->addAction(QStringLiteral("Stub"));
        }
    }

    QString name() const override { return m_metaData.value(QLatin1String("name")).toString(); }
    QPair<int, int> version() const override { return {1, 2}; }
    QString description() const override { return QStringLiteral("A <b>stub</b>"); }
    bool setMetaData(const QJsonObject &metaData) override
    {
        const QJsonArray version = metaData.value(QLatin1String("dependencies"))[0][QLatin1String("version")].toArray();
        m_metaData = metaData;
        return version == QJsonArray{6, 5};
    }
    void reserved5() override { }
    QVariantList command_line_options() const override { return {}; }
    void reserved7() override { }
    QString id() const override { return m_metaData.value(QLatin1String("id")).toString(); }
    bool canCreateItem(int type) const override { return type == 42; }
    void *reserved10() override { return nullptr; }
    QObject *createItem(int) override { return nullptr; }
    QString display_name() const override { return name(); }

    Q_INVOKABLE bool fileFilter_canRead() const { return true; }
    Q_INVOKABLE QString fileFilter_name() const { return QStringLiteral("Stub files"); }
    Q_INVOKABLE QString fileFilter_extensions() const { return QStringLiteral("*.stub"); }
    Q_INVOKABLE bool fileFilter_matching(QString fileName) const { return start(fileName).startsWith("stub"); }
    Q_INVOKABLE QList<QGraphicsWidget *> fileFilter_read(QString fileName, const QRectF &rect) const
    {
        QGraphicsWidget *item = nullptr;
        for (QWidget *widget : QApplication::allWidgets()) {
            if (auto *scene = widget->findChild<QGraphicsScene *>(QStringLiteral("mainScene"))) {
                QMetaObject::invokeMethod(scene, "createMolItem", Q_RETURN_ARG(QGraphicsWidget *, item),
                                          Q_ARG(QRectF, rect), Q_ARG(QVariantMap, {}), Q_ARG(bool, false));
            }
        }
        if (start(fileName).startsWith("stub-kill"))
            std::raise(SIGKILL);
        if (start(fileName).startsWith("stub-fail"))
            throw std::runtime_error("the stub fails on purpose");
        return {item};
    }

private:
    static QByteArray start(const QString &fileName)
    {
        QFile file(fileName);
        return file.open(QIODevice::ReadOnly) ? file.read(9) : QByteArray();
    }

    QJsonObject m_metaData;
};

/// Built several times, with the faults that its definitions name.
class Stub : public StubPlugin {
    Q_OBJECT
#if defined(EMPTYSTUB)
    Q_PLUGIN_METADATA(IID "org.toran.IPlugin/1.0")
#elif defined(FOREIGNSTUB)
    Q_PLUGIN_METADATA(IID "org.example.Something/1.0" FILE "good.json")
#elif defined(OTHERQTSTUB)
    Q_PLUGIN_METADATA(IID "org.toran.IPlugin/1.0" FILE "otherqt.json")
#else
    Q_PLUGIN_METADATA(IID "org.toran.IPlugin/1.0" FILE "good.json")
#endif

#ifdef THROWINGSTUB
public:
    Stub()
    {
        throw std::runtime_error("the constructor of the stub fails");
    }
#endif
};

#include "stub.moc"
