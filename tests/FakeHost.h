// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtWidgets>

#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

/// Calls a method by its name, as hosts call plug-ins.
template <typename... Arguments>
bool tell(QObject *object, const char *method, const Arguments &...arguments)
{
    return QMetaObject::invokeMethod(object, method,
                                     QArgument<Arguments>(QMetaType::fromType<Arguments>().name(), arguments)...);
}

/// What it returns, in place of the value given.
template <typename Value, typename... Arguments>
Value call(QObject *object, const char *method, Value value, const Arguments &...arguments)
{
    QMetaObject::invokeMethod(object, method, QReturnArgument<Value>(QMetaType::fromType<Value>().name(), value),
                              QArgument<Arguments>(QMetaType::fromType<Arguments>().name(), arguments)...);
    return value;
}

/// A meta-object in which one method cannot be found by its name, as in a host that lacks it.
class MetaObjectWithout {
public:
    MetaObjectWithout(const QMetaObject &complete, const QByteArray &method) : m_metaObject(complete)
    {
        // The strings lie behind a table of offset and length, whose own size is the first offset.
        const uint *table = complete.d.stringdata;
        const size_t strings = table[0] / (2 * sizeof(uint));
        const size_t bytes = table[2 * strings - 2] + table[2 * strings - 1] + 1;
        m_strings.assign(table, table + (bytes + sizeof(uint) - 1) / sizeof(uint));
        char *text = reinterpret_cast<char *>(m_strings.data());
        for (size_t i = 0; i < strings; ++i)
            if (QByteArrayView(text + table[2 * i], qsizetype(table[2 * i + 1])) == method)
                text[table[2 * i]] = '#';
        m_metaObject.d.stringdata = m_strings.data();
    }

    const QMetaObject *get() const { return &m_metaObject; }

private:
    QMetaObject m_metaObject;
    std::vector<uint> m_strings;
};

/// A class of host objects without the method that the test leaves out.
template <typename Base>
class Crippled : public Base {
public:
    template <typename... Arguments>
    explicit Crippled(const QByteArray &method, Arguments &&...arguments)
        : Base(std::forward<Arguments>(arguments)...), m_metaObject(Base::staticMetaObject, method)
    {
    }
    const QMetaObject *metaObject() const override { return m_metaObject.get(); }

private:
    MetaObjectWithout m_metaObject;
};

/// What the fake host was asked, and the one way in which it misbehaves.
class Trace {
public:
    QByteArrayList calls;
    QByteArray throwing; ///< this method throws
    bool throwsNoStdException = false;
    QByteArray refusing; ///< this method does nothing and answers with the default
    QByteArray interrupted; ///< during this method something happens:
    std::function<void()> interruption;

    /// Whether the method is to do its work.
    bool operator()(const char *method)
    {
        calls.append(method);
        if (method == throwing && throwsNoStdException)
            throw 42;
        if (method == throwing)
            throw std::runtime_error("the host's own trouble");
        if (method == interrupted)
            interruption();
        return method != refusing;
    }

    /// The work of most methods.
    template <typename Value>
    void set(const char *method, Value &place, const std::type_identity_t<Value> &value)
    {
        if ((*this)(method))
            place = value;
    }
};
inline Trace trace;

/// The services of a host that are not widgets or items, in one object: data engine, nucleus tables, file filters, the
/// spectra of the only NMR item, and its plot.
class FakeServices : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariant entryIds READ offeredIds)
    Q_PROPERTY(QUuid activeEntryId MEMBER activeEntryId)

