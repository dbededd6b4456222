// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/TextRegion.h"

#include "data/NumberText.h"

#include <QRegularExpression>

#include <cmath>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using ReaderText::trimmed;

namespace TextRegion {

namespace {

std::optional<double> valueOf(const QString &comments, const char *name)
{
    const QRegularExpression pattern(
        QStringLiteral("(?<![A-Z0-9])%1\\s*=\\s*([-+0-9.eE]+)").arg(QString::fromLatin1(name)));
    const QRegularExpressionMatch match = pattern.match(comments);
    QString text = match.captured(1);
    if (text.endsWith(u'.'))
        text.chop(1);
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

bool readAxis(Region::Axis &axis, const QString &comments, const char *left, const char *right, const char *size)
{
    const auto leftValue = valueOf(comments, left), rightValue = valueOf(comments, right),
               points = valueOf(comments, size);
    if (!leftValue || !rightValue || !points)
        return false;
    // What is no count is 0 points, which nothing has.
    const bool isCount = *points >= 0.0 && *points <= double(largestPointCount) && *points == std::floor(*points);
    axis = {*leftValue, *rightValue, isCount ? qint64(*points) : 0};
    return true;
}

SpectrumDimension dimension(const Region::Axis &axis)
{
    SpectrumDimension result;
    result.points = int(axis.points);
    result.first = axis.left;
    result.step = (axis.right - axis.left) / double(axis.points - 1);
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
    if (readAxis(region.f2, comments, "F2LEFT", "F2RIGHT", "NCOLS")
        && readAxis(region.f1, comments, "F1LEFT", "F1RIGHT", "NROWS"))
        region.dimensions = 2;
    else if (readAxis(region.f2, comments, "LEFT", "RIGHT", "SIZE"))
        region.dimensions = 1;
    return region;
}

ExperimentalSpectrum read(const Region &region, const std::vector<TextLine> &sample, ReaderText::FileLines &lines,
                          const QString &source)
{
    const qint64 rows = region.dimensions == 2 ? region.f1.points : 1;
    if (region.f2.points < 2 || (region.dimensions == 2 && rows < 2) || region.f2.points > largestPointCount
        || rows > largestPointCount / region.f2.points)
        fail(source, Texts::tr("%1 × %2 points cannot be").arg(region.f2.points).arg(rows));
    const size_t total = size_t(region.f2.points * rows);
    ExperimentalSpectrum spectrum;
    spectrum.format = Texts::tr("text, region and intensities");
    spectrum.dimensions.push_back(dimension(region.f2));
    if (region.dimensions == 2)
        spectrum.dimensions.push_back(dimension(region.f1));
    spectrum.notes.append(Texts::tr("LEFT and RIGHT were taken as the positions of the first and the last point."));
    const auto add = [&](std::string_view line, int number) {
        line = trimmed(line.substr(0, line.find('#')));
        if (line.empty())
            return;
        const auto value = NumberText::parse<double>(line);
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
