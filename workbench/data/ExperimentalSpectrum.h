// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <string_view>
#include <vector>

namespace Workbench {

/// One axis of a measured spectrum. Point i lies at first + i * step ppm.
struct SpectrumDimension {
    QString nucleus; ///< "13C"; empty: the file does not say
    double frequency = 0.0; ///< MHz, of 0 ppm; 0: the file does not say
    double width = 0.0; ///< Hz, the whole of the axis (points times step); 0 without a frequency
    double first = 0.0; ///< ppm, the high end
    double step = 0.0; ///< ppm, negative
    int points = 0;

    double ppm(double point) const { return first + point * step; }
};

/// A measured spectrum as its file gives it.
struct ExperimentalSpectrum {
    QString title;
    std::vector<SpectrumDimension> dimensions; ///< F2, then F1 in two dimensions
    std::vector<double> data; ///< row by row, F1 major: element i1 * points(F2) + i2
    QString format = {}; ///< "JCAMP-DX"
    QStringList notes = {}; ///< whole sentences: what was assumed, which statement of the file was taken
};

/// More points than the NMR data of a host hold.
constexpr qint64 largestPointCount = qint64(1) << 28;

/// Turns a dimension whose axis rises, with its data, so that it falls; leaves others alone. Then checks the axis: what
/// is not finite, has no extent or reaches as far as the frequency itself (a million ppm) is an error that names
/// `source`.
void orient(ExperimentalSpectrum &spectrum, const QString &source);

/// "13C" from the ways in which files write it (13C, ^13C, C13, <13C>); empty when the table of nuclides lacks it.
QString nucleusName(std::string_view text);

/// The spectrum as an entry of a host's NMR data. The host counts ppm from its carrier, which includes the reference
/// offset; width and offset are chosen so that its axis is the file's and its spectrometer frequency the spectrum's
/// (a marked stand-in where that is unknown).
QVariantMap toEntryMap(ExperimentalSpectrum spectrum);

} // namespace Workbench
