// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PictureReader.h"

#include "DisplayGeometry.h"
#include "PictureConverter.h"
#include "VideoFrames.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <utility>

namespace rvengine {

namespace {

/// What was decoded last is kept up to these limits.
constexpr std::size_t mostFrames = 16;
constexpr std::size_t mostBytes = std::size_t{48} << 20;

/// Times are whole milliseconds: half of one before a picture begins is meant for it.
constexpr double rounding = 0.0005;
/// So are the time stamps of some containers; as much and a little more, for numbers are not exact.
constexpr double mostRounding = 2.0 * rounding + 1e-6;

/// A size that is worth converting to: a smaller picture is cheaper in every later step, and a
/// slightly larger one is cheaper to make here than by a painter.
bool isWorthConverting(QSize wanted, QSize size)
{
    return !wanted.isEmpty() && wanted.width() <= 2 * size.width() &&
           wanted.height() <= 2 * size.height();
}

std::size_t bytesOf(const AVFrame& frame)
{
    std::size_t bytes = 0;
    for (const AVBufferRef* buffer : frame.buf)
        bytes += buffer ? static_cast<std::size_t>(buffer->size) : 0;
    return bytes;
}

} // namespace

struct PictureReader::Media
{
    struct Shown
    {
        double time; ///< seconds since the file's start
        FramePointer frame;
    };

    explicit Media(std::unique_ptr<StreamDecoder> decoder)
        : geometry(displayGeometryOf(decoder->file()))
        , tolerance(std::min(rounding + av_q2d(decoder->stream().time_base) / 2.0, mostRounding))
        , frames(std::move(decoder))
    {
    }

    /// The time in seconds that is meant by `fileTime` ms.
    double timeFor(double fileTime) const
    {
        constexpr double longest = 1e9;
        const double time = std::isnan(fileTime) ? 0.0 : fileTime / 1000.0 + tolerance;
        return std::clamp(time, -longest, longest);
    }

    /// The picture shown at `time`, if that is among those that are kept and none is between.
    const Shown* known(double time) const
    {
        const auto after =
            std::upper_bound(kept.begin(), kept.end(), time,
                             [](double wanted, const Shown& shown) { return wanted < shown.time; });
        if (after == kept.begin())
            return !kept.empty() && kept.front().time <= first ? &kept.front() : nullptr;
        return after != kept.end() || isLast ? &*std::prev(after) : nullptr;
    }

    /// Decodes until the picture shown at `time` is known, or one before is enough.
    const Shown* reach(double time, const EnoughAsked& isEnough)
    {
        if (const Shown* const shown = known(time))
            return shown;
        if (kept.empty() ? isWorthSeeking(time) : time < kept.front().time || isWorthSeeking(time))
            seek(time);
        while (!known(time) && readNext()) {
            if (isEnough && isEnough())
                return &kept.back();
        }
        return known(time);
    }

    bool isWorthSeeking(double time) const { return frames.decoder().isWorthSeeking(time); }

    /// Leaves a picture at or before `time` as the only one that is kept, or the first one. Where
    /// that is can be guessed only in some formats.
    void seek(double time)
    {
        for (double back = 0.0;; back = 4.0 * back + 1.0) {
            const double from = std::max(time - back, 0.0);
            for (Shown& shown : kept) {
                if (shown.time == lastImage.time)
                    beforeJump = std::move(shown);
            }
            kept.clear();
            isLast = false;
            isAtStart = !frames.seek(from) || from <= 0.0;
            if (isAtStart || (readNext() && kept.front().time <= time))
                return;
        }
    }

    bool readNext()
    {
        FramePointer frame = frames.next();
        if (!frame) {
            isLast = frames.isAtEnd();
            return false;
        }
        const double time = frames.decoder().timeOf(*frame);
        if (std::exchange(isAtStart, false))
            first = time;
        beforeJump.frame.reset();
        // Files that lie go back in time.
        if (kept.empty() || time > kept.back().time) {
            bytes = kept.empty() ? 0 : bytes;
            bytes += bytesOf(*frame);
            kept.push_back({time, std::move(frame)});
        }
        while (kept.size() > 2 && (kept.size() > mostFrames || bytes > mostBytes)) {
            bytes -= bytesOf(*kept.front().frame);
            kept.pop_front();
        }
        return true;
    }

    /// What may be shown where the right picture cannot be decoded; null when there is nothing.
    const Shown* lastGood() const
    {
        if (!kept.empty())
            return &kept.back();
        return beforeJump.frame ? &beforeJump : nullptr;
    }

    QImage imageOf(const Shown& shown, QSize wanted)
    {
        const QSize size = isWorthConverting(wanted, geometry.size()) ? wanted : geometry.size();
        const bool isAgain = lastImage.time == shown.time && lastImage.size == size;
        if (isAgain && !lastImage.image.isNull())
            return lastImage.image;
        QImage made = converter.toImage(*shown.frame, geometry.turned(size));
        if (!geometry.isUpright())
            made = made.transformed(geometry.turn);
        lastImage = {shown.time, size, isAgain ? made : QImage()};
        return made;
    }

    const DisplayGeometry geometry;
    const double tolerance; ///< how much before it begins a picture is meant, seconds
    VideoFrames frames;
    std::deque<Shown> kept;         ///< by time, without gaps
    std::size_t bytes = 0;          ///< of those
    Shown beforeJump{0.0, nullptr}; ///< what was given before a jump after which none came yet
    bool isLast = false;            ///< nothing comes after them
    bool isAtStart = true;          ///< what is read next is the first picture of the file
    double first = -std::numeric_limits<double>::infinity(); ///< when that begins
    PictureConverter converter;
    /// What was given last. The picture itself is kept when it is asked for again only: so the one
    /// who gets it first, as in playing, may draw on it without a copy.
    struct
    {
        double time = std::numeric_limits<double>::quiet_NaN();
        QSize size;
        QImage image;
    } lastImage;
};

std::unique_ptr<PictureReader> PictureReader::open(const std::string& path, Interrupt interrupt)
{
    auto decoder = StreamDecoder::openVideo(path, std::move(interrupt));
    if (!decoder)
        return nullptr;
    return std::unique_ptr<PictureReader>(
        new PictureReader(std::make_unique<Media>(std::move(decoder))));
}

PictureReader::PictureReader(std::unique_ptr<Media> media)
    : m_media(std::move(media))
{
}

PictureReader::~PictureReader() = default;

QSize PictureReader::size() const
{
    return m_media->geometry.size();
}

QImage PictureReader::picture(double fileTime, QSize wanted, const EnoughAsked& isEnough)
{
    const Media::Shown* shown = m_media->reach(m_media->timeFor(fileTime), isEnough);
    if (!shown)
        shown = m_media->lastGood();
    return shown ? m_media->imageOf(*shown, wanted) : QImage();
}

void PictureReader::reach(double fileTime)
{
    m_media->reach(m_media->timeFor(fileTime), {});
}

void PictureReader::rest()
{
    m_media->frames.rest();
}

long long PictureReader::decodedCount() const
{
    return m_media->frames.decodedCount();
}

} // namespace rvengine
