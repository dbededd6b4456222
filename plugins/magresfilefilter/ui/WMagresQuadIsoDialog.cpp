// SPDX-License-Identifier: BSD-3-Clause
#include "ui/WMagresQuadIsoDialog.h"

#include "parameters/Nuclei.h"
#include "ui_WMagresQuadIsoDialog.h"

WMagresQuadIsoDialog::WMagresQuadIsoDialog(const Magres::MagresData &magresData,
                                           const Magres::NuclearProperties &properties, QWidget *parent)
    : QDialog(parent), m_data(magresData), m_properties(properties), m_ui(std::make_unique<Ui::WMagresQuadIsoDialog>())
{
    m_ui->setupUi(this);
    for (const QByteArray &element : Magres::elements(m_data))
        if (!Magres::quadrupolarIsotopes(element, m_properties).isEmpty())
            m_ui->fCbEl->addItem(QString::fromLatin1(element));
    connect(m_ui->fCbEl, &QComboBox::currentTextChanged, this, &WMagresQuadIsoDialog::elementChanged);
    m_ui->fCbEl->setCurrentIndex(0);
    elementChanged(m_ui->fCbEl->currentText());
}

WMagresQuadIsoDialog::~WMagresQuadIsoDialog() = default;

QString WMagresQuadIsoDialog::currentElement() const
{
    return m_ui->fCbEl->currentText();
}

QString WMagresQuadIsoDialog::currentIsotope() const
{
    return m_ui->fCbIso->currentText();
}

void WMagresQuadIsoDialog::elementChanged(const QString &element)
{
    const QByteArray symbol = element.toLatin1();
    m_ui->fCbIso->clear();
    for (const QByteArray &isotope : Magres::quadrupolarIsotopes(symbol, m_properties))
        m_ui->fCbIso->addItem(QString::fromLatin1(isotope));
    QString shown = m_data.QIso.value(element).toString();
    if (shown.isEmpty())
        shown = QString::fromLatin1(Magres::defaultQuadrupolarIsotope(symbol, m_properties));
    if (const int index = m_ui->fCbIso->findText(shown); index >= 0)
        m_ui->fCbIso->setCurrentIndex(index);
}

#include "moc_WMagresQuadIsoDialog.cpp"
