// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/CrossPeakPairing.h"

#include "analysis/comparison/Assignment.h"
#include "data/Error.h"

#include <algorithm>
#include <array>
#include <limits>

namespace Workbench {
namespace {

using Points = std::vector<PlanePoint>;
using Options = CrossPeakPairing::Options;

double squaredDistance(const PlanePoint &calculated, const PlanePoint &measured, const PlanePoint &offset,
                       const Options &options)
{
    double sum = 0;
    for (std::size_t d = 0; d < 2; ++d) {
        const double difference = (calculated[d] + offset[d] - measured[d]) / options.sigma[d];
        sum += difference * difference;
    }
    return sum;
}

/// Each measured peak takes a calculated one of its own; the others go where they are cheapest. Exact: what a measured
/// peak pays is how much dearer its own one is there than where it would go freely.
std::vector<int> sharedLines(const Points &calculated, const Points &measured, const PlanePoint &offset,
                             const Options &options)
{
    const std::size_t n = calculated.size(), m = measured.size();
    CostMatrix extra{int(m), int(n), std::vector<double>(m * n)};
    std::vector<int> lines(n);
    for (std::size_t i = 0; i < n; ++i) {
        double cheapest = std::numeric_limits<double>::infinity();
        for (std::size_t k = 0; k < m; ++k) {
            const double cost = squaredDistance(calculated[i], measured[k], offset, options);
            extra.costs[k * n + i] = cost;
            if (cost < cheapest) {
                cheapest = cost;
                lines[i] = int(k);
            }
        }
        for (std::size_t k = 0; k < m; ++k)
            extra.costs[k * n + i] -= cheapest;
    }
    const std::vector<int> own = cheapestAssignment(extra);
    for (std::size_t k = 0; k < m; ++k)
        lines[std::size_t(own[k])] = int(k);
    return lines;
}

/// Each calculated peak takes a measured one of its own.
std::vector<int> ownLines(const Points &calculated, const Points &measured, const PlanePoint &offset,
                          const Options &options)
{
    CostMatrix matrix{int(calculated.size()), int(measured.size()), {}};
    for (const PlanePoint &c : calculated)
        for (const PlanePoint &m : measured)
            matrix.costs.push_back(squaredDistance(c, m, offset, options));
    return cheapestAssignment(matrix);
}

PlanePoint meanOffset(const Points &calculated, const Points &measured, const std::vector<int> &lines,
                      const Options &options)
{
    PlanePoint offset{};
    const double pairs = double(std::count_if(lines.begin(), lines.end(), [](int line) { return line >= 0; }));
    for (std::size_t i = 0; i < lines.size(); ++i)
        for (std::size_t d = 0; d < 2 && lines[i] >= 0; ++d)
            offset[d] += (measured[std::size_t(lines[i])][d] - calculated[i][d]) / pairs;
    if (options.oneReference) {
        const double w0 = 1 / (options.sigma[0] * options.sigma[0]), w1 = 1 / (options.sigma[1] * options.sigma[1]);
        offset.fill((w0 * offset[0] + w1 * offset[1]) / (w0 + w1));
    }
    for (std::size_t d = 0; d < 2; ++d)
        offset[d] = options.offset[d].value_or(offset[d]);
    return offset;
}

/// Differences of the smallest, largest and mean positions and of the medians.
std::vector<double> startOffsets(const Points &calculated, const Points &measured, std::size_t dimension)
{
    const auto marks = [&](const Points &points) {
        std::vector<double> values;
        double mean = 0;
        for (const PlanePoint &p : points) {
            values.push_back(p[dimension]);
            mean += p[dimension] / double(points.size());
        }
        std::sort(values.begin(), values.end());
        return std::array{mean, values[values.size() / 2], values.front(), values.back()};
    };
    const auto from = marks(calculated), to = marks(measured);
    std::vector<double> offsets;
    for (std::size_t i = 0; i < from.size(); ++i)
        offsets.push_back(to[i] - from[i]);
    offsets.push_back((offsets[2] + offsets[3]) / 2);
    return offsets;
}

/// Many peaks make the offset sure by themselves, and every start costs the third power of their number.
std::size_t startsPerDimension(std::size_t peaks)
{
    return peaks <= 60 ? 5 : peaks <= 150 ? 2 : 1;
}

} // namespace

namespace {

/// What is left to be paired once the assigned pairs are: places in the lists.
struct Rest {
    std::vector<int> calculated, measured;

