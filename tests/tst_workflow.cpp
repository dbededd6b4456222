// SPDX-License-Identifier: BSD-3-Clause
#include "ModalAnswers.h"
#include "WorkbenchUser.h"

#include "host/DataEngine.h"
#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/MainView.h"
#include "host/PluginManager.h"
#include "host/WMainWindow.h"
#include "io/PeakListFile.h"
#include "items/MoleculeItem.h"
#include "items/NmrData.h"
#include "items/NmrItem.h"
#include "items/TableItem.h"
#include "items/TableModel.h"
#include "support/MetaTypes.h"

#include <QApplication>
#include <QGraphicsProxyWidget>
#include <QRegularExpression>
#include <QScreen>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

const QString parametersTitle = u"MAGRES parameters"_s;
const QString isotopeTitle = u"Select quadrupolar isotope"_s;
const QString paracetamol = QStringLiteral(SAMPLE_DIRECTORY "/paracetamol.magres");

const QString updateFailure = u"The spectrum cannot be updated: "_s;
const QString generationFailure = u"The spectrum cannot be generated: "_s;
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

/// Positions of the peaks in a dimension, descending.
QList<double> positions(const QVariantList &peaks, size_t dimension)
{
    QList<double> found;
    for (const QVariant &peak : peaks)
        found.append(peak.toMap().value(u"Pos"_s).value<DoubleVector>().at(dimension));
    std::sort(found.begin(), found.end(), std::greater<>());
    return found;
}

double largestDifference(const QList<double> &a, const QList<double> &b)
{
    if (a.size() != b.size())
        return std::numeric_limits<double>::infinity();
    double largest = 0;
    for (qsizetype i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
}

QList<double> shifted(QList<double> values, double offset)
{
    for (double &value : values)
        value += offset;
    return values;
}

QVariantMap entryOf(const std::vector<PeakListFile::Peak> &peaks)
{
    return {{u"Peaks"_s, PeakListFile::toPeakMap(peaks)}};
}

/// An experiment whose sorted positions lie at these offsets from those of the peaks; every second one lies higher by
/// the scatter in F2, the others lower.
QVariantMap experimentFor(const QVariantList &peaks, double offsetF2, double offsetF1 = 0, double scatter = 0)
{
    const QList<double> f2 = positions(peaks, 0);
    const QList<double> f1 = positions(peaks, 1);
    std::vector<PeakListFile::Peak> measured;
    for (qsizetype i = 0; i < f2.size(); ++i)
        measured.push_back({f2[i] + offsetF2 + (i % 2 ? scatter : -scatter), f1[i] + offsetF1, 1.0});
    return entryOf(measured);
}

/// What is left of a difference that ought to vanish, shown as 0.
QString withoutResidues(QString report)
{
    return report.replace(QRegularExpression(u"-?[0-9.]+e-(09|[1-9][0-9])"_s), u"0"_s);
}

} // namespace

/// A user's way from a file to a referenced spectrum, in the workbench's window with the built plug-in in it: by mouse
/// and keyboard, every dialog answered and every message read.
class tst_Workflow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void rowsAndAtomsAreSelectedTogether();
    void spectrumOfOneDimension();
    void spectrumOfTwoDimensions();
    void editingTwice();
    void cancelling_data();
    void cancelling();
    void isotope();
    void isotopeNotInItsList();
    void autoReference_data();
    void autoReference();
    void stackValidation_data();
    void stackValidation();
    void unusualPeaks_data();
    void unusualPeaks();
    void spectraThatCannotBeMade_data();
    void spectraThatCannotBeMade();
    void parametersOfAnotherVersion_data();
    void parametersOfAnotherVersion();
    void nonsenseInTheSettings_data();
    void nonsenseInTheSettings();
    void positionOffAllScreens_data();
    void positionOffAllScreens();
    void documentChangesUnderTheDialog_data();
    void documentChangesUnderTheDialog();

private:
    MainScene &scene() const { return m_host->scene(); }
    WMainWindow &window() const { return m_host->window(); }
    NmrItem *spectrum() const { return scene().currentNmrItem(); }
    NmrData *spectra() const { return spectrum()->nmrData(); }
    QVariantHash stored() const { return spectra()->entryOrigParams(spectra()->activeEntryId(), u"magres"_s); }
    double storedReference(const QString &nucleus) const
    {
        return stored().value(u"ref"_s).toMap().value(nucleus).toDouble();
    }
    QVariantList peaks() const
    {
        return spectra()->entryPeakList(spectra()->activeEntryId()).value(u"PeakList"_s).toList();
    }
    QUuid dataId() const { return stored().value(u"magresDataId"_s).toUuid(); }
    DataEngine &documentData() const { return *window().documentData(); }

    TableItem *open(const QString &fileName);
    TableItem *openText(const QByteArray &magresText);
    QString cell(TableItem *table, int row, const QString &header, int role = Qt::DisplayRole) const;
    /// The parameters dialog opens next; it is filled in and accepted.
    void expectParameters(const Inputs &inputs);
    /// Opens paracetamol and makes a spectrum of it.
    void makeSpectrum(const Inputs &inputs);
    /// Runs a command that tells the user something.
    void chooseAndRead(const QStringList &command, QMessageBox::Icon icon, const QString &title, const QString &text);
    QList<QVariantMap> entries() const;

    QTemporaryDir m_directory;
    std::unique_ptr<HostApplication> m_host;
    std::unique_ptr<ModalAnswers> m_dialogs;
};

