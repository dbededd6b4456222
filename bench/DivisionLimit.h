// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <cstddef>

namespace Bench {

/// quotients[i] = numerator / x[i], in the widest vectors that the processor has.
void divide(double numerator, const double *x, double *quotients, std::size_t count);

// One variant per instruction set, in a namespace of its name.
namespace Baseline {
void divide(double numerator, const double *x, double *quotients, std::size_t count);
}
namespace Avx2 {
void divide(double numerator, const double *x, double *quotients, std::size_t count);
}
namespace Avx512 {
void divide(double numerator, const double *x, double *quotients, std::size_t count);
}

} // namespace Bench
