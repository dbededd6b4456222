// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/LinePairing.h"

#include "analysis/comparison/ShiftPoint.h"
#include "analysis/comparison/UniqueSites.h"
#include "data/Error.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <numeric>
#include <set>

namespace Workbench {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

struct Scale {
    double offset = 0;
    double slope = -1;
};

using Point = ShiftPoint;

struct Fit {
    Scale scale;
    double squares = infinity;
};

/// Least squares of what the options leave free.
Fit fitted(const std::vector<Point> &points, const LinePairing::Options &options, double fallbackSlope)
{
    const ShiftMoments moments = ShiftMoments::of(points);
    Fit fit;
    fit.scale.slope = options.slope.value_or(moments.slope(fallbackSlope, options.reference));
    fit.scale.offset = moments.reference(fit.scale.slope);
    fit.squares = 0;
    if (options.reference && std::isinf(options.referenceWeight)) {
        fit.scale.offset = *options.reference;
    } else if (options.reference) {
        const double weight = options.referenceWeight;
        fit.scale.offset += weight * (*options.reference - fit.scale.offset) / (weight + moments.points);
        const double off = fit.scale.offset - *options.reference;
        fit.squares += weight * off * off;
    }
    for (const Point &p : points) {
        const double difference = p.shift - fit.scale.offset - fit.scale.slope * p.shielding;
        fit.squares += difference * difference;
    }
    return fit;
}

/// The sites and lines that name nobody, both by ascending shift.
struct Problem {
    std::vector<int> siteIds, lineIds;
    std::vector<double> shieldings, shifts;
    std::vector<int> nuclei;
    std::vector<int> needs; ///< nuclei for each line; empty: any number
    std::vector<Point> fixed; ///< pairs that are settled
    LinePairing::Options options;

    std::size_t sites() const { return shieldings.size(); }
    std::size_t lines() const { return shifts.size(); }
    double startSlope() const { return options.slope.value_or(-1.0); }
    double calculated(std::size_t site, const Scale &scale) const
    {
        return scale.offset + scale.slope * shieldings[site];
    }
};

/// The line of each site.
using Split = std::vector<int>;

/// The cheapest way to give sites 0, 1, … the lines 0, 1, … in order, each site one line and each line at least one
/// site.
Split contiguousSplit(const Problem &problem, const Scale &scale)
{
    const std::size_t n = problem.sites(), m = problem.lines();
    // cost[k]: of the sites so far, the last of them in group k. opens: that site is the first of its group.
    std::vector<double> cost(m, infinity);
    std::vector<char> opens(n * m);
    for (std::size_t i = 0; i < n; ++i) {
        const double x = problem.calculated(i, scale);
        for (std::size_t k = std::min(i, m - 1) + 1; k-- > 0;) {
            const double stay = i > 0 ? cost[k] : infinity;
            const double open = k > 0 ? cost[k - 1] : i == 0 ? 0 : infinity;
            const double d = x - problem.shifts[k];
            opens[i * m + k] = open <= stay;
            cost[k] = std::min(open, stay) + d * d;
        }
    }
    Split split(n);
    for (std::size_t i = n, k = m - 1; i-- > 0;) {
        split[i] = int(k);
        if (opens[i * m + k] && k > 0)
            --k;
    }
    return split;
}

/// The cheapest way to give each site a line of its own, in order, where there are more lines than sites.
Split sparseSplit(const Problem &problem, const Scale &scale)
{
    const std::size_t n = problem.sites(), m = problem.lines();
    // cost[i]: of the first i sites with the lines so far.
    std::vector<double> cost(n + 1, infinity);
    cost[0] = 0;
    std::vector<char> taken(m * (n + 1));
    for (std::size_t k = 0; k < m; ++k) {
        for (std::size_t i = n; i > 0; --i) {
            const double d = problem.calculated(i - 1, scale) - problem.shifts[k];
            const double take = cost[i - 1] + d * d;
            taken[k * (n + 1) + i] = take < cost[i];
            cost[i] = std::min(cost[i], take);
        }
    }
    Split split(n);
    for (std::size_t k = m, i = n; k-- > 0 && i > 0;)
        if (taken[k * (n + 1) + i])
            split[--i] = int(k);
    return split;
}

/// Splits sites among lines of given numbers of nuclei. Among sites of one size the order by shift is best; which sizes
/// go into which line is searched exactly.
class CountedSplit {
public:
    explicit CountedSplit(const Problem &problem) : m_problem(problem)
    {
        for (std::size_t i = 0; i < problem.sites(); ++i)
            m_classes[problem.nuclei[i]].push_back(int(i));
    }

