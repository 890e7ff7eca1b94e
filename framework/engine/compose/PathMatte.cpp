// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PathMatte.h"

#include "PixelLanes.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

namespace rvengine {

namespace {

constexpr int LargestSide = 4096;     // px of a mask
constexpr double SmallestSide = 1e-6; // output px
constexpr int FractionBits = 8;       // of a position within a mask
constexpr int One = 1 << FractionBits;

/// How a side of the box is divided into mask px.
struct Side
{
    int pixels = 0;
    double perOutputPx = 1.0;
};

/// The outermost mask px lie wholly within the box, because they are what goes on beyond it. Their
/// number is even, so that mask px are output px when the centre is at a whole one.
Side sideOf(double outputPixels)
{
    constexpr double Rounding = 1e-6; // as much less than a whole number still is one
    if (outputPixels > LargestSide)
        return {LargestSide, LargestSide / outputPixels};
    if (outputPixels < 2.0)
        return {2, 2.0 / outputPixels};
    return {2 * static_cast<int>(outputPixels / 2.0 + Rounding), 1.0};
}

QImage drawn(const MatteShape& shape, const Side& width, const Side& height, double pixelsPerBoxPx)
{
    QImage mask(width.pixels, height.pixels, QImage::Format_Alpha8);
    if (mask.isNull())
        return mask;
    mask.fill(0);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width.pixels / 2.0, height.pixels / 2.0);
    painter.scale(width.perOutputPx * pixelsPerBoxPx, height.perOutputPx * pixelsPerBoxPx);
    painter.translate(-shape.box.width() / 2.0, -shape.box.height() / 2.0);
    painter.fillPath(shape.path, Qt::black);
    return mask;
}

/// The mean of each value of `line` and its `reach` neighbours to either side; the ends go on.
void averageLine(const std::vector<quint16>& line, std::vector<quint16>& means, int reach)
{
    const int last = static_cast<int>(line.size()) - 1;
    const auto at = [&line, last](int index) {
        return quint32(line[static_cast<std::size_t>(std::clamp(index, 0, last))]);
    };
    const quint64 count = static_cast<quint64>(reach) * 2 + 1;
    const quint64 reciprocal = ((quint64(1) << 32) + count - 1) / count;
    quint32 sum = 0;
    for (int index = -reach; index <= reach; ++index)
        sum += at(index);
    for (int index = 0; index <= last; ++index) {
        means[static_cast<std::size_t>(index)] = static_cast<quint16>((sum * reciprocal) >> 32);
        sum += at(index + reach + 1);
        sum -= at(index - reach);
    }
}

/// Softens along the rows. Three averages are near enough to a bell; together they reach as far as
/// the radius.
void blurRows(QImage& mask, int radius)
{
    std::vector<quint16> line(static_cast<std::size_t>(mask.width()));
    std::vector<quint16> means(line.size());
    for (int y = 0; y < mask.height(); ++y) {
        uchar* row = mask.scanLine(y);
        std::transform(row, row + mask.width(), line.begin(),
                       [](uchar value) { return static_cast<quint16>(value << 8); });
        for (const int reach : {radius / 3, (radius + 1) / 3, (radius + 2) / 3}) {
            averageLine(line, means, reach);
            line.swap(means);
        }
        std::transform(line.begin(), line.end(), row,
                       [](quint16 value) { return static_cast<uchar>((value + 128) >> 8); });
    }
}

/// Rows become columns, by blocks that fit into the cache.
QImage transposed(const QImage& mask)
{
    constexpr int Block = 32;
    QImage result(mask.height(), mask.width(), mask.format());
    if (result.isNull())
        return result;
    const auto copyBlock = [&mask, &result](int left, int top) {
        const int bottom = std::min(top + Block, mask.height());
        for (int x = left; x < std::min(left + Block, mask.width()); ++x) {
            uchar* row = result.scanLine(x);
            for (int y = top; y < bottom; ++y)
                row[y] = mask.constScanLine(y)[x];
        }
    };
    for (int top = 0; top < mask.height(); top += Block) {
        for (int left = 0; left < mask.width(); left += Block)
            copyBlock(left, top);
    }
    return result;
}

QImage feathered(QImage mask, int columns, int rows)
{
    if (columns > 0)
        blurRows(mask, columns);
    if (rows == 0)
        return mask;
    QImage turned = transposed(mask);
    blurRows(turned, rows);
    return transposed(turned);
}

/// `value` * `weight` / 255, rounded.
uchar scaled(uchar value, uchar weight)
{
    const auto product = static_cast<quint16>(value * weight + 128);
    return static_cast<uchar>((product + (product >> 8)) >> 8);
}

uchar mixed(uchar first, uchar second, int fraction)
{
    const int sum = first * (One - fraction) + second * fraction;
    return static_cast<uchar>((sum + One / 2) >> FractionBits);
}

/// Where in a mask side output px are sampled, in 1/256 of a mask px. Beyond the ends stands the
/// last px.
class Positions
{
public:
    Positions(int first, int count, double center, const Side& side)
        : m_unitSteps(side.perOutputPx == 1.0)
    {
        const double last = side.pixels - 1;
        m_positions.reserve(static_cast<std::size_t>(count));
        for (int pixel = first; pixel < first + count; ++pixel) {
            const double distance = (pixel + 0.5 - center) * side.perOutputPx;
            const double position = std::clamp(distance + last / 2.0, 0.0, last);
            m_positions.push_back(static_cast<int>(std::lround(position * One)));
        }
        const auto inner = std::upper_bound(m_positions.begin(), m_positions.end(), 0);
        const auto beyond =
            std::lower_bound(inner, m_positions.end(), (side.pixels - 1) << FractionBits);
        m_innerBegin = inner - m_positions.begin();
        m_innerEnd = beyond - m_positions.begin();
    }

