// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDataStream>
#include <QList>
#include <QList>
#include <QMetaType>

#include <array>
#include <vector>

// The types of numbers that cross the host boundary inside variants, and the names under which documents keep them.
// Include this wherever such a vector goes into a QVariant: all translation units must agree on the name.

/// Documents keep vectors of doubles under the full template name; g++ would shorten it.
template <>
constexpr auto QtPrivate::typenameHelper<std::vector<double>>()
{
    constexpr char name[] = "std::vector<double,std::allocator<double>>";
    std::array<char, sizeof(name)> result{};
    for (size_t i = 0; i < sizeof(name); ++i)
        result[i] = name[i];
    return result;
}

// QVariant finds these through argument-dependent lookup, hence namespace std.
namespace std {

template <typename Number>
QDataStream &operator<<(QDataStream &out, const vector<Number> &values)
{
    out << qint64(values.size());
    for (Number v : values)
        out << v;
    return out;
}

template <typename Number>
QDataStream &operator>>(QDataStream &in, vector<Number> &values)
{
    qint64 count = 0;
    in >> count;
    values.clear();
    if (count < 0)
        in.setStatus(QDataStream::ReadCorruptData);
    // No reservation from the stated count: a damaged stream must not allocate more than it holds.
    for (qint64 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
        Number v{};
        in >> v;
        values.push_back(v);
    }
    return in;
}

} // namespace std

using DoubleVector = std::vector<double>;
using SignedCharVector = std::vector<signed char>;

/// Registers the types under their persisted names, and the short name of the vector of doubles as an alias, so that a
/// host that uses the short one agrees on the type. Repeated calls do no harm.
inline void registerSharedMetaTypes()
{
    qRegisterMetaType<DoubleVector>();
    QMetaType::registerNormalizedTypedef("std::vector<double>", QMetaType::fromType<DoubleVector>());
    qRegisterMetaType<QList<DoubleVector>>();
    qRegisterMetaType<SignedCharVector>();
}