public:
    QList<QUuid> entryIds;
    QUuid activeEntryId;
    QMap<QUuid, QVariantMap> entries;
    QMap<QUuid, QVariantMap> data;
    QObject *filter = nullptr;
    int resets = 0;
    bool idsAsVariants = false; ///< another form of the same list

    QVariant offeredIds() const
    {
        return idsAsVariants ? QVariant(QVariantList(entryIds.begin(), entryIds.end())) : QVariant::fromValue(entryIds);
    }
    Q_INVOKABLE QVariantMap getDataMap(QUuid id) { return trace("getDataMap") ? data.value(id) : QVariantMap(); }
    Q_INVOKABLE QString spin(QString nucleus)
    {
        static const QMap<QString, QString> spins{
            {u"17O"_s, u"5/2"_s}, {u"35Cl"_s, u"3/2"_s}, {u"37Cl"_s, u"3/2"_s}, {u"2H"_s, u"1"_s}, {u"14N"_s, u"1"_s}};
        return trace("spin") ? spins.value(nucleus, u"1/2"_s) : QString();
    }
    Q_INVOKABLE double quadrupoleMoment(QString nucleus)
    {
        return !trace("quadrupoleMoment") ? 0.0 : nucleus == "17O"_L1 ? -2.558 : nucleus == "37Cl"_L1 ? -6.435 : 0.286;
    }
    Q_INVOKABLE double naturalAbundance(QString) { return trace("naturalAbundance") ? 1.0 : 0.0; }
    Q_INVOKABLE void addPluginFilter(QObject *object) { trace.set("addPluginFilter", filter, object); }
    Q_INVOKABLE void insertSpectrum(QUuid id, QVariantMap map) { trace.set("insertSpectrum", entries[id], map); }
    Q_INVOKABLE QVariantHash entryOrigParams(QUuid id, QString format)
    {
        if (!trace("entryOrigParams"))
            return {};
        QVariantMap map = entries.value(id);
        if (map.contains(u"RawData"_s))
            map = map.value(u"RawData"_s).toMap();
        const QVariant parameters = map.value(u"SpecInfo"_s).toMap().value(u"OriginalParameters"_s);
        return parameters.value<QMap<QString, QVariantHash>>().value(format);
    }
    Q_INVOKABLE QVariantMap entryPeakList(QUuid id)
    {
        return trace("entryPeakList") ? entries.value(id).value(u"Peaks"_s).toMap() : QVariantMap();
    }
    Q_INVOKABLE QString xUnitsString() { return trace("xUnitsString") ? u"ppm"_s : QString(); }
    Q_INVOKABLE QString yUnitsString() { return trace("yUnitsString") ? u"kHz"_s : QString(); }
    Q_INVOKABLE void fullReset() { trace.set("fullReset", resets, resets + 1); }

    QUuid addEntry(const QVariantMap &map)
    {
        const QUuid id = QUuid::createUuid();
        entryIds.append(id);
        entries.insert(id, map);
        if (activeEntryId.isNull())
            activeEntryId = id;
        return id;
    }
};

/// A molecule, NMR or table item.
class FakeItem : public QGraphicsWidget {
    Q_OBJECT
    Q_PROPERTY(QUuid id MEMBER id)

public:
    QUuid id = QUuid::createUuid();
    QVariantMap molecule;
    QPointer<QObject> spectra;
    QPointer<QObject> linked;
    QVariantList messages;
    QMenu *menu = nullptr;

    Q_INVOKABLE QVariantMap molMap() { return trace("molMap") ? molecule : QVariantMap(); }
    Q_INVOKABLE void setMolMap(QVariantMap map) { trace.set("setMolMap", molecule, map); }
    Q_INVOKABLE QObject *getNMRData() { return trace("getNMRData") ? spectra : nullptr; }
    Q_INVOKABLE void linkObject(QObject *other) { trace.set("linkObject", linked, other); }
    Q_INVOKABLE void sendMessage(QVariant message)
    {
        trace.set("sendMessage", messages, messages + QVariantList{message});
    }
    Q_INVOKABLE int colId(qint8 section) { return trace("colId") ? section : 0; }
    Q_INVOKABLE void typeCntxtMenu(QMenu *given) { trace.set("typeCntxtMenu", menu, given); }
};

/// A host's model over the plug-in's table, whose size does not matter here.
class FakeModel : public QAbstractTableModel {
    Q_OBJECT

public:
    QPointer<QObject> table;

    int rowCount(const QModelIndex & = {}) const override { return call(table, "tableModel_rowCount", 0); }
    int columnCount(const QModelIndex & = {}) const override { return call(table, "tableModel_columnCount", 0); }
    QVariant data(const QModelIndex &index, int role) const override
    {
        return call(table, "tableModel_data", QVariant(), index, role);
    }
    Q_INVOKABLE void beginResetModel()
    {
        if (trace("beginResetModel"))
            QAbstractTableModel::beginResetModel();
    }
    Q_INVOKABLE void endResetModel()
    {
        if (trace("endResetModel"))
            QAbstractTableModel::endResetModel();
    }
};

class FakeScene : public QGraphicsScene {
    Q_OBJECT

public:
    explicit FakeScene(const QByteArray &withoutMethod, FakeServices *fakeServices, QObject *parent)
        : QGraphicsScene(parent), without(withoutMethod), services(fakeServices)
    {
        setObjectName(u"mainScene"_s);
    }
    ~FakeScene() override { delete table; }

