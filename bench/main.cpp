// SPDX-License-Identifier: BSD-3-Clause
#include "Bench.h"
#include "Report.h"

#include <QCoreApplication>

namespace {

using Bench::alone;
using Bench::growthExponent;
using Bench::Ratio;

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

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Bench::registerBonds();
    Bench::registerLineShapes();
    Bench::registerPowder();
    Bench::registerData();
    Bench::registerDocument();
    Bench::registerRank();
    Bench::registerText();
    return Bench::run(argc, argv, ratios);
}
