// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>
#include <vector>

namespace Workbench {

struct TableContent;

/// A plug-in's table as text, CSV or JSON.
namespace TableExport {

enum class Format { Text, Csv, Json };

/// "text", "csv" or "json"; nothing for other names.
std::optional<Format> formatOfName(const QString &name);

QByteArray write(const TableContent &table, Format format);

/// Columns padded to the width of their widest cell, two blanks between them; cells that are numbers in all rows are
/// aligned to the right. One line for the titles, one with a rule.
QString alignedText(const QStringList &titles, const std::vector<QStringList> &cells);

} // namespace TableExport

} // namespace Workbench
