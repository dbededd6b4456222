// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <vector>

namespace Workbench {

/// An experimental peak list: comma-separated text, one peak a line, `position[,height]` for a 1D spectrum and
/// `position,position_f1[,height]` for a 2D one, positions in ppm. Blank lines, comments from `#` on and one header
/// line (first field begins with a letter) are passed over. The height is 1 where none is given.
namespace PeakListFile {

struct Peak {
    double f2 = 0;
    double f1 = 0; ///< 0 in a 1D list
    double height = 1;

    bool operator==(const Peak &) const = default;
};

/// Errors are std::runtime_error with source (the name to show) and line.
std::vector<Peak> parse(const QByteArray &text, const QString &source, int dimensions);
std::vector<Peak> read(const QString &fileName, int dimensions);

/// The peaks in the form in which NMR data keep them.
QVariantMap toPeakMap(const std::vector<Peak> &peaks);

} // namespace PeakListFile

} // namespace Workbench
