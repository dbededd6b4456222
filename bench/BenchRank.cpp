// SPDX-License-Identifier: BSD-3-Clause
#include "Bench.h"
#include "Crystals.h"
#include "MagresText.h"

#include "fitting/ReferenceFit.h"
#include "reading/Bonds.h"
#include "reading/MagresParser.h"
#include "reading/MoleculeCompletion.h"
#include "reading/ParameterTable.h"
#include "synthesis/ParameterStep.h"
#include "synthesis/SpectrumRecord.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <sys/resource.h>

using namespace Magres;

namespace {

constexpr int fileCount = 200;
constexpr int rightOne = 120;
constexpr double trueReference = 168.5;

/// Files of 150 atoms whose shieldings differ from those of the right one by a few ppm, and the peaks of the right one.
struct Candidates {
    QTemporaryDir directory;
    QStringList files;
    QString experiment = directory.filePath(QStringLiteral("experiment.csv"));
    QVariantList peaks; ///< of the experiment
    MagresSpecParams record;

    Candidates()
    {
        record.nucF2 = QStringLiteral("13C");
        record.pts = 8192;
        const MagresData right = MagresText::crystalData(150);
        for (int i = 0; i < fileCount; ++i) {
            Crystals::Random random(std::uint64_t(i + 1));
            MagresData data = right;
            for (MagresTensor &shielding : data.shieldings)
                shielding.tensor[0] += i == rightOne ? 0.0 : random.uniform(-9.0, 9.0);
            files.append(directory.filePath(QStringLiteral("%1.magres").arg(i)));
            write(files.last(), MagresText::magresText(data));
        }
        QByteArray list;
        for (const MagresTensor &shielding : right.shieldings) {
            if (!shielding.labels[0].startsWith('C'))
                continue;
            const double shift = trueReference - shielding.iso();
            list += QByteArray::number(shift, 'g', 17) + '\n';
            peaks.append(QVariantMap{{QStringLiteral("Pos"), QVariantList{shift, 0.0}}});
        }
        write(experiment, list);
    }

    static void write(const QString &name, const QByteArray &text)
    {
        QFile file(name);
        Bench::require(file.open(QIODevice::WriteOnly) && file.write(text) == text.size(), "a file is not written");
    }
};

const Candidates &candidates()
{
    static const Candidates made;
    return made;
}

/// Processor time of the programs that have run, in seconds.
double childTime()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval &t) { return double(t.tv_sec) + 1e-6 * double(t.tv_usec); };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The whole program with one worker.
void rank(benchmark::State &state)
{
    const Candidates &files = candidates();
    const QStringList arguments{
        QStringLiteral("rank"), QStringLiteral("--nucleus"), files.record.nucF2,   QStringLiteral("--experiment"),
        files.experiment,       QStringLiteral("--format"),  QStringLiteral("csv")};
    const auto rankAll = [&] {
        QProcess program;
        program.start(QStringLiteral(WORKBENCH_PROGRAM), arguments + files.files);
        Bench::require(program.waitForFinished(-1) && program.exitCode() == 0, "rank");
        return program.readAllStandardOutput().split('\n');
    };
    const QByteArrayList lines = rankAll();
    const QByteArrayList first = lines.value(1).split(','), second = lines.value(2).split(',');
    Bench::require(lines.size() == fileCount + 2 && first.value(1) == files.files[rightOne].toUtf8()
                       && std::abs(first.value(2).toDouble() - trueReference) < 1e-6 && first.value(4).toDouble() < 1e-6
                       && second.value(4).toDouble() > 0.1,
                   "rank");
    for (auto _ : state) {
        const double before = childTime();
        rankAll();
        state.SetIterationTime(childTime() - before);
    }
}

/// The same files by the computations alone: each is read with its bonds and whole molecules into the map that
/// documents keep, and shown in a table; the map is read back and simulated with the points that a spectrum has by
/// default, as in update/; and once more for the fit.
void parts(benchmark::State &state)
{
    const Candidates &files = candidates();
    const MagresText::OxygenAndDeuterium nuclei;
    double best = 1e9;
    const auto run = [&](const QString &file) {
        MagresData data;
        Magres::readMagresFile(file, data, [](MagresData &read) {
            Magres::detectBonds(read.atoms);
            Magres::completeMolecules(read.atoms, read.lattice);
            Magres::completeMolecules(read.atoms, read.lattice);
        });
        const QVariantMap stored = data.toMap();
        benchmark::DoNotOptimize(Magres::parameterTable(data, nuclei).rows.data());

        MagresSpecParams record = files.record;
        const auto simulate = [&] {
            MagresData again;
            again.fromMap(stored);
            Magres::completeParameters(again, record, nuclei);
            return Magres::generateSpectrum(again, record, nuclei).data;
        };
        const QVariantMap simulated = simulate();
        const Magres::PeakColumns columns = Magres::peakColumns(
            simulated.value(QStringLiteral("Peaks")).toMap().value(QStringLiteral("PeakList")).toList(), files.peaks);
        const QString ppm = QStringLiteral("ppm");
        Magres::fitReference(columns, {ppm, ppm}, record);
        benchmark::DoNotOptimize(simulate());
        best = std::min(best, std::abs(record.ref.value(record.nucF2).toDouble() - trueReference));
    };
    for (const QString &file : files.files)
        run(file);
    Bench::require(best < 1e-6, "rank/parts");
    for (auto _ : state)
        for (const QString &file : files.files)
            run(file);
}

} // namespace

void Bench::registerRank()
{
    benchmark::RegisterBenchmark("rank/200", rank)->UseManualTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("rank/parts", parts)->Unit(benchmark::kMillisecond);
}
