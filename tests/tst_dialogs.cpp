// SPDX-License-Identifier: BSD-3-Clause
#include "ui/WMagresDialog.h"
#include "ui/WMagresQuadIsoDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

class Properties : public NuclearProperties
{
public:
    QString spin(const QByteArray &nucleus) const override
    {
        static const QMap<QByteArray, QString> spins{{"2H", QStringLiteral("1")}, {"14N", QStringLiteral("1")},
                                                     {"27Al", QStringLiteral("5/2")}, {"35Cl", QStringLiteral("3/2")},
                                                     {"37Cl", QStringLiteral("3/2")}};
        return spins.value(nucleus, QStringLiteral("1/2"));
    }
    double quadrupoleMoment(const QByteArray &nucleus) const override { return nucleus == "14N" ? 2.044 : 0.0; }
    double naturalAbundance(const QByteArray &nucleus) const override { return nucleus == "35Cl" ? 75.8 : 24.2; }
};

const Properties properties;

/// One atom per shielding, with an EFG tensor if that has a component.
void addAtoms(MagresData &data, const QByteArray &element, const QList<double> &shieldings, double vzz = 0.0)
{
    for (double iso : shieldings) {
        MagresAtom atom;
        atom.type = element;
        atom.labels = {element + QByteArray::number(data.atoms.size())};
        atom.recordNo = qint32(data.atoms.size());
        data.atoms.append(atom);
        data.shieldings.append(MagresTensor(atom.labels, 0, {iso - 20, 0, 0, 0, iso, 0, 0, 0, iso + 20}));
        if (vzz != 0.0)
            data.EFG.append(MagresTensor(atom.labels, 0, {-0.3 * vzz, 0, 0, 0, -0.7 * vzz, 0, 0, 0, vzz}));
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

MagresSpecParams record(int specType, const char *nucF2 = "", const char *nucF1 = "")
{
    MagresSpecParams parameters;
    parameters.specType = specType;
    parameters.nucF2 = QString::fromLatin1(nucF2);
    parameters.nucF1 = QString::fromLatin1(nucF1);
    return parameters;
}

template <typename Widget = QDoubleSpinBox>
Widget *find(const QWidget &dialog, const char *name)
{
    auto *widget = dialog.findChild<Widget *>(QString::fromLatin1(name));
    return widget ? widget : (qFatal("no widget %s", name), nullptr);
}

QString hint(const QWidget &dialog, const char *name)
{
    return find<QLabel>(dialog, name)->text();
}

/// Shows the dialog, sends it the keys and returns the result.
int execWithKeys(QDialog &dialog, QWidget *target, const QList<Qt::Key> &keys)
{
    QTimer::singleShot(0, &dialog, [&] {
        target->setFocus();
        for (Qt::Key key : keys)
            QTest::keyClick(target, key);
        if (dialog.isVisible())
            dialog.done(-1);
    });
    return dialog.exec();
}

bool sameRecord(const MagresSpecParams &a, const MagresSpecParams &b)
{
    const QVariantHash x = a.toMap();
    const QVariantHash y = b.toMap();
    for (auto it = x.begin(); it != x.end(); ++it)
        if (y.value(it.key()) != *it)
            qWarning() << it.key() << *it << y.value(it.key());
    return x == y && a.RangeF1 == b.RangeF1 && a.RangeF1User == b.RangeF1User;
}

} // namespace

Q_DECLARE_METATYPE(MagresSpecParams)
Q_DECLARE_METATYPE(MagresData)

class tst_dialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QSettings().clear(); }

    void acceptedAtOnceIsTheStepWithoutDialog_data();
    void acceptedAtOnceIsTheStepWithoutDialog();
    void completedRecord();
    void rangeInData_data();
    void rangeInData();
    void enterIsNoEdit();
    void userRange();
    void untouchedNumbersKeepTheirPrecision();
    void indirectNumbersWinForOneNucleus();
    void kindOfSpectrum();
    void nucleusDecides_data();
    void nucleusDecides();
    void quadrupolarShift();
    void keysCloseTheDialog();
    void tabGoesDownTheForm();
    void textsAreReadable();
    void position_data();
    void position();
    void waitCursorEnds();
    void quadrupolarIsotope_data();
    void quadrupolarIsotope();
    void isotopesFollowTheElement();

