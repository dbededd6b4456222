// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/table/TableItem.h"

#include "data/PluginCall.h"
#include "items/table/TableModel.h"

#include <QClipboard>
#include <QCollator>
#include <QGraphicsProxyWidget>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace Workbench {

namespace {

constexpr int rowHeight = 21;
constexpr int fontSize = 12;
constexpr int cellPadding = 6;
constexpr int widestColumn = 260;
constexpr int mostMeasuredRows = 1000;

/// Shows the view in windows, and lets the item draw the table itself on paper, where a widget would turn to pixels.
class TableProxy : public QGraphicsProxyWidget {
public:
    explicit TableProxy(TableItem *item) : QGraphicsProxyWidget(item), m_item(item) { }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *target) override
    {
        m_item->ensureFitted();
        if (DocumentItem::isPageOutput(painter, target))
            m_item->paintTable(painter, rect());
        else
            QGraphicsProxyWidget::paint(painter, option, target);
    }

private:
    TableItem *m_item;
};

/// Black on white with a blue selection, whatever the desktop's palette: the table lies on a white page.
QPalette pagePalette()
{
    QPalette palette(QColor(0xf1, 0xf3, 0xf6), Qt::white);
    palette.setColor(QPalette::WindowText, Qt::black);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::ButtonText, Qt::black);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf6, 0xf8, 0xfa));
    palette.setColor(QPalette::Highlight, QColor(0xcf, 0xe3, 0xf7));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    return palette;
}

QFont tableFont()
{
    QFont font;
    font.setPixelSize(fontSize);
    return font;
}

QFont headerFont()
{
    QFont font = tableFont();
    font.setBold(true);
    return font;
}

/// Copies rows where the base class would copy a single cell.
class TableView : public QTableView {
public:
    explicit TableView(TableItem *item) : m_item(item) { }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (!event->matches(QKeySequence::Copy))
            return QTableView::keyPressEvent(event);
        m_item->copySelection();
        event->accept();
    }

private:
    TableItem *m_item;
};

/// Numbers by size, texts by the alphabet but with the numbers in them by size (C2 before C10), empty cells last.
class CellOrder {
public:
    CellOrder(const TableModel &model, int column, Qt::SortOrder order) : m_descending(order == Qt::DescendingOrder)
    {
        for (int row = 0; row < model.rowCount(); ++row)
            m_values.append(model.data(model.index(row, column), Qt::EditRole));
        m_collator.setNumericMode(true);
    }

    bool operator()(int a, int b) const
    {
        const bool hasA = isComparable(m_values[a]), hasB = isComparable(m_values[b]);
        if (!hasA || !hasB)
            return hasA && !hasB;
        const int comparison = compared(m_values[a], m_values[b]);
        return m_descending ? comparison > 0 : comparison < 0;
    }

private:
    static bool isComparable(const QVariant &value)
    {
        return value.typeId() == QMetaType::Double ? !std::isnan(value.toDouble()) : !value.toString().isEmpty();
    }
    int compared(const QVariant &a, const QVariant &b) const
    {
        if (a.typeId() == QMetaType::Double && b.typeId() == QMetaType::Double)
            return (a.toDouble() > b.toDouble()) - (a.toDouble() < b.toDouble());
        return m_collator.compare(a.toString(), b.toString());
    }

    QVariantList m_values;
    QCollator m_collator{QLocale::c()};
    bool m_descending;
};

QTableView *makeView(TableItem *item, TableModel *model)
{
    auto *view = new TableView(item);
    const QPalette palette = pagePalette();
    for (QWidget *widget : std::initializer_list<QWidget *>{view, view->horizontalHeader(), view->viewport()}) {
        widget->setPalette(palette);
        widget->setFont(tableFont());
    }
    view->setFrameShape(QFrame::NoFrame);
    view->setAlternatingRowColors(true);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setCornerButtonEnabled(false);
    view->setWordWrap(false);
    // Tab leads on to the next item of the page.
    view->setTabKeyNavigation(false);
    view->setGridStyle(Qt::SolidLine);
    view->verticalHeader()->hide();
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->verticalHeader()->setMinimumSectionSize(rowHeight);
    view->verticalHeader()->setDefaultSectionSize(rowHeight);
    view->horizontalHeader()->setFixedHeight(rowHeight);
    view->horizontalHeader()->setHighlightSections(false);
    view->setModel(model);
    return view;
}

} // namespace

