// SPDX-License-Identifier: BSD-3-Clause
#include "TestData.h"
#include "TestNuclei.h"
#include "ui/WMagresDialog.h"
#include "ui/WMagresQuadIsoDialog.h"

#include <QtTest>
#include <QtWidgets>

using namespace Magres;
using namespace Qt::StringLiterals;

namespace {

const TestNuclei properties;

/// One atom per shielding, with an EFG tensor if that has a component.
void addAtoms(MagresData &data, const QByteArray &element, const QList<double> &shieldings, double vzz = 0.0)
{
    for (double iso : shieldings) {
        const MagresAtom &atom = addAtom(data, element, int(data.atoms.size()));
        data.shieldings.append({atom.labels, atom.No, {iso - 20, 0, 0, 0, iso, 0, 0, 0, iso + 20}});
        if (vzz != 0.0)
            data.EFG.append({atom.labels, atom.No, {-0.3 * vzz, 0, 0, 0, -0.7 * vzz, 0, 0, 0, vzz}});
    }
}

/// Elements H, C, N, Cl, so nuclei 1H, 2H, 13C, 14N, 15N, 35Cl, 37Cl.
MagresData molecule()
{
    MagresData data;
    addAtoms(data, "H", {29.5, 24.25, 23.0});
    addAtoms(data, "C", {150.123456, 120.0, 10.5});
    addAtoms(data, "N", {40.0, 75.0}, 0.8);
    addAtoms(data, "Cl", {900.0});
    return data;
}

/// Of these entries in its map form.
MagresSpecParams record(const QByteArray &json)
{
    MagresSpecParams parameters;
    parameters.fromMap(hash(json));
    return parameters;
}

template <typename Widget = QDoubleSpinBox>
Widget *find(const QWidget &dialog, const char *name)
{
    auto *widget = dialog.findChild<Widget *>(QString::fromLatin1(name));
    return widget ? widget : (qFatal("no widget %s", name), nullptr);
}

QString hintF2(const QWidget &dialog)
{
    return find<QLabel>(dialog, "fLbSpecHintF2")->text();
}

/// Shows the dialog, presses Return in a widget of it and returns the result.
int execWithReturn(QDialog &dialog, QWidget *target)
{
    QTimer::singleShot(0, &dialog, [&] {
        target->setFocus();
        QTest::keyClick(target, Qt::Key_Return);
        if (dialog.isVisible())
            dialog.done(-1);
    });
    return dialog.exec();
}

} // namespace

