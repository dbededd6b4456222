// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/JcampReader.h"

#include "data/NumberText.h"
#include "formats/AsdfDecoder.h"
#include "formats/LabelledRecords.h"
#include "data/ReaderText.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <optional>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using ReaderText::tr;
using ReaderText::trimmed;

namespace JcampReader {

namespace {

constexpr qint64 largestFile = qint64(512) << 20;

using Records = std::vector<LabelledRecord>;

/// The records of one block and what its errors are named after.
struct Block {
    Records records;
    QString source;
    int line = 0; ///< of the block's title

    const LabelledRecord *find(std::string_view label) const { return findRecord(records, label); }

    const LabelledRecord &need(std::string_view label, const QString &writtenAs) const
    {
        const LabelledRecord *record = find(label);
        if (!record)
            fail(source, line, tr("the block that begins here has no record ##%1=").arg(writtenAs));
        return *record;
    }

    std::string text(std::string_view label) const
    {
        const LabelledRecord *record = find(label);
        return record ? record->text() : std::string();
    }
};

/// One field of a record with comma-separated fields; empty behind the last one.
std::string_view field(std::string_view text, int index)
{
    for (; index > 0; --index) {
        const size_t comma = text.find(',');
        if (comma == std::string_view::npos)
            return {};
        text.remove_prefix(comma + 1);
    }
    return trimmed(text.substr(0, text.find(',')));
}

double number(const Block &block, const LabelledRecord &record, std::string_view text)
{
    const auto value = NumberText::parse<double>(trimmed(text));
    if (!value) {
        fail(block.source, record.line,
             tr("expected a number for %1, found %2").arg(ReaderText::decoded(record.label), excerpt(text)));
    }
    return *value;
}

/// From the title of each block to the next title or the end of the block.
std::vector<Block> blocksOf(const Records &records, const QString &source)
{
    std::vector<Block> blocks;
    bool open = false;
    for (const LabelledRecord &record : records) {
        if (record.label == "TITLE") {
            blocks.push_back({{}, source, record.line});
            open = true;
        } else if (record.label == "END") {
            open = false;
        }
        if (open)
            blocks.back().records.push_back(record);
    }
    if (blocks.empty())
        fail(source, tr("a JCAMP-DX file was expected, no record ##TITLE= was found"));
    return blocks;
}

const Block &spectrumBlock(const std::vector<Block> &blocks)
{
    QStringList types;
    for (const Block &block : blocks) {
        const std::string type = block.text("DATATYPE");
        if (normalisedLabel(type) == "NMRSPECTRUM")
            return block;
        types.append(excerpt(type));
    }
    fail(blocks.front().source,
         tr("expected a block with the data type \"NMR SPECTRUM\" (one dimension), found %1")
             .arg(types.mid(0, 8).join(QStringLiteral(", "))));
}

/// Where a table's data and the records about it stand. In an NTUPLES block each record lists one value for each
/// symbol of its table; in an XYDATA block each value has a record of its own.
struct Table {
    const LabelledRecord *data = nullptr;
    int xColumn = -1; ///< -1: XYDATA
    int yColumn = -1;
};

std::string withoutBlanks(std::string_view text)
{
    std::string result(text);
    std::erase_if(result, [](char c) { return c == ' ' || c == '\t'; });
    return result;
}

Table ntuplesTable(const Block &block)
{
    const LabelledRecord &symbols = block.need("SYMBOL", QStringLiteral("SYMBOL"));
    const std::string list = withoutBlanks(symbols.text());
    const auto column = [&](std::string_view symbol) {
        for (int i = 0; !field(list, i).empty(); ++i) {
            if (field(list, i) == symbol)
                return i;
        }
        fail(block.source, symbols.line, tr("the table's symbol %1 is not in this list").arg(excerpt(symbol)));
    };
    for (const LabelledRecord &record : block.records) {
        // The first page is the real part.
        const std::string form = withoutBlanks(record.firstLine());
        if (record.label != "DATATABLE" || !form.starts_with("(X++(") || form.size() < 6)
            continue;
        const std::string_view symbol(&form[5], 1);
        if (!form.starts_with("(X++(" + std::string(symbol) + ".." + std::string(symbol) + "))"))
            fail(block.source, record.line, tr("expected a table (X++(R..R)), found %1").arg(excerpt(form)));
        return {&record, column("X"), column(symbol)};
    }
    fail(block.source, block.line, tr("the block that begins here has no table (X++(R..R))"));
}

Table tableOf(const Block &block)
{
    if (block.find("NTUPLES"))
        return ntuplesTable(block);
    const LabelledRecord &data = block.need("XYDATA", QStringLiteral("XYDATA"));
    if (withoutBlanks(data.firstLine()) != "(X++(Y..Y))")
        fail(block.source, data.line, tr("expected a table (X++(Y..Y)), found %1").arg(excerpt(data.firstLine())));
    return {&data};
}

/// The records that describe the table, by their names in either kind of block.
class TableValues {
public:
    TableValues(const Block &block, const Table &table) : m_block(block), m_table(table) { }

