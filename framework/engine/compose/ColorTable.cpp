// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ColorTable.h"

#include <engine/media/LocalFile.h>

#include <QFile>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

namespace rvengine {

namespace {

/// Three channels in one number, red lowest. A lane is wide enough for a colour of the table times
/// a weight, so that one multiplication weighs all three.
using Lanes = quint64;

constexpr int LaneBits = 21;
constexpr Lanes LaneMask = (Lanes(1) << LaneBits) - 1;
constexpr int WeightBits = 10;
constexpr quint32 FullWeight = 1U << WeightBits;
constexpr int LevelBits = 3; // a colour of the table is finer than a level of a picture by these
constexpr int WeighedBits = LevelBits + WeightBits; // so is a sum of colours times weights
constexpr double FullColor = 255 << LevelBits;

constexpr Lanes inLane(quint64 value, int channel)
{
    return value << (LaneBits * channel);
}

constexpr quint32 fromLane(Lanes lanes, int channel)
{
    return static_cast<quint32>((lanes >> (LaneBits * channel)) & LaneMask);
}

using Numbers = std::array<double, 3>;

std::string_view takeWord(std::string_view& line)
{
    constexpr std::string_view Blanks = " \t";
    line.remove_prefix(std::min(line.find_first_not_of(Blanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(Blanks));
    line.remove_prefix(word.size());
    return word;
}

template <typename Number>
bool toNumber(std::string_view word, Number& number)
{
    const char* end = word.data() + word.size();
    const auto [parsed, error] = std::from_chars(word.data(), end, number);
    return error == std::errc() && parsed == end;
}

/// Just as many finite numbers as there are, and nothing else.
template <std::size_t Count>
bool toNumbers(std::string_view line, std::array<double, Count>& numbers)
{
    for (double& number : numbers) {
        if (!toNumber(takeWord(line), number) || !std::isfinite(number))
            return false;
    }
    return takeWord(line).empty();
}

/// Reads the text of a table line by line.
class CubeReader
{
public:
    bool read(std::string_view text)
    {
        constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
        if (text.substr(0, ByteOrderMark.size()) == ByteOrderMark)
            text.remove_prefix(ByteOrderMark.size());
        m_textSize = text.size();
        while (!text.empty()) {
            const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
            if (!takeLine(text.substr(0, end)))
                return false;
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        return m_size > 0 && m_colors.size() == colorCount() && hasDomain();
    }

    bool isCube() const { return m_isCube; }
    quint32 size() const { return m_size; }
    double low(std::size_t channel) const { return m_low[channel]; }
    double high(std::size_t channel) const { return m_high[channel]; }
    std::vector<Lanes> takeColors() { return std::move(m_colors); }

private:
    bool takeLine(std::string_view line)
    {
        std::string_view rest = line;
        const std::string_view word = takeWord(rest);
        if (word.empty() || word.front() == '#')
            return true;
        const bool isKeyword = word.front() >= 'A' && word.front() <= 'Z';
        return isKeyword ? takeKeyword(word, rest) : takeColor(line);
    }

    bool takeKeyword(std::string_view word, std::string_view rest)
    {
        if (!m_colors.empty())
            return false;
        if (word == "TITLE")
            return true;
        if (word == "LUT_3D_SIZE")
            return takeSize(rest, 256, true);
        if (word == "LUT_1D_SIZE")
            return takeSize(rest, 65536, false);
        if (word == "DOMAIN_MIN")
            return toNumbers(rest, m_low);
        if (word == "DOMAIN_MAX")
            return toNumbers(rest, m_high);
        if (word == "LUT_3D_INPUT_RANGE" || word == "LUT_1D_INPUT_RANGE")
            return takeRange(rest);
        return false;
    }

    bool takeSize(std::string_view rest, quint32 largest, bool isCube)
    {
        if (m_size != 0 || !toNumber(takeWord(rest), m_size) || !takeWord(rest).empty())
            return false;
        m_isCube = isCube;
        return m_size >= 2 && m_size <= largest;
    }

    bool takeRange(std::string_view rest)
    {
        std::array<double, 2> range{};
        if (!toNumbers(rest, range))
            return false;
        m_low.fill(range[0]);
        m_high.fill(range[1]);
        return true;
    }

    bool takeColor(std::string_view line)
    {
        Numbers color{};
        if (m_size == 0 || m_colors.size() == colorCount() || !toNumbers(line, color))
            return false;
        if (m_colors.empty() && !reserveColors())
            return false;
        Lanes lanes = 0;
        for (int channel = 0; channel < 3; ++channel) {
            const double value = std::clamp(color[static_cast<std::size_t>(channel)], 0.0, 1.0);
            lanes |= inLane(static_cast<quint64>(std::lround(value * FullColor)), channel);
        }
        m_colors.push_back(lanes);
        return true;
    }

    /// No memory for colours that the text is too short to have: each takes a line of three digits.
    bool reserveColors()
    {
        constexpr std::size_t ShortestLine = 6;
        if (colorCount() > m_textSize / ShortestLine + 1)
            return false;
        m_colors.reserve(colorCount());
        return true;
    }

    std::size_t colorCount() const
    {
        const std::size_t size = m_size;
        return m_isCube ? size * size * size : size;
    }

    bool hasDomain() const
    {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            if (m_low[channel] >= m_high[channel] ||
                !std::isfinite(m_high[channel] - m_low[channel]))
                return false;
        }
        return true;
    }

    std::size_t m_textSize = 0;
    bool m_isCube = false;
    quint32 m_size = 0;
    Numbers m_low{0.0, 0.0, 0.0};
    Numbers m_high{1.0, 1.0, 1.0};
    std::vector<Lanes> m_colors;
};

/// The whole of a file that is not larger than a table may be.
std::optional<QByteArray> content(const std::string& path)
{
    constexpr qint64 LargestFile = 512LL * 1024 * 1024;
    const auto readable = readableFile(path);
    QFile file;
    if (!readable || !openForReading(file, *readable) || file.size() > LargestFile)
        return std::nullopt;
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

/// The channels of `from` to `to` by a strength of 0 to `FullWeight`; `to` is a weighed sum.
QRgb blended(QRgb from, Lanes to, quint32 strength)
{
    constexpr int Bits = WeighedBits + WeightBits;
    const auto channel = [from, to, strength](int index, int shift) {
        const quint32 before = ((from >> shift) & 0xFF) << WeighedBits;
        const quint32 sum = before * (FullWeight - strength) + fromLane(to, index) * strength;
        return ((sum + (1U << (Bits - 1))) >> Bits) << shift;
    };
    return (from & 0xFF000000U) | channel(0, 16) | channel(1, 8) | channel(2, 0);
}

/// The channels of a weighed sum, with the alpha of `from`.
QRgb rounded(QRgb from, Lanes to)
{
    constexpr Lanes Half = Lanes(1) << (WeighedBits - 1);
    constexpr Lanes Halves = inLane(Half, 0) | inLane(Half, 1) | inLane(Half, 2);
    const Lanes sum = to + Halves;
    return (from & 0xFF000000U) | (fromLane(sum, 0) >> WeighedBits) << 16 |
           (fromLane(sum, 1) >> WeighedBits) << 8 | fromLane(sum, 2) >> WeighedBits;
}

/// Replaces every pixel by what `color` gives for it.
template <typename Color>
void replacePixels(QImage& picture, Color color)
{
    const int width = picture.width();
    for (int y = 0; y < picture.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        QRgb before = row[0];
        QRgb after = color(before);
        for (int x = 0; x < width; ++x) {
            if (row[x] != before) { // neighbours often have the same colour
                before = row[x];
                after = color(before);
            }
            row[x] = after;
        }
    }
}

/// Replaces every pixel by what `color` gives for its colour, which is not multiplied by alpha.
template <typename Color>
void recolor(QImage& picture, Color color)
{
    if (picture.format() == QImage::Format_RGB32) {
        replacePixels(picture, color);
        return;
    }
    replacePixels(picture, [color](QRgb pixel) {
        const int alpha = qAlpha(pixel);
        if (alpha == 255)
            return color(pixel);
        return alpha == 0 ? pixel : qPremultiply(color(qUnpremultiply(pixel)));
    });
}

} // namespace

/// The colours, and where the 256 values of each channel lie between them.
struct ColorTable::Table
{
    struct Level
    {
        quint32 offset = 0; ///< of the colour at or below it
        quint32 weight = 0; ///< of the next colour, 0 to `FullWeight`
    };

    explicit Table(CubeReader& reader)
        : isCube(reader.isCube())
        , colors(reader.takeColors())
    {
        const quint32 size = reader.size();
        strides =
            isCube ? std::array<quint32, 3>{1, size, size * size} : std::array<quint32, 3>{1, 1, 1};
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const double low = reader.low(channel);
            const double range = reader.high(channel) - low;
            for (std::size_t value = 0; value < 256; ++value) {
                const double part = (static_cast<double>(value) / 255.0 - low) / range;
                levels[channel][value] = level(part, size, strides[channel]);
            }
        }
    }

    static Level level(double part, quint32 size, quint32 stride)
    {
        const double position = std::clamp(part, 0.0, 1.0) * (size - 1);
        const quint32 below = std::min(static_cast<quint32>(position), size - 2);
        const auto weight = std::lround((position - below) * FullWeight);
        return {below * stride, static_cast<quint32>(weight)};
    }

    /// The colour of the table for that of a pixel, times the full weight.
    Lanes weighed(QRgb pixel) const
    {
        const Level& red = levels[0][(pixel >> 16) & 0xFF];
        const Level& green = levels[1][(pixel >> 8) & 0xFF];
        const Level& blue = levels[2][pixel & 0xFF];
        return isCube ? inTetrahedron(red, green, blue)
                      : (onCurve(red) & LaneMask) | (onCurve(green) & inLane(LaneMask, 1)) |
                            (onCurve(blue) & inLane(LaneMask, 2));
    }

    Lanes onCurve(const Level& at) const
    {
        return colors[at.offset] * (FullWeight - at.weight) + colors[at.offset + 1] * at.weight;
    }

    /// Walks from the lowest corner of the cell to the highest, along the channel with the largest
    /// weight first: the colours on that way are those of the tetrahedron that holds the pixel.
    /// Weight and stride of a channel are sorted as one number, which needs no branches.
    Lanes inTetrahedron(const Level& red, const Level& green, const Level& blue) const
    {
        constexpr int StrideBits = 18;
        constexpr quint32 StrideMask = (1U << StrideBits) - 1;
        quint32 first = red.weight << StrideBits | strides[0];
        quint32 second = green.weight << StrideBits | strides[1];
        quint32 third = blue.weight << StrideBits | strides[2];
        sortDown(first, second);
        sortDown(second, third);
        sortDown(first, second);

        const Lanes* color = colors.data() + (red.offset + green.offset + blue.offset);
        Lanes sum = *color * (FullWeight - (first >> StrideBits));
        color += first & StrideMask;
        sum += *color * ((first >> StrideBits) - (second >> StrideBits));
        color += second & StrideMask;
        sum += *color * ((second >> StrideBits) - (third >> StrideBits));
        color += third & StrideMask;
        return sum + *color * (third >> StrideBits);
    }

    static void sortDown(quint32& larger, quint32& smaller)
    {
        const quint32 swapped = (larger ^ smaller) & (larger < smaller ? ~0U : 0U);
        larger ^= swapped;
        smaller ^= swapped;
    }

    bool isCube;
    std::vector<Lanes> colors;        ///< red fastest
    std::array<quint32, 3> strides{}; ///< from a colour to the next, for each channel
    std::array<std::array<Level, 256>, 3> levels;
};

ColorTable::ColorTable(std::shared_ptr<const Table> table)
    : m_table(std::move(table))
{
}

std::optional<ColorTable> ColorTable::load(const std::string& path)
{
    const auto text = content(path);
    return text ? parse(*text) : std::nullopt;
}

std::optional<ColorTable> ColorTable::parse(const QByteArray& text)
{
    CubeReader reader;
    if (!reader.read({text.constData(), static_cast<std::size_t>(text.size())}))
        return std::nullopt;
    return ColorTable(std::make_shared<const Table>(reader));
}

void ColorTable::apply(QImage& picture, double strength) const
{
    const double part = std::isnan(strength) ? 0.0 : std::clamp(strength, 0.0, 1.0);
    const auto weight = static_cast<quint32>(std::lround(part * FullWeight));
    if (picture.isNull() || weight == 0)
        return;
    if (picture.format() != QImage::Format_RGB32 &&
        picture.format() != QImage::Format_ARGB32_Premultiplied)
        picture = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);

    const Table& table = *m_table;
    if (weight == FullWeight)
        recolor(picture, [&table](QRgb pixel) { return rounded(pixel, table.weighed(pixel)); });
    else
        recolor(picture, [&table, weight](QRgb pixel) {
            return blended(pixel, table.weighed(pixel), weight);
        });
}

} // namespace rvengine
