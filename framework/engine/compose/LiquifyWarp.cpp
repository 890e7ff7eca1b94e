// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LiquifyWarp.h"

#include "PixelLanes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <utility>

namespace rvengine {

namespace {

enum Style {
    Push = 0,
    Bloat = 1,
    Pinch = 2,
};

bool isFinite(const QPointF& point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

/// A stroke as it is asked where the px come from.
struct Brush
{
    QPointF center;
    double radius = 0.0;
    QPointF push;       ///< what is at p comes from p + push * weight
    double scale = 0.0; ///< ... and from center + (p - center) * (1 + scale * weight)

    /// Nothing when the stroke does nothing.
    static bool fromStroke(const LiquifyStroke& stroke, Brush& brush)
    {
        const bool hasCircle =
            isFinite(stroke.center) && std::isfinite(stroke.radius) && stroke.radius > 0.0;
        if (!hasCircle || !std::isfinite(stroke.strength) || stroke.strength <= 0.0)
            return false;
        const double strength = std::min(stroke.strength, 1.0);
        brush = {stroke.center, stroke.radius, QPointF(), 0.0};
        switch (stroke.style) {
        case Push:
            brush.push = (stroke.from - stroke.to) * strength;
            return isFinite(brush.push) && brush.push != QPointF();
        case Bloat:
            brush.scale = -0.5 * strength;
            return true;
        case Pinch:
            brush.scale = 0.5 * strength;
            return true;
        default:
            return false;
        }
    }

    /// Whether the point is within the circle, and then where its content comes from.
    bool trace(QPointF& point) const
    {
        const QPointF offset = point - center;
        const double x = offset.x() / radius;
        const double y = offset.y() / radius;
        const double inside = 1.0 - (x * x + y * y);
        if (!(inside > 0.0))
            return false;
        const double weight = inside * inside;
        point += (push + offset * scale) * weight;
        return true;
    }
};

/// A rectangle of edges, which unlike that of Qt may have infinite ones.
struct Bounds
{
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;

    static Bounds of(const Brush& brush)
    {
        return {brush.center.x() - brush.radius, brush.center.y() - brush.radius,
                brush.center.x() + brush.radius, brush.center.y() + brush.radius};
    }

    bool isEmpty() const { return !(left < right && top < bottom); }
    double width() const { return right - left; }
    double height() const { return bottom - top; }

    Bounds intersected(const Bounds& other) const
    {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }

    Bounds united(const Bounds& other) const
    {
        if (isEmpty())
            return other;
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }
};

/// The brushes by the cells of a raster that they reach: of the many strokes of a long drag few
/// are near a point.
class BrushRaster
{
public:
    BrushRaster(std::vector<Brush> brushes, const Bounds& area)
        : m_brushes(std::move(brushes))
        , m_area(area)
    {
        for (std::size_t index = 0; index < m_brushes.size(); ++index)
            add(index);
    }

    /// Where the content of the point comes from: the last stroke acts on what those before it
    /// made, so that it is the first to be asked.
    QPointF source(QPointF point) const
    {
        std::size_t end = m_brushes.size();
        while (traceInCell(point, end)) {
        }
        return point;
    }

private:
    static constexpr std::size_t Cells = 16; // in either direction

    static std::size_t cell(double position, double begin, double length)
    {
        constexpr double LastCell = Cells - 1;
        return static_cast<std::size_t>(
            std::clamp((position - begin) / length * Cells, 0.0, LastCell));
    }

    std::size_t column(double x) const { return cell(x, m_area.left, m_area.width()); }
    std::size_t row(double y) const { return cell(y, m_area.top, m_area.height()); }

    void add(std::size_t index)
    {
        const Bounds bounds = Bounds::of(m_brushes[index]);
        for (std::size_t y = row(bounds.top); y <= row(bounds.bottom); ++y) {
            for (std::size_t x = column(bounds.left); x <= column(bounds.right); ++x)
                m_cells[y * Cells + x].push_back(index);
        }
    }

    /// Traces the point back through the brushes before `end` until it leaves its cell, which gives
    /// true and the brush that moved it.
    bool traceInCell(QPointF& point, std::size_t& end) const
    {
        const std::size_t at = row(point.y()) * Cells + column(point.x());
        const std::vector<std::size_t>& cell = m_cells[at];
        auto next = std::lower_bound(cell.begin(), cell.end(), end);
        while (next != cell.begin()) {
            end = *--next;
            if (m_brushes[end].trace(point) && row(point.y()) * Cells + column(point.x()) != at)
                return true;
        }
        return false;
    }

    std::vector<Brush> m_brushes;
    Bounds m_area;
    std::array<std::vector<std::size_t>, Cells * Cells> m_cells; ///< ascending
};

/// How far from a px its content is, in px.
struct Shift
{
    float x = 0.0F;
    float y = 0.0F;
};

Shift shiftTo(const QPointF& offset)
{
    constexpr double Far = 1e9; // beyond any picture, and no trouble for what calculates with it
    return {static_cast<float>(std::clamp(offset.x(), -Far, Far)),
            static_cast<float>(std::clamp(offset.y(), -Far, Far))};
}

/// The same in 1/256 of an output px.
struct FixedShift
{
    int x = 0;
    int y = 0;
};

constexpr int FractionBits = 8;
constexpr int One = 1 << FractionBits;

/// So small that the difference of two shifts can be multiplied by a fraction.
constexpr float LargestShift = 8192.0F;

int toFixed(float shift, double scale)
{
    const double limited = std::clamp<double>(shift * scale, -LargestShift, LargestShift);
    return static_cast<int>(std::lround(limited * One));
}

FixedShift mixed(const FixedShift& first, const FixedShift& second, int fraction)
{
    const auto mix = [fraction](int from, int to) {
        return from + (((to - from) * fraction + One / 2) >> FractionBits);
    };
    return {mix(first.x, second.x), mix(first.y, second.y)};
}

/// The px of an axis of the output that a grid reaches, each with its place between two nodes.
class Axis
{
public:
    struct Place
    {
        int node = 0;     ///< at or before the px
        int fraction = 0; ///< towards the next node, 0 to 256
    };

    /// `begin` and `spacing` of the nodes are in output px.
    Axis(double begin, double spacing, int nodes, int outputSize)
    {
        const double end = begin + spacing * (nodes - 1);
        m_first = static_cast<int>(std::clamp<double>(std::ceil(begin - 0.5), 0, outputSize));
        const auto last =
            static_cast<int>(std::clamp<double>(std::floor(end - 0.5), -1, outputSize - 1));
        for (int pixel = m_first; pixel <= last; ++pixel) {
            const double position = std::max(0.0, (pixel + 0.5 - begin) / spacing);
            const int node = std::min(static_cast<int>(position), nodes - 2);
            const auto fraction = static_cast<int>(std::lround((position - node) * One));
            m_places.push_back({node, std::min(fraction, One)});
        }
    }

    int first() const { return m_first; }
    int count() const { return static_cast<int>(m_places.size()); }
    const Place& at(int index) const { return m_places[static_cast<std::size_t>(index)]; }

    /// The first px that lies behind the node.
    int firstAt(int node) const
    {
        const auto before = [](const Place& place, int limit) { return place.node < limit; };
        return static_cast<int>(std::lower_bound(m_places.begin(), m_places.end(), node, before) -
                                m_places.begin());
    }

private:
    int m_first = 0;
    std::vector<Place> m_places;
};

PixelLanes mixed(PixelLanes first, PixelLanes second, quint32 fraction)
{
    const PixelLanes sum = first * (One - fraction) + second * fraction + PixelLaneHalves;
    return (sum >> FractionBits) & PixelLaneMask;
}

/// The part of the unmoved picture that a warp looks at. Beyond it, its border goes on: that is the
/// border of the picture, or nobody looks there.
class Source
{
public:
    Source(const QImage& picture, const QRect& part)
        : m_pixels(picture.copy(part))
        , m_origin(part.topLeft())
        , m_bits(reinterpret_cast<const QRgb*>(m_pixels.constBits()))
        , m_stride(m_pixels.bytesPerLine() / static_cast<int>(sizeof(QRgb)))
        , m_last(part.width() - 1, part.height() - 1)
    {
    }

    /// The colour at a position in 1/256 px of the picture.
    QRgb at(int x, int y) const
    {
        const int column = (x >> FractionBits) - m_origin.x();
        const int row = (y >> FractionBits) - m_origin.y();
        const auto across = static_cast<quint32>(x & (One - 1));
        const auto down = static_cast<quint32>(y & (One - 1));
        if (column >= 0 && column < m_last.x() && row >= 0 && row < m_last.y()) {
            const QRgb* upper = m_bits + row * m_stride + column;
            const QRgb* lower = upper + m_stride;
            return blend(upper[0], upper[1], lower[0], lower[1], across, down);
        }
        return blend(nearest(column, row), nearest(column + 1, row), nearest(column, row + 1),
                     nearest(column + 1, row + 1), across, down);
    }

private:
    static QRgb blend(QRgb upperLeft, QRgb upperRight, QRgb lowerLeft, QRgb lowerRight,
                      quint32 across, quint32 down)
    {
        const PixelLanes left = mixed(toLanes(upperLeft), toLanes(lowerLeft), down);
        const PixelLanes right = mixed(toLanes(upperRight), toLanes(lowerRight), down);
        return fromLanes(mixed(left, right, across));
    }

    QRgb nearest(int column, int row) const
    {
        return m_bits[std::clamp(row, 0, m_last.y()) * m_stride +
                      std::clamp(column, 0, m_last.x())];
    }

    QImage m_pixels;
    QPoint m_origin;
    const QRgb* m_bits;
    std::ptrdiff_t m_stride;
    QPoint m_last;
};

/// Neighbouring nodes of a row.
struct Nodes
{
    int first = 0;
    int end = 0; ///< the one after the last
};

/// The shifts of a grid for one output size.
class ScaledGrid
{
public:
    ScaledGrid(const std::vector<Shift>& shifts, int columns, double scaleX, double scaleY)
        : m_columns(columns)
    {
        m_shifts.reserve(shifts.size());
        for (const Shift& shift : shifts)
            m_shifts.push_back({toFixed(shift.x, scaleX), toFixed(shift.y, scaleY)});
    }

    /// The px of the picture that the px of `area` are made of, and perhaps some more.
    QRect reach(const QRect& area) const
    {
        FixedShift least;
        FixedShift most;
        for (const FixedShift& shift : m_shifts) {
            least = {std::min(least.x, shift.x), std::min(least.y, shift.y)};
            most = {std::max(most.x, shift.x), std::max(most.y, shift.y)};
        }
        return area.adjusted(least.x >> FractionBits, least.y >> FractionBits,
                             (most.x >> FractionBits) + 1, (most.y >> FractionBits) + 1);
    }

    /// The nodes around the px that move between a row and the next.
    Nodes moving(int row) const
    {
        const Nodes upper = movingNodes(row);
        const Nodes lower = movingNodes(row + 1);
        return {std::max(std::min(upper.first, lower.first) - 1, 0),
                std::min(std::max(upper.end, lower.end) + 1, m_columns)};
    }

    /// The shifts of these nodes between a row and the next.
    void blend(const Axis::Place& place, const Nodes& nodes, std::vector<FixedShift>& line) const
    {
        const FixedShift* upper = m_shifts.data() + std::ptrdiff_t(place.node) * m_columns;
        const FixedShift* lower = upper + m_columns;
        for (int node = nodes.first; node < nodes.end; ++node)
            line[static_cast<std::size_t>(node)] = mixed(upper[node], lower[node], place.fraction);
    }

private:
    /// From the first node of a row that moves to the last; when none does, the end of the row and
    /// its beginning.
    Nodes movingNodes(int row) const
    {
        const auto moves = [](const FixedShift& shift) { return shift.x != 0 || shift.y != 0; };
        const auto begin = m_shifts.begin() + std::ptrdiff_t(row) * m_columns;
        const auto end = begin + m_columns;
        const auto first = std::find_if(begin, end, moves);
        const auto last =
            std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(begin), moves);
        return {static_cast<int>(first - begin), static_cast<int>(last.base() - begin)};
    }

    int m_columns;
    std::vector<FixedShift> m_shifts;
};

/// Moves the px of the row `y` of the picture that are between the nodes, whose shifts stand in
/// `line`.
void moveRow(QRgb* pixels, int y, const Axis& across, const Nodes& nodes,
             const std::vector<FixedShift>& line, const Source& source)
{
    const int end = across.firstAt(nodes.end - 1);
    for (int index = across.firstAt(nodes.first); index < end; ++index) {
        const Axis::Place& place = across.at(index);
        const FixedShift* node = line.data() + place.node;
        const FixedShift shift = mixed(node[0], node[1], place.fraction);
        const int x = across.first() + index;
        if (shift.x != 0 || shift.y != 0)
            pixels[x] = source.at(x * One + shift.x, y * One + shift.y);
    }
}

} // namespace

/// Where the content of the px comes from, at the nodes of a grid over all that moves.
struct LiquifyWarp::Field
{
    Field(std::vector<Brush> brushes, const Bounds& area, QSize size)
        : pictureSize(size)
        , left(area.left)
        , top(area.top)
        , spacing(spacingFor(brushes, area))
        , columns(nodesFor(area.width(), spacing))
        , rows(nodesFor(area.height(), spacing))
    {
        const BrushRaster raster(std::move(brushes), area);
        shifts.reserve(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                const QPointF node(left + column * spacing, top + row * spacing);
                shifts.push_back(shiftTo(raster.source(node) - node));
            }
        }
    }

