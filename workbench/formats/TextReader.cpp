// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/TextReader.h"

#include "data/ReaderText.h"
#include "formats/ColumnNames.h"
#include "formats/EvenAxis.h"
#include "formats/PrintedNumber.h"
#include "formats/PublishedPeaks.h"
#include "formats/LayoutDetection.h"
#include "formats/TextRegion.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using ReaderText::FileLines;
using Role = TextLayout::Role;
using Unit = TextLayout::Unit;

namespace TextReader {

namespace {

constexpr size_t sampleLines = 1000;
constexpr size_t mostPeaks = 200000; // far more than any spectrum has
constexpr size_t mostUnevenPoints = 2000; // more of them in order are a spectrum, not peaks

/// The rows of a table, one after another, from its first line on.
class Rows {
public:
    Rows(const TextLayout &layout, const std::vector<TextLine> &sample, FileLines &lines, const QString &source)
        : m_layout(layout), m_sample(sample), m_lines(lines), m_source(source)
    {
        m_isPlain = !layout.decimalComma
            && std::none_of(layout.columns.begin(), layout.columns.end(),
                            [](const auto &c) { return c.grouping != 0; });
    }

    /// Passes over lines without a row.
    bool next()
    {
        for (;;) {
            if (m_index < m_sample.size()) {
                const TextLine &line = m_sample[m_index++];
                m_line = line.text;
                m_number = line.number;
            } else if (m_lines.next()) {
                m_line = m_lines.line();
                m_number = m_lines.number();
            } else {
                return false;
            }
            if (m_number >= m_layout.firstLine && !m_line.empty()
                && (isDigit(m_line.front()) || !m_layout.isEmptyLine(m_line)))
                return true;
        }
    }

    int number() const { return m_number; }
    qint64 bytesLeft() const { return m_lines.bytesLeft(); }

    /// The numbers of two columns; `second` may be -1.
    void numbers(int first, int second, double &x, double &y)
    {
        if (!m_isPlain || !quickNumbers(first, second, x, y)) {
            split();
            x = number(first);
            if (second >= 0)
                y = number(second);
        }
    }

    void split()
    {
        m_layout.split(m_line, m_fields);
        if (!m_layout.fits(m_fields.size()))
            fail(m_source, m_number,
                 Texts::tr("expected %1 fields as in the lines before, found %2")
                     .arg(m_layout.columns.size())
                     .arg(m_fields.size()));
        for (size_t i = 0; i < m_fields.size(); ++i) {
            if (!m_layout.understands(i, m_fields[i]))
                fail(m_source, m_number, Texts::tr("expected a number, found %1").arg(excerpt(m_fields[i])));
        }
    }
    /// Of the line that was split; empty where an optional one is left out.
    std::string_view field(int column) const
    {
        return size_t(column) < m_fields.size() ? m_fields[size_t(column)] : std::string_view();
    }
    /// Of a field that is not empty.
    double number(int column) const { return *m_layout.number(size_t(column), field(column)); }

private:
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    /// Plain numbers alone on the line; false leaves anything else to the thorough way.
    bool quickNumbers(int first, int second, double &x, double &y) const
    {
        const char *at = m_line.data(), *const end = at + m_line.size();
        const auto skipBlanks = [&] {
            while (at != end && (*at == ' ' || *at == '\t' || *at == '\r'))
                ++at;
        };
        const int columns = int(m_layout.columns.size());
        double unused = 0.0;
        for (int column = 0; column < columns; ++column) {
            skipBlanks();
            double &value = column == first ? x : column == second ? y : unused;
            const auto [rest, error] = std::from_chars(at, end, value);
            if (error != std::errc{} || !std::isfinite(value))
                return false;
            at = rest;
            const bool blank = at != end && (*at == ' ' || *at == '\t' || *at == '\r');
            skipBlanks();
            if (column + 1 == columns)
                return at == end;
            if (at == end
                || (m_layout.separator == ' ' || m_layout.separator == '\t' ? !blank : *at++ != m_layout.separator))
                return false;
        }
        return false;
    }