    Split split(const Scale &scale) const
    {
        std::vector<Stage> stages{{{State(m_classes.size(), 0), {0, {}}}}};
        for (std::size_t k = 0; k < m_problem.needs.size(); ++k) {
            Stage next;
            for (const auto &[state, way] : stages.back())
                extend(state, way.cost, k, scale, next);
            if (next.size() > mostStates)
                fail(Texts::tr("the sites have too many different numbers of nuclei to be shared out by counts"));
            stages.push_back(std::move(next));
        }
        if (stages.back().empty())
            fail(Texts::tr(
                "the sites, with the numbers of nuclei that they have, cannot be shared out to lines of these counts"));

        Split split(m_problem.sites());
        State state = stages.back().begin()->first;
        for (std::size_t k = m_problem.needs.size(); k > 0; --k) {
            const State before = stages[k].at(state).from;
            std::size_t c = 0;
            for (const auto &[size, members] : m_classes) {
                for (int i = before[c]; i < state[c]; ++i)
                    split[std::size_t(members[std::size_t(i)])] = int(k - 1);
                ++c;
            }
            state = before;
        }
        return split;
    }

private:
    static constexpr std::size_t mostStates = 20000;
    using State = std::vector<int>; ///< sites given away so far, by size
    struct Way {
        double cost;
        State from;
    };
    using Stage = std::map<State, Way>;

    /// Adds every state that line k leads to.
    void extend(const State &from, double costSoFar, std::size_t k, const Scale &scale, Stage &next) const
    {
        const std::function<void(std::map<int, std::vector<int>>::const_iterator, std::size_t, State, int, double)>
            take = [&](auto sizes, std::size_t c, State state, int need, double cost) {
                if (sizes == m_classes.end()) {
                    if (need > 0)
                        return;
                    const auto known = next.find(state);
                    if (known == next.end() || cost < known->second.cost)
                        next.insert_or_assign(state, Way{cost, from});
                    return;
                }
                const auto &[size, members] = *sizes;
                take(std::next(sizes), c + 1, state, need, cost);
                while (need >= size && state[c] < int(members.size())) {
                    const std::size_t site = std::size_t(members[std::size_t(state[c]++)]);
                    const double d = m_problem.calculated(site, scale) - m_problem.shifts[k];
                    cost += d * d;
                    need -= size;
                    take(std::next(sizes), c + 1, state, need, cost);
                }
            };
        take(m_classes.begin(), 0, from, m_problem.needs[k], costSoFar);
    }

