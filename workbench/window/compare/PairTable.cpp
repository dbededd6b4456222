// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/compare/PairTable.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace Workbench {

namespace {

constexpr int siteRole = Qt::UserRole;
constexpr int linesRole = Qt::UserRole + 1;
constexpr int sortRole = Qt::UserRole + 2;

const QString dash = QStringLiteral("–");

const QString &mimeType()
{
    static const QString type = QStringLiteral("application/x-magres-workbench-line");
    return type;
}

class Row : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;

    bool operator<(const QTreeWidgetItem &other) const override
    {
        const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
        const QVariant mine = data(column, sortRole), others = other.data(column, sortRole);
        if (mine.isValid() && others.isValid())
            return mine.toDouble() < others.toDouble();
        // What has no number goes to one end.
        if (mine.isValid() != others.isValid())
            return others.isValid();
        return text(column).localeAwareCompare(other.text(column)) < 0;
    }

    void setNumber(int column, double value)
    {
        setText(column, QString::number(value, 'f', 2));
        setData(column, sortRole, value);
        setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
};

QVariantList toList(const std::vector<int> &lines)
{
    return {lines.begin(), lines.end()};
}

/// Whether the line of a pair is that of another one too.
bool isShared(const LinePairing &pairing, int site)
{
    const std::vector<int> &own = pairing.linesOf[std::size_t(site)];
    for (int other = 0; other < int(pairing.linesOf.size()); ++other) {
        const std::vector<int> &lines = pairing.linesOf[std::size_t(other)];
        if (other != site && std::find_first_of(own.begin(), own.end(), lines.begin(), lines.end()) != own.end())
            return true;
    }
    return false;
}

} // namespace

PairTable::PairTable(QWidget *parent) : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("pairs"));
    setAccessibleName(tr("Pairs of sites and measured lines"));
    setRootIsDecorated(false);
    setIndentation(0);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionMode(SingleSelection);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setHeaderLabels({tr("Site"), tr("Calculated"), tr("Measured"), tr("Difference"), tr("Paired")});
    const QString tips[] = {
        tr("The site by its first atom, × the atoms that the space group maps onto it"),
        tr("Calculated shift, ppm: reference + slope · isotropic shielding"),
        tr("Position of the measured line, ppm; the mean where a site has several"),
        tr("Calculated less measured, ppm"),
        tr("Assigned: this line was put onto the site, here or by the peak list. Shared: other sites have the same "
           "line"),
    };
    for (int column = Site; column <= How; ++column) {
        headerItem()->setToolTip(column, tips[column]);
        if (column >= Calculated && column <= Difference)
            headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(How, QHeaderView::Stretch);
    setSortingEnabled(true);
    sortByColumn(Calculated, Qt::DescendingOrder);
}

void PairTable::setComparison(const PeakComparison *compared)
{
    const int siteBefore = siteOf(currentItem());
    const int scrollBefore = verticalScrollBar()->value();
    setSortingEnabled(false);
    clear();
    if (compared) {
        const NucleusComparison &comparison = compared->comparison;
        const auto &lines = compared->measurement.lines;
        const auto isByHand = [&](int line) { return !lines[std::size_t(line)].sites.isEmpty(); };
        for (int site = 0; site < int(comparison.sites.size()); ++site) {
            auto *row = new Row(this);
            row->setText(Site, comparison.sites[std::size_t(site)].name);
            row->setData(Site, siteRole, site);
            const std::vector<int> &own = comparison.pairing.linesOf[std::size_t(site)];
            row->setData(Site, linesRole, toList(own));
            const double calculated = comparison.agreement.reference
                + comparison.agreement.slope * comparison.sites[std::size_t(site)].shielding;
            row->setNumber(Calculated, calculated);
            QStringList how;
            if (std::any_of(own.begin(), own.end(), isByHand))
                how.append(tr("assigned"));
            if (isShared(comparison.pairing, site))
                how.append(tr("shared"));
            if (own.empty())
                how.append(tr("no line"));
            row->setText(How, how.join(QLatin1String(", ")));
        }
        for (const SitePair &pair : comparison.agreement.pairs) {
            auto *row = static_cast<Row *>(topLevelItem(pair.site));
            row->setNumber(Measured, pair.measured);
            row->setNumber(Difference, pair.difference());
        }
        for (int line : comparison.pairing.leftOut) {
            auto *row = new Row(this);
            row->setText(Site, dash);
            row->setData(Site, siteRole, -1);
            row->setData(Site, linesRole, toList({line}));
            row->setNumber(Measured, lines[std::size_t(line)].shift);
            row->setText(How, tr("left out"));
        }
    }
    setSortingEnabled(true);
    verticalScrollBar()->setValue(scrollBefore);
    if (QTreeWidgetItem *row = siteBefore >= 0 ? rowOfSite(siteBefore) : nullptr)
        setCurrentItem(row);
}

