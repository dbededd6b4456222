// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "formats/ExperimentFile.h"
#include "analysis/PeakPicking.h"
#include "analysis/SpinSystem.h"
#include "data/ExperimentalSpectrum.h"

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

/// Lorentzian lines (their points, heights and full widths) on a base line, with Gaussian noise that is the same at
/// every run.
std::vector<double> trace(int points, const QList<std::array<double, 3>> &lines, double deviation, double baseline = 0)
{
    std::mt19937 random(20);
    std::normal_distribution<double> noise(0, 1);
    std::vector<double> values(points);
    for (int i = 0; i < points; ++i) {
        values[i] = baseline + deviation * noise(random);
        for (const auto &[point, height, width] : lines)
            values[i] += height / (1 + std::pow(2 * (i - point) / width, 2));
    }
    return values;
}

Spectrum spectrumOf(const QString &nucleus, int dimensions = 1)
{
    ExperimentalSpectrum measured;
    for (int d = 0; d < dimensions; ++d)
        measured.dimensions.push_back({nucleus, 100, 0, 200, -1, 4});
    measured.data.resize(dimensions == 2 ? 16 : 4);
    return Spectrum::fromMap(toEntryMap(measured));
}

QString written(const QTemporaryDir &directory, const QString &name, const QByteArray &text)
{
    const QString path = directory.filePath(name);
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? path : QString();
}

/// Two lines, at 150.25 and 20 ppm, from 200 ppm downwards in steps of 0.05 ppm.
QByteArray pointsText()
{
    QByteArray text = "ppm,intensity\n";
    const std::vector<double> values = trace(4000, {{995, 10, 8}, {3600, 5, 8}}, 0.02);
    for (size_t i = 0; i < values.size(); ++i)
        text += QByteArray::number(200 - 0.05 * double(i), 'f', 3) + ',' + QByteArray::number(values[i]) + '\n';
    return text;
}

