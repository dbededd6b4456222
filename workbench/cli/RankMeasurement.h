// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/RankTable.h"
#include "cli/SimulateOptions.h"
#include "formats/ExperimentFile.h"

namespace Workbench {

class HostApplication;
class MessageLog;

/// Holds candidate structures against one experiment, one after the other, in one host. Each is taken through the
/// plug-in's own commands, and nothing of it stays in the host.
class RankMeasurement {
public:
    RankMeasurement(HostApplication &host, MessageLog &log, const SimulateOptions &options,
                    const Experiment &experiment);

    /// Whatever goes wrong with the file is the row's message.
    RankRow measure(const QString &file);

private:
    void compare(const QString &file, RankRow &row);
    void emptyDocument();

    HostApplication &m_host;
    MessageLog &m_log;
    const SimulateOptions &m_options;
    const Experiment &m_experiment;
};

} // namespace Workbench
