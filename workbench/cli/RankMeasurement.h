// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/ComparisonOptions.h"
#include "cli/SimulateOptions.h"
#include "formats/ExperimentFile.h"
#include "ranking/ShiftRanking.h"

namespace Workbench {

class HostApplication;
class MessageLog;

/// What structures are ranked by: the shifts of any number of nuclei, or a 2D spectrum or one with quadrupolar shifts,
/// which the plug-in has to simulate.
struct RankPlan {
    std::optional<SimulateOptions> spectrum; ///< where one is simulated
    QString experiment; ///< of that spectrum
    ComparisonOptions shifts; ///< where none is
    QMap<QString, QString> isotopes;

    static std::vector<OptionSpec> specs();
    /// Throws UsageError.
    static RankPlan parse(const CommandLine &line);
    RankLayout layout() const;
};

/// Holds candidate structures against one plan, one after the other, in one host. Nothing of a structure stays in the
/// host.
class RankMeasurement {
public:
    /// Reads the experiments. Errors name the file; what was assumed in reading goes to `notes`.
    explicit RankMeasurement(const RankPlan &plan, QStringList *notes = nullptr);

    /// Whatever goes wrong with the file is the row's message.
    RankRow measure(HostApplication &host, MessageLog &log, const QString &file) const;
    /// On what the numbers hang: RankRow::basis.
    QString basis() const;
    /// What there is to say about all rows together.
    QStringList notesOn(const std::vector<RankRow> &rows) const { return m_shifts.notesOn(rows); }

private:
    void compareShifts(HostApplication &host, MessageLog &log, RankRow &row) const;
    void compareSpectra(HostApplication &host, MessageLog &log, RankRow &row) const;

    RankPlan m_plan;
    ShiftRanking m_shifts;
    std::optional<Experiment> m_experiment;
};

} // namespace Workbench
