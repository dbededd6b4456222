// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/comparison/ConfigurationAverage.h"
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/Simulation.h"
#include "data/NumberText.h"
#include "data/structure/MagresText.h"
#include "formats/OutputFiles.h"
#include "host/DataEngine.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "items/DocumentItem.h"

#include "data/Error.h"

#include <QFileInfo>

#include <algorithm>

namespace Workbench {
namespace {

QByteArray cell(const std::optional<double> &value)
{
    QByteArray text;
    if (value)
        NumberText::append17(text, *value);
    return text;
}

QByteArray errorTable(const CrystalStructure &mean, const std::vector<ConfigurationAverage::AtomErrors> &errors)
{
    QByteArray csv = "atom,element,shielding,shielding_error,efg_error\n";
    for (std::size_t i = 0; i < mean.atoms.size(); ++i)
        csv += mean.name(int(i)).toUtf8() + ',' + mean.atoms[i].element.toUtf8() + ','
            + cell(mean.atoms[i].isotropicShielding()) + ',' + cell(errors[i].shielding) + ','
            + cell(errors[i].gradient) + '\n';
    return csv;
}

QStringList comments(const CrystalStructure &mean, const ConfigurationAverage &average)
{
    QStringList lines{
        QStringLiteral("Mean tensors of %1 configurations, made by magres-workbench average").arg(average.count())};
    if (average.count() < 2)
        return lines;
    lines.append(QStringLiteral("Standard errors: atom, isotropic shielding (ppm), gradient along Vzz (a.u.)"));
    const auto errors = average.errors();
    for (std::size_t i = 0; i < errors.size(); ++i) {
        const auto shown = [](const std::optional<double> &error) {
            return error ? QString::number(*error, 'g', 4) : QStringLiteral("-");
        };
        lines.append(
            QStringLiteral("  %1 %2 %3").arg(mean.name(int(i)), shown(errors[i].shielding), shown(errors[i].gradient)));
    }
    return lines;
}

void closeAll(HostApplication &host)
{
    host.scene().removeAll();
    for (const QUuid &id : host.documentData().ids())
        host.documentData().remove(id);
}

CommandRun prepareAverage(const CommandLine &line)
{
    required(line, "o");
    const QStringList outputs = line.values("o"), files = line.positional();
    for (const QString &output : outputs) {
        const QString suffix = QFileInfo(output).suffix().toLower();
        if (suffix != u"magres" && suffix != u"csv")
            throw UsageError(
                QStringLiteral("option -o: the suffix of \"%1\" is not one of: .magres, .csv").arg(output));
    }
    return headless([=](HostApplication &host, MessageLog &log) {
        ConfigurationAverage average;
        CommonMethod method;
        for (const QString &file : files) {
            {
                Simulation simulation(host, log);
                simulation.readFile(file, {});
                average.add(simulation.structure(), file);
            }
            closeAll(host);
            const CalculationMethod own = CalculationMethod::fromFile(file);
            if (const auto other = method.add(file, own))
                throw CommandError(Texts::tr("%1: calculated with %2, but %3 with %4")
                                       .arg(file, own.text(), other->file, other->method.text()));
        }
        const CrystalStructure mean = average.mean();
        OutputFiles written;
        for (const QString &output : outputs) {
            const bool isTable = QFileInfo(output).suffix().toLower() == u"csv";
            written.open(output).write(isTable ? errorTable(mean, average.errors())
                                               : magresText(mean, method.method(), comments(mean, average)));
        }
        written.commit();
        printOut(QStringLiteral("Mean of %1 configurations of %2 atoms\n").arg(average.count()).arg(mean.atoms.size()));
    });
}

} // namespace

Command averageCommand()
{
    Command command{
        "average",
        "FILE... -o OUT.magres [-o ERRORS.csv]",
        "Writes the mean tensors of configurations of one system.",
        "Snapshots of its dynamics, or members of a thermal ensemble: the same atoms in the same order. Positions and\n"
        "lattice are means too. The standard error of each atom's isotropic shielding, and of its field gradient, "
        "takes\n"
        "the configurations as independent; it stands in the comments of the output and in a .csv table.",
        {{"o", "OUT", "Output file, .magres or .csv. May be given more than once. Required.", true}},
        prepareAverage,
    };
    command.files = Command::Several;
    return command;
}

} // namespace Workbench