    const Problem &m_problem;
    std::map<int, std::vector<int>> m_classes; ///< sites by number of nuclei, each by ascending shift
};

using Splitter = std::function<Split(const Scale &)>;

/// Between the smallest and the largest difference that a pair of an order-keeping pairing can have.
std::vector<double> startOffsets(const Problem &problem)
{
    constexpr int steps = 48;
    const Scale unreferenced{0, problem.startSlope()};
    const std::size_t n = problem.sites(), m = problem.lines();
    const std::size_t surplusSites = n > m ? n - m : 0, surplusLines = m > n ? m - n : 0;
    double low = infinity, high = -infinity;
    for (std::size_t k = 0; k < std::min(n, m); ++k) {
        low = std::min(low, problem.shifts[k] - problem.calculated(k + surplusSites, unreferenced));
        high = std::max(high, problem.shifts[k + surplusLines] - problem.calculated(k, unreferenced));
    }
    std::vector<double> offsets;
    for (int i = 0; i <= steps; ++i)
        offsets.push_back(low + (high - low) * i / steps);
    return offsets;
}

/// Lines through two pairs: a site of low and one of high shift, each with lines that an order-keeping pairing can give
/// it. Where some lines belong to no site, starts of one slope do not lead to every other.
std::vector<Scale> slopedStarts(const Problem &problem)
{
    constexpr int mostLines = 8; // tried of a site
    constexpr double factor = 3; // by which a slope may differ from the usual one
    const int n = int(problem.sites()), m = int(problem.lines());
    const auto places = [&](int site) {
        const int low = m > n ? site : std::max(0, site - (n - m)), high = m > n ? site + m - n : std::min(site, m - 1);
        std::vector<int> lines;
        for (int line = low; line <= high; line += 1 + (high - low) / mostLines)
            lines.push_back(line);
        return lines;
    };
    std::vector<Scale> starts;
    for (int low : std::set{0, 1, n / 4}) {
        for (int high : std::set{n - 1, n - 2, 3 * n / 4}) {
            for (int a : low < high ? places(low) : std::vector<int>()) {
                for (int b : places(high)) {
                    const auto from = std::size_t(low), to = std::size_t(high);
                    const double slope = (problem.shifts[std::size_t(b)] - problem.shifts[std::size_t(a)])
                        / (problem.shieldings[to] - problem.shieldings[from]);
                    const double ratio = slope / problem.startSlope();
                    if (ratio > 1 / factor && ratio < factor)
                        starts.push_back({problem.shifts[std::size_t(a)] - slope * problem.shieldings[from], slope});
                }
            }
        }
    }
    return starts;
}

std::vector<Scale> starts(const Problem &problem)
{
    const LinePairing::Options &options = problem.options;
    std::vector<Scale> all;
    if (options.reference)
        all.push_back({*options.reference, problem.startSlope()});
    if (options.reference && options.slope && std::isinf(options.referenceWeight))
        return all; // nothing is left to fit
    for (double offset : startOffsets(problem))
        all.push_back({offset, problem.startSlope()});
    // By counts, lines have their numbers of sites wherever one starts.
    if (!options.slope && problem.needs.empty()) {
        const std::vector<Scale> sloped = slopedStarts(problem);
        all.insert(all.end(), sloped.begin(), sloped.end());
    }
    return all;
}

/// The best split and the best scale for each other, from many starts. Each turn makes the sum smaller, so that it
/// ends.
Split best(const Problem &problem, const Splitter &splitter)
{
    double least = infinity;
    Split result;
    std::set<Split> seen; // what has led somewhere leads there again
    for (Scale scale : starts(problem)) {
        for (Split split = splitter(scale); seen.insert(split).second; split = splitter(scale)) {
            std::vector<Point> points = problem.fixed;
            for (std::size_t i = 0; i < problem.sites(); ++i)
                points.push_back({problem.shieldings[i], problem.shifts[std::size_t(split[i])]});
            const Fit fit = fitted(points, problem.options, problem.startSlope());
            // Sites are in the order of the start's slope; one of the other sign would be no calibration.
            const bool isTurned = fit.scale.slope * problem.startSlope() <= 0;
            if (result.empty() || (!isTurned && fit.squares < least)) {
                least = isTurned ? infinity : fit.squares;
                result = split;
            }
            if (isTurned)
                break;
            scale = fit.scale;
        }
    }
    return result;
}

void enter(const Problem &problem, const Split &split, LinePairing &pairing)
{
    std::vector<char> used(problem.lines());
    for (std::size_t i = 0; i < split.size(); ++i) {
        pairing.linesOf[std::size_t(problem.siteIds[i])].push_back(problem.lineIds[std::size_t(split[i])]);
        used[std::size_t(split[i])] = true;
    }
    for (std::size_t k = 0; k < used.size(); ++k)
        if (!used[k])
            pairing.leftOut.push_back(problem.lineIds[k]);
    std::sort(pairing.leftOut.begin(), pairing.leftOut.end());
}

/// In order, each site as many lines as it would give without symmetry.
void enterByAtoms(const Problem &problem, const std::vector<int> &linesPerSite, LinePairing &pairing)
{
    std::size_t line = 0;
    for (std::size_t i = 0; i < problem.sites(); ++i)
        for (int k = 0; k < linesPerSite[i]; ++k)
            pairing.linesOf[std::size_t(problem.siteIds[i])].push_back(problem.lineIds[line++]);
}

/// "C-25" and "C(25)", as sites are called in print, without its marks, unless some site bears it as it stands.
QString nameAmong(const std::vector<ComparedSite> &sites, const QString &label)
{
    const auto isKnown = [&](const QString &name) {
        return std::any_of(sites.begin(), sites.end(), [&](const ComparedSite &site) {
            return site.name == name || site.labels.contains(name) || site.commonLabels.contains(name);
        });
    };
    static const QRegularExpression marks(QStringLiteral("[-()\u2010-\u2013]"));
    const QString plain = QString(label).remove(marks);
    return isKnown(plain) && !isKnown(label) ? plain : label;
}

/// The site of that name; of a label that several sites bear, all of them.
std::vector<std::size_t> sitesNamed(const QString &label, double shift, const std::vector<ComparedSite> &sites,
                                    const std::vector<MeasuredLine> &lines)
{
    std::vector<std::size_t> all;
    QStringList names;
    for (std::size_t i = 0; i < sites.size(); ++i) {
        if (sites[i].name == label || sites[i].labels.contains(label))
            return {i};
        if (sites[i].commonLabels.contains(label)) {
            all.push_back(i);
            names.append(sites[i].name);
        }
    }
    if (all.empty())
        throw UnknownSite(
            Texts::tr("the line at %1 ppm is assigned to \"%2\", but the structure has no such site of this nucleus")
                .arg(shift)
                .arg(label)
                .toStdString());
    const auto named =
        std::count_if(lines.begin(), lines.end(), [&](const MeasuredLine &line) { return line.sites.contains(label); });
    if (named > 1 && all.size() > 1)
        throw UnknownSite(Texts::tr("%1 lines are assigned to \"%2\", which several sites are called: %3")
                              .arg(named)
                              .arg(label, names.join(QLatin1String(", ")))
                              .toStdString());
    return all;
}

std::vector<char> enterAssigned(const std::vector<ComparedSite> &sites, std::vector<MeasuredLine> lines,
                                LinePairing &pairing)
{
    for (MeasuredLine &line : lines)
        for (QString &label : line.sites)
            label = nameAmong(sites, label);
    std::vector<char> isAssigned(lines.size());
    for (std::size_t k = 0; k < lines.size(); ++k) {
        for (const QString &label : lines[k].sites) {
            for (std::size_t site : sitesNamed(label, lines[k].shift, sites, lines)) {
                std::vector<int> &own = pairing.linesOf[site];
                if (own.empty() || own.back() != int(k))
                    own.push_back(int(k));
            }
        }
        isAssigned[k] = !lines[k].sites.isEmpty();
        pairing.assignedLines += isAssigned[k];
    }
    // "C1" to "C4" of a publication are other atoms than those of a file where they are images of one.
    for (std::size_t i = 0; i < sites.size(); ++i) {
        const auto [low, high] =
            std::minmax_element(pairing.linesOf[i].begin(), pairing.linesOf[i].end(), [&](int a, int b) {
                return lines[std::size_t(a)].shift < lines[std::size_t(b)].shift;
            });
        if (low == high || lines[std::size_t(*high)].shift - lines[std::size_t(*low)].shift <= UniqueSites::mostSpread)
            continue;
        throw UnknownSite(
            Texts::tr("%1 lines, from %2 to %3 ppm, are assigned to the site %4, which gives one line: the names in "
                      "the list are not those of the structure")
                .arg(pairing.linesOf[i].size())
                .arg(lines[std::size_t(*low)].shift)
                .arg(lines[std::size_t(*high)].shift)
                .arg(sites[i].name)
                .toStdString());
    }
    return isAssigned;
}

Problem problemOf(const std::vector<ComparedSite> &sites, const std::vector<MeasuredLine> &lines,
                  const LinePairing &assigned, const std::vector<char> &isAssigned, const LinePairing::Options &options)
{
    Problem problem;
    problem.options = options;
    for (int i = 0; i < int(sites.size()); ++i) {
        const ComparedSite &site = sites[std::size_t(i)];
        const std::vector<int> &own = assigned.linesOf[std::size_t(i)];
        if (own.empty())
            problem.siteIds.push_back(i);
        double mean = 0;
        for (int line : own)
            mean += lines[std::size_t(line)].shift / double(own.size());
        if (!own.empty())
            problem.fixed.push_back({site.shielding, mean});
    }
    for (int k = 0; k < int(lines.size()); ++k)
        if (!isAssigned[std::size_t(k)])
            problem.lineIds.push_back(k);

    const double slope = problem.startSlope();
    std::stable_sort(problem.siteIds.begin(), problem.siteIds.end(), [&](int a, int b) {
        return slope * sites[std::size_t(a)].shielding < slope * sites[std::size_t(b)].shielding;
    });
    std::stable_sort(problem.lineIds.begin(), problem.lineIds.end(),
                     [&](int a, int b) { return lines[std::size_t(a)].shift < lines[std::size_t(b)].shift; });
    for (int i : problem.siteIds) {
        problem.shieldings.push_back(sites[std::size_t(i)].shielding);
        problem.nuclei.push_back(sites[std::size_t(i)].nuclei);
    }
    for (int k : problem.lineIds)
        problem.shifts.push_back(lines[std::size_t(k)].shift);
    return problem;
}

bool isCounted(const MeasuredLine &line)
{
    return line.count && *line.count > 0;
}

/// The same with numbers of nuclei by the counts of all lines. Those that name sites have their nuclei; where these are
/// not enough they take more of the other sites. Throws when the numbers do not fit.
Problem countedProblem(Problem problem, const std::vector<ComparedSite> &sites, const std::vector<MeasuredLine> &lines,
                       const LinePairing &assigned)
{
    std::vector<double> named(lines.size()); // nuclei
    for (std::size_t i = 0; i < sites.size(); ++i) {
        const std::vector<int> &own = assigned.linesOf[i];
        for (int line : own)
            named[std::size_t(line)] += sites[i].nuclei / double(own.size());
    }
    double nuclei = std::accumulate(problem.nuclei.begin(), problem.nuclei.end(), 0.0), counts = 0;
    for (std::size_t k = 0; k < lines.size(); ++k) {
        counts += isCounted(lines[k]) ? *lines[k].count : 0;
        nuclei += isCounted(lines[k]) ? named[k] : 0;
    }
    std::map<std::pair<double, int>, int> needs; // by shift and line
    for (std::size_t k = 0; k < lines.size(); ++k) {
        if (!isCounted(lines[k]))
            continue;
        const double whole = *lines[k].count * nuclei / counts, need = whole - named[k];
        if (std::abs(need - std::round(need)) > 1e-6 * nuclei)
            fail(Texts::tr("the lines stand for %1 nuclei together, into which the %2 of the sites do not go evenly")
                     .arg(counts)
                     .arg(nuclei));
        if (need < -0.5)
            fail(Texts::tr("by its count the line at %1 ppm stands for %2 nuclei, but the sites that it names have %3")
                     .arg(lines[k].shift)
                     .arg(whole)
                     .arg(named[k]));
        if (need > 0.5)
            needs[{lines[k].shift, int(k)}] = int(std::lround(need));
    }
    problem.lineIds.clear();
    problem.shifts.clear();
    for (const auto &[line, need] : needs) {
        problem.lineIds.push_back(line.second);
        problem.shifts.push_back(line.first);
        problem.needs.push_back(need);
    }
    return problem;
}

} // namespace

