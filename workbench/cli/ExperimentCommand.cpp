// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CliErrors.h"
#include "cli/Commands.h"
#include "cli/OptionValues.h"
#include "cli/OutputOptions.h"
#include "data/Elision.h"
#include "document/PageExport.h"
#include "formats/MeasurementReport.h"
#include "formats/OutputFiles.h"
#include "formats/SpectrumExport.h"
#include "formats/SpectrumReader.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "items/plot/NmrItem.h"

#include "data/Error.h"

#include <QFileInfo>

namespace Workbench {

namespace {

struct Question {
    QString nucleus; ///< of F2, where the file does not say
    ReadOptions options;
    bool peaksOfFile = false;
};

Measurement readFile(const QString &path, const Question &question)
{
    Measurement measurement = readMeasurement(existingExperiment(path, question.peaksOfFile), question.options);
    auto *spectrum = std::get_if<ExperimentalSpectrum>(&measurement);
    QString &nucleus = spectrum ? spectrum->dimensions[0].nucleus : std::get<MeasuredPeaks>(measurement).nuclei[0];
    if (nucleus.isEmpty())
        nucleus = question.nucleus;
    if (!question.nucleus.isEmpty() && nucleus != question.nucleus) {
        throw CommandError(
            QStringLiteral("%1: this is a measurement of %2, not of %3").arg(path, nucleus, question.nucleus));
    }
    return measurement;
}

void writeReport(const MeasurementReport &report, const QString &suffix, HostApplication &host, QIODevice &device)
{
    if (suffix == u"json") {
        const QByteArray text = report.json();
        if (device.write(text) != text.size())
            throw CommandError(Texts::tr("the report cannot be written: %1").arg(device.errorString()));
    } else if (!report.hasPoints() && suffix == u"csv") {
        report.writePeaks(device);
    } else if (!report.hasPoints()) {
        throw CommandError(
            QStringLiteral("a list of peaks has no points to write as .%1; .csv and .json hold peaks").arg(suffix));
    } else if (const auto picture = PageExport::formatOfSuffix(suffix)) {
        auto *item = qobject_cast<NmrItem *>(host.scene().createNMRItem({}, report.entry().data, false));
        PageExport::writePlot(*item, device, *picture);
    } else {
        SpectrumExport::write(report.entry(), suffix, device);
    }
}

CommandRun prepareExperiment(const CommandLine &line)
{
    Question question;
    if (line.has("nucleus"))
        question.nucleus = OptionValues::nucleus(CommandLine::shown("nucleus"), line.value("nucleus"));
    if (line.has("unit")) {
        const QStringList units{QStringLiteral("ppm"), QStringLiteral("Hz"), QStringLiteral("kHz")};
        question.options.unit = units[OptionValues::choice(CommandLine::shown("unit"), line.value("unit"), units)];
    }
    if (line.has("frequency")) {
        const double frequency = OptionValues::positive(CommandLine::shown("frequency"), line.value("frequency"));
        question.options.frequency = {frequency, frequency};
    }
    if (line.has("frequency-f1")) {
        question.options.frequency[1] =
            OptionValues::positive(CommandLine::shown("frequency-f1"), line.value("frequency-f1"));
    }
    question.peaksOfFile = wantsPeaksOfFile(line);
    const QStringList outputs = line.values("o"), files = line.positional();
    const OutputOptions checked(outputs, OutputOptions::Spectrum);
    if (!outputs.isEmpty() && files.size() > 1)
        throw UsageError(Texts::tr("option -o: one EXP was expected, found %1").arg(files.size()));
    return [=](const ProgramStart &start) {
        int failed = 0;
        const auto run = [&](HostApplication &host, MessageLog &) {
            host.scene().setDrawn(checked.areDrawn());
            for (const QString &path : files) {
                try {
                    const MeasurementReport report(readFile(path, question));
                    OutputFiles written;
                    for (const QString &output : outputs)
                        writeReport(report, QFileInfo(output).suffix().toLower(), host, written.open(output));
                    written.commit();
                    printOut(path + u'\n' + report.text());
                } catch (const std::exception &error) {
                    if (files.size() == 1)
                        throw;
                    ++failed;
                    printError(elided(QString::fromUtf8(error.what())) + u'\n');
                }
            }
        };
        const int status = headless(run)(start);
        return failed > 0 ? int(ExitSomeFailed) : status;
    };
}

} // namespace

Command experimentCommand()
{
    return {
        "experiment",
        "EXP... [--nucleus NUC] [--unit ppm|Hz|kHz --frequency MHZ] [--peaks file] [-o OUT]...",
        "Says what measured files hold: format, axes, noise, peaks, and every assumption made.",
        "The content of a file decides how it is read, not its name. A file that cannot be read is refused with the "
        "reason;\nof several files the others are shown, and the exit status is 3.",
        {{"nucleus", "NUC", "Nucleus of a file that does not name it, e.g. 13C. Another one in the file is an error."},
         {"unit", "ppm|Hz|kHz", "Unit of the positions in plain text. Default: what the file says, or ppm."},
         {"frequency", "MHZ", "Frequency of 0 ppm, for positions in Hz or kHz where the file does not tell it."},
         {"frequency-f1", "MHZ", "The same in the indirect dimension. Default: as --frequency."},
         peaksOption(),
         {"o", "OUT",
          "Output file; its suffix chooses the format: .csv (data points or peaks), .json (all of the report), .jdx or "
          ".dx (JCAMP-DX), .csdf (CSDM), .png, .svg or .pdf (the plot). May be given more than once.",
          true}},
        prepareExperiment,
        Command::Several,
    };
}

} // namespace Workbench
