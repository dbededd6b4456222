// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"
#include "data/SpectrumEntry.h"

class QIODevice;

namespace Workbench {

/// What a measured file holds, for people and for programs.
class MeasurementReport {
public:
    explicit MeasurementReport(Measurement measurement);

    /// Several lines: format, axes, noise, peaks, and what was assumed.
    QString text() const;
    /// The same with all digits. Arrays over dimensions hold F2, then F1.
    QByteArray json() const;

    bool hasPoints() const { return std::holds_alternative<ExperimentalSpectrum>(m_measurement); }
    /// The spectrum with its peaks, its axes as the file gives them; the frequency is 0 where nobody knows it.
    SpectrumEntry entry() const;
    /// A list of peaks: `position,height,label`, in two dimensions `position,position_f1,height,label`; with
    /// a column `count` where the list tells numbers of sites.
    void writePeaks(QIODevice &device) const;

private:
    int dimensions() const;
    const QString &title() const;
    const QString &format() const;
    const QStringList &notes() const;

    Measurement m_measurement;
    std::vector<MeasuredPeak> m_peaks; ///< of the list, or picked from the spectrum
};

} // namespace Workbench
