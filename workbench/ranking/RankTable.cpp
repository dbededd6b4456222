// SPDX-License-Identifier: GPL-3.0-or-later
#include "ranking/RankTable.h"

#include "analysis/comparison/PoolProbabilities.h"
#include "data/Elision.h"
#include "data/NaturalOrder.h"
#include "data/NumberText.h"
#include "data/ReaderText.h"

#include <QCryptographicHash>
#include <QDir>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace Workbench {

using ReaderText::fail;

void RankRow::fail(const std::exception &error)
{
    RankRow left;
    left.file = std::move(file);
    left.simulatedPeaks = simulatedPeaks;
    left.experimentalPeaks = experimentalPeaks;
    *this = std::move(left);
    // The plug-in's general advice stands before the cause.
    message = elided(QString::fromUtf8(error.what()).section(QStringLiteral("\n\n"), -1).simplified());
    if (message.isEmpty())
        message = Texts::tr("failed without a message");
}

namespace RankTable {

namespace {

constexpr qint64 largestPart = qint64(512) << 20;

/// A column of the CSV and JSON forms: a number or a text, of a part of the row or of the whole.
struct Column {
    QByteArray name;
    std::optional<double> RankRow::*number = nullptr;
    QString RankRow::*text = nullptr;
    int part = 0;
    std::optional<double> RankRow::Part::*partNumber = nullptr;
    QString RankRow::Part::*partText = nullptr;
    bool isNeeded = false; ///< in every row with a rank

