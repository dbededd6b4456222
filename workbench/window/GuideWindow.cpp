// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/GuideWindow.h"

#include "window/StartHints.h"

#include <QDesktopServices>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QTextBlock>
#include <QVBoxLayout>

namespace Workbench {

namespace {

/// As the anchors of links are made from headings.
QString anchorOf(const QString &heading)
{
    QString anchor;
    for (QChar c : heading.toLower()) {
        if (c.isLetterOrNumber() || c == u'-')
            anchor += c;
        else if (c.isSpace())
            anchor += u'-';
    }
    return anchor;
}

} // namespace

GuideWindow::GuideWindow(QWidget *parent) : QDialog(parent)
{
    StartHints::initResources();
    setWindowTitle(tr("User guide"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *text = new QTextBrowser;
    text->setObjectName(QStringLiteral("guide"));
    text->setAccessibleName(windowTitle());
    text->setOpenLinks(false);
    text->setSearchPaths({QStringLiteral(":/docs")});
    text->setSource(QUrl(QStringLiteral("qrc:/docs/guide.md")), QTextDocument::MarkdownResource);
    connect(text, &QTextBrowser::anchorClicked, this, [text](const QUrl &link) {
        if (link.scheme().startsWith(QLatin1String("http"))) {
            QDesktopServices::openUrl(link);
            return;
        }
        for (QTextBlock block = text->document()->begin(); block.isValid(); block = block.next()) {
            if (block.blockFormat().headingLevel() > 0 && anchorOf(block.text()) == link.fragment()) {
                text->setTextCursor(QTextCursor(block));
                text->ensureCursorVisible();
            }
        }
    });
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(text);
    resize(820, 680);
}

} // namespace Workbench

#include "moc_GuideWindow.cpp"
