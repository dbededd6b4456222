// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDataStream>
#include <QVariant>

namespace Workbench {

/// Trees of variants in a stream, for documents: the names of all known types come first, then each value with the
/// number of its name. Unlike QDataStream's own form of variants it takes none but the listed types and limits the
/// depth of nesting; a count read must be covered by what the stream's device still holds, so that memory is bounded by
/// the size of what is read. The same tree always gives the same bytes: hashes are sorted.
///
/// Spectra points that several places share (implicitly, as copies do) are written once and shared again when read.
///
/// Errors are std::runtime_error; the text begins with the place in the tree.
namespace VariantStream {

/// Of lists and maps in each other.
inline constexpr int deepest = 64;

void write(QDataStream &out, const QVariant &tree);

/// The device must know bytesAvailable().
QVariant read(QDataStream &in);

} // namespace VariantStream

} // namespace Workbench