private:
    QTemporaryDir m_settings;
};

void tst_dialogs::initTestCase()
{
    QVERIFY(m_settings.isValid());
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    QCoreApplication::setOrganizationName(QStringLiteral("tst_dialogs"));
}

void tst_dialogs::acceptedAtOnceIsTheStepWithoutDialog_data()
{
    QTest::addColumn<MagresData>("data");
    QTest::addColumn<MagresSpecParams>("parameters");

    const auto row = [](const char *name, MagresSpecParams parameters, auto change, const MagresData &data) {
        change(parameters);
        QTest::newRow(name) << data << parameters;
    };
    const MagresData data = molecule();
    const auto nothing = [](MagresSpecParams &) {};
    row("new 1D", record(0), nothing, data);
    row("new 2D", record(1), nothing, data);
    row("homonuclear", record(1, "1H", "1H"), nothing, data);
    row("nucleus not in the data", record(1, "29Si", "xyz"), nothing, data);
    row("no atoms", record(1, "13C", "1H"), nothing, {});
    row("unknown kind and choices", record(7), [](auto &p) { p.avIdx = -3; p.corr = 9; }, data);
    row("unknown choices in 2D", record(1), [](auto &p) { p.avIdx = 3; p.corr = -1; }, data);
    row("stored choices", record(1), [](auto &p) { p.avIdx = 2; p.corr = 1; p.ptsF2 = p.ptsF1 = 1 << 26; }, data);
    row("points not on offer", record(1), [](auto &p) { p.ptsF2 = 1000; p.ptsF1 = -5; }, data);
    row("flags", record(1, "14N", "2H"), [](auto &p) { p.qShift = {true, true}; p.freq = 399.87; }, data);
    row("flag in 1D keeps the other", record(0, "14N"), [](auto &p) { p.qShift = {false, true}; }, data);
    row("no flags", record(1, "14N"), [](auto &p) { p.qShift = {}; }, data);
    row("fitted", record(0, "13C"), [](auto &p) {
        p.ref = {{QStringLiteral("13C"), 169.123456789}, {QStringLiteral("29Si"), 1.0}};
        p.slope = {{QStringLiteral("13C"), -0.98765432}};
        p.lw = {{QStringLiteral("13C"), 12.3456}};
    }, data);
    row("not numbers", record(1, "13C", "1H"), [](auto &p) {
        p.ref = {{QStringLiteral("13C"), QStringLiteral("abc")}, {QStringLiteral("1H"), notANumber}};
        p.slope = {{QStringLiteral("13C"), infinity}, {QStringLiteral("1H"), QVariantList{1}}};
        p.lw = {{QStringLiteral("13C"), QStringLiteral("nan")}};
        p.freq = notANumber;
    }, data);
    row("beyond the boxes", record(1, "13C", "1H"), [](auto &p) {
        p.ref = {{QStringLiteral("13C"), 1e9}, {QStringLiteral("1H"), -1e300}};
        p.slope = {{QStringLiteral("13C"), 1e7}, {QStringLiteral("1H"), 1e300}};
        p.lw = {{QStringLiteral("13C"), 2400.0}, {QStringLiteral("1H"), -1.0}};
        p.freq = 20000.0;
    }, data);
    const auto users = [](auto &p) {
        p.RangeF2 = {3.14159, -7.123};
        p.RangeF1 = {1.0, 2.00001};
        p.RangeF2User = p.RangeF1User = true;
    };
    row("the user's ranges", record(1), users, data);
    row("the user's ranges in 1D", record(0), users, data);
    row("impossible ranges", record(1), [=](auto &p) {
        users(p);
        p.RangeF2[0] = notANumber;
        p.RangeF1[1] = infinity;
    }, data);

    MagresData broken = data;
    addAtoms(broken, "C", {notANumber, infinity, -infinity, 1e308, -1e308}, notANumber);
    row("broken shieldings", record(0, "13C"), nothing, broken);
}

