// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/PowderSites.h"
#include "items/plot/NmrData.h"

#include <QDialog>
#include <QTimer>

#include <functional>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QListWidget;
class QPushButton;
class QScrollArea;
class QSpinBox;

namespace Workbench {

class NmrPlot;

/// Asks how the powder spectrum of a crystal is to be computed, and shows it while that changes. Values that nobody
/// touches keep all their digits.
class PowderDialog : public QDialog {
    Q_OBJECT
public:
    /// `measured`: spectra that it can be fitted to, of one dimension.
    PowderDialog(const CrystalStructure &structure, const PowderSettings &settings,
                 std::vector<ExperimentalSpectrum> measured, QWidget *parent);

    /// What was accepted.
    const PowderSettings &settings() const { return m_settings; }
    const PowderSites &sites() const { return m_sites; }
    const Powder::Spectrum &spectrum() const { return m_spectrum; }

    /// Computes the spectrum before it closes; stays open when that fails or is cancelled.
    void accept() override;

private:
    QWidget *createInputs();
    QDoubleSpinBox *addNumber(QFormLayout *form, const QString &label, const QString &name, double low, double high,
                              int decimals, const QString &suffix, double *value);
    void addRotation(QFormLayout *form);
    void addAxis(QFormLayout *form);
    void showRange(const Powder::Axis &axis);
    /// Of the preview.
    void show(const Powder::Spectrum &spectrum, const ExperimentalSpectrum *measured);
    void addFit(QFormLayout *form);
    void takeNucleus(const QString &nucleus);
    void chooseNucleus(const QString &nucleus);
    void fillSites();
    void describeSites();
    static QString siteText(const PowderSite &site);
    void takeSites();
    void showNumbers();
    void changed();
    void updatePreview();
    void showNotes(const QStringList &notes, const QString &error);
    void fit();
    const ExperimentalSpectrum *chosenMeasurement() const;
    /// Does long work with a bar to stop it. False when that has failed or was stopped; the user knows.
    bool work(const QString &what, const std::function<bool(const Powder::Progress &)> &run);

    CrystalStructure m_structure;
    UniqueSites m_unique;
    PowderSettings m_settings;
    QHash<QString, PowderSettings> m_left; ///< of nuclei that were chosen before
    std::vector<ExperimentalSpectrum> m_measured;
    PowderSites m_sites;
    Powder::Spectrum m_spectrum;
    bool m_busy = false;

    struct Number {
        QDoubleSpinBox *box;
        double *value;
    };
    std::vector<Number> m_numbers;
    QComboBox *m_nucleus;
    QComboBox *m_rotation;
    QDoubleSpinBox *m_rate = nullptr;
    QCheckBox *m_automatic;
    QDoubleSpinBox *m_from, *m_to;
    QListWidget *m_siteList;
    QCheckBox *m_siteCurves;
    QComboBox *m_measurement;
    QCheckBox *m_fitScale;
    QPushButton *m_fit;
    QLabel *m_fitResult;
    QScrollArea *m_inputs = nullptr;
    QLabel *m_notes;
    QPushButton *m_ok = nullptr;
    NmrData m_shown;
    QList<QUuid> m_traces; ///< of the preview: the sum, the measurement, sites
    NmrPlot *m_plot;
    QTimer m_timer;
};

} // namespace Workbench
