// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>

namespace Workbench {

/// Where items go on a stack of A4 pages, one below the other without a gap. Scene units are 1/96 inch.
namespace PageLayout {

inline constexpr double pageWidth = 793.7;
inline constexpr double pageHeight = 1122.5;
inline constexpr double margin = 38;
inline constexpr double gap = 14;
inline constexpr double contentWidth = pageWidth - 2 * margin;

/// Heights of the rows of the page.
inline constexpr double structureHeight = 340;
inline constexpr double spectrumHeight = 360;
inline constexpr double spectrum2DHeight = 560;

/// The part of a structure row that the molecule takes, and takes at least; the table has the rest.
inline constexpr double moleculeShare = 0.40;
inline constexpr double leastMoleculeShare = 0.25;

int pageOf(double y);
QRectF page(int index);

/// The next free rectangle of full width below what is used (scene rectangle of all items, null when there are none);
/// at the top of the next page when the rest of the page is too low.
QRectF rowBelow(const QRectF &used, double height);

/// The left part of a row, for the molecule, and the right part, for its table.
QRectF moleculePart(const QRectF &row, double share = moleculeShare);
QRectF tablePart(const QRectF &row, double share = moleculeShare);
/// The molecule's share when its table would like to have this width.
double moleculeShareBeside(double tableWidth);

/// The pages that the used rectangle touches, at least one.
int pageCount(const QRectF &used);

} // namespace PageLayout

} // namespace Workbench
