// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/JcampReader.h"

#include "formats/AsdfDecoder.h"
#include "formats/JcampAxis.h"
#include "formats/JcampBlocks.h"
#include "formats/JcampPeaks.h"
#include "data/NumberText.h"
#include "data/ReaderText.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using ReaderText::trimmed;

namespace JcampReader {

namespace {

constexpr qint64 largestFile = qint64(1) << 30;

std::string withoutBlanks(std::string_view text)
{
    std::string result(text);
    std::erase_if(result, [](char c) { return c == ' ' || c == '\t'; });
    return result;
}

/// The symbols of a table (X++(Y..Y)): what rises by its own count and what is listed. Empty for another form.
struct Form {
    std::string counted;
    std::string listed;

    explicit Form(std::string_view firstLine)
    {
        const std::string text = upperCase(withoutBlanks(firstLine));
        const size_t plus = text.find("++("), dots = text.find(".."), end = text.find("))");
        if (!text.starts_with('(') || plus == text.npos || dots == text.npos || end == text.npos || dots < plus + 3
            || text.substr(plus + 3, dots - plus - 3) != text.substr(dots + 2, end - dots - 2))
            return;
        counted = text.substr(1, plus - 1);
        listed = text.substr(plus + 3, dots - plus - 3);
    }
};

/// The records that describe a table. In an NTUPLES block each lists one value for each symbol, in an XYDATA block each
/// value has a record of its own.
class TableValues {
public:
    /// XYDATA
    explicit TableValues(const JcampBlock &block) : m_block(block) { }
    /// The column of a symbol in NTUPLES.
    TableValues(const JcampBlock &block, int column) : m_block(block), m_column(column) { }

    double first() const { return value("FIRSTX", "FIRST"); }
    /// Some programs give the distance of points in its place.
    double last(double points) const
    {
        const LabelledRecord *record = m_column < 0 ? m_block.find("DELTAX") : nullptr;
        const bool isGiven = !record || m_block.find("LASTX");
        const std::string told = record ? record->text() : std::string();
        const double step = isGiven ? NumberText::parse<double>(told).value_or(0.0) : m_block.number(*record, told);
        const double last = isGiven ? value("LASTX", "LAST") : first() + step * (points - 1);
        QString note;
        // Rounded, or the width over the number of points, it may differ a little.
        const double width = std::abs(last - first()), toldWidth = std::abs(step) * (points - 1);
        if (isGiven && step != 0 && points > 1 && std::abs(toldWidth - width) > 0.02 * width + 2 * std::abs(step))
            note = Texts::tr("##DELTAX= tells steps of %1 where ##FIRSTX= and ##LASTX= give %2, which was taken.")
                       .arg(step, 0, 'g', 7)
                       .arg((last - first()) / (points - 1), 0, 'g', 7);
        else if (!isGiven)
            note = Texts::tr("The record ##LASTX= is missing: the axis follows from ##DELTAX=.");
        if (!note.isEmpty() && !m_block.notes.contains(note))
            m_block.notes.append(note);
        return last;
    }
    double points() const { return value("NPOINTS", "VARDIM"); }
    double factor(const char *plain) const { return value(plain, "FACTOR", 1.0); }
    const LabelledRecord &pointsRecord() const { return record("NPOINTS", "VARDIM"); }
    bool hasPoints() const { return m_block.find(m_column < 0 ? "NPOINTS" : "VARDIM"); }
    const LabelledRecord &unitsRecord() const { return record("XUNITS", "UNITS"); }
    std::string units() const { return normalisedLabel(field(unitsRecord().text())); }
    QString nucleus() const
    {
        const std::string list = m_column < 0 ? std::string() : m_block.text(".NUCLEUS");
        const QString named = list.empty() ? QString() : nucleusName(field(list));
        return named.isEmpty() ? observedNucleus(m_block) : named;
    }

private:
    std::string_view field(std::string_view text) const { return m_column < 0 ? text : jcampField(text, m_column); }
    const LabelledRecord &record(const char *plain, const char *listed) const
    {
        return m_block.need(m_column < 0 ? plain : listed);
    }
    double value(const char *plain, const char *listed, std::optional<double> missing = {}) const
    {
        if (missing && !m_block.find(m_column < 0 ? plain : listed))
            return *missing;
        const LabelledRecord &found = record(plain, listed);
        const std::string text = found.text();
        const std::string_view own = field(text);
        return missing && own.empty() ? *missing : m_block.number(found, own);
    }

