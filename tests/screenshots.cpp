// SPDX-License-Identifier: BSD-3-Clause
#include "ModalAnswers.h"
#include "WorkbenchUser.h"

#include "host/HostApplication.h"
#include "host/MainScene.h"
#include "host/MainView.h"
#include "host/PluginManager.h"
#include "host/WMainWindow.h"
#include "items/NmrData.h"
#include "items/NmrItem.h"
#include "items/TableItem.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

/// The pictures of the documentation: a walk through the window from a file to a referenced spectrum. Not a test, but
/// the same hands at work, so that a picture that cannot be taken is a failure.
class Screenshots : public QObject {
    Q_OBJECT

public:
    explicit Screenshots(const QString &directory) : m_directory(directory) { }

private Q_SLOTS:
    void initTestCase()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QVERIFY(m_directory.mkpath(u"."_s));
        m_host = std::make_unique<HostApplication>(false);
        m_host->plugins().load(QStringLiteral(PLUGIN_FILE));
        window().resize(1000, 560);
        window().show();
        QVERIFY(QTest::qWaitForWindowExposed(&window()));
    }

    void file()
    {
        for (QGraphicsWidget *item : window().readFile(QStringLiteral(SAMPLE_DIRECTORY "/paracetamol.magres")).items)
            if (auto *table = qobject_cast<TableItem *>(item))
                m_table = table;
        QVERIFY(m_table);
        window().view()->fitPageWidth();
        m_table->view()->selectRow(4);
        take(&window(), u"window.png"_s);
        m_table->view()->clearSelection();
    }

    void dialogs()
    {
        m_dialogs.expect(u"Select quadrupolar isotope"_s, [this](QDialog *dialog) {
            fill(dialog, {{"fCbEl", u"N"_s}});
            take(dialog, u"dialog-isotope.png"_s);
            press(dialog, QDialogButtonBox::Cancel);
        });
        choose(window(), m_table, {u"Set Quadrupolar Isotope..."_s});
        makeSpectrum({{"fCbNucF2", u"13C"_s}, {"fSpCSRefF2", 170.0}}, u"dialog-1d.png"_s);
    }

    void stack()
    {
        window().openFiles({QStringLiteral(SAMPLE_DIRECTORY "/paracetamol-13C.csv")});
        QCOMPARE(spectrum()->nmrData()->entryIds().size(), 2);
        takeSpectrum(490, u"stack-before.png"_s);
        m_dialogs.expect(u"New reference"_s, [this](QDialog *box) {
            take(box, u"auto-reference.png"_s);
            box->accept();
        });
        choose(window(), spectrum(), {u"MAGRES"_s, u"Auto reference"_s});
        takeSpectrum(490, u"stack-after.png"_s);
    }

    void mapOfTwoDimensions()
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

    void cleanupTestCase() { m_host.reset(); }

private:
    WMainWindow &window() const { return m_host->window(); }
    NmrItem *spectrum() const { return m_host->scene().currentNmrItem(); }

    void makeSpectrum(const Inputs &inputs, const QString &pictureName)
    {
        m_dialogs.expect(u"MAGRES parameters"_s, [=, this](QDialog *dialog) {
            fill(dialog, inputs);
            take(dialog, pictureName);
            press(dialog, QDialogButtonBox::Ok);
        });
        choose(window(), m_table, {u"Create spectrum..."_s});
        QVERIFY(spectrum());
    }

    /// As it is on the screen, once everything that is pending is laid out and painted.
    void take(QWidget *widget, const QString &name)
    {
        QVERIFY(QTest::qWaitForWindowExposed(widget));
        if (qobject_cast<QDialog *>(widget))
            QTRY_COMPARE(widget->size(), widget->sizeHint());
        widget->repaint();
        QCoreApplication::processEvents();
        const QString file = m_directory.filePath(name);
        QVERIFY2(widget->screen()->grabWindow(widget->winId()).save(file), qPrintable(file));
    }

    /// The window with the current spectrum in its middle.
    void takeSpectrum(int windowHeight, const QString &name)
    {
        window().resize(1000, windowHeight);
        QCoreApplication::processEvents();
        window().view()->fitPageWidth();
        window().view()->centerOn(spectrum());
        take(&window(), name);
    }

    QDir m_directory;
    QTemporaryDir m_settings;
    std::unique_ptr<HostApplication> m_host;
    ModalAnswers m_dialogs;
    TableItem *m_table = nullptr;
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"magres-tests"_s);
    QCoreApplication::setApplicationName(u"screenshots"_s);
    if (argc != 2)
        qFatal("Usage: screenshots DIRECTORY");
    Screenshots screenshots(QFile::decodeName(argv[1]));
    return QTest::qExec(&screenshots, QStringList{QString::fromLocal8Bit(argv[0])});
}

#include "screenshots.moc"
