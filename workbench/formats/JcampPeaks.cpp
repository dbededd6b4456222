// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/JcampPeaks.h"

#include "data/NumberText.h"
#include "formats/EvenAxis.h"
#include "formats/JcampAxis.h"
#include "data/ReaderText.h"

#include <algorithm>
#include <cmath>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using ReaderText::trimmed;

namespace JcampPeaks {

namespace {

/// "XYA" of a form such as (XYA), "XY" of (XY..XY).
std::string fieldsOf(std::string_view form)
{
    std::string letters;
    for (char c : upperCase(form.substr(0, form.find("..")))) {
        if (c >= 'A' && c <= 'Z')
            letters += c;
    }
    return letters;
}

/// Pairs of X and intensity, or X with a real and an imaginary part.
bool isPoints(const std::string &fields)
{
    return fields == "XY" || fields == "XR" || fields == "XYI" || fields == "XRI";
}

/// One value of a peak group: plain text, or text in angle brackets.
std::string_view takeValue(std::string_view &rest)
{
    const size_t start = std::min(rest.find_first_not_of(" \t,;()"), rest.size());
    rest.remove_prefix(start);
    const bool quoted = rest.starts_with('<');
    const size_t end = std::min(quoted ? rest.find('>') : rest.find_first_of(" \t,;()"), rest.size());
    const std::string_view value = rest.substr(quoted ? 1 : 0, end - (quoted ? 1 : 0));
    rest.remove_prefix(std::min(rest.size(), end + (quoted ? 1 : 0)));
    return value;
}

bool isEmpty(std::string_view rest)
{
    return rest.find_first_not_of(" \t,;()") == std::string_view::npos;
}

/// What stands in the table, X in the units of the file.
struct Rows {
    std::vector<MeasuredPeak> peaks; ///< without positions
    std::vector<double> positions;
    Precision precision; ///< of the positions
};

double optionalNumber(const JcampBlock &block, const char *label, double missing)
{
    const LabelledRecord *record = block.find(label);
    return record ? block.number(*record, record->text()) : missing;
}

/// "170,2 5,0" is a peak with decimal commas, or two of whole numbers as the standard writes them: the announced number
/// of peaks decides.
bool hasDecimalCommas(const JcampBlock &block, const LabelledRecord &record)
{
    ReaderText::Lines lines(record.value, record.line - 1);
    lines.next(); // the form
    int line = 0;
    double values = 0.0, withComma = 0.0;
    while (lines.next()) {
        std::string_view rest = withoutComment(lines.line());
        double ofLine = 0.0;
        while (!(rest = trimmed(rest)).empty()) {
            const std::string_view value = rest.substr(0, rest.find_first_of(" \t;"));
            rest.remove_prefix(std::min(rest.size(), value.size() + 1));
            if (value.find_first_not_of("-+0123456789,") != value.npos || value.ends_with(',')
                || value.starts_with(','))
                return false; // decimal points, or a comma beside a blank
            ++ofLine;
            withComma += hasDecimalComma(value);
        }
        values += ofLine;
        line = line == 0 && ofLine > 1.0 ? lines.number() : line;
    }
    if (line == 0 || withComma == 0.0)
        return false;
    const double announced = optionalNumber(block, "NPOINTS", 0.0);
    if (announced == values && withComma == values)
        return false;
    if (2.0 * announced != values)
        fail(block.source, line,
             Texts::tr("the commas may be decimal marks or stand between X and Y: ##NPOINTS= %1 or %2 tells which")
                 .arg(values / 2.0)
                 .arg(values));
    block.notes.append(
        Texts::tr("The commas in ##%1= were taken for decimal points.").arg(ReaderText::decoded(record.label)));
    return true;
}

Rows rowsOf(const JcampBlock &block, const LabelledRecord &record, const std::string &fields)
{
    const double xFactor = optionalNumber(block, "XFACTOR", 1.0), yFactor = optionalNumber(block, "YFACTOR", 1.0);
    const bool decimalCommas = fields == "XY" && hasDecimalCommas(block, record);
    Rows rows;
    std::string line;
    ReaderText::Lines lines(record.value, record.line - 1);
    lines.next(); // the form
    while (lines.next()) {
        line = withoutComment(lines.line());
        if (decimalCommas)
            std::replace(line.begin(), line.end(), ',', '.');
        for (std::string_view rest = line; !isEmpty(rest);) {
            MeasuredPeak peak;
            for (char field : fields) {
                // R: the real part
                if (field == 'R')
                    field = 'Y';
                const std::string_view text = trimmed(takeValue(rest));
                if (field == 'A')
                    peak.label = ReaderText::decoded(text);
                if (field != 'X' && field != 'Y')
                    continue;
                const auto value = NumberText::parse<double>(text);
                if (!value || !std::isfinite(*value * (field == 'X' ? xFactor : yFactor)))
                    fail(block.source, lines.number(), Texts::tr("expected a number, found %1").arg(excerpt(text)));
                if (field == 'Y') {
                    peak.height = *value * yFactor;
                } else {
                    rows.positions.push_back(*value * xFactor);
                    rows.precision.add(text);
                }
            }
            rows.peaks.push_back(std::move(peak));
        }
    }
    const double announced = optionalNumber(block, "NPOINTS", double(rows.peaks.size()));
    if (rows.peaks.empty() || announced != double(rows.peaks.size())) {
        fail(block.source, record.line,
             Texts::tr("%1 peaks were announced, %2 are there").arg(announced).arg(qulonglong(rows.peaks.size())));
    }
    return rows;
}

Measurement spectrum(const JcampBlock &block, const Rows &rows, JcampAbscissa x, const EvenAxis &axis,
                     const ReadOptions &options)
{
    ExperimentalSpectrum result;
    result.format = QStringLiteral("JCAMP-DX");
    result.title = ReaderText::decoded(block.text("TITLE"));
    x.x = {axis.first, axis.step, 1.0, int(rows.positions.size())};
    result.notes.append(Texts::tr("Read as a spectrum: %1 evenly spaced positions.").arg(rows.positions.size()));
    result.dimensions.push_back(jcampAxis(block, x, options, result.notes));
    for (const MeasuredPeak &point : rows.peaks)
        result.data.push_back(point.height);
    orient(result, block.source);
    return result;
}

Measurement peaks(const JcampBlock &block, const Rows &rows, const JcampAbscissa &x, const ReadOptions &options,
                  bool noUnits)
{
    MeasuredPeaks result;
    result.format = Texts::tr("JCAMP-DX peak list");
    result.title = ReaderText::decoded(block.text("TITLE"));
    result.nuclei[0] = x.nucleus;
    if (noUnits)
        result.notes.append(Texts::tr("The file names no units: the positions were taken as ppm."));
    const double perPpm = jcampUnitsPerPpm(block, x, jcampFrequency(block, x, options, result.notes));
    if (perPpm != 1.0)
        result.notes.append(Texts::tr("0 Hz was taken as 0 ppm: the file names no reference."));
    result.peaks = rows.peaks;
    for (size_t i = 0; i < result.peaks.size(); ++i)
        result.peaks[i].f2 = rows.positions[i] / perPpm;
    return result;
}

} // namespace

const LabelledRecord *table(const JcampBlock &block)
{
    const std::string type = normalisedLabel(block.text("DATATYPE"));
    if (type.find("NMR") == std::string::npos && !block.find(".OBSERVENUCLEUS"))
        return nullptr;
    for (const char *label : {"PEAKASSIGNMENTS", "PEAKTABLE"}) {
        if (const LabelledRecord *found = block.find(label))
            return found;
    }
    for (const LabelledRecord &record : block.records) {
        const bool isTable = record.label == "XYPOINTS" || record.label == "XYDATA" || record.label == "DATATABLE";
        if (isTable && isPoints(fieldsOf(record.firstLine()))
            && record.firstLine().find("++") == std::string_view::npos)
            return &record;
    }
    return nullptr;
}

Measurement read(const JcampBlock &block, const ReadOptions &options)
{
    const LabelledRecord &record = *table(block);
    const std::string fields = fieldsOf(record.firstLine());
    if (!fields.starts_with('X'))
        fail(block.source, record.line,
             Texts::tr("expected peaks (XY..XY) or (XYA), found %1").arg(excerpt(record.firstLine())));
    const Rows rows = rowsOf(block, record, fields);

    const LabelledRecord *units = block.find("XUNITS"), *listed = units ? nullptr : block.find("UNITS");
    JcampAbscissa x;
    x.nucleus = observedNucleus(block);
    x.units = units ? normalisedLabel(units->text()) : listed ? normalisedLabel(jcampField(listed->text(), 0)) : "PPM";
    x.unitsLine = units ? units->line : listed ? listed->line : 0;

    constexpr size_t fewestPoints = 32;
    const bool mayBeSpectrum = isSpectrum(block) && rows.peaks.size() >= fewestPoints && isPoints(fields);
    if (const auto even = mayBeSpectrum ? evenAxis(rows.positions, rows.precision) : std::nullopt)
        return spectrum(block, rows, x, *even, options);
    constexpr size_t mostPeaks = 2000; // far more than any list has
    if (mayBeSpectrum && rows.peaks.size() > mostPeaks)
        fail(block.source, record.line, Texts::tr("the points of the spectrum are not evenly spaced"));
    return peaks(block, rows, x, options, !units && !listed);
}

} // namespace JcampPeaks

} // namespace Workbench
