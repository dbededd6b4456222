// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/PowderDialog.h"

#include "data/Nuclides.h"
#include "items/NumberBox.h"
#include "items/plot/NmrPlot.h"
#include "window/Progress.h"
#include "window/compare/ReferenceSets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QSplitter>

#include <algorithm>

namespace Workbench {

namespace {

constexpr int pause = 120; // ms after the last change
constexpr int previewPatience = 1500; // ms for a preview
constexpr int previewPoints = 2048;

/// NMR nuclei of the structure's elements whose spectra can be computed.
QStringList nucleiOf(const CrystalStructure &structure)
{
    QStringList nuclei;
    for (const auto &[element, count] : structure.composition()) {
        for (const QString &nucleus : Nuclides::table().isotopes(element)) {
            if (Nuclides::table()[nucleus].larmorFrequency(1) > 0)
                nuclei.append(nucleus);
        }
    }
    return nuclei;
}

QString withError(const Powder::FittedValue &fitted, double value, int decimals)
{
    return fitted.error > 0 ? QStringLiteral("%1 ± %2").arg(value, 0, 'f', decimals).arg(fitted.error, 0, 'g', 2)
                            : QString::number(value, 'f', decimals);
}

} // namespace

PowderDialog::PowderDialog(const CrystalStructure &structure, const PowderSettings &settings,
                           std::vector<ExperimentalSpectrum> measured, QWidget *parent)
    : QDialog(parent),
      m_structure(structure),
      m_unique(UniqueSites::of(structure, {})),
      m_settings(settings),
      m_measured(std::move(measured)),
      m_nucleus(new QComboBox),
      m_rotation(new QComboBox),
      m_automatic(new QCheckBox(tr("All a&bove 0.1 % of the highest point"))),
      m_from(new NumberBox),
      m_to(new NumberBox),
      m_siteList(new QListWidget),
      m_siteCurves(new QCheckBox(tr("C&urves of the sites beside their sum"))),
      m_measurement(new QComboBox),
      m_fitScale(new QCheckBox(tr("One &factor on all Cq as well"))),
      m_fit(new QPushButton(tr("Fit t&o Measurement"))),
      m_fitResult(new QLabel),
      m_notes(new QLabel),
      m_plot(new NmrPlot(&m_shown))
{
    setWindowTitle(tr("Powder Spectrum"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    m_ok = buttons->button(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &PowderDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    m_notes->setObjectName(QStringLiteral("notes"));
    m_notes->setWordWrap(true);
    m_notes->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_notes->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto *notes = new QScrollArea;
    notes->setWidget(m_notes);
    notes->setWidgetResizable(true);
    notes->setFrameShape(QFrame::NoFrame);
    notes->setMaximumHeight(5 * fontMetrics().lineSpacing());
    notes->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto *right = new QWidget;
    auto *rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    m_plot->setMinimumSize(260, 160);
    // On a page the item below paints the paper.
    m_plot->setAttribute(Qt::WA_OpaquePaintEvent, false);
    m_plot->setAutoFillBackground(true);
    QPalette paper = m_plot->palette();
    paper.setColor(QPalette::Window, Qt::white);
    m_plot->setPalette(paper);
    rightLayout->addWidget(m_plot, 1);
    rightLayout->addWidget(notes);

    auto *both = new QSplitter;
    both->addWidget(createInputs());
    both->addWidget(right);
    both->setStretchFactor(1, 1);
    both->setChildrenCollapsible(false);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(both, 1);
    layout->addWidget(buttons);
    resize(QSize(1040, 600).boundedTo(screen()->availableSize() - QSize(20, 60)));

    m_timer.setSingleShot(true);
    m_timer.setInterval(pause);
    connect(&m_timer, &QTimer::timeout, this, &PowderDialog::updatePreview);
    showNumbers();
    fillSites();
    updatePreview();
}

QDoubleSpinBox *PowderDialog::addNumber(QFormLayout *form, const QString &label, const QString &name, double low,
                                        double high, int decimals, const QString &suffix, double *value)
{
    auto *box = new NumberBox;
    box->setObjectName(name);
    box->setDecimals(decimals);
    box->setRange(low, high);
    box->setSuffix(suffix);
    box->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    form->addRow(label, box);
    m_numbers.push_back({box, value});
    connect(box, &QDoubleSpinBox::valueChanged, this, [this, value](double now) {
        *value = now;
        changed();
    });
    return box;
}

void PowderDialog::addRotation(QFormLayout *form)
{
    m_rotation->setObjectName(QStringLiteral("rotation"));
    // In the order of Powder::Rotation.
    m_rotation->addItems({tr("Static"), tr("Magic angle, at a rate"), tr("Magic angle, infinitely fast")});
    m_rotation->setCurrentIndex(int(m_settings.rotation));
    form->addRow(tr("S&pinning:"), m_rotation);
    if (!(m_settings.rate > 0))
        m_settings.rate = 20000;
    m_rate = addNumber(form, tr("R&ate:"), QStringLiteral("rate"), 100, 1e6, 0, tr(" Hz"), &m_settings.rate);
    m_rate->setEnabled(m_settings.rotation == Powder::Rotation::MagicAngle);
    connect(m_rotation, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_settings.rotation = Powder::Rotation(index);
        m_rate->setEnabled(m_settings.rotation == Powder::Rotation::MagicAngle);
        changed();
    });
}

void PowderDialog::addAxis(QFormLayout *form)
{
    auto *points = new QSpinBox;
    points->setObjectName(QStringLiteral("points"));
    points->setRange(2, int(Powder::mostPoints));
    points->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    points->setValue(m_settings.points);
    form->addRow(tr("Po&ints:"), points);
    // The preview has a number of its own.
    connect(points, &QSpinBox::valueChanged, this, [this](int now) {
        m_settings.points = now;
        changed();
    });

    m_automatic->setObjectName(QStringLiteral("automaticRange"));
    m_automatic->setChecked(!m_settings.range);
    m_from->setObjectName(QStringLiteral("rangeFrom"));
    m_to->setObjectName(QStringLiteral("rangeTo"));
    auto *ends = new QHBoxLayout;
    const auto take = [this] { m_settings.range = {m_from->value(), m_to->value()}; };
    for (QDoubleSpinBox *end : {m_from, m_to}) {
        end->setDecimals(3);
        end->setRange(-999999, 999999);
        end->setSuffix(tr(" ppm"));
        end->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
        end->setEnabled(m_settings.range.has_value());
        ends->addWidget(end, 1);
        connect(end, &QDoubleSpinBox::valueChanged, this, [this, take] {
            take();
            changed();
        });
    }
    ends->insertWidget(1, new QLabel(tr("to")));
    connect(m_automatic, &QCheckBox::toggled, this, [this, take](bool automatic) {
        m_from->setEnabled(!automatic);
        m_to->setEnabled(!automatic);
        if (automatic)
            m_settings.range.reset();
        else
            take();
        changed();
    });
    auto *label = new QLabel(tr("Rang&e:"));
    label->setBuddy(m_from);
    form->addRow(label, ends);
    form->addRow(QString(), m_automatic);
    if (m_settings.range)
        showRange({m_settings.range->first, m_settings.range->second, 2});
}

void PowderDialog::showRange(const Powder::Axis &axis)
{
    const QSignalBlocker from(m_from), to(m_to);
    m_from->setValue(axis.first);
    m_to->setValue(axis.last);
}

void PowderDialog::addFit(QFormLayout *form)
{
    m_measurement->setObjectName(QStringLiteral("measurement"));
    m_measurement->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_measurement->setMinimumContentsLength(12);
    for (const ExperimentalSpectrum &spectrum : m_measured)
        m_measurement->addItem(spectrum.title);
    m_fitScale->setObjectName(QStringLiteral("fitScale"));
    m_fit->setObjectName(QStringLiteral("fit"));
    m_fitResult->setObjectName(QStringLiteral("fitResult"));
    m_fitResult->setWordWrap(true);
    m_fitResult->hide();
    connect(m_measurement, &QComboBox::currentIndexChanged, this, &PowderDialog::changed);
    connect(m_fit, &QPushButton::clicked, this, &PowderDialog::fit);
    if (m_measured.empty()) {
        for (QWidget *widget : {static_cast<QWidget *>(m_measurement), static_cast<QWidget *>(m_fitScale),
                                static_cast<QWidget *>(m_fit), static_cast<QWidget *>(m_fitResult)})
            widget->setParent(this);
        m_measurement->hide();
        m_fitScale->hide();
        m_fit->hide();
        return;
    }
    m_fit->setToolTip(tr("Moves the reference and the line widths that are not 0 to the least squares of the measured "
                         "curve"));
    form->addRow(tr("&Measured:"), m_measurement);
    form->addRow(m_fitScale);
    form->addRow(m_fit);
    form->addRow(m_fitResult);
}

QWidget *PowderDialog::createInputs()
{
    const QStringList nuclei = nucleiOf(m_structure);
    m_nucleus->setObjectName(QStringLiteral("nucleus"));
    m_nucleus->addItems(nuclei);
    if (!nuclei.contains(m_settings.nucleus))
        takeNucleus(nuclei.value(0));
    m_nucleus->setCurrentText(m_settings.nucleus);
    connect(m_nucleus, &QComboBox::currentTextChanged, this, &PowderDialog::chooseNucleus);

    auto *inputs = new QWidget;
    auto *form = new QFormLayout(inputs);
    form->setContentsMargins(0, 0, 6, 0);
    form->addRow(tr("&Nucleus:"), m_nucleus);
    addNumber(form, tr("1&H frequency:"), QStringLiteral("frequency"), 1, 1e4, 2, tr(" MHz"),
              &m_settings.protonFrequency);
    addRotation(form);
    addNumber(form, tr("&Reference:"), QStringLiteral("reference"), -1e5, 1e5, 3, tr(" ppm"), &m_settings.reference);
    addNumber(form, tr("S&lope:"), QStringLiteral("slope"), -100, 100, 4, {}, &m_settings.slope);
    addNumber(form, tr("Fa&ctor on Cq:"), QStringLiteral("scale"), 0.01, 100, 4, {}, &m_settings.couplingScale);
    addNumber(form, tr("Loren&tzian:"), QStringLiteral("lorentzian"), 0, 1e6, 1, tr(" Hz"),
              &m_settings.shape.lorentzian);
    addNumber(form, tr("&Gaussian:"), QStringLiteral("gaussian"), 0, 1e6, 1, tr(" Hz"), &m_settings.shape.gaussian);
    addAxis(form);
    m_siteList->setObjectName(QStringLiteral("sites"));
    m_siteList->setMinimumWidth(fontMetrics().horizontalAdvance(tr("O12 ×12: -1234.5 ppm, Cq -12.345 MHz, η 0.00"))
                                + 48);
    m_siteList->setMinimumHeight(4 * fontMetrics().lineSpacing());
    // What the others leave, but no more: the result of a fit has to show below its button.
    QSizePolicy rest(QSizePolicy::Preferred, QSizePolicy::Ignored);
    rest.setVerticalStretch(1);
    m_siteList->setSizePolicy(rest);
    connect(m_siteList, &QListWidget::itemChanged, this, &PowderDialog::takeSites);
    form->addRow(tr("&Sites:"), m_siteList);
    m_siteCurves->setObjectName(QStringLiteral("siteCurves"));
    m_siteCurves->setChecked(m_settings.siteCurves);
    m_siteCurves->setToolTip(tr("Of two to %1 sites").arg(mostSiteCurves));
    connect(m_siteCurves, &QCheckBox::toggled, this, [this](bool now) {
        m_settings.siteCurves = now;
        changed();
    });
    form->addRow(QString(), m_siteCurves);
    addFit(form);

    m_inputs = new QScrollArea;
    m_inputs->setWidget(inputs);
    m_inputs->setWidgetResizable(true);
    m_inputs->setFrameShape(QFrame::NoFrame);
    m_inputs->setMinimumWidth(inputs->minimumSizeHint().width() + m_inputs->verticalScrollBar()->sizeHint().width()
                              + 6);
    return m_inputs;
}

/// What is a nucleus's own does not go over to another one; it is there again when the user comes back.
void PowderDialog::takeNucleus(const QString &nucleus)
{
    m_left.insert(m_settings.nucleus, m_settings);
    const auto known = m_left.constFind(nucleus);
    const PowderSettings own = known != m_left.constEnd() ? *known : ReferenceSets::powderStart(nucleus);
    m_settings.nucleus = nucleus;
    m_settings.reference = own.reference;
    m_settings.slope = own.slope;
    m_settings.couplingScale = own.couplingScale;
    m_settings.labels.clear();
}

void PowderDialog::chooseNucleus(const QString &nucleus)
{
    takeNucleus(nucleus);
    showNumbers();
    m_automatic->setChecked(true); // the range was that of another nucleus
    fillSites();
    changed();
}

QString PowderDialog::siteText(const PowderSite &site)
{
    const QString text = tr("%1: %2 ppm").arg(site.name).arg(site.values.shift, 0, 'f', 1);
    return site.values.coupling == 0
        ? text
        : text + tr(", Cq %1 MHz, η %2").arg(site.values.coupling, 0, 'f', 3).arg(site.values.asymmetry, 0, 'f', 2);
}

/// All sites of the nucleus, with the chosen ones checked.
void PowderDialog::fillSites()
{
    const QSignalBlocker blocker(m_siteList);
    m_siteList->clear();
    PowderSettings all = m_settings;
    all.labels.clear();
    try {
        for (const PowderSite &site : PowderSites::of(m_structure, m_unique, all).sites) {
            auto *item = new QListWidgetItem(siteText(site), m_siteList);
            item->setData(Qt::UserRole, site.label);
            item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            const bool isChosen = m_settings.labels.isEmpty() || m_settings.labels.contains(site.label);
            item->setCheckState(isChosen ? Qt::Checked : Qt::Unchecked);
        }
    } catch (const std::exception &) {
        // The preview says what is wrong.
    }
}

/// As reference, slope and factor are now.
void PowderDialog::describeSites()
{
    const QSignalBlocker blocker(m_siteList);
    PowderSettings all = m_settings;
    all.labels.clear();
    try {
        const std::vector<PowderSite> sites = PowderSites::of(m_structure, m_unique, all).sites;
        for (int i = 0; i < std::min(m_siteList->count(), int(sites.size())); ++i)
            m_siteList->item(i)->setText(siteText(sites[size_t(i)]));
    } catch (const std::exception &) {
        // The preview says what is wrong.
    }
}

void PowderDialog::takeSites()
{
    QStringList chosen;
    for (int i = 0; i < m_siteList->count(); ++i) {
        if (m_siteList->item(i)->checkState() == Qt::Checked)
            chosen.append(m_siteList->item(i)->data(Qt::UserRole).toString());
    }
    m_settings.labels = chosen.size() == m_siteList->count() ? QStringList() : chosen;
    if (chosen.isEmpty() && m_siteList->count() > 0)
        m_settings.labels = {QString()}; // none is not all
    changed();
}

void PowderDialog::showNumbers()
{
    for (const Number &number : m_numbers) {
        const QSignalBlocker blocker(number.box);
        number.box->setValue(*number.value);
    }
}

void PowderDialog::changed()
{
    m_fitResult->hide();
    describeSites();
    m_timer.start();
}

const ExperimentalSpectrum *PowderDialog::chosenMeasurement() const
{
    const int index = m_measurement->currentIndex();
    if (index < 0 || index >= int(m_measured.size()))
        return nullptr;
    const ExperimentalSpectrum &spectrum = m_measured[size_t(index)];
    const QString &nucleus = spectrum.dimensions.front().nucleus;
    return nucleus.isEmpty() || nucleus == m_settings.nucleus ? &spectrum : nullptr;
}

void PowderDialog::showNotes(const QStringList &notes, const QString &error)
{
    QStringList lines;
    if (!error.isEmpty())
        lines.append(tr("<b>%1</b>").arg(error.toHtmlEscaped()));
    for (const QString &note : notes)
        lines.append(note.toHtmlEscaped());
    m_notes->setText(lines.join(QLatin1String("<br>")));
}

void PowderDialog::updatePreview()
{
    if (m_busy)
        return;
    m_timer.stop();
    const ExperimentalSpectrum *measured = chosenMeasurement();
    m_fit->setEnabled(false);
    m_ok->setEnabled(false);
    try {
        if (m_settings.labels == QStringList{QString()})
            throw std::runtime_error(tr("No site is chosen").toStdString());
        m_sites = PowderSites::of(m_structure, m_unique, m_settings);
        m_ok->setEnabled(true);
        m_fit->setEnabled(measured != nullptr);
        PowderSettings rough = m_settings;
        rough.points = previewPoints;
        rough.tolerance = 0.02;
        QElapsedTimer clock;
        clock.start();
        const auto spectrum = powderSpectrum(m_sites, rough, [&](double) { return clock.elapsed() < previewPatience; });
        if (!spectrum) {
            m_shown.setStack({}); // no curve rather than one of other values
            return showNotes(m_sites.notes, tr("This takes too long to be shown while values change; OK computes it"));
        }
        if (!m_settings.range)
            showRange(spectrum->axis);
        show(*spectrum, measured);
        QStringList notes = m_sites.notes + QStringList{m_sites.limits()};
        const Powder::Axis axis{spectrum->axis.first, spectrum->axis.last, size_t(m_settings.points)};
        if (const QString few = tooFewPoints(m_sites, axis, m_settings.shape); !few.isEmpty())
            notes.append(few);
        if (const QString other = measured ? otherField(m_sites, *measured) : QString(); !other.isEmpty())
            notes.prepend(other);
        showNotes(notes, {});
    } catch (const std::exception &error) {
        m_ok->setEnabled(false);
        m_fit->setEnabled(false);
        m_shown.setStack({});
        showNotes({}, QString::fromUtf8(error.what()));
    }
}

void PowderDialog::show(const Powder::Spectrum &spectrum, const ExperimentalSpectrum *measured)
{
    NmrStack stack;
    const auto add = [&](const ExperimentalSpectrum &curve, const QString &name) {
        // The same traces as before keep their colours.
        if (stack.entries.size() == m_traces.size())
            m_traces.append(QUuid::createUuid());
        const QVariantMap map = toEntryMap(curve);
        stack.entries.append({m_traces[stack.entries.size()], name, map, Spectrum::fromMap(map)});
    };
    add(powderCurve(m_sites, spectrum.axis, spectrum.sum, {}), tr("Powder"));
    if (measured)
        add(*measured, measured->title);
    const bool several = m_sites.sites.size() > 1 && m_sites.sites.size() <= mostSiteCurves;
    m_siteCurves->setEnabled(several);
    for (size_t i = 0; several && m_settings.siteCurves && i < m_sites.sites.size(); ++i)
        add(powderCurve(m_sites, spectrum.axis, spectrum.sites[i].values, {}), m_sites.sites[i].name);
    stack.activeId = m_traces.constFirst();
    m_shown.setStack(stack);
}

bool PowderDialog::work(const QString &what, const std::function<bool(const Powder::Progress &)> &run)
{
    if (m_busy)
        return false;
    const QScopedValueRollback busy(m_busy, true);
    try {
        Progress progress(what, this);
        return run(std::ref(progress));
    } catch (const std::exception &error) {
        QMessageBox::critical(this, windowTitle(), QString::fromUtf8(error.what()));
        return false;
    }
}

void PowderDialog::fit()
{
    const ExperimentalSpectrum *measured = chosenMeasurement();
    if (!measured)
        return;
    std::optional<PowderFit> found;
    const bool done = work(tr("Fitting to %1...").arg(measured->title), [&](const Powder::Progress &progress) {
        m_sites = PowderSites::of(m_structure, m_unique, m_settings);
        found = fitPowder(m_sites, m_settings, *measured, m_fitScale->isChecked(), progress);
        return found.has_value();
    });
    if (!done)
        return;
    m_settings = found->settings;
    showNumbers();
    fillSites();
    updatePreview();
    QStringList lines{tr("Reference: %1 ppm").arg(withError(found->fit.reference, m_settings.reference, 3))};
    if (found->fit.lorentzian.error > 0)
        lines.append(tr("Lorentzian: %1 Hz").arg(withError(found->fit.lorentzian, m_settings.shape.lorentzian, 1)));
    if (found->fit.gaussian.error > 0)
        lines.append(tr("Gaussian: %1 Hz").arg(withError(found->fit.gaussian, m_settings.shape.gaussian, 1)));
    if (m_fitScale->isChecked())
        lines.append(tr("Factor on Cq: %1").arg(withError(found->fit.scale, m_settings.couplingScale, 4)));
    lines.append(tr("Deviation: %1 % of the highest point").arg(100 * found->fit.deviation, 0, 'f', 2));
    if (!found->fit.converged)
        lines.append(tr("The fit has not converged."));
    m_fitResult->setText(lines.join(QLatin1Char('\n')));
    m_fitResult->show();
    // Once it is laid out.
    QTimer::singleShot(0, this, [this] { m_inputs->ensureWidgetVisible(m_fitResult); });
}

void PowderDialog::accept()
{
    m_timer.stop();
    std::optional<Powder::Spectrum> spectrum;
    const bool done = work(tr("Computing the powder spectrum..."), [&](const Powder::Progress &progress) {
        m_sites = PowderSites::of(m_structure, m_unique, m_settings);
        spectrum = powderSpectrum(m_sites, m_settings, progress);
        return spectrum.has_value();
    });
    if (!done)
        return;
    m_spectrum = std::move(*spectrum);
    QDialog::accept();
}

} // namespace Workbench

#include "moc_PowderDialog.cpp"
