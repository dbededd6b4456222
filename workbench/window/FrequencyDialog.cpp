// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/FrequencyDialog.h"

#include "data/Nuclides.h"
#include "formats/SpectrumReader.h"
#include "items/NumberBox.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

constexpr double highestField = 3000; // MHz of 1H

QDoubleSpinBox *megahertzBox(const char *name, int decimals)
{
    auto *box = new NumberBox;
    box->setObjectName(QLatin1String(name));
    box->setRange(0, highestField);
    box->setDecimals(decimals);
    box->setSuffix(QStringLiteral(" MHz"));
    box->setSpecialValueText(FrequencyDialog::tr("not known"));
    return box;
}

/// First and last position as the file has them, in Hz, with the nucleus that it names. Nothing where it cannot be
/// read.
struct RawPositions {
    double first = 0;
    double last = 0;
    QString nucleus;
};

std::optional<RawPositions> rawPositions(const QString &path, const FrequencyNeeded &needed)
{
    ReadOptions plain;
    plain.dimensions = needed.dimensions;
    if (!needed.unitKnown)
        plain.unit = QStringLiteral("Hz");
    plain.frequency = {1, 1}; // Hz are left as they are
    try {
        const Measurement measurement = readMeasurement(path, plain);
        if (const auto *spectrum = std::get_if<ExperimentalSpectrum>(&measurement)) {
            const SpectrumDimension &axis = spectrum->dimensions.front();
            return RawPositions{axis.first, axis.ppm(axis.points - 1), axis.nucleus};
        }
        const auto &list = std::get<MeasuredPeaks>(measurement);
        const auto [low, high] = std::minmax_element(list.peaks.begin(), list.peaks.end(),
                                                     [](const auto &a, const auto &b) { return a.f2 < b.f2; });
        if (low != list.peaks.end())
            return RawPositions{high->f2, low->f2, list.nuclei[0]};
    } catch (const std::exception &) {
        // What is wrong with it is told when it is read.
    }
    return std::nullopt;
}

} // namespace

FrequencyDialog::FrequencyDialog(const QString &path, const FrequencyNeeded &needed, const Proposal &proposal,
                                 QWidget *parent)
    : QDialog(parent),
      m_path(path),
      m_unitKnown(needed.unitKnown),
      m_unit(new QComboBox),
      m_nucleus(createNucleusBox("nucleus")),
      m_nucleusF1(needed.dimensions > 1 ? createNucleusBox("nucleusF1") : nullptr),
      m_proton(megahertzBox("protonFrequency", 4)),
      m_frequency(megahertzBox("frequency", 6)),
      m_range(new QLabel)
{
    setWindowTitle(tr("Frequency of the spectrum"));
    auto *question = new QLabel(tr("The positions in %1 are frequencies. Of which nucleus is it, and what is the "
                                   "frequency of 0 ppm?")
                                    .arg(QFileInfo(path).fileName()));
    question->setWordWrap(true);
    m_range->setObjectName(QStringLiteral("range"));
    m_range->setWordWrap(true);
    m_range->setMinimumHeight(2 * fontMetrics().lineSpacing());
    m_proton->setToolTip(tr("What the spectrometer is called by: the frequency of 1H"));
    m_frequency->setToolTip(tr("Hz divided by this are ppm. Follows from the nucleus and the spectrometer, and can be "
                               "given to the last digit"));
    fillUnits();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    m_ok = buttons->button(QDialogButtonBox::Ok);
    auto *layout = new QFormLayout(this);
    layout->addRow(question);
    if (!m_unitKnown)
        layout->addRow(tr("&Unit:"), m_unit);
    layout->addRow(m_nucleusF1 ? tr("&Nucleus of F2:") : tr("&Nucleus:"), m_nucleus);
    if (m_nucleusF1)
        layout->addRow(tr("Nucleus of F&1:"), m_nucleusF1);
    layout->addRow(tr("&Spectrometer (1H):"), m_proton);
    layout->addRow(tr("&0 ppm at:"), m_frequency);
    layout->addRow(m_range);
    layout->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_nucleus, &QComboBox::currentIndexChanged, this, &FrequencyDialog::updateFrequency);
    connect(m_proton, &QDoubleSpinBox::valueChanged, this, &FrequencyDialog::updateFrequency);
    connect(m_frequency, &QDoubleSpinBox::valueChanged, this, &FrequencyDialog::updateProtonFrequency);
    connect(m_unit, &QComboBox::currentIndexChanged, this, &FrequencyDialog::showRange);
    if (m_nucleusF1)
        connect(m_nucleusF1, &QComboBox::currentIndexChanged, this, &FrequencyDialog::showRange);

    Proposal likely = proposal;
    if (const auto positions = rawPositions(path, needed)) {
        m_hertz = {positions->first, positions->last};
        if (!positions->nucleus.isEmpty())
            likely.nucleus = positions->nucleus;
    }
    propose(likely);
}

