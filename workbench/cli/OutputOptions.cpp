// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/OutputOptions.h"

#include "cli/CliErrors.h"
#include "cli/Simulation.h"
#include "host/DocumentState.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/PluginManager.h"
#include "host/WMainWindow.h"
#include "io/DocumentFile.h"
#include "io/OutputFiles.h"
#include "io/PageExport.h"
#include "io/SpectrumExport.h"
#include "items/NmrData.h"
#include "items/NmrItem.h"

#include <QFileInfo>

namespace {

QString suffixOf(const QString &fileName)
{
    return QFileInfo(fileName).suffix().toLower();
}

void writePage(HostApplication &host, const QString &suffix, QIODevice &device)
{
    if (suffix == QLatin1String(DocumentFile::suffix))
        DocumentFile::write(device,
                            DocumentState::capture(host.scene(), *host.window().documentData(), &host.plugins()));
    else
        PageExport::writePage(host.scene(), device, *PageExport::formatOfSuffix(suffix));
}

void writeSpectrum(const Simulation &simulation, const QString &suffix, QIODevice &device)
{
    if (suffix == u"csv")
        SpectrumExport::writeCsv(simulation.data(), simulation.entry(), device);
    else if (suffix == u"json")
        SpectrumExport::writeJson(simulation.data(), simulation.entry(), device);
    else
        PageExport::writePlot(simulation.item(), device, *PageExport::formatOfSuffix(suffix));
}

} // namespace

OutputOptions::OutputOptions(const QStringList &fileNames, Kind kind) : m_fileNames(fileNames), m_kind(kind)
{
    QStringList seen;
    for (const QString &fileName : fileNames) {
        const QString suffix = suffixOf(fileName);
        const bool data = suffix == u"csv" || suffix == u"json";
        const bool document = suffix == QLatin1String(DocumentFile::suffix);
        if (!PageExport::formatOfSuffix(suffix) && !(kind == Spectrum ? data : document)) {
            throw UsageError(QStringLiteral("option -o: the suffix of \"%1\" is not one of: %2")
                                 .arg(fileName,
                                      kind == Spectrum ? QStringLiteral(".csv, .json, .png, .svg, .pdf")
                                                       : QStringLiteral(".png, .svg, .pdf, .magresdoc")));
        }
        const QString path = QFileInfo(fileName).absoluteFilePath();
        if (seen.contains(path))
            throw UsageError(QStringLiteral("option -o: \"%1\" is given twice").arg(fileName));
        seen.append(path);
    }
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
            writeSpectrum(simulation, suffix, device);
    }
    files.commit();
}
