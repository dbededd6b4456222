// SPDX-License-Identifier: BSD-3-Clause
#include "Bench.h"
#include "Report.h"

#include "items/molecule/MoleculeItem.h"
#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/plot/PlotContent.h"
#include "items/table/TableItem.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTableView>

#include <cmath>

using namespace Workbench;

namespace {

QVariant vector8(double value)
{
    DoubleVector values(8, 0.0);
    values[0] = value;
    return QVariant::fromValue(values);
}

/// Noise with sixty lines a few points wide, 10 to 0 ppm at 600 MHz. One point in the middle stands out of all.
QVariantMap spectrum(int size)
{
    DoubleVector points(size);
    quint32 state = 11;
    for (int i = 0; i < size; ++i) {
        state = state * 1664525u + 1013904223u;
        points[size_t(i)] = 0.01 * (double(state >> 8) / double(1 << 24) - 0.5);
    }
    QVariantList peaks;
    for (int line = 0; line < 60; ++line) {
        const int centre = int((line + 0.5) / 60 * size);
        for (int d = -40; d <= 40; ++d)
            points[size_t(std::clamp(centre + d, 0, size - 1))] += 1 / (1 + d * d / 9.0);
        peaks.append(
            QVariantMap{{QStringLiteral("Pos"), QVariant::fromValue(DoubleVector{10.0 - centre * 10.0 / size, 0})},
                        {QStringLiteral("Height"), 1.0}});
    }
    points[size_t(size / 2)] = 2;
    return {
        {QStringLiteral("Length"), QVariant::fromValue(QList<int>{size, 1, 1, 1, 1, 1, 1, 1})},
        {QStringLiteral("DataPoints"), QVariant::fromValue(QList<DoubleVector>{points, DoubleVector(points.size())})},
        {QStringLiteral("Peaks"), QVariantMap{{QStringLiteral("PeakList"), peaks}}},
        {QStringLiteral("SpecInfo"),
         QVariantMap{{QStringLiteral("SpectrometerFrequencies"), vector8(600)},
                     {QStringLiteral("SW"), vector8(6000)},
                     {QStringLiteral("SpectrumRef"), vector8(3000)}}}};
}

/// The item in a view, as large as a page has room for, at twice the resolution.
struct Shown {
    QGraphicsScene scene;
    QGraphicsView view{&scene};
    NmrItem *item = new NmrItem;

    explicit Shown(int size)
    {
        scene.addItem(item);
        item->nmrData()->addEntry(spectrum(size), {});
        item->setGeometry(0, 0, 720, 360);
        view.scale(2, 2);
        view.resize(1500, 800);
        view.show();
        QApplication::processEvents();
    }

    QImage paint()
    {
        item->plot()->replot(QCustomPlot::rpImmediateRefresh);
        return view.viewport()->grab().toImage();
    }

    /// The single point in the middle is drawn up to its height.
    bool showsMaximum()
    {
        const QImage image = paint();
        const QCPAxis *ppm = item->plot()->xAxis, *intensity = item->plot()->yAxis;
        const QPointF top(ppm->coordToPixel(5.0), intensity->coordToPixel(1.9));
        const QPoint at = view.mapFromScene(item->mapToScene(item->contentRect().topLeft() + top));
        for (int x = at.x() - 4; x <= at.x() + 4; ++x)
            if (image.pixelColor(x, at.y()).lightness() < 200)
                return true;
        return false;
    }
};

/// One step of panning and zooming, painted.
void repaint(benchmark::State &state, int size, double zoom)
{
    Shown shown(size);
    Bench::require(shown.showsMaximum(), "repaint, all");
    if (zoom > 1)
        shown.item->plot()->navigation().zoom(zoom);
    Bench::require(shown.showsMaximum(), "repaint, zoomed");
    int step = 0;
    for (auto _ : state) {
        const double direction = step++ % 2 ? -1 : 1;
        if (zoom > 1)
            shown.item->plot()->navigation().pan(shown.item->plot()->xAxis, 0.05 * direction);
        else
            shown.item->plot()->navigation().zoom(direction > 0 ? 1.001 : 1 / 1.001);
        benchmark::DoNotOptimize(shown.paint());
    }
}

/// Ethanol-like molecules on a grid, in a cell; every atom in sight is drawn.
QVariantMap crystal(int count)
{
    QVariantList atoms;
    const double edge = std::ceil(std::cbrt(count / 9.0)) * 4.5;
    const double places[9][3] = {{0, 0, 0},        {1.5, 0, 0},       {2, 1.3, 0},
                                 {-0.4, 1, 0},     {-0.4, -0.5, 0.9}, {-0.4, -0.5, -0.9},
                                 {1.9, -0.5, 0.9}, {1.9, -0.5, -0.9}, {2.9, 1.3, 0}};
    constexpr int elements[9] = {6, 6, 8, 1, 1, 1, 1, 1, 1};
    constexpr int bonded[9] = {1, 2, 1, 0, 0, 0, 1, 1, 2};
    for (int molecule = 0; int(atoms.size()) < count; ++molecule) {
        const int first = int(atoms.size()), side = int(edge / 4.5);
        for (int i = 0; i < 9 && int(atoms.size()) < count; ++i)
            atoms.append(QVariantMap{{QStringLiteral("El"), elements[i]},
                                     {QStringLiteral("X"), places[i][0] + 4.5 * (molecule % side)},
                                     {QStringLiteral("Y"), places[i][1] + 4.5 * (molecule / side % side)},
                                     {QStringLiteral("Z"), places[i][2] + 4.5 * (molecule / side / side)},
                                     {QStringLiteral("NB.Num"), QVariant::fromValue(QList<int>{first + bonded[i]})}});
    }
    const DoubleVector lattice{edge, 0, 0, 0, edge, 0, 0, 0, edge};
    return {{QStringLiteral("Atoms"), atoms},
            {QStringLiteral("CrystallographicData"),
             QVariantMap{{QStringLiteral("Lattice"), QVariant::fromValue(lattice)}}}};
}

/// A molecule turned by the mouse, a picture for each step.
void turn(benchmark::State &state, int count)
{
    QGraphicsScene scene;
    QGraphicsView view(&scene);
    auto *item = new MoleculeItem(crystal(count));
    scene.addItem(item);
    item->setGeometry(0, 0, 800, 600);
    view.resize(820, 620);
    view.show();
    QApplication::processEvents();
    const auto colors = [&] {
        QSet<QRgb> seen;
        const QImage image = view.viewport()->grab().toImage();
        for (int atom = 0; atom < count; atom += count / 50 + 1)
            seen.insert(image.pixel(view.mapFromScene(item->mapToScene(item->atomPosition(atom)))));
        seen.remove(qRgb(255, 255, 255));
        return seen.size();
    };
    Bench::require(colors() > 10, "turn, drawn");
    const QPointF before = item->atomPosition(1);
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier);
    for (auto _ : state) {
        scene.sendEvent(item, &key);
        benchmark::DoNotOptimize(view.viewport()->grab());
    }
    Bench::require(item->atomPosition(1) != before, "turn, turned");
}

