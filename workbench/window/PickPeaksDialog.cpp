// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/PickPeaksDialog.h"

#include "formats/ExperimentFile.h"
#include "analysis/PeakPicking.h"
#include "items/NumberBox.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>

namespace Workbench {

PickPeaksDialog::PickPeaksDialog(const NmrData &stack, const QUuid &entry, QWidget *parent)
    : QDialog(parent),
      m_spectrum(stack.spectrum(entry)),
      m_simulated(stack.spectrum(stack.simulatedEntry()).peaks),
      m_noise(new NumberBox),
      m_height(new NumberBox),
      m_distance(new NumberBox),
      m_countSites(new QCheckBox(tr("&Count equivalent sites as the simulated spectrum does"))),
      m_result(new QLabel)
{
    setWindowTitle(tr("Pick peaks"));
    createInputs();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    auto *layout = new QFormLayout(this);
    layout->addRow(tr("Spectrum:"), new QLabel(stack.entryName(entry)));
    layout->addRow(tr("Above the &noise:"), m_noise);
    layout->addRow(tr("Least &height:"), m_height);
    layout->addRow(tr("Least &distance:"), m_distance);
    layout->addRow(m_countSites);
    layout->addRow(m_result);
    layout->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    for (QDoubleSpinBox *box : {m_noise, m_height, m_distance})
        connect(box, &QDoubleSpinBox::valueChanged, this, &PickPeaksDialog::pick);
    connect(m_countSites, &QCheckBox::toggled, this, &PickPeaksDialog::pick);
}

void PickPeaksDialog::createInputs()
{
    const PeakPicking::Options usual;
    m_noise->setObjectName(QStringLiteral("noiseFactor"));
    m_noise->setRange(1, 1000);
    m_noise->setDecimals(1);
    m_noise->setSuffix(tr(" standard deviations"));
    m_noise->setValue(usual.noiseFactor);
    m_height->setObjectName(QStringLiteral("leastHeight"));
    m_height->setRange(0, 100);
    m_height->setDecimals(2);
    m_height->setSuffix(tr(" % of the highest peak"));
    m_height->setValue(100 * usual.leastHeight);
    m_distance->setObjectName(QStringLiteral("leastDistance"));
    m_distance->setRange(0, 1e6);
    m_distance->setDecimals(0);
    m_distance->setSuffix(tr(" points"));
    m_distance->setValue(usual.leastDistance);
    m_countSites->setObjectName(QStringLiteral("countSites"));
    m_countSites->setVisible(m_spectrum.dimensions() == 1 && !m_simulated.isEmpty());
    m_countSites->setChecked(m_spectrum.dimensions() == 1);
    m_result->setObjectName(QStringLiteral("result"));
}

void PickPeaksDialog::pick()
{
    const PeakPicking::Options options{m_noise->value(), m_height->value() / 100, m_distance->value()};
    const auto &axes = m_spectrum.axes;
    m_peaks.clear();
    if (axes.size() == 2) {
        for (const PeakPicking::Peak2D &peak : PeakPicking::pick2D(m_spectrum.real(), axes[0].size, options))
            m_peaks.push_back({axes[0].ppm(peak.column), axes[1].ppm(peak.row), peak.height});
    } else if (axes.size() == 1) {
        for (const PeakPicking::Peak &peak : PeakPicking::pick(m_spectrum.real(), options))
            m_peaks.push_back({axes[0].ppm(peak.point), 0.0, peak.height});
    }
    QList<QPointF> places;
    for (const PeakListFile::Peak &peak : m_peaks)
        places.append({peak.f2, peak.f1});
    const size_t positions = m_peaks.size();
    if (m_countSites->isChecked())
        m_peaks = ExperimentFile::countedLike(m_simulated, std::move(m_peaks));
    m_result->setText(tr("Positions found: %1\nNumber of peaks: %2 measured, %3 simulated")
                          .arg(positions)
                          .arg(m_peaks.size())
                          .arg(m_simulated.size()));
    Q_EMIT picked(places);
}

QVariantMap PickPeaksDialog::peakMap() const
{
    return PeakListFile::toPeakMap(m_peaks);
}

} // namespace Workbench

#include "moc_PickPeaksDialog.cpp"
#include "items/NumberBox.h"
