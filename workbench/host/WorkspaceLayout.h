// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QRectF>

namespace Workbench {

/// Where items go on the screen: rows that fill the window's width, structures above spectra. Scene units are pixels.
namespace WorkspaceLayout {

inline constexpr double gap = 6;

/// What a row of the workspace holds.
struct Row {
    enum Kind { Structure, Spectrum, Map } kind = Structure;
    /// Of a structure's table, and whether there is a molecule beside it.
    double tableWidth = 0;
    bool hasMolecule = true;
    bool hasTable = true;
};

/// The part of a row for the molecule (null when there is none) and for the rest.
struct Place {
    QRectF left;
    QRectF right;
};

/// The rows in their order, in a window of this size. They share its height as long as each stays high enough to be
/// read, and go on below its edge after that.
QList<Place> place(const QList<Row> &rows, const QSizeF &window);

} // namespace WorkspaceLayout

} // namespace Workbench
