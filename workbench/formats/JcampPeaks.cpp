// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/JcampPeaks.h"

#include "data/NumberText.h"
#include "formats/JcampAxis.h"
#include "data/ReaderText.h"

#include <algorithm>

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
    for (char c : form.substr(0, form.find(".."))) {
        if (c >= 'A' && c <= 'Z')
            letters += c;
    }
    return letters;
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

double optionalNumber(const JcampBlock &block, const char *label, double missing)
{
    const LabelledRecord *record = block.find(label);
    return record ? block.number(*record, record->text()) : missing;
}

} // namespace

const LabelledRecord *table(const JcampBlock &block)
{
    const std::string type = normalisedLabel(block.text("DATATYPE"));
    if (type.find("NMR") == std::string::npos && !block.find(".OBSERVENUCLEUS"))
        return nullptr;
    const LabelledRecord *assigned = block.find("PEAKASSIGNMENTS");
    return assigned ? assigned : block.find("PEAKTABLE");
}

MeasuredPeaks read(const JcampBlock &block, const ReadOptions &options)
{
    const LabelledRecord &record = *table(block);
    const std::string fields = fieldsOf(record.firstLine());
    if (!fields.starts_with('X'))
        fail(block.source, record.line,
             Texts::tr("expected peaks (XY..XY) or (XYA), found %1").arg(excerpt(record.firstLine())));
    MeasuredPeaks result;
    result.format = Texts::tr("JCAMP-DX peak list");
    result.title = ReaderText::decoded(block.text("TITLE"));
    result.nuclei[0] = nucleusName(block.text(".OBSERVENUCLEUS"));

    const LabelledRecord *units = block.find("XUNITS");
    const JcampAbscissa x{
        {}, units ? normalisedLabel(units->text()) : "PPM", units ? units->line : 0, result.nuclei[0], 0};
    if (!units)
        result.notes.append(Texts::tr("The file names no units: the positions were taken as ppm."));
    const double perPpm = jcampUnitsPerPpm(block, x, jcampFrequency(block, x, options, result.notes));
    if (perPpm != 1.0)
        result.notes.append(Texts::tr("0 Hz was taken as 0 ppm: the file names no reference."));
    const double xFactor = optionalNumber(block, "XFACTOR", 1.0), yFactor = optionalNumber(block, "YFACTOR", 1.0);

    ReaderText::Lines lines(record.value, record.line - 1);
    lines.next(); // the form
    while (lines.next()) {
        for (std::string_view rest = withoutComment(lines.line()); !isEmpty(rest);) {
            MeasuredPeak peak;
            for (char field : fields) {
                const std::string_view text = trimmed(takeValue(rest));
                if (field == 'A') {
                    peak.label = ReaderText::decoded(text);
                } else if (field == 'X' || field == 'Y') {
                    const auto value = NumberText::parse<double>(text);
                    if (!value)
                        fail(block.source, lines.number(), Texts::tr("expected a number, found %1").arg(excerpt(text)));
                    (field == 'X' ? peak.f2 : peak.height) = *value * (field == 'X' ? xFactor / perPpm : yFactor);
                }
            }
            result.peaks.push_back(std::move(peak));
        }
    }
    const double announced = optionalNumber(block, "NPOINTS", double(result.peaks.size()));
    if (result.peaks.empty() || announced != double(result.peaks.size())) {
        fail(block.source, record.line,
             Texts::tr("%1 peaks were announced, %2 are there").arg(announced).arg(qulonglong(result.peaks.size())));
    }
    return result;
}

} // namespace JcampPeaks

} // namespace Workbench
