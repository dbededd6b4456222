// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/ExportMenu.h"

#include "host/DataEngine.h"
#include "data/Elision.h"
#include "data/Error.h"
#include "host/MainScene.h"
#include "host/TableSites.h"
#include "data/Nuclides.h"
#include "formats/OutputFiles.h"
#include "document/PageExport.h"
#include "formats/MeasurementFormats.h"
#include "formats/TableExport.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "data/PluginCall.h"
#include "items/table/TableItem.h"

#include <QDir>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QRegularExpression>

#include <algorithm>
#include <stdexcept>

namespace Workbench {

namespace {

QString suffixOf(const QString &fileName)
{
    return QFileInfo(fileName).suffix().toLower();
}

template <typename Item>
Item *needed(Item *item, const QString &ifNone)
{
    if (!item)
        fail(ifNone);
    return item;
}

bool hasSelectedRow(const TableItem &table, const QString &nucleus)
{
    const QVariantList rows = table.selectedRowMaps();
    return std::any_of(rows.cbegin(), rows.cend(), [&](const QVariant &row) {
        return row.toMap().value(QStringLiteral("type")).toString() == Nuclides::element(nucleus);
    });
}

/// The whole file or none.
template <typename Write>
void writeFile(const QString &fileName, Write write)
{
    OutputFiles files;
    write(files.open(fileName));
    files.commit();
}

FileTypes spectrumTypes()
{
    FileTypes types = pictureTypes();
    for (const MeasurementFormat &format : measurementFormats()) {
        if (!format.write)
            continue;
        const bool saysMore = format.content != format.name;
        types.append({saysMore ? ExportMenu::tr("%1: %2").arg(format.name, format.content) : format.name,
                      format.suffixes.constFirst()});
    }
    return types;
}

} // namespace

ExportMenu::ExportMenu(MainScene *scene, DataEngine *customData, QWidget *window)
    : QMenu(tr("&Export"), window), m_scene(scene), m_data(customData)
{
    addAction(tr("&Page..."), QKeySequence(tr("Ctrl+E")), this,
              [this] { ask(tr("Export Page"), pictureTypes(), [this](const QString &name) { writePage(name); }); });
    addAction(tr("&Spectrum..."), this, [this] {
        QString written;
        ask(tr("Export Spectrum"), spectrumTypes(), [&](const QString &name) {
            writeSpectrum(name);
            written = name;
        });
        const NmrItem *item = m_scene->currentNmrItem();
        if (!written.isEmpty() && !PageExport::formatOfSuffix(suffixOf(written))
            && item->nmrData()->entryIds().size() > 1)
            Q_EMIT reported(tr("%1 is written: %2, the active one of %3 spectra")
                                .arg(written, item->nmrData()->entryName(item->nmrData()->activeEntryId()))
                                .arg(item->nmrData()->entryIds().size()));
    });
    addAction(tr("&Table..."), this,
              [this] { ask(tr("Export Table"), tableTypes(), [this](const QString &name) { writeTable(name); }); });
    addAction(tr("Spin S&ystem..."), this, &ExportMenu::askForSpinSystem);
    addSeparator();
    m_withNotes = addAction(tr("&Notes in Pictures of the Page"));
    m_withNotes->setCheckable(true);
}

void ExportMenu::ask(const QString &title, const FileTypes &types, const std::function<void(const QString &)> &write)
{
    const QFileInfo proposed(m_proposal ? m_proposal(types.constFirst().second) : QString());
    const QString folder = m_lastDirectory.isEmpty() ? proposed.path() : m_lastDirectory;
    const QString fileName =
        askForFileToSave(parentWidget(), title, QDir(folder).filePath(proposed.fileName()), filtersOf(types));
    if (fileName.isEmpty())
        return;
    m_lastDirectory = QFileInfo(fileName).path();
    try {
        write(fileName);
        Q_EMIT reported(tr("%1 is written").arg(fileName));
    } catch (const std::exception &error) {
        QMessageBox::critical(parentWidget(), tr("%1 cannot be written").arg(QFileInfo(fileName).fileName()),
                              elided(QString::fromUtf8(error.what())));
    }
}

void ExportMenu::writePage(const QString &fileName) const
{
    const PageExport::Format format = PageExport::formatOf(fileName);
    writeFile(fileName, [&](QIODevice &device) {
        PageExport::writePage(*m_scene, device, format,
                              m_withNotes->isChecked() ? PageExport::Notes::Shown : PageExport::Notes::Hidden);
    });
}

void ExportMenu::writeSpectrum(const QString &fileName) const
{
    NmrItem *item = needed(m_scene->currentNmrItem(), tr("There is no spectrum on the page"));
    writeFile(fileName, [&](QIODevice &device) {
        PageExport::writeSpectrum(*item, item->nmrData()->activeEntryId(), suffixOf(fileName), device);
    });
}

void ExportMenu::writeTable(const QString &fileName) const
{
    const TableItem *item = needed(m_scene->currentTableItem(), tr("There is no table on the page"));
    const auto format = TableExport::formatOfName(suffixOf(fileName));
    if (!format)
        fail(tr("The file name must end in .csv or .json"));
    writeFile(fileName, [&](QIODevice &device) { device.write(TableExport::write(item->content(), *format)); });
}

QStringList ExportMenu::nucleiOfSpectrum() const
{
    const NmrItem *item = m_scene->currentNmrItem();
    QStringList nuclei;
    for (const SpectrumAxis &axis : item ? item->nmrData()->shownSpectrum().axes : QList<SpectrumAxis>())
        nuclei.append(axis.isotope());
    nuclei.removeDuplicates();
    return nuclei;
}

/// The atoms of the nuclei that the table's selected rows hold (none: all), and the scales of the shifts.
SpinSystem::Options ExportMenu::spinSystemOptions(const TableItem &table, const QStringList &nuclei,
                                                  const SiteTable::Options &scales)
{
    SpinSystem::Options options;
    options.nuclei = nuclei;
    QStringList elements;
    for (const QString &nucleus : nuclei) {
        elements.append(Nuclides::element(nucleus));
        options.references.insert(nucleus, scales.scaleOf(nucleus).reference);
        options.slopes.insert(nucleus, scales.scaleOf(nucleus).slope);
    }
    for (const QVariant &row : table.selectedRowMaps()) {
        const QVariantMap map = row.toMap();
        if (elements.contains(map.value(QStringLiteral("type")).toString()))
            options.labels += map.value(QStringLiteral("labels")).toStringList();
    }
    return options;
}

QString ExportMenu::writeSpinSystem(const QString &fileName, const QStringList &nuclei) const
{
    const TableItem *table = needed(m_scene->currentTableItem(), tr("There is no table on the page"));
    const auto ids = callPlugin<QList<QUuid>>(table->table(), "tableItem_sharedDataIds()");
    for (const QString &nucleus : nuclei) {
        if (!Nuclides::table().contains(nucleus))
            fail(tr("\"%1\" is not an NMR nucleus such as 13C").arg(nucleus));
    }
    const SiteTable::Options scales = m_scene->tableSites()->optionsOf(*table);
    const SpinSystem::Options options = spinSystemOptions(*table, nuclei, scales);
    for (const QString &nucleus : nuclei) {
        if (!table->selectedRowMaps().isEmpty() && !hasSelectedRow(*table, nucleus))
            fail(tr("The selected rows of the table hold no site of %1. Select some, or no row at all for all sites")
                     .arg(nucleus));
    }
    SpinSystem system = SpinSystem::fromData(m_data->getDataMap(ids.value(0)), options);
    QStringList counts, shifts;
    for (const QString &nucleus : nuclei) {
        const auto sites = std::count_if(system.sites.begin(), system.sites.end(),
                                         [&](const SpinSystem::Site &site) { return site.nucleus == nucleus; });
        counts.append(tr("%1 of %2").arg(sites).arg(nucleus));
        if (std::any_of(system.sites.begin(), system.sites.end(),
                        [&](const SpinSystem::Site &site) { return site.nucleus == nucleus && site.shift; }))
            shifts.append(tr("%1: %2").arg(nucleus, scales.scaleOf(nucleus).text()));
    }
    system.notes = shifts + system.notes;
    const bool isMrsimulator = suffixOf(fileName) == u"mrsim" || suffixOf(fileName) == u"json";
    writeFile(fileName, [&](QIODevice &device) {
        device.write(isMrsimulator ? system.mrsimulator(table->title()) : system.simpson(table->title()));
    });
    const QString text = tr("%n site(s): %1", nullptr, int(system.sites.size())).arg(counts.join(QLatin1String(", ")));
    // An input of SIMPSON has all of them in comments.
    return (QStringList{text} + (isMrsimulator ? system.notes : shifts)).join(QLatin1String("; "));
}

QString ExportMenu::sitesOffered() const
{
    const TableItem *table = m_scene->currentTableItem();
    QMap<QString, int> sites;
    const QVariantList selected = table ? table->selectedRowMaps() : QVariantList();
    for (const QVariant &row : !table || !selected.isEmpty() ? selected : table->rowMaps())
        sites[row.toMap().value(QStringLiteral("type")).toString()] +=
            int(std::max<qsizetype>(1, row.toMap().value(QStringLiteral("atomNos")).toList().size()));
    QStringList texts;
    for (auto it = sites.cbegin(); it != sites.cend(); ++it)
        texts.append(tr("%1 of %2").arg(it.value()).arg(it.key()));
    return tr("Sites that would be written: %1").arg(texts.join(QLatin1String(", ")));
}

void ExportMenu::askForSpinSystem()
{
    if (m_lastNuclei.isEmpty())
        m_lastNuclei = nucleiOfSpectrum().join(QLatin1String(", "));
    const TableItem *table = m_scene->currentTableItem();
    const bool chosen = table && !table->selectedRowMaps().isEmpty();
    bool accepted = false;
    const QString text = QInputDialog::getText(
        parentWidget(), tr("Export Spin System"),
        tr("Nuclei, such as 13C, 1H. %1\n%2:")
            .arg(chosen ? tr("Only atoms in the selected rows of the table are taken.")
                        : tr("All their atoms are taken; rows selected in the table restrict them."),
                 sitesOffered()),
        QLineEdit::Normal, m_lastNuclei, &accepted);
    const QStringList nuclei = text.split(QRegularExpression(QStringLiteral("[\\s,;]+")), Qt::SkipEmptyParts);
    if (!accepted || nuclei.isEmpty())
        return;
    // Before a file is chosen, and what is none is not proposed again.
    for (const QString &nucleus : nuclei) {
        if (!Nuclides::table().contains(nucleus)) {
            QMessageBox::warning(parentWidget(), tr("Export Spin System"),
                                 tr("\"%1\" is not an NMR nucleus such as 13C").arg(nucleus));
            return;
        }
    }
    m_lastNuclei = text;
    QString done;
    ask(tr("Export Spin System"),
        {{tr("SIMPSON input"), QStringLiteral("in")}, {tr("mrsimulator spin systems"), QStringLiteral("mrsim")}},
        [&](const QString &name) { done = writeSpinSystem(name, nuclei); });
    if (!done.isEmpty())
        Q_EMIT reported(tr("The spin system is written: %1").arg(done));
}

} // namespace Workbench

#include "moc_ExportMenu.cpp"