    const TextLayout &m_layout;
    const std::vector<TextLine> &m_sample;
    FileLines &m_lines;
    const QString &m_source;
    bool m_isPlain = true; ///< no decimal commas, no groups of digits
    size_t m_index = 0;
    std::string_view m_line;
    int m_number = 0;
    std::vector<std::string_view> m_fields;
};

/// The line of each row, kept where a row does not follow the one before directly.
class LineNumbers {
public:
    void add(size_t row, int line)
    {
        if (line != m_next)
            m_jumps.emplace_back(row, line);
        m_next = line + 1;
    }
    int of(size_t row) const
    {
        const auto after = std::upper_bound(m_jumps.begin(), m_jumps.end(), row,
                                            [](size_t wanted, const auto &jump) { return wanted < jump.first; });
        const auto &[firstRow, firstLine] = *std::prev(after);
        return firstLine + int(row - firstRow);
    }

private:
    std::vector<std::pair<size_t, int>> m_jumps;
    int m_next = 0;
};

Precision precisionOf(const TextLayout &layout, const std::vector<TextLine> &sample, Role role)
{
    Precision precision;
    const int column = layout.columnOf(role);
    std::vector<std::string_view> fields;
    for (const TextLine &line : sample) {
        if (line.number < layout.firstLine)
            continue;
        layout.split(line.text, fields);
        if (column < 0 || size_t(column) >= fields.size())
            continue;
        std::string field(fields[size_t(column)]);
        if (const char mark = layout.columns[size_t(column)].grouping)
            std::erase(field, mark);
        precision.add(field);
    }
    return precision;
}

/// One reading of a text table.
class TableReader {
public:
    TableReader(const TextLayout &layout, const std::vector<TextLine> &sample, FileLines &lines, const QString &source,
                const ReadOptions &options)
        : m_layout(layout),
          m_sample(sample),
          m_rows(layout, sample, lines, source),
          m_source(source),
          m_options(options),
          m_notes(layout.notes),
          m_position(layout.columnOf(Role::Position)),
          m_positionF1(layout.columnOf(Role::PositionF1)),
          m_intensity(layout.columnOf(Role::Intensity))
    {
    }

    Measurement read()
    {
        settleUnits();
        if (m_positionF1 >= 0)
            return mayBeSpectrum() && isGrid() ? readPlane() : Measurement(readPeaks());
        return mayBeSpectrum() ? readTrace() : Measurement(readPeaks());
    }

private:
    /// Names, counts and heights of some of the positions only are those of peaks.
    bool mayBeSpectrum() const { return m_intensity >= 0 && !m_layout.isList(); }

    /// What positions are divided by to be ppm, per dimension.
    void settleUnits()
    {
        const int dimensions = m_positionF1 >= 0 ? 2 : 1;
        const QString place = Texts::tr("%1, line %2").arg(m_source, QString::number(m_layout.firstLine));
        for (int d = 0; d < dimensions; ++d) {
            const TextLayout::Column &column = m_layout.columns[size_t(d == 0 ? m_position : m_positionF1)];
            Unit unit = column.unit;
            if (!m_options.unit.isEmpty()) {
                unit = ColumnNames::unitNamed(m_options.unit);
            } else if (unit == Unit::Unknown) {
                if (column.name.contains(u"freq", Qt::CaseInsensitive))
                    throw FrequencyNeeded(
                        QStringLiteral("%1: %2").arg(
                            place,
                            Texts::tr("the positions are frequencies without a unit: ppm, Hz or kHz must be given")),
                        dimensions, false);
                m_unitTold = m_unitTold && d != 0;
                if (d == 0)
                    m_notes.append(Texts::tr("The file names no unit: the positions were taken as ppm."));
            }
            double &frequency = m_frequency[size_t(d)];
            frequency = d == 0 ? m_layout.frequency : 0.0;
            if (const double given = m_options.frequency[size_t(d)];
                given > 0.0 && (unit == Unit::Hertz || unit == Unit::Kilohertz))
                frequency = given;
            m_perPpm[size_t(d)] = perPpm(unit, frequency, place, dimensions, m_notes);
        }
    }

