// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Document.h"
#include "formats/DocumentDevice.h"

#include <stdexcept>

namespace Workbench {

/// Document files (*.magresdoc). All numbers are little-endian:
///
///     8 bytes    a signature that does not survive transfer as text
///     uint32     version of the format
///     uint64     length of the contents, bytes
///                the contents: Document::toMap() as a VariantStream, in the data stream format of Qt 6.0
///     16 bytes   checksum of the contents and then of what is before them
namespace DocumentFile {

inline constexpr quint32 version = 1;
/// Without the dot.
inline constexpr char suffix[] = "magresdoc";

struct Cancelled : std::runtime_error {
    using runtime_error::runtime_error;
};

/// Whether the file begins as documents do.
bool isDocument(const QString &fileName);

/// Either the whole file, or std::runtime_error with a text for the user that begins with the file's name. Cancelled
/// when `progress` said so.
Document read(const QString &fileName, const DocumentProgress &progress = {});

/// From a device that holds nothing else and is able to seek. Errors do not name it.
Document read(QIODevice &file, const DocumentProgress &progress = {});

/// Replaces the file as one step: at any moment, and should the program or the machine die, the earlier file or the new
/// one is there in full. Errors as above.
void write(const QString &fileName, const Document &document, const DocumentProgress &progress = {});

/// Into a file that somebody else opens and commits; it must be empty and able to seek. Errors do not name it.
void write(QIODevice &file, const Document &document, const DocumentProgress &progress = {});

} // namespace DocumentFile

} // namespace Workbench
