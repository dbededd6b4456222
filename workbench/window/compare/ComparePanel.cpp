// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/compare/ComparePanel.h"

#include "data/AtomSelection.h"
#include "data/Elision.h"
#include "data/Nuclides.h"
#include "data/PeakListEdit.h"
#include "host/DataEngine.h"
#include "host/MainScene.h"
#include "items/NumberBox.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/AgreementPlot.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/table/TableItem.h"
#include "window/compare/PairTable.h"
#include "window/compare/ReferenceSets.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QSplitter>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

constexpr auto Fitted = CompareOptions::Fitted;
constexpr auto Given = CompareOptions::Given;
constexpr auto OfSet = CompareOptions::OfSet;

constexpr double smallestP = 0.001;

QString ppm(double value)
{
    return QString::number(value, 'f', 2);
}

/// A choice that can be told by its data; the first one when it is gone.
void setCurrentData(QComboBox *box, const QVariant &data)
{
    box->setCurrentIndex(std::max(0, box->findData(data)));
}

template <typename Choices, typename Id>
void fillBox(QComboBox *box, const Choices &choices, Id id)
{
    const QVariant current = box->currentData();
    const QSignalBlocker blocked(box);
    box->clear();
    for (const auto &choice : choices) {
        box->addItem(choice.name, choice.*id);
        box->setItemData(box->count() - 1, choice.name, Qt::ToolTipRole);
    }
    setCurrentData(box, current);
}

QDoubleSpinBox *numberBox(const char *name, double low, double high, int decimals, double step)
{
    auto *box = new NumberBox;
    box->setObjectName(QLatin1String(name));
    box->setRange(low, high);
    box->setDecimals(decimals);
    box->setSingleStep(step);
    box->setKeyboardTracking(false);
    return box;
}

/// Of the simulated spectrum beside the measurement.
int averagingOf(const NmrItem &item)
{
    const NmrData &data = *item.nmrData();
    return std::clamp(data.stackEntry(data.simulatedEntry())
                          .parameters(QStringLiteral("magres"))
                          .value(QStringLiteral("avIdx"))
                          .toInt(),
                      0, 2);
}

/// What the mode means, for a tooltip.
QString modeHelp(LinePairing::Mode mode)
{
    switch (mode) {
    case LinePairing::Mode::Assigned:
        return ComparePanel::tr("Every line names its sites");
    case LinePairing::Mode::Equal:
        return ComparePanel::tr("As many lines as sites, or as atoms: paired by their order");
    case LinePairing::Mode::Overlap:
        return ComparePanel::tr("Fewer lines than sites: neighbouring sites share a line so that the sum of squared "
                                "differences is least");
    case LinePairing::Mode::Unmatched:
        return ComparePanel::tr("More lines than sites: some are left out so that the sum of squares is least");
    }
    return {};
}

} // namespace

ComparePanel::ComparePanel(MainScene *scene, DataEngine *engine, QWidget *parent)
    : QDockWidget(tr("Compare"), parent),
      m_scene(scene),
      m_data(engine),
      m_structure(new QComboBox),
      m_measurement(new QComboBox),
      m_nucleus(new QComboBox),
      m_averaging(new QComboBox),
      m_referenceKind(new QComboBox),
      m_reference(numberBox("compareReference", -1e5, 1e5, 2, 0.5)),
      m_slopeKind(new QComboBox),
      m_slope(numberBox("compareSlope", -10, 10, 4, 0.01)),
      m_sigma(numberBox("compareSigma", 0, 1e4, 2, 0.1)),
      m_unmatched(new QSpinBox),
      m_pairs(new PairTable),
      m_result(new QLabel),
      m_plot(new AgreementPlot(AgreementPlot::Compact))
{
    setObjectName(QStringLiteral("compareDock"));
    m_result->setObjectName(QStringLiteral("compareResult"));
    m_result->setWordWrap(true);
    m_result->setTextFormat(Qt::RichText);
    m_result->setTextInteractionFlags(Qt::TextBrowserInteraction);
    connect(m_result, &QLabel::linkActivated, this, &ComparePanel::freeAll);
    m_plot->setMinimumHeight(230);
    auto *splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(m_pairs);
    splitter->addWidget(m_plot);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->addWidget(createOptions());
    layout->addWidget(m_result);
    layout->addWidget(splitter, 1);
    setWidget(content);

    connect(m_pairs, &PairTable::lineMoved, this, &ComparePanel::moveLine);
    connect(m_pairs, &PairTable::lineFreed, this, &ComparePanel::freeLine);
    connect(m_pairs, &PairTable::menuWanted, this, &ComparePanel::openMenu);
    connect(m_pairs, &PairTable::reported, this, &ComparePanel::reported);
    connect(m_pairs, &QTreeWidget::itemSelectionChanged, this, &ComparePanel::light);
    connect(scene, &MainScene::itemAdded, this, &ComparePanel::watch);
    connect(scene, &MainScene::itemsChanged, this, &ComparePanel::refreshLater);
    connect(scene, &MainScene::currentItemsChanged, this, &ComparePanel::followCurrentItems);
    connect(engine, &DataEngine::changed, this, [this] {
        m_structureData.clear();
        m_uniqueSites.clear();
        refreshLater();
    });
}