    double first() const { return value("FIRSTX", "FIRST", m_table.xColumn); }
    double last() const { return value("LASTX", "LAST", m_table.xColumn); }
    double points() const { return value("NPOINTS", "VARDIM", m_table.xColumn); }
    double xFactor() const { return value("XFACTOR", "FACTOR", m_table.xColumn, 1.0); }
    double yFactor() const { return value("YFACTOR", "FACTOR", m_table.yColumn, 1.0); }
    const LabelledRecord &pointsRecord() const { return record("NPOINTS", "VARDIM"); }
    const LabelledRecord &unitsRecord() const { return record("XUNITS", "UNITS"); }
    std::string units() const
    {
        const std::string text = unitsRecord().text();
        return normalisedLabel(m_table.xColumn < 0 ? std::string_view(text) : field(text, m_table.xColumn));
    }

private:
    const LabelledRecord &record(const char *plain, const char *listed) const
    {
        const char *name = m_table.xColumn < 0 ? plain : listed;
        return m_block.need(name, QString::fromLatin1(name));
    }

    double value(const char *plain, const char *listed, int column, std::optional<double> missing = {}) const
    {
        if (missing && !m_block.find(m_table.xColumn < 0 ? plain : listed))
            return *missing;
        const LabelledRecord &found = record(plain, listed);
        const std::string text = found.text();
        return number(m_block, found, column < 0 ? std::string_view(text) : field(text, column));
    }

