// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJsonValue>
#include <QVariant>

namespace Workbench {

/// The value as JSON, in full precision. Knows what crosses the plug-in boundary: maps and hashes, lists, vectors of
/// numbers, UUIDs (in braces). Numbers that are not finite become null.
QJsonValue toJson(const QVariant &value);

} // namespace Workbench
