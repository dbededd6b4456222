// SPDX-License-Identifier: BSD-3-Clause
#include "ui/WMagresDialog.h"

#include "ui/SpinBoxNumber.h"
#include "ui_WMagresDialog.h"

#include <QGuiApplication>
#include <QSettings>

namespace {

const QString positionKey = QStringLiteral("magresPlugin/dialogPos");

/// The form with its widgets made.
std::unique_ptr<Ui::WMagresDialog> makeForm(QDialog *dialog)
{
    auto form = std::make_unique<Ui::WMagresDialog>();
    form->setupUi(dialog);
    return form;
}

/// The backgrounds of the group boxes are light under every palette, so the texts on them have to be dark. Widgets
/// below a style sheet do not inherit palettes, so each gets its own.
void setDarkText(QGroupBox *box)
{
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::black);
    box->setPalette(palette);
    for (QLabel *label : box->findChildren<QLabel *>())
        label->setPalette(palette);
    for (QCheckBox *checkBox : box->findChildren<QCheckBox *>())
        checkBox->setPalette(palette);
}

bool isProton(const QComboBox *nucleus)
{
    return nucleus->currentText() == QLatin1String("1H") || nucleus->currentText() == QLatin1String("2H");
}

bool hasSecondOrderShift(const QString &nucleus)
{
    return nucleus == QLatin1String("2H") || nucleus == QLatin1String("6Li") || nucleus == QLatin1String("14N");
}

void selectIfValid(QComboBox *combo, int index)
{
    if (index >= 0 && index < combo->count())
        combo->setCurrentIndex(index);
}

void selectPoints(QComboBox *combo, qint32 points, int dimension)
{
    combo->setCurrentIndex(combo->findData(Magres::offeredPointCount(points, dimension)));
}

} // namespace

WMagresDialog::WMagresDialog(const Magres::MagresData &magresData, Magres::MagresSpecParams &parameters,
                             const Magres::NuclearProperties &properties, QWidget *parent)
    : QDialog(parent),
      m_data(magresData),
      m_parameters(parameters),
      m_properties(properties),
      m_ui(makeForm(this)),
      m_frequency(new Magres::SpinBoxNumber(m_ui->fSpSfrq)),
      m_f2{.index = 0,
           .from = new Magres::SpinBoxNumber(m_ui->fSpFromF2),
           .to = new Magres::SpinBoxNumber(m_ui->fSpToF2),
           .reference = new Magres::SpinBoxNumber(m_ui->fSpCSRefF2),
           .slope = new Magres::SpinBoxNumber(m_ui->fSpCSSlopeF2),
           .lineWidth = new Magres::SpinBoxNumber(m_ui->fSpLwF2),
           .points = m_ui->fCbPtsF2,
           .nucleus = m_ui->fCbNucF2,
           .quadShift = m_ui->fCbQShiftF2,
           .hint = m_ui->fLbSpecHintF2,
           .rangeIsUsers = &Magres::MagresSpecParams::RangeF2User,
           .inData = {}},
      m_f1{.index = 1,
           .from = new Magres::SpinBoxNumber(m_ui->fSpFromF1),
           .to = new Magres::SpinBoxNumber(m_ui->fSpToF1),
           .reference = new Magres::SpinBoxNumber(m_ui->fSpCSRefF1),
           .slope = new Magres::SpinBoxNumber(m_ui->fSpCSSlopeF1),
           .lineWidth = new Magres::SpinBoxNumber(m_ui->fSpLwF1),
           .points = m_ui->fCbPtsF1,
           .nucleus = m_ui->fCbNucF1,
           .quadShift = m_ui->fCbQShiftF1,
           .hint = m_ui->fLbSpecHintF1,
           .rangeIsUsers = &Magres::MagresSpecParams::RangeF1User,
           .inData = {}}
{
    setDarkText(m_ui->fGbF2);
    setDarkText(m_ui->fGbF1);
    QGuiApplication::restoreOverrideCursor(); // the caller may be waiting
    restorePosition();
    fillLists();
    fillFromRecord();
    connectSignals();
}

