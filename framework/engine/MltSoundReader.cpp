// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltSoundReader.h"

#include "LocalFile.h"
#include "MediaProbe.h"
#include "MltRuntime.h"
#include "SoundSource.h"

#include <mlt++/Mlt.h>

#include <algorithm>
#include <mutex>
#include <utility>

namespace rvengine {

namespace {

/// MLT reads sound in blocks of a picture's length; these have whole frames of sound.
constexpr int blocksPerSecond = 25;
constexpr int framesPerBlock = SoundRate / blocksPerSecond;

int channelsOf(Mlt::Producer& producer)
{
    const std::string key =
        "meta.media." + std::to_string(producer.get_int("audio_index")) + ".codec.channels";
    return producer.get_int(key.c_str());
}

} // namespace

struct MltSoundReader::Media
{
    Mlt::Profile profile;
    Mlt::Producer producer;
    std::vector<std::unique_ptr<Mlt::Filter>> filters;
    bool silent = false;
    int channels = SoundChannels; ///< that MLT is asked for

    explicit Media(const std::string& name)
        : producer(prepared(profile), "avformat", name.c_str())
    {
    }

    static Mlt::Profile& prepared(Mlt::Profile& profile)
    {
        profile.set_frame_rate(blocksPerSecond, 1);
        profile.set_explicit(1);
        return profile;
    }

    void convertToOurs()
    {
        for (const char* name : {"audiochannels", "swresample", "audioconvert"}) {
            auto filter = std::make_unique<Mlt::Filter>(profile, name);
            if (filter->is_valid() && producer.attach(*filter) == 0)
                filters.push_back(std::move(filter));
        }
    }
};

std::unique_ptr<MltSoundReader> MltSoundReader::open(const std::string& path)
{
    const auto file = readableFile(path);
    if (!file || !isNameForMlt(file->u8string()) || !startMltRuntime())
        return nullptr;
    const bool silent = !mediaProbe().probe(path, MediaKind::Sound);
    if (silent && !mediaProbe().probe(path, MediaKind::Video))
        return nullptr;
    const std::lock_guard lock(mltOpening());
    auto media = std::make_unique<Media>(file->u8string());
    if (!media->producer.is_valid())
        return nullptr;
    media->silent = silent;
    // Mixing one channel into two would make it quieter.
    media->channels = channelsOf(media->producer) == 1 ? 1 : SoundChannels;
    media->producer.set("video_index", -1);
    media->convertToOurs();
    return std::unique_ptr<MltSoundReader>(new MltSoundReader(std::move(media)));
}

MltSoundReader::MltSoundReader(std::unique_ptr<Media> media)
    : m_media(std::move(media))
{
}

MltSoundReader::~MltSoundReader() = default;

bool MltSoundReader::read(long long start, std::size_t frames, float* out)
{
    const long long length =
        static_cast<long long>(m_media->producer.get_length()) * framesPerBlock;
    if (m_media->silent || start >= length)
        return false;
    if (start < 0) {
        const auto before = std::min(frames, static_cast<std::size_t>(-start));
        out = std::fill_n(out, before * SoundChannels, 0.0F);
        frames -= before;
        start += static_cast<long long>(before);
    }
    if (frames == 0)
        return true;
    if (start != m_next)
        moveTo(start);
    std::size_t missing = frames * SoundChannels;
    while (missing > 0 && (m_given < m_ahead.size() || readAhead())) {
        const std::size_t count = std::min(missing, m_ahead.size() - m_given);
        out = std::copy_n(m_ahead.begin() + static_cast<std::ptrdiff_t>(m_given), count, out);
        m_given += count;
        missing -= count;
    }
    std::fill_n(out, missing, 0.0F);
    m_next = start + static_cast<long long>(frames);
    return true;
}

void MltSoundReader::moveTo(long long start)
{
    m_block = static_cast<int>(start / framesPerBlock);
    if (readAhead())
        m_given = static_cast<std::size_t>(start % framesPerBlock) * SoundChannels;
}

bool MltSoundReader::readAhead()
{
    m_ahead.clear();
    m_given = 0;
    if (m_block >= m_media->producer.get_length())
        return false;
    // A block that cannot be decoded is silent: what follows it stays in time.
    m_ahead.assign(static_cast<std::size_t>(framesPerBlock) * SoundChannels, 0.0F);
    m_media->producer.seek(m_block++);
    const std::unique_ptr<Mlt::Frame> frame(m_media->producer.get_frame());
    if (!frame || !frame->is_valid())
        return true;
    mlt_audio_format format = mlt_audio_f32le;
    int rate = SoundRate;
    int channels = m_media->channels;
    int frames = framesPerBlock;
    const auto* const sound =
        static_cast<const float*>(frame->get_audio(format, rate, channels, frames));
    if (!sound || format != mlt_audio_f32le || rate != SoundRate || channels != m_media->channels)
        return true;
    const auto step = static_cast<std::size_t>(channels);
    const auto count = static_cast<std::size_t>(std::min(frames, framesPerBlock));
    for (std::size_t i = 0; i < count; ++i) {
        m_ahead[i * SoundChannels] = sound[i * step];
        m_ahead[i * SoundChannels + 1] = sound[i * step + step - 1];
    }
    return true;
}

} // namespace rvengine
