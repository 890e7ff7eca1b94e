// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Exporter.h"
#include "MltTimeline.h"

#include <mlt++/Mlt.h>

#include <mutex>

namespace rvengine {

/// Writes a scene with MLT's avformat consumer.
class MltExporter : public Exporter
{
public:
    MltExporter(ScenePointer scene, std::string path, const ExportSettings& settings,
                std::function<void()> told);
    ~MltExporter() override;

    void cancel() override;
    ExportNews news() override;
    const std::string& path() const override { return m_path; }

private:
    void start(ScenePointer scene, const ExportSettings& settings);
    void fail(const QString& error);
    void frameShown();
    void stopped();
    template <class Change>
    void tell(Change&& change);

    const std::string m_path;
    const std::function<void()> m_told;
    std::mutex m_mutex;
    ExportNews m_news;
    bool m_toldSomething = false;
    int m_shown = 0; ///< pictures
    bool m_cancelled = false;
    Mlt::Profile m_profile;
    std::unique_ptr<MltTimeline> m_timeline;
    std::unique_ptr<Mlt::Consumer> m_consumer;
    std::vector<std::unique_ptr<Mlt::Event>> m_events;
};

} // namespace rvengine
