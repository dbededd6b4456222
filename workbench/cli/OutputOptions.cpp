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

} // namespace

OutputOptions::OutputOptions(const QStringList &fileNames, Kind kind) : m_fileNames(fileNames), m_kind(kind)
{
    const QStringList pages{QStringLiteral("png"), QStringLiteral("svg"), QStringLiteral("pdf"),
                            QLatin1String(DocumentFile::suffix)};
    QStringList seen;
    for (const QString &fileName : fileNames) {
        const QString suffix = suffixOf(fileName);
        const QStringList known = kind == Spectrum ? SpectrumExport::suffixes() : pages;
        if (!known.contains(suffix)) {
            throw UsageError(QStringLiteral("option -o: the suffix of \"%1\" is not one of: %2")
                                 .arg(fileName, u'.' + known.join(QLatin1String(", ."))));
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
            SpectrumExport::write(simulation.item(), simulation.entry(), suffix, device);
    }
    files.commit();
}
