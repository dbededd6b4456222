// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/TableItem.h"

#include "items/PluginCall.h"
#include "items/TableModel.h"

#include <QGraphicsProxyWidget>
#include <QHeaderView>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>

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

QTableView *makeView(TableModel *model)
{
    auto *view = new QTableView;
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

TableItem::TableItem(QObject *table, QGraphicsItem *parent)
    : DocumentItem(QUuid::createUuid(), parent),
      m_table(table),
      m_model(new TableModel(table, this)),
      m_view(makeView(m_model))
{
    if (table)
        table->setParent(this);
    auto *proxy = new TableProxy(this);
    proxy->setWidget(m_view);
    m_proxy = proxy;
    setFocusProxy(proxy);

    connect(m_model, &QAbstractItemModel::modelReset, this, &TableItem::fitColumns);
    callPlugin(table, "tableItem_init(QGraphicsWidget*,QAbstractItemView*,QAbstractItemModel*)",
               static_cast<QGraphicsWidget *>(this), static_cast<QAbstractItemView *>(m_view),
               static_cast<QAbstractItemModel *>(m_model));
    setTitle(callPlugin<QString>(table, "tableItem_objectTitle()"));
    fitColumns();
}

TableItem::~TableItem()
{
    // The table first, while the view and the model that it was given still exist.
    m_view->selectionModel()->disconnect(m_table);
    m_model->disconnect(m_table);
    m_model->setTable(nullptr);
    delete m_table;
}

QSizeF TableItem::fullSize() const
{
    const QSizeF frame = size() - contentRect().size();
    // Wide enough for the scroll bar of a lower item too.
    const int scrollBar = m_view->verticalScrollBar()->sizeHint().width();
    return QSizeF(m_view->horizontalHeader()->length() + scrollBar + 2, (m_model->rowCount() + 1) * rowHeight + 2)
        + frame;
}

double TableItem::fullWidth(double height) const
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
    m_proxy->setGeometry(content);
}

void TableItem::fillContextMenu(QMenu *menu)
{
    connect(menu->addAction(tr("Select All")), &QAction::triggered, m_view, &QTableView::selectAll);
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

void TableItem::paintTable(QPainter *painter, const QRectF &area) const
{
    painter->save();
    painter->setClipRect(area, Qt::IntersectClip);
    painter->fillRect(area, Qt::white);
    const int first = std::max(0, m_view->rowAt(0));
    const int all = m_model->rowCount() - first;
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
            const QModelIndex index = m_model->index(first + row, column);
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