void tst_dialogs::acceptedAtOnceIsTheStepWithoutDialog()
{
    QFETCH(MagresData, data);
    QFETCH(MagresSpecParams, parameters);

    MagresSpecParams completed = parameters;
    Magres::completeParameters(data, completed, properties);
    WMagresDialog dialog(data, parameters, properties);
    QCOMPARE(execWithKeys(dialog, &dialog, {Qt::Key_Return}), int(QDialog::Accepted));
    dialog.copyToRecord();
    QVERIFY(sameRecord(parameters, completed));
}

void tst_dialogs::completedRecord()
{
    MagresSpecParams parameters = record(1);
    parameters.ptsF1 = 300;
    Magres::completeParameters(molecule(), parameters, properties);
    QCOMPARE(parameters.nucF2, QStringLiteral("13C"));
    QCOMPARE(parameters.nucF1, QStringLiteral("1H"));
    QCOMPARE(parameters.lw, (QVariantMap{{QStringLiteral("13C"), 30.0}, {QStringLiteral("1H"), 1.0}}));
    QCOMPARE(parameters.ref, (QVariantMap{{QStringLiteral("13C"), 100.0}, {QStringLiteral("1H"), 100.0}}));
    QCOMPARE(parameters.ptsF1, 1024);
    QCOMPARE(parameters.qShift, (QList<bool>{false, false}));
    // Shifts from 70.5 to 77: 6.5 below by a tenth, then 7.15 above by a tenth.
    QVERIFY(std::abs(parameters.RangeF1[0] - 69.85) < 1e-9);
    QVERIFY(std::abs(parameters.RangeF1[1] - 77.715) < 1e-9);

    MagresSpecParams none = record(0, "13C");
    Magres::completeParameters({}, none, properties);
    QVERIFY(none.nucF2.isEmpty() && none.ref.isEmpty() && none.slope.isEmpty() && none.lw.isEmpty());
}

void tst_dialogs::rangeInData_data()
{
    QTest::addColumn<QList<double>>("shieldings");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::newRow("one shift") << QList<double>{50, 50} << "Range in data: 50.0 / 50.0 ppm" << 38.0 << 62.2;
    QTest::newRow("last digits differ") << QList<double>{50, 50.004}
                                        << "Range in data: 50.0 / 50.0 ppm" << 38.0 << 62.2;
    QTest::newRow("two shifts") << QList<double>{-10, 90} << "Range in data: 10.0 / 110.0 ppm" << 0.0 << 121.0;
    QTest::newRow("one is not a number") << QList<double>{-10, notANumber, 90}
                                         << "Range in data: 10.0 / 110.0 ppm" << 0.0 << 121.0;
    QTest::newRow("no site") << QList<double>{} << "Range in data: 0.0 / 0.0 ppm" << -12.0 << 12.2;
}

void tst_dialogs::rangeInData()
{
    QFETCH(QList<double>, shieldings);
    MagresData data;
    addAtoms(data, "C", shieldings);
    MagresSpecParams parameters = record(1, "13C", "13C");
    WMagresDialog dialog(data, parameters, properties);
    for (const char *dimension : {"F2", "F1"}) {
        const auto name = [dimension](const char *stem) { return QByteArray(stem) + dimension; };
        QTEST(hint(dialog, name("fLbSpecHint")), "text");
        QTEST(find(dialog, name("fSpFrom"))->value(), "from");
        QTEST(find(dialog, name("fSpTo"))->value(), "to");
    }
}

// Spin boxes report their value when Enter is pressed, changed or not.
void tst_dialogs::enterIsNoEdit()
{
    const MagresData data = molecule();
    for (const char *box : {"fSpFromF2", "fSpToF2", "fSpCSRefF2", "fSpCSSlopeF2", "fSpSfrq", "fSpLwF2"}) {
        for (bool users : {false, true}) {
            MagresSpecParams parameters = record(0, "13C");
            parameters.RangeF2 = {-20.0, 220.0};
            parameters.RangeF2User = users;
            WMagresDialog dialog(data, parameters, properties);
            const double from = find(dialog, "fSpFromF2")->value();
            QCOMPARE(execWithKeys(dialog, find(dialog, box), {Qt::Key_Return}), int(QDialog::Accepted));
            QCOMPARE(parameters.RangeF2User, users);
            QCOMPARE(find(dialog, "fSpFromF2")->value(), from);
        }
    }
}

