// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/JcampAxis.h"

#include "data/Nuclides.h"
#include "data/ReaderText.h"

#include <cmath>
#include <optional>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;

namespace {

/// One way to read the file's axis.
struct Statement {
    QString records; ///< those that make it
    double first = 0.0; ///< ppm
    double step = 0.0;

    double ppm(double point) const { return first + point * step; }
};

std::optional<double> vendorNumber(const JcampBlock &block, const char *label, int dimension)
{
    const LabelledRecord *record = block.find(label, dimension);
    return record ? std::optional(block.number(*record, record->text())) : std::nullopt;
}

/// The high end's shift, its place in the table following from the direction of the X values.
Statement withHighEnd(QString records, double high, double step, int points, bool falling)
{
    step = std::abs(step);
    return falling ? Statement{std::move(records), high, -step}
                   : Statement{std::move(records), high - step * (points - 1), step};
}

/// `$OFFSET`, `$SF` and `$SW_p` of processing parameters, which stand in the file for each dimension.
std::optional<Statement> vendorStatement(const JcampBlock &block, const JcampAbscissa &abscissa, const Statement &plain,
                                         QStringList &notes)
{
    const int dimension = abscissa.dimension, points = abscissa.x.points;
    const auto offset = vendorNumber(block, "$OFFSET", dimension), frequency = vendorNumber(block, "$SF", dimension),
               width = vendorNumber(block, "$SWP", dimension), size = vendorNumber(block, "$SI", dimension);
    if (!offset || !frequency || !width || !(*frequency > 0.0) || !(*width > 0.0))
        return {};
    const double range = *width / *frequency, tableRange = std::abs(plain.step) * points;
    // A table may end at its last point or one step beyond.
    if (std::abs(range - tableRange) > 1.5 * std::abs(plain.step) + 1e-3 * range) {
        notes.append(
            Texts::tr("$SW_p and $SF make a width of %1 ppm, the table has one of %2 ppm: $OFFSET was not used.")
                .arg(range, 0, 'g', 6)
                .arg(tableRange, 0, 'g', 6));
        return {};
    }
    const double step = !size || *size == points ? range / points : plain.step;
    return withHighEnd(QStringLiteral("$OFFSET, $SF, $SW_p"), *offset, step, points, plain.step < 0.0);
}

std::optional<Statement> referenceStatement(const JcampBlock &block, const Statement &plain, QStringList &notes)
{
    const LabelledRecord *record = block.find(".SHIFTREFERENCE");
    if (!record)
        return {};
    // Kind, compound, number of the data point from 1, shift in ppm.
    std::string text = record->text();
    std::erase_if(text, [](char c) { return c == '(' || c == ')'; });
    const std::string_view pointText = jcampField(text, 2);
    std::string_view shiftText = jcampField(text, 3);
    if (const std::string_view fraction = jcampField(text, 4); !shiftText.empty() && !fraction.empty()) {
        const std::string_view both(shiftText.data(), size_t(fraction.data() + fraction.size() - shiftText.data()));
        if (hasDecimalComma(both))
            shiftText = both;
    }
    if (pointText.empty() || shiftText.empty())
        return {};
    const double point = block.number(*record, pointText), shift = block.number(*record, shiftText);
    if (point < 1.0) {
        notes.append(Texts::tr(".SHIFT REFERENCE names point %1, points count from 1: it was not used.").arg(point));
        return {};
    }
    return Statement{QStringLiteral(".SHIFT REFERENCE"), shift - (point - 1.0) * plain.step, plain.step};
}

std::optional<Statement> offsetStatement(const JcampBlock &block, const JcampAbscissa &abscissa, const Statement &plain)
{
    const auto offset = vendorNumber(block, "$OFFSET", abscissa.dimension);
    if (!offset || block.find("$SWP"))
        return {};
    return withHighEnd(QStringLiteral("$OFFSET"), *offset, plain.step, abscissa.x.points, plain.step < 0.0);
}

void noteDisagreement(const Statement &taken, const Statement &other, int points, QStringList &notes)
{
    const double atFirst = other.first - taken.first, atLast = other.ppm(points - 1) - taken.ppm(points - 1);
    const double most = std::abs(atFirst) > std::abs(atLast) ? atFirst : atLast;
    if (std::abs(most) <= std::abs(taken.step) * (1.0 + 1e-6))
        return;
    notes.append(
        Texts::tr("The file's statements about its axis differ: by %1 the first point lies at %2 ppm, which was "
                  "taken; by %3 it would lie at %4 ppm and the last one %5 ppm off.")
            .arg(taken.records)
            .arg(taken.first, 0, 'f', 4)
            .arg(other.records)
            .arg(other.first, 0, 'f', 4)
            .arg(atLast, 0, 'g', 4));
}

} // namespace