    bool isText() const { return text || partText; }
    /// Null where the row has no such part.
    std::optional<double> *numberIn(RankRow &row) const
    {
        if (number)
            return &(row.*number);
        return std::size_t(part) < row.parts.size() ? &(row.parts[std::size_t(part)].*partNumber) : nullptr;
    }
    QString *textIn(RankRow &row) const
    {
        if (text)
            return &(row.*text);
        return std::size_t(part) < row.parts.size() ? &(row.parts[std::size_t(part)].*partText) : nullptr;
    }
    std::optional<double> value(const RankRow &row) const
    {
        const auto *found = numberIn(const_cast<RankRow &>(row));
        return found ? *found : std::nullopt;
    }
    QString textValue(const RankRow &row) const
    {
        const QString *found = textIn(const_cast<RankRow &>(row));
        return found ? *found : QString();
    }
};

Column whole(const char *name, std::optional<double> RankRow::*number, bool isNeeded = false)
{
    Column column;
    column.name = name;
    column.number = number;
    column.isNeeded = isNeeded;
    return column;
}

Column whole(const char *name, QString RankRow::*text)
{
    Column column;
    column.name = name;
    column.text = text;
    return column;
}

Column ofPart(int part, const QByteArray &name, std::optional<double> RankRow::Part::*number, bool isNeeded = false)
{
    Column column;
    column.name = name;
    column.part = part;
    column.partNumber = number;
    column.isNeeded = isNeeded;
    return column;
}

Column ofPart(int part, const QByteArray &name, QString RankRow::Part::*text)
{
    Column column;
    column.name = name;
    column.part = part;
    column.partText = text;
    return column;
}

std::vector<Column> planeColumns()
{
    using Part = RankRow::Part;
    return {ofPart(0, "reference", &Part::reference, true),
            ofPart(1, "reference_f1", &Part::reference, true),
            ofPart(0, "offset", &Part::offset, true),
            ofPart(1, "offset_f1", &Part::offset, true),
            ofPart(0, "rmsd_f2", &Part::rmsd, true),
            ofPart(1, "rmsd_f1", &Part::rmsd, true),
            whole("rmsd", &RankRow::rmsd, true),
            whole("peaks_simulated", &RankRow::simulatedPeaks),
            whole("peaks_experimental", &RankRow::experimentalPeaks)};
}

std::vector<Column> shiftColumns(const RankLayout &layout)
{
    using Part = RankRow::Part;
    const bool isSingle = layout.nuclei.size() == 1;
    std::vector<Column> columns;
    for (int i = 0; i < layout.parts(); ++i) {
        const QByteArray prefix = isSingle ? QByteArray() : layout.nuclei[i].toLatin1() + '_';
        const auto add = [&](const char *name, auto member, auto... isNeeded) {
            columns.push_back(ofPart(i, prefix + name, member, isNeeded...));
        };
        add("reference", &Part::reference, true);
        add("offset", &Part::offset, true);
        if (isSingle) {
            columns.push_back(whole("rmsd", &RankRow::rmsd, true));
            columns.push_back(whole("peaks_simulated", &RankRow::simulatedPeaks));
            columns.push_back(whole("peaks_experimental", &RankRow::experimentalPeaks));
        } else {
            add("rmsd", &Part::rmsd, true);
        }
        add("pairing", &Part::pairing);
        add("sites", &Part::sites);
        add("lines", &Part::lines);
        add("sigma", &Part::sigma);
        add("chi2", &Part::chiSquare);
        add("dof", &Part::degreesOfFreedom);
        add("p", &Part::p);
    }
    if (!isSingle) {
        columns.push_back(whole("chi2", &RankRow::chiSquare));
        columns.push_back(whole("dof", &RankRow::degreesOfFreedom));
        columns.push_back(whole("p", &RankRow::p));
    }
    columns.push_back(whole("log_likelihood", &RankRow::logLikelihood));
    columns.push_back(whole("log_likelihood_wide", &RankRow::wideLogLikelihood));
    columns.push_back(whole("log_prior", &RankRow::logPrior));
    columns.push_back(whole("probability", &RankRow::probability));
    columns.push_back(whole("probability_wide", &RankRow::wideProbability));
    columns.push_back(whole("fit", &RankRow::fit));
    return columns;
}

/// Everything between the file and the message. The last ones are kept: a ranking asks for each of its rows.
std::vector<Column> columnsOf(const RankLayout &layout, bool hasBasis = true)
{
    struct Kept {
        RankLayout layout;
        bool hasBasis = false;
        std::vector<Column> columns;
    };
    thread_local Kept kept;
    if (kept.columns.empty() || kept.layout != layout || kept.hasBasis != hasBasis) {
        kept = {layout, hasBasis, layout.plane ? planeColumns() : shiftColumns(layout)};
        if (hasBasis)
            kept.columns.push_back(whole("basis", &RankRow::basis));
    }
    return kept.columns;
}

QByteArray header(const RankLayout &layout, bool hasBasis = true)
{
    QByteArray text("rank,file");
    for (const Column &column : columnsOf(layout, hasBasis))
        text += ',' + column.name;
    return text + ",message";
}

/// A part without rows, as the columns say; nothing for those that no ranking has.
std::optional<Part> partOf(const QByteArrayList &names)
{
    const QByteArray reference("_reference");
    RankLayout several;
    for (const QByteArray &name : names)
        if (name.endsWith(reference))
            several.nuclei.append(QString::fromUtf8(name.chopped(reference.size())));
    const QByteArray found = names.join(',');
    for (const RankLayout &layout : {RankLayout{{QString()}, false}, RankLayout{{QString()}, true}, several})
        for (bool hasBasis : {true, false})
            if (layout.parts() > 0 && found == header(layout, hasBasis))
                return Part{layout, {}, {}, hasBasis};
    return std::nullopt;
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

    std::optional<double> number(const QByteArray &column)
    {
        const QByteArray &text = next();
        if (text.isEmpty())
            return std::nullopt;
        const auto value = NumberText::parse<double>(ReaderText::view(text));
        if (!value) {
            fail(m_source, m_records.line(),
                 Texts::tr("expected a number for %1, found %2")
                     .arg(QString::fromUtf8(column), ReaderText::excerpt(ReaderText::view(text))));
        }
        return value;
    }

private:
    const Records &m_records;
    QString m_source;
    std::size_t m_next = 0;
};

RankRow rowOf(const Records &records, const QString &source, const Part &part)
{
    const RankLayout &layout = part.layout;
    const std::vector<Column> columns = columnsOf(layout, part.hasBasis);
    const std::size_t expected = columns.size() + 3;
    if (records.fields.size() != expected) {
        fail(source, records.line(),
             Texts::tr("expected %1 fields, found %2").arg(expected).arg(records.fields.size()));
    }
    FieldReader reader(records, source);
    RankRow row;
    const bool ranked = reader.number("rank").has_value();
    row.file = QString::fromUtf8(reader.next());
    row.parts.resize(std::size_t(layout.parts()));
    for (const Column &column : columns) {
        if (column.isText()) {
            *column.textIn(row) = QString::fromUtf8(reader.next());
            continue;
        }
        std::optional<double> &value = *column.numberIn(row);
        value = reader.number(column.name);
        if (column.isNeeded && value.has_value() != ranked) {
            const QString name = QString::fromUtf8(column.name);
            fail(source, records.line(),
                 ranked ? Texts::tr("a structure with a rank has no %1").arg(name)
                        : Texts::tr("a structure without a rank has a number for %1").arg(name));
        }
    }
    row.message = QString::fromUtf8(reader.next());
    if (row.file.isEmpty() || (!ranked && row.message.isEmpty())) {
        fail(source, records.line(),
             row.file.isEmpty() ? Texts::tr("the name of the structure is missing")
                                : Texts::tr("expected either a rank or a message"));
    }
    if (!ranked) {
        row.parts.clear();
    } else if (layout.parts() == 1) {
        // Of one nucleus the whole is the part.
        RankRow::Part &own = row.parts[0];
        own.rmsd = row.rmsd;
        row.chiSquare = own.chiSquare;
        row.degreesOfFreedom = own.degreesOfFreedom;
        row.p = own.p;
    }
    return row;
}

void parseRowsInto(Part &part, Records &records, const QString &source)
{
    while (records.next()) {
        part.rows.push_back(rowOf(records, source, part));
        part.lines.push_back(records.line());
    }
}

QString fixed(const std::optional<double> &value, int decimals)
{
    return value ? QString::number(*value, 'f', decimals) : QString();
}

QString significant(const std::optional<double> &value, int digits)
{
    return value ? QString::number(*value, 'g', digits) : QString();
}

QString reduced(const std::optional<double> &chiSquare, const std::optional<double> &degreesOfFreedom)
{
    return chiSquare && degreesOfFreedom && *degreesOfFreedom > 0
        ? QString::number(*chiSquare / *degreesOfFreedom, 'f', 2)
        : QString();
}

/// A column of the text form.
struct Shown {
    QString title;
    std::function<QString(const RankRow &)> cell;
    bool isAlwaysShown = true; ///< also where it says nothing
};

std::vector<Shown> probabilityColumns()
{
    return {
        {Texts::tr("χ²/dof"), [](const RankRow &row) { return reduced(row.chiSquare, row.degreesOfFreedom); }, false},
        {Texts::tr("p"), [](const RankRow &row) { return significant(row.p, 2); }, false},
        {Texts::tr("Fit"), [](const RankRow &row) { return row.fit; }, false},
        {Texts::tr("Probability"), [](const RankRow &row) { return fixed(row.probability, 4); }, false},
        {Texts::tr("with σ × 1.5"), [](const RankRow &row) { return fixed(row.wideProbability, 4); }, false}};
}

Shown shownPart(const QString &title, std::size_t part, std::optional<double> RankRow::Part::*value)
{
    return {title,
            [=](const RankRow &row) { return part < row.parts.size() ? fixed(row.parts[part].*value, 4) : QString(); }};
}

Shown shownPairing(const QString &title, std::size_t part)
{
    return {title, [=](const RankRow &row) { return part < row.parts.size() ? row.parts[part].pairing : QString(); },
            false};
}

std::vector<Shown> shownColumns(const RankLayout &layout)
{
    using Part = RankRow::Part;
    std::vector<Shown> columns;
    if (layout.parts() > 1 && !layout.plane) {
        columns = probabilityColumns();
        std::rotate(columns.begin(), columns.begin() + 3, columns.end()); // what it ranks by comes first
        for (std::size_t i = 0; i < std::size_t(layout.parts()); ++i) {
            const QString nucleus = layout.nuclei[int(i)];
            columns.push_back(shownPart(Texts::tr("%1 RMSD, ppm").arg(nucleus), i, &Part::rmsd));
            columns.push_back(shownPart(Texts::tr("%1 ref., ppm").arg(nucleus), i, &Part::reference));
            columns.push_back(shownPairing(Texts::tr("%1 pairing").arg(nucleus), i));
            columns.push_back({Texts::tr("%1 χ²/dof").arg(nucleus), [i](const RankRow &row) {
                                   return i < row.parts.size()
                                       ? reduced(row.parts[i].chiSquare, row.parts[i].degreesOfFreedom)
                                       : QString();
                               }});
            columns.push_back({Texts::tr("%1 p").arg(nucleus), [i](const RankRow &row) {
                                   return i < row.parts.size() ? significant(row.parts[i].p, 2) : QString();
                               }});
        }
    } else {
        columns.push_back({Texts::tr("RMSD, ppm"), [](const RankRow &row) { return fixed(row.rmsd, 4); }});
        if (layout.plane) {
            for (const auto &[title, member] : {std::pair(Texts::tr("Reference%1, ppm"), &Part::reference),
                                                std::pair(Texts::tr("Offset%1, ppm"), &Part::offset)}) {
                columns.push_back(shownPart(title.arg(QString()), 0, member));
                columns.push_back(shownPart(title.arg(Texts::tr(" F1")), 1, member));
            }
            columns.push_back(shownPart(Texts::tr("RMSD F2, ppm"), 0, &Part::rmsd));
            columns.push_back(shownPart(Texts::tr("RMSD F1, ppm"), 1, &Part::rmsd));
        } else {
            columns.push_back(shownPart(Texts::tr("Reference, ppm"), 0, &Part::reference));
            columns.push_back(shownPart(Texts::tr("Offset, ppm"), 0, &Part::offset));
        }
        columns.push_back({Texts::tr("Peaks"), [](const RankRow &row) { return fixed(row.simulatedPeaks, 0); }});
        columns.push_back(
            {Texts::tr("Experimental"), [](const RankRow &row) { return fixed(row.experimentalPeaks, 0); }});
        columns.push_back(shownPairing(Texts::tr("Pairing"), 0));
        for (const Shown &column : probabilityColumns())
            columns.push_back(column);
    }
    columns.push_back({Texts::tr("File"), [](const RankRow &row) { return row.file; }});
    columns.push_back({Texts::tr("Message"), [](const RankRow &row) { return row.message; }});
    return columns;
}

QByteArray text(const std::vector<RankRow> &rows, const RankLayout &layout)
{
    QStringList titles{Texts::tr("Rank")};
    std::vector<QStringList> cells(rows.size());
    int rank = 0;
    for (std::size_t i = 0; i < rows.size(); ++i)
        cells[i].append(rows[i].failed() ? QString() : QString::number(++rank));
    for (const Shown &column : shownColumns(layout)) {
        QStringList values;
        for (const RankRow &row : rows)
            values.append(column.cell(row));
        if (!column.isAlwaysShown && values.join(QString()).isEmpty())
            continue;
        titles.append(column.title);
        for (std::size_t i = 0; i < rows.size(); ++i)
            cells[i].append(values[int(i)]);
    }
    return TableExport::alignedText(titles, cells).toUtf8();
}

QByteArray json(const std::vector<RankRow> &rows, const RankLayout &layout)
{
    const std::vector<Column> columns = columnsOf(layout);
    QJsonArray array;
    int rank = 0;
    for (const RankRow &row : rows) {
        QJsonObject object{{QStringLiteral("file"), row.file}};
        if (!row.message.isEmpty())
            object.insert(QStringLiteral("message"), row.message);
        if (!row.failed())
            object.insert(QStringLiteral("rank"), ++rank);
        for (const Column &column : columns) {
            if (column.isText() && !column.textValue(row).isEmpty())
                object.insert(QString::fromLatin1(column.name), column.textValue(row));
            else if (const auto value = column.isText() ? std::nullopt : column.value(row))
                object.insert(QString::fromLatin1(column.name), *value);
        }
        array.append(object);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("rows"), array}}).toJson();
}

