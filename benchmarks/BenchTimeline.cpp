// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "BenchTimeline.h"

#include <norvel/timeline/RvAttributeUtility.h>

#include <kparextension/RvARFilterTrack.h>
#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <QImage>

namespace {

std::string makePicture(const QTemporaryDir& folder)
{
    const QString path = folder.filePath(QStringLiteral("picture.png"));
    QImage picture(64, 36, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    picture.save(path);
    return path.toStdString();
}

qrvkp::RvITrack* makeMixTrack(const std::string& picture, int number)
{
    switch (number % 3) {
    case 0:
        return qrvkp::RvSpriteTrack::create(picture, number * 40LL, 3000);
    case 1: {
        auto* filter = qkpar::RvARFilterTrack::create("", number * 40LL, 3000);
        filter->setFloatParam(qkpar::KpARParamSmoothSkin, 0.5F);
        filter->setFloatParamByFaceId(qkpar::KpARParamSlimFace, 0.25F, 1);
        return filter;
    }
    default:
        return qrvkp::RvDetectionTrack::create(1, "models/face.bin");
    }
}

} // namespace

BenchTimeline::BenchTimeline(Line line, int tracks)
    : m_picture(makePicture(m_folder))
    , m_line(line)
    , m_timeline(qrvkp::RvKpTimeLine::create())
{
    m_application.getPlayer()->setTimeLine(m_timeline);
    if (line == Line::Main)
        fillMain(tracks);
    else
        fillMix(tracks);
}

BenchTimeline::~BenchTimeline()
{
    m_timeline->release();
}

void BenchTimeline::fillMain(int tracks)
{
    for (int i = 0; i < tracks; ++i) {
        auto* group = qrvkp::RvKpGroup::create(3000);
        auto* sprite = qrvkp::RvSpriteTrack::create(m_picture, 0, 3000);
        group->addTrack(sprite);
        m_timeline->pushBackGroup(group);
        sprite->release();
        group->release();
    }
}

void BenchTimeline::fillMix(int tracks)
{
    for (int i = 0; i < tracks; ++i) {
        auto* track = makeMixTrack(m_picture, i);
        m_timeline->addMixTrack(track);
        track->release();
    }
}

std::unique_ptr<norvel::RvTimeLineAttribute> BenchTimeline::capture()
{
    return std::unique_ptr<norvel::RvTimeLineAttribute>(
        norvel::RvAttributeUtility::createTimeLineAttribute(m_timeline, 1920.0F, 1080.0F));
}

void BenchTimeline::changeOneTrack()
{
    m_alpha = m_alpha > 0.9F ? 0.5F : m_alpha + 0.01F;
    if (m_line == Line::Main) {
        const auto groups = m_timeline->getGroups();
        for (auto* track : groups[groups.size() / 2]->getTracks()) {
            track->setAlpha(m_alpha);
            track->release();
        }
        for (auto* group : groups)
            group->release();
    } else {
        const auto tracks = m_timeline->getMixTracks();
        tracks[tracks.size() / 2]->setAlpha(m_alpha);
        for (auto* track : tracks)
            track->release();
    }
}