QWidget *ComparePanel::createOptions()
{
    m_structure->setObjectName(QStringLiteral("compareStructure"));
    m_measurement->setObjectName(QStringLiteral("compareMeasurement"));
    m_nucleus->setObjectName(QStringLiteral("compareNucleus"));
    m_averaging->setObjectName(QStringLiteral("compareAveraging"));
    m_referenceKind->setObjectName(QStringLiteral("compareReferenceKind"));
    m_slopeKind->setObjectName(QStringLiteral("compareSlopeKind"));
    m_unmatched->setObjectName(QStringLiteral("compareUnmatched"));
    for (QComboBox *box : {m_structure, m_measurement}) {
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(12);
    }
    m_averaging->addItems({tr("no groups"), tr("CH3"), tr("XH3")});
    m_averaging->setToolTip(tr("Groups of three hydrogens that turn fast enough to give one line"));
    m_slopeKind->addItem(tr("fixed"), Given);
    m_slopeKind->addItem(tr("fitted"), Fitted);
    m_slopeKind->setToolTip(tr("Of the shift over the shielding. A fitted slope takes a part of the differences away: "
                               "give one that is known from a calibration where you can"));
    m_referenceKind->addItem(tr("fitted"), Fitted);
    m_referenceKind->addItem(tr("fixed"), Given);
    m_referenceKind->setToolTip(tr("Fitted: least squares, each site weighted with its nuclei"));
    m_reference->setAccessibleName(tr("Reference, ppm"));
    m_slope->setAccessibleName(tr("Slope"));
    m_slope->setValue(-1);
    m_sigma->setSpecialValueText(tr("not known"));
    m_sigma->setSuffix(tr(" ppm"));
    m_reference->setSuffix(tr(" ppm"));
    m_sigma->setToolTip(tr("Root mean square error of calculated shifts of this nucleus: without it there is no χ² and "
                           "no probability"));
    m_unmatched->setRange(0, LinePairing::mostUnmatched);
    m_unmatched->setKeyboardTracking(false);
    m_unmatched->setToolTip(tr("So many lines may be left out where more were measured than there are sites"));

    auto *options = new QWidget;
    auto *grid = new QGridLayout(options);
    grid->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](int row, int column, int span, const QString &text, QWidget *field) {
        auto *label = new QLabel(text);
        label->setBuddy(field);
        grid->addWidget(label, row, column);
        grid->addWidget(field, row, column + 1, 1, span);
    };
    add(0, 0, 3, tr("S&tructure:"), m_structure);
    add(1, 0, 3, tr("&Measured:"), m_measurement);
    add(2, 0, 1, tr("&Nucleus:"), m_nucleus);
    add(2, 2, 1, tr("&Average:"), m_averaging);
    add(3, 0, 1, tr("&Reference:"), m_referenceKind);
    grid->addWidget(m_reference, 3, 2, 1, 2);
    add(4, 0, 1, tr("S&lope:"), m_slopeKind);
    grid->addWidget(m_slope, 4, 2, 1, 2);
    add(5, 0, 1, tr("&Error σ:"), m_sigma);
    add(5, 2, 1, tr("Leave &out:"), m_unmatched);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);

    for (QComboBox *box : {m_structure, m_measurement})
        connect(box, &QComboBox::activated, this, &ComparePanel::refresh);
    connect(m_nucleus, &QComboBox::activated, this, [this] { takeDefaults(m_nucleus->currentText()); });
    // A fixed value starts with the one that was fitted.
    const auto startFrom = [this](const QComboBox *kind, QDoubleSpinBox *box, double &exact,
                                  double Agreement::*fitted) {
        return [=, this, &exact] {
            if (!m_compared || kind->currentData() != Given)
                return;
            const QSignalBlocker blocked(box);
            box->setValue(exact = m_compared->comparison.agreement.*fitted);
        };
    };
    connect(m_referenceKind, &QComboBox::activated, this,
            startFrom(m_referenceKind, m_reference, m_exactReference, &Agreement::reference));
    connect(m_slopeKind, &QComboBox::activated, this, startFrom(m_slopeKind, m_slope, m_exactSlope, &Agreement::slope));
    const auto keep = [this](const QString &what) { return [this, what] { keepOptions(what); }; };
    connect(m_nucleus, &QComboBox::activated, this, keep(tr("Nucleus")));
    connect(m_averaging, &QComboBox::activated, this, keep(tr("Averaging")));
    connect(m_referenceKind, &QComboBox::activated, this, keep(tr("Reference")));
    connect(m_reference, &QDoubleSpinBox::valueChanged, this, keep(tr("Reference")));
    connect(m_slopeKind, &QComboBox::activated, this, keep(tr("Slope")));
    connect(m_slope, &QDoubleSpinBox::valueChanged, this, keep(tr("Slope")));
    connect(m_sigma, &QDoubleSpinBox::valueChanged, this, keep(tr("Error σ")));
    connect(m_unmatched, &QSpinBox::valueChanged, this, keep(tr("Lines Left Out")));
    return options;
}