/// Of the rows that have a likelihood, by `likelihood`.
void setProbabilities(std::vector<RankRow> &rows, std::optional<double> RankRow::*likelihood,
                      std::optional<double> RankRow::*probability)
{
    std::vector<double> likelihoods, priors;
    for (const RankRow &row : rows) {
        likelihoods.push_back((row.*likelihood).value_or(-std::numeric_limits<double>::infinity()));
        priors.push_back(row.logPrior.value_or(0.0));
    }
    const std::vector<double> values = poolProbabilities(likelihoods, priors);
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i].*probability = rows[i].*likelihood ? std::optional(values[i]) : std::nullopt;
}

} // namespace

void sort(std::vector<RankRow> &rows, const RankLayout &layout)
{
    const bool byProbability = (layout.parts() > 1 && !layout.plane)
        || std::any_of(rows.begin(), rows.end(), [](const RankRow &row) { return row.logPrior.has_value(); });
    const auto key = [&](const RankRow &row) {
        if (row.failed())
            return std::make_pair(true, 0.0);
        return std::make_pair(false,
                              byProbability ? -row.logLikelihood.value_or(0.0) - row.logPrior.value_or(0.0)
                                            : row.rmsd.value_or(0.0));
    };
    const QCollator byName = naturalOrder();
    std::stable_sort(rows.begin(), rows.end(), [&](const RankRow &a, const RankRow &b) {
        const auto first = key(a), second = key(b);
        if (first != second)
            return first < second;
        const int order = byName.compare(a.file, b.file);
        return order != 0 ? order < 0 : a.file < b.file;
    });
    // Summed up in this order, whichever the files came in: the same bits for parts that are merged.
    setProbabilities(rows, &RankRow::logLikelihood, &RankRow::probability);
    setProbabilities(rows, &RankRow::wideLogLikelihood, &RankRow::wideProbability);
}

