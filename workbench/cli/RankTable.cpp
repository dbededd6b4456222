// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/RankTable.h"

#include "data/NumberText.h"
#include "data/ReaderText.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <span>

namespace Workbench {

using ReaderText::fail;

namespace RankTable {

namespace {

constexpr qint64 largestPart = qint64(512) << 20;

/// A column: its name in CSV and JSON, its title in text (translated where it is shown), and how a row's value goes in
/// and comes out.
struct Column {
    const char *name;
    const char *title;
    double RankRow::Dimension::*value;
    int dimension;
};

constexpr Column numberColumns1D[] = {
    {"reference", QT_TRANSLATE_NOOP("Texts", "Reference, ppm"), &RankRow::Dimension::reference, 0},
    {"offset", QT_TRANSLATE_NOOP("Texts", "Offset, ppm"), &RankRow::Dimension::offset, 0},
};
constexpr Column numberColumns2D[] = {
    {"reference", QT_TRANSLATE_NOOP("Texts", "Reference, ppm"), &RankRow::Dimension::reference, 0},
    {"reference_f1", QT_TRANSLATE_NOOP("Texts", "Reference F1, ppm"), &RankRow::Dimension::reference, 1},
    {"offset", QT_TRANSLATE_NOOP("Texts", "Offset, ppm"), &RankRow::Dimension::offset, 0},
    {"offset_f1", QT_TRANSLATE_NOOP("Texts", "Offset F1, ppm"), &RankRow::Dimension::offset, 1},
    {"rmsd_f2", QT_TRANSLATE_NOOP("Texts", "RMSD F2, ppm"), &RankRow::Dimension::rmsd, 0},
    {"rmsd_f1", QT_TRANSLATE_NOOP("Texts", "RMSD F1, ppm"), &RankRow::Dimension::rmsd, 1},
};

std::span<const Column> numberColumns(int dimensions)
{
    if (dimensions == 2)
        return numberColumns2D;
    return numberColumns1D;
}

/// Everything of a line of the CSV form: rank, file, the numbers, then these.
constexpr const char *lastColumns[] = {"rmsd", "peaks_simulated", "peaks_experimental", "message"};

QByteArray header(int dimensions)
{
    QByteArray text("rank,file");
    for (const Column &column : numberColumns(dimensions))
        text += ',' + QByteArray(column.name);
    for (const char *name : lastColumns)
        text += ',' + QByteArray(name);
    return text;
}

QByteArray quoted(const QString &value)
{
    QByteArray text = value.toUtf8();
    if (text.contains(',') || text.contains('"') || text.contains('\n') || text.contains('\r'))
        text = '"' + text.replace('"', "\"\"") + '"';
    return text;
}

QByteArray exact(double value)
{
    QByteArray text;
    NumberText::append17(text, value);
    return text;
}

QByteArray countText(const std::optional<int> &count)
{
    return count ? QByteArray::number(*count) : QByteArray();
}

/// One record of comma-separated text. Quoted fields may hold commas, line ends and doubled quotes.
class Records {
public:
    Records(std::string_view text, QString source) : m_rest(text), m_source(std::move(source)) { }

    bool next()
    {
        if (m_rest.empty())
            return false;
        m_line = m_nextLine;
        fields.assign(1, {});
        bool inQuotes = false;
        while (!m_rest.empty()) {
            const char c = m_rest.front();
            m_rest.remove_prefix(1);
            m_nextLine += c == '\n';
            if (c == '"') {
                const bool doubled = inQuotes && m_rest.starts_with('"');
                if (doubled) {
                    m_rest.remove_prefix(1);
                    fields.back() += '"';
                } else {
                    inQuotes = !inQuotes;
                }
            } else if (c == ',' && !inQuotes) {
                fields.emplace_back();
            } else if (c == '\n' && !inQuotes) {
                if (fields.back().endsWith('\r'))
                    fields.back().chop(1);
                return true;
            } else {
                fields.back() += c;
            }
        }
        fail(m_source, m_line, Texts::tr("the file ends within this line"));
    }
    int line() const { return m_line; }

    std::vector<QByteArray> fields;

private:
    std::string_view m_rest;
    QString m_source;
    int m_line = 0;
    int m_nextLine = 1;
};

/// The fields of a record one after the other, with errors that name the place.
class FieldReader {
public:
    FieldReader(const Records &records, const QString &source) : m_records(records), m_source(source) { }