LinePairing LinePairing::of(const std::vector<ComparedSite> &sites, const std::vector<MeasuredLine> &lines,
                            const Options &options)
{
    LinePairing pairing;
    pairing.linesOf.resize(sites.size());
    if (lines.empty())
        fail(Texts::tr("no line was measured"));
    const std::vector<char> isAssigned = enterAssigned(sites, lines, pairing);
    const Problem problem = problemOf(sites, lines, pairing, isAssigned, options);
    const int n = int(problem.sites()), m = int(problem.lines());
    if (m == 0) {
        pairing.mode = Mode::Assigned;
        return pairing;
    }
    std::vector<int> asLines, asNuclei;
    for (int site : problem.siteIds) {
        asLines.push_back(sites[std::size_t(site)].lines);
        asNuclei.push_back(sites[std::size_t(site)].nuclei);
    }
    const auto sum = [](const std::vector<int> &numbers) { return std::accumulate(numbers.begin(), numbers.end(), 0); };

    // As many lines as sites, all alike: counts say nothing that the order does not.
    const auto areSame = [](const auto &numbers) {
        return std::adjacent_find(numbers.begin(), numbers.end(), std::not_equal_to<>()) == numbers.end();
    };
    std::vector<double> counts;
    for (const MeasuredLine &line : lines) {
        if (isCounted(line))
            counts.push_back(*line.count);
    }
    const bool countsTell = std::all_of(problem.lineIds.begin(), problem.lineIds.end(),
                                        [&](int k) { return isCounted(lines[std::size_t(k)]); })
        && !(m == n && areSame(counts) && areSame(problem.nuclei));
    if (m <= n && countsTell) {
        const Problem counted = countedProblem(problem, sites, lines, pairing);
        pairing.mode = m == n ? Mode::Equal : Mode::Overlap;
        pairing.byCounts = true;
        const CountedSplit splitter(counted);
        enter(counted, best(counted, [&](const Scale &scale) { return splitter.split(scale); }), pairing);
    } else if (m == n) {
        enterByAtoms(problem, std::vector<int>(std::size_t(n), 1), pairing);
    } else if (m < n) {
        pairing.mode = Mode::Overlap;
        enter(problem, best(problem, [&](const Scale &scale) { return contiguousSplit(problem, scale); }), pairing);
    } else if (m == sum(asLines)) {
        enterByAtoms(problem, asLines, pairing);
    } else if (m == sum(asNuclei)) {
        enterByAtoms(problem, asNuclei, pairing);
    } else if (m - n <= options.unmatched) {
        pairing.mode = Mode::Unmatched;
        if (n == 0)
            pairing.leftOut = problem.lineIds;
        else
            enter(problem, best(problem, [&](const Scale &scale) { return sparseSplit(problem, scale); }), pairing);
    } else {
        fail(Texts::tr("%1 lines were measured, but the structure has only %2 sites for them: %3 would have to be left "
                       "out")
                 .arg(m)
                 .arg(n)
                 .arg(m - n));
    }
    return pairing;
}

