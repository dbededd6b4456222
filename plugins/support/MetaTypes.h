// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDataStream>
#include <QIODevice>
#include <QList>
#include <QMetaType>
#include <QSysInfo>
#include <QtEndian>

#include <array>
#include <utility>
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

/// Numbers are streamed in blocks of this many: large enough to cost little each, small enough for the inner caches.
inline constexpr qint64 streamedBlock = 8192;

// QVariant finds these through argument-dependent lookup, hence namespace std. The count, 64 bits, then the numbers in
// full precision, in the stream's byte order.
namespace std {

template <typename Number>
QDataStream &operator<<(QDataStream &out, const vector<Number> &values)
{
    out << qint64(values.size());
    const bool swap = (out.byteOrder() == QDataStream::BigEndian) != (QSysInfo::ByteOrder == QSysInfo::BigEndian);
    array<Number, streamedBlock> swapped;
    for (size_t done = 0; done < values.size() && out.status() == QDataStream::Ok; done += streamedBlock) {
        const qsizetype count = qMin<qsizetype>(streamedBlock, values.size() - done);
        const Number *block = values.data() + done;
        if (swap) {
            qbswap<sizeof(Number)>(block, count, swapped.data());
            block = swapped.data();
        }
        out.writeRawData(reinterpret_cast<const char *>(block), int(count * sizeof(Number)));
    }
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
    // The stated count reserves no more than the stream holds, which a damaged one must not exceed.
    if (in.status() == QDataStream::Ok && in.device())
        values.reserve(size_t(qMin(count, in.device()->bytesAvailable() / qint64(sizeof(Number)))));
    const bool swap = (in.byteOrder() == QDataStream::BigEndian) != (QSysInfo::ByteOrder == QSysInfo::BigEndian);
    array<Number, streamedBlock> block;
    for (qint64 left = count; left > 0 && in.status() == QDataStream::Ok; left -= streamedBlock) {
        const qint64 numbers = qMin(left, streamedBlock);
        const int bytes = int(numbers * qint64(sizeof(Number)));
        if (in.readRawData(reinterpret_cast<char *>(block.data()), bytes) != bytes) {
            in.setStatus(QDataStream::ReadPastEnd);
            break;
        }
        if (swap)
            qbswap<sizeof(Number)>(block.data(), numbers, block.data());
        values.insert(values.end(), block.begin(), block.begin() + numbers);
    }
    return in;
}

} // namespace std

using DoubleVector = std::vector<double>;
using SignedCharVector = std::vector<signed char>;

/// Makes variants of the type agree with those of a host that knows it by another name, as one does that is built
/// without this header. If that name is still free, it becomes another name of the type. If the host has used its name
/// before, the two stay apart, and values are converted, both ways.
template <typename Type>
void registerUnderAnotherName(const char *name)
{
    const QMetaType own = QMetaType::fromType<Type>();
    QMetaType::registerNormalizedTypedef(name, own);
    const QMetaType hosts = QMetaType::fromName(name);
    if (hosts == own)
        return;
    for (const auto &[from, to] : {std::pair(hosts, own), std::pair(own, hosts)})
        if (!QMetaType::hasRegisteredConverterFunction(from, to))
            QMetaType::registerConverterFunction(
                [](const void *source, void *target) {
                    *static_cast<Type *>(target) = *static_cast<const Type *>(source);
                    return true;
                },
                from, to);
}

/// Registers the types under their persisted names. To be called before a variant of a host is looked at; repeated
/// calls do no harm.
inline void registerSharedMetaTypes()
{
    qRegisterMetaType<DoubleVector>();
    qRegisterMetaType<QList<DoubleVector>>();
    qRegisterMetaType<SignedCharVector>();
    // As g++ and clang name the types.
    registerUnderAnotherName<DoubleVector>("std::vector<double>");
    registerUnderAnotherName<QList<DoubleVector>>("QList<std::vector<double>>");
}
