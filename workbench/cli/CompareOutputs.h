// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/NucleusComparison.h"
#include "cli/CommandLine.h"
#include "formats/TableExport.h"

#include <functional>

namespace Workbench {

/// Where a comparison goes: standard output unless a table has a file.
class CompareOutputs {
public:
    /// Throws UsageError.
    explicit CompareOutputs(const CommandLine &line);

    /// Tables as `table` gives them, pictures of the comparisons.
    void write(const std::function<QByteArray(TableExport::Format)> &table,
               const std::vector<NucleusComparison> &comparisons) const;

private:
    TableExport::Format m_format = TableExport::Format::Text;
    QStringList m_fileNames;
};

} // namespace Workbench
