// SPDX-License-Identifier: BSD-3-Clause
#include "window/ExportMenu.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "window/WMainWindow.h"
#include "formats/JcampExport.h"
#include "formats/JcampReader.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/table/TableItem.h"
#include "items/table/TableModel.h"
#include <Eigen/Geometry>
#include <QClipboard>
#include <QHeaderView>
#include <QTableView>
#include <QtTest>

using namespace Workbench;
using namespace Qt::StringLiterals;
using Eigen::Matrix3d;
using Eigen::Vector3d;

/// What leaves the workbench: spectra, spin systems, tables.
class TestResults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Axis, nucleus, frequency and points, whatever their sign and size.
    void jcampComesBack()
    {
        for (double scale : {1.0, -3e-7, 2e200, 0.0}) {
            ExperimentalSpectrum spectrum{u"x"_s, {{u"15N"_s, 60.8, 60.8 * 370, 311.25, -0.37, 1000}}, {}};
            for (int i = 0; i < 1000; ++i)
                spectrum.data.push_back(scale * (std::cos(0.1 * i) + 1e-4 * i));
            const QVariantMap map = toEntryMap(spectrum);
            QBuffer file;
            file.open(QIODevice::WriteOnly);
            JcampExport::write({{}, u"a $$ b\n##END="_s, map, Spectrum::fromMap(map)}, file);
            const auto back = std::get<ExperimentalSpectrum>(JcampReader::parse(file.data(), u"x.jdx"_s));
            const SpectrumDimension &axis = back.dimensions.at(0);
            QVERIFY(axis.nucleus == u"15N" && axis.frequency == 60.8 && std::abs(axis.ppm(999) + 58.38) < 1e-9);
            for (int i = 0; i < 1000; ++i)
                QVERIFY(std::abs(back.data.at(i) - spectrum.data[i]) <= std::abs(scale) * 1e-9);
        }
    }

    void jcampPlanesComeBack()
    {
        ExperimentalSpectrum spectrum{
            u"x"_s, {{u"1H"_s, 400.13, 0, 12.5, -0.25, 40}, {u"13C"_s, 100.62, 0, 180.1, -2.5, 7}}, {}};
        for (int i = 0; i < 40 * 7; ++i)
            spectrum.data.push_back(std::sin(0.3 * i) - 1e-3 * i);
        const QVariantMap map = toEntryMap(spectrum);
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        JcampExport::write({{}, u"a"_s, map, Spectrum::fromMap(map)}, file);
        const auto back = std::get<ExperimentalSpectrum>(JcampReader::parse(file.data(), u"x.jdx"_s));
        QCOMPARE(back.dimensions.size(), size_t(2));
        for (size_t d = 0; d < 2; ++d) {
            const SpectrumDimension &axis = back.dimensions[d], &was = spectrum.dimensions[d];
            QVERIFY(axis.nucleus == was.nucleus && axis.points == was.points && axis.frequency == was.frequency);
            QVERIFY(std::abs(axis.first - was.first) < 1e-9 && std::abs(axis.step - was.step) < 1e-11);
        }
        for (size_t i = 0; i < spectrum.data.size(); ++i)
            QVERIFY(std::abs(back.data[i] - spectrum.data[i]) <= 1e-9);
        QVERIFY2(back.notes.isEmpty(), qPrintable(back.notes.join(u'\n')));
    }

    /// The tensors follow from the written lines, by the conventions at their head.
    void spinSystemRebuildsTheTensors()
    {
        std::vector<Matrix3d> tensors{Matrix3d{{10, 4, -3}, {2, 55, 20}, {1, 14, -65}}};
        for (const Vector3d &diagonal : {Vector3d(1, 2, -3), Vector3d(-3, 2, 1), Vector3d(5, 5, -10)})
            tensors.push_back(diagonal.asDiagonal());
        QVariantMap atoms, list;
        for (int i = 0; i < int(tensors.size()); ++i) {
            const Matrix3d rowMajor = tensors[i].transpose();
            QVariantMap map{{u"labels"_s, QStringList{u"O%1"_s.arg(i)}}, {u"No"_s, 1}, {u"recordNo"_s, i}};
            map.insert(u"tensor"_s, QVariant::fromValue(DoubleVector(rowMajor.data(), rowMajor.data() + 9)));
            list.insert(QString::number(i), map);
            map.insert(u"type"_s, QByteArray("O"));
            map.insert(u"pos"_s, QVariant::fromValue(DoubleVector{0, 0, 1.0 * i}));
            atoms.insert(QString::number(i), map);
        }
        SpinSystem::Options options{{u"17O"_s}, {}, 1.5, {{u"17O"_s, 30.0}}, {}};
        const QVariantMap data{
            {u"atoms"_s, atoms}, {u"shieldings"_s, list}, {u"EFG"_s, list}, {u"numberToLabel"_s, true}};
        int lines = 0;
        for (QByteArray line : SpinSystem::fromData(data, options).simpson(u"x"_s).split('\n')) {
            const QByteArrayList f = line.replace("p ", " ").simplified().split(' ');
            const auto fromEnd = [&](int i) { return f[f.size() - i].toDouble(); };
            const auto turn = [&](int i, const Vector3d &axis) {
                return Matrix3d(Eigen::AngleAxisd(fromEnd(i) * std::acos(-1.0) / 180, axis));
            };
            const bool shift = f[0] == "shift", quadrupole = f[0] == "quadrupole", dipole = f[0] == "dipole";
            if (!shift && !quadrupole && !dipole)
                continue;
            ++lines;
            const Matrix3d r = turn(3, Vector3d::UnitZ()) * turn(2, Vector3d::UnitY()) * turn(1, Vector3d::UnitZ());
            const double iso = shift ? fromEnd(6) : 0, aniso = dipole ? 1 : fromEnd(5), eta = dipole ? 0 : fromEnd(4);
            const Vector3d principal(iso - aniso / 2 * (1 + eta), iso - aniso / 2 * (1 - eta), iso + aniso);
            const Matrix3d rebuilt = r.transpose() * principal.asDiagonal() * r, one = Matrix3d::Identity();
            const Matrix3d tensor = tensors[f[1].toInt() - 1], symmetric = (tensor + tensor.transpose()) / 2;
            Matrix3d expected = 30 * one - symmetric;
            if (dipole)
                expected = Vector3d(-0.5, -0.5, 1).asDiagonal();
            if (quadrupole)
                expected = symmetric * -2.558 * 2.3489e6; // Q(17O) in fm^2
            QVERIFY2((rebuilt - expected).cwiseAbs().maxCoeff() < (quadrupole ? 50 : 1e-5), line);
            // Of two protons at 1 Angstrom it is -120.12 kHz; the ratio of the frequencies is 0.13556.
            QVERIFY(!dipole || std::abs(fromEnd(4) + 120120 * std::pow(0.13556457, 2)) < 1);
        }
        QCOMPARE(lines, 4 + 4 + 3);

        // The same in another program's form: zeta is that of the shielding, angles are radians.
        options.labels = {u"O1"_s};
        QCOMPARE(QString::fromUtf8(SpinSystem::fromData(data, options).mrsimulator(u"x"_s)), uR"({
    "name": "x",
    "spin_systems": [
        {
            "abundance": "100 %",
            "name": "O1",
            "sites": [
                {
                    "isotope": "17O",
                    "isotropic_chemical_shift": "30.000000 ppm",
                    "quadrupolar": {
                        "Cq": "18025458.600 Hz",
                        "alpha": "-1.570796327 rad",
                        "beta": "0.000000000 rad",
                        "eta": 0.33333333,
                        "gamma": "0.000000000 rad"
                    },
                    "shielding_symmetric": {
                        "alpha": "-1.570796327 rad",
                        "beta": "0.000000000 rad",
                        "eta": 0.33333333,
                        "gamma": "0.000000000 rad",
                        "zeta": "-3.000000 ppm"
                    }
                }
            ]
        }
    ]
}
)"_s);
    }

    void tableIsSortedCopiedAndLinked()
    {
        QTemporaryDir directory;
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path());
        HostApplication host;
        host.loadPlugins(QStringLiteral(PLUGIN_DIRECTORY));
        host.readFile(QStringLiteral(SAMPLES "/paracetamol.magres"));
        TableItem *table = host.scene().currentTableItem();
        table->view()->horizontalHeader()->setSortIndicator(2, Qt::DescendingOrder);
        const QStringList all = table->selectionText().split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(all.size(), 1 + table->model()->rowCount());
        const auto iso = [&](const QString &line) { return line.split(u'\t')[2].toDouble(); };
        for (int i = 2; i < all.size(); ++i)
            QVERIFY(iso(all[i]) <= iso(all[i - 1]));
        // The highest row is the atom with the largest shielding, whichever row the plug-in has it in.
        const int row = table->view()->verticalHeader()->logicalIndex(0);
        table->view()->selectRow(row);
        QCOMPARE(qobject_cast<MoleculeItem *>(table->linkedItems().value(0))->selectedAtoms(), QSet<int>{row});
        QTest::keyClick(table->view(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), all[0] + u'\n' + all[1] + u'\n');

        QMetaObject::invokeMethod(table->table(), "createSpectrum");
        const ExportMenu menu(&host.scene(), &host.documentData(), nullptr);
        const QString name = directory.filePath(u"out."_s);
        for (const QString &suffix : {u"pdf"_s, u"svg"_s, u"png"_s, u"csv"_s, u"json"_s, u"jdx"_s}) {
            menu.writeSpectrum(name + suffix);
            QVERIFY2(QFileInfo(name + suffix).size() > 1000, qPrintable(suffix));
        }
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, menu.writeSpectrum(name + u"doc"_s));
        menu.writeSpinSystem(name + u"in"_s, {u"17O"_s});
        QFile spins(name + u"in"_s);
        QVERIFY(spins.open(QIODevice::ReadOnly) && spins.readAll().count("  shift ") == 1); // of the selected row
        menu.writeSpinSystem(name + u"mrsim"_s, {u"17O"_s});
        QFile systems(name + u"mrsim"_s);
        QVERIFY(systems.open(QIODevice::ReadOnly));
        QCOMPARE(QJsonDocument::fromJson(systems.readAll())[u"spin_systems"].toArray().size(), 1);
    }
};

QTEST_MAIN(TestResults)
#include "tst_results.moc"
