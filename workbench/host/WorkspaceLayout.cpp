// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/WorkspaceLayout.h"

#include <algorithm>
#include <numeric>

namespace Workbench {

namespace WorkspaceLayout {

namespace {

constexpr double leastMoleculeShare = 0.3;
constexpr double leastTableShare = 0.4;
constexpr double leastWidth = 480;

struct Height {
    double least;
    double weight; ///< of what is left over
};

Height heightOf(Row::Kind kind)
{
    switch (kind) {
    case Row::Structure:
        return {240, 1};
    case Row::Spectrum:
        return {260, 1.2};
    case Row::Map:
        return {420, 1.6};
    }
    return {240, 1};
}

Place split(const QRectF &row, const Row &content)
{
    if (content.kind != Row::Structure || !content.hasMolecule)
        return {{}, row};
    if (!content.hasTable)
        return {row, {}};
    // A molecule fits into any width, columns do not.
    const double table =
        std::clamp(content.tableWidth, leastTableShare * row.width(), (1 - leastMoleculeShare) * row.width());
    return {row.adjusted(0, 0, -table - gap, 0), row.adjusted(row.width() - table, 0, 0, 0)};
}

} // namespace

QList<Place> place(const QList<Row> &rows, const QSizeF &window)
{
    double least = gap, weight = 0;
    for (const Row &row : rows) {
        least += heightOf(row.kind).least + gap;
        weight += heightOf(row.kind).weight;
    }
    const double spare = std::max(0.0, window.height() - least);
    const double width = std::max(leastWidth, window.width()) - 2 * gap;
    QList<Place> places;
    double top = gap;
    for (const Row &row : rows) {
        const Height height = heightOf(row.kind);
        const double share = height.least + spare * height.weight / weight;
        places.append(split(QRectF(gap, top, width, share), row));
        top += share + gap;
    }
    return places;
}

} // namespace WorkspaceLayout

} // namespace Workbench
