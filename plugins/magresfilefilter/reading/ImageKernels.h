// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "numerics/InstructionSet.h"

#include <cstddef>

// What stands behind NearestImage::squaredDistances(), for tests that compare the instruction sets. A set that is given
// must be supported.

namespace Magres {

/// A reduced lattice, as plain numbers.
struct ImageLattice {
    double basis[3][3];
    double dual[3][3];
    double certainSquared; ///< of a length below which every vector is the shortest
    struct Face {
        double vector[3];
        double limit; ///< a vector with a larger product with the face's is beyond it
    } faces[7];
};

/// The innermost loops. `squared` overlaps nothing that is read.
struct ImageKernels {
    /// squared[i] = squared length of what is left of from - (x[i], y[i], z[i]) after whole vectors of the basis have
    /// been taken from it; not a number where that is not certain to be the shortest.
    void (*squaredDistances)(const ImageLattice &lattice, const double *from, const double *x, const double *y,
                             const double *z, double *squared, std::size_t count);
    /// The same without a lattice, and always certain.
    void (*squaredDistancesAlone)(const double *from, const double *x, const double *y, const double *z,
                                  double *squared, std::size_t count);
};

// One variant per instruction set, in a namespace of its name.
namespace Baseline {
extern const ImageKernels imageKernels;
}
namespace Avx2 {
extern const ImageKernels imageKernels;
}
namespace Avx512 {
extern const ImageKernels imageKernels;
}

const ImageKernels &imageKernels(InstructionSet set);

} // namespace Magres
