// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/table/TableItem.h"

#include "data/NaturalOrder.h"
#include "data/PluginCall.h"
#include "items/table/TableModel.h"
#include "support/RowSelection.h"

#include <QClipboard>
#include <QBoxLayout>
#include <QGraphicsProxyWidget>
#include <QGraphicsSceneContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>
#include <functional>
#include <cmath>
#include <numeric>

namespace Workbench {

namespace {

constexpr int rowHeight = 21;
constexpr int fontSize = 12;
constexpr int cellPadding = 6;
constexpr int widestColumn = 260;
constexpr int mostMeasuredRows = 1000;
constexpr int filterHeight = 24;
constexpr int widestByHand = 2000;

const QString hiddenColumnsKey = QStringLiteral("HiddenColumns");
const QString shownColumnsKey = QStringLiteral("ShownColumns");
const QString columnWidthsKey = QStringLiteral("ColumnWidths"); // pixels

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

/// The sort arrow lies above the title and takes no room of its own: columns keep their width when they are sorted.
class TableHeader : public QHeaderView {
public:
    explicit TableHeader(QWidget *parent) : QHeaderView(Qt::Horizontal, parent) { }

protected:
    void paintSection(QPainter *painter, const QRect &rect, int section) const override
    {
        painter->save();
        QHeaderView::paintSection(painter, rect, section);
        painter->restore();
        if (section != sortIndicatorSection())
            return;
        const bool up = sortIndicatorOrder() == Qt::AscendingOrder;
        const QPointF base(rect.center().x() + 0.5, rect.top() + (up ? 5 : 1));
        const double tip = up ? -4 : 4;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(QColor(0x1f, 0x6f, 0xb5));
        painter->drawPolygon(QPolygonF{base + QPointF(-5, 0), base + QPointF(5, 0), base + QPointF(0, tip)});
        painter->restore();
    }
};

/// Copies rows where the base class would copy a single cell, and knows nothing of rows that are filtered out.
class TableView : public QTableView {
public:
    explicit TableView(TableItem *item) : m_item(item) { setHorizontalHeader(new TableHeader(this)); }

    void selectAll() override { m_item->selectShown(); }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->matches(QKeySequence::Copy))
            m_item->copySelection();
        else if (event->matches(QKeySequence::Find))
            m_item->editFilter();
        else
            return QTableView::keyPressEvent(event);
        event->accept();
    }

private:
    TableItem *m_item;
};

/// Numbers by size, texts as people order them, empty cells last.
class CellOrder {
public:
    CellOrder(const TableModel &model, int column, Qt::SortOrder order) : m_descending(order == Qt::DescendingOrder)
    {
        const QCollator collator = naturalOrder();
        m_cells.reserve(size_t(model.rowCount()));
        for (int row = 0; row < model.rowCount(); ++row) {
            const QVariant value = model.data(model.index(row, column), Qt::EditRole);
            const bool isNumber = value.typeId() == QMetaType::Double;
            const QString text = isNumber ? QString() : value.toString();
            // A key takes much longer to make than to compare.
            m_cells.push_back({isNumber ? !std::isnan(value.toDouble()) : !text.isEmpty(), isNumber,
                               isNumber ? value.toDouble() : 0.0, collator.sortKey(text)});
        }
    }

    bool operator()(int a, int b) const
    {
        const Cell &first = m_cells[size_t(a)], &second = m_cells[size_t(b)];
        if (!first.isFilled || !second.isFilled)
            return first.isFilled && !second.isFilled;
        const int comparison = compared(first, second);
        return m_descending ? comparison > 0 : comparison < 0;
    }

private:
    struct Cell {
        bool isFilled;
        bool isNumber;
        double number;
        QCollatorSortKey text;
    };

    static int compared(const Cell &a, const Cell &b)
    {
        if (a.isNumber != b.isNumber)
            return a.isNumber ? -1 : 1;
        return a.isNumber ? (a.number > b.number) - (a.number < b.number) : a.text.compare(b.text);
    }

    std::vector<Cell> m_cells;
    bool m_descending;
};

