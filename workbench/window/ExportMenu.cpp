// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/ExportMenu.h"

#include "host/DataEngine.h"
#include "data/Elision.h"
#include "data/Error.h"
#include "host/MainScene.h"
#include "data/Nuclides.h"
#include "formats/OutputFiles.h"
#include "document/PageExport.h"
#include "formats/SpectrumExport.h"
#include "formats/TableExport.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "data/PluginCall.h"
#include "items/table/TableItem.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QRegularExpression>

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

/// The whole file or none.
template <typename Write>
void writeFile(const QString &fileName, Write write)
{
    OutputFiles files;
    write(files.open(fileName));
    files.commit();
}

/// File types by their names and suffixes.
using Types = QList<std::pair<QString, QString>>;

Types pictures()
{
    return {{ExportMenu::tr("PDF document"), QStringLiteral("pdf")},
            {ExportMenu::tr("SVG image"), QStringLiteral("svg")},
            {ExportMenu::tr("PNG image"), QStringLiteral("png")}};
}

Types spectrumFiles()
{
    Types types = pictures();
    for (const SpectrumExport::Format &format : SpectrumExport::formats())
        types.append({Texts::tr(format.name), format.suffixes.constFirst()});
    return types;
}

Types tableFiles()
{
    return {{ExportMenu::tr("Comma-separated values"), QStringLiteral("csv")},
            {ExportMenu::tr("JSON"), QStringLiteral("json")}};
}

} // namespace

ExportMenu::ExportMenu(MainScene *scene, DataEngine *customData, QWidget *window)
    : QMenu(tr("&Export"), window), m_scene(scene), m_data(customData)
{
    addAction(tr("&Page..."), QKeySequence(tr("Ctrl+E")), this,
              [this] { ask(tr("Export Page"), pictures(), [this](const QString &name) { writePage(name); }); });
    addAction(tr("&Spectrum..."), this, [this] {
        ask(tr("Export Spectrum"), spectrumFiles(), [this](const QString &name) { writeSpectrum(name); });
    });
    addAction(tr("&Table..."), this,
              [this] { ask(tr("Export Table"), tableFiles(), [this](const QString &name) { writeTable(name); }); });
    addAction(tr("SIMPSON Spin S&ystem..."), this, &ExportMenu::askForSpinSystem);
}

void ExportMenu::ask(const QString &title, const QList<std::pair<QString, QString>> &types,
                     const std::function<void(const QString &)> &write)
{
    QStringList filters;
    for (const auto &[name, suffix] : types)
        filters.append(QStringLiteral("%1 (*.%2)").arg(name, suffix));
    QString chosen;
    QString fileName = QFileDialog::getSaveFileName(parentWidget(), title, m_lastDirectory,
                                                    filters.join(QLatin1String(";;")), &chosen);
    if (fileName.isEmpty())
        return;
    m_lastDirectory = QFileInfo(fileName).path();
    if (QFileInfo(fileName).suffix().isEmpty())
        fileName += u'.' + types.value(std::max<qsizetype>(filters.indexOf(chosen), 0)).second;
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
    writeFile(fileName, [&](QIODevice &device) { PageExport::writePage(*m_scene, device, format); });
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
        nuclei.append(QString::number(axis.massNumber) + axis.element);
    nuclei.removeDuplicates();
    return nuclei;
}

/// The atoms of the nuclei that the table's selected rows hold (none: all), and reference and slope of the current
/// spectrum.
SpinSystem::Options ExportMenu::spinSystemOptions(const QStringList &nuclei) const
{
    SpinSystem::Options options;
    options.nuclei = nuclei;
    QStringList elements;
    for (const QString &nucleus : nuclei)
        elements.append(Nuclides::element(nucleus));
    const TableItem *table = m_scene->currentTableItem();
    for (const QVariant &row : table ? table->selectedRowMaps() : QVariantList()) {
        const QVariantMap map = row.toMap();
        if (elements.contains(map.value(QStringLiteral("type")).toString()))
            options.labels += map.value(QStringLiteral("labels")).toStringList();
    }
    if (const NmrItem *item = m_scene->currentNmrItem()) {
        NmrData &stack = *item->nmrData();
        for (const QUuid &entry : stack.entryIds()) {
            const QVariantHash parameters = stack.entryOrigParams(entry, QStringLiteral("magres"));
            const auto take = [&](const char *key, QMap<QString, double> &values) {
                const QVariantMap map = parameters.value(QLatin1String(key)).toMap();
                for (auto it = map.cbegin(); it != map.cend(); ++it)
                    values.insert(it.key(), it->toDouble());
            };
            take("ref", options.references);
            take("slope", options.slopes);
        }
    }
    return options;
}

void ExportMenu::writeSpinSystem(const QString &fileName, const QStringList &nuclei) const
{
    const TableItem *table = needed(m_scene->currentTableItem(), tr("There is no table on the page"));
    const auto ids = callPlugin<QList<QUuid>>(table->table(), "tableItem_sharedDataIds()");
    for (const QString &nucleus : nuclei) {
        if (!Nuclides::table().contains(nucleus))
            fail(tr("\"%1\" is not an NMR nucleus such as 13C").arg(nucleus));
    }
    const SpinSystem system = SpinSystem::fromData(m_data->getDataMap(ids.value(0)), spinSystemOptions(nuclei));
    writeFile(fileName, [&](QIODevice &device) { device.write(system.simpson(table->title())); });
}

void ExportMenu::askForSpinSystem()
{
    if (m_lastNuclei.isEmpty())
        m_lastNuclei = nucleiOfSpectrum().join(QLatin1String(", "));
    bool accepted = false;
    const QString text = QInputDialog::getText(
        parentWidget(), tr("SIMPSON Spin System"),
        tr("Nuclei, such as 13C, 1H. Of their atoms those in the selected rows of the table are taken, or all:"),
        QLineEdit::Normal, m_lastNuclei, &accepted);
    const QStringList nuclei = text.split(QRegularExpression(QStringLiteral("[\\s,;]+")), Qt::SkipEmptyParts);
    if (!accepted || nuclei.isEmpty())
        return;
    m_lastNuclei = text;
    ask(tr("SIMPSON Spin System"), {{tr("SIMPSON input"), QStringLiteral("in")}},
        [&](const QString &name) { writeSpinSystem(name, nuclei); });
}

} // namespace Workbench
