// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Simulation.h"

#include "analysis/SpectrumRemarks.h"
#include "analysis/comparison/UniqueSites.h"
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/MessageLog.h"
#include "data/Elision.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/DataEngine.h"
#include "data/Nuclides.h"
#include "data/PluginCall.h"
#include "formats/ExperimentFile.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"
#include "items/table/TableModel.h"
#include "support/MetaTypes.h"
#include "data/Error.h"

#include <QFileInfo>
#include <QMetaMethod>
#include <QSet>
#include <QSettings>

#include <algorithm>
#include <iterator>

namespace Workbench {

namespace {

/// The fewest points that the plug-in offers, for spectra that are only made to see their axes.
constexpr int draftPoints = 128;
constexpr const char *pointKeys[] = {"pts", "ptsF2", "ptsF1"};

/// What the plug-in takes when there is nothing else, F2 and F1.
constexpr double defaultLineWidth[2] = {30, 1};
constexpr int defaultPoints2D[2] = {1024, 256};
constexpr int defaultPoints1D = 8192;

const QString magresFormat = QStringLiteral("magres");

QString key(const char *name)
{
    return QLatin1String(name);
}

/// The values that the user gives for a nucleus, by nucleus: both dimensions share them.
template <typename Member>
QVariantMap givenByNucleus(const SimulateOptions &options, Member member)
{
    QVariantMap map;
    for (int d = 0; d < (options.twoDimensional ? 2 : 1); ++d) {
        const DimensionOptions &dimension = options.dimension[d];
        if (dimension.*member)
            map.insert(dimension.nucleus, *(dimension.*member));
    }
    return map;
}

/// What the plug-in's next spectrum starts from, with as few points as it can have.
void writeSettings(QSettings &settings, const SimulateOptions &options)
{
    const auto set = [&settings](const char *name, const QVariant &value) {
        settings.setValue(QStringLiteral("magresPlugin/") + key(name), value);
    };
    set("nucF2", options.dimension[0].nucleus);
    set("nucF1", options.dimension[1].nucleus);
    set("freq", options.frequency);
    set("specType", options.twoDimensional ? 1 : 0);
    set("avIdx", options.averaging);
    set("correlation", options.correlation);
    for (const char *points : pointKeys)
        set(points, draftPoints);
    set("ref", givenByNucleus(options, &DimensionOptions::reference));
    set("slope", givenByNucleus(options, &DimensionOptions::slope));
    set("lw", givenByNucleus(options, &DimensionOptions::lineWidth));
}

void setQuadrupolarShifts(QVariantHash &parameters, const SimulateOptions &options)
{
    QList<int> shifts;
    for (const DimensionOptions &dimension : options.dimension)
        shifts.append(dimension.quadrupolarShift ? 1 : 0);
    parameters.insert(key("qShift"), QVariant::fromValue(shifts));
}

/// Adds to the parameters of a spectrum what no settings hold: ranges and quadrupolar shifts.
void setRangesAndShifts(QVariantHash &parameters, const SimulateOptions &options)
{
    const char *ranges[] = {"RangeF2", "RangeF1"};
    for (int d = 0; d < 2; ++d) {
        const DimensionOptions &dimension = options.dimension[d];
        if (dimension.range) {
            const DoubleVector range{dimension.range->first, dimension.range->second};
            parameters.insert(key(ranges[d]), QVariant::fromValue(range));
            parameters.insert(key(ranges[d]) + QStringLiteral("User"), true);
        }
    }
    setQuadrupolarShifts(parameters, options);
}

void setDraftPoints(QVariantHash &parameters)
{
    for (const char *points : pointKeys)
        parameters.insert(key(points), draftPoints);
}

int pointsOf(const SimulateOptions &options, int dimension)
{
    return options.dimension[dimension].points.value_or(options.twoDimensional ? defaultPoints2D[dimension]
                                                                               : defaultPoints1D);
}

/// All counts, so that none of the draft's is left in the parameters.
void setPoints(QVariantHash &parameters, const SimulateOptions &options)
{
    parameters.insert(key("pts"), options.twoDimensional ? defaultPoints1D : pointsOf(options, 0));
    parameters.insert(key("ptsF2"), options.twoDimensional ? pointsOf(options, 0) : defaultPoints2D[0]);
    parameters.insert(key("ptsF1"), options.twoDimensional ? pointsOf(options, 1) : defaultPoints2D[1]);
}

} // namespace

Simulation::Simulation(HostApplication &host, MessageLog &log) : m_host(host), m_log(log)
{
}

void Simulation::readFile(const QString &fileName, const QMap<QString, QString> &isotopes)
{
    QVariantMap chosen;
    for (auto it = isotopes.cbegin(); it != isotopes.cend(); ++it)
        chosen.insert(it.key(), it.value());
    if (!chosen.isEmpty())
        QSettings().setValue(QStringLiteral("magresPlugin/QIso"), chosen);
    m_fileName = fileName;
    const HostApplication::ReadResult result = m_host.readFile(fileName);
    reportNotes(fileName, result.warnings);
    m_plugin = result.filter;
    for (QGraphicsWidget *item : result.items) {
        if (auto *table = qobject_cast<TableItem *>(item))
            m_table = table;
    }
    if (!m_table || !m_table->table())
        throw CommandError(Texts::tr("%1 was read, but gave no table").arg(fileName));
}

QUuid Simulation::dataId() const
{
    return callPlugin<QList<QUuid>>(m_table->table(), "tableItem_sharedDataIds()").value(0);
}

QVariantMap Simulation::structureData() const
{
    return m_host.documentData().getDataMap(dataId());
}

CrystalStructure Simulation::structure() const
{
    return CrystalStructure::fromData(structureData());
}

TableContent Simulation::tableByAtom() const
{
    const QVariantMap data = structureData();
    const auto show = [this](const QVariantMap &shown) {
        m_host.documentData().insert(shown);
        callPlugin(m_table->table(), "tableItem_fromMap(QVariantMap)",
                   callPlugin<QVariantMap>(m_table->table(), "tableItem_toMap()"));
    };
    show(labelledByAtom(data));
    TableContent content = m_table->content();
    show(data);

    const auto labelsKey = QStringLiteral("labels");
    qsizetype column = 0;
    while (column < content.titles.size() && !m_table->model()->rowKeys(int(column)).contains(labelsKey))
        ++column;
    const CrystalStructure read = CrystalStructure::fromData(data);
    if (content.cells.size() != read.atoms.size() || content.rows.size() != qsizetype(read.atoms.size()))
        throw CommandError(Texts::tr("the plug-in gave no row for every atom of %1").arg(m_fileName));
    for (qsizetype row = 0; row < content.rows.size(); ++row) {
        const QStringList &labels = read.atoms[std::size_t(row)].labels;
        QVariantMap map = content.rows[row].toMap();
        map.insert(labelsKey, labels);
        content.rows[row] = map;
        if (column < content.titles.size())
            content.cells[std::size_t(row)][column] = labels.join(QLatin1String(", "));
    }
    return content;
}

QStringList Simulation::nuclei() const
{
    QStringList elements;
    for (const CrystalAtom &atom : structure().atoms) {
        if (!elements.contains(atom.element))
            elements.append(atom.element);
    }
    QStringList found;
    for (const QString &element : elements)
        found.append(Nuclides::table().isotopes(element));
    return found;
}

bool Simulation::canSimulate(const SimulateOptions &options, const QString &nucleus)
{
    SimulateOptions draft = options;
    draft.twoDimensional = false;
    draft.dimension[0] = {};
    draft.dimension[0].nucleus = nucleus;
    try {
        createSpectrum(draft);
    } catch (const CommandError &) {
        return false;
    }
    return true;
}

void Simulation::checkSites(const SimulateOptions &options)
{
    const CrystalStructure sites = structure();
    const auto lacksShielding = [&sites](const QString &nucleus) {
        return std::any_of(sites.atoms.begin(), sites.atoms.end(), [&](const CrystalAtom &atom) {
            return atom.element == Nuclides::element(nucleus) && !atom.shielding;
        });
    };
    const QStringList present = nuclei();
    for (int d = 0; d < (options.twoDimensional ? 2 : 1); ++d) {
        const QString &nucleus = options.dimension[d].nucleus;
        if (!present.contains(nucleus)) {
            QStringList offered, bare;
            for (const QString &other : present) {
                if (canSimulate(options, other))
                    offered.append(other);
                else if (lacksShielding(other))
                    bare.append(Texts::tr("%1 (without shielding)").arg(other));
            }
            offered += bare;
            throw CommandError(Texts::tr("%1 has no site of %2; it has sites of %3")
                                   .arg(m_fileName, nucleus,
                                        offered.isEmpty() ? QStringLiteral("no nucleus known here")
                                                          : offered.join(QLatin1String(", "))));
        }
    }
}

/// The plug-in takes another nucleus of the file for one that it has no frequency of.
void Simulation::checkNuclei(const SimulateOptions &options, const QVariantHash &made) const
{
    const char *keys[] = {"nucF2", "nucF1"};
    for (int d = 0; d < (options.twoDimensional ? 2 : 1); ++d) {
        if (made.value(key(keys[d])).toString() != options.dimension[d].nucleus)
            throw CommandError(Texts::tr("the plug-in cannot simulate %1").arg(options.dimension[d].nucleus));
    }
}

void Simulation::callSlot(QObject *object, const char *slot)
{
    const int index = object ? object->metaObject()->indexOfMethod(slot) : -1;
    if (index < 0)
        throw CommandError(Texts::tr("the plug-in that read %1 has no method %2").arg(m_fileName, key(slot)));
    object->metaObject()->method(index).invoke(object, Qt::DirectConnection);
    const QStringList errors = m_log.takeErrors();
    if (!errors.isEmpty())
        throw CommandError(elided(errors.join(u'\n')));
}

void Simulation::createSpectrum(const SimulateOptions &options)
{
    checkSites(options);
    const qint64 points = qint64(pointsOf(options, 0)) * (options.twoDimensional ? pointsOf(options, 1) : 1);
    if (points > manyPoints)
        printError(Texts::tr("Note: %L1 points are many; this can take minutes\n").arg(points));
    m_options = options;
    // Alive until the plug-in is done: what it writes itself then goes to the file together with this.
    QSettings settings;
    writeSettings(settings, options);
    NmrItem *before = m_host.scene().currentNmrItem();
    callSlot(m_table->table(), "createSpectrum()");
    m_item = m_host.scene().currentNmrItem();
    if (!m_item || m_item == before)
        throw CommandError(Texts::tr("the plug-in made no spectrum of %1").arg(m_fileName));
    m_entry = data().activeEntryId();
    checkNuclei(options, parameters());
}

void Simulation::run(const SimulateOptions &options)
{
    createSpectrum(options);
    QVariantHash wanted = parameters();
    setRangesAndShifts(wanted, options);
    generate(wanted);
    m_log.takeInformation();
}

void Simulation::runForPeaks(const SimulateOptions &options)
{
    createSpectrum(options);
    if (options.dimension[0].quadrupolarShift || options.dimension[1].quadrupolarShift) {
        QVariantHash wanted = parameters();
        setQuadrupolarShifts(wanted, options);
        update(wanted);
    }
    m_log.takeInformation();
}

void Simulation::generate(QVariantHash wanted)
{
    if (m_options.twoDimensional) {
        // How wide the axes are shows once there is a spectrum.
        setDraftPoints(wanted);
        update(wanted);
        wanted.insert(key("lw"), missingLineWidths(wanted));
    }
    setPoints(wanted, m_options);
    update(wanted);
}

QVariantMap Simulation::missingLineWidths(const QVariantHash &wanted) const
{
    const SimulateOptions &options = m_options;
    const auto widths = data().entry(m_entry).value(key("SpecInfo")).toMap().value(key("SW")).value<DoubleVector>();
    const QVariantMap given = givenByNucleus(options, &DimensionOptions::lineWidth);
    QVariantMap needed;
    for (int d = 0; d < 2; ++d) {
        const QString &nucleus = options.dimension[d].nucleus;
        const double axis = d < int(widths.size()) ? widths[d] : 0;
        const double twoPoints = 2 * axis / pointsOf(options, d);
        // A nucleus seen in both dimensions has one width, which must do for both.
        needed.insert(nucleus, std::max({needed.value(nucleus).toDouble(), defaultLineWidth[d], twoPoints}));
    }
    QVariantMap all = wanted.value(key("lw")).toMap();
    all.insert(needed);
    all.insert(given);
    return all;
}

void Simulation::update(const QVariantHash &wanted)
{
    data().setEntryOrigParams(m_entry, magresFormat, wanted);
    callSlot(m_plugin, "updateSpectrum()");
}

TableItem &Simulation::table() const
{
    return *m_table;
}

NmrItem &Simulation::item() const
{
    return *m_item;
}

NmrData &Simulation::data() const
{
    return *m_item->nmrData();
}

QVariantHash Simulation::parameters() const
{
    return data().entryOrigParams(m_entry, magresFormat);
}

QVariantList Simulation::peaks() const
{
    return data().entryPeakList(m_entry).value(key("PeakList")).toList();
}

QString Simulation::lineWidths() const
{
    const QVariantHash used = parameters();
    const QVariantMap widths = used.value(key("lw")).toMap();
    QStringList texts;
    for (const char *nucleusKey : {"nucF2", "nucF1"}) {
        const QString nucleus = used.value(key(nucleusKey)).toString();
        const QString text = QStringLiteral("%1 Hz (%2)").arg(widths.value(nucleus).toDouble()).arg(nucleus);
        if (!texts.contains(text))
            texts.append(text);
        if (!m_options.twoDimensional)
            break;
    }
    return texts.join(QLatin1String(", "));
}

QString Simulation::averagingNote() const
{
    const auto isProton = [](const DimensionOptions &dimension) {
        return Nuclides::element(dimension.nucleus) == u"H";
    };
    if (m_options.averaging == 0
        || !std::any_of(std::begin(m_options.dimension), std::end(m_options.dimension), isProton))
        return {};
    const CrystalStructure atoms = structure();
    const UniqueSites sites = UniqueSites::of(atoms, {0, UniqueSites::Averaging(m_options.averaging)});
    QSet<QStringList> averaged;
    for (const UniqueSite &site : sites.sites) {
        for (int member : site.nuclei() > 1 ? site.atoms : std::vector<int>())
            averaged.insert(atoms.atoms[std::size_t(member)].labels);
    }
    QStringList strangers;
    for (const UniqueSite &site : sites.ofElement(QStringLiteral("H"))) {
        if (site.nuclei() == 1 && averaged.contains(atoms.atoms[std::size_t(site.atoms.front())].labels))
            strangers.append(atoms.name(site.atoms.front()));
    }
    if (strangers.isEmpty())
        return {};
    return Texts::tr(
               "Protons of no averaged group that are in the peak of one all the same, as they share its label: %1 "
               "(the first one %2)")
        .arg(strangers.size())
        .arg(strangers.constFirst());
}

void Simulation::addExperiment(const QString &fileName)
{
    const Spectrum &simulated = data().spectrum(m_entry);
    const Experiment experiment = ExperimentFile::open(fileName, simulated);
    reportNotes(fileName, experiment.notes());
    data().addEntry(experiment.beside(simulated.peaks), QFileInfo(fileName).fileName());
    // The commands of the plug-in work on the simulated entry.
    data().setActiveEntryId(m_entry);
}

QUuid Simulation::addExperiment(const Experiment &experiment)
{
    const QUuid entry = data().addEntry(experiment.beside(data().spectrum(m_entry).peaks), QString());
    data().setActiveEntryId(m_entry);
    return entry;
}

QString Simulation::autoReference()
{
    const QString text = fitReference();
    generate(parameters());
    m_log.takeInformation();
    return text;
}

QString Simulation::report(const char *slot)
{
    m_log.takeInformation();
    callSlot(m_plugin, slot);
    const QStringList texts = m_log.takeInformation();
    if (texts.isEmpty())
        throw CommandError(Texts::tr("the plug-in gave no report"));
    return texts.join(u'\n');
}

} // namespace Workbench