int PairTable::siteOf(const QTreeWidgetItem *row)
{
    return row ? row->data(Site, siteRole).toInt() : -1;
}

std::vector<int> PairTable::linesOf(const QTreeWidgetItem *row)
{
    std::vector<int> lines;
    for (const QVariant &line : row ? row->data(Site, linesRole).toList() : QVariantList())
        lines.push_back(line.toInt());
    return lines;
}

QTreeWidgetItem *PairTable::rowOfSite(int site) const
{
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (siteOf(topLevelItem(i)) == site)
            return topLevelItem(i);
    }
    return nullptr;
}

bool PairTable::event(QEvent *event)
{
    // Delete means the table's row while it has the focus, and not the window's item.
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Delete) {
        event->accept();
        return true;
    }
    return QTreeWidget::event(event);
}

void PairTable::keyPressEvent(QKeyEvent *event)
{
    QTreeWidgetItem *row = currentItem();
    const bool isAlt = event->modifiers().testFlag(Qt::AltModifier);
    if (row && isAlt && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down))
        moveLine(row, event->key() == Qt::Key_Up ? itemAbove(row) : itemBelow(row));
    else if (row && event->key() == Qt::Key_Delete)
        Q_EMIT lineFreed(linesOf(row));
    else if (row && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        askForMenu(row);
    else
        QTreeWidget::keyPressEvent(event);
}

void PairTable::contextMenuEvent(QContextMenuEvent *event)
{
    QTreeWidgetItem *row = event->reason() == QContextMenuEvent::Mouse ? itemAt(event->pos()) : currentItem();
    if (row && event->reason() == QContextMenuEvent::Mouse)
        Q_EMIT menuWanted(row, event->globalPos());
    else if (row)
        askForMenu(row);
}

void PairTable::askForMenu(QTreeWidgetItem *row)
{
    Q_EMIT menuWanted(row, viewport()->mapToGlobal(visualItemRect(row).bottomLeft()));
}

QStringList PairTable::mimeTypes() const
{
    return {mimeType()};
}

QMimeData *PairTable::mimeData(const QList<QTreeWidgetItem *> &rows) const
{
    if (rows.isEmpty() || linesOf(rows.constFirst()).empty())
        return nullptr;
    auto *dragged = new QMimeData;
    dragged->setData(mimeType(), QByteArray::number(indexOfTopLevelItem(rows.constFirst())));
    return dragged;
}

void PairTable::dragMoveEvent(QDragMoveEvent *event)
{
    QTreeWidget::dragMoveEvent(event);
    event->setAccepted(event->source() == this && siteOf(itemAt(event->position().toPoint())) >= 0);
}

void PairTable::dropEvent(QDropEvent *event)
{
    // The rows are made anew in answer: no view may move them itself after that.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    if (event->source() == this)
        dropOnRow(*event->mimeData(), event->position().toPoint());
}

void PairTable::dropOnRow(const QMimeData &dragged, const QPoint &place)
{
    bool isRow = false;
    const int from = dragged.data(mimeType()).toInt(&isRow);
    if (isRow)
        moveLine(topLevelItem(from), itemAt(place));
}

void PairTable::moveLine(const QTreeWidgetItem *from, const QTreeWidgetItem *to)
{
    if (!from || !to || from == to)
        return;
    if (linesOf(from).empty())
        Q_EMIT reported(tr("This site has no line that could be moved"));
    else if (siteOf(to) < 0)
        Q_EMIT reported(tr("Lines are put onto sites; Delete lets a line find its site by itself"));
    else
        Q_EMIT lineMoved(linesOf(from), siteOf(from), siteOf(to));
}

} // namespace Workbench

#include "moc_PairTable.cpp"
