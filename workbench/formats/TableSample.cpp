// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/TableSample.h"

#include <algorithm>

namespace Workbench {

int TableSample::namingLine() const
{
    int line = 0;
    for (const HeaderLine &header : headers)
        line = header.isNaming ? header.number : line;
    return line;
}

bool TableSample::isNaming(int line) const
{
    return std::any_of(headers.begin(), headers.end(),
                       [&](const HeaderLine &header) { return header.isNaming && header.number == line; });
}

} // namespace Workbench
