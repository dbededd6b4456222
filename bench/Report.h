// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <span>

namespace Bench {

double quotient(double first, double second);
double alone(double first, double);
/// Sizes that grow by a factor of five give the exponent of the growth.
double growthExponent(double large, double small);

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

/// Runs the registered benchmarks as the arguments say, and prints the table of ratios; `--markdown=FILE` writes it to
/// a file as well. Returns the exit status.
int run(int argc, char **argv, std::span<const Ratio> ratios);

} // namespace Bench