/// A plug-in's table of labels in no order.
class Labels : public QObject {
    Q_OBJECT

public:
    explicit Labels(int rows) : m_rows(rows) { }
    Q_INVOKABLE int tableModel_rowCount() { return m_rows; }
    Q_INVOKABLE int tableModel_columnCount() { return 2; }
    Q_INVOKABLE QVariantList tableModel_columns() { return {QVariantMap(), QVariantMap()}; }
    Q_INVOKABLE QVariantList tableModel_rows()
    {
        QVariantList maps;
        for (int row = 0; row < m_rows; ++row)
            maps.append(QVariantMap{{QStringLiteral("labels"), QStringList{label(row)}},
                                    {QStringLiteral("iso"), double(row * 7919 % m_rows)}});
        return maps;
    }
    Q_INVOKABLE QVariant tableModel_data(QModelIndex index, int)
    {
        return index.column() == 0 ? QVariant(label(index.row())) : QVariant(double(index.row() * 7919 % m_rows));
    }

private:
    QString label(int row) const { return QStringLiteral("C%1").arg(row * 7919 % m_rows); }

    int m_rows;
};

/// Sorts by the labels, up and down, and filters.
void sortRows(benchmark::State &state, int rows, bool filters)
{
    TableItem item(new Labels(rows));
    item.resize(400, 600);
    item.ensureFitted();
    const QHeaderView *order = item.view()->verticalHeader();
    bool up = false;
    for (auto _ : state) {
        up = !up;
        if (filters)
            item.setFilter(up ? QStringLiteral("iso<1000") : QString());
        else
            item.view()->horizontalHeader()->setSortIndicator(0, up ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
    if (filters)
        return Bench::require(order->hiddenSectionCount() == (up ? rows - 1000 : 0), "filter");
    const int top = order->logicalIndex(0);
    Bench::require(top * 7919 % rows == (up ? 0 : rows - 1), "sort");
}

const Bench::Ratio ratios[] = {
    {"repaint/1048576: in those of 8192 points", "repaint/1048576", "repaint/8192", Bench::Ratio::AtMost, 2},
    {"turn/5000: milliseconds", "turn/5000", "turn/5000", Bench::Ratio::AtMost, 40, 1e3, Bench::alone},
    {"sort/5000: milliseconds", "sort/5000", "sort/5000", Bench::Ratio::AtMost, 50, 1e3, Bench::alone},
    {"filter/5000: milliseconds", "filter/5000", "filter/5000", Bench::Ratio::AtMost, 50, 1e3, Bench::alone},
};

} // namespace

int main(int argc, char **argv)
{
    // Nothing is seen, all is painted.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    for (int size : {8192, 1 << 20}) {
        const std::string name = "repaint/" + std::to_string(size);
        benchmark::RegisterBenchmark(name.c_str(), repaint, size, 1.0)->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((name + "/zoomed").c_str(), repaint, size, 8.0)->Unit(benchmark::kMillisecond);
    }
    for (int atoms : {500, 5000})
        benchmark::RegisterBenchmark(("turn/" + std::to_string(atoms)).c_str(), turn, atoms)
            ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("sort/5000", sortRows, 5000, false)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("filter/5000", sortRows, 5000, true)->Unit(benchmark::kMillisecond);
    return Bench::run(argc, argv, ratios);
}

#include "BenchRepaint.moc"
