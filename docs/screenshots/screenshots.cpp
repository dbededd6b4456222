// SPDX-License-Identifier: BSD-3-Clause
#include "ModalAnswers.h"
#include "PlotUser.h"
#include "WorkbenchUser.h"

#include "data/Language.h"
#include "window/WindowApplication.h"
#include "host/MainScene.h"
#include "window/MainView.h"
#include "host/PluginManager.h"
#include "window/WMainWindow.h"
#include "window/WorkBar.h"
#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/table/TableItem.h"

#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QFileDialog>
#include <QScreen>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

using namespace Workbench;
using namespace Qt::StringLiterals;

/// The pictures of the documentation: the guide's ten minutes as they are written there, then what its other chapters
/// show. Not a test, but the same hands at work, so that a picture that cannot be taken is a failure.
class Screenshots : public QObject {
    Q_OBJECT

public:
    explicit Screenshots(const QString &directory) : m_directory(directory) { }

private Q_SLOTS:
    void initTestCase();
    void tenMinutes();
    void powder();
    void litAtoms();
    void editedPeaks();
    void mapOfTwoDimensions();
    void cleanupTestCase() { m_host.reset(); }

private:
    WMainWindow &window() const { return m_host->window(); }
    NmrItem *spectrum() const { return m_host->scene().currentNmrItem(); }
    /// In the tool bar.
    void clickStep(const QString &text);
    void makeSpectrum(const Inputs &inputs, const QString &pictureName = {});
    void take(QWidget *widget, const QString &name);
    /// The window with the current spectrum in its middle.
    void takeSpectrum(int windowHeight, const QString &name);

    QDir m_directory;
    QTemporaryDir m_settings;
    const Language m_english = Language(QStringLiteral("en")); ///< with its plurals
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
    m_host->plugins().load(built(u"plugins/libmagresfilefilter.so"));
    // Nothing lights up under the mouse.
    QCursor::setPos(0, 0);
    window().show();
    QVERIFY(QTest::qWaitForWindowExposed(&window()));
}

/// As it is on the screen, once everything that is pending is laid out and painted.
void Screenshots::take(QWidget *widget, const QString &name)
{
    QVERIFY(QTest::qWaitForWindowExposed(widget));
    if (qobject_cast<QDialog *>(widget))
        QTRY_COMPARE(widget->size(), widget->sizeHint());
    QTest::qWait(300);
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

void Screenshots::clickStep(const QString &text)
{
    for (QAction *action : window().workBar()->actions()) {
        if (action->text() == text)
            return QTest::mouseClick(window().workBar()->widgetForAction(action), Qt::LeftButton);
    }
    userFailed(u"There is no step "_s + text);
}

void Screenshots::makeSpectrum(const Inputs &inputs, const QString &pictureName)
{
    m_dialogs.expect(u"MAGRES parameters"_s, [=, this](QDialog *dialog) {
        fill(dialog, inputs);
        if (!pictureName.isEmpty())
            take(dialog, pictureName);
        press(dialog, QDialogButtonBox::Ok);
    });
    clickStep(u"Create Spectrum"_s);
    QVERIFY(spectrum());
}

void Screenshots::tenMinutes()
{
    window().openFiles({QStringLiteral(SAMPLES "/paracetamol.magres")});
    m_table = m_host->scene().currentTableItem();
    QVERIFY(m_table);
    take(&window(), u"window.png"_s);
    makeSpectrum({{"fCbNucF2", u"13C"_s}}, u"dialog-1d.png"_s);
    m_dialogs.expect(u"Add Experimental Spectrum"_s, [](QDialog *dialog) {
        qobject_cast<QFileDialog *>(dialog)->selectFile(QStringLiteral(SAMPLES "/paracetamol-13C.csv"));
        dialog->accept();
    });
    clickStep(u"Add Measurement"_s);
    QCOMPARE(spectrum()->nmrData()->entryIds().size(), 2);
    take(&window(), u"stack-before.png"_s);
    m_dialogs.expect(u"New reference"_s, [this](QDialog *box) {
        take(box, u"auto-reference.png"_s);
        box->accept();
    });
    clickStep(u"Auto Reference"_s);
    const NoteBar &notes = *spectrum()->noteBar();
    QCOMPARE(notes.notes().value(0).action, u"Fit Range"_s);
    QTest::mouseClick(window().view()->viewport(), Qt::LeftButton, {},
                      window().view()->mapFromScene(notes.mapToScene(notes.actionRect(0).center())));
    QVERIFY(notes.notes().isEmpty());
    take(&window(), u"stack-after.png"_s);
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

void Screenshots::litAtoms()
{
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

void Screenshots::editedPeaks()
{
    window().openFiles({QStringLiteral(SAMPLES "/paracetamol-13C-affn.jdx")});
    spectrum()->nmrData()->removeEntry(spectrum()->nmrData()->entryIds().at(1));
    spectrum()->plot()->fullReset();
    choose(window(), spectrum(), {u"Show"_s, u"Peak Sticks"_s});
    choose(window(), spectrum(), {u"Edit &Peaks"_s});
    window().resize(1000, 490);
    window().view()->fitWidth();
    window().view()->centerOn(spectrum());
    QTest::qWait(300); // laid out
    spectrum()->plot()->xAxis->setRange(105, 165);
    spectrum()->plot()->replot();
    const PlotUser user(window(), spectrum());
    const Spectrum &measured = spectrum()->nmrData()->spectrum(spectrum()->nmrData()->entryIds().last());
    const QPointF top = user.topOf(measured.peaks.at(9));
    user.click(top);
    user.move(top + QPointF(30, 30));
    take(&window(), u"peaks-edited.png"_s);
    QTest::keyClick(window().view(), Qt::Key_Escape);
}

void Screenshots::mapOfTwoDimensions()
{
    makeSpectrum({{"fCbDims", u"2D Spectrum"_s},
                  {"fCbNucF2", u"1H"_s},
                  {"fSpCSRefF2", 30.5},
                  {"fSpLwF2", 100.0},
                  {"fCbNucF1", u"13C"_s},
                  {"fSpCSRefF1", 172.4},
                  {"fSpLwF1", 150.0},
                  {"fCbPtsF1", u"512"_s}});
    takeSpectrum(740, u"spectrum-2d.png"_s);
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
