// SPDX-License-Identifier: GPL-3.0-or-later
#include "io/TableExport.h"

#include "io/JsonValues.h"
#include "io/NumberText.h"
#include "items/PluginCall.h"
#include "items/TableItem.h"
#include "items/TableModel.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace TableExport {

namespace {

/// The values of a row that leave the program, in this order; "ID" means nothing outside of it.
constexpr const char *rowKeys[] = {"type", "labels", "atomNos", "iso", "aniso", "assym", "eq", "qassym", "Cq", "qIso"};

QStringList columnTitles(const TableModel &model)
{
    QStringList titles;
    for (int column = 0; column < model.columnCount(); ++column)
        titles.append(model.headerData(column, Qt::Horizontal).toString());
    return titles;
}

std::vector<QStringList> shownCells(const TableModel &model)
{
    std::vector<QStringList> cells;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList line;
        for (int column = 0; column < model.columnCount(); ++column)
            line.append(model.data(model.index(row, column)).toString());
        cells.push_back(line);
    }
    return cells;
}

QByteArray csvField(const QVariant &value)
{
    QByteArray text;
    if (value.typeId() == QMetaType::Double) {
        NumberText::append17(text, value.toDouble());
        return text;
    }
    if (value.typeId() == QMetaType::QString) {
        text = value.toString().toUtf8();
    } else {
        for (const QVariant &element : value.toList())
            text += (text.isEmpty() ? "" : " ") + element.toString().toUtf8();
    }
    if (text.contains(',') || text.contains('"') || text.contains('\n'))
        text = '"' + text.replace('"', "\"\"") + '"';
    return text;
}

QByteArray csv(const QVariantList &rowList)
{
    QByteArray text;
    for (const char *key : rowKeys)
        text += (text.isEmpty() ? "" : ",") + QByteArray(key);
    text += '\n';
    for (const QVariant &row : rowList) {
        const QVariantMap map = row.toMap();
        QByteArray line;
        for (const char *key : rowKeys)
            line += csvField(map.value(QLatin1String(key))) + ',';
        line.back() = '\n';
        text += line;
    }
    return text;
}

QByteArray json(const QStringList &titles, const QVariantList &rowList)
{
    QJsonArray array;
    for (const QVariant &row : rowList) {
        const QVariantMap map = row.toMap();
        QJsonObject object;
        for (const char *key : rowKeys) {
            const QString name = QLatin1String(key);
            if (map.contains(name))
                object.insert(name, toJson(map.value(name)));
        }
        array.append(object);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("columns"), QJsonArray::fromStringList(titles)},
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

QVariantList rows(const TableItem &item)
{
    return callPlugin<QVariantList>(item.table(), "tableModel_rows()");
}

QByteArray write(const TableItem &item, Format format)
{
    switch (format) {
    case Format::Csv:
        return csv(rows(item));
    case Format::Json:
        return json(columnTitles(*item.model()), rows(item));
    case Format::Text:
        break;
    }
    return alignedText(columnTitles(*item.model()), shownCells(*item.model())).toUtf8();
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
            const QString &cell = row[column];
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
