// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/RankWorkers.h"

#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "data/Elision.h"
#include "data/Error.h"

#include <QEventLoop>
#include <QProcess>

#include <algorithm>
#include <iostream>
#include <string>

namespace Workbench {

namespace RankWorkers {

namespace {

constexpr const char *readyLine = "ready\n";

/// The files that are still to be given out, and the rows that came back.
class Distribution : public QObject {
public:
    Distribution(const Crew &crew, const QStringList &files) : m_crew(crew), m_files(files), m_rows(files.size())
    {
        for (qsizetype i = 0; i < files.size(); ++i)
            m_rows[i].file = files[i];
    }

    std::vector<RankRow> run()
    {
        for (qsizetype i = 0; i < std::min<qsizetype>(m_crew.workers, m_files.size()); ++i)
            start();
        if (m_workers > 0)
            m_loop.exec();
        if (m_done == 0 && !m_files.isEmpty())
            throw CommandError(m_startFailure);
        // Left over when no worker could take over from one that crashed.
        for (; m_next < m_files.size(); ++m_next)
            m_rows[m_next].message = elided(m_startFailure.simplified());
        return std::move(m_rows);
    }

private:
    struct Worker : QProcess {
        using QProcess::QProcess;
        qsizetype file = -1; ///< at which it works
        bool ready = false;
    };

    void start()
    {
        auto *worker = new Worker(this);
        ++m_workers;
        connect(worker, &QProcess::readyReadStandardOutput, this, [this, worker] { read(*worker); });
        connect(worker, &QProcess::finished, this, [this, worker] { ended(*worker); });
        connect(worker, &QProcess::errorOccurred, this, [this, worker](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                ended(*worker);
        });
        worker->start(m_crew.program, m_crew.arguments);
    }

    void read(Worker &worker)
    {
        while (worker.canReadLine()) {
            const QByteArray line = worker.readLine();
            if (!worker.ready && line == readyLine)
                worker.ready = true;
            else if (worker.file < 0 || !take(worker, line)) {
                m_crew.chatter(line); // a plug-in that prints
                continue;
            }
            giveNext(worker);
        }
    }

    bool take(Worker &worker, const QByteArray &line)
    {
        try {
            RankRow row = RankTable::parseRows(line, QStringLiteral("worker"), m_crew.layout).rows.at(0);
            if (row.file != m_files[worker.file])
                return false;
            finish(worker, std::move(row));
            return true;
        } catch (const std::exception &) {
            return false;
        }
    }

    void finish(Worker &worker, RankRow row)
    {
        m_rows[worker.file] = std::move(row);
        ++m_done;
        m_crew.progress(m_done, m_files[worker.file]);
        worker.file = -1;
    }

    void giveNext(Worker &worker)
    {
        if (m_next >= m_files.size())
            return worker.closeWriteChannel();
        worker.file = m_next++;
        worker.write(m_files[worker.file].toUtf8().toPercentEncoding() + '\n');
    }

    void ended(Worker &worker)
    {
        const QByteArray said = worker.readAllStandardError();
        if (worker.ready) {
            m_crew.chatter(said);
        } else {
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
        --m_workers;
        if (worker.ready && m_next < m_files.size())
            start();
        if (m_workers == 0)
            m_loop.quit();
    }

    static QString endText(const QProcess &process)
    {
        return process.exitStatus() == QProcess::CrashExit
            ? Texts::tr("the program crashed while it worked on this file")
            : Texts::tr("the program ended with status %1 while it worked on this file").arg(process.exitCode());
    }

    const Crew &m_crew;
    const QStringList m_files;
    std::vector<RankRow> m_rows;
    int m_workers = 0;
    qsizetype m_next = 0;
    int m_done = 0;
    QString m_startFailure;
    QEventLoop m_loop;
};

} // namespace

void serve(const std::function<RankRow(const QString &file)> &measure, const RankLayout &layout)
{
    printOut(QLatin1String(readyLine));
    for (std::string line; std::getline(std::cin, line);) {
        const QString file = QString::fromUtf8(QByteArray::fromPercentEncoding(QByteArray::fromStdString(line)));
        const RankRow row = measure(file);
        printOut(QString::fromUtf8(RankTable::csvRow(row, layout, row.failed() ? 0 : 1)));
    }
}

std::vector<RankRow> measure(const Crew &crew, const QStringList &files)
{
    return Distribution(crew, files).run();
}

} // namespace RankWorkers

} // namespace Workbench
