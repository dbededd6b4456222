// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/GestureHelp.h"

#include <QDialogButtonBox>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace Workbench {

namespace {

struct Gesture {
    const char *gesture; ///< empty: `effect` is a heading
    const char *effect;
};

constexpr Gesture rows[] = {
    {"", QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Spectrum")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Wheel"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp",
                       "zooms at the cursor; over an axis that axis alone (only the active item)")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Shift+wheel, + and -"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "intensity of a 1D spectrum, lowest contour of a 2D one")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Drag"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "marks the range or box to be shown")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Shift+drag, middle button"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "moves the spectrum")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Double click, Home"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "the full range again")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Arrow keys, Page Up, Page Down"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "move and zoom")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Click on a peak or its label"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "selects its atoms in molecule and table; with Ctrl further ones")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Ctrl+Page Up, Ctrl+Page Down"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "the previous or next spectrum of the stack becomes active")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Ctrl+drag"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp",
                       "moves a 1D spectrum up or down; with Shift makes it higher or lower")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "I, D"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "dragging marks integrals, or distances in ppm and Hz; Esc ends")},
    {"", QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Editing peaks (Ctrl+Shift+E; measured spectra)")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Click"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "adds a peak at the nearest top; with Shift right there")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Drag a mark"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "moves the peak to another top; with Shift anywhere")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Right click on a mark, Delete"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "takes the peak away")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Ctrl+click on a mark"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "counts the peak once more, for equivalent sites")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Esc"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "ends the editing")},
    {"", QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Molecule")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Drag, arrow keys"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "turns the molecule")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Wheel, + and -"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "zooms")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Click on an atom"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "selects it, its row and its peaks; with Ctrl further ones")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Double click beside the atoms, Home"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "turns it back")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "M"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp",
                       "clicks on two, three, four atoms measure distance, angle, torsion; Esc ends")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "N"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp",
                       "lists the nearest atoms of the selected one, with their dipolar couplings")},
    {"", QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Table")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Click on a title"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "sorts by that column: up, down, as in the file")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Right click on a title"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "shows and hides columns, as the menu Table does")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Ctrl+F"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "filters the rows: C,H   C2..C10   iso>100   cq=0.1..2")},
    {"", QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Compare (Ctrl+Shift+C): pairs of sites and measured lines")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Click on a row, arrow keys"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "lights the atoms, the peaks and the point of the pair")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Drag a row onto another, Alt+arrow keys"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "puts its line onto that site")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Enter, right click"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "all lines, to choose the one of this site")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Delete on a row"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "lets the line find its site by itself again")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Ctrl+Shift+R"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "ranks many structures by measured lines")},
    {"", QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Workspace")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Drag the title bar or the lower right corner"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "moves or resizes an item")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Tab, Shift+Tab"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "next or previous item")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Enter, menu key, right click"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "the item's menu")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Ctrl+wheel, Ctrl++, Ctrl+-, Ctrl+0"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "zooms; as wide as the window again")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Ctrl+Shift+P"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "the page as it is exported, and back")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Ctrl+Z, Ctrl+Y"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "takes changes back and makes them again")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "F2, Delete"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "renames or removes an item")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Drag a spectrum from the contents"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "puts it onto the plot where it falls")},
    {QT_TRANSLATE_NOOP("Workbench::GestureHelp", "Drop files"),
     QT_TRANSLATE_NOOP("Workbench::GestureHelp", "opens them; a measured spectrum goes onto the plot where it falls")},
};

} // namespace

GestureHelp::GestureHelp(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(tr("Keyboard and mouse"));
    QString html = QStringLiteral("<table cellspacing='0' cellpadding='3'>");
    for (const Gesture &row : rows) {
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

#include "moc_GestureHelp.cpp"