    SpectrumDimension dimension(std::span<const double> positions, const LineNumbers &lines, int d) const
    {
        const Precision precision = precisionOf(m_layout, m_sample, d == 0 ? Role::Position : Role::PositionF1);
        const auto even = evenAxis(positions, precision);
        double usual = 0.0;
        if (!even) {
            const size_t odd = oddPoint(positions, usual);
            fail(m_source, lines.of(odd),
                 Texts::tr("the points are not evenly spaced: %1 follows %2 where the step is %3")
                     .arg(positions[odd], 0, 'g', 10)
                     .arg(positions[odd == 0 ? 0 : odd - 1], 0, 'g', 10)
                     .arg(usual, 0, 'g', 6));
        }
        SpectrumDimension axis;
        axis.nucleus = m_layout.columns[size_t(d == 0 ? m_position : m_positionF1)].nucleus;
        axis.frequency = m_frequency[size_t(d)];
        axis.points = int(positions.size());
        axis.first = even->first / m_perPpm[size_t(d)];
        axis.step = even->step / m_perPpm[size_t(d)];
        axis.width = std::abs(axis.step) * axis.points * axis.frequency;
        return axis;
    }

    Measurement readTrace()
    {
        std::vector<double> x, y;
        LineNumbers lines;
        while (m_rows.next()) {
            if (x.size() == x.capacity())
                grow(x, y);
            double position = 0.0, intensity = 0.0;
            m_rows.numbers(m_position, m_intensity, position, intensity);
            x.push_back(position);
            y.push_back(intensity);
            lines.add(x.size() - 1, m_rows.number());
        }
        const Precision precision = precisionOf(m_layout, m_sample, Role::Position);
        const auto even = x.size() >= fewestPoints ? evenAxis(x, precision) : std::nullopt;
        if (!even && !wasMeantEven(x))
            return peaksOf(x, y);
        ExperimentalSpectrum spectrum;
        spectrum.dimensions.push_back(dimension(x, lines, 0));
        if (even->rounded)
            m_notes.append(Texts::tr(
                "The positions are rounded by more than their step, or one is missing: a straight line was laid "
                "through them."));
        m_notes.prepend(Texts::tr("Read as a spectrum: %1 evenly spaced positions.").arg(x.size()));
        if (m_layout.columnOf(Role::Imaginary) >= 0)
            m_notes.append(Texts::tr("The imaginary part was left out."));
        spectrum.data = std::move(y);
        finish(spectrum);
        return spectrum;
    }

    /// A spectrum with a fault, rather than a list of peaks.
    static bool wasMeantEven(const std::vector<double> &x)
    {
        double usual = 0.0;
        const bool sorted = std::is_sorted(x.begin(), x.end()) || std::is_sorted(x.rbegin(), x.rend());
        return x.size() >= fewestPoints && (oddPoint(x, usual) != 0 || (sorted && x.size() > mostUnevenPoints));
    }

    /// Room for the rows that are left in the file, by the rows so far.
    void grow(std::vector<double> &x, std::vector<double> &y)
    {
        constexpr size_t least = 4096;
        if (x.size() < least) {
            m_bytesBefore = m_rows.bytesLeft();
            x.reserve(least);
            y.reserve(least);
            if (!x.empty())
                x.reserve(2 * least), y.reserve(2 * least);
            return;
        }
        const double perRow = std::max(2.0, double(m_bytesBefore - m_rows.bytesLeft()) / double(x.size()));
        const size_t size = x.size() + size_t(1.02 * double(m_rows.bytesLeft()) / perRow) + least;
        x.reserve(size);
        y.reserve(size);
    }

