// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/plot/Contours.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <cmath>

namespace Workbench {

namespace {

/// An edge between two neighbouring points: 2 * index of the left or upper point, plus 1 when it runs along the rows'
/// direction (downwards). Each edge is crossed at most once per level, so it names the point of the line.
using Edge = qint64;

struct Segment {
    Edge ends[2];
};

class Tracer {
public:
    Tracer(std::span<const double> values, int columns, double level)
        : m_values(values), m_columns(columns), m_level(level)
    {
    }

    void addSquare(int x, int y)
    {
        const qint64 corner = qint64(y) * m_columns + x;
        const double topLeft = m_values[corner];
        const double topRight = m_values[corner + 1];
        const double bottomLeft = m_values[corner + m_columns];
        const double bottomRight = m_values[corner + m_columns + 1];
        const int above = (topLeft >= m_level) | (topRight >= m_level) << 1 | (bottomRight >= m_level) << 2
            | (bottomLeft >= m_level) << 3;
        if (above == 0 || above == 15)
            return;
        const Edge top = 2 * corner;
        const Edge left = 2 * corner + 1;
        const Edge right = 2 * (corner + 1) + 1;
        const Edge bottom = 2 * (corner + m_columns);
        const auto pair = [&](Edge a, Edge b, Edge c, Edge d) {
            add(a, b);
            add(c, d);
        };
        const bool middleAbove = (topLeft + topRight + bottomLeft + bottomRight) / 4 >= m_level;
        switch (above) {
        case 1:
        case 14:
            add(left, top);
            break;
        case 2:
        case 13:
            add(top, right);
            break;
        case 3:
        case 12:
            add(left, right);
            break;
        case 4:
        case 11:
            add(right, bottom);
            break;
        case 6:
        case 9:
            add(top, bottom);
            break;
        case 7:
        case 8:
            add(left, bottom);
            break;
        case 5:
            middleAbove ? pair(top, right, left, bottom) : pair(left, top, right, bottom);
            break;
        case 10:
            middleAbove ? pair(left, top, right, bottom) : pair(top, right, left, bottom);
            break;
        }
    }

    std::vector<QPolygonF> join()
    {
        m_used.assign(m_segments.size(), false);
        std::vector<QPolygonF> polygons;
        // The open lines first, each from an end, then what is left: closed ones.
        for (bool openOnly : {true, false}) {
            for (int s = 0; s < int(m_segments.size()); ++s) {
                for (int end = 0; end < 2; ++end) {
                    if (!m_used[s] && (!openOnly || m_atEdge[m_segments[s].ends[end]][1] < 0))
                        polygons.push_back(follow(s, end));
                }
            }
        }
        return polygons;
    }

private:
    void add(Edge from, Edge to)
    {
        const int index = int(m_segments.size());
        m_segments.push_back({{from, to}});
        for (Edge edge : {from, to}) {
            auto it = m_atEdge.find(edge);
            if (it == m_atEdge.end())
                m_atEdge.insert(edge, {index, -1});
            else
                (*it)[1] = index;
        }
    }

    QPolygonF follow(int segment, int startEnd)
    {
        QPolygonF line{point(m_segments[segment].ends[startEnd])};
        Edge edge = m_segments[segment].ends[1 - startEnd];
        while (segment >= 0 && !m_used[segment]) {
            m_used[segment] = true;
            line.append(point(edge));
            const auto &pair = m_atEdge[edge];
            segment = pair[0] == segment ? pair[1] : pair[0];
            if (segment >= 0) {
                const auto &ends = m_segments[segment].ends;
                edge = ends[0] == edge ? ends[1] : ends[0];
            }
        }
        return line;
    }

    QPointF point(Edge edge) const
    {
        const qint64 from = edge / 2;
        const bool down = edge % 2;
        const double a = m_values[from];
        const double b = m_values[from + (down ? m_columns : 1)];
        const double share = (m_level - a) / (b - a);
        const QPointF start(qreal(from % m_columns), qreal(from / m_columns));
        return start + (down ? QPointF(0, share) : QPointF(share, 0));
    }

    std::span<const double> m_values;
    qint64 m_columns;
    double m_level;
    std::vector<Segment> m_segments;
    std::vector<bool> m_used;
    QHash<Edge, std::array<int, 2>> m_atEdge; // the one or two segments that end at an edge, -1 for none
};

} // namespace

namespace Contours {

std::vector<QPolygonF> lines(std::span<const double> values, int columns, int rows, double level)
{
    Tracer tracer(values, columns, level);
    for (int y = 0; y + 1 < rows; ++y) {
        for (int x = 0; x + 1 < columns; ++x)
            tracer.addSquare(x, y);
    }
    return tracer.join();
}

std::vector<double> levels(std::span<const double> values, double lowest, double factor, int count)
{
    double highest = 0;
    double deepest = 0;
    for (double value : values) {
        highest = std::max(highest, value);
        deepest = std::min(deepest, value);
    }
    const double largest = std::max(highest, -deepest);
    std::vector<double> levels;
    double level = lowest * largest;
    for (int i = 0; i < count && level > 0 && level < largest; ++i, level *= factor) {
        if (level < highest)
            levels.push_back(level);
        if (-level > deepest)
            levels.push_back(-level);
    }
    return levels;
}

} // namespace Contours

} // namespace Workbench
