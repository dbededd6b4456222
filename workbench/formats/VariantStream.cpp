// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/VariantStream.h"

#include "data/Error.h"

#include "data/PrintableText.h"
#include "support/MetaTypes.h"

#include <QByteArrayList>
#include <QCoreApplication>
#include <QHash>
#include <QPointF>
#include <QRectF>
#include <QStringList>
#include <QUuid>
#include <QVariantHash>
#include <QVariantMap>

#include <functional>
#include <stdexcept>

namespace Workbench {

namespace {

using ParametersByFormat = QMap<QString, QVariantHash>;
using Points = QList<DoubleVector>;

/// Where in the tree reading or writing is: "Items[2].Data".
class Place {
public:
    void enter(const QString &key) { m_parts.append((m_parts.isEmpty() ? QString() : QStringLiteral(".")) + key); }
    void enter(qsizetype index) { m_parts.append(QStringLiteral("[%1]").arg(index)); }
    void leave() { m_parts.removeLast(); }
    qsizetype depth() const { return m_parts.size(); }

    [[noreturn]] void fail(const QString &what) const
    {
        const QString place = m_parts.isEmpty() ? Texts::tr("the whole") : m_parts.join(QString());
        throw std::runtime_error(printable(QStringLiteral("%1: %2").arg(place, what)).toStdString());
    }
    void checkDepth() const
    {
        if (depth() >= VariantStream::deepest)
            fail(Texts::tr("lists and maps lie more than %1 deep in each other").arg(VariantStream::deepest));
    }

private:
    QStringList m_parts;
};

class Writer;
class Reader;

struct ValueType {
    const char *name; ///< in the stream; that of the meta type
    QMetaType type;
    std::function<void(Writer &, const void *)> write;
    std::function<QVariant(Reader &)> read;
};

const std::vector<ValueType> &valueTypes();

class Writer {
public:
    explicit Writer(QDataStream &stream) : out(stream) { }

    void value(const QVariant &v)
    {
        const auto &types = valueTypes();
        const auto found =
            std::find_if(types.begin(), types.end(), [&](const ValueType &t) { return t.type == v.metaType(); });
        if (found == types.end())
            place.fail(Texts::tr("a value of the type %1 cannot be kept in a document")
                           .arg(QLatin1String(v.metaType().name())));
        out << quint8(found - types.begin());
        if (found->write)
            found->write(*this, v.constData());
    }

    template <typename List>
    void list(const List &values)
    {
        out << quint32(values.size());
        for (const auto &v : values)
            out << v;
    }

    void values(const QVariantList &list)
    {
        place.checkDepth();
        out << quint32(list.size());
        for (qsizetype i = 0; i < list.size(); ++i) {
            place.enter(i);
            value(list.at(i));
            place.leave();
        }
    }

    /// The keys in their order, whatever that of the map is.
    template <typename Map, typename WriteValue>
    void map(const Map &map, WriteValue writeValue)
    {
        place.checkDepth();
        QStringList keys = map.keys();
        keys.sort();
        out << quint32(keys.size());
        for (const QString &key : std::as_const(keys)) {
            place.enter(key);
            out << key.toUtf8();
            writeValue(*map.constFind(key));
            place.leave();
        }
    }
    template <typename Map>
    void variantMap(const Map &values)
    {
        map(values, [this](const QVariant &v) { value(v); });
    }

    /// The number of the points among those of the stream, then they themselves if they are new.
    void points(const Points &points)
    {
        const auto known = m_points.constFind(points.constData());
        const quint32 number = known == m_points.cend() ? quint32(m_points.size()) : *known;
        out << number;
        if (known != m_points.cend())
            return;
        // An empty list has no data of its own to be known by.
        m_points.insert(points.isEmpty() ? static_cast<const void *>(&points) : points.constData(), number);
        list(points);
    }

    QDataStream &out;
    Place place;

private:
    QHash<const void *, quint32> m_points;
};

class Reader {
public:
    explicit Reader(QDataStream &stream) : in(stream) { }

    void types()
    {
        const auto &known = valueTypes();
        for (int left = plain<quint8>(); left > 0; --left) {
            const auto name = plain<QByteArray>();
            const auto found =
                std::find_if(known.begin(), known.end(), [&](const ValueType &t) { return name == t.name; });
            if (found == known.end())
                place.fail(
                    Texts::tr("values of the type \"%1\" are not known").arg(QString::fromLatin1(name.left(80))));
            m_types.append(&*found);
        }
    }

    QVariant value()
    {
        const auto number = plain<quint8>();
        if (number >= m_types.size())
            place.fail(Texts::tr("a value of type %1 where %2 types are listed").arg(number).arg(m_types.size()));
        const ValueType *type = m_types.at(number);
        return type->read ? type->read(*this) : QVariant();
    }

    template <typename T>
    T plain()
    {
        T v{};
        in >> v;
        checkStatus();
        return v;
    }

    /// Each thing counted takes at least so many bytes.
    quint32 count(qint64 smallestSize)
    {
        const auto stated = plain<quint32>();
        const qint64 left = in.device()->bytesAvailable();
        if (stated > left / smallestSize)
            place.fail(Texts::tr("%1 values are stated where %2 bytes are left").arg(stated).arg(left));
        return stated;
    }

