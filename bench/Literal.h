// SPDX-License-Identifier: BSD-3-Clause
#pragma once

// The computations in their plainest form: slow, and obviously what is meant. Tests and benchmarks hold the fast ones
// against them, bit for bit.

#include "parameters/ElementTable.h"
#include "reading/Vectors.h"
#include "synthesis/LineShapes.h"

#include <array>
#include <vector>

namespace Literal {

using Magres::MagresAtom;
using Magres::Position;

std::vector<double> covalentRadii(const QList<MagresAtom> &atoms);

void detectBonds(QList<MagresAtom> &atoms, const std::vector<double> &radii);

/// `radii`: of the atoms, looked up once.
void completeMolecules(QList<MagresAtom> &atoms, const QList<double> &lattice, const std::vector<double> &radii);

/// Length of the shortest of v + i a + j b + l c, all of those tried that can be as short as v itself. For cells that
/// are not very skewed; in others there are too many.
double shortestImage(const Position &v, const std::array<Position, 3> &cell);

void addLorentzians(std::span<const LinePeak> peaks, double width, const SpectrumAxis &axis, std::span<double> data);

void addGaussians(std::span<const LinePeak> peaks, double widthF2, double widthF1, const SpectrumAxis &axisF2,
                  const SpectrumAxis &axisF1, std::size_t pointsF2, std::span<double> data);

} // namespace Literal