Q_DECLARE_METATYPE(Inputs)

void tst_Workflow::initTestCase()
{
    QVERIFY(m_directory.isValid());
    QSettings::setDefaultFormat(QSettings::IniFormat);
    for (QSettings::Scope scope : {QSettings::UserScope, QSettings::SystemScope})
        QSettings::setPath(QSettings::IniFormat, scope, m_directory.path());
    QCoreApplication::setOrganizationName(u"magres-tests"_s);
    QCoreApplication::setApplicationName(u"tst_workflow"_s);

    m_host = std::make_unique<HostApplication>(false);
    m_host->plugins().load(QStringLiteral(PLUGIN_FILE));
    for (const PluginManager::Failure &failure : m_host->plugins().failures())
        QFAIL(qPrintable(failure.reason));
    m_dialogs = std::make_unique<ModalAnswers>();
    window().show();
    QVERIFY(QTest::qWaitForWindowExposed(&window()));
}

void tst_Workflow::init()
{
    for (DocumentItem *item : scene().documentItems())
        delete item;
    scene().undoStack()->clear();
    for (const QUuid &id : documentData().ids())
        documentData().remove(id);
    QSettings().clear();
}

void tst_Workflow::cleanup()
{
    const QStringList missing = m_dialogs->missing();
    m_dialogs->forget();
    QCOMPARE(missing, QStringList());
    QVERIFY(!QGuiApplication::overrideCursor());
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_Workflow::cleanupTestCase()
{
    m_dialogs.reset();
    m_host.reset();
}

TableItem *tst_Workflow::open(const QString &fileName)
{
    for (QGraphicsWidget *item : window().readFile(fileName).items)
        if (auto *table = qobject_cast<TableItem *>(item))
            return table;
    qFatal("There is no table of %s", qPrintable(fileName));
}

TableItem *tst_Workflow::openText(const QByteArray &magresText)
{
    QFile file(m_directory.filePath(u"structure.magres"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(magresText) != magresText.size() || !file.flush())
        qFatal("%s", qPrintable(file.errorString()));
    return open(file.fileName());
}

QString tst_Workflow::cell(TableItem *table, int row, const QString &header, int role) const
{
    const TableModel *model = table->model();
    for (int column = 0; column < model->columnCount(); ++column)
        if (model->headerData(column, Qt::Horizontal).toString() == header)
            return model->index(row, column).data(role).toString();
    return u"no such column"_s;
}

void tst_Workflow::expectParameters(const Inputs &inputs)
{
    m_dialogs->expect(parametersTitle, [inputs](QDialog *dialog) {
        fill(dialog, inputs);
        press(dialog, QDialogButtonBox::Ok);
    });
}

void tst_Workflow::makeSpectrum(const Inputs &inputs)
{
    expectParameters(inputs);
    choose(window(), open(paracetamol), {createCommand});
    QVERIFY(spectrum());
}

void tst_Workflow::chooseAndRead(const QStringList &command, QMessageBox::Icon icon, const QString &title,
                                 const QString &text)
{
    m_dialogs->expect(title, [icon, text](QDialog *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        QVERIFY(box);
        QCOMPARE(withoutResidues(box->text()), text);
        QCOMPARE(box->icon(), icon);
        QTest::keyClick(box, Qt::Key_Return);
    });
    choose(window(), spectrum(), command);
}

QList<QVariantMap> tst_Workflow::entries() const
{
    QList<QVariantMap> all;
    for (const QUuid &id : spectra()->entryIds())
        all.append(spectra()->entry(id));
    return all;
}

void tst_Workflow::rowsAndAtomsAreSelectedTogether()
{
    TableItem *table = open(paracetamol);
    auto *molecule = qobject_cast<MoleculeItem *>(table->linkedItems().value(0));
    QVERIFY(molecule);
    const int row = 3;
    const auto click = [&](int number) {
        QTableView *view = table->view();
        const QPoint inView =
            view->viewport()->mapTo(view, view->visualRect(table->model()->index(number, 0)).center());
        const QPointF inScene = view->graphicsProxyWidget()->mapToScene(inView);
        window().view()->centerOn(inScene);
        QTest::mouseClick(window().view()->viewport(), Qt::LeftButton, {}, window().view()->mapFromScene(inScene));
    };
    click(row);
    // One atom a row in this file, in the same order.
    QCOMPARE(molecule->selectedAtoms(), QSet<int>{row});

    molecule->sendMessage(QVariantMap{{u"type"_s, 22}, {u"data"_s, QVariantList{0, 5}}});
    QList<int> rows;
    for (const QModelIndex &index : table->view()->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    QCOMPARE(rows, (QList<int>{0, 5}));
}

void tst_Workflow::spectrumOfOneDimension()
{
    TableItem *table = open(paracetamol);
    m_dialogs->expect(parametersTitle, [](QDialog *dialog) {
        const Inputs offered{{"fCbDims", u"1D Spectrum"_s}, {"fSpSfrq", 600.0},     {"fCbNucF2", u"13C"_s},
                             {"fSpCSRefF2", 100.0},         {"fSpCSSlopeF2", -1.0}, {"fSpLwF2", 30.0},
                             {"fCbPtsF2", u"8192"_s}};
        QCOMPARE(shown(dialog, offered), offered);
        fill(dialog, {{"fSpCSRefF2", 172.4}, {"fSpLwF2", 45.5}, {"fCbPtsF2", u"4096"_s}});
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    choose(window(), table, {createCommand});
    QVERIFY(spectrum());
    QCOMPARE(spectra()->entryIds().size(), 1);

    const QVariantHash parameters = stored();
    QCOMPARE(parameters.value(u"nucF2"_s), u"13C"_s);
    QCOMPARE(parameters.value(u"lw"_s).toMap().value(u"13C"_s), 45.5);
    QVERIFY(!parameters.contains(u"RangeF1"_s));
    QCOMPARE(documentData().ids(), QList<QUuid>{dataId()});
    QCOMPARE(spectra()->entry(spectra()->activeEntryId()).value(u"Length"_s).value<QList<int>>().first(), 4096);

    // One peak for each carbon row, reference minus shielding.
    QList<double> expected;
    for (int row = 0; row < table->model()->rowCount(); ++row)
        if (cell(table, row, u"Element"_s) == u"C")
            expected.prepend(172.4 - cell(table, row, u"Iso, ppm"_s, Qt::EditRole).toDouble());
    std::sort(expected.begin(), expected.end(), std::greater<>());
    QCOMPARE(expected.size(), 32);
    QVERIFY(largestDifference(positions(peaks(), 0), expected) < 1e-9);
}

void tst_Workflow::spectrumOfTwoDimensions()
{
    makeSpectrum(protonCarbonSpectrum);
    const QVariantHash parameters = stored();
    QCOMPARE(parameters.value(u"specType"_s), 1);
    QCOMPARE(parameters.value(u"nucF2"_s), u"1H"_s);
    QCOMPARE(parameters.value(u"nucF1"_s), u"13C"_s);
    QCOMPARE(storedReference(u"1H"_s), 30.5);
    QCOMPARE(storedReference(u"13C"_s), 172.5);
    QVERIFY(parameters.contains(u"RangeF1"_s));
    const QVariantMap entry = entries().first();
    QCOMPARE(entry.value(u"Length"_s).value<QList<int>>(), (QList<int>{512, 128, 1, 1, 1, 1, 1, 1}));
    QCOMPARE(entry.value(u"DataPoints"_s).value<QList<DoubleVector>>().first().size(), size_t(512 * 128));
    QCOMPARE(peaks().size(), 36); // the strongest coupling of each proton
}

void tst_Workflow::editingTwice()
{
    makeSpectrum(carbonSpectrum);
    const QUuid entry = spectra()->activeEntryId();
    const QList<double> before = positions(peaks(), 0);
    // The new spectrum comes while the user is shown that it takes time.
    Qt::CursorShape atChange = Qt::ArrowCursor;
    connect(spectra(), &NmrData::entryChanged, this, [&atChange] {
        atChange = QGuiApplication::overrideCursor() ? QGuiApplication::overrideCursor()->shape() : Qt::ArrowCursor;
    });
    const auto edit = [this](const Inputs &offered, const Inputs &change) {
        m_dialogs->expect(parametersTitle, [offered, change](QDialog *dialog) {
            QCOMPARE(shown(dialog, offered), offered);
            fill(dialog, change);
            press(dialog, QDialogButtonBox::Ok);
        });
        choose(window(), spectrum(), editCommand);
    };
    edit({{"fCbNucF2", u"13C"_s}, {"fSpCSRefF2", 172.4}}, {{"fSpCSRefF2", 170.4}, {"fSpLwF2", 50.0}});
    QCOMPARE(atChange, Qt::WaitCursor);
    QCOMPARE(storedReference(u"13C"_s), 170.4);
    QVERIFY(largestDifference(positions(peaks(), 0), shifted(before, -2.0)) < 1e-9);

    // A range that the user sets stays the user's.
    edit({{"fSpCSRefF2", 170.4}, {"fSpLwF2", 50.0}}, {{"fCbPtsF2", u"1024"_s}, {"fSpFromF2", 5.0}, {"fSpToF2", 185.0}});
    edit({{"fSpCSRefF2", 170.4}, {"fCbPtsF2", u"1024"_s}, {"fSpFromF2", 5.0}, {"fSpToF2", 185.0}}, {});
    QCOMPARE(storedReference(u"13C"_s), 170.4);
    QCOMPARE(stored().value(u"RangeF2"_s).value<DoubleVector>(), (DoubleVector{5.0, 185.0}));
    QCOMPARE(spectra()->entryIds(), QList<QUuid>{entry});

    // With nothing changed the same data come again.
    const auto data = [this] { return entries().first().value(u"DataPoints"_s).value<QList<DoubleVector>>(); };
    const QList<DoubleVector> once = data();
    QCOMPARE(once.first().size(), size_t(1024));
    edit({}, {});
    QVERIFY(once == data());
}

void tst_Workflow::cancelling_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("the button") << 0;
    QTest::newRow("Escape") << 1;
    QTest::newRow("closing the dialog") << 2;
}

void tst_Workflow::cancelling()
{
    QFETCH(int, way);
    const auto cancel = [this, way] {
        m_dialogs->expect(parametersTitle, [way](QDialog *dialog) {
            fill(dialog, {{"fSpCSRefF2", 1.5}, {"fCbPtsF2", u"128"_s}});
            if (way == 0)
                press(dialog, QDialogButtonBox::Cancel);
            else if (way == 1)
                QTest::keyClick(dialog, Qt::Key_Escape);
            else
                dialog->close();
        });
    };
    TableItem *table = open(paracetamol);
    cancel();
    m_dialogs->expectBox(QMessageBox::Critical, u"Interrupted"_s, generationFailure + u"Canceled"_s);
    choose(window(), table, {createCommand});
    QVERIFY(!spectrum());

    expectParameters(carbonSpectrum);
    choose(window(), table, {createCommand});
    const QList<QVariantMap> before = entries();
    cancel();
    m_dialogs->expectBox(QMessageBox::Critical, u"Interrupted"_s, updateFailure + u"Canceled"_s);
    choose(window(), spectrum(), editCommand);
    QCOMPARE(entries(), before);
}

namespace {

// The largest component of the EFG tensor is 1.2 atomic units at both sites of copper; the quadrupole moments are -22.0
// fm² (63Cu) and -20.4 fm² (65Cu), and an atomic unit times 1 fm² is taken as 2.3489 MHz.
const QString cqOf63Cu = u"-62.011"_s;
const QString cqOf65Cu = u"-57.501"_s;

const QByteArray copperOxide = "#$magres-abinitio-v1.0\n[atoms]\nunits lattice Angstrom\nunits atom Angstrom\n"
                               "lattice 8 0 0 0 8 0 0 0 8\natom Cu Cu 1 0 0 0\natom Cu Cu 2 4 4 4\natom O O 1 2 2 2\n"
                               "[/atoms]\n[magres]\nunits ms ppm\nunits efg au\n"
                               "ms Cu 1 500 0 0 0 500 0 0 0 530\nms Cu 2 520 0 0 0 520 0 0 0 550\n"
                               "ms O 1 200 0 0 0 200 0 0 0 230\nefg Cu 1 -0.4 0 0 0 -0.8 0 0 0 1.2\n"
                               "efg Cu 2 -0.5 0 0 0 -0.7 0 0 0 1.2\nefg O 1 -0.1 0 0 0 -0.2 0 0 0 0.3\n[/magres]\n";

} // namespace

void tst_Workflow::isotope()
{
    TableItem *table = openText(copperOxide);
    const auto couplings = [&](int role) {
        return QStringList{cell(table, 0, u"Cq, MHz"_s, role), cell(table, 1, u"Cq, MHz"_s, role)};
    };
    QCOMPARE(couplings(Qt::DisplayRole), (QStringList{cqOf63Cu, cqOf63Cu}));
    QCOMPARE(couplings(Qt::ToolTipRole), (QStringList{u"Isotope: 63Cu"_s, u"Isotope: 63Cu"_s}));
    const QString oxygen = cell(table, 2, u"Cq, MHz"_s);

    const auto setIsotope = [&](const QString &offered, const QString &chosen,
                                QDialogButtonBox::StandardButton button) {
        m_dialogs->expect(isotopeTitle, [=](QDialog *dialog) {
            fill(dialog, {{"fCbEl", u"Cu"_s}});
            const Inputs isotope{{"fCbIso", offered}};
            QCOMPARE(shown(dialog, isotope), isotope);
            fill(dialog, {{"fCbIso", chosen}});
            press(dialog, button);
        });
        choose(window(), table, {isotopeCommand});
    };
    setIsotope(u"63Cu"_s, u"65Cu"_s, QDialogButtonBox::Cancel);
    QCOMPARE(couplings(Qt::DisplayRole), (QStringList{cqOf63Cu, cqOf63Cu}));

    setIsotope(u"63Cu"_s, u"65Cu"_s, QDialogButtonBox::Ok);
    QCOMPARE(couplings(Qt::DisplayRole), (QStringList{cqOf65Cu, cqOf65Cu}));
    QCOMPARE(couplings(Qt::ToolTipRole), (QStringList{u"Isotope: 65Cu"_s, u"Isotope: 65Cu"_s}));
    QCOMPARE(cell(table, 2, u"Cq, MHz"_s), oxygen);

    // The choice is kept, and the next structure starts with it.
    setIsotope(u"65Cu"_s, u"65Cu"_s, QDialogButtonBox::Cancel);
    QCOMPARE(cell(openText(copperOxide), 0, u"Cq, MHz"_s), cqOf65Cu);
}

void tst_Workflow::isotopeNotInItsList()
{
    QSettings().setValue(u"magresPlugin/QIso"_s, QVariantMap{{u"Cu"_s, u"12Xy"_s}});
    TableItem *table = openText(copperOxide);
    m_dialogs->expect(isotopeTitle, [](QDialog *dialog) {
        fill(dialog, {{"fCbEl", u"Cu"_s}});
        QCOMPARE(shown(dialog, {{"fCbIso", {}}}), (Inputs{{"fCbIso", u"63Cu"_s}}));
        press(dialog, QDialogButtonBox::Ok);
    });
    choose(window(), table, {isotopeCommand});
    QCOMPARE(cell(table, 0, u"Cq, MHz"_s), cqOf63Cu);
}

void tst_Workflow::autoReference_data()
{
    QTest::addColumn<Inputs>("inputs");
    QTest::addColumn<double>("offsetF2");
    QTest::addColumn<double>("offsetF1");
    QTest::addColumn<double>("scatter");
    QTest::addColumn<bool>("experimentFirst");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("report");
    QTest::addColumn<QString>("after");
    // √(1.5² + 0.25²) = 1.52069
    for (bool experimentFirst : {false, true})
        QTest::newRow(experimentFirst ? "1D, experiment first" : "1D")
            << carbonSpectrum << 1.5 << 0.0 << 0.25 << experimentFirst << u"RMSD: 1.52069 ppm"_s
            << u"Reference is changed from 172.4 ppm to 173.9 ppm\n\nOld RMSD: 1.52069 ppm\nNew RMSD: 0.25 ppm"_s
            << u"RMSD: 0.25 ppm"_s;
    QTest::newRow("two nuclei") << protonCarbonSpectrum << -0.75 << 2.5 << 0.0 << false
                                << u"RMSD (direct dimension): 0.75 ppm\nRMSD (indirect dimension): 2.5 ppm"_s
                                << u"Direct dimension reference is changed from 30.5 ppm to 29.75 ppm\n"
                                   "Indirect dimension reference is changed from 172.5 ppm to 175 ppm\n\n"
                                   "Old RMSD. Direct dimension: 0.75 ppm, indirect dimension: 2.5ppm\n"
                                   "New RMSD: Direct dimension: 0 ppm, indirect dimension: 0 ppm"_s
                                << u"RMSD (direct dimension): 0 ppm\nRMSD (indirect dimension): 0 ppm"_s;
    // One reference, which F2 decides; F1 moves along, from 0.875 off to 0.375.
    QTest::newRow("one nucleus")
        << protonProtonSpectrum << 0.5 << 0.875 << 0.0 << false
        << u"RMSD (direct dimension): 0.5 ppm\nRMSD (indirect dimension): 0.875 ppm"_s
        << u"Reference is changed from 30.5 ppm to 31 ppm\n\nOld RMSD: 0.5 ppm\nNew RMSD: 0 ppm"_s
        << u"RMSD (direct dimension): 0 ppm\nRMSD (indirect dimension): 0.375 ppm"_s;
}

void tst_Workflow::autoReference()
{
    QFETCH(Inputs, inputs);
    QFETCH(double, offsetF2);
    QFETCH(double, offsetF1);
    QFETCH(double, scatter);
    QFETCH(bool, experimentFirst);
    QFETCH(QString, before);
    QFETCH(QString, report);
    QFETCH(QString, after);
    makeSpectrum(inputs);
    spectra()->addEntry(experimentFor(peaks(), offsetF2, offsetF1, scatter), u"Measured"_s);
    if (experimentFirst) {
        NmrStack stack = spectra()->stack();
        stack.entries.swapItemsAt(0, 1);
        spectra()->setStack(stack);
    }
    const QVariantList peaksBefore = peaks();
    const QVariantHash parametersBefore = stored();
    const bool twoReferences = stored().value(u"nucF1"_s) != stored().value(u"nucF2"_s) && peaks().size() == 36;

    chooseAndRead(rmsdCommand, QMessageBox::Information, u"RMSD"_s, before);
    QCOMPARE(stored(), parametersBefore);
    chooseAndRead(referenceCommand, QMessageBox::Information, u"New reference"_s, report);
    // The fitted reference is this spectrum's alone.
    QCOMPARE(QSettings().value(u"magresPlugin/ref"_s), parametersBefore.value(u"ref"_s));

    // Everything is as it was but for the references and what follows from them.
    QVariantHash parameters = stored();
    QVariantMap references = parametersBefore.value(u"ref"_s).toMap();
    const auto moved = [&](const QString &nucleus, double offset) {
        QVERIFY(std::abs(storedReference(nucleus) - references.value(nucleus).toDouble() - offset) < 1e-9);
        references.insert(nucleus, storedReference(nucleus));
    };
    moved(parameters.value(u"nucF2"_s).toString(), offsetF2);
    if (twoReferences)
        moved(parameters.value(u"nucF1"_s).toString(), offsetF1);
    QCOMPARE(parameters.value(u"ref"_s).toMap(), references);
    parameters.insert(u"ref"_s, parametersBefore.value(u"ref"_s));
    QCOMPARE(parameters, parametersBefore);
    QVERIFY(largestDifference(positions(peaks(), 0), shifted(positions(peaksBefore, 0), offsetF2)) < 1e-9);
    if (parameters.value(u"specType"_s).toInt() == 1)
        QVERIFY(largestDifference(positions(peaks(), 1),
                                  shifted(positions(peaksBefore, 1), twoReferences ? offsetF1 : offsetF2))
                < 1e-9);

    chooseAndRead(rmsdCommand, QMessageBox::Information, u"RMSD"_s, after);
    // Editing starts from the fitted reference.
    const QString nucleus = parameters.value(u"nucF2"_s).toString();
    const double fitted = storedReference(nucleus);
    expectParameters({{"fSpLwF2", 77.0}});
    choose(window(), spectrum(), editCommand);
    QCOMPARE(storedReference(nucleus), fitted);
}

void tst_Workflow::stackValidation_data()
{
    QTest::addColumn<QByteArray>("stack"); // S simulated; E experiment, e the same with one peak less
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const char *stack, const QString &message) {
        QTest::newRow(name) << QByteArray(stack) << message;
    };
    row("none", "", u"There are 0 spectra in this plot. Two is expected"_s);
    row("one", "S", u"There is 1 spectrum in this plot. Two is expected"_s);
    row("three", "SEE", u"There are 3 spectra in this plot. Two is expected"_s);
    row("two experiments", "EE", u"Neither of the spectra is generated from MAGRES"_s);
    row("two unequal experiments", "Ee", u"Neither of the spectra is generated from MAGRES"_s);
    row("two simulations", "SS", u"Both spectra are generated from MAGRES. One should be experimental"_s);
    row("unequal", "Se", u"The MAGRES spectrum has 32 compound peaks and the experimental spectrum has 31"_s);
    row("unequal, experiment first", "eS",
        u"The MAGRES spectrum has 32 compound peaks and the experimental spectrum has 31"_s);
}

void tst_Workflow::stackValidation()
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

void tst_Workflow::unusualPeaks_data()
{
    QTest::addColumn<QVariantMap>("simulatedPeak"); // replaces entries of every simulated peak
    QTest::addColumn<QVariantMap>("measuredPeak");
    QTest::addColumn<bool>("anyPeaks");
    QTest::addColumn<QString>("rmsd");
    QTest::addColumn<QString>("report");
    const QString noNumber =
        u"Reference is changed from 172.4 ppm to nan ppm\n\nOld RMSD: nan ppm\nNew RMSD: nan ppm"_s;
    QTest::newRow("one position value")
        << QVariantMap{{u"Pos"_s, QVariant::fromValue(DoubleVector{20.0})}}
        << QVariantMap{{u"Pos"_s, QVariant::fromValue(DoubleVector{22.0})}} << true << u"RMSD: 2 ppm"_s
        << u"Reference is changed from 172.4 ppm to 174.4 ppm\n\nOld RMSD: 2 ppm\nNew RMSD: 0 ppm"_s;
    QTest::newRow("positions as a list")
        << QVariantMap{{u"Pos"_s, QVariantList{20.0}}} << QVariantMap{{u"Pos"_s, QVariantList{19.5, 3.0}}} << true
        << u"RMSD: 0.5 ppm"_s
        << u"Reference is changed from 172.4 ppm to 171.9 ppm\n\nOld RMSD: 0.5 ppm\nNew RMSD: 0 ppm"_s;
    QTest::newRow("no position") << QVariantMap{{u"Pos"_s, {}}} << QVariantMap{{u"Pos"_s, u"x"_s}} << true
                                 << u"RMSD: 0 ppm"_s
                                 << u"Reference is changed from 172.4 ppm to 172.4 ppm\n\nOld RMSD: 0 ppm\n"
                                    "New RMSD: 0 ppm"_s;
    QTest::newRow("measured heights do not count")
        << QVariantMap{{u"Pos"_s, QVariantList{20.0, 0.0}}, {u"Height"_s, -2.0}}
        << QVariantMap{{u"Pos"_s, QVariantList{22.0, 0.0}}, {u"Height"_s, 0.0}} << true << u"RMSD: 2 ppm"_s
        << u"Reference is changed from 172.4 ppm to 174.4 ppm\n\nOld RMSD: 2 ppm\nNew RMSD: 0 ppm"_s;
    QTest::newRow("zero heights") << QVariantMap{{u"Height"_s, 0.0}} << QVariantMap() << true << u"RMSD: nan ppm"_s
                                  << noNumber;
    QTest::newRow("no peaks") << QVariantMap() << QVariantMap() << false << u"RMSD: nan ppm"_s << noNumber;
}

void tst_Workflow::unusualPeaks()
{
    QFETCH(QVariantMap, simulatedPeak);
    QFETCH(QVariantMap, measuredPeak);
    QFETCH(bool, anyPeaks);
    QFETCH(QString, rmsd);
    QFETCH(QString, report);
    makeSpectrum(carbonSpectrum);
    const QUuid entry = spectra()->activeEntryId();
    QVariantList simulated;
    QVariantList measured;
    for (const QVariant &peak : anyPeaks ? peaks() : QVariantList()) {
        QVariantMap map = peak.toMap();
        map.insert(simulatedPeak);
        simulated.append(map);
        map.insert(measuredPeak);
        measured.append(map);
    }
    QVariantMap data = spectra()->entry(entry);
    data.insert(u"Peaks"_s, QVariantMap{{u"PeakList"_s, simulated}, {u"ID"_s, QUuid::createUuid()}});
    spectra()->insertSpectrum(entry, data);
    spectra()->addEntry({{u"Peaks"_s, QVariantMap{{u"PeakList"_s, measured}}}}, u"Measured"_s);
    window().grab(); // such peaks are drawn, too

    chooseAndRead(rmsdCommand, QMessageBox::Information, u"RMSD"_s, rmsd);
    QCOMPARE(spectra()->entry(entry), data);
    chooseAndRead(referenceCommand, QMessageBox::Information, u"New reference"_s, report);
    window().grab();
    // Whatever came out, the user can go on from there.
    expectParameters({{"fSpCSRefF2", 171.0}});
    choose(window(), spectrum(), editCommand);
    QCOMPARE(storedReference(u"13C"_s), 171.0);
    QCOMPARE(peaks().size(), 32);
}

void tst_Workflow::spectraThatCannotBeMade_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("message");
    QTest::newRow("experiment") << u"experiment"_s << u"The active NMR spectrum is not a MAGRES spectrum"_s;
    QTest::newRow("no data") << u"no data"_s << u"The document has no MAGRES data"_s;
    QTest::newRow("no frequency") << u"no frequency"_s << u"The spectrometer frequency must be above 0 MHz"_s;
}

void tst_Workflow::spectraThatCannotBeMade()
{
    QFETCH(QString, what);
    QFETCH(QString, message);
    const Inputs noFrequency{{"fSpSfrq", 0.0}};
    TableItem *table = open(paracetamol);
    expectParameters(carbonSpectrum);
    choose(window(), table, {createCommand});
    if (what == u"experiment")
        spectra()->setActiveEntryId(spectra()->addEntry(experimentFor(peaks(), 1.0), u"Measured"_s));
    else if (what == u"no data")
        documentData().remove(dataId());
    else
        expectParameters(noFrequency);
    const QList<QVariantMap> before = entries();
    m_dialogs->expectBox(QMessageBox::Critical, u"Interrupted"_s, updateFailure + message);
    choose(window(), spectrum(), editCommand);
    QCOMPARE(entries(), before);
    if (what == u"experiment")
        return;

    // The same from the table.
    const qsizetype items = scene().documentItems().size();
    if (what == u"no frequency")
        expectParameters(noFrequency);
    m_dialogs->expectBox(QMessageBox::Critical, u"Interrupted"_s, generationFailure + message);
    choose(window(), table, {createCommand});
    QCOMPARE(scene().documentItems().size(), items);
    if (what == u"no data") {
        // Only the fit has to make the spectrum anew.
        spectra()->addEntry(experimentFor(peaks(), 0.5), u"Measured"_s);
        chooseAndRead(referenceCommand, QMessageBox::Critical, u"Error"_s, stackFailure + message);
        chooseAndRead(rmsdCommand, QMessageBox::Information, u"RMSD"_s, u"RMSD: 0.5 ppm"_s);
        choose(window(), table, {isotopeCommand}); // shows nothing
    }
}

void tst_Workflow::parametersOfAnotherVersion_data()
{
    QTest::addColumn<QVariantHash>("parameters"); // besides the identity of the data
    QTest::addColumn<QString>("message"); // empty: the spectrum can be made
    QTest::newRow("missing keys") << QVariantHash() << QString();
    QTest::newRow("unknown keys") << QVariantHash{{u"nucF2"_s, u"13C"_s}, {u"newIn2030"_s, QVariantList{1, u"x"_s}}}
                                  << QString();
    QTest::newRow("other nuclei") << QVariantHash{{u"nucF2"_s, u"999Zz"_s}, {u"nucF1"_s, QString()}, {u"specType"_s, 1}}
                                  << QString();
    QVariantHash texts;
    QVariantHash maps;
    for (const char *key : {"corr", "qShift", "nucF1", "nucF2", "slope", "ref", "lw", "avIdx", "freq", "pts", "ptsF2",
                            "ptsF1", "specType", "RangeF2", "RangeF1", "RangeF2User", "RangeF1User"}) {
        texts.insert(QLatin1String(key), u"nonsense"_s);
        maps.insert(QLatin1String(key), QVariantMap{{u"13C"_s, QVariantList{1, 2}}});
    }
    QTest::newRow("texts") << texts << u"The spectrometer frequency must be above 0 MHz"_s;
    QTest::newRow("maps") << maps << u"The spectrometer frequency must be above 0 MHz"_s;
    QTest::newRow("large numbers") << QVariantHash{{u"pts"_s, 1 << 30},
                                                   {u"avIdx"_s, 1 << 30},
                                                   {u"corr"_s, -5},
                                                   {u"specType"_s, 77},
                                                   {u"qShift"_s, QVariant::fromValue(QList<int>(100, 1))}}
                                   << QString();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("not a number") << QVariantHash{{u"nucF2"_s, u"13C"_s},
                                                  {u"ref"_s, QVariantMap{{u"13C"_s, nan}}},
                                                  {u"freq"_s, nan},
                                                  {u"RangeF2"_s, QVariant::fromValue(DoubleVector{nan, nan})},
                                                  {u"RangeF2User"_s, true}}
                                  << QString();
}

void tst_Workflow::parametersOfAnotherVersion()
{
    QFETCH(QVariantHash, parameters);
    QFETCH(QString, message);
    makeSpectrum(carbonSpectrum);
    const QUuid entry = spectra()->activeEntryId();
    const QVariantList simulatedPeaks = peaks();
    parameters.insert(u"magresDataId"_s, dataId());
    spectra()->setEntryOrigParams(entry, u"magres"_s, parameters);
    const QVariantMap before = spectra()->entry(entry);

    expectParameters({});
    if (!message.isEmpty())
        m_dialogs->expectBox(QMessageBox::Critical, u"Interrupted"_s, updateFailure + message);
    choose(window(), spectrum(), editCommand);
    if (message.isEmpty()) {
        QVERIFY(!stored().value(u"nucF2"_s).toString().isEmpty());
        QVERIFY(!peaks().isEmpty());
    } else {
        QCOMPARE(spectra()->entry(entry), before);
        // With the frequency put right the user goes on.
        expectParameters({{"fSpSfrq", 500.0}});
        choose(window(), spectrum(), editCommand);
        QCOMPARE(stored().value(u"freq"_s), 500.0);
    }
    window().grab();
}

void tst_Workflow::nonsenseInTheSettings_data()
{
    QTest::addColumn<QVariant>("nonsense");
    QTest::addColumn<QString>("message"); // empty: the spectrum can be made
    const QString noFrequency = u"The spectrometer frequency must be above 0 MHz"_s;
    QTest::newRow("text") << QVariant(u"nonsense"_s) << noFrequency;
    QTest::newRow("nothing") << QVariant() << noFrequency;
    QTest::newRow("negative") << QVariant(-1) << noFrequency;
    QTest::newRow("large") << QVariant(1e300) << QString();
    QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN()) << QString();
    QTest::newRow("list") << QVariant(QStringList{u"13C"_s, u"1"_s}) << noFrequency;
    QTest::newRow("map of texts") << QVariant(QVariantMap{{u"13C"_s, u"x"_s}, {u"1H"_s, QVariantList()}})
                                  << noFrequency;
    QTest::newRow("bytes") << QVariant(QByteArray("\0\xff@Variant(", 11)) << noFrequency;
}

void tst_Workflow::nonsenseInTheSettings()
{
    QFETCH(QVariant, nonsense);
    QFETCH(QString, message);
    {
        QSettings settings;
        for (const char *key : {"nucF1", "nucF2", "slope", "ref", "lw", "freq", "pts", "ptsF1", "ptsF2", "avIdx",
                                "specType", "correlation", "QIso", "dialogPos"})
            settings.setValue("magresPlugin/"_L1 + QLatin1String(key), nonsense);
    }
    TableItem *table = open(paracetamol);
    m_dialogs->expect(isotopeTitle, [](QDialog *dialog) {
        fill(dialog, {{"fCbEl", u"N"_s}, {"fCbIso", u"14N"_s}});
        press(dialog, QDialogButtonBox::Ok);
    });
    choose(window(), table, {isotopeCommand});

    expectParameters({});
    if (!message.isEmpty()) {
        m_dialogs->expectBox(QMessageBox::Critical, u"Interrupted"_s, generationFailure + message);
        choose(window(), table, {createCommand});
        QVERIFY(!spectrum());
        expectParameters({{"fSpSfrq", 600.0}});
    }
    choose(window(), table, {createCommand});
    QVERIFY(spectrum());
    QVERIFY(!peaks().isEmpty());
    window().grab();
}

void tst_Workflow::positionOffAllScreens_data()
{
    QTest::addColumn<QVariant>("position");
    QTest::newRow("far left") << QVariant(QPoint(-30000, 50));
    QTest::newRow("far below") << QVariant(QPoint(50, 30000));
    QTest::newRow("no point") << QVariant(u"somewhere"_s);
}

void tst_Workflow::positionOffAllScreens()
{
    QFETCH(QVariant, position);
    QSettings().setValue(u"magresPlugin/dialogPos"_s, position);
    m_dialogs->expect(parametersTitle, [](QDialog *dialog) {
        const bool onScreen = QGuiApplication::screenAt(dialog->frameGeometry().center());
        press(dialog, QDialogButtonBox::Ok);
        QVERIFY(onScreen);
    });
    choose(window(), open(paracetamol), {createCommand});
    QVERIFY(spectrum());
    // The next dialog comes up where this one was.
    QVERIFY(QGuiApplication::screenAt(QSettings().value(u"magresPlugin/dialogPos"_s).toPoint()));
}

void tst_Workflow::documentChangesUnderTheDialog_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("deleted");
    QTest::addColumn<QString>("message"); // empty: the command does its work
    const QString create = u"createSpectrum"_s, edit = u"updateSpectrum"_s, isotope = u"setQuadIsotope"_s;
    const QString noData = u"The document has no MAGRES data"_s;
    QTest::newRow("create, data") << create << u"data"_s << generationFailure + noData;
    QTest::newRow("create, table") << create << u"table"_s << QString();
    QTest::newRow("edit, data") << edit << u"data"_s << updateFailure + noData;
    QTest::newRow("edit, table") << edit << u"table"_s << QString();
    QTest::newRow("edit, plot") << edit << u"plot"_s
                                << updateFailure + u"The active NMR spectrum is not a MAGRES spectrum"_s;
    QTest::newRow("isotope, data") << isotope << u"data"_s << QString();
    QTest::newRow("isotope, table") << isotope << u"table"_s << QString();
}

