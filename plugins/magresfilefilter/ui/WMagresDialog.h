// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/NuclearProperties.h"
#include "reading/MagresData.h"
#include "synthesis/MagresSpecParams.h"
#include "synthesis/ParameterStep.h"

#include <QDialog>

#include <memory>
#include <optional>

class QCheckBox;
class QComboBox;
class QLabel;
namespace Magres {
class SpinBoxNumber;
}
namespace Ui {
class WMagresDialog;
}

/// Asks how a spectrum is to be simulated. Shows a parameter record; after exec() was accepted the caller takes the
/// values over with copyToRecord().
///
/// Refers to data, record and nuclear properties, which must outlive the dialog. While it is open, only the marks of
/// ranges that the user chose are written to the record.
class WMagresDialog : public QDialog {
    Q_OBJECT

public:
    WMagresDialog(const Magres::MagresData &magresData, Magres::MagresSpecParams &parameters,
                  const Magres::NuclearProperties &properties, QWidget *parent = nullptr);
    /// Keeps the position for the next dialog.
    ~WMagresDialog() override;

    /// Closes it.
    void done(int result) override;

    /// Writes to the record what the dialog shows. A number that was not edited keeps the precision it came with.
    void copyToRecord();

public Q_SLOTS:
    /// Show the range of the data for reference, slope and quadrupolar shift, in place of one that the user chose.
    void updateRangeF2();
    void updateRangeF1();
    void onDimsChanged();
    void onNucChangedF2();
    void onNucChangedF1();

private:
    /// The widgets of one dimension.
    struct Dimension {
        int index; // 0 is F2, 1 is F1
        Magres::SpinBoxNumber *from;
        Magres::SpinBoxNumber *to;
        Magres::SpinBoxNumber *reference;
        Magres::SpinBoxNumber *slope;
        Magres::SpinBoxNumber *lineWidth;
        QComboBox *points;
        QComboBox *nucleus;
        QCheckBox *quadShift;
        QLabel *hint;
        bool Magres::MagresSpecParams::*rangeIsUsers;
        std::optional<Magres::ShiftRangeInData> inData; // of the nucleus
    };

    bool isTwoD() const;
    void restorePosition();
    void fillLists();
    void fillFromRecord();
    void showRange(const Dimension &dimension, const std::array<double, 2> &range, bool isUsers);
    void connectSignals();
    void updateRange(const Dimension &dimension);
    void onNucChanged(Dimension &dimension);
    void updateAveraging();
    Magres::DimensionParameters chosen(const Dimension &dimension) const;

    const Magres::MagresData &m_data;
    Magres::MagresSpecParams &m_parameters;
    const Magres::NuclearProperties &m_properties;
    std::optional<QPoint> m_closedAt;
    std::unique_ptr<Ui::WMagresDialog> m_ui;
    Magres::SpinBoxNumber *m_frequency; // of 1H, MHz
    Dimension m_f2;
    Dimension m_f1;
};