TableItem::TableItem(QObject *table, const QUuid &id, Looks looks, QGraphicsItem *parent)
    : DocumentItem(id, parent),
      m_table(table),
      m_model(new TableModel(table, this)),
      m_view(looks == WithView ? makeView(this, m_model) : nullptr)
{
    if (table)
        table->setParent(this);
    if (m_view)
        createProxy();
    callPlugin(table, "tableItem_init(QGraphicsWidget*,QAbstractItemView*,QAbstractItemModel*)",
               static_cast<QGraphicsWidget *>(this), static_cast<QAbstractItemView *>(m_view),
               static_cast<QAbstractItemModel *>(m_model));
    setTitle(callPlugin<QString>(table, "tableItem_objectTitle()"));
}

void TableItem::createProxy()
{
    auto *proxy = new TableProxy(this);
    proxy->setWidget(m_view);
    m_proxy = proxy;
    setFocusProxy(proxy);
    connect(m_model, &QAbstractItemModel::modelReset, this, &TableItem::fitColumnsLater);
    offerSorting();
}

TableItem::~TableItem()
{
    // The table first, while the view and the model that it was given still exist.
    if (m_view)
        m_view->selectionModel()->disconnect(m_table);
    m_model->disconnect(m_table);
    m_model->setTable(nullptr);
    delete m_table;
}

QSizeF TableItem::fullSize()
{
    ensureFitted();
    const QSizeF frame = size() - contentRect().size();
    // Wide enough for the scroll bar of a lower item too.
    const int scrollBar = m_view->verticalScrollBar()->sizeHint().width();
    return QSizeF(m_view->horizontalHeader()->length() + scrollBar + 2, (m_model->rowCount() + 1) * rowHeight + 2)
        + frame;
}

double TableItem::fullWidth(double height)
{
    const QSizeF full = fullSize();
    return full.width() + (full.height() > height ? m_view->verticalScrollBar()->sizeHint().width() : 0);
}

int TableItem::colId(qint8 section)
{
    return m_model->columnCode(section);
}

int TableItem::colDigits(qint8 section)
{
    return m_model->columnDigits(section);
}

void TableItem::typeCntxtMenu(QMenu *menu)
{
    addContextMenu(menu);
}

void TableItem::receiveMessage(const QVariantMap &message)
{
    callPlugin(m_table, "tableItem_onLMessage(QVariantMap)", message);
    // As many of the selected rows as can be, the first one in any case.
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    if (!rows.isEmpty()) {
        const auto [first, last] = std::minmax_element(rows.cbegin(), rows.cend());
        m_view->scrollTo(*last);
        m_view->scrollTo(*first);
    }
}

void TableItem::layoutContent(const QRectF &content)
{
    if (m_proxy)
        m_proxy->setGeometry(content);
}

void TableItem::fillContextMenu(QMenu *menu)
{
    if (!m_view)
        return;
    connect(menu->addAction(tr("Select All")), &QAction::triggered, m_view, &QTableView::selectAll);
    // The key is the view's: it works where the menu is not open.
    const QString key = QKeySequence(QKeySequence::Copy).toString(QKeySequence::NativeText);
    connect(menu->addAction(tr("Copy") + u'\t' + key), &QAction::triggered, this, &TableItem::copySelection);
}

void TableItem::offerSorting()
{
    QHeaderView *header = m_view->horizontalHeader();
    header->setSectionsClickable(true);
    // The third click shows the order of the file again.
    header->setSortIndicatorClearable(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    connect(header, &QHeaderView::sortIndicatorChanged, this, [this, header](int section) {
        // Room for the arrow only where there is one: the table has to fit beside the molecule.
        header->setSortIndicatorShown(section >= 0);
        if (section >= 0)
            m_view->setColumnWidth(section, std::max(m_view->columnWidth(section), header->sectionSizeHint(section)));
        sortRows();
    });
    connect(m_model, &QAbstractItemModel::modelReset, this, &TableItem::sortRows);
}

void TableItem::sortRows()
{
    const QHeaderView *header = m_view->horizontalHeader();
    QList<int> order(m_model->rowCount());
    std::iota(order.begin(), order.end(), 0);
    if (header->sortIndicatorSection() >= 0 && header->sortIndicatorSection() < m_model->columnCount())
        std::stable_sort(order.begin(), order.end(),
                         CellOrder(*m_model, header->sortIndicatorSection(), header->sortIndicatorOrder()));
    QHeaderView *rows = m_view->verticalHeader();
    const QSignalBlocker quiet(rows); // one repaint for all
    for (int visual = 0; visual < order.size(); ++visual)
        rows->moveSection(rows->visualIndex(order[visual]), visual);
    m_view->viewport()->update();
    update();
}

QList<int> TableItem::shownRows() const
{
    QList<int> rows;
    for (int visual = 0; visual < m_model->rowCount(); ++visual)
        rows.append(m_view ? m_view->verticalHeader()->logicalIndex(visual) : visual);
    return rows;
}

QList<int> TableItem::selectedRows() const
{
    QList<int> rows = shownRows();
    rows.removeIf([this](int row) { return !m_view || !m_view->selectionModel()->rowIntersectsSelection(row); });
    return rows;
}

QList<QUuid> TableItem::sharedDataIds() const
{
    return callPlugin<QList<QUuid>>(m_table, "tableItem_sharedDataIds()");
}

QVariantList TableItem::rowMaps() const
{
    return callPlugin<QVariantList>(m_table, "tableModel_rows()");
}

TableContent TableItem::content() const
{
    TableContent content;
    content.rows = rowMaps();
    for (int column = 0; column < m_model->columnCount(); ++column)
        content.titles.append(m_model->headerData(column, Qt::Horizontal).toString());
    for (int row = 0; row < m_model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < m_model->columnCount(); ++column)
            cells.append(m_model->data(m_model->index(row, column)).toString());
        content.cells.push_back(cells);
    }
    return content;
}