void tst_dialogs::userRange()
{
    const MagresData data = molecule();
    MagresSpecParams parameters = record(1);
    WMagresDialog dialog(data, parameters, properties);
    QVERIFY(!parameters.RangeF2User && !parameters.RangeF1User);
    find(dialog, "fSpToF1")->stepUp();
    QVERIFY(!parameters.RangeF2User && parameters.RangeF1User);
    QTest::keyClick(find(dialog, "fSpFromF2"), Qt::Key_Up);
    QVERIFY(parameters.RangeF2User);

    // A new scale is a new range, in its dimension only; the frequency counts for both.
    find(dialog, "fSpCSRefF2")->setValue(110.0);
    QVERIFY(!parameters.RangeF2User && parameters.RangeF1User);
    QCOMPARE(hint(dialog, "fLbSpecHintF2"), QStringLiteral("Range in data: -40.1 / 99.5 ppm"));
    find(dialog, "fSpCSSlopeF2")->setValue(1.0);
    QCOMPARE(hint(dialog, "fLbSpecHintF2"), QStringLiteral("Range in data: 120.5 / 260.1 ppm"));
    find(dialog, "fSpSfrq")->setValue(500.0);
    QVERIFY(!parameters.RangeF1User);
}

void tst_dialogs::untouchedNumbersKeepTheirPrecision()
{
    const QString carbon = QStringLiteral("13C");
    const MagresData data = molecule();
    MagresSpecParams parameters = record(0, "13C");
    parameters.ref = {{carbon, 169.123456789}};
    parameters.RangeF2 = {-20.98765, 220.12345};
    parameters.RangeF2User = true;
    WMagresDialog dialog(data, parameters, properties);
    QCOMPARE(find(dialog, "fSpCSRefF2")->value(), 169.12);
    QCOMPARE(find(dialog, "fSpFromF2")->value(), -20.99);
    find(dialog, "fSpLwF2")->setValue(12.5);
    find(dialog, "fSpToF2")->setValue(200.0);
    dialog.copyToRecord();
    QCOMPARE(parameters.ref.value(carbon).toDouble(), 169.123456789);
    QCOMPARE(parameters.lw.value(carbon).toDouble(), 12.5);
    QCOMPARE(parameters.RangeF2, (std::array{-20.98765, 200.0}));

    find(dialog, "fSpCSRefF2")->setValue(169.0);
    dialog.copyToRecord();
    QCOMPARE(parameters.ref.value(carbon).toDouble(), 169.0);
}

void tst_dialogs::indirectNumbersWinForOneNucleus()
{
    const MagresData data = molecule();
    MagresSpecParams parameters = record(1, "1H", "1H");
    WMagresDialog dialog(data, parameters, properties);
    find(dialog, "fSpCSRefF2")->setValue(30.0);
    find(dialog, "fSpCSRefF1")->setValue(31.0);
    dialog.copyToRecord();
    QCOMPARE(parameters.ref, (QVariantMap{{QStringLiteral("1H"), 31.0}}));
    QCOMPARE(parameters.lw, (QVariantMap{{QStringLiteral("1H"), 1.0}}));
    QCOMPARE(parameters.RangeF2[0], -0.15); // still that of its own reference
}

void tst_dialogs::kindOfSpectrum()
{
    const MagresData data = molecule();
    MagresSpecParams parameters = record(0);
    parameters.pts = 4096;
    parameters.ptsF2 = 2000;
    parameters.ptsF1 = 512;
    WMagresDialog dialog(data, parameters, properties);
    auto *kind = find<QComboBox>(dialog, "fCbDims");
    const auto points = [&] { return find<QComboBox>(dialog, "fCbPtsF2")->currentText(); };
    const auto title = [&] { return find<QGroupBox>(dialog, "fGbF2")->title(); };
    QCOMPARE(dialog.size(), QSize(429, 599));
    dialog.show();
    QVERIFY(find<QGroupBox>(dialog, "fGbF1")->isHidden());
    QCOMPARE(title(), QStringLiteral("Spectrum parameters"));
    QCOMPARE(points(), QStringLiteral("4096"));
    const int heightOf1D = dialog.height();

    find<QComboBox>(dialog, "fCbPtsF1")->setCurrentText(QStringLiteral("128"));
    QTest::keyClick(kind, Qt::Key_Down);
    QVERIFY(find<QGroupBox>(dialog, "fGbF1")->isVisible());
    QCOMPARE(title(), QStringLiteral("Direct dimension"));
    QCOMPARE(points(), QStringLiteral("8192"));
    QCOMPARE(find<QComboBox>(dialog, "fCbPtsF1")->currentText(), QStringLiteral("128"));
    QTRY_VERIFY(dialog.height() > heightOf1D);

    QTest::keyClick(kind, Qt::Key_Up);
    QCOMPARE(points(), QStringLiteral("4096"));
    QTRY_COMPARE(dialog.height(), heightOf1D);
    dialog.copyToRecord();
    QCOMPARE(parameters.ptsF2, 2000);
    QCOMPARE(parameters.ptsF1, 512);
    QVERIFY(parameters.nucF1.isEmpty());
}

