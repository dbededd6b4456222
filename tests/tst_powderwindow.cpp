// SPDX-License-Identifier: BSD-3-Clause
#include "WindowTest.h"

#include "analysis/PowderEntry.h"
#include "host/DataEngine.h"
#include "host/TableSites.h"
#include "formats/SpectrumExport.h"
#include "window/ExportMenu.h"
#include "window/ContentsDock.h"
#include "window/PowderCommands.h"
#include "window/compare/DocumentChoices.h"

/// Powder spectra in the window, from the table to the saved document.
class TestPowderWindow : public WindowTest {
    Q_OBJECT

    PowderSettings settings(const QUuid &entry) { return PowderOrigin::of(data()->stackEntry(entry))->settings; }

    /// Centre of gravity, ppm, and area, ppm.
    static std::pair<double, double> moments(const Spectrum &spectrum)
    {
        double sum = 0, first = 0;
        const auto points = spectrum.real();
        for (size_t i = 0; i < points.size(); ++i) {
            sum += points[i];
            first += points[i] * spectrum.axes[0].ppm(double(i));
        }
        return {first / sum, sum * std::abs(spectrum.axes[0].step)};
    }

    /// Of the dialog's preview, with their colours.
    static QString curves(const QWidget *dialog)
    {
        NmrPlot &preview = *dialog->findChild<NmrPlot *>();
        QStringList names;
        for (int i = 0; preview.content() && i < preview.plottableCount(); ++i)
            names.append(preview.plottable(i)->name() + u' ' + preview.plottable(i)->pen().color().name());
        return names.join(u"; "_s);
    }

private Q_SLOTS:
    void init()
    {
        start();
        open(u"berlinite.magres"_s);
    }

    void createsEditsAndKeeps()
    {
        const int steps = history().count();
        m_dialogs.expect(u"Powder Spectrum"_s, [](QDialog *dialog) {
            fill(dialog, {{"nucleus", u"27Al"_s}, {"frequency", 400.0}, {"gaussian", 50.0}, {"reference", 560.123}});
            QCOMPARE(part<QListWidget>(dialog, "sites")->count(), 1);
            QVERIFY(
                part<QListWidget>(dialog, "sites")->item(0)->text().contains(u": 47.7 ppm, Cq 3.997")); // 560.1 - 512.4
            // Nothing measured, nothing to fit to.
            QVERIFY(!part<QPushButton>(dialog, "fit")->isVisible());
            dialog->accept();
        });
        choose(window(), scene().currentTableItem(), {u"Create Powder Spectrum..."_s});
        QVERIFY(plot());
        const QUuid entry = data()->entryIds().constFirst();
        QCOMPARE(history().count(), steps + 1);
        QCOMPARE(data()->entryName(entry), u"berlinite, 27Al powder"_s);
        QCOMPARE(settings(entry).reference, 560.123); // what the box shows
        QVERIFY(data()->isSimulated(entry));
        const auto [centre, area] = moments(data()->spectrum(entry));
        QVERIFY2(centre < 50 && centre > -50, qPrintable(QString::number(centre)));
        QVERIFY2(std::abs(area - 3) < 0.1, qPrintable(QString::number(area)));

        // It is the scale of exported shifts, before others of its plot, and leads to its structure.
        SpectrumEntry other = data()->stackEntry(entry);
        QVariantHash parameters = other.parameters(u"powder"_s);
        parameters[u"ref"_s] = 500.0;
        other.setParameters(u"powder"_s, parameters);
        data()->addEntry(other.data, u"other"_s);
        table()->view()->clearSelection();
        QCOMPARE(
            ExportMenu(&scene(), &m_host->documentData(), nullptr).writeSpinSystem(m_files.path("al.in"), {u"27Al"_s}),
            u"3 site(s): 3 of 27Al; 27Al: Reference 560.12 ppm, slope -1: of berlinite, 27Al powder"_s);
        QVERIFY(m_files.read("al.in").contains("  shift 1 47.722967p")); // 560.123 - 512.400033
        QCOMPARE(structureOf(scene(), *plot()), table()->id());
        history().undo();

        QBuffer json;
        json.open(QIODevice::WriteOnly);
        SpectrumExport::writeJson(data()->stackEntry(entry), json);
        const QJsonObject asked = QJsonDocument::fromJson(json.data())[u"parameters"].toObject();
        QCOMPARE(asked[u"reference_ppm"], QJsonValue(560.123));
        QCOMPARE(asked[u"spinning_Hz"], QJsonValue(u"infinite"_s));

        // A value that nobody touched keeps its digits; the change is one step.
        accept(u"Edit Powder Spectrum"_s, {{"rotation", u"Static"_s}});
        window().powderCommands()->edit();
        QCOMPARE(history().count(), steps + 2);
        QCOMPARE(settings(entry).rotation, Powder::Rotation::Static);
        QVERIFY(data()->spectrum(entry).real().size() > 1000);
        const QByteArray edited = state();
        history().undo();
        QCOMPARE(settings(entry).rotation, Powder::Rotation::InfiniteRate);
        history().redo();
        QCOMPARE(state(), edited);
        history().undo();
        history().undo();
        QVERIFY(!plot());
        history().redo();
        QCOMPARE(plot()->nmrData()->entryName(entry), u"berlinite, 27Al powder"_s);

        // Cancelled: nothing has happened.
        const QByteArray before = state();
        m_dialogs.expect(u"Edit Powder Spectrum"_s, [](QDialog *dialog) {
            fill(dialog, {{"reference", 500.0}});
            dialog->reject();
        });
        window().powderCommands()->edit();
        QCOMPARE(state(), before);

        // The name follows the nucleus unless the user has given one.
        for (const auto &[nucleus, name] :
             {std::pair(u"17O"_s, u"berlinite, 17O powder"_s), std::pair(u"27Al"_s, u"mine"_s)}) {
            if (name == u"mine")
                data()->setEntryName(entry, name);
            accept(u"Edit Powder Spectrum"_s, {{"nucleus", nucleus}});
            window().powderCommands()->edit();
            QCOMPARE(data()->entryName(entry), name);
        }
        m_host->documentData().remove(PowderOrigin::of(data()->stackEntry(entry))->dataId);
        m_dialogs.expectBox(QMessageBox::Critical, u"Powder Spectrum"_s,
                            u"The calculation that this spectrum is made from is no longer in the document."_s);
        window().powderCommands()->edit();

        // In a saved document it can be edited again.
        start();
        window().openFiles({m_files.write("powder.magresdoc", before)});
        QCOMPARE(settings(entry).protonFrequency, 400.0);
        QCOMPARE(window().powderCommands()->whyNoEdit(), QString());
    }

