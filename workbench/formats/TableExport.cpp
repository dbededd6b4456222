// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/TableExport.h"

#include "data/JsonValues.h"
#include "data/NumberText.h"
#include "data/PrintableText.h"
#include "data/TableContent.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <set>

namespace Workbench {

namespace TableExport {

namespace {

/// The values of a row that leave the program first, in this order.
constexpr const char *rowKeys[] = {"type", "labels", "atomNos", "iso", "aniso", "assym", "eq", "qassym", "Cq", "qIso"};
/// Means nothing outside of the program.
constexpr const char *identityKey = "ID";

/// Without the sign of a zero, as the table shows it.
QVariant unsignedZero(const QVariant &value)
{
    return value.typeId() == QMetaType::Double ? value.toDouble() + 0.0 : value;
}

QByteArray csvField(const QVariant &value)
{
    QByteArray text;
    if (value.typeId() == QMetaType::Double) {
        NumberText::append17(text, value.toDouble());
        return text;
    }
    if (value.typeId() != QMetaType::QString && value.canConvert<QVariantList>()) {
        for (const QVariant &element : value.toList())
            text += (text.isEmpty() ? "" : " ") + element.toString().toUtf8();
    } else {
        text = value.toString().toUtf8();
    }
    if (text.contains(',') || text.contains('"') || text.contains('\n'))
        text = '"' + text.replace('"', "\"\"") + '"';
    return text;
}

/// What else the rows have, in the alphabet's order: columns that are new in the plug-in, or another plug-in's.
QStringList otherKeys(const TableContent &table)
{
    std::set<QString> others;
    for (const QVariant &row : table.rows) {
        const QVariantMap map = row.toMap();
        others.insert(map.keyBegin(), map.keyEnd());
    }
    others.erase(QLatin1String(identityKey));
    for (const char *key : rowKeys)
        others.erase(QLatin1String(key));
    for (const QString &key : table.extraKeys)
        others.erase(key);
    return QStringList(others.begin(), others.end());
}

QStringList keysOf(const TableContent &table)
{
    QStringList keys;
    for (const char *key : rowKeys)
        keys.append(QLatin1String(key));
    keys += otherKeys(table);
    keys.removeIf([&](const QString &key) { return table.hiddenKeys.contains(key); });
    return keys + table.extraKeys;
}

QByteArray csv(const TableContent &table)
{
    const QStringList keys = keysOf(table);
    QByteArray text = keys.join(u',').toUtf8() + '\n';
    for (const QVariant &row : table.rows) {
        const QVariantMap map = row.toMap();
        QByteArray line;
        for (const QString &key : keys)
            line += csvField(unsignedZero(map.value(key))) + ',';
        line.back() = '\n';
        text += line;
    }
    return text;
}

QByteArray json(const TableContent &table)
{
    const QStringList keys = keysOf(table);
    QJsonArray array;
    for (const QVariant &row : table.rows) {
        const QVariantMap map = row.toMap();
        QJsonObject object;
        for (const QString &name : keys) {
            if (map.contains(name))
                object.insert(name, toJson(unsignedZero(map.value(name))));
        }
        array.append(object);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("columns"), QJsonArray::fromStringList(table.titles)},
                                     {QStringLiteral("rows"), array}})
        .toJson();
}

bool isNumber(const QString &text)
{
    const QByteArray bytes = text.toLatin1();
    return NumberText::parse<double>({bytes.constData(), size_t(bytes.size())}).has_value();
}

bool isNumericColumn(const std::vector<QStringList> &cells, qsizetype column)
{
    bool any = false;
    for (const QStringList &row : cells) {
        if (row[column].isEmpty())
            continue;
        if (!isNumber(row[column]))
            return false;
        any = true;
    }
    return any;
}

} // namespace

std::optional<Format> formatOfName(const QString &name)
{
    if (name == u"text")
        return Format::Text;
    if (name == u"csv")
        return Format::Csv;
    if (name == u"json")
        return Format::Json;
    return std::nullopt;
}

QByteArray write(const TableContent &table, Format format)
{
    switch (format) {
    case Format::Csv:
        return csv(table);
    case Format::Json:
        return json(table);
    case Format::Text:
        break;
    }
    return alignedText(table.titles, table.cells).toUtf8();
}

QString alignedText(const QStringList &titles, const std::vector<QStringList> &cells)
{
    std::vector<qsizetype> widths;
    std::vector<bool> numeric;
    for (qsizetype column = 0; column < titles.size(); ++column) {
        qsizetype width = titles[column].size();
        for (const QStringList &row : cells)
            width = std::max(width, row[column].size());
        widths.push_back(width);
        numeric.push_back(isNumericColumn(cells, column));
    }
    QString text;
    const auto addLine = [&](const QStringList &row) {
        QString line;
        for (qsizetype column = 0; column < row.size(); ++column) {
            const QString cell = printable(row[column]); // names of files may have several lines
            line += numeric[column] ? cell.rightJustified(widths[column]) : cell.leftJustified(widths[column]);
            line += QLatin1String("  ");
        }
        while (line.endsWith(u' '))
            line.chop(1);
        text += line + u'\n';
    };
    addLine(titles);
    QStringList rule;
    for (qsizetype width : widths)
        rule.append(QString(width, u'-'));
    addLine(rule);
    for (const QStringList &row : cells)
        addLine(row);
    return text;
}

} // namespace TableExport

} // namespace Workbench
