// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/CsvSpectrumReader.h"

#include "data/NumberText.h"
#include "data/ReaderText.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using ReaderText::tr;
using ReaderText::trimmed;

namespace CsvSpectrumReader {

namespace {

constexpr qint64 largestFile = qint64(512) << 20;

/// The numbers of the file, column by column, and the line of each row.
struct Columns {
    std::array<std::vector<double>, 3> values;
    std::vector<int> lines;
    int count = 0; ///< of columns
};

bool isHeader(std::string_view line)
{
    if (line.starts_with('"'))
        line.remove_prefix(1);
    return line.size() >= 3 && (line[0] == 'p' || line[0] == 'P') && (line[1] == 'p' || line[1] == 'P')
        && (line[2] == 'm' || line[2] == 'M');
}

void addRow(Columns &columns, std::string_view line, const QString &source, int number)
{
    std::array<double, 3> row{};
    int count = 0;
    for (std::optional<std::string_view> rest = line; rest; ++count) {
        const size_t comma = rest->find(',');
        const std::string_view field = trimmed(rest->substr(0, comma));
        if (count == 3)
            fail(source, number, tr("expected \"ppm,intensity\", found more than three fields"));
        const auto value = NumberText::parse<double>(field);
        if (!value)
            fail(source, number, tr("expected a number, found %1").arg(excerpt(field)));
        row[count] = *value;
        rest = comma == std::string_view::npos ? std::nullopt : std::optional(rest->substr(comma + 1));
    }
    if (columns.count == 0)
        columns.count = count;
    if (count < 2 || count != columns.count) {
        fail(source, number,
             tr("expected \"ppm,intensity\", %1 fields, found %2").arg(std::max(columns.count, 2)).arg(count));
    }
    for (int i = 0; i < count; ++i)
        columns.values[i].push_back(row[i]);
    columns.lines.push_back(number);
}

Columns readColumns(const QByteArray &text, const QString &source)
{
    Columns columns;
    bool headerAllowed = true;
    for (ReaderText::Lines lines(ReaderText::view(text)); lines.next();) {
        const std::string_view line = trimmed(lines.line().substr(0, lines.line().find('#')));
        if (line.empty())
            continue;
        if (!std::exchange(headerAllowed, false) || !isHeader(line))
            addRow(columns, line, source, lines.number());
    }
    if (columns.lines.size() < 2)
        fail(source, tr("a spectrum has two points at least, the file has %1").arg(columns.lines.size()));
    return columns;
}

/// The point whose distance from the one before differs most from the distance usual in the list.
size_t worstPoint(std::span<const double> positions, double &usual)
{
    std::vector<double> steps(positions.size() - 1);
    for (size_t i = 0; i < steps.size(); ++i)
        steps[i] = positions[i + 1] - positions[i];
    std::vector<double> sorted = steps;
    std::nth_element(sorted.begin(), sorted.begin() + sorted.size() / 2, sorted.end());
    usual = sorted[sorted.size() / 2];
    const auto worst = std::max_element(steps.begin(), steps.end(),
                                        [&](double a, double b) { return std::abs(a - usual) < std::abs(b - usual); });
    return 1 + (worst - steps.begin());
}

/// An even axis through the first and the last position. A quarter of a step leaves room for positions that were
/// rounded when they were written, and none for a point that is missing or stands there twice.
SpectrumDimension evenAxis(std::span<const double> positions, std::span<const int> lines, const QString &source)
{
    SpectrumDimension axis;
    axis.points = int(positions.size());
    axis.first = positions.front();
    axis.step = (positions.back() - positions.front()) / double(positions.size() - 1);
    for (size_t i = 0; i < positions.size(); ++i) {
        if (std::abs(positions[i] - axis.ppm(double(i))) <= 0.25 * std::abs(axis.step) && axis.step != 0.0)
            continue;
        double usual = 0.0;
        const size_t worst = worstPoint(positions, usual);
        fail(source, lines[worst],
             tr("the points are not evenly spaced: %1 ppm follows %2 ppm where the step is %3 ppm")
                 .arg(positions[worst], 0, 'g', 10)
                 .arg(positions[worst - 1], 0, 'g', 10)
                 .arg(usual, 0, 'g', 6));
    }
    return axis;
}

/// How many points share the F1 position of the first one; the rows must be equally long and repeat the F2 positions.
size_t rowLength(const Columns &columns, const QString &source)
{
    const auto &[f2, f1, intensity] = columns.values;
    const size_t total = f1.size();
    size_t length = 1;
    while (length < total && f1[length] == f1[0])
        ++length;
    for (size_t i = 0; i < total; ++i) {
        const size_t row = i / length * length;
        if (f1[i] != f1[row] || f2[i] != f2[i - row])
            fail(source, columns.lines[i], tr("expected rows of %1 points with the same F2 positions").arg(length));
    }
    if (length < 2 || length == total || total % length != 0) {
        fail(source,
             tr("%1 points do not make two or more rows of %2 points").arg(qulonglong(total)).arg(qulonglong(length)));
    }
    return length;
}

} // namespace

ExperimentalSpectrum parse(const QByteArray &text, const QString &source)
{
    Columns columns = readColumns(text, source);
    ExperimentalSpectrum spectrum;
    spectrum.title = QFileInfo(source).completeBaseName();
    const std::span<const double> f2 = columns.values[0];
    const std::span<const int> lines = columns.lines;
    if (columns.count == 2) {
        spectrum.dimensions.push_back(evenAxis(f2, lines, source));
        spectrum.data = std::move(columns.values[1]);
    } else {
        const size_t length = rowLength(columns, source);
        std::vector<double> f1;
        std::vector<int> f1Lines;
        for (size_t row = 0; row < lines.size(); row += length) {
            f1.push_back(columns.values[1][row]);
            f1Lines.push_back(lines[row]);
        }
        spectrum.dimensions.push_back(evenAxis(f2.first(length), lines.first(length), source));
        spectrum.dimensions.push_back(evenAxis(f1, f1Lines, source));
        spectrum.data = std::move(columns.values[2]);
    }
    orient(spectrum, source);
    return spectrum;
}

ExperimentalSpectrum read(const QString &path)
{
    return parse(ReaderText::readFile(path, largestFile), path);
}

} // namespace CsvSpectrumReader

} // namespace Workbench
