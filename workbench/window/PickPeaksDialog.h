// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/PeakListFile.h"
#include "items/plot/NmrData.h"

#include <QDialog>

class QCheckBox;
class QDoubleSpinBox;
class QLabel;

namespace Workbench {

/// Asks how peaks are to be picked from a measured spectrum, and shows at once how many that gives.
class PickPeaksDialog : public QDialog {
    Q_OBJECT
public:
    PickPeaksDialog(const NmrData &stack, const QUuid &entry, QWidget *parent);

    /// Picks with the present settings.
    void pick();
    /// The peaks in the host's form.
    QVariantMap peakMap() const;

Q_SIGNALS:
    /// F2 and F1 of every peak, ppm.
    void picked(const QList<QPointF> &places);

private:
    void createInputs();

    Spectrum m_spectrum;
    QList<SpectrumPeak> m_simulated;
    std::vector<PeakListFile::Peak> m_peaks;
    QDoubleSpinBox *m_noise;
    QDoubleSpinBox *m_height;
    QDoubleSpinBox *m_distance;
    QCheckBox *m_countSites;
    QLabel *m_result;
};

} // namespace Workbench