void ComparePanel::watch(DocumentItem *item)
{
    connect(item, &DocumentItem::titleChanged, this, &ComparePanel::refreshLater);
    if (auto *nmr = qobject_cast<NmrItem *>(item)) {
        connect(nmr->nmrData(), &NmrData::entriesChanged, this, &ComparePanel::refreshLater);
        connect(nmr->nmrData(), &NmrData::entryChanged, this, &ComparePanel::refreshLater);
    }
    refreshLater();
}

QString ComparePanel::whyNot() const
{
    if (structuresOf(*m_scene).isEmpty())
        return tr("There is no structure: open a MAGRES file first");
    if (measurementsOf(*m_scene).isEmpty())
        return tr("There is no measurement in one dimension: add a spectrum or a peak list");
    return {};
}

void ComparePanel::open()
{
    m_lastPlot = m_lastTable = QUuid();
    show();
    raise();
    followCurrentItems();
    refresh();
    m_pairs->setFocus();
}

void ComparePanel::showEvent(QShowEvent *event)
{
    QDockWidget::showEvent(event);
    followCurrentItems();
    refreshLater();
}

void ComparePanel::showStructure(const QUuid &table)
{
    fillChoices();
    setCurrentData(m_structure, table);
    refresh();
}

void ComparePanel::showMeasurement(const QUuid &entry)
{
    fillChoices();
    setCurrentData(m_measurement, entry);
    refresh();
}

void ComparePanel::showAsRanked(const QUuid &entry, const CompareOptions &options)
{
    showMeasurement(entry);
    if (!measurement() || measurement()->entry != entry)
        return;
    if (!keptOptions().isEmpty()) {
        // A choice that was made here stays.
        if (CompareOptions::fromMap(keptOptions())->toMap() != options.toMap())
            Q_EMIT reported(tr("This measurement keeps options of its own: the numbers are not those of the ranking"));
        return;
    }
    const QSignalBlocker blocked(m_nucleus);
    m_nucleus->setCurrentIndex(std::max(0, m_nucleus->findText(options.nucleus)));
    takeDefaults(m_nucleus->currentText());
    setOptions(options);
    refresh();
}