WMagresDialog::~WMagresDialog()
{
    QSettings().setValue(positionKey, m_closedAt.value_or(geometry().topLeft()));
}

void WMagresDialog::done(int result)
{
    m_closedAt = geometry().topLeft(); // a hidden window may be somewhere else
    QDialog::done(result);
}

bool WMagresDialog::isTwoD() const
{
    return m_ui->fCbDims->currentIndex() == int(Magres::SpectrumKind::TwoD);
}

void WMagresDialog::restorePosition()
{
    const QPoint position = QSettings().value(positionKey, QPoint(0, 0)).toPoint();
    // Without the frame, whose size is not known before the window is shown: a dialog that opens off by the height of
    // its title bar climbs a little each time. The layout sets the size anew.
    if (QGuiApplication::screenAt(position) && !position.isNull())
        setGeometry(QRect(position, size()));
}

void WMagresDialog::fillLists()
{
    const QStringList nuclei = Magres::observableNuclei(m_data);
    const QList<qint32> counts = Magres::offeredPointCounts();
    for (const Dimension *dimension : {&m_f2, &m_f1}) {
        dimension->nucleus->addItems(nuclei);
        for (qint32 count : counts)
            dimension->points->addItem(QString::number(count), count);
    }
    m_ui->fCbCorr->setItemData(0, int(Magres::CorrelationMode::StrongestDipolar));
    m_ui->fCbCorr->setItemData(1, int(Magres::CorrelationMode::RssDipolar));
}

void WMagresDialog::fillFromRecord()
{
    const bool userF2 = Magres::hasUserRange(m_parameters, m_f2.index);
    const bool userF1 = Magres::hasUserRange(m_parameters, m_f1.index);

    selectIfValid(m_ui->fCbDims, m_parameters.specType);
    selectIfValid(m_ui->fCbAv, m_parameters.avIdx);
    const QStringList nuclei = Magres::observableNuclei(m_data);
    // The ranges that come with the nuclei need frequency and quadrupolar shift.
    m_frequency->setValue(Magres::protonFrequency(m_parameters));
    for (Dimension *dimension : {&m_f2, &m_f1}) {
        dimension->nucleus->setCurrentText(Magres::offeredNucleus(m_parameters, dimension->index, nuclei));
        dimension->quadShift->setChecked(m_parameters.quadShift(dimension->index));
    }
    onNucChangedF2();
    onNucChangedF1();
    selectPoints(m_ui->fCbPtsF1, m_parameters.ptsF1, m_f1.index);
    selectIfValid(m_ui->fCbCorr, m_parameters.corr);
    onDimsChanged();

    if (userF2)
        showRange(m_f2, m_parameters.RangeF2, true);
    if (userF1)
        showRange(m_f1, m_parameters.RangeF1, true);
}

void WMagresDialog::showRange(const Dimension &dimension, const std::array<double, 2> &range, bool isUsers)
{
    dimension.from->setValueWithin(range[0], -Magres::maximumDisplayShift, Magres::maximumDisplayShift);
    dimension.to->setValueWithin(range[1], -Magres::maximumDisplayShift, Magres::maximumDisplayShift);
    m_parameters.*dimension.rangeIsUsers = isUsers;
}