/// Stays open while its entries are switched, one after the other.
class ColumnMenu : public QMenu {
public:
    using QMenu::QMenu;

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        m_pressed = actionAt(event->position().toPoint());
        QMenu::mousePressEvent(event);
    }

    void mouseReleaseEvent(QMouseEvent *event) override
    {
        // The release of the button that has opened the menu means none of its entries.
        QAction *action = actionAt(event->position().toPoint());
        if (action != std::exchange(m_pressed, nullptr) || !switchEntry(action))
            QMenu::mouseReleaseEvent(event);
    }

    void keyPressEvent(QKeyEvent *event) override
    {
        const bool isSwitch =
            event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!isSwitch || !switchEntry(activeAction()))
            QMenu::keyPressEvent(event);
    }

private:
    static bool switchEntry(QAction *action)
    {
        const bool canSwitch = action && action->isCheckable() && action->isEnabled();
        if (canSwitch)
            action->trigger();
        return canSwitch;
    }

    QAction *m_pressed = nullptr; ///< for comparison only
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
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setWordWrap(false);
    // Tab leads on to the next item of the page.
    view->setTabKeyNavigation(false);
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
    if (m_view) {
        m_model->offerSiteColumns();
        hideColumns();
    }
    setTitle(callPlugin<QString>(table, "tableItem_objectTitle()"));
}

void TableItem::createProxy()
{
    auto *panel = new QWidget;
    panel->setPalette(pagePalette());
    m_filterLine = new QLineEdit;
    m_filterLine->setPlaceholderText(tr("Filter: C   C2..C10   iso>100   cq=0.1..2"));
    m_filterLine->setAccessibleName(tr("Filter of the table's rows"));
    m_filterLine->setClearButtonEnabled(true);
    m_filterLine->setFocusPolicy(Qt::ClickFocus); // Ctrl+F; Tab leads on to the next item of the page
    m_filterResult = new QLabel;
    for (QWidget *widget : std::initializer_list<QWidget *>{m_filterLine, m_filterResult}) {
        widget->setPalette(pagePalette());
        widget->setFont(tableFont());
        widget->setFixedHeight(filterHeight - 2);
    }
    auto *line = new QHBoxLayout;
    line->setContentsMargins(2, 1, 4, 1);
    line->setSpacing(6);
    line->addWidget(m_filterLine, 1);
    line->addWidget(m_filterResult);
    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->setSizeConstraint(QLayout::SetNoConstraint); // the item decides
    layout->addLayout(line);
    layout->addWidget(m_view, 1);
    m_view->setFocus();
    auto *proxy = new TableProxy(this);
    proxy->setWidget(panel);
    m_proxy = proxy;
    setFocusProxy(proxy);
    connect(m_filterLine, &QLineEdit::textChanged, this, &TableItem::readFilter);
    connect(m_filterLine, &QLineEdit::returnPressed, m_view, qOverload<>(&QWidget::setFocus));
    connect(m_model, &QAbstractItemModel::modelReset, this, &TableItem::fitColumnsLater);
    connect(m_model, &QAbstractItemModel::modelReset, this, &TableItem::hideColumns);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &TableItem::fitColumnsLater);
    connect(m_view->horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (!m_fitting && width > 0 && !m_view->isColumnHidden(column))
            m_widths.insert(m_model->columnKey(column), width);
    });
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
    return QSizeF(m_view->horizontalHeader()->length() + scrollBar + 2,
                  filterHeight + (m_model->rowCount() + 1) * rowHeight + 2)
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

void TableItem::receiveMessage(const QVariantMap &message, const DocumentItem *)
{
    callPlugin(m_table, "tableItem_onLMessage(QVariantMap)", message);
    if (!m_view)
        return;
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
    // The keys are the view's: they work where the menu is not open.
    const auto add = [&](const QString &text, QKeySequence::StandardKey key, auto slot) {
        const QString shown = text + u'\t' + QKeySequence(key).toString(QKeySequence::NativeText);
        connect(menu->addAction(shown), &QAction::triggered, this, slot);
    };
    add(tr("Select All"), QKeySequence::SelectAll, &TableItem::selectShown);
    add(tr("Copy"), QKeySequence::Copy, &TableItem::copySelection);
    add(tr("Filter Rows"), QKeySequence::Find, &TableItem::editFilter);
    menu->addMenu(createColumnMenu(menu));
}

void TableItem::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    const QHeaderView *header = m_view ? m_view->horizontalHeader() : nullptr;
    const QRectF area = header && m_proxy
        ? m_proxy->mapRectToParent(QRectF(header->mapTo(m_view->parentWidget(), QPoint()), header->size()))
        : QRectF();
    if (!area.contains(mapFromScene(event->scenePos())))
        return DocumentItem::contextMenuEvent(event);
    QMenu *menu = createColumnMenu(event->widget());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->screenPos());
    event->accept();
}