    Rest(const std::vector<int> &assigned, std::size_t lines)
    {
        std::vector<char> isTaken(lines);
        for (std::size_t i = 0; i < assigned.size(); ++i) {
            if (assigned[i] < 0)
                calculated.push_back(int(i));
            else
                isTaken[std::size_t(assigned[i])] = true;
        }
        for (std::size_t k = 0; k < lines; ++k)
            if (!isTaken[k])
                measured.push_back(int(k));
    }
};

Points chosen(const Points &points, const std::vector<int> &places)
{
    Points result;
    for (int place : places)
        result.push_back(points[std::size_t(place)]);
    return result;
}

std::vector<PlanePoint> startPoints(const Points &calculated, const Points &measured, const Options &options)
{
    const std::size_t starts = startsPerDimension(std::max(calculated.size(), measured.size()));
    const auto of = [&](std::size_t d) {
        std::vector<double> offsets = startOffsets(calculated, measured, d);
        offsets.resize(starts);
        return options.offset[d] ? std::vector{*options.offset[d]} : offsets;
    };
    std::vector<PlanePoint> points;
    for (double f2 : of(0)) {
        for (double f1 : options.oneReference ? std::vector{f2} : of(1))
            points.push_back({f2, f1});
    }
    return points;
}

} // namespace

CrossPeakPairing CrossPeakPairing::of(const Points &calculated, const Points &measured, const Options &options)
{
    if (calculated.empty() || measured.empty())
        fail(Texts::tr("there is no cross peak to compare"));
    std::vector<int> assigned = options.assigned;
    assigned.resize(calculated.size(), -1);
    const Rest rest(assigned, measured.size());
    const int surplus = int(rest.measured.size()) - int(rest.calculated.size());
    if (surplus > options.unmatched && surplus > 0)
        fail(Texts::tr("%1 cross peaks were measured, but the structure has only %2")
                 .arg(rest.measured.size())
                 .arg(rest.calculated.size()));
    const auto split = surplus > 0 ? ownLines : sharedLines;
    const Points freeCalculated = chosen(calculated, rest.calculated), freeMeasured = chosen(measured, rest.measured);
    const bool isAllAssigned = freeCalculated.empty() || freeMeasured.empty();

    constexpr int mostTurns = 100;
    std::vector<PlanePoint> starts;
    if (isAllAssigned || freeCalculated.size() < calculated.size())
        starts.push_back(meanOffset(calculated, measured, assigned, options));
    if (!isAllAssigned) {
        const std::vector<PlanePoint> more = startPoints(freeCalculated, freeMeasured, options);
        starts.insert(starts.end(), more.begin(), more.end());
    }
    CrossPeakPairing best;
    double least = std::numeric_limits<double>::infinity();
    for (PlanePoint offset : starts) {
        std::vector<int> lines = assigned, before;
        for (int turn = 0; turn < mostTurns && !isAllAssigned; ++turn) {
            const std::vector<int> next = split(freeCalculated, freeMeasured, offset, options);
            if (next == before)
                break;
            for (std::size_t i = 0; i < next.size(); ++i)
                lines[std::size_t(rest.calculated[i])] = rest.measured[std::size_t(next[i])];
            before = next;
            offset = meanOffset(calculated, measured, lines, options);
        }
        double sum = 0;
        for (std::size_t i = 0; i < lines.size(); ++i)
            sum += lines[i] < 0 ? 0 : squaredDistance(calculated[i], measured[std::size_t(lines[i])], offset, options);
        if (sum < least) {
            least = sum;
            best = {lines, {}, offset};
        }
    }
    std::vector<char> used(measured.size());
    for (int line : best.lineOf)
        if (line >= 0)
            used[std::size_t(line)] = true;
    for (int k = 0; k < int(used.size()); ++k)
        if (!used[std::size_t(k)])
            best.leftOut.push_back(k);
    return best;
}

} // namespace Workbench
