// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/SiteTable.h"
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/ComparisonOptions.h"
#include "cli/OptionValues.h"
#include "cli/SimulateOptions.h"
#include "cli/Simulation.h"
#include "data/Nuclides.h"
#include "formats/TableExport.h"
#include "items/table/TableItem.h"
#include "data/Error.h"

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

/// What the table gets besides the plug-in's own.
struct TableOptions {
    std::vector<const SiteColumn *> columns;
    bool unique = false;
    SiteTable::Options sites;
    std::vector<ReferenceSet> sets; ///< that references and slopes were taken from
};

QString columnNames()
{
    QStringList all;
    for (const SiteColumn &column : siteColumns())
        all.append(QLatin1String(column.name));
    return all.join(QLatin1String(", "));
}

std::vector<const SiteColumn *> parseColumns(const CommandLine &line)
{
    std::vector<const SiteColumn *> columns;
    for (const QString &name : line.value("columns").split(u',', Qt::SkipEmptyParts)) {
        const SiteColumn *column = siteColumn(name.trimmed());
        if (!column)
            throw UsageError(Texts::tr("option --columns: \"%1\" is not one of: %2").arg(name, columnNames()));
        if (std::find(columns.begin(), columns.end(), column) != columns.end())
            throw UsageError(Texts::tr("option --columns: \"%1\" is given twice").arg(name));
        columns.push_back(column);
    }
    return columns;
}

/// "NUC=VALUE" options. A nucleus stands for its element: one row has one shift.
QMap<QString, double> byElement(const CommandLine &line, const char *option)
{
    QMap<QString, double> values;
    for (const QString &text : line.values(option)) {
        const QString shown = CommandLine::shown(option);
        const qsizetype equals = text.indexOf(u'=');
        if (equals < 0)
            throw UsageError(Texts::tr("option %1: \"%2\" names no nucleus, as in 13C=170").arg(shown, text));
        const QString nucleus = OptionValues::nucleus(shown, text.left(equals));
        // A column has the sites of an element.
        if (values.contains(Nuclides::element(nucleus)))
            throw UsageError(Texts::tr("option %1 is given twice for %2").arg(shown, Nuclides::element(nucleus)));
        values.insert(Nuclides::element(nucleus), OptionValues::number(shown, text.mid(equals + 1)));
    }
    return values;
}

TableOptions parseTableOptions(const CommandLine &line)
{
    TableOptions options;
    options.columns = parseColumns(line);
    options.unique = line.has("unique");
    for (const char *option : {"average", "symmetry-tolerance"}) {
        if (!options.unique && line.has(option))
            throw UsageError(Texts::tr("option %1 needs --unique").arg(CommandLine::shown(option)));
    }
    options.sites.sites = {parseSymmetryTolerance(line), parseAveraging(line)};
    QMap<QString, SiteTable::Scale> &scales = options.sites.scales;
    options.sets = parseReferenceSets(line, {});
    for (const ReferenceSet &set : options.sets) {
        const QString element = Nuclides::element(set.nucleus);
        if (scales.contains(element))
            throw UsageError(Texts::tr("option --reference-set: two sets are of %1").arg(element));
        scales[element] = {set.calibration.reference, set.calibration.slope, {}};
    }
    const QMap<QString, double> references = byElement(line, "reference"), slopes = byElement(line, "slope");
    for (auto it = references.cbegin(); it != references.cend(); ++it)
        scales[it.key()].reference = *it;
    for (auto it = slopes.cbegin(); it != slopes.cend(); ++it)
        scales[it.key()].slope = *it;
    if (line.has("frequency"))
        options.sites.frequency = OptionValues::positive(QStringLiteral("--frequency"), line.value("frequency"));
    return options;
}

/// The table with the columns, by row or by unique site; for sites the plug-in's has to have a row for every atom.
class ExtendedTable {
public:
    ExtendedTable(const TableOptions &options, const CrystalStructure &structure, const TableContent &plugin)
        : m_options(options), m_plugin(plugin), m_sites(structure, options.sites)
    {
    }

    /// Of the sites, where they are shown.
    QStringList warnings() const
    {
        const auto needsSites = [](const SiteColumn *column) { return column->basis == SiteColumn::Basis::Symmetry; };
        const bool any = std::any_of(m_options.columns.begin(), m_options.columns.end(), needsSites);
        return m_options.unique || any ? m_sites.unique().warnings : QStringList();
    }

