// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stddef.h>

// What KernelLoops.cpp is compiled for, once per instruction set. Plain pointers and structures only: an inline
// function of a library, compiled here for a processor that the program may not meet, could be the one that the linker
// keeps.

namespace Workbench::Powder {

/// A quadratic form: coefficients of xx, yy, zz, xy, xz, yz.
using Form = double[6];

/// nu(b) = constant + b.A.b + quartic (b.q.b)^2 in Hz, for unit vectors b.
struct FrequencyForm {
    double constant;
    double quartic;
    Form quadratic; ///< A
    Form coupling; ///< q
};

/// How many orientations go side by side through the computation of sidebands.
inline constexpr int laneCount = 16;

/// Of the transform of 2^n, 3 * 2^n or 5 * 2^n points, n >= 2: cosines and sines of 2 pi i / size, i < size.
struct Twiddles {
    size_t size;
    const double *cosines;
    const double *sines;
};

/// Between arrays that a transform reads and writes at the same places: what lies a multiple of 4 KB apart gets into
/// each other's way in the nearest cache.
constexpr size_t arrayGap = 40;

/// The same loops for one instruction set.
struct Kernels {
    /// Row `row` of one octant of the lattice of `n` rows: vertices j = 0 ... n - row, in the direction
    /// (j, n - row - j, row); inverse lengths of these, and unit vectors.
    void (*directions)(size_t n, size_t row, double *x, double *y, double *z, double *inverse);
    /// Solid angles of the spherical triangles between a row of `count` vertices and the next: `up` stand on the row
    /// (count - 1), `down` on the next one (count - 2).
    void (*solidAngles)(size_t n, size_t count, const double *x0, const double *y0, const double *z0, const double *i0,
                        const double *x1, const double *y1, const double *z1, const double *i1, double *up,
                        double *down);
    /// Values below 0 become 0, values above `limit` become that.
    void (*frequencies)(const FrequencyForm *form, double limit, size_t count, const double *x, const double *y,
                        const double *z, double *nu);
    /// Prepares to add to the bins, for each triangle j, the distribution of a function that is linear over it: corners
    /// row[j], row[j + 1], next[j] with weights up[j] and row[j + 1], next[j], next[j + 1] with weights down[j]. Adds
    /// to each corner by how much the slope of the distribution changes there; what has no finite slopes goes into the
    /// bins at once. Positions are in bins and within them.
    ///
    /// A bin holds the integral of the distribution times a hat, 1 at the bin's place, a whole number, and 0 at its
    /// neighbours': shares of intensity between two of them, whose centre of gravity is right. What is added are second
    /// differences of that from bin to bin; they reach three bins beyond that of the highest corner.
    void (*addTriangles)(size_t count, const double *row, const double *next, const double *up, const double *down,
                         double *slopes, double *nextSlopes, double *bins);
    /// The second differences that those changes make. They become 0.
    void (*addCorners)(size_t count, const double *places, double *slopes, double *bins);
    /// The phase in turns that the periodic part of the frequency accumulates, at `steps` even times of a rotor period,
    /// for rotor axes (x, y, z) with z > -1, laneCount of them; sideband weights from it, which add up to 1.
    /// weights[lane * steps + (k mod steps)]. The constant of the form does not matter. `work` holds
    /// 4 (laneCount steps + arrayGap) doubles.
    void (*sidebands)(const FrequencyForm *form, double rate, const Twiddles *twiddles, const double *x,
                      const double *y, const double *z, double *work, double *weights);
    /// The same for one triangle times the sum of three weights, of each of `count` sidebands: at the corners, and in
    /// bins[b * count + k]. `sum` is room for `count` numbers.
    void (*addWeightedTriangle)(const double *corners, double part, size_t count, const double *w0, const double *w1,
                                const double *w2, double *slopes0, double *slopes1, double *slopes2, double *sum,
                                double *bins);
    void (*addWeightedCorner)(double place, size_t count, double *slopes, double *bins);
    /// Forward transform of `batch` interleaved sequences. True: the result is in the other arrays, of the same size;
    /// false: in re, im. All are overwritten.
    bool (*transform)(const Twiddles *twiddles, size_t batch, double *re, double *im, double *otherRe, double *otherIm);
};

namespace baseline {
extern const Kernels kernels;
}
namespace avx2 {
extern const Kernels kernels;
}
namespace avx512 {
extern const Kernels kernels;
}

} // namespace Workbench::Powder
