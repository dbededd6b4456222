// SPDX-License-Identifier: BSD-3-Clause
#include "ModalAnswers.h"
#include "WorkbenchUser.h"

#include "host/DataEngine.h"
#include "window/WindowApplication.h"
#include "host/MainScene.h"
#include "host/PluginManager.h"
#include "window/WMainWindow.h"
#include "formats/PeakListFile.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/table/TableItem.h"
#include "items/table/TableModel.h"
#include "support/MetaTypes.h"

#include <QtTest>
#include <QtWidgets>

#include <algorithm>

using namespace Workbench;
using namespace Qt::StringLiterals;

namespace {

const QString parametersTitle = u"MAGRES parameters"_s;
const QString isotopeTitle = u"Select quadrupolar isotope"_s;
const QString paracetamol = QStringLiteral(SAMPLE_DIRECTORY "/paracetamol.magres");

const QString updateFailure = u"The spectrum cannot be updated: "_s;
const QString generationFailure = u"The spectrum cannot be generated: "_s;
const QString noData = u"The document has no MAGRES data"_s;
const QString noFrequency = u"The spectrometer frequency must be above 0 MHz"_s;
const QString noMagresSpectrum = u"The active NMR spectrum is not a MAGRES spectrum"_s;
const QString stackFailure = u"This function requires experimental and MAGRES spectra in the same stack. Both spectra "
                             "should have the same number of the compound peaks.\n\n"_s;

const QStringList editCommand{u"MAGRES"_s, u"Edit Spectrum..."_s};
const QStringList referenceCommand{u"MAGRES"_s, u"Auto reference"_s};
const QStringList rmsdCommand{u"MAGRES"_s, u"RMSD"_s};
const QString createCommand = u"Create spectrum..."_s;
const QString isotopeCommand = u"Set Quadrupolar Isotope..."_s;

const Inputs carbonSpectrum{{"fCbNucF2", u"13C"_s}, {"fSpCSRefF2", 172.4}};
const Inputs protonCarbonSpectrum{{"fCbDims", u"2D Spectrum"_s}, {"fCbNucF2", u"1H"_s},  {"fSpCSRefF2", 30.5},
                                  {"fCbPtsF2", u"512"_s},        {"fCbNucF1", u"13C"_s}, {"fSpCSRefF1", 172.5},
                                  {"fCbPtsF1", u"128"_s}};
const Inputs protonProtonSpectrum{{"fCbDims", u"2D Spectrum"_s}, {"fCbNucF2", u"1H"_s}, {"fCbPtsF2", u"512"_s},
                                  {"fCbNucF1", u"1H"_s},         {"fSpCSRefF1", 30.5},  {"fCbPtsF1", u"128"_s}};

// The largest component of the EFG tensor is 1.2 atomic units at both sites of copper; the quadrupole moments are -22.0
// fm² (63Cu) and -20.4 fm² (65Cu), and an atomic unit times 1 fm² is taken as 2.3489 MHz.
const QStringList couplingsOf63Cu{u"-62.011"_s, u"-62.011"_s, u"Isotope: 63Cu"_s};
const QStringList couplingsOf65Cu{u"-57.501"_s, u"-57.501"_s, u"Isotope: 65Cu"_s};
const QByteArray copperOxide = "#$magres-abinitio-v1.0\n[atoms]\nunits lattice Angstrom\nunits atom Angstrom\n"
                               "lattice 8 0 0 0 8 0 0 0 8\natom Cu Cu 1 0 0 0\natom Cu Cu 2 4 4 4\natom O O 1 2 2 2\n"
                               "[/atoms]\n[magres]\nunits ms ppm\nunits efg au\n"
                               "ms Cu 1 500 0 0 0 500 0 0 0 530\nms Cu 2 520 0 0 0 520 0 0 0 550\n"
                               "ms O 1 200 0 0 0 200 0 0 0 230\nefg Cu 1 -0.4 0 0 0 -0.8 0 0 0 1.2\n"
                               "efg Cu 2 -0.5 0 0 0 -0.7 0 0 0 1.2\nefg O 1 -0.1 0 0 0 -0.2 0 0 0 0.3\n[/magres]\n";

/// Positions of the peaks in a dimension, moved, descending.
QList<double> positions(const QVariantList &peaks, size_t dimension, double offset = 0.0)
{
    QList<double> found;
    for (const QVariant &peak : peaks)
        found.append(peak.toMap().value(u"Pos"_s).value<DoubleVector>().at(dimension) + offset);
    std::sort(found.begin(), found.end(), std::greater<>());
    return found;
}

bool agree(const QList<double> &a, const QList<double> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](double x, double y) { return std::abs(x - y) < 1e-9; });
}