std::vector<MeasuredLine> mergedLines(const std::vector<MeasuredLine> &lines, std::vector<std::vector<int>> *from)
{
    std::vector<MeasuredLine> merged;
    std::vector<std::vector<int>> parts;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto known = std::find_if(merged.begin(), merged.end(), [&](const MeasuredLine &other) {
            return other.shift == lines[i].shift && other.sites == lines[i].sites;
        });
        if (known == merged.end()) {
            merged.push_back(lines[i]);
            parts.push_back({int(i)});
        } else {
            parts[std::size_t(known - merged.begin())].push_back(int(i));
        }
    }
    // Where all count the same, they tell nothing about one another.
    const bool isTold =
        std::any_of(parts.begin(), parts.end(), [&](const auto &part) { return part.size() != parts.front().size(); });
    for (std::size_t i = 0; i < merged.size(); ++i) {
        bool hasCount = isTold;
        double sum = 0;
        for (int line : parts[i]) {
            hasCount |= lines[std::size_t(line)].count.has_value();
            sum += lines[std::size_t(line)].count.value_or(1);
        }
        if (hasCount)
            merged[i].count = sum;
    }
    if (from)
        *from = std::move(parts);
    return merged;
}

QString LinePairing::text() const
{
    if (mode == Mode::Assigned)
        return QStringLiteral("assigned");
    QString rest = mode == Mode::Equal ? QStringLiteral("equal")
        : mode == Mode::Overlap        ? QStringLiteral("overlap")
                                       : QStringLiteral("unmatched");
    if (byCounts)
        rest += QStringLiteral(" by counts");
    return assignedLines > 0 ? QStringLiteral("%1 assigned, %2").arg(assignedLines).arg(rest) : rest;
}

} // namespace Workbench
