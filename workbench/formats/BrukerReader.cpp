// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/BrukerReader.h"

#include "data/NumberText.h"
#include "formats/LabelledRecords.h"
#include "data/ReaderText.h"

#include <QDir>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <optional>

namespace Workbench {

using ReaderText::excerpt;
using ReaderText::fail;

namespace BrukerReader {

namespace {

constexpr qint64 largestText = 4 << 20;

/// One parameter file.
class Parameters {
public:
    explicit Parameters(const QString &path)
        : m_path(path),
          m_bytes(ReaderText::readFile(path, largestText)),
          m_records(labelledRecords(ReaderText::view(m_bytes), path))
    {
    }
    Parameters(const Parameters &) = delete;
    Parameters &operator=(const Parameters &) = delete;

    const QString &path() const { return m_path; }

    template <typename Number>
    Number number(const char *name, std::optional<Number> missing = {}) const
    {
        const LabelledRecord *record = find(name);
        if (!record && missing)
            return *missing;
        if (!record)
            fail(m_path, Texts::tr("the parameter %1 is missing").arg(QString::fromLatin1(name)));
        const std::string text = record->text();
        const auto value = NumberText::parse<Number>(text);
        if (!value) {
            fail(m_path, record->line,
                 Texts::tr("expected a number for %1, found %2").arg(QString::fromLatin1(name), excerpt(text)));
        }
        return *value;
    }

    /// The nucleus a parameter names; empty when it names none ("off") or is missing.
    QString nucleus(const char *name) const
    {
        const LabelledRecord *record = find(name);
        return record ? nucleusName(record->text()) : QString();
    }

    [[noreturn]] void failFor(const char *name, const QString &what) const
    {
        const LabelledRecord *record = find(name);
        fail(m_path, record ? record->line : 0, QStringLiteral("%1: %2").arg(QString::fromLatin1(name), what));
    }

private:
    const LabelledRecord *find(const char *name) const
    {
        return findRecord(m_records, normalisedLabel(std::string("$") + name));
    }

    QString m_path;
    QByteArray m_bytes;
    std::vector<LabelledRecord> m_records;
};

struct Location {
    QDir folder;
    bool twoDimensional = false;