void ComparePanel::followCurrentItems()
{
    if (!isVisible())
        return;
    fillChoices();
    if (const NmrItem *item = m_scene->currentNmrItem(); item && item->id() != m_lastPlot) {
        m_lastPlot = item->id();
        const QList<MeasurementChoice> own = measurementsOf(*item);
        const auto isChosen = [&](const MeasurementChoice &choice) {
            return choice.entry == m_measurement->currentData().toUuid();
        };
        if (!own.isEmpty() && std::none_of(own.begin(), own.end(), isChosen))
            setCurrentData(m_measurement, own.constFirst().entry);
        if (const QUuid structure = structureOf(*m_scene, *item); !structure.isNull() && !own.isEmpty())
            setCurrentData(m_structure, structure);
    }
    if (const TableItem *table = m_scene->currentTableItem(); table && table->id() != m_lastTable) {
        // The first one to be current says nothing about what the user wants.
        if (!m_lastTable.isNull() || m_structure->currentData().isNull())
            setCurrentData(m_structure, table->id());
        m_lastTable = table->id();
    }
    refreshLater();
}

void ComparePanel::followReferenceSets()
{
    m_takenFrom = QUuid();
    refresh();
}

void ComparePanel::refreshLater()
{
    if (m_waiting)
        return;
    m_waiting = true;
    QTimer::singleShot(0, this, [this] {
        m_waiting = false;
        refresh();
    });
}

void ComparePanel::refresh()
{
    if (!isVisible())
        return;
    fillChoices();
    fillNuclei();
    takeOptions();
    enableInputs();
    compare();
    showResult();
}

void ComparePanel::fillChoices()
{
    m_structures = structuresOf(*m_scene);
    m_measurements = measurementsOf(*m_scene);
    fillBox(m_structure, m_structures, &StructureChoice::table);
    fillBox(m_measurement, m_measurements, &MeasurementChoice::entry);
}

const StructureChoice *ComparePanel::structure() const
{
    const int index = m_structure->currentIndex();
    return index >= 0 && index < m_structures.size() ? &m_structures[index] : nullptr;
}

const MeasurementChoice *ComparePanel::measurement() const
{
    const int index = m_measurement->currentIndex();
    return index >= 0 && index < m_measurements.size() ? &m_measurements[index] : nullptr;
}

NmrItem *ComparePanel::plot() const
{
    return measurement() ? qobject_cast<NmrItem *>(m_scene->item(measurement()->item)) : nullptr;
}

const CrystalStructure &ComparePanel::structureData(const QUuid &id)
{
    const auto known = m_structureData.constFind(id);
    return known != m_structureData.constEnd()
        ? *known
        : *m_structureData.insert(id, CrystalStructure::fromData(m_data->getDataMap(id)));
}

const UniqueSites &ComparePanel::uniqueSites(const QUuid &id)
{
    const QString key = id.toString() + QString::number(m_averaging->currentIndex());
    const auto known = m_uniqueSites.constFind(key);
    if (known != m_uniqueSites.constEnd())
        return *known;
    UniqueSites::Options options;
    options.averaging = UniqueSites::Averaging(m_averaging->currentIndex());
    return *m_uniqueSites.insert(key, UniqueSites::of(structureData(id), options));
}

void ComparePanel::fillNuclei()
{
    const QString current = m_nucleus->currentText();
    const QSignalBlocker blocked(m_nucleus);
    m_nucleus->clear();
    const QString known = measurement() ? measurement()->nucleus : QString();
    if (!known.isEmpty()) {
        m_nucleus->addItem(known);
        m_nucleus->setToolTip(tr("As the spectrum says"));
        m_nucleus->setEnabled(false);
        return;
    }
    m_nucleus->setEnabled(true);
    m_nucleus->setToolTip(tr("The peak list does not say of which nucleus it is"));
    QStringList nuclei;
    for (const auto &[element, count] :
         structure() ? structureData(structure()->data).composition() : std::map<QString, int>())
        nuclei += Nuclides::table().isotopes(element);
    // Those that are measured most come first.
    std::stable_sort(nuclei.begin(), nuclei.end(), [](const QString &a, const QString &b) {
        return usualError(a).has_value() > usualError(b).has_value();
    });
    m_nucleus->addItems(nuclei);
    // The user's choice goes before the list's name, which makes the start.
    const bool isNew = measurement() && (m_takenFrom != measurement()->entry || m_taken != keptOptions());
    const auto kept = CompareOptions::fromMap(keptOptions());
    int start = isNew ? m_nucleus->findText(kept ? kept->nucleus : measurement()->likelyNucleus) : -1;
    if (isNew && m_takenFrom == measurement()->entry)
        start = std::max(0, start); // the choice was taken back
    m_nucleus->setCurrentIndex(std::max(0, start >= 0 ? start : m_nucleus->findText(current)));
}

