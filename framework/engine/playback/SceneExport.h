// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/Interrupt.h>
#include <engine/media/FilmWriter.h>

#include "Exporter.h"
#include "WorkQueue.h"

#include <QThread>

#include <atomic>
#include <chrono>
#include <mutex>
#include <vector>

namespace rvengine {

/// Writes a scene to a file. One thread composes its pictures and mixes its sound, one converts the
/// pictures, and one encodes and writes both.
class SceneExport : public Exporter
{
public:
    SceneExport(ScenePointer scene, std::string path, const ExportSettings& settings,
                std::function<void()> told);
    ~SceneExport() override;

    void cancel() override;
    ExportNews news() override;
    const std::string& path() const override { return m_path; }

private:
    /// A picture of the film, with the sound while it is shown.
    struct Composed
    {
        QImage picture;
        std::vector<float> sound;
    };
    struct Converted
    {
        std::shared_ptr<FilmWriter::Prepared> picture;
        std::vector<float> sound;
    };

    void compose();
    void convert();
    void encode();
    bool encodeAll(QString& error);
    void end(bool isWhole, const QString& error);
    void fail(const QString& error);
    void giveUp(const QString& error);
    void addPicture();
    template <class Change>
    void tell(Change&& change);

    const ScenePointer m_scene;
    const std::string m_path;
    const std::function<void()> m_told;
    FilmFormat m_format;
    int m_length = 1; ///< pictures
    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();

    std::mutex m_mutex;
    ExportNews m_news;
    bool m_toldSomething = false;
    int m_written = 0;  ///< pictures
    QString m_obstacle; ///< why the threads before the last one gave up

    std::atomic<bool> m_isCancelled{false};
    Interrupt m_interrupt; ///< of the readers
    WorkQueue<Composed> m_composed{2};
    WorkQueue<Converted> m_converted{2};
    std::unique_ptr<FilmWriter> m_writer;
    std::vector<std::unique_ptr<QThread>> m_threads;
};

} // namespace rvengine
