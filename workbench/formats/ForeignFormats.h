// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace Workbench {

/// Formats of measurements that cannot be read here, known by their marks so that a refusal can say what to do.
namespace ForeignFormats {

/// Why the file or folder at the path is refused: its format by name, and the export that can be read. Empty when it
/// is none of these. `start` is the file's beginning, empty for a folder.
QString refusal(const QString &path, const QByteArray &start);

} // namespace ForeignFormats

} // namespace Workbench
