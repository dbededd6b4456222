// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/RankTable.h"

#include <QStringList>

#include <functional>

namespace Workbench {

/// Ranking by worker processes. A worker says "ready" once it can work, then takes the name of one file a line
/// (percent-encoded) from standard input and answers each with one line of the ranking's CSV form. It ends with its
/// input.
namespace RankWorkers {

/// What a worker does.
void serve(const std::function<RankRow(const QString &file)> &measure, const RankLayout &layout);

struct Crew {
    QString program;
    QStringList arguments; ///< that make it a worker
    int workers = 1;
    RankLayout layout;
    /// Called whenever a file is done, with how many are.
    std::function<void(int done, const QString &file)> progress;
    /// What workers print on standard error.
    std::function<void(const QByteArray &text)> chatter;
};

/// Gives each worker one file at a time; rows are in the order of the files. A worker that crashes costs the file it
/// was at and is replaced. Workers that cannot start at all are a CommandError. Needs a QCoreApplication.
std::vector<RankRow> measure(const Crew &crew, const QStringList &files);

} // namespace RankWorkers

} // namespace Workbench