    QByteArray without;
    FakeServices *services;
    FakeItem *molecule = nullptr;
    FakeItem *nmr = nullptr;
    FakeItem *tableItem = nullptr;
    QPointer<QObject> table;
    FakeModel *model = nullptr;
    std::unique_ptr<QTableView> view;
    QStringList placed; ///< items in their order, where, and whether the user is asked
    QList<QGraphicsWidget *> dataItems; ///< that custom data was stored or deleted with

    Q_INVOKABLE QGraphicsWidget *createMolItem(const QRectF &rect, const QVariantMap &description, const bool asking)
    {
        if (!trace("createMolItem"))
            return nullptr;
        place(u"molecule"_s, rect, asking);
        molecule = newItem();
        molecule->molecule = description;
        return molecule;
    }
    Q_INVOKABLE QGraphicsWidget *createNMRItem(const QRectF &rect, const QVariantMap &spectrum, const bool asking)
    {
        if (!trace("createNMRItem"))
            return nullptr;
        place(u"spectrum"_s, rect, asking);
        nmr = newItem();
        nmr->spectra = services;
        services->activeEntryId = services->addEntry(spectrum);
        return nmr;
    }
    Q_INVOKABLE QGraphicsWidget *addCustomTableItem(QObject *object, bool asking)
    {
        if (!trace("addCustomTableItem"))
            return nullptr;
        place(u"table"_s, {}, asking);
        tableItem = newItem();
        table = object;
        model = new Crippled<FakeModel>(without);
        model->table = object;
        view = std::make_unique<QTableView>();
        view->setModel(model);
        model->setParent(view.get());
        tell<QGraphicsWidget *, QAbstractItemView *, QAbstractItemModel *>(object, "tableItem_init", tableItem,
                                                                           view.get(), model);
        return tableItem;
    }
    Q_INVOKABLE void setCustomData(QVariantMap map, QGraphicsWidget *item)
    {
        dataItems.append(item);
        if (trace("setCustomData"))
            services->data.insert(map.value(u"ID"_s).toUuid(), map);
    }
    Q_INVOKABLE void delCustomData(QUuid id, QGraphicsWidget *item)
    {
        dataItems.append(item);
        if (trace("delCustomData"))
            services->data.remove(id);
    }
    Q_INVOKABLE QRectF getEmptyRect() { return trace("getEmptyRect") ? QRectF(0, 0, 100, 100) : QRectF(); }

Q_SIGNALS:
    void activeItemChanged(QGraphicsWidget *item);

private:
    void place(const QString &what, const QRectF &at, bool asking)
    {
        placed.append(
            u"%1 %2,%3 %4x%5 %6"_s.arg(what).arg(at.x()).arg(at.y()).arg(at.width()).arg(at.height()).arg(asking));
    }
    FakeItem *newItem()
    {
        auto *item = new Crippled<FakeItem>(without);
        addItem(item);
        return item;
    }
};

class FakeWindow : public QMainWindow {
    Q_OBJECT
    Q_PROPERTY(QString language MEMBER language)
    Q_PROPERTY(QMenu *nmrContextMenu READ nmrContextMenu)

public:
    FakeWindow(FakeServices *fakeServices) : services(fakeServices) { setObjectName(u"mainWindow"_s); }

    FakeServices *services;
    QString language;
    QMenu menu;

    QMenu *nmrContextMenu() { return &menu; }
    Q_INVOKABLE QObject *dataEngine() { return trace("dataEngine") ? services : nullptr; }
    Q_INVOKABLE QObject *getNMRData() { return trace("getNMRData") ? services : nullptr; }
    Q_INVOKABLE QObject *nmrPlot() { return trace("nmrPlot") ? services : nullptr; }
    Q_INVOKABLE bool checkProductLicense(QString product)
    {
        return trace("checkProductLicense") && product == "licensed"_L1;
    }
};

/// A whole host around the plug-in, without the method that the test leaves out.
class FakeHost {
public:
    explicit FakeHost(const QByteArray &without = "-")
        : services(std::make_unique<Crippled<FakeServices>>(without)),
          window(std::make_unique<Crippled<FakeWindow>>(without, services.get())),
          scene(new Crippled<FakeScene>(without, without, services.get(), window.get()))
    {
        trace = {};
        qApp->setProperty("isHeadless", true);
        qApp->setProperty("fileFilters", QVariant::fromValue<QObject *>(services.get()));
        qApp->setProperty("nmrDataTables", QVariant::fromValue<QObject *>(services.get()));
    }
    ~FakeHost()
    {
        for (const char *name : {"isHeadless", "fileFilters", "nmrDataTables"})
            qApp->setProperty(name, QVariant());
    }

    std::unique_ptr<FakeServices> services;
    std::unique_ptr<FakeWindow> window;
    FakeScene *scene;
};
