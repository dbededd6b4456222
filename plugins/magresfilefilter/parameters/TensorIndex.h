// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/MagresTensor.h"

#include <QHash>

namespace Magres {

/// Finds tensors by label and index, or by label alone, in constant time. Of several that match, the first in the list
/// counts. Refers to the list, which must live as long and stay as it is.
class TensorIndex {
public:
    explicit TensorIndex(const QList<MagresTensor> &tensors);

    /// Null if there is none.
    const MagresTensor *find(const QByteArrayList &labels, qint32 No) const { return m_byAtom.value({labels, No}); }
    const MagresTensor *find(const QByteArrayList &labels) const { return m_byLabels.value(labels); }

private:
    QHash<std::pair<QByteArrayList, qint32>, const MagresTensor *> m_byAtom;
    QHash<QByteArrayList, const MagresTensor *> m_byLabels;
};

} // namespace Magres