void checkNumbers(const RankRow &row, const RankLayout &layout)
{
    for (const Column &column : columnsOf(layout)) {
        const auto value = column.isText() ? std::nullopt : column.value(row);
        if (value && !std::isfinite(*value)) {
            fail(Texts::tr("%1 is beyond all numbers: shieldings, slope or σ are much too large or too small")
                     .arg(QString::fromLatin1(column.name)));
        }
    }
}

QStringList notesOn(const std::vector<RankRow> &rows, const RankLayout &layout)
{
    std::vector<const RankRow *> ranked, doubtful;
    for (const RankRow &row : rows) {
        if (!row.failed())
            ranked.push_back(&row);
        if (!row.failed() && !row.message.isEmpty())
            doubtful.push_back(&row);
    }
    QStringList notes;
    if (!doubtful.empty())
        notes.append(Texts::tr("%1: %2").arg(doubtful.front()->file, doubtful.front()->message));
    if (doubtful.size() > 1)
        notes.append(
            Texts::tr("the sites of %1 more structures are doubtful (see their messages)").arg(doubtful.size() - 1));
    for (std::size_t i = 0; i < std::size_t(layout.parts()) && !ranked.empty(); ++i) {
        const auto sites = [&](const RankRow *row) { return row->parts[i].sites.value_or(0); };
        const auto [least, most] = std::minmax_element(
            ranked.begin(), ranked.end(), [&](const RankRow *a, const RankRow *b) { return sites(a) < sites(b); });
        const QString nucleus = layout.nuclei.value(int(i));
        if (sites(*least) < sites(*most))
            notes.append((nucleus.isEmpty() ? QString() : nucleus + QStringLiteral(": "))
                         + Texts::tr("the structures have %1 to %2 sites, each of which counts once")
                               .arg(sites(*least))
                               .arg(sites(*most)));
    }
    return notes;
}

