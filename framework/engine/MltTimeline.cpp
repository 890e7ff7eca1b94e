// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltTimeline.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace rvengine {

namespace {

/// The picture of the timeline that a frame shows: MLT counts frames of its own once a consumer has
/// them.
constexpr const char* positionName = "norvel.position";

mlt_position positionOf(mlt_frame frame)
{
    return mlt_properties_get_position(MLT_FRAME_PROPERTIES(frame), positionName);
}

int lengthOf(const Scene& scene, double perSecond)
{
    const double pictures = std::ceil(static_cast<double>(scene.duration) * perSecond / 1000.0);
    constexpr double most = std::numeric_limits<int>::max() / 2;
    return static_cast<int>(std::clamp(pictures, 1.0, most));
}

} // namespace

MltTimeline::MltTimeline(Mlt::Profile& profile, ScenePointer scene)
    : m_profile(profile)
    , m_scene(std::move(scene))
    , m_length(lengthOf(*m_scene, profile.fps()))
    , m_compositor(makePictureSource())
    , m_mixer(makeSoundSource())
    , m_producer((mlt_producer_init(&m_service, this), &m_service))
{
    // From now on the wrapper alone holds the service.
    mlt_producer_close(&m_service);
    m_service.get_frame = &MltTimeline::getFrame;
    mlt_properties_set_data(m_producer.get_properties(), "_profile", profile.get_profile(), 0,
                            nullptr, nullptr);
    m_producer.set("length", m_length);
    m_producer.set_in_and_out(0, m_length - 1);
    // What an encoder asks for need not be what is made here.
    for (const char* name : {"avcolor_space", "audioconvert"}) {
        auto filter = std::make_unique<Mlt::Filter>(profile, name);
        if (filter->is_valid() && m_producer.attach(*filter) == 0)
            m_filters.push_back(std::move(filter));
    }
}

MltTimeline::~MltTimeline() = default;

long long MltTimeline::timeOf(int position) const
{
    // The nearest millisecond: the one before may still be that of a file's picture before.
    const long long time = std::llround(position * 1000.0 / m_profile.fps());
    return std::min(time, std::max(m_scene->duration - 1, 0LL));
}

int MltTimeline::getFrame(mlt_producer producer, mlt_frame_ptr frame, int)
{
    auto* const self = static_cast<MltTimeline*>(producer->child);
    *frame = mlt_frame_init(MLT_PRODUCER_SERVICE(producer));
    if (*frame) {
        mlt_properties const properties = MLT_FRAME_PROPERTIES(*frame);
        mlt_properties_set_int(properties, "progressive", 1);
        mlt_properties_set_double(properties, "aspect_ratio", 1.0);
        mlt_properties_set_position(properties, positionName, mlt_producer_position(producer));
        mlt_frame_set_position(*frame, mlt_producer_position(producer));
        mlt_frame_push_service(*frame, self);
        mlt_frame_push_get_image(*frame, &MltTimeline::getImage);
        mlt_frame_push_audio(*frame, self);
        mlt_frame_push_audio(*frame, reinterpret_cast<void*>(&MltTimeline::getAudio));
    }
    mlt_producer_prepare_next(producer);
    return *frame ? 0 : 1;
}

int MltTimeline::getImage(mlt_frame frame, std::uint8_t** buffer, mlt_image_format* format,
                          int* width, int* height, int)
{
    auto* const self = static_cast<MltTimeline*>(mlt_frame_pop_service(frame));
    *width = self->m_profile.width();
    *height = self->m_profile.height();
    return self->drawImage(frame, buffer, format, QSize(*width, *height)) ? 0 : 1;
}

bool MltTimeline::drawImage(mlt_frame frame, std::uint8_t** buffer, mlt_image_format* format,
                            QSize size)
{
    const std::lock_guard lock(m_pictureMutex);
    QImage picture = m_compositor.compose(*m_scene, timeOf(positionOf(frame)), size);
    if (picture.isNull())
        return false;
    if (*format != mlt_image_yuv422)
        *format = mlt_image_rgba;
    const int bytes = mlt_image_format_size(*format, size.width(), size.height(), nullptr);
    auto* const pixels = static_cast<std::uint8_t*>(mlt_pool_alloc(bytes));
    mlt_frame_set_image(frame, pixels, bytes, mlt_pool_release);
    *buffer = pixels;
    if (*format == mlt_image_yuv422) {
        mlt_properties_set_int(MLT_FRAME_PROPERTIES(frame), "colorspace", 709);
        return m_converter.convertBack(picture, pixels);
    }
    const QImage straight = std::move(picture).convertToFormat(QImage::Format_RGBA8888);
    std::copy_n(straight.constBits(), static_cast<std::ptrdiff_t>(size.width()) * size.height() * 4,
                pixels);
    return true;
}

int MltTimeline::getAudio(mlt_frame frame, void** buffer, mlt_audio_format* format, int* rate,
                          int* channels, int* samples)
{
    auto* const self = static_cast<MltTimeline*>(mlt_frame_pop_audio(frame));
    *format = mlt_audio_f32le;
    *rate = SoundRate;
    *channels = SoundChannels;
    self->mixAudio(frame, buffer, samples);
    return 0;
}

void MltTimeline::mixAudio(mlt_frame frame, void** buffer, int* samples)
{
    const std::lock_guard lock(m_soundMutex);
    const auto fps = static_cast<float>(m_profile.fps());
    const mlt_position position = positionOf(frame);
    *samples = mlt_audio_calculate_frame_samples(fps, SoundRate, position);
    const int bytes = mlt_audio_format_size(mlt_audio_f32le, *samples, SoundChannels);
    *buffer = mlt_pool_alloc(bytes);
    m_mixer.mix(*m_scene, mlt_audio_calculate_samples_to_position(fps, SoundRate, position),
                static_cast<std::size_t>(*samples), static_cast<float*>(*buffer));
    mlt_frame_set_audio(frame, *buffer, mlt_audio_f32le, bytes, mlt_pool_release);
}

} // namespace rvengine