/// An experiment whose sorted positions lie at these offsets from those of the peaks; every second one lies higher by
/// the scatter in F2, the others lower.
QVariantMap experimentFor(const QVariantList &peaks, double offsetF2, double offsetF1 = 0, double scatter = 0)
{
    const QList<double> f2 = positions(peaks, 0, offsetF2);
    const QList<double> f1 = positions(peaks, 1, offsetF1);
    std::vector<PeakListFile::Peak> measured;
    for (qsizetype i = 0; i < f2.size(); ++i)
        measured.push_back({f2[i] + (i % 2 ? scatter : -scatter), f1[i], 1.0});
    return {{u"Peaks"_s, PeakListFile::toPeakMap(measured)}};
}

/// What is left of a difference that ought to vanish, shown as 0.
QString withoutResidues(QString report)
{
    return report.replace(QRegularExpression(u"-?[0-9.]+e-(09|[1-9][0-9])"_s), u"0"_s);
}

} // namespace

Q_DECLARE_METATYPE(Inputs)

/// A user's way from a file to a referenced spectrum, in the workbench's window with the built plug-in in it: by mouse
/// and keyboard, every dialog answered and every message read.
class tst_Workflow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_directory.isValid());
        QSettings::setDefaultFormat(QSettings::IniFormat);
        for (QSettings::Scope scope : {QSettings::UserScope, QSettings::SystemScope})
            QSettings::setPath(QSettings::IniFormat, scope, m_directory.path());
        QCoreApplication::setOrganizationName(u"magres-tests"_s);
        QCoreApplication::setApplicationName(u"tst_workflow"_s);

        m_host = std::make_unique<WindowApplication>();
        m_host->plugins().load(QStringLiteral(PLUGIN_FILE));
        for (const PluginManager::Failure &failure : m_host->plugins().failures())
            QFAIL(qPrintable(failure.reason));
        window().show();
        QVERIFY(QTest::qWaitForWindowExposed(&window()));
    }

    void init()
    {
        for (DocumentItem *item : scene().documentItems())
            delete item;
        scene().undoStack()->clear();
        for (const QUuid &id : documentData().ids())
            documentData().remove(id);
        QSettings().clear();
    }

    void cleanup()
    {
        const QStringList missing = m_dialogs.missing();
        m_dialogs.forget();
        QCOMPARE(missing, QStringList());
        QVERIFY(!QGuiApplication::overrideCursor());
        QVERIFY(!QApplication::activePopupWidget());
    }

    void cleanupTestCase() { m_host.reset(); }

    void spectrumOfOneDimension()
    {
        TableItem *table = open(paracetamol);
        m_dialogs.expect(parametersTitle, [](QDialog *dialog) {
            const Inputs offered{{"fCbDims", u"1D Spectrum"_s}, {"fSpSfrq", 600.0},     {"fCbNucF2", u"13C"_s},
                                 {"fSpCSRefF2", 100.0},         {"fSpCSSlopeF2", -1.0}, {"fSpLwF2", 30.0},
                                 {"fCbPtsF2", u"8192"_s}};
            QCOMPARE(shown(dialog, offered), offered);
            fill(dialog, {{"fSpCSRefF2", 172.4}, {"fSpLwF2", 45.5}, {"fCbPtsF2", u"4096"_s}});
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        choose(window(), table, {createCommand});
        QCOMPARE(spectra()->entryIds().size(), 1);
        QCOMPARE(stored().value(u"lw"_s).toMap().value(u"13C"_s), 45.5);
        QVERIFY(!stored().contains(u"RangeF1"_s));
        QCOMPARE(documentData().ids(), QList<QUuid>{dataId()});
        QCOMPARE(entries().first().value(u"Length"_s).value<QList<int>>().first(), 4096);

        // One peak for each carbon row, reference minus shielding.
        QList<double> expected;
        for (int row = 0; row < table->model()->rowCount(); ++row)
            if (cell(table, row, u"Element"_s) == u"C")
                expected.prepend(172.4 - cell(table, row, u"Iso, ppm"_s, Qt::EditRole).toDouble());
        std::sort(expected.begin(), expected.end(), std::greater<>());
        QCOMPARE(expected.size(), 32);
        QVERIFY(agree(positions(peaks(), 0), expected));
    }

    void editingTwice()
    {
        makeSpectrum(carbonSpectrum);
        const QUuid entry = spectra()->activeEntryId();
        const QList<double> expected = positions(peaks(), 0, -2.0);
        // The new spectrum comes while the user is shown that it takes time.
        bool waits = false;
        connect(spectra(), &NmrData::entryChanged, this, [&] {
            waits = QGuiApplication::overrideCursor() && QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
        });
        const auto edit = [this](const Inputs &offered, const Inputs &change) {
            m_dialogs.expect(parametersTitle, [offered, change](QDialog *dialog) {
                QCOMPARE(shown(dialog, offered), offered);
                fill(dialog, change);
                press(dialog, QDialogButtonBox::Ok);
            });
            choose(window(), spectrum(), editCommand);
        };
        edit({{"fCbNucF2", u"13C"_s}, {"fSpCSRefF2", 172.4}}, {{"fSpCSRefF2", 170.4}, {"fSpLwF2", 50.0}});
        QVERIFY(waits);
        QVERIFY(agree(positions(peaks(), 0), expected));

        // A range that the user sets stays the user's, and with nothing changed the same data come again.
        const Inputs usersRange{{"fCbPtsF2", u"1024"_s}, {"fSpFromF2", 5.0}, {"fSpToF2", 185.0}};
        edit({{"fSpCSRefF2", 170.4}, {"fSpLwF2", 50.0}}, usersRange);
        const DoubleVector once = dataPoints();
        QCOMPARE(once.size(), size_t(1024));
        edit(usersRange, {});
        QCOMPARE(stored().value(u"RangeF2"_s).value<DoubleVector>(), (DoubleVector{5.0, 185.0}));
        QCOMPARE(spectra()->entryIds(), QList<QUuid>{entry});
        QVERIFY(once == dataPoints());
    }

    void cancelling()
    {
        TableItem *table = open(paracetamol);
        const auto cancel = [this](const QString &message, DocumentItem *item, const QStringList &command) {
            m_dialogs.expect(parametersTitle, [](QDialog *dialog) {
                fill(dialog, {{"fSpCSRefF2", 1.5}, {"fCbPtsF2", u"128"_s}});
                QTest::keyClick(dialog, Qt::Key_Escape);
            });
            m_dialogs.expectBox(QMessageBox::Critical, u"Interrupted"_s, message + u"Canceled"_s);
            choose(window(), item, command);
        };
        cancel(generationFailure, table, {createCommand});
        QVERIFY(!spectrum());
        expectParameters(carbonSpectrum);
        choose(window(), table, {createCommand});
        const QList<QVariantMap> before = entries();
        cancel(updateFailure, spectrum(), editCommand);
        QCOMPARE(entries(), before);
    }

    void isotope()
    {
        TableItem *table = openText(copperOxide);
        QCOMPARE(couplings(table), couplingsOf63Cu);
        const QString oxygen = cell(table, 2, u"Cq, MHz"_s);
        const auto setIsotope = [&](const QString &offered, const QString &chosen,
                                    QDialogButtonBox::StandardButton button) {
            m_dialogs.expect(isotopeTitle, [=](QDialog *dialog) {
                fill(dialog, {{"fCbEl", u"Cu"_s}});
                const Inputs isotope{{"fCbIso", offered}};
                QCOMPARE(shown(dialog, isotope), isotope);
                fill(dialog, {{"fCbIso", chosen}});
                press(dialog, button);
            });
            choose(window(), table, {isotopeCommand});
        };
        setIsotope(u"63Cu"_s, u"65Cu"_s, QDialogButtonBox::Cancel);
        QCOMPARE(couplings(table), couplingsOf63Cu);
        setIsotope(u"63Cu"_s, u"65Cu"_s, QDialogButtonBox::Ok);
        QCOMPARE(couplings(table), couplingsOf65Cu);
        QCOMPARE(cell(table, 2, u"Cq, MHz"_s), oxygen);

        // The choice is kept, and the next structure starts with it.
        setIsotope(u"65Cu"_s, u"65Cu"_s, QDialogButtonBox::Cancel);
        QCOMPARE(couplings(openText(copperOxide)), couplingsOf65Cu);

        // One that is not in the list gives way to the first that is.
        QSettings().setValue(u"magresPlugin/QIso"_s, QVariantMap{{u"Cu"_s, u"12Xy"_s}});
        table = openText(copperOxide);
        setIsotope(u"63Cu"_s, u"63Cu"_s, QDialogButtonBox::Ok);
        QCOMPARE(couplings(table), couplingsOf63Cu);
    }

    void autoReference_data()
    {
        QTest::addColumn<Inputs>("inputs");
        QTest::addColumn<QList<double>>("offsets"); // F2, F1, and a scatter in F2
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("report");
        QTest::addColumn<QString>("after");
        // √(1.5² + 0.25²) = 1.52069
        QTest::newRow("1D, experiment first")
            << carbonSpectrum << QList<double>{1.5, 0.0, 0.25} << u"RMSD: 1.52069 ppm"_s
            << u"Reference is changed from 172.4 ppm to 173.9 ppm\n\nOld RMSD: 1.52069 ppm\nNew RMSD: 0.25 ppm"_s
            << u"RMSD: 0.25 ppm"_s;
        QTest::newRow("two nuclei") << protonCarbonSpectrum << QList<double>{-0.75, 2.5, 0.0}
                                    << u"RMSD (direct dimension): 0.75 ppm\nRMSD (indirect dimension): 2.5 ppm"_s
                                    << u"Direct dimension reference is changed from 30.5 ppm to 29.75 ppm\n"
                                       "Indirect dimension reference is changed from 172.5 ppm to 175 ppm\n\n"
                                       "Old RMSD. Direct dimension: 0.75 ppm, indirect dimension: 2.5ppm\n"
                                       "New RMSD: Direct dimension: 0 ppm, indirect dimension: 0 ppm"_s
                                    << u"RMSD (direct dimension): 0 ppm\nRMSD (indirect dimension): 0 ppm"_s;
        // One reference, which F2 decides; F1 moves along, from 0.875 off to 0.375.
        QTest::newRow("one nucleus")
            << protonProtonSpectrum << QList<double>{0.5, 0.875, 0.0}
            << u"RMSD (direct dimension): 0.5 ppm\nRMSD (indirect dimension): 0.875 ppm"_s
            << u"Reference is changed from 30.5 ppm to 31 ppm\n\nOld RMSD: 0.5 ppm\nNew RMSD: 0 ppm"_s
            << u"RMSD (direct dimension): 0 ppm\nRMSD (indirect dimension): 0.375 ppm"_s;
    }

    void autoReference()
    {
        QFETCH(Inputs, inputs);
        QFETCH(QList<double>, offsets);
        QFETCH(QString, before);
        QFETCH(QString, report);
        QFETCH(QString, after);
        makeSpectrum(inputs);
        spectra()->addEntry(experimentFor(peaks(), offsets[0], offsets[1], offsets[2]), u"Measured"_s);
        if (inputs == carbonSpectrum) {
            NmrStack stack = spectra()->stack();
            stack.entries.swapItemsAt(0, 1);
            spectra()->setStack(stack);
        }
        if (inputs != carbonSpectrum)
            QCOMPARE(entries().first().value(u"Length"_s).value<QList<int>>().first(2), (QList<int>{512, 128}));
        const QVariantHash parametersBefore = stored();
        const QList<double> expected = positions(peaks(), 0, offsets[0]);

        chooseAndRead(rmsdCommand, QMessageBox::Information, u"RMSD"_s, before);
        QCOMPARE(stored(), parametersBefore);
        chooseAndRead(referenceCommand, QMessageBox::Information, u"New reference"_s, report);
        chooseAndRead(rmsdCommand, QMessageBox::Information, u"RMSD"_s, after);
        QVERIFY(agree(positions(peaks(), 0), expected));
        // All parameters but the references are as they were.
        QVariantHash parameters = stored();
        parameters.insert(u"ref"_s, parametersBefore.value(u"ref"_s));
        QCOMPARE(parameters, parametersBefore);
    }

    void stackValidation_data()
    {
        QTest::addColumn<QByteArray>("stack"); // S simulated; E experiment, e the same with one peak less
        QTest::addColumn<QString>("message");
        const auto row = [](const char *stack, const QString &message) {
            QTest::newRow(stack) << QByteArray(stack) << message;
        };
        row("", u"There are 0 spectra in this plot. Two is expected"_s);
        row("S", u"There is 1 spectrum in this plot. Two is expected"_s);
        row("SEE", u"There are 3 spectra in this plot. Two is expected"_s);
        row("Ee", u"Neither of the spectra is generated from MAGRES"_s);
        row("SS", u"Both spectra are generated from MAGRES. One should be experimental"_s);
        row("eS", u"The MAGRES spectrum has 32 compound peaks and the experimental spectrum has 31"_s);
    }

    void stackValidation()
    {
        QFETCH(QByteArray, stack);
        QFETCH(QString, message);
        makeSpectrum(carbonSpectrum);
        const QVariantMap simulated = entries().first();
        const QVariantList simulatedPeaks = peaks();
        spectra()->removeEntry(spectra()->activeEntryId());
        for (char kind : stack)
            spectra()->addEntry(
                kind == 'S' ? simulated : experimentFor(kind == 'E' ? simulatedPeaks : simulatedPeaks.mid(1), 1.0), {});
        const QList<QVariantMap> before = entries();
        for (const QStringList &command : {referenceCommand, rmsdCommand})
            chooseAndRead(command, QMessageBox::Critical, u"Error"_s, stackFailure + message);
        QCOMPARE(entries(), before);
    }

    void spectraThatCannotBeMade()
    {
        TableItem *table = open(paracetamol);
        const auto fails = [&](DocumentItem *item, const QStringList &command, const QString &message) {
            const QList<QVariantMap> before = entries();
            const qsizetype items = scene().documentItems().size();
            if (message.endsWith(noFrequency))
                expectParameters({{"fSpSfrq", 0.0}});
            m_dialogs.expectBox(QMessageBox::Critical, u"Interrupted"_s, message);
            choose(window(), item, command);
            QCOMPARE(entries(), before);
            QCOMPARE(scene().documentItems().size(), items);
        };
        expectParameters(carbonSpectrum);
        choose(window(), table, {createCommand});
        fails(spectrum(), editCommand, updateFailure + noFrequency);
        fails(table, {createCommand}, generationFailure + noFrequency);

        const QUuid simulated = spectra()->activeEntryId();
        spectra()->setActiveEntryId(spectra()->addEntry(experimentFor(peaks(), 0.5), u"Measured"_s));
        fails(spectrum(), editCommand, updateFailure + noMagresSpectrum);

        spectra()->setActiveEntryId(simulated);
        documentData().remove(dataId());
        fails(spectrum(), editCommand, updateFailure + noData);
        fails(table, {createCommand}, generationFailure + noData);
        // Only the fit has to make the spectrum anew.
        chooseAndRead(referenceCommand, QMessageBox::Critical, u"Error"_s, stackFailure + noData);
        chooseAndRead(rmsdCommand, QMessageBox::Information, u"RMSD"_s, u"RMSD: 0.5 ppm"_s);
        choose(window(), table, {isotopeCommand}); // shows nothing
    }

    /// Whatever another version has left behind, the user can go on from there.
    void nonsenseInParametersAndSettings_data()
    {
        QTest::addColumn<QVariant>("nonsense");
        QTest::addColumn<bool>("hasFrequency");
        QTest::newRow("text") << QVariant(u"nonsense"_s) << false;
        QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN()) << true;
        QTest::newRow("map") << QVariant(QVariantMap{{u"13C"_s, u"x"_s}, {u"1H"_s, QVariantList()}}) << false;
    }

    void nonsenseInParametersAndSettings()
    {
        QFETCH(QVariant, nonsense);
        QFETCH(bool, hasFrequency);
        QVariantHash parameters;
        for (const QString &key : u"nucF1 nucF2 slope ref lw freq pts ptsF1 ptsF2 avIdx specType correlation corr QIso "
                                  "dialogPos qShift RangeF2 RangeF1 RangeF2User RangeF1User"_s.split(u' ')) {
            parameters.insert(key, nonsense);
            QSettings().setValue(u"magresPlugin/"_s + key, nonsense);
        }
        const auto choosing = [&](DocumentItem *item, const QStringList &command, const QString &failure) {
            expectParameters({});
            if (!hasFrequency) {
                m_dialogs.expectBox(QMessageBox::Critical, u"Interrupted"_s, failure + noFrequency);
                choose(window(), item, command);
                expectParameters({{"fSpSfrq", 500.0}});
            }
            choose(window(), item, command);
            QVERIFY(spectrum());
            QVERIFY(!peaks().isEmpty());
            window().grab();
        };
        TableItem *table = open(paracetamol);
        m_dialogs.expect(isotopeTitle, [](QDialog *dialog) {
            fill(dialog, {{"fCbEl", u"N"_s}, {"fCbIso", u"14N"_s}});
            press(dialog, QDialogButtonBox::Ok);
        });
        choose(window(), table, {isotopeCommand});
        choosing(table, {createCommand}, generationFailure);
        parameters.insert(u"magresDataId"_s, dataId());
        spectra()->setEntryOrigParams(spectra()->activeEntryId(), u"magres"_s, parameters);
        choosing(spectrum(), editCommand, updateFailure);
    }

    void positionOffAllScreens()
    {
        TableItem *table = open(paracetamol);
        for (const QVariant &position : {QVariant(QPoint(-30000, 50)), QVariant(u"somewhere"_s)}) {
            QSettings().setValue(u"magresPlugin/dialogPos"_s, position);
            m_dialogs.expect(parametersTitle, [](QDialog *dialog) {
                const bool onScreen = QGuiApplication::screenAt(dialog->frameGeometry().center());
                press(dialog, QDialogButtonBox::Ok);
                QVERIFY(onScreen);
            });
            choose(window(), table, {createCommand});
            // The next dialog comes up where this one was.
            QVERIFY(QGuiApplication::screenAt(QSettings().value(u"magresPlugin/dialogPos"_s).toPoint()));
        }
    }

    void documentChangesUnderTheDialog_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QString>("deleted");
        QTest::addColumn<QString>("message"); // empty: the command does its work
        const QByteArray create = "createSpectrum", edit = "updateSpectrum", isotope = "setQuadIsotope";
        QTest::newRow("create, data") << create << u"data"_s << generationFailure + noData;
        QTest::newRow("create, table") << create << u"table"_s << QString();
        QTest::newRow("edit, data") << edit << u"data"_s << updateFailure + noData;
        QTest::newRow("edit, plot") << edit << u"plot"_s << updateFailure + noMagresSpectrum;
        QTest::newRow("isotope, data") << isotope << u"data"_s << QString();
        QTest::newRow("isotope, table") << isotope << u"table"_s << QString();
    }

    void documentChangesUnderTheDialog()
    {
        QFETCH(QByteArray, command);
        QFETCH(QString, deleted);
        QFETCH(QString, message);
        TableItem *table = openText(copperOxide);
        expectParameters({{"fCbNucF2", u"63Cu"_s}});
        choose(window(), table, {createCommand});
        QVERIFY(spectrum());
        const QUuid data = dataId();
        const bool isIsotope = command == "setQuadIsotope";

        m_dialogs.expect(isIsotope ? isotopeTitle : parametersTitle, [&](QDialog *dialog) {
            if (isIsotope)
                fill(dialog, {{"fCbEl", u"Cu"_s}, {"fCbIso", u"65Cu"_s}});
            if (deleted == u"data")
                documentData().remove(data);
            else if (deleted == u"table")
                delete table;
            else
                delete spectrum();
            press(dialog, QDialogButtonBox::Ok);
        });
        if (!message.isEmpty())
            m_dialogs.expectBox(QMessageBox::Critical, u"Interrupted"_s, message);
        // By name, as hosts may call it: a menu would go together with its item.
        QObject *plugin = m_host->plugins().plugins().first().object.data();
        QVERIFY(QMetaObject::invokeMethod(command == "updateSpectrum" ? plugin : table->table(), command.constData()));

        QCOMPARE(documentData().ids().isEmpty(), deleted == u"data");
        if (isIsotope && deleted == u"table")
            QCOMPARE(documentData().getDataMap(data).value(u"QIso"_s).toMap().value(u"Cu"_s), u"65Cu"_s);
        window().grab();
    }