QString TableItem::selectionText() const
{
    const TableContent table = content();
    QString text = table.titles.join(u'\t') + u'\n';
    const QList<int> selected = selectedRows();
    for (int row : selected.isEmpty() ? shownRows() : selected)
        text += table.cells[size_t(row)].join(u'\t') + u'\n';
    return text;
}

void TableItem::copySelection() const
{
    QGuiApplication::clipboard()->setText(selectionText());
}

QVariantList TableItem::selectedRowMaps() const
{
    const QVariantList rows = rowMaps();
    QVariantList selected;
    for (int row : selectedRows())
        selected.append(rows.value(row));
    return selected;
}

void TableItem::fitColumnsLater()
{
    m_fitted = false;
    update();
}

void TableItem::ensureFitted()
{
    if (m_view && !std::exchange(m_fitted, true))
        fitColumns();
}

void TableItem::fitColumns()
{
    // Wide enough for the view and for paper, where the header is bold.
    m_view->resizeColumnsToContents();
    const QFontMetricsF headerMetrics(headerFont());
    const QFontMetricsF metrics(tableFont());
    const int rows = std::min(m_model->rowCount(), mostMeasuredRows);
    for (int column = 0; column < m_model->columnCount(); ++column) {
        double width = headerMetrics.horizontalAdvance(m_model->headerData(column, Qt::Horizontal).toString());
        for (int row = 0; row < rows; ++row)
            width = std::max(width, metrics.horizontalAdvance(m_model->index(row, column).data().toString()));
        m_view->setColumnWidth(
            column, std::min(std::max(m_view->columnWidth(column), qCeil(width) + 2 * cellPadding), widestColumn));
    }
    update();
}

void TableItem::paintTable(QPainter *painter, const QRectF &area)
{
    if (!m_view)
        return;
    ensureFitted();
    painter->save();
    painter->setClipRect(area, Qt::IntersectClip);
    painter->fillRect(area, Qt::white);
    const QList<int> order = shownRows();
    const int first = std::max<int>(0, order.indexOf(m_view->rowAt(0)));
    const int all = int(order.size()) - first;
    const int room = int(area.height() / rowHeight) - 1;
    const int rows = std::max(0, all <= room ? all : room - 1);
    const qreal width = std::min<qreal>(area.width(), m_view->horizontalHeader()->length());

    for (int row = -1; row < rows; ++row) {
        const qreal y = area.top() + (row + 1) * rowHeight;
        painter->setFont(row < 0 ? headerFont() : tableFont());
        painter->setPen(Qt::black);
        for (int column = 0; column < m_model->columnCount(); ++column) {
            const QRectF cell(area.left() + m_view->columnViewportPosition(column), y, m_view->columnWidth(column),
                              rowHeight);
            const QModelIndex index = m_model->index(order.value(first + row, -1), column);
            const QVariant text = row < 0 ? m_model->headerData(column, Qt::Horizontal) : m_model->data(index);
            const QVariant alignment = m_model->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole);
            const QRectF inside = cell.adjusted(cellPadding, 0, -cellPadding, 0);
            painter->drawText(
                inside, alignment.toInt(),
                QFontMetricsF(painter->font()).elidedText(text.toString(), Qt::ElideRight, inside.width() + 1));
        }
        painter->setPen(row < 0 ? QPen(Qt::black, 1) : QPen(QColor(0xdd, 0xe1, 0xe6), 0.5));
        painter->drawLine(QLineF(area.left(), y + rowHeight, area.left() + width, y + rowHeight));
    }
    if (rows < all) {
        painter->setPen(QColor(0x50, 0x56, 0x5e));
        painter->setFont(tableFont());
        painter->drawText(
            QRectF(area.left() + cellPadding, area.top() + (rows + 1) * rowHeight, area.width(), rowHeight),
            Qt::AlignVCenter | Qt::AlignLeft, tr("and %n more row(s)", nullptr, all - rows));
    }
    painter->restore();
}

} // namespace Workbench
