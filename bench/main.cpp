// SPDX-License-Identifier: BSD-3-Clause
#include "Bench.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// Prints as the console reporter does, and keeps the shortest time of every benchmark, in seconds. Processor time:
/// everything runs on one thread, and other programs' load then matters less. Benchmarks that run other programs give
/// the processor time of those by hand.
class Times : public benchmark::ConsoleReporter {
public:
    using ConsoleReporter::ConsoleReporter;

    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            // Where repetitions are reported by their statistics alone, the median has to do.
            const bool isRepetition = run.run_type == Run::RT_Iteration;
            if (!isRepetition && (run.aggregate_name != "median" || m_seconds.contains(run.run_name.function_name)))
                continue;
            const bool byHand = !run.run_name.time_type.empty();
            const double time = byHand ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
            const double seconds = time / benchmark::GetTimeUnitMultiplier(run.time_unit);
            const auto [entry, isNew] = m_seconds.try_emplace(run.run_name.function_name, seconds);
            if (!isNew)
                entry->second = std::min(entry->second, seconds);
        }
        ConsoleReporter::ReportRuns(runs);
    }

    std::optional<double> operator[](const std::string &name) const
    {
        const auto found = m_seconds.find(name);
        return found == m_seconds.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::map<std::string, double> m_seconds;
};

double quotient(double first, double second)
{
    return first / second;
}

double alone(double first, double)
{
    return first;
}

// Sizes that grow by a factor of five give the exponent of the growth.
double growthExponent(double large, double small)
{
    return std::log(large / small) / std::log(5.0);
}

/// One line of the table at the end: a number made from the times of two benchmarks of the run.
struct Ratio {
    enum Goal { AtLeast, AtMost };
    const char *meaning;
    const char *first;
    const char *second;
    Goal goal;
    double target;
    double scale = 1.0;
    double (*combine)(double, double) = quotient;
};

const Ratio ratios[] = {
    {"complete/1000: times faster than literal", "complete/1000/literal", "complete/1000", Ratio::AtLeast, 1000},
    {"bonds, 1000 to 5000: exponent of growth", "bonds/5000", "bonds/1000", Ratio::AtMost, 1.2, 1.0, growthExponent},
    {"complete/5000: in bond detections of 5000", "complete/5000", "bonds/5000", Ratio::AtMost, 12},
    {"complete, 1000 to 5000: exponent of growth", "complete/5000", "complete/1000", Ratio::AtMost, 1.7, 1.0,
     growthExponent},
    {"lorentz1d/100/8192: times faster than literal", "lorentz1d/100/8192/literal", "lorentz1d/100/8192",
     Ratio::AtLeast, 4.5},
    {"lorentz1d/400/65536: times faster than literal", "lorentz1d/400/65536/literal", "lorentz1d/400/65536",
     Ratio::AtLeast, 4.5},
    {"lorentz1d/100/8192: in divisions", "lorentz1d/100/8192", "limit/division", Ratio::AtMost, 1.3},
    // The limit is measured for the smaller number of terms.
    {"lorentz1d/400/65536: in divisions", "lorentz1d/400/65536", "limit/division", Ratio::AtMost, 1.3,
     (100.0 * 8192) / (400.0 * 65536)},
    {"gauss2d, 30 and 1 Hz: times faster than literal", "gauss2d/100/1024/512/literal", "gauss2d/100/1024/512",
     Ratio::AtLeast, 1000},
    {"gauss2d, 300 and 100 Hz: times faster than literal", "gauss2d/100/1024/512/wide/literal",
     "gauss2d/100/1024/512/wide", Ratio::AtLeast, 80},
    {"powder/mas: times faster than literal", "powder/mas/O/literal", "powder/mas/O", Ratio::AtLeast, 10},
    {"powder/static: times faster than literal", "powder/static/O/literal", "powder/static/O", Ratio::AtLeast, 20},
    {"powder/mas: in bare evaluations", "powder/mas/O", "powder/mas/O/bare", Ratio::AtMost, 2},
    {"powder/static: in bare evaluations", "powder/static/O", "powder/static/O/bare", Ratio::AtMost, 2},
    {"powder/preview: milliseconds", "powder/preview", "powder/preview", Ratio::AtMost, 50, 1e3, alone},
    {"read/1000: in conversions of its numbers", "read/1000", "limit/numbers/1000", Ratio::AtMost, 3},
    {"read/5000: in conversions of its numbers", "read/5000", "limit/numbers/5000", Ratio::AtMost, 3},
    {"read, 1000 to 5000: exponent of growth", "read/5000", "read/1000", Ratio::AtMost, 1.15, 1.0, growthExponent},
    {"table, 1000 to 5000: exponent of growth", "table/5000", "table/1000", Ratio::AtMost, 1.2, 1.0, growthExponent},
    {"range, 1000 to 5000: exponent of growth", "range/5000", "range/1000", Ratio::AtMost, 1.15, 1.0, growthExponent},
    {"correlate/rss, 400 to 2000: exponent of growth", "correlate/rss/2000", "correlate/rss/400", Ratio::AtMost, 2.05,
     1.0, growthExponent},
    {"correlate/rss/2000: in those without a lattice", "correlate/rss/2000", "correlate/rss/2000/molecule",
     Ratio::AtMost, 2.5},
    {"correlate/strongest, 400 to 2000: exponent", "correlate/strongest/2000", "correlate/strongest/400", Ratio::AtMost,
     1.2, 1.0, growthExponent},
    {"rank/200: by simulated spectra", "rank/200", "rank/parts", Ratio::AtMost, 0.5},
    {"update: in bare syntheses and conversions", "update/200/8192", "update/200/8192/bare", Ratio::AtMost, 3},
    {"text/16777216: in conversions of its numbers", "text/16777216", "limit/text/16777216", Ratio::AtMost, 3},
    {"document/50: times as long as reading its file", "document/50", "limit/read", Ratio::AtMost, 2},
};

