// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/MagresTensor.h"

#include <QHash>

namespace Magres {

/// Finds tensors by label and index, or by label alone, in constant time. Of several that match, the one with the
/// lowest index counts, and of those with one index the one whose elements compare lowest: the list is in another order
/// after each time that it was stored and read back. Refers to the list, which must live as long and stay as it is.
class TensorIndex {
public:
    explicit TensorIndex(const QList<MagresTensor> &tensors);

    /// Null if there is none.
    const MagresTensor *find(const QByteArrayList &labels, qint32 No) const { return m_byAtom.value({labels, No}); }
    const MagresTensor *find(const QByteArrayList &labels) const { return m_byLabels.value(labels); }
    /// By label and index, by label alone only when that fails.
    const MagresTensor *findNearest(const QByteArrayList &labels, qint32 No) const
    {
        const MagresTensor *own = find(labels, No);
        return own ? own : find(labels);
    }

private:
    QHash<std::pair<QByteArrayList, qint32>, const MagresTensor *> m_byAtom;
    QHash<QByteArrayList, const MagresTensor *> m_byLabels;
};

} // namespace Magres
