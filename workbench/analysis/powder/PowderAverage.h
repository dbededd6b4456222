// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/powder/Frequency.h"

#include <vector>

namespace Workbench::Powder {

/// Intensities at even frequencies, so close that a line between two of them can be shared out among its neighbours.
class FrequencyGrid {
public:
    FrequencyGrid() = default;
    /// Hz; points from first on. Patterns may be computed in bins of `coarseness` points.
    FrequencyGrid(double first, double step, size_t count, size_t coarseness = 1)
        : m_first(first), m_step(step), m_coarseness(coarseness), m_values(count)
    {
    }

    double first() const { return m_first; }
    double step() const { return m_step; }
    size_t coarseness() const { return m_coarseness; }
    double last() const { return m_first + m_step * double(m_values.size() - 1); }
    const std::vector<double> &values() const { return m_values; }
    std::vector<double> &values() { return m_values; }

    /// A line at any frequency, as the six weights of the interpolation polynomial there, which keep the moments of the
    /// line up to the fifth. What lies outside is left out.
    void add(double frequency, double weight);
    /// `count` lines, each `spacing` points from the one before, of the weights values[0], values[stride] ...
    void add(double first, size_t spacing, size_t count, const double *values, size_t stride, double weight);

private:
    double m_first = 0;
    double m_step = 1;
    size_t m_coarseness = 1;
    std::vector<double> m_values;
};

/// How many rows of triangles the lattice of an octant has at least and at most: 10^7 directions.
inline constexpr size_t leastRows = 4;
inline constexpr size_t mostRows = 2237;

/// Thrown when the progress function asks to stop.
struct Stopped { };

/// Steps of a rotor period that the sidebands of a transition take, and the lowest of those.
struct SidebandRange {
    size_t steps = 1;
    long first = 0;
};

/// The powder pattern of one transition, with what the average needs to know beforehand.
class PowderPattern {
public:
    /// Throws std::invalid_argument where the spinning is so slow that there is no end of sidebands.
    PowderPattern(const Transition &transition, const Conditions &conditions);

    /// Of all intensities: lowest and highest frequency, Hz.
    std::pair<double, double> limits() const;
    /// Of a rotor period, at which frequencies are computed; 1 where it does not spin.
    size_t steps() const { return m_sidebands.steps; }
    /// How many rows of triangles the first of the two lattices has whose difference shows the convergence: for lines
    /// of that width in Hz.
    size_t rowsForFirstTry(double width, double tolerance) const;
    /// Adds it to the grid, with an area of the transition's weight. Over each of the lattice's triangles the frequency
    /// counts as linear, and the weights of sidebands as constant. Throws Stopped.
    void addTo(FrequencyGrid &grid, size_t rows, const Progress &progress) const;

private:
    void addCentres(FrequencyGrid &grid, size_t rows, const Progress &progress) const;
    void addSidebands(FrequencyGrid &grid, size_t rows, const Progress &progress) const;

    double m_weight;
    double m_rate; ///< 0: no sidebands
    FrequencyForm m_form;
    FrequencyForm m_centres; ///< the mean over a rotor period where it spins
    double m_low, m_high; ///< of the centres
    SidebandRange m_sidebands;
};

} // namespace Workbench::Powder