void tst_Workflow::documentChangesUnderTheDialog()
{
    QFETCH(QString, command);
    QFETCH(QString, deleted);
    QFETCH(QString, message);
    TableItem *table = openText(copperOxide);
    expectParameters({{"fCbNucF2", u"63Cu"_s}});
    choose(window(), table, {createCommand});
    QVERIFY(spectrum());
    const QUuid data = dataId();
    const qsizetype spectraBefore = spectra()->entryIds().size();
    const bool isIsotope = command == u"setQuadIsotope";

    m_dialogs->expect(isIsotope ? isotopeTitle : parametersTitle, [&](QDialog *dialog) {
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
        m_dialogs->expectBox(QMessageBox::Critical, u"Interrupted"_s, message);
    // By name, as hosts may call it: a menu would go together with its item.
    QObject *object = command == u"updateSpectrum" ? m_host->plugins().plugins().first().object.data() : table->table();
    QVERIFY(QMetaObject::invokeMethod(object, command.toLatin1().constData()));

    QCOMPARE(documentData().ids().isEmpty(), deleted == u"data");
    if (spectrum())
        QCOMPARE(spectra()->entryIds().size(), spectraBefore);
    if (isIsotope && deleted == u"table")
        QCOMPARE(documentData().getDataMap(data).value(u"QIso"_s).toMap().value(u"Cu"_s), u"65Cu"_s);
    window().grab();
}

QTEST_MAIN(tst_Workflow)
#include "tst_workflow.moc"