QMenu *TableItem::createColumnMenu(QWidget *parent)
{
    auto *menu = new ColumnMenu(tr("&Columns"), parent);
    menu->setToolTipsVisible(true);
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const SiteColumn *site = m_model->siteColumnAt(column);
        if (site && !m_model->hasSites())
            break;
        if (site == siteColumns().data())
            menu->addSeparator();
        const QString meaning = m_model->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString();
        // What it is beside the symbol; the tooltip has the formula.
        static const QRegularExpression end(QStringLiteral("[\\n:;,.]"));
        const QString name = meaning.section(end, 0, 0);
        QAction *action = menu->addAction(m_model->headerData(column, Qt::Horizontal).toString()
                                          + (name.isEmpty() ? QString() : QStringLiteral("  \u2013  ") + name));
        action->setCheckable(true);
        action->setChecked(!m_view->isColumnHidden(column));
        action->setToolTip(meaning);
        action->setStatusTip(QString(meaning).replace(u'\n', u' '));
        connect(action, &QAction::toggled, this, [this, column, action](bool wanted) {
            showColumn(column, wanted);
            action->setChecked(!m_view->isColumnHidden(column));
        });
    }
    return menu;
}

void TableItem::setColumns(const TableColumns &columns)
{
    if (columns == m_columns)
        return;
    m_columns = columns;
    hideColumns();
    Q_EMIT columnsChanged();
}

void TableItem::showColumn(int column, bool shows)
{
    if (!m_view || m_view->isColumnHidden(column) != shows)
        return;
    if (!shows && shownColumns().size() < 2)
        return Q_EMIT reported(tr("A table has at least one column"));
    const TableColumns before = m_columns;
    TableColumns columns = m_columns;
    QStringList &exceptions = m_model->siteColumnAt(column) ? columns.shown : columns.hidden;
    const QString key = m_model->columnKey(column);
    if (!exceptions.removeOne(key))
        exceptions.append(key);
    setColumns(columns);
    Q_EMIT columnsEdited(before);
}

void TableItem::hideColumns()
{
    if (!m_view)
        return;
    QHeaderView *header = m_view->horizontalHeader();
    const QScopedValueRollback fitting(m_fitting, true);
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const QString key = m_model->columnKey(column);
        const bool hides =
            m_model->siteColumnAt(column) ? !m_columns.shown.contains(key) : m_columns.hidden.contains(key);
        if (header->isSectionHidden(column) == hides)
            continue;
        header->setSectionHidden(column, hides);
        if (!hides && m_fitted)
            fitColumn(column);
        // Rows in the order of what cannot be seen would look like no order at all.
        if (hides && header->sortIndicatorSection() == column)
            header->setSortIndicator(-1, Qt::AscendingOrder);
    }
    update();
}

QList<int> TableItem::shownColumns() const
{
    QList<int> columns;
    for (int column = 0; column < m_model->columnCount(); ++column) {
        if (m_view ? !m_view->isColumnHidden(column) : !m_model->siteColumnAt(column))
            columns.append(column);
    }
    return columns;
}

void TableItem::offerSorting()
{
    QHeaderView *header = m_view->horizontalHeader();
    header->setSectionsClickable(true);
    // The third click shows the order of the file again.
    header->setSortIndicatorClearable(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    connect(header, &QHeaderView::sortIndicatorChanged, this, &TableItem::sortRows);
    connect(m_model, &QAbstractItemModel::modelReset, this, &TableItem::sortRows);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &TableItem::sortLater);
}

void TableItem::sortLater()
{
    // Values of site columns change in the middle of what changes them, and several times in a row.
    if (!m_sorted || !m_model->siteColumnAt(m_view->horizontalHeader()->sortIndicatorSection()))
        return;
    m_sorted = false;
    QMetaObject::invokeMethod(this, &TableItem::ensureSorted, Qt::QueuedConnection);
}

void TableItem::ensureSorted()
{
    if (m_view && !m_sorted)
        sortRows();
}