void tst_dialogs::nucleusDecides_data()
{
    QTest::addColumn<int>("specType");
    QTest::addColumn<QString>("nucF2");
    QTest::addColumn<QString>("nucF1");
    QTest::addColumn<bool>("averaging");
    QTest::addColumn<bool>("quadBoxF2");
    QTest::newRow("1H") << 0 << "1H" << "13C" << true << false;
    QTest::newRow("2H") << 0 << "2H" << "13C" << true << true;
    QTest::newRow("1D ignores F1") << 0 << "13C" << "1H" << false << false;
    QTest::newRow("2D with F1 1H") << 1 << "13C" << "1H" << true << false;
    QTest::newRow("2D without hydrogen") << 1 << "14N" << "13C" << false << true;
    QTest::newRow("35Cl") << 1 << "35Cl" << "2H" << true << false;
}

void tst_dialogs::nucleusDecides()
{
    QFETCH(int, specType);
    QFETCH(QString, nucF2);
    QFETCH(QString, nucF1);
    const MagresData data = molecule();
    MagresSpecParams parameters = record(0, "15N", "15N");
    parameters.ref = {{nucF2, 33.0}};
    WMagresDialog dialog(data, parameters, properties);
    find<QComboBox>(dialog, "fCbNucF2")->setCurrentText(nucF2);
    find<QComboBox>(dialog, "fCbNucF1")->setCurrentText(nucF1);
    find<QComboBox>(dialog, "fCbDims")->setCurrentIndex(specType);
    QTEST(find<QComboBox>(dialog, "fCbAv")->isEnabled(), "averaging");
    QTEST(!find<QCheckBox>(dialog, "fCbQShiftF2")->isHidden(), "quadBoxF2");
    QCOMPARE(find(dialog, "fSpCSRefF2")->value(), 33.0);
    QCOMPARE(find(dialog, "fSpCSRefF1")->value(), nucF1 == nucF2 ? 33.0 : 100.0);
    QCOMPARE(find(dialog, "fSpCSSlopeF2")->value(), -1.0);
    QCOMPARE(find(dialog, "fSpLwF2")->value(), 30.0);
    QCOMPARE(find(dialog, "fSpLwF1")->value(), 1.0);
}

void tst_dialogs::quadrupolarShift()
{
    const MagresData data = molecule();
    const double shift = data.EFG.first().secondOrderQuadShift("14N", 2.044, 300.0 * 54.22 / 750.03, 1);
    QVERIFY(std::abs(shift) > 1.0);
    const auto text = [](double by) {
        return QStringLiteral("Range in data: %1 / %2 ppm").arg(25.0 + by, 0, 'f', 1).arg(60.0 + by, 0, 'f', 1);
    };
    MagresSpecParams parameters = record(0, "14N");
    parameters.freq = 300.0;
    parameters.qShift = {true, false};
    WMagresDialog dialog(data, parameters, properties);
    QCOMPARE(hint(dialog, "fLbSpecHintF2"), text(shift)); // with the record's frequency from the start
    auto *box = find<QCheckBox>(dialog, "fCbQShiftF2");
    QTest::keyClick(box, Qt::Key_Space);
    QCOMPARE(hint(dialog, "fLbSpecHintF2"), text(0.0));
    QTest::keyClick(box, Qt::Key_Space);
    find(dialog, "fSpSfrq")->setValue(600.0);
    QCOMPARE(hint(dialog, "fLbSpecHintF2"), text(shift / 4.0));
    // A box that stays checked while it is hidden moves nothing.
    find<QComboBox>(dialog, "fCbNucF2")->setCurrentText(QStringLiteral("15N"));
    QCOMPARE(hint(dialog, "fLbSpecHintF2"), text(0.0));
}