void WMagresDialog::connectSignals()
{
    connect(m_frequency, &Magres::SpinBoxNumber::edited, this, &WMagresDialog::updateRangeF2);
    connect(m_frequency, &Magres::SpinBoxNumber::edited, this, &WMagresDialog::updateRangeF1);
    connect(m_ui->fCbDims, &QComboBox::currentIndexChanged, this, &WMagresDialog::onDimsChanged);
    connect(m_f2.nucleus, &QComboBox::currentIndexChanged, this, &WMagresDialog::onNucChangedF2);
    connect(m_f1.nucleus, &QComboBox::currentIndexChanged, this, &WMagresDialog::onNucChangedF1);
    for (const Dimension *dimension : {&m_f2, &m_f1}) {
        const auto update = dimension == &m_f2 ? &WMagresDialog::updateRangeF2 : &WMagresDialog::updateRangeF1;
        connect(dimension->reference, &Magres::SpinBoxNumber::edited, this, update);
        connect(dimension->slope, &Magres::SpinBoxNumber::edited, this, update);
        connect(dimension->quadShift, &QCheckBox::toggled, this, update);
        const auto markRange = [this, dimension] { m_parameters.*dimension->rangeIsUsers = true; };
        connect(dimension->from, &Magres::SpinBoxNumber::edited, this, markRange);
        connect(dimension->to, &Magres::SpinBoxNumber::edited, this, markRange);
    }
}

void WMagresDialog::updateRangeF2()
{
    updateRange(m_f2);
}

void WMagresDialog::updateRangeF1()
{
    updateRange(m_f1);
}

void WMagresDialog::updateRange(const Dimension &dimension)
{
    const Magres::ShiftRange inData = dimension.inData->range(dimension.reference->value(), dimension.slope->value(),
                                                              dimension.quadShift->isChecked(), m_frequency->value());
    dimension.hint->setText(tr("Range in data: %1 / %2 ppm").arg(inData.lo, 0, 'f', 1).arg(inData.hi, 0, 'f', 1));
    showRange(dimension, Magres::displayRange(inData), false);
}

void WMagresDialog::onDimsChanged()
{
    const bool twoD = isTwoD();
    m_ui->fGbF1->setVisible(twoD);
    m_ui->fGbF2->setTitle(twoD ? tr("Direct dimension") : tr("Spectrum parameters"));
    selectPoints(m_ui->fCbPtsF2, twoD ? m_parameters.ptsF2 : m_parameters.pts, m_f2.index);
    updateAveraging();
}

void WMagresDialog::onNucChangedF2()
{
    onNucChanged(m_f2);
}

void WMagresDialog::onNucChangedF1()
{
    onNucChanged(m_f1);
}

void WMagresDialog::onNucChanged(Dimension &dimension)
{
    const QString nucleus = dimension.nucleus->currentText();
    dimension.inData.emplace(m_data, nucleus.toLatin1(), m_properties);
    dimension.reference->setValue(m_parameters.referenceOf(nucleus));
    dimension.slope->setValue(m_parameters.slopeOf(nucleus));
    dimension.lineWidth->setValue(m_parameters.lineWidthOf(nucleus, dimension.index));
    dimension.quadShift->setVisible(hasSecondOrderShift(nucleus));
    updateRange(dimension);
    updateAveraging();
}

void WMagresDialog::updateAveraging()
{
    m_ui->fCbAv->setEnabled(isProton(m_f2.nucleus) || (isTwoD() && isProton(m_f1.nucleus)));
}

Magres::DimensionParameters WMagresDialog::chosen(const Dimension &dimension) const
{
    return {dimension.nucleus->currentText(),
            dimension.reference->value(),
            dimension.slope->value(),
            dimension.lineWidth->value(),
            dimension.quadShift->isChecked(),
            dimension.points->currentData().toInt(),
            {dimension.from->value(), dimension.to->value()}};
}

void WMagresDialog::copyToRecord()
{
    m_parameters.freq = m_frequency->value();
    m_parameters.specType = m_ui->fCbDims->currentIndex();
    Magres::storeDimension(chosen(m_f2), m_f2.index, m_parameters);
    m_parameters.avIdx = m_ui->fCbAv->currentIndex();
    if (!isTwoD())
        return;
    // Last, so that the numbers of the indirect dimension are kept where both dimensions have one nucleus.
    Magres::storeDimension(chosen(m_f1), m_f1.index, m_parameters);
    m_parameters.corr = m_ui->fCbCorr->currentData().toInt();
}

#include "moc_WMagresDialog.cpp"
