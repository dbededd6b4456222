// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/powder/Lattice.h"

#include "analysis/powder/Kernels.h"

#include <algorithm>
#include <numbers>

namespace Workbench::Powder {

LatticeRows::LatticeRows(size_t n, size_t padding) : m_size(n), m_padding(padding)
{
    for (Row &row : m_rows) {
        for (auto *values : {&row.x, &row.y, &row.z, &row.inverse})
            values->resize(n + 1 + padding);
    }
    m_up.resize(n + 1);
    m_down.resize(n + 1);
    fill(m_rows[0]);
}

void LatticeRows::fill(Row &row)
{
    kernels().directions(m_size, m_index, row.x.data(), row.y.data(), row.z.data(), row.inverse.data());
    row.count = m_size - m_index + 1;
    std::fill_n(row.x.begin() + ptrdiff_t(row.count), m_padding, 0.0);
    std::fill_n(row.y.begin() + ptrdiff_t(row.count), m_padding, 0.0);
    std::fill_n(row.z.begin() + ptrdiff_t(row.count), m_padding, 1.0);
}

bool LatticeRows::advance()
{
    if (m_index == m_size)
        return false;
    ++m_index;
    m_current = 1 - m_current;
    fill(m_rows[m_current]);
    const Row &from = previous(), &to = row();
    kernels().solidAngles(m_size, from.count, from.x.data(), from.y.data(), from.z.data(), from.inverse.data(),
                          to.x.data(), to.y.data(), to.z.data(), to.inverse.data(), m_up.data(), m_down.data());
    const double scale = 0.5 * std::numbers::inv_pi;
    for (size_t j = 0; j + 1 < from.count; ++j) {
        m_up[j] *= scale;
        m_down[j] *= scale;
    }
    return true;
}

} // namespace Workbench::Powder