    const JcampBlock &m_block;
    int m_column = -1;
};

/// The column of a symbol; -1 when it is not listed.
int columnOf(const JcampBlock &block, std::string_view symbol)
{
    const std::string list = withoutBlanks(block.need("SYMBOL").text());
    for (int i = 0; !jcampField(list, i).empty(); ++i) {
        if (jcampField(list, i) == symbol)
            return i;
    }
    return -1;
}

int neededColumn(const JcampBlock &block, std::string_view symbol)
{
    const int column = columnOf(block, symbol);
    if (column < 0)
        fail(block.source, block.need("SYMBOL").line,
             Texts::tr("the table's symbol %1 is not in this list").arg(excerpt(symbol)));
    return column;
}

/// Bounded by the size of the file: a repeat count can claim any number in a few bytes.
qint64 mostPoints(qint64 fileSize)
{
    constexpr qint64 alwaysAllowed = 1 << 20, pointsPerByte = 64;
    return std::min(largestPointCount, std::max(alwaysAllowed, fileSize * pointsPerByte));
}

/// The abscissa in the file's units. `counted`: points of the table where the file does not say their number.
JcampAbscissa abscissa(const JcampBlock &block, const TableValues &values, qint64 fileSize, int dimension = 0,
                       std::optional<double> counted = {})
{
    const double points = counted ? *counted : values.points(), most = double(mostPoints(fileSize));
    if (!(points >= 2.0) || points > most || points != std::floor(points)) {
        fail(block.source, counted ? block.line : values.pointsRecord().line,
             Texts::tr("%1 points cannot be, between 2 and %2 were expected")
                 .arg(points, 0, 'g', 15)
                 .arg(most, 0, 'g', 15));
    }
    XyAbscissa x{values.first(), 0.0, values.factor("XFACTOR"), int(points)};
    const double last = values.last(points);
    x.step = (last - x.first) / (points - 1.0);
    if (x.step == 0.0 || !std::isfinite(x.step)) {
        fail(block.source, block.line,
             Texts::tr("the first and the last X value (%1, %2) span no axis").arg(x.first).arg(last));
    }
    return {x, values.units(), values.unitsRecord().line, values.nucleus(), dimension};
}

/// A file that was cut may have lost digits of its last number and still hold all points.
void checkLastLine(const JcampBlock &block, std::string_view tableText, int line)
{
    const size_t end = tableText.find_last_not_of(" \t");
    if (end == std::string_view::npos || (tableText[end] != '\n' && tableText[end] != '\r'))
        fail(block.source, line, Texts::tr("the file ends within this line, ##END= was expected"));
}

/// All lines of a table. Gives the number of the last one.
int decode(AsdfDecoder &decoder, const JcampBlock &block, const LabelledRecord &table)
{
    ReaderText::Lines lines(table.value, table.line - 1);
    lines.next(); // the form of the table
    while (lines.next()) {
        const std::string_view line = withoutComment(lines.line());
        if (!line.empty())
            decoder.addLine(line, lines.number());
    }
    checkLastLine(block, table.value, lines.number());
    return lines.number();
}

/// Some programs leave the number of points out. The X values at the beginnings of lines have to agree with it.
JcampAbscissa countedAbscissa(const JcampBlock &block, const LabelledRecord &table, const TableValues &values,
                              qint64 fileSize, QStringList &notes)
{
    AsdfDecoder all(block.source, {values.first(), 0, values.factor("XFACTOR"), int(mostPoints(fileSize))});
    decode(all, block, table);
    const JcampAbscissa x = abscissa(block, values, fileSize, 0, double(all.count()));
    AsdfDecoder placed(block.source, x.x);
    decode(placed, block, table);
    if (const auto &wrong = placed.disagreement()) {
        fail(block.source, wrong->line,
             Texts::tr("the record ##NPOINTS= is missing, and of the %1 points that the table holds the one here would "
                       "lie at %2, not at %3 as the line says")
                 .arg(all.count())
                 .arg(wrong->due, 0, 'g', 10)
                 .arg(wrong->found, 0, 'g', 10));
    }
    notes.append(
        Texts::tr("The record ##NPOINTS= is missing: the %1 points of the table were counted.").arg(all.count()));
    return x;
}

class TableReader {
public:
    TableReader(const JcampBlock &block, QStringList &notes) : m_block(block), m_notes(notes) { }

