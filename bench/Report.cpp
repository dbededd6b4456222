// SPDX-License-Identifier: BSD-3-Clause
#include "Report.h"

#include <benchmark/benchmark.h>

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

/// A heading and a line for each ratio, in this layout; ratios whose benchmarks did not run are left out.
void printRatios(const Times &times, std::span<const Bench::Ratio> ratios, std::FILE *file, const char *heading,
                 const char *line)
{
    std::fputs(heading, file);
    for (const Bench::Ratio &ratio : ratios) {
        const auto first = times[ratio.first];
        const auto second = times[ratio.second];
        if (!first || !second)
            continue;
        const double value = ratio.scale * ratio.combine(*first, *second);
        const bool reached = ratio.goal == Bench::Ratio::AtLeast ? value >= ratio.target : value <= ratio.target;
        std::fprintf(file, line, ratio.meaning, value, ratio.goal == Bench::Ratio::AtLeast ? ">=" : "<=", ratio.target,
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

double Bench::quotient(double first, double second)
{
    return first / second;
}

double Bench::alone(double first, double)
{
    return first;
}

double Bench::growthExponent(double large, double small)
{
    return std::log(large / small) / std::log(5.0);
}

int Bench::run(int argc, char **argv, std::span<const Ratio> ratios)
{
    benchmark::Initialize(&argc, argv);
    const std::string markdown = takeMarkdownFile(argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    Times times(benchmark::ConsoleReporter::OO_Tabular);
    benchmark::RunSpecifiedBenchmarks(&times);
    const char *heading = "\nratio within this run                                  measured   target\n";
    printRatios(times, ratios, stdout, heading, "%-52s %10.4g   %s %g%s\n");
    if (!markdown.empty()) {
        std::FILE *file = std::fopen(markdown.c_str(), "w");
        if (!file) {
            std::fprintf(stderr, "%s cannot be written\n", markdown.c_str());
            return 1;
        }
        printRatios(times, ratios, file, "| ratio within one run | measured | target |\n| --- | ---: | --- |\n",
                    "| %s | %.4g | %s %g%s |\n");
        std::fclose(file);
    }
    benchmark::Shutdown();
    return 0;
}
