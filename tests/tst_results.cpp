// SPDX-License-Identifier: BSD-3-Clause
#include "Built.h"
#include "analysis/SpinSystem.h"
#include "document/DocumentState.h"
#include "document/UndoRecorder.h"
#include "formats/TableExport.h"
#include "data/Document.h"
#include "data/TableContent.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "window/WMainWindow.h"
#include "formats/JcampExport.h"
#include "formats/JcampReader.h"
#include "items/plot/NmrData.h"
#include "items/table/TableItem.h"
#include "items/table/TableModel.h"
#include <Eigen/Geometry>
#include <QHeaderView>
#include <QMenu>
#include <QTableView>
#include <QUndoStack>
#include <QtTest>

using namespace Workbench;
using namespace Qt::StringLiterals;
using Eigen::Matrix3d;
using Eigen::Vector3d;

/// What leaves the workbench: spectra, spin systems, tables.
class TestResults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Axes, nuclei, frequencies and points, whatever their sign and size; in planes too.
    void jcampComesBack()
    {
        const SpectrumDimension nitrogen{u"15N"_s, 60.8, 60.8 * 370, 311.25, -0.37, 1000},
            proton{u"1H"_s, 400.13, 0, 12.5, -0.25, 40}, carbon{u"13C"_s, 100.62, 0, 180.1, -2.5, 7};
        for (const auto &[scale, dimensions] : {std::pair(1.0, std::vector{nitrogen}),
                                                {-3e-7, {nitrogen}},
                                                {2e200, {nitrogen}},
                                                {0.0, {nitrogen}},
                                                {1.0, {proton, carbon}}}) {
            ExperimentalSpectrum spectrum{u"x"_s, dimensions, {}};
            for (int i = 0; i < (dimensions.size() == 2 ? 40 * 7 : 1000); ++i)
                spectrum.data.push_back(scale * (std::cos(0.1 * i) + 1e-4 * i));
            const QVariantMap map = toEntryMap(spectrum);
            QBuffer file;
            file.open(QIODevice::WriteOnly);
            JcampExport::write({{}, u"a $$ b\n##END="_s, map, Spectrum::fromMap(map)}, file);
            const auto back = std::get<ExperimentalSpectrum>(JcampReader::parse(file.data(), u"x.jdx"_s));
            QCOMPARE(back.dimensions.size(), dimensions.size());
            for (size_t d = 0; d < dimensions.size(); ++d) {
                const SpectrumDimension &axis = back.dimensions[d], &was = dimensions[d];
                QVERIFY(axis.nucleus == was.nucleus && axis.points == was.points && axis.frequency == was.frequency);
                QVERIFY(std::abs(axis.first - was.first) < 1e-9 && std::abs(axis.step - was.step) < 1e-11);
            }
            for (size_t i = 0; i < spectrum.data.size(); ++i)
                QVERIFY(std::abs(back.data.at(i) - spectrum.data[i]) <= std::abs(scale) * 1e-9);
            QVERIFY2(back.notes.isEmpty(), qPrintable(back.notes.join(u'\n')));
        }
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
        SpinSystem::Options options{{u"17O"_s}, {}, 1.5, {{u"17O"_s, 30.0}}, {{u"17O"_s, -0.9}}};
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
            Matrix3d expected = 30 * one - 0.9 * symmetric;
            if (dipole)
                expected = Vector3d(-0.5, -0.5, 1).asDiagonal();
            if (quadrupole)
                expected = symmetric * -2.558 * 2.3489e6; // Q(17O) in fm^2
            QVERIFY2((rebuilt - expected).cwiseAbs().maxCoeff() < (quadrupole ? 50 : 1e-5), line);
            // Of two protons at 1 Angstrom it is -120.12 kHz; the ratio of the frequencies is 0.13556.
            QVERIFY(!dipole || std::abs(fromEnd(4) + 120120 * std::pow(0.13556457, 2)) < 1);
        }
        QCOMPARE(lines, 4 + 4 + 3);

        // The same in another program's form: zeta is minus that of the shift, angles are radians.
        options.labels = {u"O1"_s};
        const QByteArray other = SpinSystem::fromData(data, options).mrsimulator(u"x"_s);
        QCOMPARE(QJsonDocument::fromJson(other).toJson(QJsonDocument::Compact),
                 "{\"name\":\"x\",\"spin_systems\":[{\"abundance\":\"100 "
                 "%\",\"name\":\"O1\",\"sites\":[{\"isotope\":\"17O\",\"isotropic_chemical_shift\":\"30.000000 "
                 "ppm\",\"quadrupolar\":{\"Cq\":\"18025458.600 Hz\",\"alpha\":\"-1.570796327 "
                 "rad\",\"beta\":\"0.000000000 rad\",\"eta\":0.33333333,\"gamma\":\"0.000000000 "
                 "rad\"},\"shielding_symmetric\":{\"alpha\":\"-1.570796327 rad\",\"beta\":\"0.000000000 "
                 "rad\",\"eta\":0.33333333,\"gamma\":\"0.000000000 rad\",\"zeta\":\"-2.700000 ppm\"}}]}]}");
    }

    /// Columns come and go with the others as they are, and leave the program as they are shown.
    void columnsAreChosen()
    {
        QTemporaryDir directory;
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path());
        QSettings().setValue(u"magresPlugin/nucF2"_s, u"13C"_s);
        QSettings().setValue(u"magresPlugin/ref"_s, QVariantMap{{u"13C"_s, 170.5}});
        HostApplication host;
        host.loadPlugins(built(u"plugins"));
        MainScene &scene = host.scene();
        new UndoRecorder(&scene);
        host.readFile(QStringLiteral(SAMPLES "/paracetamol.magres"));
        TableItem *table = scene.currentTableItem();
        const QStringList own = table->content().titles;
        QCOMPARE(own.size(), 8);
        table->ensureFitted();
        QHeaderView *header = table->view()->horizontalHeader();
        header->resizeSection(1, 77);
        const int width = header->sectionSize(2);

        const auto press = [&](const QString &title) {
            const std::unique_ptr<QMenu> menu(table->createColumnMenu(nullptr));
            for (QAction *action : menu->actions()) {
                QVERIFY2(action->isSeparator() || action->toolTip().size() > 15, qPrintable(action->text()));
                if (action->text().section(u"  "_s, 0, 0) == title)
                    return action->trigger();
            }
            QFAIL(qPrintable(title));
        };
        for (const QString &title :
             {u"Ω, ppm"_s, u"δ33, ppm"_s, u"δ22, ppm"_s, u"δ11, ppm"_s, u"Multiplicity"_s, own[5]})
            press(title);
        QStringList shown =
            own + QStringList{u"δ11, ppm"_s, u"δ22, ppm"_s, u"δ33, ppm"_s, u"Ω, ppm"_s, u"Multiplicity"_s};
        shown.removeAt(5);
        QCOMPARE(table->content().titles, shown);
        QVERIFY(header->sectionSize(1) == 77 && header->sectionSize(2) == width);

        // The mean of the principal shifts is the isotropic one, with the reference of the spectrum where there is one.
        const auto reference = [&](const QString &element) {
            double sum = 0;
            int rows = 0;
            for (const QVariant &row : table->content().rows) {
                const QVariantMap map = row.toMap();
                const auto number = [&](const QString &key) { return map[key].toDouble(); };
                if (std::abs(number(u"span"_s) - number(u"delta11"_s) + number(u"delta33"_s)) > 1e-9)
                    return std::numeric_limits<double>::quiet_NaN();
                if (map[u"type"_s] != element)
                    continue;
                ++rows;
                sum += (number(u"delta11"_s) + number(u"delta22"_s) + number(u"delta33"_s)) / 3 + number(u"iso"_s);
            }
            return sum / rows;
        };
        QVERIFY(std::abs(reference(u"C"_s) - 100) < 1e-9);
        // Rows are in the order of values that come later, too: with a spectrum, or when a document is opened.
        const auto falls = [&] {
            QCoreApplication::processEvents();
            QList<double> shifts;
            for (int row = 0; row < table->model()->rowCount(); ++row)
                shifts.prepend(table->model()
                                   ->index(table->view()->verticalHeader()->logicalIndex(row),
                                           table->model()->columnOfKey(u"delta33"_s))
                                   .data(Qt::EditRole)
                                   .toDouble());
            return shifts.size() == 80 && std::is_sorted(shifts.begin(), shifts.end());
        };
        header->setSortIndicator(table->model()->columnOfKey(u"delta33"_s), Qt::DescendingOrder);
        QVERIFY(falls());
        QMetaObject::invokeMethod(table->table(), "createSpectrum");
        QVERIFY2(std::abs(reference(u"C"_s) - 170.5) < 1e-9, qPrintable(QString::number(reference(u"C"_s))));
        QVERIFY(falls());
        QVERIFY(std::abs(reference(u"H"_s) - 100) < 1e-9);
        const TableModel &model = *table->model();
        const auto tip = [&](int row) {
            return model.index(row, model.columnOfKey(u"delta11"_s)).data(Qt::ToolTipRole).toString();
        };
        const auto rowOf = [&](const QString &element) {
            int row = 0;
            while (table->rowMaps().value(row).toMap()[u"type"_s] != element)
                ++row;
            return row;
        };
        const int carbon = rowOf(u"C"_s), proton = rowOf(u"H"_s);
        QVERIFY2(tip(carbon).contains(u"170.50"_s) && tip(proton).contains(u"placeholders"_s), qPrintable(tip(carbon)));

        const QByteArray csv = TableExport::write(table->content(), TableExport::Format::Csv);
        QCOMPARE(csv.left(csv.indexOf('\n')),
                 "type,labels,atomNos,iso,aniso,assym,qassym,Cq,qIso,delta11,delta22,delta33,span,multiplicity");
        QCOMPARE(table->selectionText().section(u'\n', 0, 0), shown.join(u'\t'));

        // Kept with the document, undone step by step.
        const Document document = DocumentState::capture(scene, host.documentData(), &host.plugins());
        for (int i = 0; i < 8; ++i)
            scene.undoStack()->undo();
        QCOMPARE(table->content().titles, own);
        DocumentState::restore(document, scene, host.documentData(), &host.plugins());
        table = scene.currentTableItem();
        table->ensureFitted();
        QCOMPARE(table->content().titles, shown);
        QVERIFY(table->view()->columnWidth(1) == 77 && std::abs(reference(u"C"_s) - 170.5) < 1e-9 && falls());
    }
};

QTEST_MAIN(TestResults)
#include "tst_results.moc"
