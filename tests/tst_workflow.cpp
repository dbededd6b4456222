// SPDX-License-Identifier: BSD-3-Clause
#include "WindowTest.h"

#include "formats/PeakListFile.h"
#include "host/DataEngine.h"
#include "support/MetaTypes.h"

namespace {

const QString parametersTitle = u"MAGRES parameters"_s;
const QString isotopeTitle = u"Select quadrupolar isotope"_s;

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

/// An experiment whose sorted positions lie at these offsets from those of the peaks.
QVariantMap experimentFor(const QVariantList &peaks, double offsetF2, double offsetF1 = 0)
{
    const QList<double> f2 = positions(peaks, 0, offsetF2);
    const QList<double> f1 = positions(peaks, 1, offsetF1);
    std::vector<PeakListFile::Peak> measured;
    for (qsizetype i = 0; i < f2.size(); ++i)
        measured.push_back({f2[i], f1[i], 1.0});
    return {{u"Peaks"_s, PeakListFile::toPeakMap(measured)}};
}

/// What is left of a difference that ought to vanish, shown as 0.
QString withoutResidues(QString report)
{
    return report.replace(QRegularExpression(u"-?[0-9.]+e-(09|[1-9][0-9])"_s), u"0"_s);
}

} // namespace

/// A user's way from a file to a referenced spectrum, in the workbench's window with the built plug-in in it: by mouse
/// and keyboard, every dialog answered and every message read.
class tst_Workflow : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        clear();
        for (const QUuid &id : documentData().ids())
            documentData().remove(id);
    }

    void spectrumOfOneDimension()
    {
        TableItem *table = paracetamol();
        m_dialogs.expect(parametersTitle, [](QDialog *dialog) {
            const Inputs offered{{"fCbDims", u"1D Spectrum"_s}, {"fSpSfrq", 600.0},     {"fCbNucF2", u"13C"_s},
                                 {"fSpCSRefF2", 100.0},         {"fSpCSSlopeF2", -1.0}, {"fSpLwF2", 30.0},
                                 {"fCbPtsF2", u"8192"_s}};
            QCOMPARE(shown(dialog, offered), offered);
            fill(dialog, {{"fSpCSRefF2", 172.4}, {"fSpLwF2", 45.5}, {"fCbPtsF2", u"4096"_s}});
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        choose(window(), table, {createCommand});
        QCOMPARE(data()->entryIds().size(), 1);
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
        const QUuid entry = data()->activeEntryId();
        const QList<double> expected = positions(peaks(), 0, -2.0);
        // The new spectrum comes while the user is shown that it takes time.
        bool waits = false;
        connect(data(), &NmrData::entryChanged, this, [&] {
            waits = QGuiApplication::overrideCursor() && QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
        });
        const auto edit = [this](const Inputs &offered, const Inputs &change) {
            m_dialogs.expect(parametersTitle, [offered, change](QDialog *dialog) {
                QCOMPARE(shown(dialog, offered), offered);
                fill(dialog, change);
                press(dialog, QDialogButtonBox::Ok);
            });
            choose(window(), plot(), editCommand);
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
        QCOMPARE(data()->entryIds(), QList<QUuid>{entry});
        QVERIFY(once == dataPoints());
    }

    void autoReference()
    {
        const auto row = [this](const Inputs &inputs, double offsetF2, double offsetF1, const QString &before,
                                const QString &report, const QString &after) {
            clear();
            makeSpectrum(inputs);
            data()->addEntry(experimentFor(peaks(), offsetF2, offsetF1), u"Measured"_s);
            QCOMPARE(entries().first().value(u"Length"_s).value<QList<int>>().first(2), (QList<int>{512, 128}));
            const QVariantHash parametersBefore = stored();
            const QList<double> expected = positions(peaks(), 0, offsetF2);

            chooseAndRead(rmsdCommand, QMessageBox::Information, u"RMSD"_s, before);
            QCOMPARE(stored(), parametersBefore);
            chooseAndRead(referenceCommand, QMessageBox::Information, u"New reference"_s, report);
            chooseAndRead(rmsdCommand, QMessageBox::Information, u"RMSD"_s, after);
            QVERIFY(agree(positions(peaks(), 0), expected));
            // All parameters but the references are as they were.
            QVariantHash parameters = stored();
            parameters.insert(u"ref"_s, parametersBefore.value(u"ref"_s));
            QCOMPARE(parameters, parametersBefore);
        };
        row(protonCarbonSpectrum, -0.75, 2.5,
            u"RMSD (direct dimension): 0.75 ppm\nRMSD (indirect dimension): 2.5 ppm"_s,
            u"Direct dimension reference is changed from 30.5 ppm to 29.75 ppm\n"
            "Indirect dimension reference is changed from 172.5 ppm to 175 ppm\n\n"
            "Old RMSD. Direct dimension: 0.75 ppm, indirect dimension: 2.5ppm\n"
            "New RMSD: Direct dimension: 0 ppm, indirect dimension: 0 ppm"_s,
            u"RMSD (direct dimension): 0 ppm\nRMSD (indirect dimension): 0 ppm"_s);
        // One reference, which F2 decides; F1 moves along, from 0.875 off to 0.375.
        row(protonProtonSpectrum, 0.5, 0.875,
            u"RMSD (direct dimension): 0.5 ppm\nRMSD (indirect dimension): 0.875 ppm"_s,
            u"Reference is changed from 30.5 ppm to 31 ppm\n\nOld RMSD: 0.5 ppm\nNew RMSD: 0 ppm"_s,
            u"RMSD (direct dimension): 0 ppm\nRMSD (indirect dimension): 0.375 ppm"_s);
    }

    void spectraThatCannotBeMade()
    {
        TableItem *table = paracetamol();
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
        fails(plot(), editCommand, updateFailure + noFrequency);
        fails(table, {createCommand}, generationFailure + noFrequency);

        const QUuid simulated = data()->activeEntryId();
        data()->setActiveEntryId(data()->addEntry(experimentFor(peaks(), 0.5), u"Measured"_s));
        fails(plot(), editCommand, updateFailure + noMagresSpectrum);

        data()->setActiveEntryId(simulated);
        documentData().remove(dataId());
        fails(plot(), editCommand, updateFailure + noData);
        fails(table, {createCommand}, generationFailure + noData);
        // Only the fit has to make the spectrum anew.
        chooseAndRead(referenceCommand, QMessageBox::Critical, u"Error"_s, stackFailure + noData);
        chooseAndRead(rmsdCommand, QMessageBox::Information, u"RMSD"_s, u"RMSD: 0.5 ppm"_s);
        choose(window(), table, {isotopeCommand}); // shows nothing
    }

    void plotGoesUnderItsDialog()
    {
        makeSpectrum(carbonSpectrum);
        m_dialogs.expect(parametersTitle, [this](QDialog *dialog) {
            delete plot();
            press(dialog, QDialogButtonBox::Ok);
        });
        m_dialogs.expectBox(QMessageBox::Critical, u"Interrupted"_s, updateFailure + noMagresSpectrum);
        // By name, as hosts may call it: the menu would go together with its item.
        QVERIFY(QMetaObject::invokeMethod(m_host->plugins().plugins().first().object, "updateSpectrum"));
    }

    /// Whatever another version has left behind, the user can go on from there.
    void nonsenseInParametersAndSettings()
    {
        goOnFrom(u"nonsense"_s, false);
        goOnFrom(std::numeric_limits<double>::quiet_NaN(), true);
        goOnFrom(QVariantMap{{u"13C"_s, u"x"_s}, {u"1H"_s, QVariantList()}}, false);
    }

private:
    void goOnFrom(const QVariant &nonsense, bool hasFrequency)
    {
        clear();
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
            QVERIFY(plot());
            QVERIFY(!peaks().isEmpty());
            window().grab();
        };
        TableItem *table = paracetamol();
        m_dialogs.expect(isotopeTitle, [](QDialog *dialog) {
            fill(dialog, {{"fCbEl", u"N"_s}, {"fCbIso", u"14N"_s}});
            press(dialog, QDialogButtonBox::Ok);
        });
        choose(window(), table, {isotopeCommand});
        choosing(table, {createCommand}, generationFailure);
        parameters.insert(u"magresDataId"_s, dataId());
        data()->setEntryOrigParams(data()->activeEntryId(), u"magres"_s, parameters);
        choosing(plot(), editCommand, updateFailure);
    }

    QVariantHash stored() const { return data()->entryOrigParams(data()->activeEntryId(), u"magres"_s); }
    QVariantList peaks() const { return data()->entryPeakList(data()->activeEntryId()).value(u"PeakList"_s).toList(); }
    DoubleVector dataPoints() const
    {
        return entries().first().value(u"DataPoints"_s).value<QList<DoubleVector>>().first();
    }
    QUuid dataId() const { return stored().value(u"magresDataId"_s).toUuid(); }
    DataEngine &documentData() const { return *window().documentData(); }
    QList<QVariantMap> entries() const
    {
        QList<QVariantMap> all;
        for (const QUuid &id : data()->entryIds())
            all.append(data()->entry(id));
        return all;
    }

    TableItem *paracetamol() const
    {
        open(u"paracetamol.magres"_s);
        return table();
    }

    QString cell(TableItem *table, int row, const QString &header, int role = Qt::DisplayRole) const
    {
        const TableModel *model = table->model();
        for (int column = 0; column < model->columnCount(); ++column)
            if (model->headerData(column, Qt::Horizontal).toString() == header)
                return model->index(row, column).data(role).toString();
        return u"no such column"_s;
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
        choose(window(), paracetamol(), {createCommand});
        QVERIFY(plot());
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
        choose(window(), plot(), command);
    }
};

QTEST_MAIN(tst_Workflow)
#include "tst_workflow.moc"
