// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/ContourLevelsDialog.h"

#include "items/NumberBox.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

namespace Workbench {

ContourLevelsDialog::ContourLevelsDialog(const ContourLevels &levels, QWidget *parent)
    : QDialog(parent), m_lowest(new NumberBox), m_factor(new NumberBox), m_count(new QSpinBox)
{
    setWindowTitle(tr("Contour levels"));
    m_lowest->setObjectName(QStringLiteral("lowestLevel"));
    m_lowest->setRange(0.001, 99);
    m_lowest->setDecimals(3);
    m_lowest->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    m_lowest->setSuffix(tr(" % of the maximum"));
    m_factor->setObjectName(QStringLiteral("levelFactor"));
    m_factor->setRange(1.05, 10);
    m_factor->setSingleStep(0.1);
    m_count->setObjectName(QStringLiteral("levelCount"));
    m_count->setRange(1, 50);
    setLevels(levels);

    auto *buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::RestoreDefaults);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    auto *layout = new QFormLayout(this);
    layout->addRow(tr("&Lowest level:"), m_lowest);
    layout->addRow(tr("&Factor between levels:"), m_factor);
    layout->addRow(tr("&Number of levels:"), m_count);
    layout->addRow(buttons);

    const auto tell = [this] { Q_EMIT changed({m_lowest->value() / 100, m_factor->value(), m_count->value()}); };
    connect(m_lowest, &QDoubleSpinBox::valueChanged, this, tell);
    connect(m_factor, &QDoubleSpinBox::valueChanged, this, tell);
    connect(m_count, &QSpinBox::valueChanged, this, tell);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            [this] { setLevels(ContourLevels()); });
}

void ContourLevelsDialog::setLevels(const ContourLevels &levels)
{
    m_lowest->setValue(levels.lowest * 100);
    m_factor->setValue(levels.factor);
    m_count->setValue(levels.count);
}

} // namespace Workbench

#include "moc_ContourLevelsDialog.cpp"