    const Block &m_block;
    const Table &m_table;
};

/// The abscissa in the file's units. The number of points is bounded by the size of the file: a repeat count can claim
/// any number in a few bytes.
XyAbscissa abscissa(const Block &block, const TableValues &values, qint64 fileSize)
{
    constexpr qint64 alwaysAllowed = 1 << 20, pointsPerByte = 64;
    const double points = values.points();
    const double most = double(std::min(largestPointCount, std::max(alwaysAllowed, fileSize * pointsPerByte)));
    if (!(points >= 2.0) || points > most || points != std::floor(points)) {
        fail(block.source, values.pointsRecord().line,
             tr("%1 points cannot be, between 2 and %2 were expected").arg(points, 0, 'g', 15).arg(most, 0, 'g', 15));
    }
    XyAbscissa result{values.first(), 0.0, values.xFactor(), int(points)};
    result.step = (values.last() - result.first) / (points - 1.0);
    if (result.step == 0.0 || !std::isfinite(result.step)) {
        fail(block.source, block.line,
             tr("the first and the last X value (%1, %2) span no axis").arg(result.first).arg(values.last()));
    }
    return result;
}

double observeFrequency(const Block &block)
{
    const LabelledRecord *record = block.find(".OBSERVEFREQUENCY");
    if (!record)
        return 0.0;
    const double frequency = number(block, *record, record->text());
    if (!(frequency > 0.0))
        fail(block.source, record->line, tr("expected a frequency in MHz, found %1").arg(frequency));
    return frequency;
}

/// What to add to all shifts, in ppm, so that the reference record holds.
double referenceOffset(const Block &block, const SpectrumDimension &axis)
{
    if (const LabelledRecord *record = block.find(".SHIFTREFERENCE")) {
        // Kind, compound, number of the data point from 1, shift in ppm.
        const std::string text = record->text();
        const std::string_view point = field(text, 2), shift = field(text, 3);
        if (!point.empty() && !shift.empty())
            return number(block, *record, shift) - axis.ppm(number(block, *record, point) - 1.0);
    }
    if (const LabelledRecord *record = block.find("$OFFSET"))
        return number(block, *record, record->text()) - std::max(axis.first, axis.ppm(axis.points - 1));
    return 0.0;
}

SpectrumDimension dimension(const Block &block, const TableValues &values, const XyAbscissa &x)
{
    SpectrumDimension axis;
    axis.nucleus = nucleusName(block.text(".OBSERVENUCLEUS"));
    axis.frequency = observeFrequency(block);
    axis.points = x.points;
    axis.first = x.first;
    axis.step = x.step;
    const std::string units = values.units();
    if (units == "HZ") {
        if (axis.frequency == 0.0)
            fail(block.source, block.line, tr("X values in Hz need the record ##.OBSERVE FREQUENCY="));
        axis.first /= axis.frequency;
        axis.step /= axis.frequency;
        axis.first += referenceOffset(block, axis);
    } else if (units != "PPM") {
        fail(block.source, values.unitsRecord().line,
             tr("expected X values in HZ or PPM, found %1").arg(excerpt(units)));
    }
    axis.width = std::abs(axis.step) * axis.points * axis.frequency;
    return axis;
}

/// A file that was cut may have lost digits of its last number and still hold all points.
void checkLastLine(const Block &block, std::string_view tableText, int line)
{
    const size_t end = tableText.find_last_not_of(" \t");
    if (end == std::string_view::npos || (tableText[end] != '\n' && tableText[end] != '\r'))
        fail(block.source, line, tr("the file ends within this line, ##END= was expected"));
}

std::vector<double> ordinates(const Block &block, const Table &table, const XyAbscissa &x, double factor)
{
    AsdfDecoder decoder(block.source, x);
    ReaderText::Lines lines(table.data->value, table.data->line - 1);
    lines.next(); // the form of the table
    while (lines.next()) {
        const std::string_view line = withoutComment(lines.line());
        if (!line.empty())
            decoder.addLine(line, lines.number());
    }
    checkLastLine(block, table.data->value, lines.number());
    std::vector<double> values = decoder.finish(lines.number());
    for (double &value : values) {
        value *= factor;
        if (!std::isfinite(value))
            fail(block.source, table.data->line, tr("an ordinate times its factor (%1) is too large").arg(factor));
    }
    return values;
}

} // namespace

bool recognises(const QByteArray &start)
{
    for (ReaderText::Lines lines(ReaderText::view(start)); lines.next();) {
        const std::string_view line = withoutComment(lines.line());
        if (!line.empty())
            return line.starts_with("##");
    }
    return false;
}

ExperimentalSpectrum parse(const QByteArray &text, const QString &source)
{
    const std::vector<Block> blocks = blocksOf(labelledRecords(ReaderText::view(text), source), source);
    const Block &block = spectrumBlock(blocks);
    const Table table = tableOf(block);
    const TableValues values(block, table);
    const XyAbscissa x = abscissa(block, values, text.size());

    ExperimentalSpectrum spectrum;
    spectrum.title = ReaderText::decoded(block.text("TITLE"));
    spectrum.dimensions.push_back(dimension(block, values, x));
    spectrum.data = ordinates(block, table, x, values.yFactor());
    orient(spectrum, source);
    return spectrum;
}

ExperimentalSpectrum read(const QString &path)
{
    return parse(ReaderText::readFile(path, largestFile), path);
}

} // namespace JcampReader

} // namespace Workbench