void tst_dialogs::keysCloseTheDialog()
{
    const MagresData data = molecule();
    for (const char *name : {"fCbDims", "fSpCSRefF2", "fCbNucF2"}) {
        MagresSpecParams parameters = record(0);
        WMagresDialog accepted(data, parameters, properties);
        QCOMPARE(execWithKeys(accepted, find<QWidget>(accepted, name), {Qt::Key_Enter}), int(QDialog::Accepted));
        WMagresDialog rejected(data, parameters, properties);
        find(rejected, "fSpLwF2")->setValue(99.0);
        QCOMPARE(execWithKeys(rejected, find<QWidget>(rejected, name), {Qt::Key_Escape}), int(QDialog::Rejected));
        QVERIFY(sameRecord(parameters, record(0)));
    }
    // A number being typed counts when Enter ends it.
    MagresSpecParams parameters = record(0);
    WMagresDialog dialog(data, parameters, properties);
    auto *width = find(dialog, "fSpLwF2");
    width->selectAll();
    execWithKeys(dialog, width, {Qt::Key_4, Qt::Key_5, Qt::Key_Return});
    dialog.copyToRecord();
    QCOMPARE(parameters.lw.value(QStringLiteral("13C")).toDouble(), 45.0);
}

void tst_dialogs::tabGoesDownTheForm()
{
    const MagresData data = molecule();
    MagresSpecParams parameters = record(1, "2H", "2H");
    WMagresDialog dialog(data, parameters, properties);
    dialog.show();
    dialog.activateWindow(); // needed without a window manager
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QCOMPARE(dialog.focusWidget(), find<QWidget>(dialog, "fCbDims"));
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
    for (QLabel *label : dialog.findChildren<QLabel *>())
        if (label->text().endsWith(QLatin1Char(':')) || label->text().endsWith(QLatin1Char('=')))
            QVERIFY2(label->buddy(), qPrintable(label->text()));
}

void tst_dialogs::textsAreReadable()
{
    const QPalette usual = QApplication::palette();
    QApplication::setPalette(QPalette(Qt::white, Qt::darkGray, Qt::gray, Qt::black, Qt::gray, Qt::white, Qt::black));
    const MagresData data = molecule();
    MagresSpecParams parameters = record(1, "14N", "14N");
    WMagresDialog dialog(data, parameters, properties);
    dialog.show();
    QApplication::setPalette(usual);
    int checked = 0;
    for (const char *group : {"fGbF2", "fGbF1"}) {
        for (const QWidget *child : find<QGroupBox>(dialog, group)->findChildren<QWidget *>()) {
            if (!qobject_cast<const QLabel *>(child) && !qobject_cast<const QCheckBox *>(child))
                continue;
            QVERIFY2(child->palette().color(QPalette::WindowText).lightness() < 64, qPrintable(child->objectName()));
            QVERIFY2(child->width() >= child->sizeHint().width(), qPrintable(child->objectName()));
            ++checked;
        }
    }
    QVERIFY(checked > 20);
}

void tst_dialogs::position_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QPoint>("shown");
    QTest::newRow("none") << QVariant() << QPoint(0, 0);
    QTest::newRow("on the screen") << QVariant(QPoint(120, 80)) << QPoint(120, 80);
    QTest::newRow("off all screens") << QVariant(QPoint(-5000, 90000)) << QPoint(0, 0);
    QTest::newRow("nonsense") << QVariant(QStringLiteral("@Point(abc)")) << QPoint(0, 0);
    QTest::newRow("another type") << QVariant(QVariantMap{{QStringLiteral("x"), 3}}) << QPoint(0, 0);
}