QString digest(QStringList texts)
{
    constexpr int bytes = 4;
    texts.sort();
    const QByteArray hash =
        QCryptographicHash::hash(texts.join(u'\n').toUtf8(), QCryptographicHash::Sha256).first(bytes);
    return QString::fromLatin1(hash.toHex());
}

QByteArray csvRow(const RankRow &row, const RankLayout &layout, int rank)
{
    QByteArray line = (rank > 0 ? QByteArray::number(rank) : QByteArray()) + ',' + quoted(row.file) + ',';
    for (const Column &column : columnsOf(layout)) {
        if (column.isText())
            line += quoted(column.textValue(row));
        else if (const auto value = column.value(row))
            line += exact(*value);
        line += ',';
    }
    return line + quoted(row.message) + '\n';
}

QByteArray write(const std::vector<RankRow> &rows, const RankLayout &layout, TableExport::Format format)
{
    if (format == TableExport::Format::Text)
        return text(rows, layout);
    if (format == TableExport::Format::Json)
        return json(rows, layout);
    QByteArray csv = header(layout) + '\n';
    int rank = 0;
    for (const RankRow &row : rows)
        csv += csvRow(row, layout, row.failed() ? 0 : ++rank);
    return csv;
}

Part parseRows(const QByteArray &text, const QString &source, const RankLayout &layout)
{
    Part part;
    part.layout = layout;
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
    const QString expected =
        Texts::tr("expected the output of rank in csv format, which begins with %1").arg(QLatin1String("rank,file,"));
    if (!records.next())
        fail(source, 1, expected);
    auto part = partOf(QByteArrayList(records.fields.begin(), records.fields.end()));
    if (!part)
        fail(source, 1, expected);
    parseRowsInto(*part, records, source);
    return *part;
}

