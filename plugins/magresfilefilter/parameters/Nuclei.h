// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/NuclearProperties.h"

#include <QByteArrayList>
#include <QVariantMap>

// Nucleus names are a mass number followed by an element symbol: "13C". All comparisons are case-sensitive.

namespace Magres {

/// Resonance frequency in MHz in a field where 1H resonates at 750.03 MHz; the value of "1H" for a name that the table
/// does not hold. Only ratios are meant to be used.
double isotopeFrequency(const QByteArray &nucleus);
/// MHz, in a spectrometer whose 1H frequency is given.
double spectrometerFrequency(const QByteArray &nucleus, double protonFrequencyMHz);

/// The host's index of the nucleus; -1 for a name that is not in the list.
int nucleusCode(const QByteArray &nucleus);

/// The first run of digits in the name, 0 without one.
int massNumber(const QByteArray &nucleus);
/// The name without its leading digits.
QByteArray elementOf(const QByteArray &nucleus);

/// Name of the nucleus in an {"Isotope": 13, "Name": "C"} map.
QByteArray nucleusName(const QVariantMap &nucleide);
/// The maps of both dimensions' nuclei; "1H" stands for an empty name.
QVariantList nucleides(const QByteArray &nucleusF2, const QByteArray &nucleusF1);

/// The element's nuclei with a known frequency, in bytewise order of their names.
QByteArrayList isotopes(const QByteArray &element);
/// Those of them whose spin exceeds 1/2.
QByteArrayList quadrupolarIsotopes(const QByteArray &element, const NuclearProperties &properties);
/// The most abundant quadrupolar isotope; empty for an element without one.
QByteArray defaultQuadrupolarIsotope(const QByteArray &element, const NuclearProperties &properties);
/// The element's entry in `choices` (element symbol -> nucleus name). An element without entry gets its default as one.
QByteArray chosenQuadrupolarIsotope(const QByteArray &element, QVariantMap &choices,
                                    const NuclearProperties &properties);

} // namespace Magres