void tst_dialogs::position()
{
    const QString key = QStringLiteral("magresPlugin/dialogPos");
    QFETCH(QVariant, stored);
    if (stored.isValid())
        QSettings().setValue(key, stored);
    const MagresData data = molecule();
    MagresSpecParams parameters = record(0);
    {
        WMagresDialog dialog(data, parameters, properties);
        QTEST(dialog.pos(), "shown");
        dialog.move(33, 44);
    }
    QCOMPARE(QSettings().value(key).toPoint(), QPoint(33, 44));
}

void tst_dialogs::waitCursorEnds()
{
    const MagresData data = molecule();
    MagresSpecParams parameters = record(0);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    WMagresDialog dialog(data, parameters, properties);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_dialogs::quadrupolarIsotope_data()
{
    QTest::addColumn<QByteArrayList>("species");
    QTest::addColumn<QVariantMap>("chosen");
    QTest::addColumn<QString>("elements");
    QTest::addColumn<QString>("isotopes");
    QTest::addColumn<QString>("isotope");
    const auto chosen = [](const QVariant &isotope) { return QVariantMap{{QStringLiteral("Cl"), isotope}}; };
    QTest::newRow("default") << QByteArrayList{"C", "Cl", "H"} << QVariantMap() << "Cl H" << "35Cl 37Cl" << "35Cl";
    QTest::newRow("chosen") << QByteArrayList{"Cl"} << chosen(QStringLiteral("37Cl")) << "Cl" << "35Cl 37Cl" << "37Cl";
    QTest::newRow("empty") << QByteArrayList{"Cl"} << chosen(QString()) << "Cl" << "35Cl 37Cl" << "35Cl";
    QTest::newRow("not in the list") << QByteArrayList{"Cl"} << chosen(QStringLiteral("37cl"))
                                     << "Cl" << "35Cl 37Cl" << "35Cl";
    QTest::newRow("no text") << QByteArrayList{"Cl"} << chosen(QVariantList{1}) << "Cl" << "35Cl 37Cl" << "35Cl";
    QTest::newRow("no quadrupolar element") << QByteArrayList{"C", "Zz"} << QVariantMap() << "" << "" << "";
    QTest::newRow("no atoms") << QByteArrayList{} << QVariantMap() << "" << "" << "";
}

void tst_dialogs::quadrupolarIsotope()
{
    QFETCH(QByteArrayList, species);
    MagresData data;
    for (const QByteArray &element : species)
        addAtoms(data, element, {1.0});
    QFETCH(QVariantMap, chosen);
    data.QIso = chosen;
    WMagresQuadIsoDialog dialog(data, properties);
    QCOMPARE(dialog.size(), QSize(179, 94));
    const auto texts = [&](const char *name) {
        QStringList list;
        for (auto *combo = find<QComboBox>(dialog, name); list.size() < combo->count();)
            list.append(combo->itemText(int(list.size())));
        return list.join(QLatin1Char(' '));
    };
    QTEST(texts("fCbEl"), "elements");
    QTEST(texts("fCbIso"), "isotopes");
    QTEST(dialog.currentIsotope(), "isotope");
    QCOMPARE(execWithKeys(dialog, find<QWidget>(dialog, "fCbIso"), {Qt::Key_Return}), int(QDialog::Accepted));
}

void tst_dialogs::isotopesFollowTheElement()
{
    MagresData data = molecule();
    data.QIso = {{QStringLiteral("Cl"), QStringLiteral("37Cl")}};
    WMagresQuadIsoDialog dialog(data, properties);
    QCOMPARE(dialog.currentElement() + dialog.currentIsotope(), QStringLiteral("H2H"));
    auto *elements = find<QComboBox>(dialog, "fCbEl");
    QTest::keyClick(elements, Qt::Key_End);
    QCOMPARE(dialog.currentElement() + dialog.currentIsotope(), QStringLiteral("Cl37Cl"));
    QTest::keyClick(elements, Qt::Key_Up);
    QCOMPARE(dialog.currentElement() + dialog.currentIsotope(), QStringLiteral("N14N"));
    QCOMPARE(execWithKeys(dialog, elements, {Qt::Key_Escape}), int(QDialog::Rejected));
}

QTEST_MAIN(tst_dialogs)
#include "tst_dialogs.moc"