namespace {

/// The first entries that differ.
std::pair<QString, QString> basesDiffer(const QString &one, const QString &other)
{
    const QStringList a = one.split(QLatin1String("; ")), b = other.split(QLatin1String("; "));
    qsizetype i = 0;
    while (i < std::min(a.size(), b.size()) && a[i] == b[i])
        ++i;
    return {a.value(i, QStringLiteral("–")), b.value(i, QStringLiteral("–"))};
}

/// The likelihoods of two parts can be compared only when their errors are the same.
void checkErrors(const Part &part, const RankRow &first, const QString &file, const QString &firstFile)
{
    for (std::size_t i = 0; i < part.rows.size(); ++i) {
        const RankRow &row = part.rows[i];
        for (std::size_t n = 0; n < std::min(row.parts.size(), first.parts.size()); ++n)
            if (row.parts[n].sigma != first.parts[n].sigma)
                fail(file, part.lines[i],
                     Texts::tr("this structure was compared with another σ than those in %1").arg(firstFile));
        if (!row.failed() && row.logPrior.has_value() != first.logPrior.has_value())
            fail(file, part.lines[i], Texts::tr("only a part of the structures has energies"));
        if (row.basis != first.basis && !row.basis.isEmpty() && !first.basis.isEmpty()) {
            const auto [own, known] = basesDiffer(row.basis, first.basis);
            fail(file, part.lines[i],
                 Texts::tr("this structure was compared with %1, those in %2 with %3").arg(own, firstFile, known));
        }
    }
}

} // namespace

Part merge(const QStringList &files)
{
    Part all;
    QHash<QString, QString> places; // of structures
    // Of the ranked structures, one that says on what its numbers hang, if any does.
    const auto isKnown = [](const RankRow &row) { return !row.failed() && !row.basis.isEmpty(); };
    const auto isRanked = [](const RankRow &row) { return !row.failed(); };
    for (const QString &file : files) {
        const Part part = parse(ReaderText::readFile(file, largestPart), file);
        if (all.layout.parts() != 0 && part.layout != all.layout)
            fail(file, 1, Texts::tr("this part ranks by other measurements than %1").arg(files.constFirst()));
        all.layout = part.layout;
        auto first = std::find_if(all.rows.begin(), all.rows.end(), isKnown);
        if (first == all.rows.end())
            first = std::find_if(all.rows.begin(), all.rows.end(), isRanked);
        if (first != all.rows.end())
            checkErrors(part, *first, file, files.constFirst());
        for (std::size_t i = 0; i < part.rows.size(); ++i) {
            QString &place = places[QDir::cleanPath(part.rows[i].file)];
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
