// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtTest>
#include <QtWidgets>

#include <functional>

/// What is drawn, as a list of shapes in pixels, a line of text for each:
///     line PEN x y x y; polyline PEN x y …; polygon PEN BRUSH x y …; rect PEN BRUSH x y width height;
///     ellipse PEN BRUSH x y radius radius [degrees]; path PEN BRUSH x y; text COLOUR left middle degrees words;
///     image x y width height COLOUR …
/// A pen is its colour, width and style (of dashes), a brush its colour or the colours of its gradient; "-" is none. Of
/// a path the middle is told; of a polyline of many points, a curve, how many and the first, two between and the last.
class Shapes : public QPaintDevice, private QPaintEngine {
public:
    static QStringList of(const QSize &size, const std::function<void(QPainter *)> &draw)
    {
        Shapes shapes(size);
        QPainter painter(&shapes);
        draw(&painter);
        painter.end();
        return shapes.m_shapes;
    }

    QPaintEngine *paintEngine() const override { return const_cast<Shapes *>(this); }

private:
    explicit Shapes(const QSize &size) : QPaintEngine(AllFeatures), m_size(size) { }

    int metric(PaintDeviceMetric what) const override
    {
        const int dotsPerInch = 96;
        return what == PdmWidth                 ? m_size.width()
            : what == PdmHeight                 ? m_size.height()
            : what == PdmDevicePixelRatio       ? 1
            : what == PdmDevicePixelRatioScaled ? int(devicePixelRatioFScale())
                                                : dotsPerInch;
    }
    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState &) override { }

    static QString colour(const QColor &c) { return c.name(c.alpha() < 255 ? QColor::HexArgb : QColor::HexRgb); }
    QString pen() const
    {
        const QPen pen = state->pen();
        if (pen.style() == Qt::NoPen)
            return QStringLiteral("-");
        const QString style = pen.style() == Qt::SolidLine ? QString() : QStringLiteral(":%1").arg(int(pen.style()));
        return QStringLiteral("%1:%2%3").arg(colour(pen.color())).arg(pen.widthF(), 0, 'g', 3).arg(style);
    }
    QString brush() const
    {
        const QBrush brush = state->brush();
        QStringList stops;
        for (const QGradientStop &stop : brush.gradient() ? brush.gradient()->stops() : QGradientStops())
            stops.append(QString::number(stop.first) + colour(stop.second));
        return brush.style() == Qt::NoBrush ? QStringLiteral("-")
            : stops.isEmpty()               ? colour(brush.color())
                                            : stops.join(QStringLiteral(","));
    }
    static QString number(double x) { return QString::number(qRound(x * 100) / 100.0); }
    QString places(const QPointF *points, int count) const
    {
        QStringList numbers;
        for (int i = 0; i < count; ++i) {
            const QPointF place = state->transform().map(points[i]);
            numbers << number(place.x()) << number(place.y());
        }
        return numbers.join(u' ');
    }
    double degrees() const { return -QLineF(state->transform().map(QLineF(0, 0, 1, 0))).angle(); }
    void add(const char *what, const QStringList &words)
    {
        m_shapes.append(QLatin1String(what) + u' ' + words.join(u' '));
    }

    void drawLines(const QLineF *lines, int count) override
    {
        for (int i = 0; i < count; ++i) {
            const QPointF ends[] = {lines[i].p1(), lines[i].p2()};
            add("line", {pen(), places(ends, 2)});
        }
    }
    void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override
    {
        constexpr int most = 12;
        if (mode == PolylineMode && count > most) {
            const QPointF some[] = {points[0], points[count / 3], points[2 * count / 3], points[count - 1]};
            add("curve", {pen(), QString::number(count), places(some, 4)});
        } else if (mode == PolylineMode)
            add(count == 2 ? "line" : "polyline", {pen(), places(points, count)});
        else
            add("polygon", {pen(), brush(), places(points, count)});
    }
    void drawRects(const QRectF *rects, int count) override
    {
        for (int i = 0; i < count; ++i) {
            const QRectF r = state->transform().mapRect(rects[i]);
            add("rect", {pen(), brush(), number(r.x()), number(r.y()), number(r.width()), number(r.height())});
        }
    }
    void drawEllipse(const QRectF &r) override
    {
        const QPointF centre = r.center();
        QStringList words{pen(), brush(), places(&centre, 1), number(r.width() / 2), number(r.height() / 2)};
        if (degrees() != 0)
            words << number(std::remainder(degrees(), 180));
        add("ellipse", words);
    }
    void drawPath(const QPainterPath &path) override
    {
        const QRectF box = path.boundingRect();
        const QPointF centre = box.center();
        QPainterPath rect;
        rect.addRect(box);
        if (path == rect)
            return drawRects(&box, 1);
        add("path", {pen(), brush(), places(&centre, 1)});
    }
    void drawTextItem(const QPointF &at, const QTextItem &item) override
    {
        const QPointF middle = state->transform().map(at + QPointF(0, (item.descent() - item.ascent()) / 2));
        add("text",
            {colour(state->pen().color()), number(middle.x()), number(middle.y()),
             number(std::remainder(degrees(), 360)), item.text()});
    }
    void drawPixmap(const QRectF &r, const QPixmap &, const QRectF &) override { drawRects(&r, 1); }
    void drawImage(const QRectF &r, const QImage &image, const QRectF &, Qt::ImageConversionFlags) override
    {
        const QRectF place = state->transform().mapRect(r);
        QStringList words{number(place.x()), number(place.y()), number(place.width()), number(place.height())};
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                words << colour(image.pixelColor(x, y));
        add("image", words);
    }

    QSize m_size;
    QStringList m_shapes;
};

/// With numbers in place of %1 and so on.
inline QString filled(QString text, std::initializer_list<double> numbers)
{
    for (double number : numbers)
        text = text.arg(number);
    return text;
}

/// Word by word, of lines of `expected`; "*" stands for any word. Numbers may differ a little: those of paths and
/// texts, which depend on the font, by more than the others. Empty, or what is different.
inline QString difference(const QStringList &drawn, const QString &lines)
{
    const QStringList expected = lines.trimmed().split(u'\n');
    for (qsizetype i = 0; i < std::max(drawn.size(), expected.size()); ++i) {
        const double tolerance = drawn.value(i).startsWith(u"path") || drawn.value(i).startsWith(u"text") ? 1.5 : 0.1;
        const auto alike = [=](const QString &a, const QString &b) {
            bool isA = false, isB = false;
            const double distance = std::abs(a.toDouble(&isA) - b.toDouble(&isB));
            return a == b || b == u"*" || (isA && isB && distance <= tolerance);
        };
        const QStringList a = drawn.value(i).split(u' '), b = expected.value(i).split(u' ');
        if (a.size() != b.size() || !std::equal(a.begin(), a.end(), b.begin(), alike))
            return QStringLiteral("%1: %2\n   instead of %3\nof\n%4")
                .arg(i)
                .arg(drawn.value(i, QStringLiteral("nothing")), expected.value(i, QStringLiteral("nothing")),
                     drawn.join(u'\n'));
    }
    return {};
}

/// Fails the running test where the difference is not empty.
#define VERIFY_DRAWN(...)                                                                                              \
    do {                                                                                                               \
        const QString wrong = difference(__VA_ARGS__);                                                                 \
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));                                                                  \
    } while (false)
