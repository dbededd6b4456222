// SPDX-License-Identifier: BSD-3-Clause
#include "Bench.h"

#include "items/plot/NmrData.h"
#include "items/plot/NmrItem.h"
#include "items/plot/NmrPlot.h"
#include "items/plot/PlotContent.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>

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

} // namespace

int main(int argc, char **argv)
{
    // Nothing is seen, all is painted.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    for (int size : {8192, 1 << 20}) {
        const std::string name = "repaint/" + std::to_string(size);
        benchmark::RegisterBenchmark(name.c_str(), repaint, size, 1.0)->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((name + "/zoomed").c_str(), repaint, size, 8.0)->Unit(benchmark::kMillisecond);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