QVariantMap ComparePanel::keptOptions() const
{
    return plot() ? plot()->nmrData()->entry(measurement()->entry).value(CompareOptions::key()).toMap() : QVariantMap();
}

void ComparePanel::takeOptions()
{
    const QString nucleus = m_nucleus->currentText();
    const QUuid entry = measurement() ? measurement()->entry : QUuid();
    const QVariantMap kept = keptOptions();
    if (entry == m_takenFrom && kept == m_taken && nucleus == m_lastNucleus)
        return;
    m_takenFrom = entry;
    m_taken = kept;
    takeDefaults(nucleus);
    if (const auto options = CompareOptions::fromMap(kept); options && options->nucleus == nucleus)
        setOptions(*options);
}

void ComparePanel::takeDefaults(const QString &nucleus)
{
    m_lastNucleus = nucleus;
    m_set = ReferenceSets::of(nucleus);
    for (QComboBox *box : {m_referenceKind, m_slopeKind}) {
        box->removeItem(box->findData(OfSet));
        if (m_set) {
            box->addItem(tr("of the set"), OfSet);
            box->setItemData(box->count() - 1, ReferenceSets::fileOf(nucleus), Qt::ToolTipRole);
        }
    }
    CompareOptions defaults;
    defaults.nucleus = nucleus;
    defaults.averaging = plot() ? averagingOf(*plot()) : 0;
    defaults.sigma = usualError(nucleus).value_or(0);
    if (m_set) {
        defaults.referenceKind = defaults.slopeKind = OfSet;
        defaults.reference = m_set->calibration.reference;
        defaults.slope = m_set->calibration.slope;
    }
    setOptions(defaults);
}

void ComparePanel::setOptions(const CompareOptions &options)
{
    const QSignalBlocker blockers[] = {QSignalBlocker(m_reference), QSignalBlocker(m_slope), QSignalBlocker(m_sigma),
                                       QSignalBlocker(m_unmatched)};
    // A set that is another one by now, or is not here, must not change what was compared.
    const auto kind = [&](CompareOptions::Scale kept, double value, double ShiftCalibration::*ofSet) {
        return kept == OfSet && (!m_set || m_set->calibration.*ofSet != value) ? Given : kept;
    };
    setCurrentData(m_referenceKind, kind(options.referenceKind, options.reference, &ShiftCalibration::reference));
    setCurrentData(m_slopeKind, kind(options.slopeKind, options.slope, &ShiftCalibration::slope));
    m_averaging->setCurrentIndex(options.averaging);
    m_reference->setValue(m_exactReference = options.reference);
    m_slope->setValue(m_exactSlope = options.slope);
    m_sigma->setValue(options.sigma);
    m_unmatched->setValue(options.unmatched);
}

CompareOptions ComparePanel::options() const
{
    const auto exact = [](const QDoubleSpinBox *box, double value) {
        return std::abs(box->value() - value) <= 0.5 * std::pow(10.0, -box->decimals()) ? value : box->value();
    };
    CompareOptions options;
    options.nucleus = m_nucleus->currentText();
    options.averaging = m_averaging->currentIndex();
    options.referenceKind = CompareOptions::Scale(m_referenceKind->currentData().toInt());
    options.reference = exact(m_reference, m_exactReference);
    options.slopeKind = CompareOptions::Scale(m_slopeKind->currentData().toInt());
    options.slope = exact(m_slope, m_exactSlope);
    options.sigma = m_sigma->value();
    options.unmatched = m_unmatched->value();
    if (m_set && options.referenceKind == OfSet)
        options.reference = m_set->calibration.reference;
    if (m_set && options.slopeKind == OfSet)
        options.slope = m_set->calibration.slope;
    // What is fitted is no choice of the user.
    if (options.referenceKind == Fitted)
        options.reference = CompareOptions().reference;
    if (options.slopeKind == Fitted)
        options.slope = CompareOptions().slope;
    return options;
}

