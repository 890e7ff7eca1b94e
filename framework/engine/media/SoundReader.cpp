// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SoundReader.h"

#include <engine/base/SoundFormat.h>

#include "SoundConverter.h"
#include "StreamDecoder.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace rvengine {

namespace {

/// How far before a place decoding begins, seconds: lossy formats need what came before.
constexpr double warmUp = 0.5;
/// Time stamps that are off by less are meant to follow each other, seconds.
constexpr double jitter = 0.02;
/// Time stamps in whole milliseconds are off by this, seconds.
constexpr double coarseness = 0.0021;
/// A jump ahead by less is decoded through.
constexpr long long nearFrames = SoundRate;

/// Where the samples of a stream stand, counted at its own rate from the start of the file.
class SamplePlaces
{
public:
    explicit SamplePlaces(const StreamDecoder& decoder)
        : m_decoder(decoder)
        , m_rate(decoder.stream().codecpar->sample_rate)
    {
    }

    /// What comes next does not follow what came.
    void forget() { m_expected.reset(); }

    /// The place of the first sample of the frame, which is the next one that was decoded.
    long long placeOf(const AVFrame& frame)
    {
        const double told = std::clamp(m_decoder.timeOf(frame), -1e9, 1e9) * frame.sample_rate;
        const bool follows = m_expected && std::abs(told - static_cast<double>(*m_expected)) <=
                                               jitter * frame.sample_rate;
        const long long place = follows ? *m_expected : onGrid(told, frame);
        m_expected = place + frame.nb_samples;
        return place;
    }

private:
    /// Where stamps are coarser than samples, whole frames of the codec tell the exact place.
    long long onGrid(double told, const AVFrame& frame) const
    {
        const AVRational base = m_decoder.stream().time_base;
        const double near = coarseness * frame.sample_rate;
        const int size = m_decoder.frameSamples();
        const bool isCoarse = static_cast<double>(base.den) / base.num < frame.sample_rate;
        if (!isCoarse || size <= 0 || frame.sample_rate != m_rate)
            return std::llround(told);
        // The first frame may be a part of one, and so may one after a jump.
        const int first = m_decoder.firstSamples();
        const double end = told + frame.nb_samples;
        const auto frames = static_cast<long long>(std::round((end - first) / size));
        const long long place = first + frames * size - frame.nb_samples;
        return std::abs(told - static_cast<double>(place)) <= near ? place : std::llround(told);
    }

    const StreamDecoder& m_decoder;
    const int m_rate;
    std::optional<long long> m_expected;
};

} // namespace

struct SoundReader::Media
{
    explicit Media(std::unique_ptr<StreamDecoder> opened)
        : decoder(std::move(opened))
        , places(*decoder)
    {
    }

    bool isUsedUp() const { return given == block.size(); }
    long long nextFrame() const { return position + static_cast<long long>(given) / SoundChannels; }

    /// Makes `start` the next frame that is read, or the first one after it that there is.
    void moveTo(long long start)
    {
        const long long ahead = start - nextFrame();
        if (ahead < 0 || ahead > nearFrames || isFresh)
            seek(start);
        do {
            skipTo(start);
        } while (isUsedUp() && readAhead() && nextFrame() < start);
    }

    /// Leaves out what the block has before `start`.
    void skipTo(long long start)
    {
        if (nextFrame() < start) {
            const auto samples = static_cast<std::size_t>(start - nextFrame()) * SoundChannels;
            given += std::min(samples, block.size() - given);
        }
    }

    void seek(long long start)
    {
        const double time = static_cast<double>(start) / SoundRate;
        isFresh = false;
        for (double back = warmUp;; back = 4.0 * back) {
            forget();
            const double from = std::max(time - back, 0.0);
            const bool isAtStart = !decoder->seek(from) || from <= 0.0;
            converter.beginAt(time - warmUp / 2.0);
            if (!readAhead() || isAtStart || position <= start)
                return;
        }
    }

    void forget()
    {
        block.clear();
        given = 0;
        waiting.reset();
        places.forget();
        converter.reset();
    }

    /// Replaces the block, which is used up, by the next one that is decoded.
    bool readAhead()
    {
        block.clear();
        given = 0;
        while (block.empty()) {
            if (!waiting && !decodeNext()) {
                position = converter.finish(block);
                if (decoder->isAtEnd())
                    end = position + static_cast<long long>(block.size()) / SoundChannels;
                return !block.empty();
            }
            if (!converter.follows(*waiting, place)) {
                position = converter.finish(block);
                continue;
            }
            position = converter.add(*waiting, place, block);
            waiting.reset();
        }
        return true;
    }

    bool decodeNext()
    {
        do {
            waiting = decoder->next();
        } while (waiting && (waiting->sample_rate <= 0 || waiting->nb_samples <= 0));
        if (waiting)
            place = places.placeOf(*waiting);
        return waiting != nullptr;
    }

    const std::unique_ptr<StreamDecoder> decoder;
    SamplePlaces places;
    FramePointer waiting; ///< was decoded but not converted yet
    long long place = 0;  ///< of its first sample
    SoundConverter converter;
    std::vector<float> block;     ///< was decoded but not read yet, from `given` on
    std::size_t given = 0;        ///< samples
    long long position = 0;       ///< the frame with which the block begins
    bool isFresh = true;          ///< nothing was read yet
    std::optional<long long> end; ///< the first frame after the sound, once that is known
};

std::unique_ptr<SoundReader> SoundReader::open(const std::string& path, Interrupt interrupt)
{
    auto decoder = StreamDecoder::openSound(path, interrupt);
    if (!decoder) {
        const auto file = MediaFile::open(path, std::move(interrupt));
        return std::unique_ptr<SoundReader>(
            file && file->video() && !file->sound() ? new SoundReader(nullptr) : nullptr);
    }
    return std::unique_ptr<SoundReader>(
        new SoundReader(std::make_unique<Media>(std::move(decoder))));
}

SoundReader::SoundReader(std::unique_ptr<Media> media)
    : m_media(std::move(media))
{
}

SoundReader::~SoundReader() = default;

bool SoundReader::read(long long start, std::size_t frames, float* out)
{
    if (!m_media || (m_media->end && start >= *m_media->end))
        return false;
    if (start < 0) {
        const auto before = std::min(frames, static_cast<std::size_t>(-start));
        out = std::fill_n(out, before * SoundChannels, 0.0F);
        frames -= before;
        start += static_cast<long long>(before);
    }
    if (frames == 0)
        return true;
    Media& media = *m_media;
    if (media.isFresh || media.nextFrame() != start)
        media.moveTo(start);
    bool isOver = true;
    while (frames > 0 && (!media.isUsedUp() || media.readAhead())) {
        isOver = false;
        media.skipTo(start);
        const long long gap = std::max(media.nextFrame() - start, 0LL);
        const auto silent = std::min(frames, static_cast<std::size_t>(gap));
        out = std::fill_n(out, silent * SoundChannels, 0.0F);
        const std::size_t heard =
            std::min((media.block.size() - media.given) / SoundChannels, frames - silent);
        out = std::copy_n(media.block.begin() + static_cast<std::ptrdiff_t>(media.given),
                          heard * SoundChannels, out);
        media.given += heard * SoundChannels;
        start += static_cast<long long>(silent + heard);
        frames -= silent + heard;
    }
    std::fill_n(out, frames * SoundChannels, 0.0F);
    return !isOver;
}

} // namespace rvengine