    const QByteArray &next() { return m_records.fields[m_next++]; }

    template <typename Number>
    std::optional<Number> number(const char *column)
    {
        const QByteArray &text = next();
        if (text.isEmpty())
            return std::nullopt;
        const auto value = NumberText::parse<Number>(ReaderText::view(text));
        if (!value) {
            fail(m_source, m_records.line(),
                 Texts::tr("expected a number for %1, found %2")
                     .arg(QLatin1String(column), ReaderText::excerpt(ReaderText::view(text))));
        }
        return value;
    }

private:
    const Records &m_records;
    QString m_source;
    std::size_t m_next = 0;
};

RankRow rowOf(const Records &records, const QString &source, int dimensions)
{
    const auto columns = numberColumns(dimensions);
    const std::size_t expected = 2 + columns.size() + std::size(lastColumns);
    if (records.fields.size() != expected) {
        fail(source, records.line(),
             Texts::tr("expected %1 fields, found %2").arg(expected).arg(records.fields.size()));
    }
    FieldReader reader(records, source);
    RankRow row;
    const bool ranked = reader.number<int>("rank").has_value();
    row.file = QString::fromUtf8(reader.next());
    row.dimensions.resize(ranked ? std::size_t(dimensions) : 0);
    const auto needed = [&](std::optional<double> value, const char *name) {
        if (value.has_value() != ranked) {
            fail(source, records.line(),
                 ranked ? Texts::tr("a structure with a rank has no %1").arg(QLatin1String(name))
                        : Texts::tr("a structure without a rank has a number for %1").arg(QLatin1String(name)));
        }
        return value.value_or(0.0);
    };
    for (const Column &column : columns) {
        const double value = needed(reader.number<double>(column.name), column.name);
        if (ranked)
            row.dimensions[std::size_t(column.dimension)].*column.value = value;
    }
    row.rmsd = needed(reader.number<double>("rmsd"), "rmsd");
    if (ranked && dimensions == 1)
        row.dimensions[0].rmsd = row.rmsd;
    row.simulatedPeaks = reader.number<int>("peaks_simulated");
    row.experimentalPeaks = reader.number<int>("peaks_experimental");
    row.message = QString::fromUtf8(reader.next());
    if (row.file.isEmpty() || ranked != row.message.isEmpty()) {
        fail(source, records.line(),
             row.file.isEmpty() ? Texts::tr("the name of the structure is missing")
                                : Texts::tr("expected either a rank or a message"));
    }
    return row;
}

void parseRowsInto(Part &part, Records &records, const QString &source)
{
    while (records.next()) {
        part.rows.push_back(rowOf(records, source, part.dimensions));
        part.lines.push_back(records.line());
    }
}

QByteArray text(const std::vector<RankRow> &rows, int dimensions)
{
    QStringList titles{Texts::tr("Rank"), Texts::tr("RMSD, ppm")};
    for (const Column &column : numberColumns(dimensions))
        titles.append(Texts::tr(column.title));
    titles << Texts::tr("Peaks") << Texts::tr("Experimental") << Texts::tr("File") << Texts::tr("Message");
    std::vector<QStringList> cells;
    int rank = 0;
    for (const RankRow &row : rows) {
        const auto shown = [&](double value, int decimals) {
            return row.failed() ? QString() : QString::number(value, 'f', decimals);
        };
        QStringList line{row.failed() ? QString() : QString::number(++rank), shown(row.rmsd, 4)};
        for (const Column &column : numberColumns(dimensions))
            line.append(row.failed() ? QString()
                                     : shown(row.dimensions[std::size_t(column.dimension)].*column.value, 4));
        line << QString::fromLatin1(countText(row.simulatedPeaks))
             << QString::fromLatin1(countText(row.experimentalPeaks)) << row.file << row.message;
        cells.push_back(line);
    }
    return TableExport::alignedText(titles, cells).toUtf8();
}

QByteArray json(const std::vector<RankRow> &rows, int dimensions)
{
    QJsonArray array;
    int rank = 0;
    for (const RankRow &row : rows) {
        QJsonObject object{{QStringLiteral("file"), row.file}};
        if (row.failed()) {
            object.insert(QStringLiteral("message"), row.message);
        } else {
            object.insert(QStringLiteral("rank"), ++rank);
            object.insert(QStringLiteral("rmsd"), row.rmsd);
        }
        if (row.simulatedPeaks)
            object.insert(QStringLiteral("peaks_simulated"), *row.simulatedPeaks);
        if (row.experimentalPeaks)
            object.insert(QStringLiteral("peaks_experimental"), *row.experimentalPeaks);
        for (const Column &column : numberColumns(dimensions)) {
            if (!row.failed())
                object.insert(QLatin1String(column.name), row.dimensions[std::size_t(column.dimension)].*column.value);
        }
        array.append(object);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("rows"), array}}).toJson();
}

} // namespace