    template <typename List>
    List list(qint64 smallestSize)
    {
        List values;
        const quint32 size = count(smallestSize);
        values.reserve(size);
        for (quint32 i = 0; i < size; ++i)
            values.append(plain<typename List::value_type>());
        return values;
    }

    QVariantList values()
    {
        place.checkDepth();
        QVariantList list;
        const quint32 size = count(1);
        list.reserve(size);
        for (quint32 i = 0; i < size; ++i) {
            place.enter(i);
            list.append(value());
            place.leave();
        }
        return list;
    }

    template <typename Map, typename ReadValue>
    Map map(ReadValue readValue)
    {
        place.checkDepth();
        Map map;
        for (quint32 left = count(5); left > 0; --left) {
            const QString key = QString::fromUtf8(plain<QByteArray>());
            place.enter(key.left(80));
            map.insert(key, readValue());
            place.leave();
        }
        return map;
    }
    template <typename Map>
    Map variantMap()
    {
        return map<Map>([this] { return value(); });
    }

    Points points()
    {
        const auto number = plain<quint32>();
        if (number > m_points.size())
            place.fail(Texts::tr("points number %1 where %2 are known").arg(number).arg(m_points.size()));
        if (number == m_points.size())
            m_points.append(list<Points>(sizeof(qint64)));
        return m_points.at(number);
    }

    QDataStream &in;
    Place place;

private:
    void checkStatus() const
    {
        if (in.status() == QDataStream::ReadPastEnd)
            place.fail(Texts::tr("the data end too early"));
        if (in.status() != QDataStream::Ok)
            place.fail(Texts::tr("the data are damaged"));
    }

    QList<const ValueType *> m_types;
    QList<Points> m_points;
};

template <typename T>
ValueType plainType(const char *name)
{
    return {name, QMetaType::fromType<T>(), [](Writer &w, const void *v) { w.out << *static_cast<const T *>(v); },
            [](Reader &r) { return QVariant::fromValue(r.plain<T>()); }};
}

/// `smallestSize`: bytes of the stream that an entry takes at least.
template <typename T>
ValueType listType(const char *name, qint64 smallestSize)
{
    return {name, QMetaType::fromType<T>(), [](Writer &w, const void *v) { w.list(*static_cast<const T *>(v)); },
            [smallestSize](Reader &r) { return QVariant::fromValue(r.list<T>(smallestSize)); }};
}

template <typename T>
ValueType mapType(const char *name)
{
    return {name, QMetaType::fromType<T>(), [](Writer &w, const void *v) { w.variantMap(*static_cast<const T *>(v)); },
            [](Reader &r) { return QVariant::fromValue(r.variantMap<T>()); }};
}

/// The names stay as they are: documents keep them.
const std::vector<ValueType> &valueTypes()
{
    static const std::vector<ValueType> types{
        {"", QMetaType(), {}, {}},
        plainType<bool>("bool"),
        plainType<int>("int"),
        plainType<uint>("uint"),
        plainType<qlonglong>("qlonglong"),
        plainType<qulonglong>("qulonglong"),
        plainType<double>("double"),
        plainType<QString>("QString"),
        plainType<QByteArray>("QByteArray"),
        plainType<QUuid>("QUuid"),
        plainType<QPointF>("QPointF"),
        plainType<QRectF>("QRectF"),
        plainType<DoubleVector>("std::vector<double,std::allocator<double>>"),
        plainType<SignedCharVector>("std::vector<signed char>"),
        listType<QStringList>("QStringList", 4),
        listType<QByteArrayList>("QByteArrayList", 4),
        listType<QList<int>>("QList<int>", sizeof(int)),
        listType<QList<double>>("QList<double>", sizeof(double)),
        listType<QList<QUuid>>("QList<QUuid>", 16),
        mapType<QVariantMap>("QVariantMap"),
        mapType<QVariantHash>("QVariantHash"),
        {"QVariantList", QMetaType::fromType<QVariantList>(),
         [](Writer &w, const void *v) { w.values(*static_cast<const QVariantList *>(v)); },
         [](Reader &r) { return QVariant(r.values()); }},
        {"QMap<QString,QVariantHash>", QMetaType::fromType<ParametersByFormat>(),
         [](Writer &w, const void *v) {
             w.map(*static_cast<const ParametersByFormat *>(v), [&w](const QVariantHash &hash) { w.variantMap(hash); });
         },
         [](Reader &r) {
             return QVariant::fromValue(r.map<ParametersByFormat>([&r] { return r.variantMap<QVariantHash>(); }));
         }},
        {"QList<std::vector<double,std::allocator<double>>>", QMetaType::fromType<Points>(),
         [](Writer &w, const void *v) { w.points(*static_cast<const Points *>(v)); },
         [](Reader &r) { return QVariant::fromValue(r.points()); }},
    };
    return types;
}

} // namespace

void VariantStream::write(QDataStream &out, const QVariant &tree)
{
    const auto &types = valueTypes();
    out << quint8(types.size());
    for (const ValueType &type : types)
        out << QByteArray(type.name);
    Writer(out).value(tree);
}

QVariant VariantStream::read(QDataStream &in)
{
    Reader reader(in);
    reader.types();
    return reader.value();
}

} // namespace Workbench
