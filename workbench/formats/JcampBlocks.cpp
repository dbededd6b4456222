// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/JcampBlocks.h"

#include "data/ExperimentalSpectrum.h"
#include "data/NumberText.h"
#include "data/ReaderText.h"

#include <algorithm>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using ReaderText::trimmed;

const LabelledRecord *JcampBlock::find(std::string_view label) const
{
    const auto isIt = [&](const LabelledRecord &record) { return record.label == label; };
    const auto end = records.rend(), begin = end - std::ptrdiff_t(headerSize);
    const auto found = std::find_if(begin, end, isIt);
    return found == end ? nullptr : &*found;
}

const LabelledRecord *JcampBlock::find(std::string_view label, int index) const
{
    for (size_t i = 0; i < headerSize; ++i) {
        if (records[i].label == label && index-- == 0)
            return &records[i];
    }
    return nullptr;
}

const LabelledRecord &JcampBlock::need(std::string_view label) const
{
    const LabelledRecord *record = find(label);
    if (!record)
        fail(source, line, Texts::tr("the block that begins here has no record ##%1=").arg(ReaderText::decoded(label)));
    return *record;
}

std::string JcampBlock::text(std::string_view label) const
{
    const LabelledRecord *record = find(label);
    return record ? record->text() : std::string();
}

double JcampBlock::number(const LabelledRecord &record, std::string_view text) const
{
    std::string plain(trimmed(text));
    if (hasDecimalComma(plain)) {
        const QString note = Texts::tr("The comma in ##%1= %2 was taken for a decimal point.")
                                 .arg(ReaderText::decoded(record.label), ReaderText::decoded(plain));
        if (!notes.contains(note))
            notes.append(note);
        plain[plain.find(',')] = '.';
    }
    const auto value = NumberText::parse<double>(plain);
    if (!value)
        fail(source, record.line,
             Texts::tr("expected a number for %1, found %2").arg(ReaderText::decoded(record.label), excerpt(text)));
    return *value;
}

bool hasDecimalComma(std::string_view text)
{
    const auto isDigit = [&](size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
    const size_t comma = text.find(',');
    return comma != text.npos && comma > 0 && isDigit(comma - 1) && isDigit(comma + 1)
        && text.find_first_of(",.", comma + 1) == text.npos && text.substr(0, comma).find('.') == text.npos;
}

bool isSpectrum(const JcampBlock &block)
{
    // "nD NMR SPECTRUM", "13C NMR SPECTRUM"
    const std::string type = normalisedLabel(block.text("DATATYPE"));
    return type.find("NMRSPECTRUM") != std::string::npos || (type.empty() && block.find(".OBSERVENUCLEUS"));
}

QString observedNucleus(const JcampBlock &block)
{
    const QString nucleus = nucleusName(block.text(".OBSERVENUCLEUS"));
    return nucleus.isEmpty() ? nucleusName(block.text("$NUC1")) : nucleus;
}

std::string upperCase(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; });
    return result;
}

std::vector<JcampBlock> jcampBlocks(std::string_view text, const QString &source)
{
    std::vector<JcampBlock> blocks;
    bool open = false;
    for (const LabelledRecord &record : labelledRecords(text, source)) {
        if (record.label == "TITLE") {
            blocks.push_back({{}, 0, source, record.line});
            open = true;
        } else if (record.label == "END") {
            open = false;
        }
        if (!open)
            continue;
        blocks.back().records.push_back(record);
        // Some writers take the standard's own records for private ones: ##$.OBSERVE FREQUENCY=
        if (record.label.starts_with("$."))
            blocks.back().records.back().label.erase(0, 1);
    }
    if (blocks.empty())
        fail(source, Texts::tr("a JCAMP-DX file was expected, no record ##TITLE= was found"));
    for (JcampBlock &block : blocks) {
        const auto page = std::find_if(block.records.begin(), block.records.end(),
                                       [](const LabelledRecord &record) { return record.label == "PAGE"; });
        block.headerSize = size_t(page - block.records.begin());
    }
    return blocks;
}

std::string_view jcampField(std::string_view text, int index)
{
    for (; index > 0; --index) {
        const size_t comma = text.find(',');
        if (comma == std::string_view::npos)
            return {};
        text.remove_prefix(comma + 1);
    }
    return trimmed(text.substr(0, text.find(',')));
}

} // namespace Workbench