class tst_dialogs : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_settings.isValid());
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QCoreApplication::setOrganizationName(u"tst_dialogs"_s);
    }

    void init() { QSettings().clear(); }

    void acceptedAtOnceIsTheStepWithoutDialog()
    {
        // As JSON with single quotes; the numbers that are none are texts that are read as such.
        static const struct {
            QByteArray record;
            std::array<double, 2> rangeF2{0.0, 1.0}, rangeF1{0.0, 1.0};
            bool isUsers = false;
        } rows[] = {{"{'specType': 1, 'nucF2': '', 'nucF1': ''}"},
                    {"{'specType': 1, 'nucF2': '1H', 'nucF1': '1H'}"},
                    // unknown kind and choices; stored ones; a fitted reference
                    {"{'specType': 7, 'avIdx': -3, 'corr': 9, 'nucF2': '', 'pts': 8129}"},
                    {"{'specType': 1, 'avIdx': 2, 'corr': 1, 'nucF2': '14N', 'nucF1': '2H', 'ptsF2': 67108864, "
                     "'ptsF1': 67108864,"
                     "'freq': 399.87}"},
                    {"{'ref': {'13C': 169.123456789, '29Si': 1}, 'lw': {'13C': 12.3456}, 'nucF2': '13C'}"},
                    // no numbers and those beyond the boxes
                    {"{'specType': 1, 'nucF2': '13C', 'nucF1': '1H', 'freq': 'nan', 'ptsF2': 1000, 'lw': {'13C': 2400, "
                     "'1H': -1},"
                     "'ref': {'13C': 'abc', '1H': -1e300}, 'slope': {'13C': 'inf', '1H': [1]}}"},
                    // the user's ranges, and impossible ones
                    {"{'specType': 1}", {3.14159, -7.123}, {1.0, 2.00001}, true},
                    {"{'specType': 1}", {notANumber, -7.123}, {1.0, infinity}, true}};
        MagresData broken = m_molecule;
        addAtoms(broken, "C", {notANumber, infinity, -infinity, 1e308, -1e308}, notANumber);
        for (const auto &[record, rangeF2, rangeF1, isUsers] : rows)
            for (const MagresData &data : {m_molecule, broken, MagresData()}) {
                MagresSpecParams completed;
                completed.fromMap(hash(record));
                completed.qShift = {completed.corr == 1, completed.corr == 1};
                completed.RangeF2 = rangeF2;
                completed.RangeF1 = rangeF1;
                completed.RangeF2User = completed.RangeF1User = isUsers;
                MagresSpecParams shown = completed;
                Magres::completeParameters(data, completed, properties);
                WMagresDialog dialog(data, shown, properties);
                QCOMPARE(execWithReturn(dialog, &dialog), int(QDialog::Accepted));
                dialog.copyToRecord();
                QCOMPARE(shown.toMap(), completed.toMap());
                QCOMPARE(shown.RangeF1, completed.RangeF1);
                QCOMPARE(shown.RangeF1User, completed.RangeF1User);
            }
    }

    /// What lies beyond the limits of the boxes is shown all the same.
    void rangeInData()
    {
        MagresData data;
        addAtoms(data, "C", {-10, notANumber, 90});
        for (const auto &[reference, hint, from, to] : {std::tuple(100.0, "10.0 / 110.0", 0.0, 121.0),
                                                        std::tuple(2e5, "199910.0 / 200010.0", 199900.0, 200021.0)}) {
            MagresSpecParams parameters =
                record("{'nucF2': '13C', 'ref': {'13C': " + QByteArray::number(reference) + "}}");
            WMagresDialog dialog(data, parameters, properties);
            QCOMPARE(hintF2(dialog), u"Range in data: %1 ppm"_s.arg(QLatin1String(hint)));
            QCOMPARE(find(dialog, "fSpFromF2")->value(), from);
            QCOMPARE(find(dialog, "fSpToF2")->value(), to);
        }
    }

    // Spin boxes report their value when Enter is pressed, changed or not.
    void enterIsNoEdit()
    {
        for (const char *box : {"fSpFromF2", "fSpToF2", "fSpCSRefF2", "fSpCSSlopeF2", "fSpSfrq", "fSpLwF2"})
            for (bool users : {false, true}) {
                MagresSpecParams parameters = record("{'nucF2': '13C'}");
                parameters.RangeF2 = {-20.0, 220.0};
                parameters.RangeF2User = users;
                WMagresDialog dialog(m_molecule, parameters, properties);
                const double from = find(dialog, "fSpFromF2")->value();
                QCOMPARE(execWithReturn(dialog, find(dialog, box)), int(QDialog::Accepted));
                QCOMPARE(parameters.RangeF2User, users);
                QCOMPARE(find(dialog, "fSpFromF2")->value(), from);
            }
    }

    void hintFollowsTheScale()
    {
        MagresSpecParams parameters = record("{'specType': 1, 'nucF2': '13C', 'nucF1': '1H'}");
        WMagresDialog dialog(m_molecule, parameters, properties);
        find(dialog, "fSpCSRefF2")->setValue(110.0);
        QCOMPARE(hintF2(dialog), u"Range in data: -40.1 / 99.5 ppm"_s);
        find(dialog, "fSpCSSlopeF2")->setValue(1.0);
        QCOMPARE(hintF2(dialog), u"Range in data: 120.5 / 260.1 ppm"_s);
    }

    void eitherDecimalMark()
    {
        for (const char *language : {"C", "de_DE"}) {
            MagresSpecParams parameters = record("{'specType': 1, 'nucF2': '13C', 'nucF1': '1H'}");
            WMagresDialog dialog(m_molecule, parameters, properties);
            auto *box = find(dialog, "fSpCSRefF2");
            box->setLocale(QLocale(QLatin1String(language)));
            for (const auto &[typed, value] :
                 {std::pair("172,4", 172.4), std::pair("-0.98", -0.98), std::pair("1.234,5", 1.23)}) {
                box->selectAll();
                QTest::keyClicks(box, QLatin1String(typed));
                QCOMPARE(box->value(), value);
            }
        }
    }

    /// Which ranges each field makes anew: with those of the user in both dimensions before.
    void fieldsAndTheRangesTheyMove()
    {
        for (const auto &[name, movesF2, movesF1] :
             {std::tuple("fSpSfrq", true, true), std::tuple("fSpCSRefF2", true, false),
              std::tuple("fSpCSSlopeF2", true, false), std::tuple("fCbQShiftF2", true, false),
              std::tuple("fCbNucF2", true, false), std::tuple("fSpCSRefF1", false, true),
              std::tuple("fSpCSSlopeF1", false, true), std::tuple("fCbQShiftF1", false, true),
              std::tuple("fCbNucF1", false, true), std::tuple("fSpLwF2", false, false),
              std::tuple("fSpLwF1", false, false), std::tuple("fCbPtsF2", false, false),
              std::tuple("fCbPtsF1", false, false), std::tuple("fCbCorr", false, false),
              std::tuple("fCbAv", false, false), std::tuple("fCbDims", false, false)}) {
            MagresSpecParams parameters = record("{'specType': 1, 'nucF2': '14N', 'nucF1': '2H'}");
            parameters.RangeF2User = parameters.RangeF1User = true;
            parameters.RangeF2 = {-1.5, 2.5};
            parameters.RangeF1 = {-3.5, 4.5};
            WMagresDialog dialog(m_molecule, parameters, properties);
            auto *field = find<QWidget>(dialog, name);
            if (auto *number = qobject_cast<QDoubleSpinBox *>(field))
                number->stepUp();
            else if (auto *choice = qobject_cast<QComboBox *>(field))
                choice->setCurrentIndex(choice->currentIndex() == 0 ? 1 : 0);
            else
                qobject_cast<QCheckBox *>(field)->toggle();
            QVERIFY2(parameters.RangeF2User != movesF2 && parameters.RangeF1User != movesF1, name);
            QVERIFY2((find(dialog, "fSpFromF2")->value() == -1.5) != movesF2, name);
            QVERIFY2((find(dialog, "fSpFromF1")->value() == -3.5) != movesF1, name);
            QVERIFY2((find(dialog, "fSpToF2")->value() == 2.5) != movesF2, name);
            QVERIFY2((find(dialog, "fSpToF1")->value() == 4.5) != movesF1, name);
        }
        // The user's own: in its dimension, by either end.
        for (const char *name : {"fSpFromF2", "fSpToF2", "fSpFromF1", "fSpToF1"}) {
            MagresSpecParams parameters = record("{'specType': 1, 'nucF2': '14N', 'nucF1': '2H'}");
            WMagresDialog dialog(m_molecule, parameters, properties);
            QCOMPARE(hintF2(dialog), u"Range in data: 25.0 / 60.0 ppm"_s);
            QCOMPARE(find<QLabel>(dialog, "fLbSpecHintF1")->text(), u"Range in data: 70.5 / 77.0 ppm"_s);
            find(dialog, name)->stepUp();
            QVERIFY2(parameters.RangeF2User == QByteArray(name).endsWith("F2")
                         && parameters.RangeF1User == QByteArray(name).endsWith("F1"),
                     name);
        }
    }

    /// Where the last one stood, if that is on a screen; without a wait cursor; with dark texts on the light groups.
    void opensWhereTheLastOneStood()
    {
        const QPalette before = QApplication::palette();
        QPalette light;
        light.setColor(QPalette::WindowText, Qt::white);
        QApplication::setPalette(light);
        for (const auto &[kept, at] :
             {std::pair(QVariant(), QPoint(0, 0)), std::pair(QVariant(QPoint(70, 45)), QPoint(70, 45)),
              std::pair(QVariant(QPoint(-70000, 45)), QPoint(0, 0))}) {
            QSettings().setValue(u"magresPlugin/dialogPos"_s, kept);
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
            {
                MagresSpecParams parameters = record("{'specType': 1, 'nucF2': '13C', 'nucF1': '1H'}");
                WMagresDialog dialog(m_molecule, parameters, properties);
                QCOMPARE(dialog.pos(), at);
                QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
                for (const QWidget *widget : dialog.findChildren<QWidget *>())
                    if (const QWidget *group = widget->parentWidget(); widget->inherits("QGroupBox")
                        || (group->inherits("QGroupBox")
                            && (widget->inherits("QLabel") || widget->inherits("QCheckBox"))))
                        QCOMPARE(widget->palette().color(QPalette::WindowText), QColor(Qt::black));
                dialog.move(12, 34);
            }
            QCOMPARE(QSettings().value(u"magresPlugin/dialogPos"_s).toPoint(), QPoint(12, 34));
        }
        QApplication::setPalette(before);
    }

    /// Elements in the order of the file, isotopes, and the one shown: the chosen, the default, or the first.
    void isotopeOfEachElement()
    {
        TestNuclei nuclei;
        nuclei.nuclei["63Cu"].abundance = 20.0;
        nuclei.nuclei["65Cu"].abundance = 80.0;
        MagresData data = molecule();
        addAtoms(data, "Cu", {1.0, 2.0});
        data.QIso = {{u"Cl"_s, u"37Cl"_s}, {u"N"_s, u"15N"_s}, {u"H"_s, u""_s}};
        WMagresQuadIsoDialog dialog(data, nuclei);
        auto *element = find<QComboBox>(dialog, "fCbEl");
        auto *isotope = find<QComboBox>(dialog, "fCbIso");
        QStringList seen;
        for (int i : {0, 1, 2, 3, 0}) {
            if (i != element->currentIndex())
                element->setCurrentIndex(i);
            seen.append(dialog.currentElement() + u':');
            for (int k = 0; k < isotope->count(); ++k)
                seen.last() += (k == isotope->currentIndex() ? u" *"_s : u" "_s) + isotope->itemText(k);
        }
        QCOMPARE(seen.join(u", "), u"H: *2H, N: *14N, Cl: 35Cl *37Cl, Cu: 63Cu *65Cu, H: *2H"_s);
        QCOMPARE(element->count(), 4);
        const MagresData nothing;
        WMagresQuadIsoDialog empty(nothing, nuclei);
        QCOMPARE(empty.currentElement() + empty.currentIsotope(), QString());
    }

    void untouchedNumbersKeepTheirPrecision()
    {
        MagresSpecParams parameters = record("{'nucF2': '13C', 'ref': {'13C': 169.123456789}, 'RangeF2User': true}");
        parameters.RangeF2 = {-20.98765, 220.12345};
        WMagresDialog dialog(m_molecule, parameters, properties);
        QCOMPARE(find(dialog, "fSpCSRefF2")->value(), 169.12);
        QCOMPARE(find(dialog, "fSpFromF2")->value(), -20.99);
        find(dialog, "fSpLwF2")->setValue(12.5);
        find(dialog, "fSpToF2")->setValue(200.0);
        dialog.copyToRecord();
        QCOMPARE(parameters.ref.value(u"13C"_s).toDouble(), 169.123456789);
        QCOMPARE(parameters.lw.value(u"13C"_s).toDouble(), 12.5);
        QCOMPARE(parameters.RangeF2, (std::array{-20.98765, 200.0}));

        find(dialog, "fSpCSRefF2")->setValue(169.0);
        dialog.copyToRecord();
        QCOMPARE(parameters.ref.value(u"13C"_s).toDouble(), 169.0);
    }

    void kindOfSpectrum()
    {
        MagresSpecParams parameters = record("{'pts': 4096, 'ptsF2': 2000}");
        WMagresDialog dialog(m_molecule, parameters, properties);
        auto *kind = find<QComboBox>(dialog, "fCbDims");
        const auto points = [&] { return find<QComboBox>(dialog, "fCbPtsF2")->currentText(); };
        dialog.show();
        QVERIFY(find<QGroupBox>(dialog, "fGbF1")->isHidden());
        QCOMPARE(points(), u"4096"_s);
        QTest::keyClick(kind, Qt::Key_Down);
        QVERIFY(find<QGroupBox>(dialog, "fGbF1")->isVisible());
        QCOMPARE(find<QGroupBox>(dialog, "fGbF2")->title(), u"Direct dimension"_s);
        QCOMPARE(points(), u"8192"_s);
        QTest::keyClick(kind, Qt::Key_Up);
        QCOMPARE(points(), u"4096"_s);
        dialog.copyToRecord();
        QCOMPARE(parameters.ptsF2, 2000);
    }

    void nucleusDecides()
    {
        for (const auto &[specType, nucF2, nucF1, averaging, quadBoxF2] :
             {std::tuple(0, "2H", "13C", true, true), std::tuple(0, "13C", "1H", false, false),
              std::tuple(1, "13C", "1H", true, false), std::tuple(1, "14N", "13C", false, true)}) {
            MagresSpecParams parameters = record("{'nucF2': '15N', 'nucF1': '15N'}");
            parameters.ref = {{QLatin1String(nucF2), 33.0}};
            WMagresDialog dialog(m_molecule, parameters, properties);
            find<QComboBox>(dialog, "fCbNucF2")->setCurrentText(QLatin1String(nucF2));
            find<QComboBox>(dialog, "fCbNucF1")->setCurrentText(QLatin1String(nucF1));
            find<QComboBox>(dialog, "fCbDims")->setCurrentIndex(specType);
            QCOMPARE(find<QComboBox>(dialog, "fCbAv")->isEnabled(), averaging);
            QCOMPARE(!find<QCheckBox>(dialog, "fCbQShiftF2")->isHidden(), quadBoxF2);
            QCOMPARE(find(dialog, "fSpCSRefF2")->value(), 33.0);
        }
    }

    void quadrupolarShift()
    {
        const double shift = m_molecule.EFG.first().secondOrderQuadShift("14N", 2.044, 300.0 * 54.22 / 750.03, 1);
        QVERIFY(std::abs(shift) > 1.0);
        const auto text = [](double by) {
            return u"Range in data: %1 / %2 ppm"_s.arg(25.0 + by, 0, 'f', 1).arg(60.0 + by, 0, 'f', 1);
        };
        MagresSpecParams parameters = record("{'nucF2': '14N', 'freq': 300}");
        parameters.qShift = {true, false};
        WMagresDialog dialog(m_molecule, parameters, properties);
        QCOMPARE(hintF2(dialog), text(shift)); // with the record's frequency from the start
        auto *box = find<QCheckBox>(dialog, "fCbQShiftF2");
        QTest::keyClick(box, Qt::Key_Space);
        QCOMPARE(hintF2(dialog), text(0.0));
        QTest::keyClick(box, Qt::Key_Space);
        find(dialog, "fSpSfrq")->setValue(600.0);
        QCOMPARE(hintF2(dialog), text(shift / 4.0));
        // A box that stays checked while it is hidden moves nothing.
        find<QComboBox>(dialog, "fCbNucF2")->setCurrentText(u"15N"_s);
        QCOMPARE(hintF2(dialog), text(0.0));
    }

    void tabGoesDownTheForm()
    {
        MagresSpecParams parameters = record("{'specType': 1, 'nucF2': '2H', 'nucF1': '2H'}");
        WMagresDialog dialog(m_molecule, parameters, properties);
        dialog.show();
        dialog.activateWindow(); // needed without a window manager
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QPoint last(-1, -1);
        int visited = 0;
        for (; !qobject_cast<QPushButton *>(dialog.focusWidget()); ++visited) {
            const QWidget *widget = dialog.focusWidget();
            const QPoint here = widget->mapTo(&dialog, widget->rect().center());
            QVERIFY2(here.y() > last.y() + 5 || here.x() > last.x(), qPrintable(widget->objectName()));
            QVERIFY2(here.y() > last.y() - 5, qPrintable(widget->objectName()));
            last = here;
            QTest::keyClick(&dialog, Qt::Key_Tab);
        }
        QCOMPARE(visited, 20); // every field, none hidden or disabled
    }

private:
    const MagresData m_molecule = molecule();
    QTemporaryDir m_settings;
};

QTEST_MAIN(tst_dialogs)
#include "tst_dialogs.moc"