    int first() const { return m_positions.front() >> FractionBits; }
    int last() const { return m_positions.back() >> FractionBits; }
    int at(int index) const { return m_positions[static_cast<std::size_t>(index)]; }

    /// Samples `side`, whose last value stands in it twice.
    void sample(const uchar* side, uchar* line) const
    {
        const auto count = static_cast<std::ptrdiff_t>(m_positions.size());
        std::fill(line, line + m_innerBegin, side[first()]);
        std::fill(line + m_innerEnd, line + count, side[last()]);
        if (m_innerBegin == m_innerEnd)
            return;
        if (m_unitSteps)
            sampleUnitSteps(side, line);
        else
            sampleEach(side, line);
    }

private:
    void sampleUnitSteps(const uchar* side, uchar* line) const
    {
        const int position = m_positions[static_cast<std::size_t>(m_innerBegin)];
        const int fraction = position & (One - 1);
        const uchar* from = side + (position >> FractionBits);
        const std::ptrdiff_t count = m_innerEnd - m_innerBegin;
        uchar* inner = line + m_innerBegin;
        if (fraction == 0) {
            std::copy(from, from + count, inner);
            return;
        }
        for (std::ptrdiff_t index = 0; index < count; ++index)
            inner[index] = mixed(from[index], from[index + 1], fraction);
    }

    void sampleEach(const uchar* side, uchar* line) const
    {
        for (std::ptrdiff_t index = m_innerBegin; index < m_innerEnd; ++index) {
            const int position = m_positions[static_cast<std::size_t>(index)];
            const uchar* from = side + (position >> FractionBits);
            line[index] = mixed(from[0], from[1], position & (One - 1));
        }
    }

