// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/CsdmFile.h"

#include "formats/EvenAxis.h"
#include "data/Nuclides.h"
#include "data/ReaderText.h"
#include "data/SpectrumEntry.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <functional>

namespace Workbench {

using ReaderText::fail;
using namespace Qt::StringLiterals;

namespace CsdmFile {

namespace {

constexpr qint64 largestFile = qint64(512) << 20;

enum class Unit { Hertz, Ppm, None };

struct Quantity {
    double value = 0.0; ///< Hz or ppm
    Unit unit = Unit::None;
};

/// "-12.5 kHz" and the like.
Quantity quantity(const QJsonValue &json, const QString &source, const QString &name)
{
    if (json.isUndefined() || json.isNull())
        return {};
    static const QRegularExpression pattern(u"^\\s*([-+0-9.eE]+)\\s*(.*?)\\s*$"_s);
    const QString text = json.isDouble() ? QString::number(json.toDouble(), 'g', 17) : json.toString();
    const QRegularExpressionMatch match = pattern.match(text);
    bool isNumber = false;
    const double value = match.captured(1).toDouble(&isNumber);
    if (!isNumber)
        fail(source, Texts::tr("%1: expected a number with its unit, found \"%2\"").arg(name, text.left(40)));
    const QString unit = match.captured(2);
    static const QHash<QString, double> hertz{{u"Hz"_s, 1.0},  {u"kHz"_s, 1e3},   {u"MHz"_s, 1e6}, {u"GHz"_s, 1e9},
                                              {u"1/s"_s, 1.0}, {u"(1/s)"_s, 1.0}, {u"s^-1"_s, 1.0}};
    if (unit == u"ppm")
        return {value, Unit::Ppm};
    if (unit.isEmpty())
        return {value, Unit::None};
    if (!hertz.contains(unit))
        fail(source, Texts::tr("%1 is in %2: a spectrum in Hz or ppm was expected").arg(name, unit));
    return {value * hertz.value(unit), Unit::Hertz};
}

/// A dimension before its units are settled: point i at first + i * step.
struct Coordinates {
    double first = 0.0;
    double step = 0.0;
    int points = 0;
    Unit unit = Unit::None;
};

int checkedCount(double count, const QString &source)
{
    if (!(count >= 2.0 && count <= double(largestPointCount)) || count != std::floor(count))
        fail(source, Texts::tr("a dimension of %1 points is none of a spectrum").arg(count));
    return int(count);
}

Coordinates linear(const QJsonObject &json, const QString &source)
{
    const Quantity increment = quantity(json[u"increment"], source, u"increment"_s),
                   offset = quantity(json[u"coordinates_offset"], source, u"coordinates_offset"_s);
    const int points = checkedCount(json[u"count"].toDouble(), source);
    if (offset.unit != Unit::None && offset.unit != increment.unit)
        fail(source, Texts::tr("increment and coordinates_offset differ in their units"));
    // Transformed coordinates are counted from the middle, for an odd number of points from the middle one.
    const int before = json[u"complex_fft"].toBool() ? points / 2 : 0;
    return {offset.value - before * increment.value, increment.value, points, increment.unit};
}

Coordinates monotonic(const QJsonObject &json, const QString &source)
{
    std::vector<double> positions;
    Unit unit = Unit::None;
    for (const QJsonValue &value : json[u"coordinates"].toArray()) {
        const Quantity position = quantity(value, source, u"coordinates"_s);
        positions.push_back(position.value);
        unit = position.unit;
    }
    const auto even = evenAxis(positions, {300, 15});
    constexpr double tolerance = 0.05; // of a step
    for (size_t i = 0; i < positions.size(); ++i) {
        if (!even
            || !(std::abs(positions[i] - even->first - double(i) * even->step) <= tolerance * std::abs(even->step)))
            fail(source,
                 Texts::tr(
                     "the coordinates of a monotonic dimension are not evenly spaced, as those of a spectrum must be"));
    }
    checkedCount(double(positions.size()), source);
    const double offset = quantity(json[u"coordinates_offset"], source, u"coordinates_offset"_s).value;
    return {even->first + offset, even->step, int(positions.size()), unit};
}

QString nucleusIn(const QJsonObject &json)
{
    const QString named = Nuclides::table().observedIn(json[u"label"].toString());
    return named.isEmpty() ? Nuclides::table().observedIn(json[u"description"].toString()) : named;
}

SpectrumDimension dimension(const QJsonObject &json, int d, const QString &source, const ReadOptions &options,
                            QStringList &notes)
{
    const QString type = json[u"type"].toString();
    if (type != u"linear" && type != u"monotonic")
        fail(source, Texts::tr("expected a linear or a monotonic dimension, found \"%1\"").arg(type));
    const Coordinates x = type == u"linear" ? linear(json, source) : monotonic(json, source);
    const double origin = quantity(json[u"origin_offset"], source, u"origin_offset"_s).value;
    const double middle = x.first + (x.points / 2) * x.step;
    SpectrumDimension axis;
    axis.points = x.points;
    axis.nucleus = nucleusIn(json);
    double perPpm = 1.0;
    const double given = options.frequency[size_t(d)];
    if (x.unit == Unit::Hertz) {
        axis.frequency = origin > 0.0 ? (origin - middle) * 1e-6 : given;
        if (!(axis.frequency > 0.0))
            throw FrequencyNeeded(
                QStringLiteral("%1: %2").arg(
                    source,
                    Texts::tr(
                        "the dimension is in Hz and has no origin_offset: the frequency of 0 ppm in MHz is needed to "
                        "make ppm of it and must be given")),
                d + 1);
        perPpm = axis.frequency;
        notes.append(origin > 0.0
                         ? Texts::tr("Hz were divided by %1 MHz, the origin offset less the coordinate of the middle.")
                               .arg(perPpm, 0, 'g', 12)
                         : Texts::tr("Hz were divided by %1 MHz; 0 Hz was taken as 0 ppm.").arg(perPpm, 0, 'g', 12));
    } else {
        axis.frequency = given;
        // A number without unit is a plain ratio by the format's rules; some write ppm all the same.
        constexpr double largestRatio = 0.01;
        const double largest = std::max(std::abs(x.first), std::abs(x.first + x.step * (x.points - 1)));
        if (x.unit == Unit::None && largest <= largestRatio) {
            perPpm = 1e-6;
            notes.append(Texts::tr(
                "A dimension names no unit: its small numbers were taken as ratios, of which 1e-6 is 1 ppm."));
        } else if (x.unit == Unit::None) {
            notes.append(Texts::tr("A dimension names no unit: it was taken as ppm."));
        }
    }
    axis.first = x.first / perPpm;
    axis.step = x.step / perPpm;
    axis.width = std::abs(axis.step) * axis.points * axis.frequency;
    return axis;
}

/// How one number is stored; of complex ones the real part comes first.
struct NumberType {
    int size = 0; ///< bytes
    int stride = 1; ///< numbers a value
    double (*value)(const void *) = nullptr;
};

template <typename Number>
double littleEndian(const void *at)
{
    return double(qFromLittleEndian<Number>(at));
}

NumberType numberType(const QString &name, const QString &source)
{
    static const QHash<QString, NumberType> types{
        {u"float32"_s, {4, 1, littleEndian<float>}},   {u"float64"_s, {8, 1, littleEndian<double>}},
        {u"complex64"_s, {4, 2, littleEndian<float>}}, {u"complex128"_s, {8, 2, littleEndian<double>}},
        {u"int8"_s, {1, 1, littleEndian<qint8>}},      {u"int16"_s, {2, 1, littleEndian<qint16>}},
        {u"int32"_s, {4, 1, littleEndian<qint32>}},    {u"int64"_s, {8, 1, littleEndian<qint64>}},
        {u"uint8"_s, {1, 1, littleEndian<quint8>}},    {u"uint16"_s, {2, 1, littleEndian<quint16>}},
        {u"uint32"_s, {4, 1, littleEndian<quint32>}},  {u"uint64"_s, {8, 1, littleEndian<quint64>}}};
    if (!types.contains(name))
        fail(source, Texts::tr("numeric_type \"%1\" is not known").arg(name));
    return types.value(name);
}

/// The first of the components that lie one after another in `bytes`.
std::vector<double> fromBytes(const QByteArray &bytes, const NumberType &type, qint64 total, qint64 components,
                              const QString &source)
{
    const qint64 width = qint64(type.size) * type.stride;
    const double expected = double(total) * double(width) * double(components);
    if (double(bytes.size()) != expected)
        fail(source,
             Texts::tr("the values have %1 bytes, the dimensions make %2").arg(bytes.size()).arg(expected, 0, 'g', 15));
    std::vector<double> data(static_cast<size_t>(total));
    for (qint64 i = 0; i < total; ++i)
        data[size_t(i)] = type.value(bytes.constData() + i * width);
    return data;
}

std::vector<double> fromNumbers(const QJsonArray &numbers, const NumberType &type, qint64 total, const QString &source)
{
    if (numbers.size() != total * type.stride)
        fail(source,
             Texts::tr("there are %1 numbers, the dimensions make %2").arg(numbers.size()).arg(total * type.stride));
    std::vector<double> data;
    for (qsizetype i = 0; i < numbers.size(); i += type.stride) {
        if (!numbers[i].isDouble())
            fail(source, Texts::tr("value %1 is no number").arg(i));
        data.push_back(numbers[i].toDouble());
    }
    return data;
}

/// A file: URL relative to the document's folder, and nowhere else.
QByteArray externalBytes(const QString &url, const QString &source)
{
    const QString name = url.startsWith(u"file:") ? url.mid(5) : url;
    const QDir folder = QFileInfo(source).absoluteDir();
    const QString path = QDir::cleanPath(folder.filePath(name));
    if (url.contains(u"://") || !path.startsWith(folder.absolutePath() + u'/'))
        fail(source, Texts::tr("the values lie at \"%1\", a file beside this one was expected").arg(url));
    return ReaderText::readFile(path, largestFile);
}

std::vector<double> values(const QJsonObject &variable, qint64 total, const QString &source)
{
    const NumberType type = numberType(variable[u"numeric_type"].toString(), source);
    const QString encoding = variable[u"encoding"].toString(u"base64"_s);
    if (variable[u"type"].toString() == u"external") {
        static const QRegularExpression pixels(u"_(\\d+)$"_s);
        const QString components = pixels.match(variable[u"quantity_type"].toString()).captured(1);
        return fromBytes(externalBytes(variable[u"components_url"].toString(), source), type, total,
                         std::max(components.toInt(), 1), source);
    }
    const QJsonValue component = variable[u"components"].toArray().at(0);
    if (encoding == u"none")
        return fromNumbers(component.toArray(), type, total, source);
    if (encoding != u"base64")
        fail(source, Texts::tr("encoding \"%1\" was found, base64, raw or none was expected").arg(encoding));
    // Lines in it are allowed, anything else that is not of the alphabet would shift what follows.
    const auto bytes = QByteArray::fromBase64Encoding(component.toString().remove(u'\n').remove(u'\r').toLatin1(),
                                                      QByteArray::AbortOnBase64DecodingErrors);
    if (!bytes)
        fail(source, Texts::tr("the values are no base64 text"));
    return fromBytes(*bytes, type, total, 1, source);
}

} // namespace

bool recognises(const QByteArray &start)
{
    const QByteArray text = start.trimmed();
    return (text.startsWith('{') || text.startsWith("\xEF\xBB\xBF{")) && text.contains("\"csdm\"");
}

ExperimentalSpectrum parse(const QByteArray &text, const QString &source, const ReadOptions &options)
{
    QJsonParseError error;
    const QJsonObject csdm = QJsonDocument::fromJson(text, &error).object()[u"csdm"].toObject();
    if (error.error != QJsonParseError::NoError)
        fail(source, Texts::tr("byte %1: %2").arg(error.offset).arg(error.errorString()));
    const QJsonArray dimensions = csdm[u"dimensions"].toArray(), variables = csdm[u"dependent_variables"].toArray();
    if (dimensions.size() < 1 || dimensions.size() > 2)
        fail(source, Texts::tr("expected one or two dimensions, found %1").arg(dimensions.size()));
    if (variables.isEmpty())
        fail(source, Texts::tr("there are no dependent variables"));
    ExperimentalSpectrum spectrum;
    spectrum.format = u"CSDM"_s;
    spectrum.title = csdm[u"description"].toString().simplified();
    if (spectrum.title.isEmpty())
        spectrum.title = QFileInfo(source).completeBaseName();
    qint64 total = 1;
    for (int d = 0; d < int(dimensions.size()); ++d) {
        spectrum.dimensions.push_back(dimension(dimensions[d].toObject(), d, source, options, spectrum.notes));
        total *= spectrum.dimensions.back().points;
    }
    if (total > largestPointCount)
        fail(source, Texts::tr("%1 points are too many").arg(total));
    if (variables.size() > 1)
        spectrum.notes.append(Texts::tr("Of %1 dependent variables the first one was read.").arg(variables.size()));
    const QJsonObject variable = variables[0].toObject();
    spectrum.data = values(variable, total, source);
    if (variable[u"numeric_type"].toString().startsWith(u"complex"))
        spectrum.notes.append(Texts::tr("The imaginary part was left out."));
    if (variable[u"components"].toArray().size() > 1)
        spectrum.notes.append(
            Texts::tr("Of %1 components the first one was read.").arg(variable[u"components"].toArray().size()));
    if (!std::all_of(spectrum.data.begin(), spectrum.data.end(), [](double v) { return std::isfinite(v); }))
        fail(source, Texts::tr("a value is not a finite number"));
    orient(spectrum, source);
    return spectrum;
}

ExperimentalSpectrum read(const QString &path, const ReadOptions &options)
{
    return parse(ReaderText::readText(path, largestFile), path, options);
}

QByteArray written(const ExperimentalSpectrum &spectrum)
{
    const auto text = [](double value, const char *unit) {
        return QString::number(value, 'g', 17) + u' ' + QLatin1String(unit);
    };
    QJsonArray dimensions;
    for (const SpectrumDimension &axis : spectrum.dimensions) {
        QJsonObject json{{u"type"_s, u"linear"_s}, {u"count"_s, axis.points}, {u"label"_s, axis.nucleus}};
        if (axis.frequency > 0.0) {
            const double middle = axis.ppm(axis.points / 2) * axis.frequency;
            json[u"increment"_s] = text(axis.step * axis.frequency, "Hz");
            json[u"coordinates_offset"_s] = text(axis.first * axis.frequency, "Hz");
            json[u"origin_offset"_s] = text(axis.frequency * 1e6 + middle, "Hz");
            json[u"quantity_name"_s] = u"frequency"_s;
        } else {
            json[u"increment"_s] = text(axis.step, "ppm");
            json[u"coordinates_offset"_s] = text(axis.first, "ppm");
            json[u"quantity_name"_s] = u"dimensionless"_s;
        }
        dimensions.append(json);
    }
    QByteArray bytes(qsizetype(spectrum.data.size() * sizeof(double)), Qt::Uninitialized);
    qToLittleEndian<double>(spectrum.data.data(), qsizetype(spectrum.data.size()), bytes.data());
    const QJsonObject variable{{u"type"_s, u"internal"_s},
                               {u"quantity_type"_s, u"scalar"_s},
                               {u"numeric_type"_s, u"float64"_s},
                               {u"encoding"_s, u"base64"_s},
                               {u"components"_s, QJsonArray{QString::fromLatin1(bytes.toBase64())}}};
    const QJsonObject csdm{{u"version"_s, u"1.0"_s},
                           {u"description"_s, spectrum.title},
                           {u"dimensions"_s, dimensions},
                           {u"dependent_variables"_s, QJsonArray{variable}}};
    return QJsonDocument(QJsonObject{{u"csdm"_s, csdm}}).toJson();
}

void write(const SpectrumEntry &entry, QIODevice &device)
{
    const Spectrum &spectrum = entry.spectrum;
    if (spectrum.isEmpty())
        Workbench::fail(Texts::tr("the spectrum holds no data: %1").arg(spectrum.note));
    ExperimentalSpectrum plain;
    plain.title = entry.name;
    for (const SpectrumAxis &axis : spectrum.axes) {
        plain.dimensions.push_back({axis.isotope(), axis.frequency, -axis.step * axis.size * axis.frequency, axis.first,
                                    axis.step, axis.size});
    }
    plain.data.assign(spectrum.real().begin(), spectrum.real().end());
    const QByteArray text = written(plain);
    if (device.write(text) != text.size())
        Workbench::fail(Texts::tr("the data cannot be written: %1").arg(device.errorString()));
}

} // namespace CsdmFile

} // namespace Workbench