private:
    MainScene &scene() const { return m_host->scene(); }
    WMainWindow &window() const { return m_host->window(); }
    NmrItem *spectrum() const { return scene().currentNmrItem(); }
    NmrData *spectra() const { return spectrum()->nmrData(); }
    QVariantHash stored() const { return spectra()->entryOrigParams(spectra()->activeEntryId(), u"magres"_s); }
    QVariantList peaks() const
    {
        return spectra()->entryPeakList(spectra()->activeEntryId()).value(u"PeakList"_s).toList();
    }
    DoubleVector dataPoints() const
    {
        return entries().first().value(u"DataPoints"_s).value<QList<DoubleVector>>().first();
    }
    QUuid dataId() const { return stored().value(u"magresDataId"_s).toUuid(); }
    DataEngine &documentData() const { return *window().documentData(); }
    QList<QVariantMap> entries() const
    {
        QList<QVariantMap> all;
        for (const QUuid &id : spectra()->entryIds())
            all.append(spectra()->entry(id));
        return all;
    }

    TableItem *open(const QString &fileName)
    {
        for (QGraphicsWidget *item : m_host->readFile(fileName).items)
            if (auto *table = qobject_cast<TableItem *>(item))
                return table;
        qFatal("There is no table of %s", qPrintable(fileName));
    }

    TableItem *openText(const QByteArray &magresText)
    {
        QFile file(m_directory.filePath(u"structure.magres"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(magresText) != magresText.size() || !file.flush())
            qFatal("%s", qPrintable(file.errorString()));
        return open(file.fileName());
    }

    QString cell(TableItem *table, int row, const QString &header, int role = Qt::DisplayRole) const
    {
        const TableModel *model = table->model();
        for (int column = 0; column < model->columnCount(); ++column)
            if (model->headerData(column, Qt::Horizontal).toString() == header)
                return model->index(row, column).data(role).toString();
        return u"no such column"_s;
    }

    /// What is shown for the two sites of copper.
    QStringList couplings(TableItem *table) const
    {
        const QString column = u"Cq, MHz"_s;
        return {cell(table, 0, column), cell(table, 1, column), cell(table, 1, column, Qt::ToolTipRole)};
    }

    /// The parameters dialog opens next; it is filled in and accepted.
    void expectParameters(const Inputs &inputs)
    {
        m_dialogs.expect(parametersTitle, [inputs](QDialog *dialog) {
            fill(dialog, inputs);
            press(dialog, QDialogButtonBox::Ok);
        });
    }

    /// Opens paracetamol and makes a spectrum of it.
    void makeSpectrum(const Inputs &inputs)
    {
        expectParameters(inputs);
        choose(window(), open(paracetamol), {createCommand});
        QVERIFY(spectrum());
    }

    /// Runs a command that tells the user something.
    void chooseAndRead(const QStringList &command, QMessageBox::Icon icon, const QString &title, const QString &text)
    {
        m_dialogs.expect(title, [icon, text](QDialog *dialog) {
            auto *box = qobject_cast<QMessageBox *>(dialog);
            QVERIFY(box);
            QCOMPARE(withoutResidues(box->text()), text);
            QCOMPARE(box->icon(), icon);
            QTest::keyClick(box, Qt::Key_Return);
        });
        choose(window(), spectrum(), command);
    }

    QTemporaryDir m_directory;
    std::unique_ptr<WindowApplication> m_host;
    ModalAnswers m_dialogs;
};

QTEST_MAIN(tst_Workflow)
#include "tst_workflow.moc"
