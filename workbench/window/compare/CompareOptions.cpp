// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/compare/CompareOptions.h"

#include "data/Nuclides.h"

#include <cmath>

namespace Workbench {

namespace {

const QString nucleusKey = QStringLiteral("Nucleus");
const QString averagingKey = QStringLiteral("Averaging");
const QString referenceKindKey = QStringLiteral("ReferenceKind");
const QString referenceKey = QStringLiteral("Reference");
const QString slopeKindKey = QStringLiteral("SlopeKind");
const QString slopeKey = QStringLiteral("Slope");
const QString sigmaKey = QStringLiteral("Sigma");
const QString unmatchedKey = QStringLiteral("Unmatched");

} // namespace

QVariantMap CompareOptions::toMap() const
{
    return {{nucleusKey, nucleus},     {averagingKey, averaging},      {referenceKindKey, int(referenceKind)},
            {referenceKey, reference}, {slopeKindKey, int(slopeKind)}, {slopeKey, slope},
            {sigmaKey, sigma},         {unmatchedKey, unmatched}};
}

std::optional<CompareOptions> CompareOptions::fromMap(const QVariantMap &map)
{
    CompareOptions options;
    options.nucleus = map.value(nucleusKey).toString();
    options.averaging = map.value(averagingKey, -1).toInt();
    const int referenceKind = map.value(referenceKindKey, -1).toInt(), slopeKind = map.value(slopeKindKey, -1).toInt();
    options.reference = map.value(referenceKey).toDouble();
    options.slope = map.value(slopeKey).toDouble();
    options.sigma = map.value(sigmaKey).toDouble();
    options.unmatched = map.value(unmatchedKey, -1).toInt();
    const auto isKind = [](int kind) { return kind >= Fitted && kind <= OfSet; };
    const bool makesSense = Nuclides::table().contains(options.nucleus) && options.averaging >= 0
        && options.averaging <= 2 && isKind(referenceKind) && isKind(slopeKind) && std::isfinite(options.reference)
        && std::isfinite(options.slope) && std::isfinite(options.sigma) && options.sigma >= 0 && options.unmatched >= 0;
    if (!makesSense)
        return std::nullopt;
    options.referenceKind = Scale(referenceKind);
    options.slopeKind = Scale(slopeKind);
    return options;
}

} // namespace Workbench