    void showsSitesPointsAndRange()
    {
        start();
        open(u"paracetamol.magres"_s);
        const int steps = history().count();
        m_dialogs.expect(u"Powder Spectrum"_s, [](QDialog *dialog) {
            fill(dialog, {{"nucleus", u"17O"_s}, {"frequency", 800.0}, {"reference", 287.0}});
            auto *from = part<QDoubleSpinBox>(dialog, "rangeFrom"), *to = part<QDoubleSpinBox>(dialog, "rangeTo");
            QVERIFY(part<QCheckBox>(dialog, "siteCurves")->isChecked() && !from->isEnabled());
            QTRY_VERIFY(from->value() > 100); // that of the preview
            const double high = from->value();
            part<QCheckBox>(dialog, "automaticRange")->setChecked(false);
            QCOMPARE(from->value(), high);
            part<QSpinBox>(dialog, "points")->setValue(4096);
            from->setValue(to->value());
            auto *ok = part<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok);
            QTRY_VERIFY(!ok->isEnabled());
            QCOMPARE(part<QLabel>(dialog, "notes")->text(), u"<b>The range is empty</b>"_s);
            from->setValue(400);
            to->setValue(-100);
            QTRY_VERIFY(ok->isEnabled());
            dialog->accept();
        });
        window().powderCommands()->create();
        QCOMPARE(history().count(), steps + 1);
        const QList<QUuid> ids = data()->entryIds();
        QCOMPARE(ids.size(), 3);
        const SpectrumAxis axis = data()->spectrum(ids[0]).axes[0];
        QCOMPARE(axis.size, 4096);
        QVERIFY(std::abs(axis.ppm(0) - 400) < 1e-6 && std::abs(axis.ppm(4095) + 100) < 1e-6);
        QVERIFY(data()->entryName(ids[1]).startsWith(u"O"));
        QCoreApplication::processEvents();
        const QList<QTreeWidgetItem *> sums =
            window().contents()->tree()->findItems(u"17O powder"_s, Qt::MatchExactly | Qt::MatchRecursive);
        QCOMPARE(sums.size(), 1);
        QCOMPARE(sums[0]->childCount(), 2);
        QCOMPARE(sums[0]->child(1)->text(0), data()->entryName(ids[2]));
        const auto sum = data()->spectrum(ids[0]).real(), one = data()->spectrum(ids[1]).real(),
                   other = data()->spectrum(ids[2]).real();
        const double highest = *std::max_element(sum.begin(), sum.end());
        for (size_t i = 0; i < sum.size(); ++i)
            QVERIFY(std::abs(sum[i] - one[i] - other[i]) < 1e-9 * highest);

