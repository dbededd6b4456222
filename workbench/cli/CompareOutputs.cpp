// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CompareOutputs.h"

#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "data/Error.h"
#include "document/PageExport.h"
#include "formats/OutputFiles.h"
#include "items/plot/AgreementPlot.h"
#include "items/plot/PlotPainting.h"

#include <QFileInfo>

namespace Workbench {
namespace {

std::optional<TableExport::Format> tableFormatOf(const QString &fileName)
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    return suffix == u"txt" ? TableExport::Format::Text
        : suffix == u"text" ? std::nullopt
                            : TableExport::formatOfName(suffix);
}

} // namespace

CompareOutputs::CompareOutputs(const CommandLine &line) : m_fileNames(line.values("o"))
{
    const QString name = line.has("format") ? line.value("format") : QStringLiteral("text");
    const auto known = TableExport::formatOfName(name);
    if (!known)
        throw UsageError(Texts::tr("option --format: \"%1\" is not one of: text, csv, json").arg(name));
    m_format = *known;
    for (const QString &fileName : m_fileNames) {
        if (!tableFormatOf(fileName) && !PageExport::formatOfSuffix(QFileInfo(fileName).suffix()))
            throw UsageError(Texts::tr("option -o: the suffix of \"%1\" is not one of: .txt, .csv, .json, .%2")
                                 .arg(fileName, PageExport::suffixes().join(QLatin1String(", ."))));
    }
}

void CompareOutputs::write(const std::function<QByteArray(TableExport::Format)> &table,
                           const std::vector<NucleusComparison> &comparisons) const
{
    OutputFiles files;
    bool hasTable = false;
    for (const QString &fileName : m_fileNames) {
        QIODevice &device = files.open(fileName);
        if (const auto format = tableFormatOf(fileName)) {
            device.write(table(*format));
            hasTable = true;
            continue;
        }
        AgreementPlot plot;
        plot.setComparisons(comparisons);
        PageExport::writePicture([&](QPainter *painter, const QRectF &area) { paintPlot(plot, painter, area); },
                                 plot.fullSize(), device, *PageExport::formatOfSuffix(QFileInfo(fileName).suffix()));
    }
    files.commit();
    if (!hasTable)
        printOut(QString::fromUtf8(table(m_format)));
}

} // namespace Workbench