    QString file(const char *name) const { return folder.filePath(QString::fromLatin1(name)); }
    QString dataFile() const { return file(twoDimensional ? "2rr" : "1r"); }
};

std::optional<Location> locateIn(const QDir &folder)
{
    for (const bool twoDimensional : {true, false}) {
        const Location location{folder, twoDimensional};
        if (QFileInfo::exists(location.dataFile()))
            return location;
    }
    return {};
}

/// Folders named by a number, in the order of the numbers.
std::vector<QDir> numberedFolders(const QDir &folder)
{
    std::vector<std::pair<int, QDir>> numbered;
    for (const QString &name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        const int number = name.toInt(&isNumber);
        if (isNumber)
            numbered.emplace_back(number, QDir(folder.filePath(name)));
    }
    std::sort(numbered.begin(), numbered.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<QDir> folders;
    for (const auto &[number, dir] : numbered)
        folders.push_back(dir);
    return folders;
}

/// The data that a path stands for; none when there are none.
std::optional<Location> locate(const QString &path)
{
    const QFileInfo info(path);
    if (info.isFile()) {
        const QString name = info.fileName();
        const bool isData = name == QStringLiteral("1r") || name == QStringLiteral("2rr");
        if (isData)
            return Location{info.absoluteDir(), name == QStringLiteral("2rr")};
    }
    const QDir folder = info.isDir() ? QDir(info.absoluteFilePath()) : info.absoluteDir();
    if (const auto here = locateIn(folder))
        return here;
    const QDir pdata(folder.filePath(QStringLiteral("pdata")));
    for (const QDir &candidate : numberedFolders(pdata.exists() ? pdata : folder)) {
        if (const auto found = locateIn(candidate))
            return found;
    }
    return {};
}

SpectrumDimension dimension(const Parameters &process)
{
    SpectrumDimension axis;
    axis.points = process.number<int>("SI");
    if (axis.points < 2 || axis.points > largestPointCount)
        process.failFor("SI", Texts::tr("expected 2 to %1 points, found %2").arg(largestPointCount).arg(axis.points));
    axis.frequency = process.number<double>("SF");
    if (!(axis.frequency > 0.0))
        process.failFor("SF", Texts::tr("expected a frequency in MHz, found %1").arg(axis.frequency));
    axis.width = process.number<double>("SW_p");
    if (!(axis.width > 0.0))
        process.failFor("SW_p", Texts::tr("expected a width in Hz, found %1").arg(axis.width));
    axis.first = process.number<double>("OFFSET");
    axis.step = -axis.width / axis.frequency / axis.points;
    return axis;
}

/// The nucleus of a dimension, from the acquisition's parameters if there are any.
QString nucleus(const Location &location, const char *acquisition, const Parameters &process)
{
    const QString path = QDir::cleanPath(location.file("../../") + QString::fromLatin1(acquisition));
    const QString named = process.nucleus("AXNUC");
    if (!QFileInfo(path).isFile())
        return named;
    const Parameters parameters(path);
    const QString acquired = parameters.nucleus("NUC1");
    // The frequency tells which of the two is stale: a column of a plane has that of F1.
    const double own = process.number<double>("SF", 0.0), observed = parameters.number<double>("SFO1", 0.0);
    const bool isOther = own > 0 && observed > 0 && std::abs(own / observed - 1) > 0.01;
    return acquired.isEmpty() || (isOther && !named.isEmpty()) ? named : acquired;
}

/// How the numbers lie in the data file.
struct Format {
    bool bigEndian = false;
    bool doubles = false;
    double scale = 1.0;

    int bytesPerPoint() const { return doubles ? 8 : 4; }

    double value(const char *at) const
    {
        if (doubles)
            return scale * (bigEndian ? qFromBigEndian<double>(at) : qFromLittleEndian<double>(at));
        return scale * (bigEndian ? qFromBigEndian<qint32>(at) : qFromLittleEndian<qint32>(at));
    }
};

Format format(const Parameters &process)
{
    const int order = process.number<int>("BYTORDP");
    if (order != 0 && order != 1)
        process.failFor("BYTORDP", Texts::tr("expected 0 (little endian) or 1 (big endian), found %1").arg(order));
    const int type = process.number<int>("DTYPP", 0);
    if (type != 0 && type != 2)
        process.failFor("DTYPP", Texts::tr("expected 0 (32-bit integers) or 2 (doubles), found %1").arg(type));
    const int exponent = process.number<int>("NC_proc", 0);
    constexpr int largestExponent = 500;
    if (std::abs(double(exponent)) > largestExponent)
        process.failFor(
            "NC_proc",
            Texts::tr("expected an exponent of two of at most %1, found %2").arg(largestExponent).arg(exponent));
    return {order == 1, type == 2, std::ldexp(1.0, exponent)};
}

/// One direction of a data matrix that is stored tile by tile.
struct Tiling {
    qint64 points = 1;
    qint64 tile = 1; ///< points of a tile

    qint64 tiles() const { return (points + tile - 1) / tile; }
    qint64 stored() const { return tiles() * tile; }
};

/// Submatrices of XDIM points are stored one after another; without XDIM the matrix is one.
Tiling tiling(const Parameters &process, int points)
{
    const int tile = process.number<int>("XDIM", 0);
    if (tile < 0 || tile > points)
        process.failFor("XDIM", Texts::tr("expected a block of at most %1 points, found %2").arg(points).arg(tile));
    return {points, tile == 0 ? points : tile};
}

/// The file's bytes, whose number the parameters must explain. Nothing is allocated before that is known.
QByteArray dataBytes(const QString &path, qint64 points, const Format &format, const QString &explained)
{
    const QFileInfo info(path);
    if (!info.exists())
        fail(path, Texts::tr("the data file is missing"));
    if (points > largestPointCount)
        fail(path, Texts::tr("%1 points (%2) are too many").arg(QString::number(points), explained));
    const qint64 expected = points * format.bytesPerPoint();
    if (info.size() != expected) {
        fail(path,
             Texts::tr("the file has %1 bytes where the parameters (%2, %3 bytes a point) make %4")
                 .arg(QString::number(info.size()), explained, QString::number(format.bytesPerPoint()),
                      QString::number(expected)));
    }
    return ReaderText::readFile(path, expected);
}

/// Row by row in place of tile by tile; tiles follow each other along F2 first, and so do the points in a tile.
std::vector<double> untiled(const QByteArray &bytes, const Format &format, const Tiling &f2, const Tiling &f1)
{
    std::vector<double> data(size_t(f1.points * f2.points));
    for (qint64 i1 = 0; i1 < f1.points; ++i1) {
        for (qint64 block = 0; block < f2.tiles(); ++block) {
            const qint64 tile = i1 / f1.tile * f2.tiles() + block;
            const qint64 start = (tile * f1.tile + i1 % f1.tile) * f2.tile;
            const qint64 first = block * f2.tile;
            const qint64 count = std::min(f2.tile, f2.points - first);
            const char *from = bytes.constData() + start * format.bytesPerPoint();
            double *to = data.data() + i1 * f2.points + first;
            for (qint64 i = 0; i < count; ++i)
                to[i] = format.value(from + i * format.bytesPerPoint());
        }
    }
    return data;
}

void checkValues(const std::vector<double> &data, const QString &path)
{
    const auto bad = std::find_if_not(data.begin(), data.end(), [](double v) { return std::isfinite(v); });
    if (bad != data.end())
        fail(path, Texts::tr("point %1 is not a finite number").arg(qulonglong(bad - data.begin())));
}

/// The first line of the folder's title; empty without one.
QString title(const Location &location)
{
    const QFileInfo info(location.file("title"));
    if (info.isFile() && info.size() <= largestText) {
        const QByteArray bytes = ReaderText::readFile(info.filePath(), largestText);
        for (ReaderText::Lines lines(ReaderText::view(bytes)); lines.next();) {
            const std::string_view line = ReaderText::trimmed(lines.line());
            if (!line.empty())
                return ReaderText::decoded(line);
        }
    }
    return {};
}

/// The rows of a series (relaxation, kinetics) are no axis of shifts, whatever width and offset the parameters give.
void checkTransformed(const Parameters &process)
{
    if (process.number<int>("FT_mod", 1) == 0 && process.number<int>("FTSIZE", 1) == 0) {
        process.failFor(
            "FT_mod",
            Texts::tr("F1 was not Fourier-transformed, so this is a series of spectra and no 2D spectrum: extract "
                      "the row that you want as a 1D spectrum (rsr in TopSpin)"));
    }
}

/// Of several processings of the same data one was taken.
void noteOtherProcessings(const Location &location, QStringList &notes)
{
    QDir parent = location.folder;
    if (!parent.cdUp() || parent.dirName() != QStringLiteral("pdata"))
        return;
    QStringList others;
    for (const QDir &folder : numberedFolders(parent)) {
        if (folder != location.folder && locateIn(folder))
            others.append(folder.dirName());
    }
    if (!others.isEmpty())
        notes.append(Texts::tr("Processing %1 was read; there are also %2.")
                         .arg(location.folder.dirName(), others.join(QStringLiteral(", "))));
}

} // namespace

bool recognises(const QString &path)
{
    const QFileInfo info(path);
    if (info.isDir())
        return locate(path).has_value();
    const QStringList names{QStringLiteral("1r"), QStringLiteral("2rr"), QStringLiteral("procs"),
                            QStringLiteral("proc2s")};
    return names.contains(info.fileName());
}

ExperimentalSpectrum read(const QString &path)
{
    const auto located = locate(path);
    if (!located)
        fail(path,
             Texts::tr("no processed data were found here: expected a file 1r or 2rr, in this folder or in pdata/1"));
    const Location &location = *located;
    const Parameters processF2(location.file("procs"));
    const Format dataFormat = format(processF2);

    ExperimentalSpectrum spectrum;
    spectrum.title = title(location);
    if (spectrum.title.isEmpty()) // where the folder lies
        spectrum.title = location.folder.absolutePath().section(QLatin1Char('/'), -4);
    spectrum.format = QStringLiteral("Bruker");
    spectrum.dimensions.push_back(dimension(processF2));
    const int points2 = spectrum.dimensions[0].points;
    spectrum.dimensions[0].nucleus = nucleus(location, "acqus", processF2);
    Tiling f2{points2, points2}, f1;
    QString explained = QStringLiteral("SI = %1").arg(points2);
    if (location.twoDimensional) {
        const Parameters processF1(location.file("proc2s"));
        checkTransformed(processF1);
        spectrum.dimensions.push_back(dimension(processF1));
        const int points1 = spectrum.dimensions[1].points;
        spectrum.dimensions[1].nucleus = nucleus(location, "acqu2s", processF1);
        f2 = tiling(processF2, points2);
        f1 = tiling(processF1, points1);
        explained = QStringLiteral("SI = %1 × %2, XDIM = %3 × %4").arg(points2).arg(points1).arg(f2.tile).arg(f1.tile);
    }
    const QByteArray bytes = dataBytes(location.dataFile(), f2.stored() * f1.stored(), dataFormat, explained);
    spectrum.data = untiled(bytes, dataFormat, f2, f1);
    checkValues(spectrum.data, location.dataFile());
    noteOtherProcessings(location, spectrum.notes);
    orient(spectrum, processF2.path());
    return spectrum;
}

QString dataFolder(const QString &path)
{
    const auto located = locate(path);
    return located ? located->folder.path() : QString();
}

Description describe(const QString &path)
{
    Description description;
    const Location location{QFileInfo(path).absoluteDir(), false};
    description.title = title(location);
    for (const auto &[d, processing, acquisition] :
         {std::tuple(0, "procs", "acqus"), std::tuple(1, "proc2s", "acqu2s")}) {
        if (QFileInfo(location.file(processing)).isFile())
            description.nuclei[size_t(d)] = nucleus(location, acquisition, Parameters(location.file(processing)));
    }
    return description;
}

} // namespace BrukerReader

} // namespace Workbench
