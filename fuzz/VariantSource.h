// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "support/MetaTypes.h"

#include <QByteArrayView>
#include <QUuid>
#include <QVariant>

#include <array>
#include <cstring>

namespace Fuzz {

/// Variants, and changes to trees of them, made of bytes as long as there are any.
class VariantSource {
public:
    /// `words`: texts and keys worth trying.
    VariantSource(QByteArrayView bytes, QStringList words) : m_bytes(bytes), m_words(std::move(words)) { }

    bool atEnd() const { return m_bytes.isEmpty(); }
    quint8 byte() { return number<quint8>(); }

    template <typename Number>
    Number number()
    {
        std::array<char, sizeof(Number)> raw{};
        const qsizetype there = std::min<qsizetype>(m_bytes.size(), sizeof(Number));
        std::memcpy(raw.data(), m_bytes.data(), std::size_t(there));
        m_bytes = m_bytes.sliced(there);
        Number value{};
        std::memcpy(&value, raw.data(), sizeof(Number));
        return value;
    }

    QString word() { return m_words.value(byte() % m_words.size()); }
    QString key() { return byte() % 2 == 0 ? word() : QString::number(byte() % 16); }

    /// Of any type that such maps hold, or that a host might put there by mistake.
    QVariant value(int depth = 0)
    {
        switch (byte() % (depth < 4 ? 16 : 10)) {
        case 0:
            return {};
        case 1:
            return byte() % 2 == 0;
        case 2:
            return number<qint32>();
        case 3:
            return qint32(byte());
        case 4:
            return number<double>();
        case 5:
            return qint8(byte()) / 4.0;
        case 6:
            return word();
        case 7:
            return word().toLatin1();
        case 8:
            return number<qint64>();
        case 9:
            return QUuid::createUuidV5(QUuid(), word());
        case 10:
            return QVariant::fromValue(doubles<QList<double>>());
        case 11:
            return QVariant::fromValue(doubles<DoubleVector>());
        case 12:
            return QStringList{word(), word()};
        case 13:
            return QVariant::fromValue(QList<int>{byte(), number<qint32>()});
        case 14: {
            QVariantList list;
            for (int n = byte() % 8; n > 0; --n)
                list.append(value(depth + 1));
            return list;
        }
        default: {
            QVariantMap map;
            for (int n = byte() % 8; n > 0; --n)
                map.insert(key(), value(depth + 1));
            return map;
        }
        }
    }

    /// The tree with one place, at any depth, changed, added or removed.
    QVariant changed(const QVariant &tree)
    {
        if (tree.typeId() == QMetaType::QVariantMap)
            return changedMap(tree.toMap());
        if (tree.typeId() == QMetaType::QVariantHash)
            return changedMap(tree.toHash());
        return value();
    }

private:
    template <typename Map>
    QVariant changedMap(Map map)
    {
        const int what = byte();
        if (map.isEmpty() || what % 16 == 0)
            map.insert(key(), value());
        else if (const QString which = map.keys().at(number<quint16>() % map.size()); what % 16 == 1)
            map.remove(which);
        else
            map[which] = changed(map[which]);
        return map;
    }

    template <typename List>
    List doubles()
    {
        List list;
        for (int n = byte() % 12; n > 0; --n)
            list.push_back(byte() % 2 == 0 ? number<double>() : qint8(byte()) / 4.0);
        return list;
    }

    QByteArrayView m_bytes;
    QStringList m_words;
};

} // namespace Fuzz
