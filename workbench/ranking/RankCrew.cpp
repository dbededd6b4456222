// SPDX-License-Identifier: GPL-3.0-or-later
#include "ranking/RankCrew.h"

#include "data/Error.h"

#include "data/Elision.h"

#include <QProcess>

#include <algorithm>

namespace Workbench {

struct RankCrew::Worker : QProcess {
    using QProcess::QProcess;
    qsizetype file = -1; ///< at which it works
    bool ready = false;
};

namespace {

QString endText(const QProcess &process)
{
    return process.exitStatus() == QProcess::CrashExit
        ? Texts::tr("the program crashed while it worked on this file")
        : Texts::tr("the program ended with status %1 while it worked on this file").arg(process.exitCode());
}

} // namespace

RankCrew::RankCrew(Plan plan, QStringList files, QObject *parent)
    : QObject(parent), m_plan(std::move(plan)), m_files(std::move(files)), m_rows(std::size_t(m_files.size()))
{
    for (qsizetype i = 0; i < m_files.size(); ++i)
        m_rows[std::size_t(i)].file = m_files[i];
}

RankCrew::~RankCrew()
{
    for (Worker *worker : m_workers) {
        worker->disconnect(this);
        worker->kill();
        worker->waitForFinished(1000);
    }
}

void RankCrew::start()
{
    for (qsizetype i = 0; i < std::min<qsizetype>(m_plan.workers, m_files.size()); ++i)
        startWorker();
    if (m_workers.empty())
        QMetaObject::invokeMethod(this, &RankCrew::finished, Qt::QueuedConnection);
}

void RankCrew::cancel()
{
    m_next = m_files.size();
    for (Worker *worker : m_workers) {
        worker->file = -1;
        worker->kill();
    }
}

void RankCrew::startWorker()
{
    auto *worker = new Worker(this);
    m_workers.push_back(worker);
    connect(worker, &QProcess::readyReadStandardOutput, this, [this, worker] { read(*worker); });
    connect(worker, &QProcess::finished, this, [this, worker] { ended(*worker); });
    connect(worker, &QProcess::errorOccurred, this, [this, worker](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            ended(*worker);
    });
    worker->start(m_plan.program, m_plan.arguments);
}

QByteArray RankCrew::answer(RankRow row, const QByteArray &encodedName, const RankLayout &layout)
{
    row.file = QString::fromLatin1(encodedName);
    return mark + RankTable::csvRow(row, layout, row.failed() ? 0 : 1);
}

void RankCrew::read(Worker &worker)
{
    while (worker.canReadLine()) {
        const QByteArray line = worker.readLine();
        const qsizetype at = line.indexOf(mark);
        if (at != 0) // a plug-in that prints
            Q_EMIT chatter(at < 0 ? line : line.first(at) + '\n');
        if (at < 0)
            continue;
        if (worker.file >= 0)
            take(worker, line.sliced(at + 1));
        worker.ready = true;
        giveNext(worker);
    }
}

void RankCrew::take(Worker &worker, const QByteArray &answer)
{
    RankRow row;
    try {
        row = RankTable::parseRows(answer, QStringLiteral("worker"), m_plan.layout).rows.at(0);
    } catch (const std::exception &error) {
        row.fail(error);
    }
    row.file = m_files[worker.file];
    finish(worker, std::move(row));
}

void RankCrew::finish(Worker &worker, RankRow row)
{
    const qsizetype file = std::exchange(worker.file, -1);
    m_rows[std::size_t(file)] = std::move(row);
    ++m_done;
    Q_EMIT fileDone(int(file));
}

void RankCrew::giveNext(Worker &worker)
{
    if (m_next >= m_files.size())
        return worker.closeWriteChannel();
    worker.file = m_next++;
    worker.write(m_files[worker.file].toUtf8().toPercentEncoding() + '\n');
}

void RankCrew::ended(Worker &worker)
{
    const QByteArray said = worker.readAllStandardError();
    if (worker.ready) {
        Q_EMIT chatter(said);
    } else if (m_next < m_files.size()) {
        m_startFailure = QString::fromUtf8(said).trimmed();
        if (m_startFailure.isEmpty())
            m_startFailure = Texts::tr("a worker process cannot be started: ") + worker.errorString();
    }
    if (worker.file >= 0) {
        RankRow row;
        row.file = m_files[worker.file];
        row.message = endText(worker);
        finish(worker, std::move(row));
    }
    worker.disconnect(this);
    worker.deleteLater();
    std::erase(m_workers, &worker);
    if (worker.ready && m_next < m_files.size())
        startWorker();
    if (!m_workers.empty())
        return;
    // Left over when no worker could take over from one that crashed.
    for (; m_done > 0 && m_next < m_files.size(); ++m_next)
        m_rows[std::size_t(m_next)].message = elided(m_startFailure.simplified());
    Q_EMIT finished();
}

} // namespace Workbench

#include "moc_RankCrew.cpp"
