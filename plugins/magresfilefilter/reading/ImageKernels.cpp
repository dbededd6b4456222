// SPDX-License-Identifier: BSD-3-Clause
// Compiled once per instruction set: numerics/InstructionSet.h says what such a source must not do.
#include "reading/ImageKernels.h"

namespace Magres::MAGRES_INSTRUCTION_SET {
namespace {

// Term by term as NearestImage has it, so that the bits are the same: whole numbers of basis vectors that are 0 change
// none.
void squaredDistances(const ImageLattice &lattice, const double *from, const double *x, const double *y,
                      const double *z, double *__restrict squared, std::size_t count)
{
    const ImageLattice l = lattice;
    const double fromX = from[0];
    const double fromY = from[1];
    const double fromZ = from[2];
    constexpr double shift = 0x1.8p52;
    for (std::size_t i = 0; i < count; ++i) {
        double vx = fromX - x[i];
        double vy = fromY - y[i];
        double vz = fromZ - z[i];
        const double direct = vx * vx + vy * vy + vz * vz;
        const double a = (l.dual[0][0] * vx + l.dual[0][1] * vy + l.dual[0][2] * vz + shift) - shift;
        const double b = (l.dual[1][0] * vx + l.dual[1][1] * vy + l.dual[1][2] * vz + shift) - shift;
        const double c = (l.dual[2][0] * vx + l.dual[2][1] * vy + l.dual[2][2] * vz + shift) - shift;
        vx = vx + -a * l.basis[0][0] + -b * l.basis[1][0] + -c * l.basis[2][0];
        vy = vy + -a * l.basis[0][1] + -b * l.basis[1][1] + -c * l.basis[2][1];
        vz = vz + -a * l.basis[0][2] + -b * l.basis[1][2] + -c * l.basis[2][2];
        const double image = vx * vx + vy * vy + vz * vz;
        // Selections between numbers that are there already, which compilers make without a branch.
        double uncertain = 0.0;
        for (const ImageLattice::Face &face : l.faces) {
            const double height = __builtin_fabs(face.vector[0] * vx + face.vector[1] * vy + face.vector[2] * vz);
            uncertain += height <= face.limit ? 0.0 : __builtin_nan("");
        }
        uncertain = image <= l.certainSquared ? 0.0 : uncertain;
        uncertain = direct <= l.certainSquared ? 0.0 : uncertain;
        const double nearest = direct <= l.certainSquared ? direct : image;
        squared[i] = nearest + uncertain;
    }
}

void squaredDistancesAlone(const double *from, const double *x, const double *y, const double *z,
                           double *__restrict squared, std::size_t count)
{
    const double fromX = from[0];
    const double fromY = from[1];
    const double fromZ = from[2];
    for (std::size_t i = 0; i < count; ++i) {
        const double vx = fromX - x[i];
        const double vy = fromY - y[i];
        const double vz = fromZ - z[i];
        squared[i] = vx * vx + vy * vy + vz * vz;
    }
}

} // namespace

const ImageKernels imageKernels = {squaredDistances, squaredDistancesAlone};

} // namespace Magres::MAGRES_INSTRUCTION_SET
