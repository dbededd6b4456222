// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/NuclearProperties.h"
#include "reading/MagresData.h"

// Made-up crystals as MAGRES files, for tests and benchmarks.

namespace MagresText {

using Magres::MagresData;

/// A crystal with a shielding and an EFG tensor on every atom.
MagresData crystalData(int atoms);

/// The nuclear properties that such crystals need.
class OxygenAndDeuterium : public Magres::NuclearProperties {
public:
    QString spin(const QByteArray &nucleus) const override
    {
        return nucleus == "17O" ? QStringLiteral("5/2") : nucleus == "2H" ? QStringLiteral("1") : QStringLiteral("1/2");
    }
    double quadrupoleMoment(const QByteArray &nucleus) const override
    {
        return nucleus == "17O" ? -2.558 : nucleus == "2H" ? 0.286 : 0.0;
    }
    double naturalAbundance(const QByteArray &) const override { return 1.0; }
};

/// The data as programs write it, with 17 significant digits.
QByteArray magresText(const MagresData &data);

} // namespace MagresText
