// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/NucleusComparison.h"
#include "formats/TableExport.h"

namespace Workbench {

/// A structure held against the lines of some nuclei, as it is printed.
struct ComparisonReport {
    QString file;
    CrystalStructure structure;
    QString spaceGroup; ///< empty: not found or not looked for
    std::vector<NucleusMeasurement> measurements;
    std::vector<NucleusComparison> comparisons; ///< one for each measurement

    QByteArray write(TableExport::Format format) const;

private:
    QByteArray text() const;
    QByteArray csv() const;
    QByteArray json() const;
    QStringList atomNames(const UniqueSite &site) const;
};

} // namespace Workbench
