// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/TextRegion.h"

#include "data/Nuclides.h"
#include "formats/ColumnNames.h"
#include "formats/PrintedNumber.h"

#include <QRegularExpression>

#include <cmath>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using ReaderText::trimmed;

namespace TextRegion {

namespace {

struct Value {
    double number = 0.0;
    TextLayout::Unit unit = TextLayout::Unit::Unknown;
    bool decimalComma = false;
};

std::optional<Value> valueOf(const QString &comments, const char *name)
{
    const QRegularExpression pattern(
        QStringLiteral("(?<![A-Z0-9])%1\\s*=\\s*([-+0-9.,eE]+)\\s*((?i:k?Hz)\\b)?").arg(QString::fromLatin1(name)));
    const QRegularExpressionMatch match = pattern.match(comments);
    QString text = match.captured(1);
    while (text.endsWith(u'.') || text.endsWith(u','))
        text.chop(1);
    // Of two kinds of marks the last one is decimal.
    const bool decimalComma = text.lastIndexOf(u',') > text.lastIndexOf(u'.');
    text.remove(decimalComma ? u'.' : u',');
    bool isNumber = false;
    const double number = text.replace(u',', u'.').toDouble(&isNumber);
    return isNumber ? std::optional(Value{number, ColumnNames::unitNamed(match.captured(2)), decimalComma})
                    : std::nullopt;
}

bool readAxis(Region &region, Region::Axis &axis, const QString &comments, const char *left, const char *right,
              const char *size)
{
    const auto leftValue = valueOf(comments, left), rightValue = valueOf(comments, right),
               points = valueOf(comments, size);
    if (!leftValue || !rightValue || !points)
        return false;
    // What is no count is 0 points, which nothing has.
    const double count = points->number;
    const bool isCount = count >= 0.0 && count <= double(largestPointCount) && count == std::floor(count);
    axis = {leftValue->number, rightValue->number, isCount ? qint64(count) : 0, leftValue->unit};
    region.decimalComma |= leftValue->decimalComma || rightValue->decimalComma;
    return true;
}

SpectrumDimension dimension(const Region &region, int d, const QString &source, const ReadOptions &options,
                            QStringList &notes)
{
    const Region::Axis &axis = d == 0 ? region.f2 : region.f1;
    SpectrumDimension result;
    result.points = int(axis.points);
    result.nucleus = region.nucleus;
    const TextLayout::Unit unit = options.unit.isEmpty() ? axis.unit : ColumnNames::unitNamed(options.unit);
    const double given = options.frequency[size_t(d)];
    const double told = d == 0 ? region.frequency : 0.0, frequency = given > 0.0 ? given : told;
    const double divisor = perPpm(unit, frequency, source, region.dimensions, notes);
    result.frequency = divisor != 1.0 ? frequency : told;
    result.first = axis.left / divisor;
    result.step = (axis.right - axis.left) / divisor / double(axis.points - 1);
    return result;
}

} // namespace

Region find(const std::vector<TextLine> &sample)
{
    QString comments;
    for (const TextLine &line : sample) {
        if (trimmed(line.text).starts_with('#'))
            comments += ReaderText::decoded(line.text) + u'\n';
    }
    Region region;
    if (readAxis(region, region.f2, comments, "F2LEFT", "F2RIGHT", "NCOLS")
        && readAxis(region, region.f1, comments, "F1LEFT", "F1RIGHT", "NROWS"))
        region.dimensions = 2;
    else if (readAxis(region, region.f2, comments, "LEFT", "RIGHT", "SIZE"))
        region.dimensions = 1;
    if (region.dimensions == 1)
        region.nucleus = Nuclides::table().observedIn(comments);
    region.frequency = Nuclides::table()[region.nucleus].observedFrequency(ColumnNames::frequencyIn({comments}));
    return region;
}

ExperimentalSpectrum read(const Region &region, const std::vector<TextLine> &sample, ReaderText::FileLines &lines,
                          const QString &source, const ReadOptions &options)
{
    const qint64 rows = region.dimensions == 2 ? region.f1.points : 1;
    if (region.f2.points < 2 || (region.dimensions == 2 && rows < 2) || region.f2.points > largestPointCount
        || rows > largestPointCount / region.f2.points)
        fail(source, Texts::tr("%1 × %2 points cannot be").arg(region.f2.points).arg(rows));
    const size_t total = size_t(region.f2.points * rows);
    ExperimentalSpectrum spectrum;
    spectrum.format = Texts::tr("text, region and intensities");
    spectrum.dimensions.push_back(dimension(region, 0, source, options, spectrum.notes));
    if (region.dimensions == 2)
        spectrum.dimensions.push_back(dimension(region, 1, source, options, spectrum.notes));
    spectrum.notes.append(Texts::tr("LEFT and RIGHT were taken as the positions of the first and the last point."));
    const auto add = [&](std::string_view line, int number) {
        line = trimmed(line.substr(0, line.find('#')));
        if (line.empty())
            return;
        const auto value = PrintedNumber::parse(line, region.decimalComma);
        if (!value)
            fail(source, number, Texts::tr("expected one intensity, found %1").arg(excerpt(line)));
        if (spectrum.data.size() == total)
            fail(source, number, Texts::tr("there are more points than the %1 announced").arg(qulonglong(total)));
        spectrum.data.push_back(*value);
    };
    for (const TextLine &line : sample)
        add(line.text, line.number);
    while (lines.next())
        add(lines.line(), lines.number());
    if (spectrum.data.size() != total)
        fail(source,
             Texts::tr("the data end after %1 points where %2 were announced")
                 .arg(qulonglong(spectrum.data.size()))
                 .arg(qulonglong(total)));
    return spectrum;
}

} // namespace TextRegion

} // namespace Workbench