void TableItem::sortRows()
{
    m_sorted = true;
    const QHeaderView *header = m_view->horizontalHeader();
    QList<int> order(m_model->rowCount());
    std::iota(order.begin(), order.end(), 0);
    if (header->sortIndicatorSection() >= 0 && header->sortIndicatorSection() < m_model->columnCount()) {
        const CellOrder cells(*m_model, header->sortIndicatorSection(), header->sortIndicatorOrder());
        std::stable_sort(order.begin(), order.end(), std::cref(cells)); // which is copied for every few rows
    }
    QHeaderView *rows = m_view->verticalHeader();
    // Swapped while all are in sight, each of the same height: then a swap does not move the rows between.
    for (int row = 0; rows->hiddenSectionCount() > 0 && row < order.size(); ++row)
        m_view->showRow(row);
    {
        const QSignalBlocker quiet(rows); // one repaint for all
        for (int visual = 0; visual < order.size(); ++visual) {
            const int from = rows->visualIndex(order[visual]);
            if (from != visual)
                rows->swapSections(visual, from);
        }
    }
    hideRows();
}

QString TableItem::filter() const
{
    return m_filterLine ? m_filterLine->text() : QString();
}

void TableItem::setFilter(const QString &text)
{
    if (m_filterLine)
        m_filterLine->setText(text);
}

void TableItem::editFilter()
{
    setFocus();
    m_filterLine->setFocus();
    m_filterLine->selectAll();
}

void TableItem::readFilter()
{
    try {
        m_filter = RowFilter::parse(m_filterLine->text());
        m_filterLine->setToolTip(QString());
        hideRows();
    } catch (const std::exception &error) {
        m_filterLine->setToolTip(QString::fromUtf8(error.what()));
        m_filterResult->setText(tr("not understood"));
        m_filterResult->setToolTip(m_filterLine->toolTip());
    }
}

void TableItem::hideRows()
{
    int shown = m_model->rowCount();
    const QVariantList rows = m_filter.isEmpty() ? QVariantList() : rowMaps();
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const bool hides = !m_filter.isEmpty() && !m_filter.accepts(rows.value(row).toMap());
        shown -= hides ? 1 : 0;
        if (m_view->isRowHidden(row) != hides)
            m_view->setRowHidden(row, hides);
    }
    m_filterResult->setText(m_filter.isEmpty() ? QString() : tr("%1 of %2").arg(shown).arg(m_model->rowCount()));
    m_filterResult->setToolTip(QString());
    // Qt 6 takes the wrong row for the first one where rows are hidden, moved and coloured in turns.
    m_view->setAlternatingRowColors(m_filter.isEmpty());
    m_view->doItemsLayout();
    update();
}

void TableItem::selectShown()
{
    if (!m_view)
        return;
    selectWholeRows(m_view->selectionModel(), shownRows());
}

QVariantMap TableItem::viewSettings() const
{
    if (!m_view)
        return {};
    const QHeaderView *header = m_view->horizontalHeader();
    QVariantMap settings{{QStringLiteral("Filter"), filter()},
                         {QStringLiteral("SortColumn"), header->sortIndicatorSection()},
                         {QStringLiteral("Descending"), header->sortIndicatorOrder() == Qt::DescendingOrder}};
    if (!m_columns.hidden.isEmpty())
        settings.insert(hiddenColumnsKey, m_columns.hidden);
    if (!m_columns.shown.isEmpty())
        settings.insert(shownColumnsKey, m_columns.shown);
    if (!m_widths.isEmpty())
        settings.insert(columnWidthsKey, m_widths);
    return settings;
}

