// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "reading/MagresData.h"
#include "support/TPluginError.h"

#include <QByteArrayView>

#include <functional>

namespace Magres {

/// What is wrong with a MAGRES file; the message quotes the offending line.
class Q_DECL_EXPORT MagresParseError : public TPluginError {
public:
    using TPluginError::TPluginError;
};

/// Called after every atoms block, with all that has been read so far.
using AtomsBlockHandler = std::function<void(MagresData &)>;

/// Whether the file can be opened and begins as MAGRES files do.
bool isMagresFile(const QString &fileName);

/// Adds the atoms, lattice and tensors of a MAGRES text to `data`; unknown blocks and records are skipped, and carriage
/// returns dropped wherever they stand. Throws MagresParseError; what was read before stays in `data` then.
void parseMagres(QByteArrayView text, MagresData &data, const AtomsBlockHandler &atomsBlockRead = {});

/// parseMagres() on a file's content. Throws MagresParseError also when the file cannot be opened.
void readMagresFile(const QString &fileName, MagresData &data, const AtomsBlockHandler &atomsBlockRead = {});

} // namespace Magres