double jcampFrequency(const JcampBlock &block, const JcampAbscissa &abscissa, const ReadOptions &options,
                      QStringList &notes)
{
    const auto positive = [&](const LabelledRecord &record) {
        // "400.13 MHz"
        std::string text = record.text();
        if (upperCase(text).ends_with("MHZ"))
            text.resize(text.size() - 3);
        const double value = block.number(record, text);
        if (!(value > 0.0))
            fail(block.source, record.line, Texts::tr("expected a frequency in MHz, found %1").arg(value));
        return value;
    };
    if (const LabelledRecord *record = block.find("$SF", abscissa.dimension))
        return positive(*record);
    const LabelledRecord *observe = block.find(".OBSERVEFREQUENCY");
    if (observe && abscissa.dimension == 0)
        return positive(*observe);
    const auto ratio = [](const QString &nucleus) { return std::abs(Nuclides::table()[nucleus].frequencyRatio); };
    const double other = ratio(observedNucleus(block)), own = ratio(abscissa.nucleus);
    if (observe && other > 0.0 && own > 0.0) {
        const double frequency = positive(*observe) * own / other;
        if (own != other)
            notes.append(
                Texts::tr("The file names no frequency for F1: %1 MHz of %2 follows from the observe frequency and the "
                          "ratio of the nuclei.")
                    .arg(frequency, 0, 'f', 6)
                    .arg(abscissa.nucleus));
        return frequency;
    }
    const double given = options.frequency[size_t(abscissa.dimension)];
    if (given > 0.0)
        notes.append(Texts::tr("The file names no frequency for %1; %2 MHz was taken from elsewhere.")
                         .arg(abscissa.dimension == 0 ? QStringLiteral("F2") : QStringLiteral("F1"))
                         .arg(given, 0, 'g', 10));
    return given;
}

double jcampUnitsPerPpm(const JcampBlock &block, const JcampAbscissa &abscissa, double frequency)
{
    // "(ppm)", "Chemical shift (ppm)"
    std::string units = abscissa.units;
    if (const size_t bracket = units.find_first_of("(["); bracket != std::string::npos) {
        const std::string within = units.substr(bracket + 1, units.find_first_of(")]", bracket) - bracket - 1);
        units = within.empty() ? units.substr(0, bracket) : within;
    }
    std::erase(units, '.');
    if (units == "PPM" || units == "PARTSPERMILLION")
        return 1.0;
    const bool hertz = units == "HZ" || units == "HERTZ";
    if (!hertz && units != "KHZ")
        fail(block.source, abscissa.unitsLine,
             Texts::tr("expected X values in HZ or PPM, found %1").arg(excerpt(abscissa.units)));
    if (frequency == 0.0)
        throw FrequencyNeeded(
            Texts::tr("%1, line %2: %3")
                .arg(block.source, QString::number(block.line),
                     abscissa.dimension == 0
                         ? Texts::tr("X values in Hz need the record ##.OBSERVE FREQUENCY=, or the frequency of 0 ppm "
                                     "in MHz must be given")
                         : Texts::tr("F1 is in Hz and its frequency in MHz is not in the file: it must be given")),
            abscissa.dimension + 1);
    return hertz ? frequency : frequency / 1000.0;
}

SpectrumDimension jcampAxis(const JcampBlock &block, const JcampAbscissa &abscissa, const ReadOptions &options,
                            QStringList &notes)
{
    const double frequency = jcampFrequency(block, abscissa, options, notes);
    const double perPpm = jcampUnitsPerPpm(block, abscissa, frequency);
    const int points = abscissa.x.points;
    const Statement plain{Texts::tr("the X values"), abscissa.x.first / perPpm, abscissa.x.step / perPpm};

    std::vector<Statement> statements;
    const auto add = [&](std::optional<Statement> statement) {
        if (statement)
            statements.push_back(std::move(*statement));
    };
    add(vendorStatement(block, abscissa, plain, notes));
    if (abscissa.dimension == 0) // which of two the reference record speaks of, nobody says
        add(referenceStatement(block, plain, notes));
    add(offsetStatement(block, abscissa, plain));
    // Hz that begin or end with 0 are counted from that end.
    const double end = 1.5 * std::abs(plain.step);
    const bool counted = perPpm != 1.0 && (std::abs(plain.first) < end || std::abs(plain.ppm(points - 1)) < end);
    if (statements.empty() && perPpm != 1.0)
        notes.append(Texts::tr("0 Hz was taken as 0 ppm: the file names no reference."));
    if (statements.empty() || !counted)
        statements.push_back(plain);
    const Statement &taken = statements.front();
    for (size_t i = 1; i < statements.size(); ++i)
        noteDisagreement(taken, statements[i], points, notes);

    SpectrumDimension axis;
    axis.nucleus = abscissa.nucleus;
    axis.frequency = frequency;
    axis.points = points;
    axis.first = taken.first;
    axis.step = taken.step;
    axis.width = std::abs(axis.step) * points * frequency;
    return axis;
}

} // namespace Workbench