void TableItem::setViewSettings(const QVariantMap &settings)
{
    if (!m_view)
        return;
    setFilter(settings.value(QStringLiteral("Filter")).toString());
    TableColumns columns{settings.value(hiddenColumnsKey).toStringList(),
                         settings.value(shownColumnsKey).toStringList()};
    columns.hidden.removeDuplicates();
    columns.shown.removeDuplicates();
    setColumns(columns);
    m_widths.clear();
    const QVariantMap widths = settings.value(columnWidthsKey).toMap();
    for (auto it = widths.cbegin(); it != widths.cend(); ++it) {
        if (const int width = it->toInt(); width > 0 && width <= widestByHand)
            m_widths.insert(it.key(), width);
    }
    fitColumnsLater();
    const int column = settings.value(QStringLiteral("SortColumn"), -1).toInt();
    if (column >= -1 && column < m_model->columnCount() && !m_view->isColumnHidden(column))
        m_view->horizontalHeader()->setSortIndicator(
            column, settings.value(QStringLiteral("Descending")).toBool() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

QList<int> TableItem::shownRows() const
{
    QList<int> rows;
    for (int visual = 0; visual < m_model->rowCount(); ++visual) {
        const int row = m_view ? m_view->verticalHeader()->logicalIndex(visual) : visual;
        if (!m_view || !m_view->isRowHidden(row))
            rows.append(row);
    }
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
    const QList<int> columns = shownColumns();
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const SiteColumn *site = m_model->siteColumnAt(column);
        if (!columns.contains(column)) {
            content.hiddenKeys += m_model->rowKeys(column);
            continue;
        }
        content.titles.append(m_model->headerData(column, Qt::Horizontal).toString());
        if (!site)
            continue;
        content.extraKeys += m_model->rowKeys(column);
        for (int row = 0; row < int(content.rows.size()); ++row) {
            QVariantMap map = content.rows[row].toMap();
            if (const auto value = m_model->siteValue(row, *site))
                map.insert(content.extraKeys.constLast(), *value);
            content.rows[row] = map;
        }
    }
    for (int row = 0; row < m_model->rowCount(); ++row) {
        QStringList cells;
        for (int column : columns)
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
    ensureSorted();
    if (m_view && !std::exchange(m_fitted, true))
        fitColumns();
}

void TableItem::fitColumns()
{
    const QScopedValueRollback fitting(m_fitting, true);
    for (int column : shownColumns())
        fitColumn(column);
    update();
}

void TableItem::fitColumn(int column)
{
    if (const QVariant width = m_widths.value(m_model->columnKey(column)); width.isValid())
        return m_view->setColumnWidth(column, width.toInt());
    // Wide enough for the view and for paper, where the header is bold.
    m_view->resizeColumnToContents(column);
    const QFontMetricsF metrics(tableFont());
    const int rows = std::min(m_model->rowCount(), mostMeasuredRows);
    double width =
        QFontMetricsF(headerFont()).horizontalAdvance(m_model->headerData(column, Qt::Horizontal).toString());
    for (int row = 0; row < rows; ++row)
        width = std::max(width, metrics.horizontalAdvance(m_model->index(row, column).data().toString()));
    m_view->setColumnWidth(
        column, std::min(std::max(m_view->columnWidth(column), qCeil(width) + 2 * cellPadding), widestColumn));
}

void TableItem::paintPicture(QPainter *painter, const QRectF &area)
{
    paintTable(painter, area);
}

void TableItem::paintTable(QPainter *painter, const QRectF &area)
{
    if (!m_view)
        return;
    ensureFitted();
    painter->save();
    painter->setClipRect(area, Qt::IntersectClip);
    painter->fillRect(area, Qt::white);
    const QList<int> order = shownRows(), columns = shownColumns();
    const bool filtered = !m_filter.isEmpty();
    const int all = int(order.size());
    const int room = int(area.height() / rowHeight) - 1;
    const int rows = std::max(0, all <= room && !filtered ? all : std::min(all, room - 1));
    // From the first row and column on: the view's place in the window is none on paper.
    const QHeaderView *header = m_view->horizontalHeader();
    const qreal width = std::min<qreal>(area.width(), header->length());

    for (int row = -1; row < rows; ++row) {
        const qreal y = area.top() + (row + 1) * rowHeight;
        painter->setFont(row < 0 ? headerFont() : tableFont());
        painter->setPen(Qt::black);
        for (int column : columns) {
            const QRectF cell(area.left() + header->sectionPosition(column), y, header->sectionSize(column), rowHeight);
            const QModelIndex index = m_model->index(order.value(row, -1), column);
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
    if (rows < all || filtered) {
        QStringList notes;
        if (rows < all)
            notes.append(tr("and %n more row(s)", nullptr, all - rows));
        if (filtered)
            notes.append(tr("of the rows with %1").arg(filter().simplified()));
        painter->setPen(QColor(0x50, 0x56, 0x5e));
        painter->setFont(tableFont());
        painter->drawText(
            QRectF(area.left() + cellPadding, area.top() + (rows + 1) * rowHeight, area.width(), rowHeight),
            Qt::AlignVCenter | Qt::AlignLeft, notes.join(u' '));
    }
    painter->restore();
}

} // namespace Workbench

#include "moc_TableItem.cpp"
