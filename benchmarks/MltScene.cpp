// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltScene.h"

#include "BenchMedia.h"
#include "MltRuntime.h"

#include <mlt++/Mlt.h>

#include <sstream>
#include <vector>

class MltScene::Tracks
{
public:
    Tracks(BenchScene kind, QSize canvas)
        : m_canvas(canvas)
        , m_tractor(prepared(m_profile, canvas))
    {
        m_tractor.set_track(open(canvas), 0);
        for (const int place : overlayPlaces(kind))
            addOverlay(place);
        if (kind == BenchScene::MattedOverlay)
            cutRound(*m_producers.back());
    }

    const std::string& problem() const { return m_problem; }

    bool render(int position)
    {
        m_tractor.seek(position);
        const std::unique_ptr<Mlt::Frame> frame(m_tractor.get_frame());
        mlt_image_format format = mlt_image_rgba;
        int width = m_canvas.width();
        int height = m_canvas.height();
        return frame->get_image(format, width, height) && width == m_canvas.width();
    }

private:
    static Mlt::Profile& prepared(Mlt::Profile& profile, QSize canvas)
    {
        profile.set_width(canvas.width());
        profile.set_height(canvas.height());
        profile.set_frame_rate(BenchMedia::picturesPerSecond, 1);
        profile.set_sample_aspect(1, 1);
        profile.set_progressive(1);
        profile.set_colorspace(709);
        profile.set_explicit(1);
        return profile;
    }

    /// Notes a part that MLT does not have; false then.
    bool require(Mlt::Properties& part, const std::string& name)
    {
        if (part.is_valid())
            return true;
        m_problem = "MLT lacks the " + name;
        return false;
    }

    Mlt::Producer& open(QSize size)
    {
        const std::string path = BenchMedia::video(size);
        m_producers.push_back(std::make_unique<Mlt::Producer>(m_profile, path.c_str()));
        require(*m_producers.back(), "producer for " + path);
        return *m_producers.back();
    }

    void addOverlay(int place)
    {
        const int track = static_cast<int>(m_producers.size());
        m_tractor.set_track(open(overlayVideo), track);
        Mlt::Transition blend(m_profile, "qtblend");
        if (!require(blend, "transition qtblend"))
            return;
        const QRect area = overlayRectangle(m_canvas, place);
        std::ostringstream rectangle;
        rectangle << area.x() << ' ' << area.y() << ' ' << area.width() << ' ' << area.height()
                  << ' ' << overlayAlpha;
        blend.set("rect", rectangle.str().c_str());
        blend.set("distort", 1);
        m_tractor.plant_transition(blend, 0, track);
    }

    void cutRound(Mlt::Producer& producer)
    {
        Mlt::Filter circle(m_profile, "shape", BenchMedia::circle().c_str());
        if (!require(circle, "filter shape"))
            return;
        circle.set("use_luminance", 1);
        circle.set("use_mix", 0);
        producer.attach(circle);
    }

    std::string m_problem;
    const QSize m_canvas;
    Mlt::Profile m_profile;
    Mlt::Tractor m_tractor;
    std::vector<std::unique_ptr<Mlt::Producer>> m_producers;
};

MltScene::MltScene(BenchScene kind, QSize canvas)
{
    if (startMlt())
        m_tracks = std::make_unique<Tracks>(kind, canvas);
}

MltScene::~MltScene() = default;

std::string MltScene::problem() const
{
    return m_tracks ? m_tracks->problem() : "MLT does not start";
}

bool MltScene::render(int position)
{
    return m_tracks->render(position);
}
