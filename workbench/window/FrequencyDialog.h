// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "data/Measurement.h"

#include <QDialog>
#include <QStringList>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QPushButton;

namespace Workbench {

/// Asks for what turns the frequencies of a measured file into ppm: the nucleus and the spectrometer, or the frequency
/// of 0 ppm itself. Shows where the axis then lies.
class FrequencyDialog : public QDialog {
    Q_OBJECT
public:
    /// What is likely, by the spectra beside it and what was answered last.
    struct Proposal {
        QString nucleus; ///< empty: nobody knows
        double protonFrequency = 0; ///< of the spectrometer, MHz; 0: nobody knows
    };

    FrequencyDialog(const QString &path, const FrequencyNeeded &needed, const Proposal &proposal, QWidget *parent);

    ReadOptions readOptions() const;
    /// F2, then F1.
    QStringList nuclei() const;
    double protonFrequency() const;

private:
    QComboBox *createNucleusBox(const char *name);
    void fillUnits();
    void propose(const Proposal &proposal);
    void updateFrequency();
    void updateProtonFrequency();
    void showRange();
    double frequencyOf(const QComboBox *nucleus) const;

    const QString m_path;
    const bool m_unitKnown;
    QComboBox *m_unit;
    QComboBox *m_nucleus;
    QComboBox *m_nucleusF1; ///< null in one dimension
    QDoubleSpinBox *m_proton;
    QDoubleSpinBox *m_frequency;
    QLabel *m_range;
    QPushButton *m_ok;
    std::optional<std::pair<double, double>> m_hertz; ///< first and last position
};

} // namespace Workbench
