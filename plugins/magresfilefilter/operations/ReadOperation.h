// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "operations/HostContext.h"
#include "ui/MagresCommands.h"

#include <QGraphicsWidget>

namespace Magres {

/// Reads a MAGRES file into the document: a molecule item, the data, and the table item linked to the molecule. Returns
/// the two items. Throws MagresParseError before anything has been created.
QList<QGraphicsWidget *> readIntoDocument(const HostContext &host, MagresCommands &commands, const QString &fileName,
                                          const QRectF &rect);

} // namespace Magres