void ComparePanel::keepOptions(const QString &what)
{
    if (plot()) {
        m_taken = options().toMap();
        const QUuid entry = measurement()->entry; // the choices may be filled anew
        plot()->nmrData()->setEntryValue(entry, CompareOptions::key(), m_taken, tr("Comparison: %1").arg(what));
    }
    refresh();
}

void ComparePanel::enableInputs()
{
    if (m_set) {
        const QSignalBlocker blockedReference(m_reference), blockedSlope(m_slope);
        if (m_referenceKind->currentData() == OfSet)
            m_reference->setValue(m_set->calibration.reference);
        if (m_slopeKind->currentData() == OfSet)
            m_slope->setValue(m_set->calibration.slope);
    }
    m_reference->setEnabled(m_referenceKind->currentData() == Given);
    m_slope->setEnabled(m_slopeKind->currentData() == Given);
}

NucleusMeasurement ComparePanel::measurementOptions() const
{
    const CompareOptions chosen = options();
    const auto unlessFitted = [](CompareOptions::Scale kind, double value) {
        return kind == Fitted ? std::nullopt : std::optional(value);
    };
    NucleusMeasurement measurement;
    measurement.nucleus = chosen.nucleus;
    measurement.scale.reference = unlessFitted(chosen.referenceKind, chosen.reference);
    measurement.scale.slope = unlessFitted(chosen.slopeKind, chosen.slope);
    measurement.unmatched = chosen.unmatched;
    if (chosen.sigma > 0)
        measurement.sigma = chosen.sigma;
    return measurement;
}

void ComparePanel::compare()
{
    m_compared.reset();
    m_automaticRmsd.reset();
    m_failure = whyNot();
    if (!structure() || !measurement() || !plot())
        return;
    const QList<SpectrumPeak> peaks = plot()->nmrData()->spectrum(measurement()->entry).peaks;
    try {
        const UniqueSites &unique = uniqueSites(structure()->data);
        const CrystalStructure &atoms = structureData(structure()->data);
        m_spaceGroup = unique.spaceGroup;
        m_warnings = unique.warnings;
        const bool usesSet = m_referenceKind->currentData() == OfSet || m_slopeKind->currentData() == OfSet;
        const DocumentItem *table = m_scene->item(structure()->table);
        if (const QString doubt =
                usesSet && m_set && table ? m_set->doubtAbout(table->method(), structure()->name) : QString();
            !doubt.isEmpty())
            m_warnings.append(doubt);
        m_compared = PeakComparison::of(atoms, unique, measurementOptions(), peaks);
        if (m_compared->comparison.pairing.assignedLines == 0)
            return;
        QList<SpectrumPeak> unnamed = peaks;
        for (SpectrumPeak &peak : unnamed)
            peak.label.clear();
        m_automaticRmsd = PeakComparison::of(atoms, unique, measurementOptions(), unnamed).comparison.agreement.rmsd;
    } catch (const std::exception &error) {
        if (!m_compared)
            m_failure = elided(QString::fromUtf8(error.what()));
    }
}

QString ComparePanel::scaleText() const
{
    const auto kind = [](const QComboBox *box) { return box->currentText(); };
    const Agreement &agreement = m_compared->comparison.agreement;
    return tr("Reference <b>%1 ppm</b> (%2), slope %3 (%4)")
        .arg(ppm(agreement.reference), kind(m_referenceKind), QString::number(agreement.slope, 'g', 5),
             kind(m_slopeKind));
}