    void finish(ExperimentalSpectrum &spectrum)
    {
        spectrum.title = QFileInfo(m_source).completeBaseName();
        spectrum.format = Texts::tr("text table");
        doubtUnit(spectrum.dimensions[0].first);
        doubtUnit(spectrum.dimensions[0].ppm(spectrum.dimensions[0].points - 1));
        spectrum.notes = m_notes;
        if (spectrum.data.size() > size_t(largestPointCount))
            fail(m_source, Texts::tr("%1 points are too many").arg(spectrum.data.size()));
        orient(spectrum, m_source);
    }

    MeasuredPeaks peaksOf(const std::vector<double> &x, const std::vector<double> &y)
    {
        MeasuredPeaks result;
        for (size_t i = 0; i < x.size(); ++i)
            result.peaks.push_back({x[i] / m_perPpm[0], 0.0, y[i], {}, 0});
        return finish(std::move(result),
                      x.size() >= fewestPoints ? Texts::tr("the positions are not evenly spaced")
                                               : Texts::tr("a spectrum has %1 rows at least").arg(fewestPoints));
    }

    MeasuredPeaks finish(MeasuredPeaks result, const QString &why = {})
    {
        if (result.peaks.empty())
            fail(m_source, Texts::tr("the file holds no peaks"));
        result.title = QFileInfo(m_source).completeBaseName();
        result.format = Texts::tr("text peak list");
        result.dimensions = m_positionF1 >= 0 ? 2 : 1;
        result.nuclei[0] = m_layout.columns[size_t(m_position)].nucleus;
        if (m_positionF1 >= 0)
            result.nuclei[1] = m_layout.columns[size_t(m_positionF1)].nucleus;
        m_notes.prepend(why.isEmpty() ? Texts::tr("Read as a list of %1 peaks.").arg(result.peaks.size())
                                      : Texts::tr("Read as a list of %1 peaks: %2.").arg(result.peaks.size()).arg(why));
        for (const MeasuredPeak &peak : result.peaks)
            doubtUnit(peak.f2);
        result.notes = m_notes;
        return result;
    }

    /// Few nuclei have shifts so large; Hz without a unit do.
    void doubtUnit(double ppm)
    {
        constexpr double usual = 1500.0;
        if (!m_unitTold && std::abs(ppm) > usual) {
            m_unitTold = true;
            m_notes.append(
                Texts::tr(
                    "Positions beyond %1 ppm are rare: if these are Hz, the unit and the frequency must be given.")
                    .arg(usual));
        }
    }

    MeasuredPeaks readPeaks()
    {
        MeasuredPeaks result;
        const int count = m_layout.columnOf(Role::Count);
        size_t sites = 0; // a peak is repeated for each when it is compared
        QStringList lacking;
        while (m_rows.next()) {
            m_rows.split();
            if (m_layout.someHaveNoPosition && PrintedNumber::isLacking(m_rows.field(m_position))) {
                static const QRegularExpression word(QStringLiteral("[\\p{L}\\d]"));
                const int number = m_layout.columnOf(Role::Number);
                MeasuredPeak nameless;
                nameFrom(nameless);
                const QString name = number >= 0 ? ReaderText::decoded(m_rows.field(number)) : nameless.label;
                if (word.match(name).hasMatch()) // no rule below the names
                    lacking.append(name);
                continue;
            }
            MeasuredPeak peak;
            peak.f2 = m_rows.number(m_position) / m_perPpm[0];
            if (m_positionF1 >= 0)
                peak.f1 = m_rows.number(m_positionF1) / m_perPpm[1];
            if (m_intensity >= 0 && !m_rows.field(m_intensity).empty())
                peak.height = m_rows.number(m_intensity);
            nameFrom(peak);
            if (count >= 0 && !m_rows.field(count).empty())
                peak.count = countIn(m_rows.number(count));
            sites += size_t(std::max(peak.count, 1));
            if (sites > mostPeaks)
                fail(m_source, m_rows.number(), Texts::tr("more than %1 peaks are too many").arg(mostPeaks));
            result.peaks.push_back(std::move(peak));
        }
        if (!lacking.isEmpty())
            m_notes.append(Texts::tr("Rows without a shift of %1 (%2) were left out: %3.")
                               .arg(m_layout.columns[size_t(m_position)].nucleus, QString::number(lacking.size()),
                                    lacking.join(QStringLiteral(", "))));
        dropSums(result.peaks);
        if (std::any_of(result.peaks.begin(), result.peaks.end(), [](const auto &peak) { return peak.count > 0; }))
            PublishedPeaks::dropPartialCounts(result.peaks, m_notes);
        return finish(std::move(result));
    }

