// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/OutputOptions.h"

#include "cli/CliErrors.h"
#include "cli/Simulation.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "io/JcampExport.h"
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

void writeSpectrum(const Simulation &simulation, const QString &suffix, QIODevice &device)
{
    if (suffix == u"csv")
        SpectrumExport::writeCsv(simulation.data(), simulation.entry(), device);
    else if (suffix == u"json")
        SpectrumExport::writeJson(simulation.data(), simulation.entry(), device);
    else if (suffix == u"jdx" || suffix == u"dx")
        JcampExport::write(simulation.data(), simulation.entry(), device);
    else
        PageExport::writePlot(simulation.item(), device, *PageExport::formatOfSuffix(suffix));
}

} // namespace

OutputOptions::OutputOptions(const QStringList &fileNames, Kind kind) : m_fileNames(fileNames), m_kind(kind)
{
    QStringList seen;
    for (const QString &fileName : fileNames) {
        const QString suffix = suffixOf(fileName);
        const bool data = suffix == u"csv" || suffix == u"json" || suffix == u"jdx" || suffix == u"dx";
        if (!PageExport::formatOfSuffix(suffix) && !(kind == Spectrum && data)) {
            throw UsageError(QStringLiteral("option -o: the suffix of \"%1\" is not one of: %2")
                                 .arg(fileName,
                                      kind == Spectrum ? QStringLiteral(".csv, .json, .jdx, .dx, .png, .svg, .pdf")
                                                       : QStringLiteral(".png, .svg, .pdf")));
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
            PageExport::writePage(host.scene(), device, *PageExport::formatOfSuffix(suffix));
        else
            writeSpectrum(simulation, suffix, device);
    }
    files.commit();
}