/// A heading and a line for each ratio, in this layout; ratios whose benchmarks did not run are left out.
void printRatios(const Times &times, std::FILE *file, const char *heading, const char *line)
{
    std::fputs(heading, file);
    for (const Ratio &ratio : ratios) {
        const auto first = times[ratio.first];
        const auto second = times[ratio.second];
        if (!first || !second)
            continue;
        const double value = ratio.scale * ratio.combine(*first, *second);
        const bool reached = ratio.goal == Ratio::AtLeast ? value >= ratio.target : value <= ratio.target;
        std::fprintf(file, line, ratio.meaning, value, ratio.goal == Ratio::AtLeast ? ">=" : "<=", ratio.target,
                     reached ? "" : "   MISSED");
    }
}

/// The value of our own option, which it takes out of the arguments; empty when it is not given.
std::string takeMarkdownFile(int &argc, char **argv)
{
    const std::string option = "--markdown=";
    std::string file;
    const auto isOurs = [&](const char *argument) { return std::string_view(argument).starts_with(option); };
    if (const auto found = std::find_if(argv, argv + argc, isOurs); found != argv + argc)
        file = *found + option.size();
    argc = int(std::remove_if(argv, argv + argc, isOurs) - argv);
    return file;
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    const std::string markdown = takeMarkdownFile(argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    const QCoreApplication application(argc, argv);
    Bench::registerBonds();
    Bench::registerLineShapes();
    Bench::registerPowder();
    Bench::registerData();
    Bench::registerDocument();
    Bench::registerRank();
    Bench::registerText();
    Times times(benchmark::ConsoleReporter::OO_Tabular);
    benchmark::RunSpecifiedBenchmarks(&times);
    const char *heading = "\nratio within this run                                  measured   target\n";
    printRatios(times, stdout, heading, "%-52s %10.4g   %s %g%s\n");
    if (!markdown.empty()) {
        std::FILE *file = std::fopen(markdown.c_str(), "w");
        if (!file) {
            std::fprintf(stderr, "%s cannot be written\n", markdown.c_str());
            return 1;
        }
        printRatios(times, file, "| ratio within one run | measured | target |\n| --- | ---: | --- |\n",
                    "| %s | %.4g | %s %g%s |\n");
        std::fclose(file);
    }
    benchmark::Shutdown();
    return 0;
}
