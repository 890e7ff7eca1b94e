// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpApplication.h>

#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/CanvasSpace.h>
#include <rvkpcore/private/CanvasView.h>
#include <rvkpcore/private/NativeTrack.h>
#include <rvkpcore/private/TrackSpace.h>

#include <QApplication>
#include <QPointer>

#include <cmath>

namespace qrvkp {

namespace {

/// The native of a track that shows a picture, by whichever wrapper; null for others.
const NativeMediaTrack* mediaOf(const RvITrack* track)
{
    return dynamic_cast<const NativeMediaTrack*>(NativeTrack::of(track));
}

} // namespace

/// The canvas as it is shown; the view comes and goes.
struct RvKpApplication::Canvas
{
    ~Canvas() { delete view; }

    CanvasSpace space() const
    {
        return view ? view->space() : CanvasSpace(placement, placement.canvasSize);
    }

    void layOut() const
    {
        if (view)
            view->layOut();
    }

    CanvasPlacement placement;
    bool gesturesEnabled = true;
    QPointer<CanvasView> view;
};

RvKpApplication::RvKpApplication()
    : m_canvas(std::make_unique<Canvas>())
{
    m_config.m_sizeChanged = [this] {
        const QSizeF size(static_cast<double>(m_config.getKpSizeWidth()),
                          static_cast<double>(m_config.getKpSizeHeight()));
        m_player.setCanvasSize(size);
        m_canvas->placement.canvasSize = size;
        m_canvas->layOut();
    };
    m_config.m_sizeChanged();
}

RvKpApplication::~RvKpApplication() = default;

RvKpPlayer* RvKpApplication::getPlayer()
{
    return &m_player;
}

RvKpConfig* RvKpApplication::getRvKpConfig()
{
    return &m_config;
}

QGraphicsView* RvKpApplication::getGraphicsView()
{
    if (!m_canvas->view && qobject_cast<QApplication*>(QCoreApplication::instance())) {
        m_canvas->view = new CanvasView(m_canvas->placement);
        m_canvas->view->setGesturesEnabled(m_canvas->gesturesEnabled);
        showPictures(*m_canvas->view);
    }
    return m_canvas->view;
}

void RvKpApplication::showPictures(CanvasView& view)
{
    QObject::connect(&m_player, &RvKpPlayer::sigPictureRendered, &view, &CanvasView::setPicture);
    const auto setSize = [this, &view] { m_player.setPictureSize(view.wantedPictureSize()); };
    QObject::connect(&view, &CanvasView::wantedPictureSizeChanged, &m_player, setSize);
    // Nobody sees what is made without a view.
    QObject::connect(&view, &QObject::destroyed, &m_player,
                     [this] { m_player.setPictureSize(QSize()); });
    setSize();
}

void RvKpApplication::enableGesture(bool enable)
{
    calls::record("RvKpApplication::enableGesture", enable);
    m_canvas->gesturesEnabled = enable;
    if (m_canvas->view)
        m_canvas->view->setGesturesEnabled(enable);
}

float RvKpApplication::getCanvasScale() const
{
    return static_cast<float>(m_canvas->placement.scale);
}

void RvKpApplication::setCanvasScale(float scale)
{
    calls::record("RvKpApplication::setCanvasScale", scale);
    if (!std::isfinite(scale) || scale <= 0.0F)
        return;
    m_canvas->placement.scale = static_cast<double>(scale);
    m_canvas->layOut();
}

QPointF RvKpApplication::getCanvasPosition() const
{
    return m_canvas->placement.position;
}

void RvKpApplication::setCanvasPosition(float x, float y)
{
    calls::record("RvKpApplication::setCanvasPosition", x, y);
    if (!std::isfinite(x) || !std::isfinite(y))
        return;
    m_canvas->placement.position = {static_cast<double>(x), static_cast<double>(y)};
    m_canvas->layOut();
}

QSizeF RvKpApplication::getCanvasShowDimension() const
{
    return m_canvas->space().showSize();
}

QPointF RvKpApplication::convertViewToCanvas(const QPointF& viewPoint) const
{
    return m_canvas->space().toCanvas(viewPoint);
}

QPointF RvKpApplication::convertCanvasToView(const QPointF& canvasPoint) const
{
    return m_canvas->space().toView(canvasPoint);
}

QPointF RvKpApplication::convertCanvasToTrack(RvITrack* track, const QPointF& canvasPoint) const
{
    const NativeMediaTrack* media = mediaOf(track);
    return media ? TrackSpace(*media).toTrack(canvasPoint) : canvasPoint;
}

QPointF RvKpApplication::convertTrackToCanvas(RvITrack* track, const QPointF& trackPoint) const
{
    const NativeMediaTrack* media = mediaOf(track);
    return media ? TrackSpace(*media).toCanvas(trackPoint) : trackPoint;
}

QPointF RvKpApplication::convertTrackOriginContentToCanvas(RvITrack* track,
                                                           const QPointF& fraction) const
{
    const NativeMediaTrack* media = mediaOf(track);
    return media ? TrackSpace(*media).fractionToCanvas(fraction) : fraction;
}

} // namespace qrvkp
