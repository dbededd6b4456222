// SPDX-License-Identifier: BSD-3-Clause
#include "parameters/TensorIndex.h"

namespace Magres {

TensorIndex::TensorIndex(const QList<MagresTensor> &tensors)
{
    m_byAtom.reserve(tensors.size());
    m_byLabels.reserve(tensors.size());
    const auto keepFirst = [](const MagresTensor *&slot, const MagresTensor &tensor) {
        if (!slot)
            slot = &tensor;
    };
    for (const MagresTensor &tensor : tensors) {
        keepFirst(m_byAtom[{tensor.labels, tensor.No}], tensor);
        keepFirst(m_byLabels[tensor.labels], tensor);
    }
}

} // namespace Magres