QList<double> positions(const QVariantMap &entry)
{
    QList<double> found;
    for (const SpectrumPeak &peak : Spectrum::fromMap(entry).peaks)
        found.append(peak.f2);
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace

class TestExperiment : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Nothing but a base line, with noise and without, and too few or no numbers.
    void nothingIsPickedOfNothing()
    {
        for (double deviation : {0.0, 1.0})
            QVERIFY(PeakPicking::pick(trace(2048, {}, deviation, -50)).empty());
        for (size_t size = 0; size < 4; ++size)
            QVERIFY(PeakPicking::pick(std::vector<double>(size, 1.0)).empty());
        QVERIFY(PeakPicking::pick(std::vector<double>(100, std::nan(""))).empty());
        QVERIFY(PeakPicking::pick2D({}, 0).empty());
        // A broad line with noise on its flanks is one.
        QCOMPARE(PeakPicking::pick(trace(2048, {{1000, 10, 300}}, 0.2, -50)).size(), 1U);
    }

    /// 64 parts of a known scatter on slopes: the quietest quarter counts, its median scatter and its mean.
    void noiseIsThatOfTheQuietestQuarter()
    {
        std::vector<double> values;
        for (int part = 0; part < 64; ++part) {
            const int rank = part * 37 % 64; // by scatter
            for (int i = 0; i < 8; ++i) {
                const int pattern[] = {1, -1, -1, 1, 1, -1, -1, 1}; // no mean, no slope, 8 squares
                values.push_back(rank + (rank + 1) * pattern[i] + 5 * (i - 3.5));
            }
        }
        const PeakPicking::Noise noise = PeakPicking::noise(values);
        QVERIFY(std::abs(noise.baseline - 7.5) < 1e-9); // of 0 to 15
        QVERIFY(std::abs(noise.deviation - 9 * std::sqrt(8.0 / 6)) < 1e-9);
    }

    /// Parabolas: their vertex is known exactly, between the points and along each axis.
    void topsAreVertices()
    {
        const auto bell = [](double x, double centre, double curvature) { return curvature * std::pow(x - centre, 2); };
        std::vector<double> line(400, -2.0);
        for (int i = 90; i < 110; ++i)
            line[size_t(i)] = std::max(-2.0, 10 - bell(i, 100.3, 0.5));
        for (const auto &peak : {PeakPicking::pick(line).at(0), *PeakPicking::summit(line, 103, 5)}) {
            QVERIFY(std::abs(peak.point - 100.3) < 1e-9);
            QVERIFY(std::abs(peak.height - 12) < 1e-9); // above the base line
        }
        constexpr int columns = 64, rows = 32;
        std::vector<double> map(columns * rows, 0.0);
        const auto add = [&](double column, double row, double height) {
            for (int r = 0; r < rows; ++r)
                for (int c = 0; c < columns; ++c)
                    map[size_t(r * columns + c)] += std::max(0.0, height - bell(c, column, 0.5) - bell(r, row, 0.25));
        };
        add(50.3, 20.6, 6);
        add(12.8, 9.2, 3);
        const auto peaks = PeakPicking::pick2D(map, columns);
        QCOMPARE(peaks.size(), size_t(2));
        for (const auto &[peak, column, row, height] :
             {std::tuple(peaks[0], 50.3, 20.6, 6.0), std::tuple(peaks[1], 12.8, 9.2, 3.0),
              std::tuple(*PeakPicking::summit2D(map, columns, 11, 8, 3, 3), 12.8, 9.2, 3.0)}) {
            QVERIFY(std::hypot(peak.column - column, peak.row - row) < 1e-9);
            QVERIFY(std::abs(peak.height - height) < 1e-9);
        }
    }

    /// Hz, from -mu0 hbar gamma gamma / (8 pi^2 r^3) by hand, with the gyromagnetic ratios of R. K. Harris et al., Pure
    /// Appl. Chem. 73 (2001) 1795.
    void signsOfDipolarCouplings()
    {
        for (const auto &[a, b, distance, expected] :
             {std::tuple("1H", "1H", 1.5, -35591.16), std::tuple("13C", "1H", 1.09, -23328.18),
              std::tuple("15N", "1H", 1.02, 11477.42), std::tuple("15N", "13C", 1.34, 1273.14),
              std::tuple("15N", "17O", 2.2, -155.13)}) {
            QVariantMap atoms;
            for (const auto &[nucleus, place] : {std::pair(a, 0.0), std::pair(b, distance)})
                atoms.insert(QString::number(atoms.size()),
                             QVariantMap{{u"type"_s, QByteArray(nucleus + (isdigit(nucleus[1]) ? 2 : 1))},
                                         {u"labels"_s, QStringList{QString::number(place)}},
                                         {u"recordNo"_s, int(atoms.size())},
                                         {u"pos"_s, QVariant::fromValue(DoubleVector{0, place, 0})}});
            SpinSystem::Options options;
            options.nuclei = QStringList{QLatin1String(a), QLatin1String(b)};
            options.nuclei.removeDuplicates();
            const SpinSystem system = SpinSystem::fromData({{u"atoms"_s, atoms}}, options);
            QCOMPARE(system.dipoles.size(), size_t(1));
            QVERIFY2(std::abs(system.dipoles[0].coupling / expected - 1) < 1e-3, a);
        }
    }

    void pickedPeaksCountAsTheirSites()
    {
        using L = QList<double>;
        for (const auto &[simulated, picked, expected] :
             {std::tuple(L{90, 50.001, 50, 50.002}, L{20, 30}, L{30, 20, 20, 20}),
              std::tuple(L{50, 50.5}, L{1, 2}, L{2, 1}), std::tuple(L{50, 50, 60, 70}, L{1, 2}, L{1, 2}), // too few
              std::tuple(L{50, 50}, L{1, 2}, L{1, 2}), std::tuple(L{}, L{}, L{})}) {
            QList<SpectrumPeak> sites(simulated.size());
            for (qsizetype i = 0; i < simulated.size(); ++i)
                sites[i].f2 = simulated[i];
            std::vector<PeakListFile::Peak> peaks;
            for (double ppm : picked)
                peaks.push_back({ppm});
            L counted;
            for (const auto &peak : ExperimentFile::countedLike(sites, peaks))
                counted.append(peak.f2);
            QCOMPARE(counted, expected);
        }
    }

    void filesThatAreExperiments()
    {
        const QTemporaryDir folder;
        for (const auto &[name, is] :
             {std::pair("a.JDX", true), std::pair("x/1r", true), std::pair("peaklist.xml", true),
              std::pair("a.csdfe", true), std::pair("a.json", false), std::pair("a.magres", false),
              std::pair("2r", false), std::pair("csv", false)})
            QCOMPARE(ExperimentFile::isExperiment(QLatin1String(name)), is);
        QVERIFY(ExperimentFile::isExperiment(folder.path()));
        QCOMPARE(
            ExperimentFile::nameFilters(),
            QStringList{
                u"Spectra and peak lists (1r 2rr procs proc2s *.jdx *.dx *.jcamp *.jcm *.csdf *.csdfe *.spe peaklist.xml *.csv *.txt *.tsv *.asc *.dat)"_s});
    }

    /// The file's own frequency goes before that of the simulated spectrum, which stands in where the file is silent.
    void frequenciesOfHertz()
    {
        const QTemporaryDir directory;
        QByteArray text = "Hz,intensity\n";
        for (int i = 0; i < 40; ++i)
            text += QByteArray::number(8000 - 100 * i) + (i == 13 ? ",90\n" : i % 2 ? ",1\n" : ",0\n");
        const auto axis = [&](const QByteArray &above, const std::vector<double> &frequencies) {
            const QString path = written(directory, u"hz.csv"_s, above + text);
            return Spectrum::fromMap(Experiment(path, {u"13C"_s}, frequencies).beside({})).axes[0];
        };
        QVERIFY(std::abs(axis({}, {50}).first - 160) < 1e-9);
        QVERIFY(std::abs(axis("# 40 MHz\n", {50}).first - 200) < 1e-9);
        QCOMPARE(axis("# 40 MHz\n", {50}).frequency, 40.0);
        for (const std::vector<double> &none : {std::vector<double>{}, {0.0}})
            QVERIFY(failure([&] { axis({}, none); }).contains("frequency of 0 ppm in MHz is needed"));
    }

    /// Peaks of several sites stand there as often; notes say how they came about.
    void pointsAndPeaksComeIn()
    {
        const QTemporaryDir directory;
        const QString list = written(directory, u"l.csv"_s, "ppm,height,count\n150,2,3\n20,5,1\n"),
                      points = written(directory, u"p.csv"_s, pointsText());
        const QVariantMap entry = ExperimentFile::read(points, spectrumOf(u"13C"_s));
        QCOMPARE(Spectrum::fromMap(entry).axes[0].nucleus(), u"¹³C"_s);
        const QList<double> found = positions(entry);
        QVERIFY(found.size() == 2 && std::abs(found[0] - 20) < 0.05 && std::abs(found[1] - 150.25) < 0.05);
        QVERIFY(Spectrum::fromMap(entry).dimensions() == 1);
        QVERIFY(Spectrum::fromMap(ExperimentFile::read(list, spectrumOf(u"13C"_s))).isEmpty());
        const Experiment experiment(list, {u"13C"_s});
        QCOMPARE(positions(experiment.beside({})), (QList<double>{20, 150, 150, 150}));
        QCOMPARE(experiment.notes(), (QStringList{u"Read as a list of 2 peaks."_s}));
        QCOMPARE(ExperimentFile::peaks(list, {u"13C"_s}).peaks[0].count, 3);
        const MeasuredPeaks picked = ExperimentFile::peaks(points, {u"13C"_s});
        QVERIFY(picked.nuclei[0] == u"13C" && picked.dimensions == 1 && picked.title == u"p");
        QCOMPARE(picked.notes.join(u' '),
                 u"Read as a spectrum: 4000 evenly spaced positions. 2 peaks were picked from the spectrum."_s);
        QVERIFY(std::abs(picked.peaks[0].f2 - 150.25) < 0.05 && std::abs(picked.peaks[0].height / 10 - 1) < 0.1);
        // Two simulated sites at one shift and one at the other.
        QList<SpectrumPeak> sites(3);
        sites[0].f2 = sites[2].f2 = 30;
        sites[1].f2 = 60;
        QCOMPARE(positions(Experiment(points, {u"13C"_s}).beside(sites)).size(), 3);
        QCOMPARE(failure([&] { ExperimentFile::peaks(written(directory, u"h.csv"_s, "1H ppm\n5\n"), {u"13C"_s}); }),
                 QByteArray("h.csv is a spectrum of 1H, the plot shows one of 13C"));
    }

    void spectraThatDoNotFitAreRefused()
    {
        const QString samples = QStringLiteral(SAMPLES);
        const QString proton = samples + u"/paracetamol-1H-difdup.jdx"_s;
        for (const auto &[path, shown, message] :
             {std::tuple(proton, spectrumOf(u"13C"_s), "is a spectrum of 1H"),
              std::tuple(proton, spectrumOf(u"1H"_s, 2), "1 dimension"),
              std::tuple(samples + u"/paracetamol-1H.csv"_s, spectrumOf(u"1H"_s, 2), "has 1 dimension"),
              std::tuple(samples, Spectrum(), "no spectrum to put"),
              std::tuple(u"/nowhere.csv"_s, spectrumOf(u"1H"_s), "/nowhere.csv")}) {
            const QByteArray text = failure([&, path = path, shown = shown] { ExperimentFile::read(path, shown); });
            QVERIFY2(text.contains(message), text);
        }
    }
};

QTEST_GUILESS_MAIN(TestExperiment)
#include "tst_experiment.moc"