    /// "RMSD" and "Mean" below the shifts, and what stands with them.
    void dropSums(std::vector<MeasuredPeak> &peaks)
    {
        static const QRegularExpression sum(QStringLiteral("^(?:rms[de]?|ma[de]|mue|mean|average|mittelwert)\\W*$"),
                                            QRegularExpression::CaseInsensitiveOption),
            beside(QStringLiteral("^(?:std|sd|max|min|r2|r²)\\W*$"), QRegularExpression::CaseInsensitiveOption);
        const auto isSum = [](const MeasuredPeak &peak) { return sum.match(peak.label).hasMatch(); };
        const auto isBeside = [&](const MeasuredPeak &peak) {
            return isSum(peak) || beside.match(peak.label).hasMatch();
        };
        const auto end = std::find_if_not(peaks.rbegin(), peaks.rend(), isBeside).base();
        if (end == peaks.begin() || std::none_of(end, peaks.end(), isSum))
            return;
        QStringList labels;
        for (auto peak = end; peak != peaks.end(); ++peak)
            labels.append(peak->label);
        m_notes.append(
            Texts::tr("Rows that sum up the table were left out: %1.").arg(labels.join(QStringLiteral(", "))));
        peaks.erase(end, peaks.end());
    }

    int countIn(double value) const
    {
        constexpr double most = 100000;
        if (!(value >= 1.0 && value <= most) || value != std::floor(value))
            fail(m_source, m_rows.number(), Texts::tr("expected a count of sites from 1 on, found %1").arg(value));
        return int(value);
    }

    /// The names in the columns of labels, and the number of nuclei that stands among multiplets.
    void nameFrom(MeasuredPeak &peak) const
    {
        QStringList names;
        for (size_t i = 0; i < m_layout.columns.size(); ++i) {
            const std::string_view field = m_rows.field(int(i));
            if (m_layout.columns[i].role != Role::Label || field.empty())
                continue;
            peak.label = ReaderText::decoded(field).replace(QStringLiteral("\"\""), QStringLiteral("\""));
            if (m_layout.columns[i].saysMultiplets)
                PublishedPeaks::annotate(peak, QString(peak.label));
            if (!peak.label.isEmpty())
                names.append(peak.label);
        }
        peak.label = names.join(u' ');
    }

    /// By the first lines: one coordinate stays while the other one runs.
    bool isGrid()
    {
        std::vector<double> f2, f1;
        std::vector<std::string_view> fields;
        for (const TextLine &line : m_sample) {
            if (line.number < m_layout.firstLine || m_layout.isEmptyLine(line.text))
                continue;
            m_layout.split(line.text, fields);
            f2.push_back(*m_layout.number(size_t(m_position), fields[size_t(m_position)]));
            f1.push_back(*m_layout.number(size_t(m_positionF1), fields[size_t(m_positionF1)]));
        }
        constexpr size_t leastRow = 4;
        const auto stays = [](const std::vector<double> &values) {
            return std::all_of(values.begin(), values.begin() + leastRow, [&](double v) { return v == values[0]; });
        };
        m_f1Runs = f2.size() >= fewestPoints && stays(f2) && !stays(f1);
        return f2.size() >= fewestPoints && (stays(f1) != stays(f2));
    }

