// SPDX-License-Identifier: BSD-3-Clause
#include "parameters/TensorIndex.h"

namespace Magres {
namespace {

bool comesBefore(const MagresTensor &a, const MagresTensor &b)
{
    return a.No != b.No ? a.No < b.No : a.tensor < b.tensor;
}

} // namespace

TensorIndex::TensorIndex(const QList<MagresTensor> &tensors)
{
    m_byAtom.reserve(tensors.size());
    m_byLabels.reserve(tensors.size());
    const auto keepLowest = [](const MagresTensor *&slot, const MagresTensor &tensor) {
        if (!slot || comesBefore(tensor, *slot))
            slot = &tensor;
    };
    for (const MagresTensor &tensor : tensors) {
        keepLowest(m_byAtom[{tensor.labels, tensor.No}], tensor);
        keepLowest(m_byLabels[tensor.labels], tensor);
    }
}

} // namespace Magres