QString ComparePanel::resultText() const
{
    const NucleusComparison &comparison = m_compared->comparison;
    const Agreement &agreement = comparison.agreement;
    QStringList texts;
    texts.append(tr("Pairing: <b>%1</b>; %2 lines, %3 sites%4")
                     .arg(comparison.pairing.text().toHtmlEscaped())
                     .arg(m_compared->measurement.lines.size())
                     .arg(comparison.sites.size())
                     .arg(m_spaceGroup.isEmpty() ? QString() : tr(" in %1").arg(m_spaceGroup.toHtmlEscaped())));
    texts.append(scaleText());
    QString rmsd = tr("RMSD <b>%1 ppm</b>").arg(ppm(agreement.rmsd));
    if (m_automaticRmsd)
        rmsd += tr(" (paired automatically: %1)").arg(ppm(*m_automaticRmsd));
    if (const int site = m_compared->largestSite(); site >= 0) {
        const QString name = comparison.sites[std::size_t(site)].name.toHtmlEscaped();
        const auto without = m_compared->withoutLargest();
        rmsd += tr("; largest difference %1 (%2)%3")
                    .arg(ppm(agreement.largest), name,
                         without ? tr(", RMSD without it %1").arg(ppm(without->rmsd)) : QString());
    }
    texts.append(rmsd);
    if (const auto &chiSquare = comparison.chiSquare; chiSquare && chiSquare->p) {
        texts.append(tr("χ² %1, %2 degrees of freedom, <b>%3</b>%4")
                         .arg(ppm(chiSquare->value), QString::number(chiSquare->degreesOfFreedom),
                              chiSquare->pText().toHtmlEscaped(),
                              *chiSquare->p < smallestP ? tr(": <b>fits badly</b>") : QString()));
    }
    if (!comparison.pairing.leftOut.empty())
        texts.append(tr("%n line(s) left out", nullptr, int(comparison.pairing.leftOut.size())));
    if (m_compared->dropsNumbers)
        texts.append(tr("<i>The sites do not go into the numbers of peaks at one place: each place counts as one "
                        "line</i>"));
    for (const QString &warning : m_warnings)
        texts.append(tr("<i>%1</i>").arg(warning.toHtmlEscaped()));
    return texts.join(QLatin1String("<br>"));
}

QString ComparePanel::summary() const
{
    return m_result->text();
}

void ComparePanel::showResult()
{
    // What is selected is told by the user's click alone: others may have selected something else since.
    const QSignalBlocker blocked(m_pairs);
    m_pairs->setEnabled(m_compared.has_value());
    m_pairs->setComparison(m_compared ? &*m_compared : nullptr);
    m_plot->setVisible(m_compared.has_value());
    if (m_compared) {
        const Agreement &agreement = m_compared->comparison.agreement;
        const QSignalBlocker blockers[] = {QSignalBlocker(m_reference), QSignalBlocker(m_slope)};
        if (m_referenceKind->currentData() == Fitted)
            m_reference->setValue(agreement.reference);
        if (m_slopeKind->currentData() == Fitted)
            m_slope->setValue(agreement.slope);
        m_plot->setComparisons({m_compared->comparison});
        m_plot->setMarkedSite(PairTable::siteOf(m_pairs->currentItem()));
        m_result->setText(resultText());
        m_result->setToolTip(modeHelp(m_compared->comparison.pairing.mode));
    } else {
        QString text = m_failure.toHtmlEscaped();
        if (hasLabels())
            text += QStringLiteral("<br><a href=\"free\">%1</a>").arg(tr("Pair all automatically"));
        m_result->setText(text);
        m_result->setToolTip(QString());
    }
    if (m_pairs->hasFocus())
        light();
}

bool ComparePanel::hasLabels() const
{
    const QList<SpectrumPeak> peaks =
        plot() ? plot()->nmrData()->spectrum(measurement()->entry).peaks : QList<SpectrumPeak>();
    return std::any_of(peaks.begin(), peaks.end(), [](const SpectrumPeak &peak) { return !peak.label.isEmpty(); });
}

void ComparePanel::light()
{
    const QTreeWidgetItem *row = m_pairs->selectedItems().value(0);
    const int site = row ? PairTable::siteOf(row) : -1;
    m_plot->setMarkedSite(site);
    if (!row || !m_compared || !structure())
        return;
    QSet<int> atoms;
    const CrystalStructure &crystal = structureData(structure()->data);
    if (site >= 0) {
        for (int atom : m_compared->comparison.atoms[std::size_t(site)].atoms)
            atoms.insert(crystal.atoms[std::size_t(atom)].record);
    }
    auto *table = qobject_cast<TableItem *>(m_scene->item(structure()->table));
    MoleculeItem *molecule = table ? moleculeOf(*table) : nullptr;
    QSet<QUuid> peaks;
    for (int line : PairTable::linesOf(row)) {
        for (const QUuid &peak : m_compared->peaks[std::size_t(line)])
            peaks.insert(peak);
    }
    if (molecule) {
        molecule->setSelectedAtoms(atoms);
        molecule->sendMessage(AtomSelection::toMessage(atoms));
        peaks.unite(molecule->assignments().peaksOf(atoms));
    } else if (table) {
        table->receiveMessage(AtomSelection::toMessage(atoms), nullptr);
    }
    if (plot() && plot()->plot())
        plot()->plot()->setLitPeaks(peaks);
}

