// SPDX-License-Identifier: BSD-3-Clause
#include "Bench.h"
#include "Crystals.h"
#include "Literal.h"
#include "MagresText.h"

#include "parameters/DipolarCoupling.h"
#include "parameters/Nuclei.h"
#include "reading/Bonds.h"
#include "reading/MagresParser.h"
#include "reading/ParameterTable.h"
#include "synthesis/ParameterStep.h"
#include "synthesis/PeakList.h"
#include "synthesis/SpectrumRecord.h"

#include <charconv>
#include <cmath>
#include <string>

using namespace Magres;

namespace {

const MagresText::OxygenAndDeuterium nuclei;

using MagresText::crystalData;
using MagresText::magresText;

void readText(benchmark::State &state, int atoms)
{
    const MagresData original = crystalData(atoms);
    const QByteArray text = magresText(original);
    for (auto _ : state) {
        MagresData data;
        Magres::parseMagres(text, data);
        benchmark::DoNotOptimize(data.EFG.data());
        state.PauseTiming();
        Bench::require(data.atoms.size() == original.atoms.size() && data.EFG.size() == original.EFG.size()
                           && data.atoms.last().pos == original.atoms.last().pos
                           && data.shieldings.last().tensor == original.shieldings.last().tensor
                           && data.EFG.last().principalValues == original.EFG.last().principalValues,
                       "read");
        data = {};
        state.ResumeTiming();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * text.size());
}

/// All numbers of the same text, converted and added up: what no reader can go below.
void numbers(benchmark::State &state, int atoms)
{
    const QByteArray text = magresText(crystalData(atoms));
    std::vector<std::pair<const char *, const char *>> tokens;
    for (const char *p = text.begin(); p != text.end();) {
        const char *last = std::find_if(p, text.end(), [](char c) { return c == ' ' || c == '\n'; });
        if (last - p > 20 && *p != '#') // numbers with 17 digits
            tokens.push_back({p, last});
        p = last == text.end() ? last : last + 1;
    }
    Bench::require(tokens.size() == size_t(9 + atoms * (3 + 9 + 9)), "limit/numbers");
    for (auto _ : state) {
        double sum = 0.0;
        for (const auto &[first, last] : tokens) {
            double value = 0.0;
            std::from_chars(first, last, value);
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
}

void table(benchmark::State &state, int atoms)
{
    MagresData data = crystalData(atoms);
    const Magres::ParameterTable expected = Magres::parameterTable(data, nuclei);
    const QVariantMap last = expected.rows.last().toMap();
    Bench::require(expected.rows.size() == atoms
                       && last[QStringLiteral("iso")].toDouble() == data.shieldings.last().iso()
                       && last[QStringLiteral("eq")].toDouble() == data.EFG.last().eq(),
                   "table");
    for (auto _ : state)
        benchmark::DoNotOptimize(Magres::parameterTable(data, nuclei).rows.data());
}

MagresSpecParams parameters(CorrelationMode mode)
{
    MagresSpecParams p;
    p.specType = qint32(SpectrumKind::TwoD);
    p.nucF2 = QStringLiteral("13C");
    p.nucF1 = QStringLiteral("1H");
    p.corr = qint32(mode);
    return p;
}

/// Whether the peaks are those of all carbons with a partner, in their order, when every image is tried.
bool isCorrelated(const MagresData &data, const QList<SpectrumPeak> &peaks, CorrelationMode mode)
{
    std::array<Position, 3> cell;
    for (std::size_t i = 0; i < 9; ++i)
        cell[i / 3][i % 3] = data.lattice[qsizetype(i)];
    const Magres::DipolarCoupling coupling("13C", "1H");
    auto peak = peaks.begin();
    for (const MagresAtom &a : data.atoms) {
        double strongest = 0.0, sum = 0.0;
        for (const MagresAtom &b : data.atoms) {
            if (a.type != "C" || b.type != "H")
                continue;
            const double r = Literal::shortestImage(Magres::minus(a.pos, b.pos), cell);
            if (mode == CorrelationMode::StrongestDipolar && r >= 3.0)
                continue;
            strongest = std::max(strongest, std::abs(coupling(r)));
            sum += coupling(r) * coupling(r);
        }
        if (strongest == 0.0)
            continue;
        const double height = mode == CorrelationMode::StrongestDipolar ? strongest : std::sqrt(sum);
        if (peak == peaks.end() || peak->labelsF2 != a.labels || std::abs(peak->height / height - 1.0) > 1e-8)
            return false;
        ++peak;
    }
    return peak == peaks.end();
}

void correlate(benchmark::State &state, int atoms, CorrelationMode mode)
{
    const MagresData data = crystalData(atoms);
    const MagresSpecParams p = parameters(mode);
    Bench::require(isCorrelated(data, Magres::makePeaks(data, p, nuclei), mode), "correlate");
    for (auto _ : state)
        benchmark::DoNotOptimize(Magres::makePeaks(data, p, nuclei).data());
}

/// Without a lattice a pair has one distance: what images cost on top.
void correlateMolecule(benchmark::State &state, int atoms)
{
    MagresData data = crystalData(atoms);
    data.lattice.clear();
    const MagresSpecParams p = parameters(CorrelationMode::RssDipolar);
    const Magres::DipolarCoupling coupling("13C", "1H");
    const QList<SpectrumPeak> peaks = Magres::makePeaks(data, p, nuclei);
    double sum = 0.0;
    const MagresAtom &first = data.atoms[peaks.first().atomsF2.first()];
    for (const MagresAtom &atom : data.atoms)
        sum += atom.type == "H" ? std::pow(coupling(Magres::atomDistance(first, atom)), 2) : 0.0;
    Bench::require(std::abs(peaks.first().height / std::sqrt(sum) - 1.0) < 1e-8, "correlate/rss, molecule");
    for (auto _ : state)
        benchmark::DoNotOptimize(Magres::makePeaks(data, p, nuclei).data());
}

void range(benchmark::State &state, int atoms)
{
    const MagresData data = crystalData(atoms);
    const Magres::ShiftRangeInData inData(data, "1H", nuclei);
    double lowest = 1e9;
    for (qsizetype i = 0; i < data.atoms.size(); ++i)
        if (data.atoms[i].type == "H")
            lowest = std::min(lowest, data.shieldings[i].iso() * -1.0 + 30.0);
    Bench::require(inData.range(30.0, -1.0, false, 600.0).lo == lowest, "range");
    for (auto _ : state)
        benchmark::DoNotOptimize(inData.range(30.0, -1.0, false, 600.0));
}

/// 200 peaks on 8192 points, as in the editing of a spectrum.
struct Update {
    MagresData data = crystalData(600);
    MagresSpecParams record;

    Update()
    {
        record.nucF2 = QStringLiteral("1H");
        record.pts = 8192;
        // Ethanol: six of nine atoms are hydrogen. Two hundred of them keep their name.
        int kept = 0;
        for (MagresAtom &atom : data.atoms)
            if (atom.type == "H" && ++kept > 200)
                atom.type = "C";
        Magres::completeParameters(data, record, nuclei);
        Bench::require(Magres::makePeaks(data, record, nuclei).size() == 200, "update");
    }
};

void updateWhole(benchmark::State &state)
{
    Update update;
    const QVariantMap map = update.data.toMap();
    const QVariantHash hash = update.record.toMap();
    for (auto _ : state) {
        MagresSpecParams record;
        record.fromMap(hash);
        MagresData data;
        data.fromMap(map);
        Magres::completeParameters(data, record, nuclei);
        benchmark::DoNotOptimize(Magres::generateSpectrum(data, record, nuclei).data);
    }
}

void updateBare(benchmark::State &state)
{
    Update update;
    const QVariantMap map = update.data.toMap();
    update.record.peaks = Magres::makePeaks(update.data, update.record, nuclei);
    const QList<Magres::SpectrumDimension> dimensions = Magres::dimensions(update.record);
    for (auto _ : state) {
        MagresData data;
        data.fromMap(map);
        benchmark::DoNotOptimize(data.atoms.data());
        benchmark::DoNotOptimize(Magres::synthesize(update.record, dimensions).data());
    }
}

} // namespace

void Bench::registerData()
{
    const auto add = [](const std::string &name, auto benchmarked, auto... arguments) {
        benchmark::RegisterBenchmark(name.c_str(), benchmarked, arguments...)->Unit(benchmark::kMicrosecond);
    };
    for (int count : {1000, 5000}) {
        const std::string n = std::to_string(count);
        add("read/" + n, readText, count);
        add("limit/numbers/" + n, numbers, count);
        add("table/" + n, table, count);
        add("range/" + n, range, count);
    }
    for (int count : {400, 2000}) {
        add("correlate/rss/" + std::to_string(count), correlate, count, CorrelationMode::RssDipolar);
        add("correlate/strongest/" + std::to_string(count), correlate, count, CorrelationMode::StrongestDipolar);
    }
    add("correlate/rss/2000/molecule", correlateMolecule, 2000);
    add("update/200/8192", updateWhole);
    add("update/200/8192/bare", updateBare);
}