    void append(std::vector<double> &data, const LabelledRecord &table, const XyAbscissa &x, double factor)
    {
        AsdfDecoder decoder(m_block.source, x);
        const int last = decode(decoder, m_block, table);
        // Nothing else says whether the axis rises.
        const bool isByStep = m_block.find("XYDATA") && !m_block.find("LASTX");
        if (const auto &wrong = decoder.disagreement(); wrong && isByStep)
            fail(m_block.source, wrong->line,
                 Texts::tr("by ##DELTAX= this line begins at X = %1, it says %2")
                     .arg(wrong->due, 0, 'g', 10)
                     .arg(wrong->found, 0, 'g', 10));
        for (double value : decoder.finish(last)) {
            data.push_back(value * factor);
            if (!std::isfinite(data.back()))
                fail(m_block.source, table.line,
                     Texts::tr("an ordinate times its factor (%1) is too large").arg(factor));
        }
        if (decoder.disagreement() && !m_disagreed) {
            m_disagreed = true;
            m_notes.append(
                Texts::tr("Line %1 says that it begins at X = %2, by its place that is %3: the points were placed "
                          "by their count.")
                    .arg(decoder.disagreement()->line)
                    .arg(decoder.disagreement()->found, 0, 'g', 10)
                    .arg(decoder.disagreement()->due, 0, 'g', 10));
        }
    }

private:
    const JcampBlock &m_block;
    QStringList &m_notes;
    bool m_disagreed = false;
};

/// The tables of an NTUPLES block with the pages that they stand on.
struct Page {
    const LabelledRecord *page = nullptr; ///< null: none before the table
    const LabelledRecord *table = nullptr;
};

std::vector<Page> pagesOf(const JcampBlock &block)
{
    std::vector<Page> pages;
    const LabelledRecord *page = nullptr;
    for (const LabelledRecord &record : block.records) {
        if (record.label == "PAGE")
            page = &record;
        else if (record.label == "DATATABLE")
            pages.push_back({page, &record});
    }
    return pages;
}

/// The symbol before the equals sign of ##PAGE= F1=…
std::string pageSymbol(const Page &page)
{
    const std::string text = page.page ? withoutBlanks(page.page->firstLine()) : std::string();
    return text.substr(0, text.find('='));
}

void readPlane(ExperimentalSpectrum &spectrum, const JcampBlock &block, const std::vector<Page> &pages,
               const ReadOptions &options, qint64 fileSize)
{
    const Form form(pages.front().table->firstLine());
    const std::string rowSymbol = pageSymbol(pages.front());
    const TableValues f2Values(block, neededColumn(block, form.counted));
    const TableValues f1Values(block, neededColumn(block, rowSymbol));
    const JcampAbscissa f2 = abscissa(block, f2Values, fileSize), f1 = abscissa(block, f1Values, fileSize, 1);
    const double factor = TableValues(block, neededColumn(block, form.listed)).factor("YFACTOR");
    if (qint64(f1.x.points) * f2.x.points > mostPoints(fileSize))
        fail(block.source, f1Values.pointsRecord().line,
             Texts::tr("%1 × %2 points are more than the file can hold").arg(f2.x.points).arg(f1.x.points));
    spectrum.dimensions.push_back(jcampAxis(block, f2, options, spectrum.notes));
    spectrum.dimensions.push_back(jcampAxis(block, f1, options, spectrum.notes));
    TableReader reader(block, spectrum.notes);
    int rows = 0;
    bool disagreed = false;
    for (const Page &page : pages) {
        if (pageSymbol(page) != rowSymbol || Form(page.table->firstLine()).listed != form.listed)
            continue;
        if (rows == f1.x.points)
            fail(block.source, page.table->line,
                 Texts::tr("there are more rows than the %1 announced").arg(f1.x.points));
        const std::string text = withoutBlanks(page.page->firstLine());
        const double position =
            block.number(*page.page, std::string_view(text).substr(std::min(rowSymbol.size() + 1, text.size())));
        const double due = f1.x.first + rows * f1.x.step;
        if (std::abs(position - due) > 1.5 * std::abs(f1.x.step) + 1e-5 * std::abs(due)
            && !std::exchange(disagreed, true)) {
            spectrum.notes.append(
                Texts::tr("The row at line %1 says that it lies at %2, by its place that is %3: the rows "
                          "were placed by their count.")
                    .arg(page.page->line)
                    .arg(position, 0, 'g', 10)
                    .arg(due, 0, 'g', 10));
        }
        reader.append(spectrum.data, *page.table, f2.x, factor);
        ++rows;
    }
    if (rows != f1.x.points)
        fail(block.source, block.line, Texts::tr("%1 rows were announced, %2 are there").arg(f1.x.points).arg(rows));
}

void readTrace(ExperimentalSpectrum &spectrum, const JcampBlock &block, const LabelledRecord &table,
               const TableValues &values, double factor, const ReadOptions &options, qint64 fileSize)
{
    const JcampAbscissa x = values.hasPoints() ? abscissa(block, values, fileSize)
                                               : countedAbscissa(block, table, values, fileSize, spectrum.notes);
    spectrum.dimensions.push_back(jcampAxis(block, x, options, spectrum.notes));
    TableReader(block, spectrum.notes).append(spectrum.data, table, x.x, factor);
}

bool isImaginary(const JcampBlock &block, std::string_view symbol)
{
    const int column = columnOf(block, symbol);
    const std::string name = column < 0 ? std::string() : normalisedLabel(jcampField(block.text("VARNAME"), column));
    return name.empty() ? symbol == "I" : name.find("IMAG") != std::string::npos;
}

void readNtuples(ExperimentalSpectrum &spectrum, const JcampBlock &block, const ReadOptions &options, qint64 fileSize)
{
    std::vector<Page> pages = pagesOf(block);
    std::erase_if(pages, [](const Page &page) { return Form(page.table->firstLine()).counted.empty(); });
    if (pages.empty())
        fail(block.source, block.line, Texts::tr("the block that begins here has no table (X++(R..R))"));
    std::erase_if(pages, [&](const Page &page) { return isImaginary(block, Form(page.table->firstLine()).listed); });
    if (pages.empty())
        fail(block.source, block.line, Texts::tr("the block that begins here holds the imaginary part alone"));
    const Form form(pages.front().table->firstLine());
    // Rows of a plane lie along an axis with units; other pages are numbered.
    const int pageColumn = columnOf(block, pageSymbol(pages.front()));
    const std::string units = normalisedLabel(jcampField(block.need("UNITS").text(), std::max(pageColumn, 0)));
    if (pageColumn >= 0 && !units.empty()) {
        readPlane(spectrum, block, pages, options, fileSize);
    } else {
        if (pages.size() > 1)
            spectrum.notes.append(
                Texts::tr("Of the %1 spectra of the file the first one was taken.").arg(pages.size()));
        const double factor = TableValues(block, neededColumn(block, form.listed)).factor("YFACTOR");
        readTrace(spectrum, block, *pages.front().table, TableValues(block, neededColumn(block, form.counted)), factor,
                  options, fileSize);
    }
}

ExperimentalSpectrum readSpectrum(const JcampBlock &block, const ReadOptions &options, qint64 fileSize)
{
    ExperimentalSpectrum spectrum;
    spectrum.format = QStringLiteral("JCAMP-DX");
    spectrum.title = ReaderText::decoded(block.text("TITLE"));
    if (block.find("NTUPLES")) {
        readNtuples(spectrum, block, options, fileSize);
    } else {
        const LabelledRecord &data = block.need("XYDATA");
        if (upperCase(withoutBlanks(data.firstLine())) != "(X++(Y..Y))")
            fail(block.source, data.line,
                 Texts::tr("expected a table (X++(Y..Y)), found %1").arg(excerpt(data.firstLine())));
        const TableValues values(block);
        readTrace(spectrum, block, data, values, values.factor("YFACTOR"), options, fileSize);
    }
    orient(spectrum, block.source);
    return spectrum;
}

/// A table (X++(Y..Y)) of any symbols.
bool holdsTable(const JcampBlock &block)
{
    return std::any_of(block.records.begin(), block.records.end(), [](const LabelledRecord &record) {
        return (record.label == "XYDATA" || record.label == "DATATABLE") && !Form(record.firstLine()).counted.empty();
    });
}

Measurement withNotes(Measurement measurement, const JcampBlock &block)
{
    std::visit([&](auto &held) { held.notes += block.notes; }, measurement);
    return measurement;
}

[[noreturn]] void failWithout(const std::vector<JcampBlock> &blocks)
{
    QStringList types;
    for (const JcampBlock &block : blocks) {
        const std::string type = block.text("DATATYPE");
        if (normalisedLabel(type).find("NMRFID") != std::string::npos) {
            fail(
                block.source, block.line,
                Texts::tr(
                    "this is an FID, a spectrum was expected: transform it with the spectrometer's software and export "
                    "the spectrum"));
        }
        types.append(excerpt(type));
    }
    fail(blocks.front().source,
         Texts::tr("expected a block with the data type \"NMR SPECTRUM\" and a table, or one with peaks, found %1")
             .arg(types.mid(0, 8).join(QStringLiteral(", "))));
}

} // namespace

bool recognises(const QByteArray &start)
{
    for (ReaderText::Lines lines(ReaderText::view(start)); lines.next();) {
        const std::string_view line = withoutComment(lines.line());
        if (line.empty())
            continue;
        const size_t equals = line.find('=');
        const std::string label = equals == line.npos || !line.starts_with("##")
            ? std::string()
            : normalisedLabel(line.substr(2, equals - 2));
        return label == "TITLE" || label == "JCAMPDX" || label == "JCAMP";
    }
    return false;
}

Measurement parse(const QByteArray &text, const QString &source, const ReadOptions &options)
{
    const std::vector<JcampBlock> blocks = jcampBlocks(ReaderText::view(text), source);
    const auto first = [&](auto fits) {
        const auto found = std::find_if(blocks.begin(), blocks.end(), fits);
        return found == blocks.end() ? nullptr : &*found;
    };
    const auto tellOthers = [&](Measurement read) {
        const auto count = std::count_if(blocks.begin(), blocks.end(), [](const JcampBlock &block) {
            return (isSpectrum(block) && holdsTable(block)) || JcampPeaks::table(block);
        });
        const auto tell = [&](auto &held) {
            held.notes.append(Texts::tr("The file holds %1 spectra and lists of peaks: only \"%2\" was read.")
                                  .arg(QString::number(count), held.title));
        };
        if (count > 1)
            std::visit(tell, read);
        return read;
    };
    const JcampBlock *spectrum = first([](const JcampBlock &b) { return isSpectrum(b) && holdsTable(b); });
    if (spectrum)
        return tellOthers(withNotes(readSpectrum(*spectrum, options, text.size()), *spectrum));
    if (const JcampBlock *peaks = first([](const JcampBlock &b) { return JcampPeaks::table(b) != nullptr; }))
        return tellOthers(withNotes(JcampPeaks::read(*peaks, options), *peaks));
    // These say what is wrong with their table.
    if (const JcampBlock *odd =
            first([](const JcampBlock &b) { return isSpectrum(b) && (b.find("XYDATA") || b.find("NTUPLES")); }))
        return readSpectrum(*odd, options, text.size());
    if (const JcampBlock *empty = first(isSpectrum))
        fail(source, empty->line, Texts::tr("the spectrum that begins here has no table (X++(Y..Y)) or (XY..XY)"));
    failWithout(blocks);
}

Measurement read(const QString &path, const ReadOptions &options)
{
    return parse(ReaderText::readText(path, largestFile), path, options);
}

} // namespace JcampReader

} // namespace Workbench
