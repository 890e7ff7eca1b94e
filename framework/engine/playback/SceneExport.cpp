// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SceneExport.h"

#include <engine/base/Utf8.h>
#include <engine/compose/Compositor.h>
#include <engine/media/LocalFile.h>
#include <engine/sound/SoundMixer.h>

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>
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

FilmFormat filmFormatOf(const Scene& scene, const ExportSettings& settings)
{
    FilmFormat format;
    format.size = {evenSide(settings.size.width(), scene.canvas.width()),
                   evenSide(settings.size.height(), scene.canvas.height())};
    format.rate = frameRateOf(settings.frameRate);
    format.videoBitRate = settings.videoBitRate;
    format.audioBitRate = settings.audioBitRate;
    return format;
}

/// In pictures.
int lengthOf(const Scene& scene, const FrameRate& rate)
{
    const double pictures =
        std::ceil(static_cast<double>(scene.duration) * rate.perSecond() / 1000.0);
    constexpr double most = std::numeric_limits<int>::max() / 2;
    return static_cast<int>(std::clamp(pictures, 1.0, most));
}

bool isSource(const Scene& scene, const QFileInfo& file)
{
    const auto reads = [&](const PlacedLayer& placed) {
        return QFileInfo(fileNameOf(placed.layer->source)) == file;
    };
    return file.exists() && (std::any_of(scene.main.begin(), scene.main.end(), reads) ||
                             std::any_of(scene.mix.begin(), scene.mix.end(), reads));
}

/// Why the file cannot be written, as far as that shows before; empty when nothing speaks against.
QString obstacle(const Scene& scene, const std::string& path)
{
    const QString name = fileNameOf(path);
    if (name.isEmpty())
        return QStringLiteral("%1 is no name for a file").arg(textOf(path));
    if (!canBeNamed(name))
        return QStringLiteral("%1 cannot be named in the locale of this process").arg(name);
    const QFileInfo file(name);
    const QFileInfo folder(file.absolutePath());
    if (file.isDir() || !folder.isDir())
        return QStringLiteral("%1 is no place for a file").arg(file.filePath());
    if (!isFilmName(path))
        return QStringLiteral("%1 is in no format for videos").arg(file.filePath());
    if (file.exists() ? !file.isWritable() : !folder.isWritable())
        return QStringLiteral("%1 cannot be written").arg(file.filePath());
    if (isSource(scene, file))
        return QStringLiteral("%1 is a part of what is to be saved").arg(file.filePath());
    return {};
}

/// The first frame of sound of a picture.
long long soundStartOf(int picture, const FrameRate& rate)
{
    return static_cast<long long>(picture) * SoundRate * rate.denominator / rate.numerator;
}

} // namespace

std::unique_ptr<Exporter> startExport(ScenePointer scene, const std::string& path,
                                      const ExportSettings& settings, std::function<void()> told)
{
    return std::make_unique<SceneExport>(std::move(scene), path, settings, std::move(told));
}

SceneExport::SceneExport(ScenePointer scene, std::string path, const ExportSettings& settings,
                         std::function<void()> told)
    : m_scene(std::move(scene))
    , m_path(std::move(path))
    , m_told(std::move(told))
    , m_format(filmFormatOf(*m_scene, settings))
    , m_length(lengthOf(*m_scene, m_format.rate))
{
    const QString reason = obstacle(*m_scene, m_path);
    if (!reason.isEmpty()) {
        fail(reason);
        return;
    }
    QString error;
    m_writer = FilmWriter::open(m_path, m_format, error);
    if (!m_writer) {
        fail(QStringLiteral("%1: %2").arg(textOf(m_path), error));
        return;
    }
    for (void (SceneExport::*work)() :
         {&SceneExport::compose, &SceneExport::convert, &SceneExport::encode}) {
        m_threads.emplace_back(QThread::create([this, work] {
            (this->*work)();
            const std::lock_guard lock(m_mutex); // see the destructor
        }));
    }
    for (const auto& thread : m_threads)
        thread->start();
}

SceneExport::~SceneExport()
{
    cancel();
    for (const auto& thread : m_threads)
        thread->wait();
    // What the threads left comes before what is destroyed now. The thread sanitizer, to which Qt's
    // wait says nothing, learns it from the mutex.
    const std::lock_guard lock(m_mutex);
}

