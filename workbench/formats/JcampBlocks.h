// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/LabelledRecords.h"

#include <QStringList>

namespace Workbench {

/// One block of a JCAMP-DX file: from its ##TITLE= to its ##END=, without the blocks within.
struct JcampBlock {
    std::vector<LabelledRecord> records;
    size_t headerSize = 0; ///< records before the first ##PAGE=, which may repeat them
    QString source;
    int line = 0; ///< of the title
    mutable QStringList notes = {}; ///< what was assumed to read its numbers, in whole sentences

    /// The last record of the label in the header, null when there is none.
    const LabelledRecord *find(std::string_view label) const;
    /// The record number `index` of a label that stands there once for each dimension.
    const LabelledRecord *find(std::string_view label, int index) const;
    const LabelledRecord &need(std::string_view label) const;
    /// The value without comments; empty when there is none.
    std::string text(std::string_view label) const;
    /// A decimal comma is taken for a point, and noted.
    double number(const LabelledRecord &record, std::string_view text) const;
};

/// By its data type, an NMR spectrum of one or two dimensions.
bool isSpectrum(const JcampBlock &block);
/// By the standard's record or a vendor's; empty where neither names one.
QString observedNucleus(const JcampBlock &block);

/// ASCII letters alone: the forms of tables are written in either case.
std::string upperCase(std::string_view text);

/// At least one; a text without is an error.
std::vector<JcampBlock> jcampBlocks(std::string_view text, const QString &source);

/// "400,13": one comma, with digits around it.
bool hasDecimalComma(std::string_view text);

/// One of the comma-separated fields of a record; empty behind the last one.
std::string_view jcampField(std::string_view text, int index);

} // namespace Workbench
