// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <cstddef>

namespace Bench {

/// quotients[i] = numerator / x[i], in the widest vectors that the processor has.
void divide(double numerator, const double *x, double *quotients, std::size_t count);

} // namespace Bench
