// SPDX-License-Identifier: BSD-3-Clause
#include "WindowTest.h"

#include "Failure.h"
#include "document/DocumentState.h"
#include "formats/DocumentFile.h"

void WindowTest::start()
{
    failOnWarningsOfQt();
    m_host.reset();
    m_host = std::make_unique<WindowApplication>();
    m_host->loadPlugins(built(u"plugins"));
    for (const PluginManager::Failure &failure : m_host->plugins().failures())
        QFAIL(qPrintable(failure.reason));
    window().resize(1280, 720);
    window().show();
    QVERIFY(QTest::qWaitForWindowExposed(&window()));
}

void WindowTest::clear()
{
    failOnWarningsOfQt();
    if (!m_host)
        start();
    scene().removeAll();
    QSettings().clear();
}

QByteArray WindowTest::state() const
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    DocumentFile::write(buffer, DocumentState::capture(scene(), m_host->documentData(), &m_host->plugins()));
    return buffer.data();
}

QAction *WindowTest::entry(const QWidget *menu, const QString &text)
{
    for (QAction *action : menu->actions())
        if (action->text().remove(u'&') == text)
            return action;
    return nullptr;
}

QMenu *WindowTest::menu(const QString &title) const
{
    QMenu *menu = entry(window().menuBar(), title)->menu();
    Q_EMIT menu->aboutToShow();
    return menu;
}

QStringList WindowTest::doubledMnemonicsOfMenus() const
{
    QStringList found{doubledMnemonics(entriesOf(window().menuBar()))};
    for (const QAction *action : window().menuBar()->actions())
        found.append(doubledMnemonics(entriesOf(menu(action->text().remove(u'&')))));
    return found;
}

QAction *WindowTest::command(const QString &text) const
{
    window().workBar()->refresh();
    for (QAction *action : window().workBar()->actions())
        if (action->iconText() == text)
            return action;
    qFatal("no command %s", qPrintable(text));
}

void WindowTest::accept(const QString &title, const Inputs &inputs, QString *text)
{
    m_dialogs.expect(title, [inputs, text](QDialog *dialog) {
        if (auto *box = qobject_cast<QMessageBox *>(dialog); box && text)
            *text = box->text();
        fill(dialog, inputs);
        dialog->accept();
    });
}

NmrItem *WindowTest::createSpectrum(const Inputs &inputs)
{
    accept(u"MAGRES parameters"_s, inputs);
    command(u"Create Spectrum"_s)->trigger();
    return plot();
}

void WindowTest::cleanup()
{
    const QStringList missing = m_dialogs.missing();
    m_dialogs.forget();
    QCOMPARE(missing, QStringList());
    QVERIFY(!QGuiApplication::overrideCursor());
    QVERIFY(!QApplication::activePopupWidget());
}

#include "moc_WindowTest.cpp"
