// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/GestureHelp.h"

#include <QDialogButtonBox>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace Workbench {

namespace {

struct Row {
    const char *gesture; ///< empty: `effect` is a heading
    const char *effect;
};

constexpr Row rows[] = {
    {"", QT_TRANSLATE_NOOP("GestureHelp", "Spectrum")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Wheel"),
     QT_TRANSLATE_NOOP("GestureHelp", "zooms at the cursor; over an axis that axis alone (only the active item)")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Shift+wheel, + and -"),
     QT_TRANSLATE_NOOP("GestureHelp", "intensity of a 1D spectrum, lowest contour of a 2D one")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Drag"), QT_TRANSLATE_NOOP("GestureHelp", "marks the range or box to be shown")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Shift+drag, middle button"),
     QT_TRANSLATE_NOOP("GestureHelp", "moves the spectrum")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Double click, Home"), QT_TRANSLATE_NOOP("GestureHelp", "the full range again")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Arrow keys, Page Up, Page Down"),
     QT_TRANSLATE_NOOP("GestureHelp", "move and zoom")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Click on a peak or its label"),
     QT_TRANSLATE_NOOP("GestureHelp", "selects its atoms in molecule and table; with Ctrl further ones")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Ctrl+Page Up, Ctrl+Page Down"),
     QT_TRANSLATE_NOOP("GestureHelp", "the previous or next spectrum of the stack becomes active")},
    {"", QT_TRANSLATE_NOOP("GestureHelp", "Editing peaks (Ctrl+Shift+E; measured spectra)")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Click"),
     QT_TRANSLATE_NOOP("GestureHelp", "adds a peak at the nearest top; with Shift right there")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Drag a mark"),
     QT_TRANSLATE_NOOP("GestureHelp", "moves the peak to another top; with Shift anywhere")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Right click on a mark, Delete"),
     QT_TRANSLATE_NOOP("GestureHelp", "takes the peak away")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Ctrl+click on a mark"),
     QT_TRANSLATE_NOOP("GestureHelp", "counts the peak once more, for equivalent sites")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Esc"), QT_TRANSLATE_NOOP("GestureHelp", "ends the editing")},
    {"", QT_TRANSLATE_NOOP("GestureHelp", "Molecule")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Drag, arrow keys"), QT_TRANSLATE_NOOP("GestureHelp", "turns the molecule")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Wheel, + and -"), QT_TRANSLATE_NOOP("GestureHelp", "zooms")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Click on an atom"),
     QT_TRANSLATE_NOOP("GestureHelp", "selects it, its row and its peaks; with Ctrl further ones")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Double click beside the atoms, Home"),
     QT_TRANSLATE_NOOP("GestureHelp", "turns it back")},
    {"", QT_TRANSLATE_NOOP("GestureHelp", "Compare (Ctrl+Shift+C): pairs of sites and measured lines")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Click on a row, arrow keys"),
     QT_TRANSLATE_NOOP("GestureHelp", "lights the atoms, the peaks and the point of the pair")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Drag a row onto another, Alt+arrow keys"),
     QT_TRANSLATE_NOOP("GestureHelp", "puts its line onto that site")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Enter, right click"),
     QT_TRANSLATE_NOOP("GestureHelp", "all lines, to choose the one of this site")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Delete on a row"),
     QT_TRANSLATE_NOOP("GestureHelp", "lets the line find its site by itself again")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Ctrl+Shift+R"),
     QT_TRANSLATE_NOOP("GestureHelp", "ranks many structures by measured lines")},
    {"", QT_TRANSLATE_NOOP("GestureHelp", "Workspace")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Drag the title bar or the lower right corner"),
     QT_TRANSLATE_NOOP("GestureHelp", "moves or resizes an item")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Tab, Shift+Tab"), QT_TRANSLATE_NOOP("GestureHelp", "next or previous item")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Enter, menu key, right click"),
     QT_TRANSLATE_NOOP("GestureHelp", "the item's menu")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Ctrl+wheel, Ctrl++, Ctrl+-, Ctrl+0"),
     QT_TRANSLATE_NOOP("GestureHelp", "zooms; as wide as the window again")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Ctrl+Shift+P"),
     QT_TRANSLATE_NOOP("GestureHelp", "the page as it is exported, and back")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Ctrl+Z, Ctrl+Y"),
     QT_TRANSLATE_NOOP("GestureHelp", "takes changes back and makes them again")},
    {QT_TRANSLATE_NOOP("GestureHelp", "F2, Delete"), QT_TRANSLATE_NOOP("GestureHelp", "renames or removes an item")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Drag a spectrum from the contents"),
     QT_TRANSLATE_NOOP("GestureHelp", "puts it onto the plot where it falls")},
    {QT_TRANSLATE_NOOP("GestureHelp", "Drop files"),
     QT_TRANSLATE_NOOP("GestureHelp", "opens them; a measured spectrum goes onto the plot where it falls")},
};

} // namespace

GestureHelp::GestureHelp(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(tr("Keyboard and mouse"));
    QString html = QStringLiteral("<table cellspacing='0' cellpadding='3'>");
    for (const Row &row : rows) {
        if (*row.gesture)
            html += QStringLiteral("<tr><td><b>%1</b>&nbsp;&nbsp;</td><td>%2</td></tr>")
                        .arg(tr(row.gesture).toHtmlEscaped(), tr(row.effect).toHtmlEscaped());
        else
            html += QStringLiteral("<tr><td colspan='2'><h4>%1</h4></td></tr>").arg(tr(row.effect).toHtmlEscaped());
    }
    auto *text = new QTextBrowser;
    text->setHtml(html + QStringLiteral("</table>"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(buttons);
    resize(720, 640);
}

} // namespace Workbench
