// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace Workbench::ManualPages {

/// The program's page and one for each command, for man(1): file name to text. They say what --help says.
QMap<QString, QByteArray> all();

} // namespace Workbench::ManualPages
