// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QStringList>

#include <utility>

class QWidget;

namespace Workbench {

/// File types by their names and suffixes.
using FileTypes = QList<std::pair<QString, QString>>;

/// PDF, SVG and PNG.
FileTypes pictureTypes();
/// CSV and JSON.
FileTypes tableTypes();
/// "PDF document (*.pdf)"
QStringList filtersOf(const FileTypes &types);

/// Asks for a file to write, from a proposed one (or none) on; empty when the user cancels. A name without suffix gets
/// that of the chosen filter, such as "PDF document (*.pdf)", before anybody is asked whether a file may be replaced;
/// where there is one filter, a name with another suffix too.
QString askForFileToSave(QWidget *parent, const QString &title, const QString &proposed, const QStringList &filters);

} // namespace Workbench
