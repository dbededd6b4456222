// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/SimpsonReader.h"

#include "data/NumberText.h"
#include "data/ReaderText.h"

#include <QFileInfo>

#include <cmath>
#include <map>
#include <optional>
#include <string>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;
using ReaderText::trimmed;

namespace SimpsonReader {

namespace {

constexpr qint64 largestFile = qint64(1) << 30;

struct Header {
    struct Value {
        std::string_view text;
        int line = 0;
    };
    std::map<std::string, Value> values;
    QString source;

    double number(const char *name, std::optional<double> missing = {}) const
    {
        const auto found = values.find(name);
        if (found == values.end()) {
            if (!missing)
                fail(source, Texts::tr("the line %1= is missing before DATA").arg(QString::fromLatin1(name)));
            return *missing;
        }
        const auto value = NumberText::parse<double>(found->second.text);
        if (!value)
            fail(source, found->second.line, Texts::tr("expected a number, found %1").arg(excerpt(found->second.text)));
        return *value;
    }
    std::string text(const char *name) const
    {
        const auto found = values.find(name);
        return found == values.end() ? std::string() : std::string(found->second.text);
    }
};

/// The number of points; what is no spectrum as text, in one or two dimensions, is refused.
qint64 checkedSize(const Header &header, double points, double rows)
{
    if (header.text("TYPE") != "SPE")
        fail(header.source,
             Texts::tr("expected TYPE=SPE, found %1: transform the FID (fft) and save the spectrum")
                 .arg(excerpt(header.text("TYPE"))));
    if (header.text("FORMAT") == "BINARY")
        fail(header.source,
             Texts::tr("the points are in binary form: save the spectrum as text (fsave without -binary)"));
    const double most = double(largestPointCount);
    if (!(points >= 2.0) || !(rows >= 1.0) || !(points * rows <= most) || points != std::floor(points)
        || rows != std::floor(rows))
        fail(header.source, Texts::tr("NP=%1, NI=%2 are no size of a spectrum").arg(points).arg(rows));
    return qint64(points) * qint64(rows);
}

SpectrumDimension dimension(double points, double width, double reference, double frequency)
{
    SpectrumDimension axis;
    axis.points = int(points);
    axis.frequency = frequency;
    axis.width = width;
    axis.step = width / points / frequency;
    axis.first = (reference - 0.5 * width) / frequency;
    return axis;
}

} // namespace

bool recognises(const QByteArray &start)
{
    ReaderText::Lines lines(ReaderText::view(start));
    return lines.next() && trimmed(lines.line()) == "SIMP";
}

ExperimentalSpectrum parse(const QByteArray &text, const QString &source, const ReadOptions &options)
{
    Header header{{}, source};
    ReaderText::Lines lines(ReaderText::view(text));
    bool hasData = false;
    while (!hasData && lines.next()) {
        const std::string_view line = trimmed(lines.line());
        const size_t equals = line.find('=');
        if (equals != std::string_view::npos)
            header.values[std::string(trimmed(line.substr(0, equals)))] = {trimmed(line.substr(equals + 1)),
                                                                           lines.number()};
        hasData = line == "DATA";
    }
    const double points = header.number("NP"), rows = header.number("NI", 1.0);
    const qint64 total = checkedSize(header, points, rows);
    for (int d = 0; d < (rows > 1.0 ? 2 : 1); ++d) {
        if (!(options.frequency[size_t(d)] > 0.0))
            throw FrequencyNeeded(
                QStringLiteral("%1: %2").arg(
                    source,
                    Texts::tr(
                        "the positions are in Hz: the frequency of 0 ppm in MHz is needed to make ppm of them and must "
                        "be given")),
                rows > 1.0 ? 2 : 1);
    }
    ExperimentalSpectrum spectrum;
    spectrum.format = QStringLiteral("SIMPSON");
    spectrum.title = QFileInfo(source).completeBaseName();
    spectrum.dimensions.push_back(
        dimension(points, header.number("SW"), header.number("REF", 0.0), options.frequency[0]));
    if (rows > 1.0)
        spectrum.dimensions.push_back(
            dimension(rows, header.number("SW1"), header.number("REF1", 0.0), options.frequency[1]));
    for (const SpectrumDimension &axis : spectrum.dimensions)
        spectrum.notes.append(
            Texts::tr("Hz were divided by %1 MHz; 0 Hz was taken as 0 ppm.").arg(axis.frequency, 0, 'g', 10));
    bool ended = false;
    while (!ended && lines.next()) {
        const std::string_view line = trimmed(lines.line());
        ended = line == "END";
        if (ended || line.empty())
            continue;
        const size_t blank = line.find_first_of(" \t");
        const auto real = NumberText::parse<double>(line.substr(0, blank));
        if (!real || blank == std::string_view::npos || !NumberText::parse<double>(trimmed(line.substr(blank))))
            fail(source, lines.number(),
                 Texts::tr("expected a real and an imaginary part, found %1").arg(excerpt(line)));
        if (qint64(spectrum.data.size()) == total)
            fail(source, lines.number(), Texts::tr("there are more points than the %1 announced").arg(total));
        spectrum.data.push_back(*real);
    }
    if (!ended || qint64(spectrum.data.size()) != total)
        fail(source,
             Texts::tr("the data end after %1 points where %2 and END were expected")
                 .arg(qulonglong(spectrum.data.size()))
                 .arg(total));
    orient(spectrum, source);
    return spectrum;
}

ExperimentalSpectrum read(const QString &path, const ReadOptions &options)
{
    return parse(ReaderText::readText(path, largestFile), path, options);
}

} // namespace SimpsonReader

} // namespace Workbench
