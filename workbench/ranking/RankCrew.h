// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ranking/RankTable.h"

#include <QObject>
#include <QStringList>

#include <vector>

namespace Workbench {

/// Ranking by worker processes, one file at a time each. A worker says readyLine once it can work, then takes the name
/// of one file a line (percent-encoded) from standard input and answers each with answer(). It ends with its input. One
/// that crashes costs the file it was at and is replaced; so does an answer that is not understood. Needs a
/// QCoreApplication.
class RankCrew : public QObject {
    Q_OBJECT
public:
    /// What a worker says begins with a record separator: all else, be it before that in the line, is chatter.
    static constexpr char mark = '\x1e';
    static constexpr const char *readyLine = "\x1eready\n";
    /// One line of the ranking's CSV form, with the name as it was taken, which has no line breaks.
    static QByteArray answer(RankRow row, const QByteArray &encodedName, const RankLayout &layout);

    struct Plan {
        QString program;
        QStringList arguments; ///< that make it a worker
        int workers = 1;
        RankLayout layout;
    };

    RankCrew(Plan plan, QStringList files, QObject *parent = nullptr);
    /// Ends the workers with it, without a signal.
    ~RankCrew() override;

    void start();
    /// No more files are given out, and the workers are ended; finished() follows.
    void cancel();

    int done() const { return m_done; }
    /// In the order of the files. A row of a file that was not come to has neither parts nor a message.
    const std::vector<RankRow> &rows() const { return m_rows; }
    /// Why workers could not start; empty when they could.
    const QString &startFailure() const { return m_startFailure; }

Q_SIGNALS:
    /// The row is there.
    void fileDone(int index);
    /// What workers print.
    void chatter(const QByteArray &text);
    void finished();

private:
    struct Worker;

    void startWorker();
    void read(Worker &worker);
    void take(Worker &worker, const QByteArray &answer);
    void finish(Worker &worker, RankRow row);
    void giveNext(Worker &worker);
    void ended(Worker &worker);

    const Plan m_plan;
    const QStringList m_files;
    std::vector<RankRow> m_rows;
    std::vector<Worker *> m_workers;
    qsizetype m_next = 0;
    int m_done = 0;
    QString m_startFailure;
};

} // namespace Workbench
