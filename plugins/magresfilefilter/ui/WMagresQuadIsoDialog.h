// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "parameters/NuclearProperties.h"
#include "reading/MagresData.h"

#include <QDialog>

#include <memory>

namespace Ui {
class WMagresQuadIsoDialog;
}

/// Asks for the isotope of an element to which quadrupolar couplings refer. Changes nothing: the caller stores what was
/// chosen.
///
/// Refers to data and nuclear properties, which must outlive the dialog.
class WMagresQuadIsoDialog : public QDialog {
    Q_OBJECT

public:
    WMagresQuadIsoDialog(const Magres::MagresData &magresData, const Magres::NuclearProperties &properties,
                         QWidget *parent = nullptr);
    ~WMagresQuadIsoDialog() override;

    /// Both are empty when the data has no quadrupolar element.
    QString currentElement() const;
    QString currentIsotope() const;

public Q_SLOTS:
    void elementChanged(const QString &element);

private:
    const Magres::MagresData &m_data;
    const Magres::NuclearProperties &m_properties;
    std::unique_ptr<Ui::WMagresQuadIsoDialog> m_ui;
};