    std::vector<int> m_positions;
    std::ptrdiff_t m_innerBegin = 0; ///< those before it are at the first px of the side
    std::ptrdiff_t m_innerEnd = 0;   ///< those from it on are at the last px of the side
    bool m_unitSteps;
};

/// How much of each output px lies within a side of the box, 255 for all of it.
class Coverage
{
public:
    Coverage(int first, int count, double center, double side)
    {
        m_covered.reserve(static_cast<std::size_t>(count));
        for (int pixel = first; pixel < first + count; ++pixel) {
            const double begin = std::max<double>(pixel, center - side / 2.0);
            const double end = std::min<double>(pixel + 1.0, center + side / 2.0);
            const double part = std::max(0.0, end - begin);
            m_covered.push_back(static_cast<uchar>(std::lround(255.0 * part)));
        }
        const auto isFull = [](uchar covered) { return covered == 255; };
        const auto full = std::find_if(m_covered.begin(), m_covered.end(), isFull);
        const auto behind = std::find_if_not(full, m_covered.end(), isFull);
        m_fullBegin = full - m_covered.begin();
        m_fullEnd = behind - m_covered.begin();
    }

    uchar at(int index) const { return m_covered[static_cast<std::size_t>(index)]; }

    /// Multiplies a line by it: only what is not wholly within the box.
    void limit(std::vector<uchar>& line) const
    {
        weigh(line, 0, m_fullBegin);
        weigh(line, m_fullEnd, static_cast<std::ptrdiff_t>(line.size()));
    }

private:
    void weigh(std::vector<uchar>& line, std::ptrdiff_t begin, std::ptrdiff_t end) const
    {
        std::transform(line.begin() + begin, line.begin() + end, m_covered.begin() + begin,
                       line.begin() + begin, scaled);
    }

    std::vector<uchar> m_covered;
    std::ptrdiff_t m_fullBegin = 0;
    std::ptrdiff_t m_fullEnd = 0;
};

/// Two rows of the mask blended at a position, from the column `first` to the column `last`, which
/// is repeated.
void blendRows(const QImage& mask, int position, int first, int last, uchar* line)
{
    const int row = position >> FractionBits;
    const int fraction = position & (One - 1);
    const uchar* upper = mask.constScanLine(row);
    const uchar* lower = mask.constScanLine(std::min(row + 1, mask.height() - 1));
    if (fraction == 0) {
        std::copy(upper + first, upper + last + 1, line + first);
    } else {
        for (int x = first; x <= last; ++x)
            line[x] = mixed(upper[x], lower[x], fraction);
    }
    line[last + 1] = line[last];
}

/// As `scaled` does, for each channel.
QRgb scaledPixel(QRgb pixel, uchar weight)
{
    const PixelLanes products = toLanes(pixel) * weight + PixelLaneHalves;
    return fromLanes((products + (products >> 8 & PixelLaneMask)) >> 8 & PixelLaneMask);
}

/// A mask is full or empty nearly everywhere: eight px at a time are looked at, and most need no
/// multiplication.
void multiplyRow(QRgb* pixels, const uchar* weights, int count)
{
    constexpr int Step = sizeof(quint64);
    constexpr auto Full = ~quint64(0);
    int x = 0;
    for (; x + Step <= count; x += Step) {
        quint64 eight = 0;
        std::memcpy(&eight, weights + x, Step);
        if (eight == Full)
            continue;
        if (eight == 0) {
            std::fill_n(pixels + x, Step, 0U);
            continue;
        }
        for (int index = x; index < x + Step; ++index)
            pixels[index] = scaledPixel(pixels[index], weights[index]);
    }
    for (; x < count; ++x)
        pixels[x] = scaledPixel(pixels[x], weights[x]);
}

/// The mask as the output sees it within an area, row by row.
class MaskRows
{
public:
    MaskRows(const QImage& mask, Positions columns, Positions rows)
        : m_mask(mask)
        , m_columns(std::move(columns))
        , m_rows(std::move(rows))
        , m_blended(static_cast<std::size_t>(mask.width()) + 1)
    {
    }

    /// Nothing is seen beyond the box.
    void limit(Coverage columns, Coverage rows)
    {
        m_limits.emplace(Limits{std::move(columns), std::move(rows)});
    }

