// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/LabelledRecords.h"

#include "data/ReaderText.h"

#include <algorithm>

namespace Workbench {

using ReaderText::Lines;
using ReaderText::trimmed;

std::string LabelledRecord::text() const
{
    std::string joined;
    for (Lines lines(value); lines.next();) {
        const std::string_view part = withoutComment(lines.line());
        if (!joined.empty() && !part.empty())
            joined += ' ';
        joined += part;
    }
    return joined;
}

std::string_view LabelledRecord::firstLine() const
{
    return withoutComment(value.substr(0, value.find_first_of("\r\n")));
}

std::string normalisedLabel(std::string_view label)
{
    std::string result;
    for (char c : label) {
        if (c >= 'a' && c <= 'z')
            result += char(c - 'a' + 'A');
        else if (std::string_view(" \t-/_").find(c) == std::string_view::npos)
            result += c;
    }
    return result;
}

std::string_view withoutComment(std::string_view line)
{
    return trimmed(line.substr(0, line.find("$$")));
}

std::vector<LabelledRecord> labelledRecords(std::string_view text, const QString &source)
{
    constexpr size_t mostRecords = 1 << 17;
    std::vector<LabelledRecord> records;
    const auto endLast = [&](const char *end) {
        if (!records.empty()) {
            const char *begin = records.back().value.data();
            records.back().value = {begin, size_t(end - begin)};
        }
    };
    for (Lines lines(text); lines.next();) {
        const std::string_view line = trimmed(lines.line());
        const size_t equals = line.find('=');
        if (!line.starts_with("##") || equals == std::string_view::npos)
            continue;
        if (records.size() == mostRecords)
            ReaderText::fail(source, lines.number(), Texts::tr("more than %1 records are too many").arg(mostRecords));
        endLast(line.data());
        records.push_back({normalisedLabel(line.substr(2, equals - 2)), line.substr(equals + 1), lines.number()});
    }
    endLast(text.data() + text.size());
    return records;
}

const LabelledRecord *findRecord(const std::vector<LabelledRecord> &records, std::string_view label)
{
    const auto found =
        std::find_if(records.rbegin(), records.rend(), [&](const auto &record) { return record.label == label; });
    return found == records.rend() ? nullptr : &*found;
}

} // namespace Workbench
