// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/OutputOptions.h"

#include "cli/CliErrors.h"
#include "cli/Simulation.h"
#include "document/DocumentState.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/PluginManager.h"
#include "formats/DocumentFile.h"
#include "formats/OutputFiles.h"
#include "document/PageExport.h"
#include "formats/SpectrumExport.h"
#include "items/plot/NmrItem.h"
#include "data/Error.h"

#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace Workbench {

namespace {

void writePage(HostApplication &host, const QString &suffix, QIODevice &device)
{
    if (suffix == QLatin1String(DocumentFile::suffix))
        DocumentFile::write(device, DocumentState::capture(host.scene(), host.documentData(), &host.plugins()));
    else
        PageExport::writePage(host.scene(), device, *PageExport::formatOfSuffix(suffix));
}

QStringList knownSuffixes(OutputOptions::Kind kind)
{
    return kind == OutputOptions::Page ? PageExport::suffixes() + QStringList(QLatin1String(DocumentFile::suffix))
                                       : SpectrumExport::suffixes() + PageExport::suffixes();
}

} // namespace

QString OutputOptions::suffixOf(const QString &fileName)
{
    return QFileInfo(fileName).suffix().toLower();
}

OutputOptions::OutputOptions(const QStringList &fileNames, Kind kind) : m_fileNames(fileNames), m_kind(kind)
{
    const QStringList known = knownSuffixes(kind);
    QStringList seen;
    for (const QString &fileName : fileNames) {
        const QString suffix = suffixOf(fileName);
        if (!known.contains(suffix)) {
            throw UsageError(Texts::tr("option -o: the suffix of \"%1\" is not one of: %2")
                                 .arg(fileName, u'.' + known.join(QLatin1String(", ."))));
        }
        const QString path = QFileInfo(fileName).absoluteFilePath();
        if (seen.contains(path))
            throw UsageError(Texts::tr("option -o: \"%1\" is given twice").arg(fileName));
        seen.append(path);
    }
}

void OutputOptions::refuseInputs(const QStringList &outputs, const QStringList &inputs)
{
    QHash<QString, QString> existing;
    for (const QString &output : outputs) {
        if (QFileInfo::exists(output))
            existing.insert(QFileInfo(output).canonicalFilePath(), output);
    }
    // There may be a hundred thousand inputs, and mostly there is nothing that they could be.
    for (qsizetype i = 0; !existing.isEmpty() && i < inputs.size(); ++i) {
        const auto found = existing.constFind(QFileInfo(inputs[i]).canonicalFilePath());
        if (found != existing.constEnd())
            throw UsageError(Texts::tr("option -o: \"%1\" is read by this command").arg(*found));
    }
}

bool OutputOptions::areDrawn() const
{
    return m_kind == Page || std::any_of(m_fileNames.begin(), m_fileNames.end(), [](const QString &fileName) {
               return PageExport::formatOfSuffix(suffixOf(fileName)).has_value();
           });
}

void OutputOptions::write(HostApplication &host, const Simulation &simulation) const
{
    OutputFiles files;
    for (const QString &fileName : m_fileNames) {
        QIODevice &device = files.open(fileName);
        const QString suffix = suffixOf(fileName);
        if (m_kind == Page)
            writePage(host, suffix, device);
        else
            PageExport::writeSpectrum(simulation.item(), simulation.entry(), suffix, device);
    }
    files.commit();
}

} // namespace Workbench