    static int nodesFor(double length, double spacing)
    {
        return static_cast<int>(std::max(1.0, std::ceil(length / spacing))) + 1;
    }

    /// Fine enough for the smallest brush, and coarser where that would be too many nodes.
    static double spacingFor(const std::vector<Brush>& brushes, const Bounds& area)
    {
        constexpr double MostNodes = 500000.0;
        const auto smallest = std::min_element(
            brushes.begin(), brushes.end(),
            [](const Brush& one, const Brush& other) { return one.radius < other.radius; });
        double spacing = std::clamp(smallest->radius / 8.0, 1.0, 4.0);
        while ((area.width() / spacing + 2.0) * (area.height() / spacing + 2.0) > MostNodes)
            spacing *= 1.25;
        return spacing;
    }

    QSize pictureSize;
    double left;    ///< of the grid, in px of the picture
    double top;     ///< of the grid, in px of the picture
    double spacing; ///< of the nodes, in px of the picture
    int columns;    ///< of nodes, two at least
    int rows;       ///< of nodes, two at least
    std::vector<Shift> shifts;
};

LiquifyWarp::LiquifyWarp(const std::vector<LiquifyStroke>& strokes, QSize pictureSize)
{
    if (pictureSize.isEmpty())
        return;
    const Bounds picture{0.0, 0.0, double(pictureSize.width()), double(pictureSize.height())};
    std::vector<Brush> brushes;
    Bounds moved;
    for (const LiquifyStroke& stroke : strokes) {
        Brush brush;
        if (!Brush::fromStroke(stroke, brush))
            continue;
        const Bounds reached = Bounds::of(brush).intersected(picture);
        if (!reached.isEmpty())
            moved = moved.united(reached);
        brushes.push_back(brush); // also one beside the picture: content may be traced to there
    }
    if (!moved.isEmpty())
        m_field = std::make_shared<const Field>(std::move(brushes), moved, pictureSize);
}