    /// Rows of the running coordinate, which each must repeat; of the other one a value for each row.
    Measurement readPlane()
    {
        const int running = m_f1Runs ? m_positionF1 : m_position, staying = m_f1Runs ? m_position : m_positionF1;
        std::vector<double> run, stay, data;
        LineNumbers runLines, stayLines;
        size_t column = 0;
        const auto expectRows = [&](size_t length) {
            fail(m_source, m_rows.number(),
                 Texts::tr("expected rows of %1 points with the same positions").arg(length));
        };
        while (m_rows.next()) {
            m_rows.split();
            const double r = m_rows.number(running), s = m_rows.number(staying);
            if (stay.empty() || s != stay.back()) {
                if (stay.size() > 1 && column != run.size())
                    expectRows(run.size());
                stayLines.add(stay.size(), m_rows.number());
                stay.push_back(s);
                column = 0;
            }
            if (stay.size() == 1) {
                runLines.add(run.size(), m_rows.number());
                run.push_back(r);
            } else if (column >= run.size() || r != run[column]) {
                expectRows(run.size());
            }
            ++column;
            data.push_back(m_rows.number(m_intensity));
        }
        if (stay.size() < 2 || run.size() < 2 || data.size() != run.size() * stay.size()) {
            fail(m_source,
                 Texts::tr("%1 points do not make two or more rows of %2 points").arg(data.size()).arg(run.size()));
        }
        ExperimentalSpectrum spectrum;
        if (m_f1Runs) {
            std::vector<double> turned(data.size());
            for (size_t i2 = 0; i2 < stay.size(); ++i2) {
                for (size_t i1 = 0; i1 < run.size(); ++i1)
                    turned[i1 * stay.size() + i2] = data[i2 * run.size() + i1];
            }
            data = std::move(turned);
            std::swap(run, stay);
            std::swap(runLines, stayLines);
        }
        spectrum.dimensions.push_back(dimension(run, runLines, 0));
        spectrum.dimensions.push_back(dimension(stay, stayLines, 1));
        spectrum.data = std::move(data);
        m_notes.prepend(Texts::tr("Read as a spectrum of %1 × %2 points.").arg(run.size()).arg(stay.size()));
        finish(spectrum);
        return spectrum;
    }

    const TextLayout &m_layout;
    const std::vector<TextLine> &m_sample;
    Rows m_rows;
    const QString &m_source;
    const ReadOptions &m_options;
    QStringList m_notes;
    int m_position;
    int m_positionF1;
    int m_intensity;
    bool m_unitTold = true;
    bool m_f1Runs = false;
    qint64 m_bytesBefore = 0;
    std::array<double, 2> m_perPpm{1.0, 1.0};
    std::array<double, 2> m_frequency{};
};

} // namespace

Measurement parse(QIODevice &text, const QString &source, const ReadOptions &options)
{
    FileLines lines(text, source);
    std::vector<TextLine> sample;
    while (sample.size() < sampleLines && lines.next())
        sample.push_back({std::string(lines.line()), lines.number()});
    if (const TextRegion::Region region = TextRegion::find(sample); region.dimensions > 0) {
        ExperimentalSpectrum spectrum = TextRegion::read(region, sample, lines, source, options);
        spectrum.title = QFileInfo(source).completeBaseName();
        orient(spectrum, source);
        return spectrum;
    }
    if (sample.size() < sampleLines) {
        if (std::optional<MeasuredPeaks> published = PublishedPeaks::parse(sample, source))
            return *std::move(published);
    }
    const TextLayout layout = detectLayout(sample, sample.size() < sampleLines, source, options);
    if (layout.columns.empty())
        fail(source, Texts::tr("the file holds no peaks"));
    return TableReader(layout, sample, lines, source, options).read();
}

Measurement parse(const QByteArray &text, const QString &source, const ReadOptions &options)
{
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    return parse(buffer, source, options);
}

Measurement read(const QString &path, const ReadOptions &options)
{
    if (QFileInfo(path).exists() && !QFileInfo(path).isFile())
        fail(path, Texts::tr("this is not a regular file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail(path, Texts::tr("the file cannot be opened (%1)").arg(file.errorString()));
    return parse(file, path, options);
}

} // namespace TextReader

} // namespace Workbench
