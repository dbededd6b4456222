// SPDX-License-Identifier: BSD-3-Clause
#include "Failure.h"
#include "formats/ExperimentFile.h"
#include "analysis/PeakPicking.h"
#include "data/ExperimentalSpectrum.h"

#include <QtTest>

#include <cmath>
#include <random>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

struct Line {
    double point;
    double height;
    double width; ///< points, full at half height
};
using Lines = QList<Line>;

/// Lorentzian lines on a base line, with Gaussian noise that is the same at every run.
std::vector<double> trace(int points, const Lines &lines, double deviation, double baseline)
{
    std::mt19937 random(20);
    std::normal_distribution<double> noise(0, 1);
    std::vector<double> values(points);
    for (int i = 0; i < points; ++i) {
        values[i] = baseline + deviation * noise(random);
        for (const Line &line : lines) {
            const double x = 2 * (i - line.point) / line.width;
            values[i] += line.height / (1 + x * x);
        }
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
QByteArray pointsText(bool header)
{
    QByteArray text = header ? "ppm,intensity\n" : "";
    const std::vector<double> values = trace(4000, {{995, 10, 8}, {3600, 5, 8}}, 0.02, 0);
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

Q_DECLARE_METATYPE(Line)

class TestExperiment : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void picking_data()
    {
        QTest::addColumn<Lines>("lines");
        QTest::addColumn<double>("noise");
        QTest::addColumn<double>("tolerance"); // points
        QTest::newRow("nothing") << Lines{} << 0.0 << 0.0;
        QTest::newRow("noise alone") << Lines{} << 1.0 << 0.0;
        QTest::newRow("between the points") << Lines{{1000.3, 10, 12}} << 0.0 << 0.05;
        QTest::newRow("noise") << Lines{{500.4, 10, 12}, {1500.5, 3, 12}} << 0.1 << 1.0;
        QTest::newRow("overlap") << Lines{{1000, 10, 12}, {1016, 8, 12}} << 0.05 << 1.0;
        QTest::newRow("broad with noise on its flanks") << Lines{{1000, 10, 300}} << 0.2 << 12.0;
    }
    void picking()
    {
        QFETCH(Lines, lines);
        QFETCH(double, noise);
        QFETCH(double, tolerance);
        const auto values = trace(2048, lines, noise, -50);
        const auto peaks = PeakPicking::pick(values);
        QCOMPARE(qsizetype(peaks.size()), lines.size());
        for (size_t i = 0; i < peaks.size(); ++i) {
            QVERIFY2(std::abs(peaks[i].point - lines[i].point) <= tolerance,
                     qPrintable(QString::number(peaks[i].point)));
            QVERIFY(std::abs(peaks[i].height / lines[i].height - 1) < 0.2);
        }
        // The same spectrum the other way round.
        const auto mirrored = PeakPicking::pick(std::vector<double>(values.rbegin(), values.rend()));
        QCOMPARE(mirrored.size(), peaks.size());
        for (size_t i = 0; i < peaks.size(); ++i)
            QVERIFY(std::abs(mirrored[mirrored.size() - 1 - i].point - (2047 - peaks[i].point)) < 1e-6);
    }

    void pickingKeepsItsDistanceAndSurvivesFaults()
    {
        std::vector<double> values(400, 0.0);
        values[100] = 5;
        values[102] = 4; // within the distance of the higher one
        values[200] = values[201] = 3; // a flat top
        values[300] = std::nan("");
        values[399] = 9; // cut off by the end
        const auto peaks = PeakPicking::pick(values);
        QCOMPARE(peaks.size(), size_t(2));
        QCOMPARE(peaks[0].point, 100.0);
        QCOMPARE(peaks[1].point, 200.5);
        for (size_t size = 0; size < 4; ++size)
            QVERIFY(PeakPicking::pick(std::vector<double>(size, 1.0)).empty());
        QVERIFY(PeakPicking::pick(std::vector<double>(100, std::nan(""))).empty());
        QVERIFY(PeakPicking::pick2D({}, 0).empty());
    }

    void pickingOfMaps()
    {
        constexpr int columns = 128, rows = 64;
        std::vector<double> values = trace(columns * rows, {}, 0.02, 0);
        const auto add = [&](double column, double row, double height) {
            for (int r = 0; r < rows; ++r)
                for (int c = 0; c < columns; ++c)
                    values[size_t(r * columns + c)] +=
                        height * std::exp(-0.1 * (std::pow(c - column, 2) + std::pow(r - row, 2)));
        };
        add(30.3, 20.6, 2);
        add(90, 40, 1);
        const auto peaks = PeakPicking::pick2D(values, columns);
        QCOMPARE(peaks.size(), size_t(2));
        QVERIFY(std::hypot(peaks[0].column - 30.3, peaks[0].row - 20.6) < 0.2);
        QVERIFY(std::hypot(peaks[1].column - 90, peaks[1].row - 40) < 0.3);
    }

    void pointsAndPeaksComeIn()
    {
        const QTemporaryDir directory;
        for (bool header : {true, false}) {
            const QString path = written(directory, u"s.csv"_s, pointsText(header));
            const QVariantMap entry = ExperimentFile::read(path, spectrumOf(u"13C"_s));
            const Spectrum spectrum = Spectrum::fromMap(entry);
            QCOMPARE(spectrum.dimensions(), 1);
            QCOMPARE(spectrum.axes[0].nucleus(), u"¹³C"_s);
            const QList<double> found = positions(entry);
            QCOMPARE(found.size(), 2);
            QVERIFY(std::abs(found[0] - 20) < 0.05);
            QVERIFY(std::abs(found[1] - 150.25) < 0.05);
        }
        const QString list = written(directory, u"p.csv"_s, "position,height\n20,1\n150.25,2\n");
        const QVariantMap entry = ExperimentFile::read(list, spectrumOf(u"13C"_s));
        QCOMPARE(positions(entry), (QList<double>{20, 150.25}));
        QVERIFY(Spectrum::fromMap(entry).isEmpty());
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
