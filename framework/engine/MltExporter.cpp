// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltExporter.h"

#include "FrameRate.h"
#include "LocalFile.h"
#include "MltRuntime.h"
#include "Utf8.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace rvengine {

namespace {

/// Encoders want even sides.
int evenSide(int wanted, double canvas)
{
    constexpr double least = 16.0;
    constexpr double most = 8192.0;
    const double side = wanted > 0 ? wanted : canvas;
    return static_cast<int>(std::clamp(side, least, most)) / 2 * 2;
}

void setUp(Mlt::Profile& profile, const Scene& scene, const ExportSettings& settings)
{
    const FrameRate rate = frameRateOf(settings.frameRate);
    const int width = evenSide(settings.size.width(), scene.canvas.width());
    const int height = evenSide(settings.size.height(), scene.canvas.height());
    profile.set_frame_rate(rate.numerator, rate.denominator);
    profile.set_width(width);
    profile.set_height(height);
    profile.set_sample_aspect(1, 1);
    profile.set_display_aspect(width, height);
    profile.set_progressive(1);
    profile.set_colorspace(709);
    profile.set_explicit(1);
}

bool isSource(const Scene& scene, const QFileInfo& file)
{
    const auto reads = [&](const PlacedLayer& placed) {
        return QFileInfo(textOf(placed.layer->source)) == file;
    };
    return file.exists() && (std::any_of(scene.main.begin(), scene.main.end(), reads) ||
                             std::any_of(scene.mix.begin(), scene.mix.end(), reads));
}

/// Whether the extension is that of a format for videos. In place of one that it does not know MLT
/// writes MPEG, and formats of single pictures make it crash.
bool isVideoFormat(const std::string& path)
{
    const AVOutputFormat* const format = av_guess_format(nullptr, path.c_str(), nullptr);
    if (!format || (format->flags & AVFMT_NOFILE) != 0)
        return false;
    // Those of sound take a PNG for a cover.
    return format->video_codec != AV_CODEC_ID_NONE && format->video_codec != AV_CODEC_ID_PNG;
}

/// Why the file cannot be written, as far as that shows before; empty when nothing speaks against.
QString obstacle(const Scene& scene, const std::string& path)
{
    if (!isPath(path))
        return QStringLiteral("%1 is no name for a file").arg(textOf(path));
    const QFileInfo file(textOf(path));
    const QFileInfo folder(file.absolutePath());
    if (file.isDir() || !folder.isDir())
        return QStringLiteral("%1 is no place for a file").arg(file.filePath());
    if (!isNameForMlt(path))
        return QStringLiteral("%1 is no name for a file").arg(file.filePath());
    if (!isVideoFormat(path))
        return QStringLiteral("%1 is in no format for videos").arg(file.filePath());
    if (file.exists() ? !file.isWritable() : !folder.isWritable())
        return QStringLiteral("%1 cannot be written").arg(file.filePath());
    if (isSource(scene, file))
        return QStringLiteral("%1 is a part of what is to be saved").arg(file.filePath());
    return {};
}

} // namespace

std::unique_ptr<Exporter> startExport(ScenePointer scene, const std::string& path,
                                      const ExportSettings& settings, std::function<void()> told)
{
    if (!startMltRuntime())
        return nullptr;
    return std::make_unique<MltExporter>(std::move(scene), path, settings, std::move(told));
}

MltExporter::MltExporter(ScenePointer scene, std::string path, const ExportSettings& settings,
                         std::function<void()> told)
    : m_path(std::move(path))
    , m_told(std::move(told))
{
    const QString reason = obstacle(*scene, m_path);
    if (reason.isEmpty())
        start(std::move(scene), settings);
    else
        fail(reason);
}

MltExporter::~MltExporter()
{
    if (m_consumer)
        m_consumer->stop();
    // MLT's events reach for the object until they are gone.
    m_events.clear();
    m_consumer.reset();
}

void MltExporter::start(ScenePointer scene, const ExportSettings& settings)
{
    setUp(m_profile, *scene, settings);
    {
        const std::lock_guard lock(mltOpening());
        m_timeline = std::make_unique<MltTimeline>(m_profile, std::move(scene));
        m_consumer = std::make_unique<Mlt::Consumer>(m_profile, "avformat", m_path.c_str());
    }
    if (!m_consumer->is_valid() || !m_timeline->producer().is_valid()) {
        fail(QStringLiteral("the encoder does not start"));
        return;
    }
    // One thread makes the pictures, in order and every one of them.
    m_consumer->set("real_time", -1);
    m_consumer->set("terminate_on_pause", 1);
    m_consumer->set("pix_fmt", "yuv420p");
    // Of planar pictures the encoder would look for the third plane in the wrong place.
    m_consumer->set("mlt_image_format", "yuv422");
    m_consumer->set("frequency", SoundRate);
    m_consumer->set("channels", SoundChannels);
    if (settings.videoBitRate > 0)
        m_consumer->set("vb", settings.videoBitRate);
    if (settings.audioBitRate > 0)
        m_consumer->set("ab", settings.audioBitRate);
    m_consumer->connect(m_timeline->producer());

    const auto listen = [this](const char* event, mlt_listener listener) {
        m_events.emplace_back(m_consumer->listen(event, this, listener));
    };
    listen("consumer-frame-show", [](mlt_properties, void* self, mlt_event_data) {
        static_cast<MltExporter*>(self)->frameShown();
    });
    listen("consumer-fatal-error", [](mlt_properties, void* self, mlt_event_data) {
        auto* const exporter = static_cast<MltExporter*>(self);
        exporter->fail(
            QStringLiteral("%1 cannot be written in its format").arg(textOf(exporter->m_path)));
    });
    listen("consumer-stopped", [](mlt_properties, void* self, mlt_event_data) {
        static_cast<MltExporter*>(self)->stopped();
    });
    if (m_consumer->start() != 0)
        fail(QStringLiteral("the encoder does not start"));
}

template <class Change>
void MltExporter::tell(Change&& change)
{
    {
        const std::lock_guard lock(m_mutex);
        change();
        if (std::exchange(m_toldSomething, true))
            return;
    }
    m_told();
}

void MltExporter::fail(const QString& error)
{
    tell([&] {
        m_news.state = ExportState::Failed;
        m_news.error = error;
    });
}

void MltExporter::frameShown()
{
    tell([this] {
        ++m_shown;
        m_news.share = std::min(1.0, static_cast<double>(m_shown) / m_timeline->length());
    });
}

void MltExporter::stopped()
{
    tell([this] {
        if (m_news.state != ExportState::Running)
            return;
        if (m_cancelled)
            m_news.state = ExportState::Cancelled;
        else if (m_shown >= m_timeline->length())
            m_news.state = ExportState::Finished;
        else {
            m_news.state = ExportState::Failed;
            m_news.error = QStringLiteral("the encoder stopped before the end");
        }
    });
}

void MltExporter::cancel()
{
    {
        const std::lock_guard lock(m_mutex);
        m_cancelled = true;
    }
    if (m_consumer)
        m_consumer->stop();
}

ExportNews MltExporter::news()
{
    const std::lock_guard lock(m_mutex);
    m_toldSomething = false;
    return m_news;
}

} // namespace rvengine