void sort(std::vector<RankRow> &rows)
{
    std::stable_sort(rows.begin(), rows.end(), [](const RankRow &a, const RankRow &b) {
        return std::make_pair(a.failed(), a.failed() ? 0.0 : a.rmsd)
            < std::make_pair(b.failed(), b.failed() ? 0.0 : b.rmsd);
    });
}

QByteArray csvRow(const RankRow &row, int dimensions, int rank)
{
    QByteArray line = (rank > 0 ? QByteArray::number(rank) : QByteArray()) + ',' + quoted(row.file) + ',';
    for (const Column &column : numberColumns(dimensions)) {
        if (!row.failed())
            line += exact(row.dimensions[std::size_t(column.dimension)].*column.value);
        line += ',';
    }
    line += row.failed() ? QByteArray() : exact(row.rmsd);
    return line + ',' + countText(row.simulatedPeaks) + ',' + countText(row.experimentalPeaks) + ','
        + quoted(row.message) + '\n';
}

QByteArray write(const std::vector<RankRow> &rows, int dimensions, TableExport::Format format)
{
    if (format == TableExport::Format::Text)
        return text(rows, dimensions);
    if (format == TableExport::Format::Json)
        return json(rows, dimensions);
    QByteArray csv = header(dimensions) + '\n';
    int rank = 0;
    for (const RankRow &row : rows)
        csv += csvRow(row, dimensions, row.failed() ? 0 : ++rank);
    return csv;
}

Part parseRows(const QByteArray &text, const QString &source, int dimensions)
{
    Part part;
    part.dimensions = dimensions;
    Records records(ReaderText::view(text), source);
    parseRowsInto(part, records, source);
    return part;
}

Part parse(const QByteArray &text, const QString &source)
{
    std::string_view bytes = ReaderText::view(text);
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    Records records(bytes, source);
    const QString expected = Texts::tr("expected the output of rank in csv format, which begins with %1")
                                 .arg(QLatin1String("rank,file,reference"));
    if (!records.next())
        fail(source, 1, expected);
    const QByteArray found = QByteArrayList(records.fields.begin(), records.fields.end()).join(',');
    Part part;
    for (int dimensions : {1, 2}) {
        if (found == header(dimensions))
            part.dimensions = dimensions;
    }
    if (part.dimensions == 0)
        fail(source, 1, expected);
    parseRowsInto(part, records, source);
    return part;
}

Part merge(const QStringList &files)
{
    Part all;
    QHash<QString, QString> places; // of structures
    for (const QString &file : files) {
        const Part part = parse(ReaderText::readFile(file, largestPart), file);
        if (all.dimensions != 0 && part.dimensions != all.dimensions) {
            fail(file, 1,
                 Texts::tr("this part ranks by %1D spectra, %2 by %3D ones")
                     .arg(QString::number(part.dimensions), files.constFirst(), QString::number(all.dimensions)));
        }
        all.dimensions = part.dimensions;
        for (std::size_t i = 0; i < part.rows.size(); ++i) {
            QString &place = places[part.rows[i].file];
            if (!place.isEmpty())
                fail(file, part.lines[i], Texts::tr("%1 stands in %2 already").arg(part.rows[i].file, place));
            place = Texts::tr("%1, line %2").arg(file, QString::number(part.lines[i]));
        }
        all.rows.insert(all.rows.end(), part.rows.begin(), part.rows.end());
    }
    return all;
}

} // namespace RankTable

} // namespace Workbench