        // A site's curve leads to the sum; the curves follow it, in one step.
        data()->setActiveEntryId(ids[1]);
        QCOMPARE(scene().tableSites()->optionsOf(*table()).scaleOf(u"17O"_s).source,
                 u"of "_s + data()->entryName(ids[0]));
        const QByteArray before = state();
        m_dialogs.expect(u"Edit Powder Spectrum"_s, [](QDialog *dialog) {
            QCOMPARE(part<QSpinBox>(dialog, "points")->value(), 4096);
            QCOMPARE(part<QDoubleSpinBox>(dialog, "rangeFrom")->value(), 400.0);
            part<QCheckBox>(dialog, "siteCurves")->setChecked(false);
            dialog->accept();
        });
        window().powderCommands()->edit();
        QCOMPARE(data()->entryIds(), QList<QUuid>{ids[0]});
        QCOMPARE(history().count(), steps + 2);
        history().undo();
        QCOMPARE(state(), before);
    }

    void dialogShowsWhatItIsAbout()
    {
        start();
        open(u"paracetamol.magres"_s);
        m_dialogs.expect(u"Powder Spectrum"_s, [](QDialog *dialog) {
            fill(dialog, {{"nucleus", u"17O"_s}, {"reference", 287.125}, {"lorentzian", 20.0}});
            QTRY_VERIFY(part<QDoubleSpinBox>(dialog, "rangeFrom")->value() > 100);
            QTRY_COMPARE(curves(dialog), u"Powder #0072b2; O1 ×4 #d55e00; O5 ×4 #009e73"_s);
            fill(dialog, {{"siteCurves", false}});
            QTRY_COMPARE(curves(dialog), u"Powder #0072b2"_s);
            fill(dialog, {{"siteCurves", true}});
            const auto lines = [=] {
                // What the preview finds out is checked beside it.
                const auto *from = part<QDoubleSpinBox>(dialog, "rangeFrom"),
                           *to = part<QDoubleSpinBox>(dialog, "rangeTo");
                return linesOf(dialog).replaceInStrings(from->text(), u"from"_s).replaceInStrings(to->text(), u"to"_s);
            };
            QCOMPARE(
                lines().join(u"; "_s),
                u"&Nucleus: [17O: 13C, 1H, 2H, 3H, 14N, 15N, 17O]; 1&H frequency: [600.00 MHz: 1.00 to "
                "10000.00]; S&pinning: [Magic angle, infinitely fast: Static, Magic angle, at a rate, Magic "
                "angle, infinitely fast]; R&ate: ([20000 Hz: 100 to 1000000]); &Reference: [287.125 ppm: "
                "-100000.000 to 100000.000]; S&lope: [-1.0000: -100.0000 to 100.0000]; Fa&ctor on Cq: "
                "[1.0000: 0.0100 to 100.0000]; Loren&tzian: [20.0 Hz: 0.0 to 1000000.0]; &Gaussian: [0.0 Hz: "
                "0.0 to 1000000.0]; Po&ints: [8192: 2 to 4194304]; Rang&e: ([from: -999999.000 to "
                "999999.000]) to ([to: -999999.000 to 999999.000]); [x] All a&bove 0.1 % of the highest "
                "point; &Sites: [x] O1 ×4: 92.1 ppm, Cq 7.991 MHz, η 0.41/[x] O5 ×4: 317.5 ppm, Cq 8.400 MHz, "
                "η 0.27; Central transition only, to second order, with shift anisotropy: no satellites, no dipolar "
                "couplings or cross terms with them; ideal excitation.; [x] C&urves of the sites beside their sum; "
                "<OK> <Cancel>"_s);
            fill(dialog, {{"rotation", u"Magic angle, at a rate"_s}, {"rate", 12500.0}});
            fill(dialog, {{"scale", 0.5}, {"reference", 280.0}, {"slope", -0.9}});
            QCOMPARE(
                lines()[12],
                u"&Sites: [x] O1 ×4: 104.5 ppm, Cq 3.996 MHz, η 0.41/[x] O5 ×4: 307.3 ppm, Cq 4.200 MHz, η 0.27"_s);
            // A range of one's own goes with the nucleus that it was for; so do its scales, which come back with it.
            part<QCheckBox>(dialog, "automaticRange")->setChecked(false);
            part<QDoubleSpinBox>(dialog, "rangeFrom")->setValue(500.125);
            fill(dialog, {{"nucleus", u"13C"_s}});
            QVERIFY(part<QCheckBox>(dialog, "automaticRange")->isChecked());
            QVERIFY(!part<QDoubleSpinBox>(dialog, "rangeTo")->isEnabled());
            const auto scale = [=] {
                const auto number = [=](const char *name) { return part<QDoubleSpinBox>(dialog, name)->value(); };
                return QList{number("reference"), number("slope"), number("scale")};
            };
            QCOMPARE(scale(), (QList{100.0, -1.0, 1.0}));
            fill(dialog, {{"nucleus", u"17O"_s}});
            QCOMPARE(scale(), (QList{280.0, -0.9, 0.5}));
            fill(dialog, {{"nucleus", u"13C"_s}});
            QCOMPARE(part<QListWidget>(dialog, "sites")->count(), 8);
            QTRY_VERIFY(part<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok)->isEnabled());
            for (int i = 1; i < 8; ++i)
                part<QListWidget>(dialog, "sites")->item(i)->setCheckState(i == 3 ? Qt::Checked : Qt::Unchecked);
            dialog->accept();
        });
        window().powderCommands()->create();
        const PowderSettings kept = settings(data()->entryIds().constFirst());
        QVERIFY(kept.rotation == Powder::Rotation::MagicAngle && kept.rate == 12500 && kept.couplingScale == 1);
        QVERIFY(kept.slope == -1 && kept.reference == 100 && kept.shape.lorentzian == 20 && !kept.range);
        QStringList names{kept.nucleus + u": "_s + kept.labels.join(u' ')};
        for (const QUuid &id : data()->entryIds())
            names.append(data()->entryName(id));
        QCOMPARE(names.join(u"; "_s), u"13C: C1 C13; paracetamol, 13C powder; C1 ×4; C13 ×4"_s);
        QCOMPARE(window().statusBar()->currentMessage(), u"Powder spectrum of 13C"_s);
    }

    void fitsToAMeasurement()
    {
        accept(u"Powder Spectrum"_s,
               {{"nucleus", u"27Al"_s}, {"frequency", 400.0}, {"lorentzian", 150.0}, {"reference", 560.0}});
        window().powderCommands()->create();
        const QUuid entry = data()->entryIds().constFirst();
        // Its own curve, as a measurement that stands 4 ppm off.
        ExperimentalSpectrum measured = asMeasured(data()->stackEntry(entry));
        measured.dimensions.front().first += 4;
        data()->addEntry(toEntryMap(measured), u"measured.csv"_s);
        // However slow the machine: no bar with a button to cancel.
        qApp->setProperty("isHeadless", true);
        m_dialogs.expect(u"Edit Powder Spectrum"_s, [](QDialog *dialog) {
            fill(dialog, {{"lorentzian", 90.0}});
            QTRY_VERIFY(part<QPushButton>(dialog, "fit")->isEnabled());
            // One site has no curve beside the sum.
            QTRY_COMPARE(curves(dialog), u"Powder #0072b2; measured.csv #d55e00"_s);
            QVERIFY(!part<QCheckBox>(dialog, "siteCurves")->isEnabled());
            part<QPushButton>(dialog, "fit")->click();
            static const QRegularExpression error(u" ± [0-9.e-]+"_s);
            const auto agrees = [=](const QString &pattern) {
                const QString text = part<QLabel>(dialog, "fitResult")->text().replace(error, u" ±"_s);
                QVERIFY2(QRegularExpression(u'^' + pattern + u'$').match(text).hasMatch(), qPrintable(text));
            };
            agrees(
                u"Reference: 564\\.000 ± ppm\nLorentzian: 1(49|50)\\.[0-9] ± Hz\nDeviation: 0\\.0[0-9] % of the highest point"_s);
            QVERIFY(part<QLabel>(dialog, "fitResult")->isVisible());
            fill(dialog, {{"fitScale", true}, {"scale", 0.99}, {"lorentzian", 0.0}, {"gaussian", 100.0}});
            QVERIFY(!part<QLabel>(dialog, "fitResult")->isVisible());
            part<QPushButton>(dialog, "fit")->click();
            agrees(u"Reference: 56[0-9.]+ ± ppm\nGaussian: [0-9.]+ ± Hz\nFactor on Cq: [01]\\.[0-9]{4} ±\nDeviation: "
                   u"[0-9.]+ % of "
                   "the highest point"_s);
            fill(dialog, {{"fitScale", false}, {"scale", 1.0}, {"lorentzian", 90.0}, {"gaussian", 0.0}});
            part<QPushButton>(dialog, "fit")->click();
            // A field that is not the measurement's is told.
            const auto *notes = part<QLabel>(dialog, "notes");
            QVERIFY(!notes->text().contains(u"measured.csv was measured at"));
            fill(dialog, {{"frequency", 600.0}});
            QTRY_VERIFY2(notes->text().startsWith(u"measured.csv was measured at 104.31 MHz"),
                         qPrintable(notes->text()));
            fill(dialog, {{"frequency", 400.0}});
            // A measurement of another nucleus is none to fit to.
            fill(dialog, {{"nucleus", u"17O"_s}});
            QTRY_VERIFY(!part<QPushButton>(dialog, "fit")->isEnabled());
            fill(dialog, {{"nucleus", u"27Al"_s}});
            dialog->accept();
        });
        window().powderCommands()->edit();
        qApp->setProperty("isHeadless", false);
        QVERIFY2(std::abs(settings(entry).reference - 564) < 0.02,
                 qPrintable(QString::number(settings(entry).reference)));
        QVERIFY(std::abs(settings(entry).shape.lorentzian - 150) < 1);
    }

    void noteOffersIt()
    {
        createSpectrum({{"fCbNucF2", u"27Al"_s}});
        const QList<ItemNote> notes = plot()->notes();
        const auto offered = std::find_if(notes.begin(), notes.end(), [](const ItemNote &note) {
            return note.action == u"Create Powder Spectrum...";
        });
        QVERIFY(offered != notes.end());
        m_dialogs.expect(u"Powder Spectrum"_s, [](QDialog *dialog) {
            QCOMPARE(part<QComboBox>(dialog, "nucleus")->currentText(), u"27Al"_s);
            dialog->accept();
        });
        offered->run();
        QCOMPARE(data()->entryIds().size(), 2);
        QVERIFY(PowderOrigin::of(data()->stackEntry(data()->activeEntryId())));
    }

    /// A plane cannot hold a curve: it has a plot of its own beside it.
    void besideAPlane()
    {
        createSpectrum({{"fCbDims", u"2D Spectrum"_s}, {"fCbNucF2", u"27Al"_s}, {"fCbNucF1", u"17O"_s}});
        NmrItem *plane = plot();
        QCOMPARE(window().powderCommands()->whyNoEdit(), u"The current plot holds no powder spectrum"_s);
        m_dialogs.expect(u"Powder Spectrum"_s, [](QDialog *dialog) {
            QCOMPARE(linesOf(dialog)[0], u"&Nucleus: [27Al: 27Al, 17O, 31P]"_s);
            dialog->accept();
        });
        window().powderCommands()->createLike(plane, data()->simulatedEntry());
        QVERIFY(plot() != plane && plane->nmrData()->entryIds().size() == 1);
        QCOMPARE(data()->entryName(data()->activeEntryId()), u"berlinite, 27Al powder"_s);
        QCOMPARE(window().powderCommands()->whyNoEdit(), QString());
    }

    void refusesWhatMakesNoSense()
    {
        m_dialogs.expect(u"Powder Spectrum"_s, [](QDialog *dialog) {
            auto *sites = part<QListWidget>(dialog, "sites");
            auto *ok = part<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok);
            auto *notes = part<QLabel>(dialog, "notes");
            sites->item(0)->setCheckState(Qt::Unchecked);
            QTRY_VERIFY(!ok->isEnabled());
            QCOMPARE(notes->text(), u"<b>No site is chosen</b>"_s);
            QCOMPARE(curves(dialog), QString());
            sites->item(0)->setCheckState(Qt::Checked);
            QTRY_VERIFY(ok->isEnabled());
            QVERIFY(!curves(dialog).isEmpty() && !notes->text().contains(u"apart"_s));
            part<QSpinBox>(dialog, "points")->setValue(16);
            QTRY_VERIFY(notes->text().contains(u"too far for the line of Al1 ×3"_s));
            dialog->reject();
        });
        window().powderCommands()->create();
        QVERIFY(!plot());
    }
};

QTEST_MAIN(TestPowderWindow)
#include "tst_powderwindow.moc"