void LiquifyWarp::apply(QImage& picture) const
{
    if (picture.isNull() || !m_field)
        return;
    if (picture.format() != QImage::Format_RGB32 &&
        picture.format() != QImage::Format_ARGB32_Premultiplied)
        picture = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);

    const Field& field = *m_field;
    const double scaleX = double(picture.width()) / field.pictureSize.width();
    const double scaleY = double(picture.height()) / field.pictureSize.height();
    const Axis across(field.left * scaleX, field.spacing * scaleX, field.columns, picture.width());
    const Axis down(field.top * scaleY, field.spacing * scaleY, field.rows, picture.height());
    const QRect area(across.first(), down.first(), across.count(), down.count());
    if (area.isEmpty())
        return;

    const ScaledGrid grid(field.shifts, field.columns, scaleX, scaleY);
    const Source source(picture, grid.reach(area) & picture.rect());
    std::vector<FixedShift> line(static_cast<std::size_t>(field.columns));
    for (int index = 0; index < area.height(); ++index) {
        const int y = area.top() + index;
        const Nodes nodes = grid.moving(down.at(index).node);
        grid.blend(down.at(index), nodes, line);
        moveRow(reinterpret_cast<QRgb*>(picture.scanLine(y)), y, across, nodes, line, source);
    }
}

} // namespace rvengine