void ComparePanel::setLabels(const std::map<int, QString> &labels, const QString &what)
{
    NmrItem *item = plot();
    if (!item || !m_compared)
        return;
    QHash<QUuid, QString> byPeak;
    for (const auto &[line, label] : labels) {
        for (const QUuid &peak : m_compared->peaks[std::size_t(line)])
            byPeak.insert(peak, label);
    }
    NmrData *stack = item->nmrData();
    const QUuid entry = measurement()->entry;
    stack->setEntryPeaks(entry, PeakListEdit::labelled(stack->entryPeakList(entry), byPeak), what);
    refresh();
}

void ComparePanel::moveLine(const std::vector<int> &lines, int from, int to)
{
    if (!m_compared)
        return;
    const QString name = m_compared->comparison.sites[std::size_t(to)].name;
    setLabels(m_compared->labelsAfter(lines, from, to), tr("Pair %1 by Hand").arg(name));
    if (QTreeWidgetItem *row = m_pairs->rowOfSite(to); row && m_compared) {
        m_pairs->setCurrentItem(row);
        Q_EMIT reported(tr("%1: line at %2 ppm; RMSD %3 ppm")
                            .arg(name, row->text(PairTable::Measured), ppm(m_compared->comparison.agreement.rmsd)));
    }
}

void ComparePanel::freeLine(const std::vector<int> &lines)
{
    std::map<int, QString> labels;
    for (int line : lines) {
        if (m_compared && !m_compared->measurement.lines[std::size_t(line)].sites.isEmpty())
            labels[line] = QString();
    }
    if (labels.empty())
        Q_EMIT reported(tr("This line finds its site by itself already"));
    else
        setLabels(labels, tr("Pair Line Automatically"));
    if (!labels.empty() && m_compared)
        Q_EMIT reported(tr("RMSD %1 ppm").arg(ppm(m_compared->comparison.agreement.rmsd)));
}

void ComparePanel::freeAll()
{
    NmrItem *item = plot();
    if (!item)
        return;
    NmrData *stack = item->nmrData();
    const QUuid entry = measurement()->entry;
    QHash<QUuid, QString> labels;
    for (const SpectrumPeak &peak : stack->spectrum(entry).peaks)
        labels.insert(peak.id, QString());
    stack->setEntryPeaks(entry, PeakListEdit::labelled(stack->entryPeakList(entry), labels),
                         tr("Pair All Automatically"));
    refresh();
}

void ComparePanel::openMenu(QTreeWidgetItem *row, const QPoint &globalPos)
{
    if (!m_compared)
        return;
    auto *menu = new QMenu(m_pairs);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const int site = PairTable::siteOf(row);
    const std::vector<int> own = PairTable::linesOf(row);
    const auto &lines = m_compared->measurement.lines;
    std::vector<int> order(lines.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = int(i);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return lines[std::size_t(a)].shift > lines[std::size_t(b)].shift; });
    if (site >= 0)
        menu->addSection(tr("Line of %1").arg(m_compared->comparison.sites[std::size_t(site)].name));
    for (int line : site >= 0 ? order : std::vector<int>()) {
        QAction *action = menu->addAction(tr("%1 ppm").arg(ppm(lines[std::size_t(line)].shift)));
        action->setCheckable(true);
        action->setChecked(std::find(own.begin(), own.end(), line) != own.end());
        connect(action, &QAction::triggered, this, [this, line, site] { moveLine({line}, -1, site); });
        if (action->isChecked())
            menu->setActiveAction(action);
    }
    menu->addSeparator();
    const auto isByHand = [&](int line) { return !lines[std::size_t(line)].sites.isEmpty(); };
    menu->addAction(tr("Pair This Line &Automatically\tDel"), this, [this, own] { freeLine(own); })
        ->setEnabled(std::any_of(own.begin(), own.end(), isByHand));
    menu->addAction(tr("Pair A&ll Automatically"), this, &ComparePanel::freeAll)
        ->setEnabled(m_compared->comparison.pairing.assignedLines > 0);
    menu->popup(globalPos);
}

} // namespace Workbench

#include "moc_ComparePanel.cpp"