QComboBox *FrequencyDialog::createNucleusBox(const char *name)
{
    auto *box = new QComboBox;
    box->setObjectName(QLatin1String(name));
    const QStringList usual{QStringLiteral("1H"),   QStringLiteral("13C"),  QStringLiteral("15N"),
                            QStringLiteral("17O"),  QStringLiteral("19F"),  QStringLiteral("23Na"),
                            QStringLiteral("27Al"), QStringLiteral("29Si"), QStringLiteral("31P")};
    box->addItem(tr("choose"));
    box->addItems(usual);
    box->insertSeparator(box->count());
    for (const QString &nucleus : Nuclides::table().names()) {
        if (!usual.contains(nucleus))
            box->addItem(nucleus);
    }
    return box;
}

void FrequencyDialog::fillUnits()
{
    m_unit->setObjectName(QStringLiteral("unit"));
    m_unit->addItems({QStringLiteral("Hz"), QStringLiteral("kHz"), QStringLiteral("ppm")});
    m_unit->setVisible(!m_unitKnown);
    if (m_unitKnown)
        m_unit->setParent(this);
}

void FrequencyDialog::propose(const Proposal &proposal)
{
    // The file's name may say more than what lies beside it.
    const QStringList named = Nuclides::table().namedIn(QFileInfo(m_path).fileName());
    const auto choose = [](QComboBox *box, const QString &nucleus) {
        // The separator has no text either.
        box->setCurrentIndex(nucleus.isEmpty() ? 0 : std::max(0, box->findText(nucleus)));
    };
    choose(m_nucleus, named.isEmpty() ? proposal.nucleus : named.constFirst());
    if (m_nucleusF1)
        choose(m_nucleusF1, named.value(1));
    m_proton->setValue(proposal.protonFrequency);
    updateFrequency();
    (m_nucleus->currentIndex() == 0 ? static_cast<QWidget *>(m_nucleus) : m_proton)->setFocus();
    if (m_nucleus->currentIndex() > 0)
        m_proton->selectAll();
}

double FrequencyDialog::frequencyOf(const QComboBox *nucleus) const
{
    return m_proton->value() * std::abs(Nuclides::table()[nucleus->currentText()].frequencyRatio) / 100;
}

void FrequencyDialog::updateFrequency()
{
    const QSignalBlocker blocked(m_frequency);
    if (m_proton->value() > 0)
        m_frequency->setValue(frequencyOf(m_nucleus));
    showRange();
}

void FrequencyDialog::updateProtonFrequency()
{
    const QSignalBlocker blocked(m_proton);
    const double ratio = std::abs(Nuclides::table()[m_nucleus->currentText()].frequencyRatio);
    if (ratio > 0)
        m_proton->setValue(m_frequency->value() * 100 / ratio);
    showRange();
}

void FrequencyDialog::showRange()
{
    const bool isPpm = !m_unitKnown && m_unit->currentText() == u"ppm";
    const bool known = m_nucleus->currentIndex() > 0 && m_frequency->value() > 0
        && (!m_nucleusF1 || (m_nucleusF1->currentIndex() > 0 && frequencyOf(m_nucleusF1) > 0));
    m_frequency->setEnabled(!isPpm);
    m_proton->setEnabled(!isPpm);
    m_ok->setEnabled(known || isPpm);
    m_ok->setToolTip(m_ok->isEnabled() ? QString() : tr("The nucleus and a frequency are needed"));
    if (!m_ok->isEnabled() || !m_hertz) {
        m_range->setText(m_ok->isEnabled() ? QString() : m_ok->toolTip());
        return;
    }
    const double unit = m_unit->currentText() == u"kHz" && !m_unitKnown ? 1000 : 1;
    const double perPpm = isPpm ? 1 : m_frequency->value() / unit;
    m_range->setText(
        tr("The positions go from %1 to %2 ppm.")
            .arg(QString::number(m_hertz->first / perPpm, 'f', 2), QString::number(m_hertz->second / perPpm, 'f', 2)));
}

ReadOptions FrequencyDialog::readOptions() const
{
    ReadOptions options;
    if (!m_unitKnown)
        options.unit = m_unit->currentText();
    options.frequency = {m_frequency->value(), m_nucleusF1 ? frequencyOf(m_nucleusF1) : m_frequency->value()};
    return options;
}

QStringList FrequencyDialog::nuclei() const
{
    QStringList nuclei;
    for (const QComboBox *box : {m_nucleus, m_nucleusF1}) {
        if (box)
            nuclei.append(box->currentIndex() > 0 ? box->currentText() : QString());
    }
    return nuclei;
}

double FrequencyDialog::protonFrequency() const
{
    return m_proton->value();
}

} // namespace Workbench

#include "moc_FrequencyDialog.cpp"
#include "items/NumberBox.h"
