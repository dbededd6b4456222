// SPDX-License-Identifier: BSD-3-Clause
#include "Bench.h"
#include "formats/SpectrumReader.h"

#include <QFile>
#include <QTemporaryFile>

#include <charconv>
#include <cmath>
#include <string>

using namespace Workbench;

namespace {

constexpr int points = 1 << 24;

double position(int i)
{
    return 300.0 - i * (400.0 / points);
}

double intensity(int i)
{
    return 1e6 * std::sin(1e-4 * i) + 0.1 * i;
}

/// A spectrum as columns of numbers with 17 digits, on the disk.
const QString &textFile()
{
    static QTemporaryFile file;
    if (!file.isOpen()) {
        Bench::require(file.open(), "text: no file");
        std::string text = "ppm,intensity\n";
        char number[32];
        for (int i = 0; i < points; ++i) {
            for (const auto &[value, end] : {std::pair(position(i), ','), std::pair(intensity(i), '\n')}) {
                const auto written =
                    std::to_chars(number, number + sizeof number, value, std::chars_format::general, 17);
                text.append(number, written.ptr) += end;
            }
            if (text.size() > 1 << 20) {
                file.write(text.data(), qint64(text.size()));
                text.clear();
            }
        }
        Bench::require(file.write(text.data(), qint64(text.size())) == qint64(text.size()) && file.flush(),
                       "text: disk");
    }
    static const QString name = file.fileName();
    return name;
}

/// The most memory that the process had since the mark was reset, in bytes.
qint64 peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    Bench::require(status.open(QIODevice::ReadOnly), "text: no memory to read");
    const QByteArray all = status.readAll();
    const qsizetype at = all.indexOf("VmHWM:");
    return all.mid(at + 6, all.indexOf('k', at) - at - 6).trimmed().toLongLong() * 1024;
}

void resetPeakMemory()
{
    QFile mark(QStringLiteral("/proc/self/clear_refs"));
    Bench::require(mark.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && mark.write("5") == 1, "text: no mark");
}

void readColumns(benchmark::State &state)
{
    const QString &name = textFile();
    for (auto _ : state) {
        state.PauseTiming();
        resetPeakMemory();
        const qint64 before = peakMemory();
        state.ResumeTiming();
        const Measurement read = readMeasurement(name);
        state.PauseTiming();
        const auto &spectrum = std::get<ExperimentalSpectrum>(read);
        Bench::require(spectrum.dimensions[0].points == points && spectrum.data[12345] == intensity(12345)
                           && std::abs(spectrum.dimensions[0].ppm(points - 1) - position(points - 1)) < 1e-9,
                       "text");
        state.counters["bytes/point"] = double(peakMemory() - before) / points;
        state.ResumeTiming();
    }
}

/// The same numbers converted and added up, from memory.
void convertNumbers(benchmark::State &state)
{
    QFile file(textFile());
    Bench::require(file.open(QIODevice::ReadOnly), "limit/text");
    const char *const bytes = reinterpret_cast<const char *>(file.map(0, file.size()));
    const char *const end = bytes + file.size();
    const char *const first = static_cast<const char *>(std::memchr(bytes, '\n', size_t(file.size()))) + 1;
    for (auto _ : state) {
        double sum = 0.0;
        int count = 0;
        for (const char *at = first; at < end; ++count) {
            double value = 0.0;
            at = std::from_chars(at, end, value).ptr + 1;
            sum += value;
        }
        Bench::require(count == 2 * points, "limit/text");
        benchmark::DoNotOptimize(sum);
    }
}

} // namespace

void Bench::registerText()
{
    benchmark::RegisterBenchmark("text/16777216", readColumns)->Unit(benchmark::kMillisecond)->Iterations(1);
    benchmark::RegisterBenchmark("limit/text/16777216", convertNumbers)->Unit(benchmark::kMillisecond)->Iterations(1);
}
