// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/comparison/PeakComparison.h"
#include "formats/ReferenceSet.h"
#include "window/compare/CompareOptions.h"
#include "window/compare/DocumentChoices.h"

#include <QDockWidget>
#include <QHash>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QSpinBox;
class QTreeWidgetItem;

namespace Workbench {

class AgreementPlot;
class DataEngine;
class PairTable;

/// Holds the lines of a measured spectrum against the sites of a structure, and shows who is paired with whom. It
/// follows the current plot and table. Pairs that the user makes by hand are the labels of the measured peaks, so that
/// they are kept with the document, can be undone and go along with an exported peak list. How the lines are compared
/// is kept with the measurement too.
class ComparePanel : public QDockWidget {
    Q_OBJECT
public:
    ComparePanel(MainScene *scene, DataEngine *engine, QWidget *parent);

    /// Empty when there is something to compare.
    QString whyNot() const;
    /// With the measurement of the current plot.
    void open();
    void showStructure(const QUuid &table);
    void showMeasurement(const QUuid &entry);
    /// With the options of a ranking, unless the user chose others here.
    void showAsRanked(const QUuid &entry, const CompareOptions &options);
    /// To be called when reference sets have changed.
    void followReferenceSets();

    PairTable *pairs() const { return m_pairs; }
    /// Null while nothing can be compared.
    const PeakComparison *comparison() const { return m_compared ? &*m_compared : nullptr; }
    /// What was compared, or why nothing was.
    QString summary() const;

Q_SIGNALS:
    void reported(const QString &text);

protected:
    void showEvent(QShowEvent *event) override;

private:
    QWidget *createOptions();
    void watch(DocumentItem *item);
    void followCurrentItems();
    void refreshLater();
    void refresh();
    void fillChoices();
    void fillNuclei();
    /// As the measurement has them, else start values that belong to the nucleus.
    void takeOptions();
    void takeDefaults(const QString &nucleus);
    void setOptions(const CompareOptions &options);
    CompareOptions options() const;
    /// With the measurement; `what` was changed.
    void keepOptions(const QString &what);
    QVariantMap keptOptions() const;
    void enableInputs();
    void compare();
    void showResult();
    QString resultText() const;
    QString scaleText() const;
    bool hasLabels() const;
    void light();
    void moveLine(const std::vector<int> &lines, int from, int to);
    void freeLine(const std::vector<int> &lines);
    void freeAll();
    void setLabels(const std::map<int, QString> &labels, const QString &what);
    void openMenu(QTreeWidgetItem *row, const QPoint &globalPos);

    const StructureChoice *structure() const;
    const MeasurementChoice *measurement() const;
    NmrItem *plot() const;
    NucleusMeasurement measurementOptions() const;
    const CrystalStructure &structureData(const QUuid &id);
    const UniqueSites &uniqueSites(const QUuid &id);

    MainScene *m_scene;
    DataEngine *m_data;
    QComboBox *m_structure;
    QComboBox *m_measurement;
    QComboBox *m_nucleus;
    QComboBox *m_averaging;
    QComboBox *m_referenceKind;
    QDoubleSpinBox *m_reference;
    QComboBox *m_slopeKind;
    QDoubleSpinBox *m_slope;
    QDoubleSpinBox *m_sigma;
    QSpinBox *m_unmatched;
    PairTable *m_pairs;
    QLabel *m_result;
    AgreementPlot *m_plot;

    QList<StructureChoice> m_structures;
    QList<MeasurementChoice> m_measurements;
    QUuid m_lastPlot, m_lastTable; ///< that were followed
    QString m_lastNucleus;
    QUuid m_takenFrom; ///< the measurement whose options are in the boxes
    QVariantMap m_taken; ///< what it had
    // The boxes round.
    double m_exactReference = 0;
    double m_exactSlope = -1;
    std::optional<ReferenceSet> m_set; ///< of the nucleus
    std::optional<PeakComparison> m_compared;
    QString m_failure;
    QString m_spaceGroup;
    QStringList m_warnings;
    std::optional<double> m_automaticRmsd; ///< without the pairs made by hand
    QHash<QUuid, CrystalStructure> m_structureData;
    QHash<QString, UniqueSites> m_uniqueSites; ///< by data set and averaging
    bool m_waiting = false;
};

} // namespace Workbench