    /// Multiplies `count` px by the row `row` of the area; asked row by row.
    void multiply(QRgb* pixels, int count, int row)
    {
        const uchar covered = m_limits ? m_limits->rows.at(row) : uchar(255);
        if (covered == 0) {
            std::fill_n(pixels, count, 0U);
            return;
        }
        if (m_line.empty() || m_position != m_rows.at(row) || m_covered != covered)
            make(count, m_rows.at(row), covered);
        multiplyRow(pixels, m_line.data(), count);
    }

private:
    struct Limits
    {
        Coverage columns;
        Coverage rows;
    };

    void make(int count, int position, uchar covered)
    {
        m_position = position;
        m_covered = covered;
        m_line.resize(static_cast<std::size_t>(count));
        const int last = std::min(m_columns.last() + 1, m_mask.width() - 1);
        blendRows(m_mask, position, m_columns.first(), last, m_blended.data());
        m_columns.sample(m_blended.data(), m_line.data());
        if (m_limits)
            m_limits->columns.limit(m_line);
        if (covered != 255)
            std::transform(m_line.begin(), m_line.end(), m_line.begin(),
                           [covered](uchar value) { return scaled(value, covered); });
    }

    const QImage& m_mask;
    Positions m_columns;
    Positions m_rows;
    std::optional<Limits> m_limits;
    std::vector<uchar> m_blended;
    std::vector<uchar> m_line; ///< the row that was asked last, most rows are like it
    int m_position = 0;        ///< of that row
    uchar m_covered = 0;       ///< of that row
};

void clear(QImage& picture, const QRect& area)
{
    for (int y = area.top(); y <= area.bottom(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        std::fill_n(row + area.left(), area.width(), 0U);
    }
}

bool isSide(double outputPixels)
{
    return std::isfinite(outputPixels) && outputPixels >= SmallestSide;
}

} // namespace

PathMatte::PathMatte(const MatteShape& shape, double pixelsPerCanvasPx)
    : m_limitedToBox(shape.limitedToBox)
{
    const double pixelsPerBoxPx = shape.scale * pixelsPerCanvasPx;
    m_box = QSizeF(shape.box.width() * pixelsPerBoxPx, shape.box.height() * pixelsPerBoxPx);
    if (!(shape.scale > 0.0) || !isSide(m_box.width()) || !isSide(m_box.height()))
        return;
    const Side width = sideOf(m_box.width());
    const Side height = sideOf(m_box.height());
    m_columnsPerPx = width.perOutputPx;
    m_rowsPerPx = height.perOutputPx;

    const double percent = std::isnan(shape.feather) ? 0.0 : std::clamp(shape.feather, 0.0, 100.0);
    const double radius = percent / 100.0 * std::min(m_box.width(), m_box.height()) / 2.0;
    m_mask = feathered(drawn(shape, width, height, pixelsPerBoxPx),
                       static_cast<int>(std::lround(radius * m_columnsPerPx)),
                       static_cast<int>(std::lround(radius * m_rowsPerPx)));
}

void PathMatte::apply(QImage& picture, QPointF center) const
{
    apply(picture, center, picture.rect());
}

void PathMatte::apply(QImage& picture, QPointF center, QRect area) const
{
    area &= picture.rect();
    if (area.isEmpty())
        return;
    if (picture.format() != QImage::Format_ARGB32_Premultiplied)
        picture = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (m_mask.isNull() || !std::isfinite(center.x()) || !std::isfinite(center.y())) {
        clear(picture, area);
        return;
    }

    const int width = area.width();
    MaskRows rows(m_mask,
                  Positions(area.left(), width, center.x(), {m_mask.width(), m_columnsPerPx}),
                  Positions(area.top(), area.height(), center.y(), {m_mask.height(), m_rowsPerPx}));
    if (m_limitedToBox)
        rows.limit(Coverage(area.left(), width, center.x(), m_box.width()),
                   Coverage(area.top(), area.height(), center.y(), m_box.height()));
    for (int y = 0; y < area.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(picture.scanLine(area.top() + y));
        rows.multiply(row + area.left(), width, y);
    }
}

} // namespace rvengine
