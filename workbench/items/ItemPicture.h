// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QIODevice;
class QMimeData;
class QPagedPaintDevice;

namespace Workbench {

class DocumentItem;

/// What an item shows, without its frame and title, as a picture.
namespace ItemPicture {

/// "png" in three times the resolution of the screen, "svg" or "pdf", whatever the case. Throws std::runtime_error for
/// another suffix and for what cannot be written.
void write(DocumentItem &item, const QString &suffix, QIODevice &device);
void save(DocumentItem &item, const QString &fileName);
/// As pixels and as vectors.
QMimeData *mimeData(DocumentItem &item);
/// As large as the paper allows, in the middle of it.
void print(DocumentItem &item, QPagedPaintDevice &printer);

} // namespace ItemPicture

} // namespace Workbench
