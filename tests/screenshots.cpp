// SPDX-License-Identifier: BSD-3-Clause
#include "ModalAnswers.h"
#include "PlotUser.h"
#include "WorkbenchUser.h"

#include "window/WindowApplication.h"
#include "host/MainScene.h"
#include "window/MainView.h"
#include "host/PluginManager.h"
#include "window/WMainWindow.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/table/TableItem.h"

#include <QApplication>
#include <QDir>
#include <QScreen>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

using namespace Workbench;
using namespace Qt::StringLiterals;

/// The pictures of the documentation: a walk through the window from a file to a referenced spectrum. Not a test, but
/// the same hands at work, so that a picture that cannot be taken is a failure.
class Screenshots : public QObject {
    Q_OBJECT

public:
    explicit Screenshots(const QString &directory) : m_directory(directory) { }

private Q_SLOTS:
    void initTestCase();
    void file();
    void dialogs();
    void powder();
    void litAtoms();
    void stack();
    void editedPeaks();
    void mapOfTwoDimensions();
    void contours();
    void cleanupTestCase() { m_host.reset(); }

private:
    WMainWindow &window() const { return m_host->window(); }
    NmrItem *spectrum() const { return m_host->scene().currentNmrItem(); }
    void makeSpectrum(const Inputs &inputs, const QString &pictureName = {});
    void take(QWidget *widget, const QString &name);
    /// The window with the current spectrum in its middle.
    void takeSpectrum(int windowHeight, const QString &name);

    QDir m_directory;
    QTemporaryDir m_settings;
    std::unique_ptr<WindowApplication> m_host;
    ModalAnswers m_dialogs;
    TableItem *m_table = nullptr;
};

void Screenshots::initTestCase()
{
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    QVERIFY(m_directory.mkpath(u"."_s));
    m_host = std::make_unique<WindowApplication>();
    m_host->plugins().load(QStringLiteral(PLUGIN_FILE));
    window().resize(1000, 560);
    window().show();
    QVERIFY(QTest::qWaitForWindowExposed(&window()));
}

/// As it is on the screen, once everything that is pending is laid out and painted.
void Screenshots::take(QWidget *widget, const QString &name)
{
    QVERIFY(QTest::qWaitForWindowExposed(widget));
    if (qobject_cast<QDialog *>(widget))
        QTRY_COMPARE(widget->size(), widget->sizeHint());
    widget->repaint();
    QCoreApplication::processEvents();
    const QString file = m_directory.filePath(name);
    QVERIFY2(widget->screen()->grabWindow(widget->winId()).save(file), qPrintable(file));
}

void Screenshots::takeSpectrum(int windowHeight, const QString &name)
{
    window().resize(1000, windowHeight);
    QCoreApplication::processEvents();
    window().view()->fitWidth();
    window().view()->centerOn(spectrum());
    take(&window(), name);
}

void Screenshots::makeSpectrum(const Inputs &inputs, const QString &pictureName)
{
    m_dialogs.expect(u"MAGRES parameters"_s, [=, this](QDialog *dialog) {
        fill(dialog, inputs);
        if (!pictureName.isEmpty())
            take(dialog, pictureName);
        press(dialog, QDialogButtonBox::Ok);
    });
    choose(window(), m_table, {u"Create spectrum..."_s});
    QVERIFY(spectrum());
}

void Screenshots::file()
{
    window().openFiles({QStringLiteral(SAMPLES "/paracetamol.magres")});
    m_table = m_host->scene().currentTableItem();
    QVERIFY(m_table);
    QTest::qWait(50); // the contents are listed
    m_table->view()->selectRow(4);
    take(&window(), u"window.png"_s);
    m_table->view()->clearSelection();
}

void Screenshots::dialogs()
{
    m_dialogs.expect(u"Select quadrupolar isotope"_s, [this](QDialog *dialog) {
        fill(dialog, {{"fCbEl", u"N"_s}});
        take(dialog, u"dialog-isotope.png"_s);
        press(dialog, QDialogButtonBox::Cancel);
    });
    choose(window(), m_table, {u"Set Quadrupolar Isotope..."_s});
    makeSpectrum({{"fCbNucF2", u"13C"_s}, {"fSpCSRefF2", 170.0}}, u"dialog-1d.png"_s);
}