void SceneExport::compose()
{
    Compositor compositor(makePictureSource(std::chrono::steady_clock::now, {}, m_interrupt));
    SoundMixer mixer(makeSoundSource(std::chrono::steady_clock::now, m_interrupt));
    for (int i = 0; i < m_length && !m_isCancelled; ++i) {
        // The nearest millisecond: the one before may still be that of a file's picture before.
        const long long time = std::llround(i * 1000.0 / m_format.rate.perSecond());
        Composed composed;
        composed.picture = compositor.compose(
            *m_scene, std::min(time, std::max(m_scene->duration - 1, 0LL)), m_format.size);
        const long long start = soundStartOf(i, m_format.rate);
        const auto frames = static_cast<std::size_t>(soundStartOf(i + 1, m_format.rate) - start);
        composed.sound.resize(frames * SoundChannels);
        mixer.mix(*m_scene, start, frames, composed.sound.data());
        // What was composed while the readers were interrupted is not what the scene shows.
        if (m_isCancelled || !m_composed.push(std::move(composed)))
            break;
    }
    m_composed.close();
}

void SceneExport::convert()
{
    while (std::optional<Composed> composed = m_composed.pop()) {
        Converted converted{m_writer->prepare(composed->picture), std::move(composed->sound)};
        if (!converted.picture)
            giveUp(QStringLiteral("a picture cannot be made: there is not enough memory"));
        if (!converted.picture || !m_converted.push(std::move(converted)))
            break;
    }
    m_composed.close();
    m_converted.close();
}

void SceneExport::encode()
{
    QString error;
    const bool isWhole = encodeAll(error);
    // From the end of its queue on, the thread before this one leaves the writer alone.
    m_composed.close();
    while (m_converted.pop())
        continue;
    end(isWhole, error);
}

/// Writes what comes; false with an error, or without one when it was cancelled.
bool SceneExport::encodeAll(QString& error)
{
    while (std::optional<Converted> converted = m_converted.pop()) {
        if (!m_writer->addPicture(*converted->picture, error) ||
            !m_writer->addSound(converted->sound, error))
            return false;
        addPicture();
    }
    const std::lock_guard lock(m_mutex);
    error = m_obstacle;
    return m_written == m_length && error.isEmpty();
}

void SceneExport::end(bool isWhole, const QString& error)
{
    QString problem = error;
    bool isGood = problem.isEmpty();
    if (isGood && isWhole)
        isGood = m_writer->finish(problem);
    else if (isGood && m_written > 0)
        isGood = m_writer->finishUnlessThere(problem);
    m_writer.reset();
    if (!isGood) {
        fail(QStringLiteral("%1: %2").arg(textOf(m_path), problem));
        return;
    }
    tell([&] {
        m_news.state = isWhole ? ExportState::Finished : ExportState::Cancelled;
        m_news.remaining = std::chrono::milliseconds(0);
    });
}

void SceneExport::giveUp(const QString& error)
{
    const std::lock_guard lock(m_mutex);
    m_obstacle = error;
}

template <class Change>
void SceneExport::tell(Change&& change)
{
    {
        const std::lock_guard lock(m_mutex);
        change();
        if (std::exchange(m_toldSomething, true))
            return;
    }
    m_told();
}

void SceneExport::fail(const QString& error)
{
    tell([&] {
        m_news.state = ExportState::Failed;
        m_news.error = error;
    });
}

void SceneExport::addPicture()
{
    tell([this] {
        ++m_written;
        m_news.share = std::min(1.0, static_cast<double>(m_written) / m_length);
        const std::chrono::duration<double, std::milli> elapsed =
            std::chrono::steady_clock::now() - m_start;
        m_news.remaining = std::chrono::milliseconds(
            std::llround(elapsed.count() * (1.0 - m_news.share) / m_news.share));
    });
}

void SceneExport::cancel()
{
    m_isCancelled = true;
    m_interrupt.raise();
    // The encoder ends with what it has.
    m_composed.close();
}

ExportNews SceneExport::news()
{
    const std::lock_guard lock(m_mutex);
    m_toldSomething = false;
    return m_news;
}

} // namespace rvengine