    TableContent content() const
    {
        TableContent table = m_plugin;
        for (const SiteColumn *column : m_options.columns) {
            table.titles.append(QString::fromUtf8(column->title));
            table.extraKeys.append(QLatin1String(column->name));
        }
        if (m_options.unique) {
            table.titles = QStringList{QStringLiteral("Site"), QStringLiteral("Atoms")} + table.titles;
            table.extraKeys = QStringList{QStringLiteral("site"), QStringLiteral("atoms")} + table.extraKeys;
        }
        table.cells.clear();
        table.rows.clear();
        if (m_options.unique) {
            for (const UniqueSite &site : m_sites.unique().sites)
                addRow(table, site.shown, &site);
        } else {
            for (int row = 0; row < int(m_plugin.rows.size()); ++row)
                addRow(table, m_sites.atomOfRow(m_plugin.rows[row].toMap()), nullptr);
        }
        return table;
    }

private:
    void addRow(TableContent &table, int atom, const UniqueSite *site) const
    {
        const std::size_t row = site ? std::size_t(atom) : table.cells.size();
        QStringList cells = m_plugin.cells[row];
        QVariantMap map = m_plugin.rows[qsizetype(row)].toMap();
        if (atom >= 0) {
            for (const SiteColumn *column : m_options.columns) {
                const auto value = m_sites.value(*column, atom);
                cells.append(value ? QString::number(*value, 'f', column->digits) : QString());
                if (value)
                    map.insert(QLatin1String(column->name), *value);
            }
        } else {
            for (std::size_t i = 0; i < m_options.columns.size(); ++i)
                cells.append(QString());
        }
        if (site) {
            QStringList atomNames;
            QVariantList records;
            for (int member : site->atoms) {
                atomNames.append(m_sites.structure().name(member));
                records.append(m_sites.structure().atoms[std::size_t(member)].record);
            }
            cells = QStringList{site->name, atomNames.join(u' ')} + cells;
            map.insert(QStringLiteral("site"), site->name);
            map.insert(QStringLiteral("atoms"), atomNames);
            map.insert(QStringLiteral("atomNos"), records);
        }
        table.cells.push_back(cells);
        table.rows.append(map);
    }

    const TableOptions &m_options;
    const TableContent m_plugin;
    const SiteTable m_sites;
};

CommandRun prepareTable(const CommandLine &line)
{
    const auto isotopes = parseIsotopes(line);
    const QString formatName = line.has("format") ? line.value("format") : QStringLiteral("text");
    const auto format = TableExport::formatOfName(formatName);
    if (!format)
        throw UsageError(Texts::tr("option --format: \"%1\" is not one of: text, csv, json").arg(formatName));
    const TableOptions options = parseTableOptions(line);
    const QString file = line.positional().constFirst();
    return headless([=](HostApplication &host, MessageLog &log) {
        Simulation simulation(host, log);
        simulation.readFile(file, isotopes);
        warnOfMethods(options.sets, file);
        TableContent content = options.unique ? simulation.tableByAtom() : simulation.table().content();
        if (options.unique || !options.columns.empty()) {
            const CrystalStructure structure = simulation.structure();
            const ExtendedTable extended(options, structure, content);
            for (const QString &warning : extended.warnings())
                printError(Texts::tr("magres-workbench table: %1\n").arg(warning));
            content = extended.content();
        }
        printOut(QString::fromUtf8(TableExport::write(content, *format)));
    });
}

/// Kept for the program's lifetime: options hold no texts of their own.
const char *columnsDescription()
{
    static const QByteArray text = [] {
        QByteArray all = "More columns, as in span,skew. They are:";
        for (const SiteColumn &column : siteColumns())
            all += QByteArray(all.endsWith(':') ? " " : "; ") + column.name + " (" + QByteArray(column.title) + ")";
        return all + ".";
    }();
    return text.constData();
}

} // namespace

Command tableCommand()
{
    return {
        "table",
        "FILE [options]",
        "Prints the table of NMR parameters of a file.",
        "One row per label: shieldings in ppm, quadrupolar coupling constants in MHz. csv and json have full "
        "precision.",
        {{"format", "text|csv|json", "Format of the table. Default: text."},
         isotopeSpec(),
         {"unique", nullptr,
          "One row per site: atoms that the space group maps onto each other, with the values of the first."},
         {"columns", "NAMES", columnsDescription()},
         symmetryToleranceOption(),
         {"average", "MODE", "With --unique: groups of three hydrogens as one site: none, ch3 or xh3. Default: none."},
         {"reference", "NUC=PPM", "Reference of the principal shifts. Default: 100.", true},
         {"slope", "NUC=X", "Slope of the principal shifts. Default: -1.", true},
         referenceSetOption(),
         {"frequency", "MHZ", "Spectrometer frequency of 1H for the quadrupole induced shift. Default: 600."}},
        prepareTable,
    };
}

} // namespace Workbench