void Screenshots::powder()
{
    m_dialogs.expect(u"Powder Spectrum"_s, [this](QDialog *dialog) {
        fill(dialog, {{"nucleus", u"17O"_s}, {"frequency", 800.0}, {"reference", 287.0}, {"lorentzian", 100.0}});
        dialog->resize(1000, 640);
        QTest::qWait(500); // the preview
        QVERIFY(QTest::qWaitForWindowExposed(dialog));
        QVERIFY(dialog->screen()->grabWindow(dialog->winId()).save(m_directory.filePath(u"dialog-powder.png"_s)));
        dialog->reject();
    });
    choose(window(), m_table, {u"Create Powder Spectrum..."_s});
}

void Screenshots::stack()
{
    window().openFiles({QStringLiteral(SAMPLES "/paracetamol-13C.csv")});
    QCOMPARE(spectrum()->nmrData()->entryIds().size(), 2);
    takeSpectrum(490, u"stack-before.png"_s);
    m_dialogs.expect(u"New reference"_s, [this](QDialog *box) {
        take(box, u"auto-reference.png"_s);
        box->accept();
    });
    choose(window(), spectrum(), {u"MAGRES"_s, u"Auto reference"_s});
    takeSpectrum(490, u"stack-after.png"_s);
}

void Screenshots::mapOfTwoDimensions()
{
    makeSpectrum({{"fCbDims", u"2D Spectrum"_s},
                  {"fCbNucF2", u"1H"_s},
                  {"fSpCSRefF2", 30.5},
                  {"fSpLwF2", 100.0},
                  {"fCbNucF1", u"13C"_s},
                  {"fSpCSRefF1", 172.4},
                  {"fSpLwF1", 150.0}},
                 u"dialog-2d.png"_s);
    takeSpectrum(740, u"spectrum-2d.png"_s);
}

void Screenshots::editedPeaks()
{
    window().openFiles({QStringLiteral(SAMPLES "/paracetamol-13C-affn.jdx")});
    spectrum()->nmrData()->removeEntry(spectrum()->nmrData()->entryIds().at(1));
    spectrum()->plot()->fullReset();
    choose(window(), spectrum(), {u"Show"_s, u"Peak Sticks"_s});
    choose(window(), spectrum(), {u"Edit &Peaks"_s});
    takeSpectrum(490, u"peaks-zoomed.png"_s); // laid out
    spectrum()->plot()->xAxis->setRange(105, 165);
    spectrum()->plot()->replot();
    const PlotUser user(window(), spectrum());
    const Spectrum &measured = spectrum()->nmrData()->spectrum(spectrum()->nmrData()->entryIds().last());
    const QPointF top = user.topOf(measured.peaks.at(9));
    user.click(top);
    user.move(top + QPointF(30, 30));
    takeSpectrum(490, u"peaks-edited.png"_s);
    m_dialogs.expect(u"Pick peaks"_s, [this](QDialog *dialog) {
        take(dialog, u"peaks-pick.png"_s);
        press(dialog, QDialogButtonBox::Cancel);
    });
    choose(window(), spectrum(), {u"Pic&k Peaks..."_s});
    QTest::keyClick(window().view(), Qt::Key_Escape);
    user.move({300, 300});
    take(&window(), u"peaks-zoomed.png"_s);
}

void Screenshots::contours()
{
    m_dialogs.expect(u"Contour levels"_s, [this](QDialog *dialog) {
        take(dialog, u"contour-levels.png"_s);
        press(dialog, QDialogButtonBox::Cancel);
    });
    choose(window(), spectrum(), {u"Contour Levels..."_s});
}

void Screenshots::litAtoms()
{
    window().resize(1000, 840);
    QCoreApplication::processEvents();
    window().view()->centerOn(0, 0);
    for (DocumentItem *item : m_host->scene().documentItems())
        if (auto *molecule = qobject_cast<MoleculeItem *>(item))
            choose(window(), molecule, {u"Labels"_s, u"Label of the File"_s});
    window().view()->centerOn(0, 0);
    QTest::qWait(50);
    const PlotUser user(window(), spectrum());
    const QPointF top = user.topOf(spectrum()->nmrData()->shownSpectrum().peaks.at(5));
    user.click(top);
    user.move(top + QPointF(30, 60));
    take(&window(), u"atoms-of-a-peak.png"_s);
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"magres-tests"_s);
    QCoreApplication::setApplicationName(u"screenshots"_s);
    if (argc < 2)
        qFatal("Usage: screenshots DIRECTORY [dark]");
    if (argc > 2)
        QApplication::setPalette(QPalette(QColor(0x35, 0x36, 0x3a)));
    Screenshots screenshots(QFile::decodeName(argv[1]));
    return QTest::qExec(&screenshots, QStringList{QString::fromLocal8Bit(argv[0])});
}

#include "screenshots.moc"
