// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/trace/RvEditorTrace.h>

#include <norvel/timeline/RvAttributeUtility.h>
#include <norvel/timeline/RvTrackFactory.h>
#include <norvel/timeline/private/Reference.h>

#include <rvkpcore/RvKpApplication.h>

#include <cstdio>
#include <memory>
#include <utility>

namespace norvel {

namespace {

/// Keeps the player from rendering for as long as it lives.
class PlayerLock
{
public:
    explicit PlayerLock(qrvkp::RvKpPlayer& player)
        : m_player(player)
    {
        m_player.lockPlayer();
    }
    ~PlayerLock() { m_player.unlockPlayer(); }
    PlayerLock(const PlayerLock&) = delete;
    PlayerLock& operator=(const PlayerLock&) = delete;

private:
    qrvkp::RvKpPlayer& m_player;
};

} // namespace

RvEditorTrace* RvEditorTrace::create(qrvkp::RvKpApplication* application)
{
    std::unique_ptr<RvEditorTrace> trace(new RvEditorTrace());
    return trace->init(application) ? trace.release() : nullptr;
}

RvEditorTrace::~RvEditorTrace() = default;

bool RvEditorTrace::init(qrvkp::RvKpApplication* application)
{
    if (!application)
        return false;
    m_application = application;
    m_player = application->getPlayer();
    return true;
}

bool RvEditorTrace::initTrace()
{
    return initTrace(nullptr);
}

bool RvEditorTrace::initTrace(void* opaque)
{
    const std::lock_guard lock(m_mutex);
    deleteDescriptionsFrom(0);
    m_currentIndex = -1;
    RvTimeLineAttribute* description = captureTimeLine();
    if (!description)
        return false;
    append(description, opaque);
    return true;
}

bool RvEditorTrace::recordStatus()
{
    return recordStatus(nullptr);
}

bool RvEditorTrace::recordStatus(void* opaque)
{
    const std::lock_guard lock(m_mutex);
    RvTimeLineAttribute* description = captureTimeLine();
    if (!description)
        return false;
    const auto next = static_cast<std::size_t>(m_currentIndex + 1);
    deleteDescriptionsFrom(next);
    m_opaqueDatas.resize(next);
    append(description, opaque);
    return true;
}

bool RvEditorTrace::canUndo()
{
    const std::lock_guard lock(m_mutex);
    return m_currentIndex >= 1 && hasTimeLine();
}

bool RvEditorTrace::canRedo()
{
    const std::lock_guard lock(m_mutex);
    return m_currentIndex >= 0 &&
           m_currentIndex < static_cast<std::int32_t>(m_descriptions.size()) - 1 && hasTimeLine();
}

void RvEditorTrace::undo()
{
    if (!canUndo())
        return;
    const std::lock_guard lock(m_mutex);
    stepTo(m_currentIndex - 1);
}

void RvEditorTrace::redo()
{
    if (!canRedo())
        return;
    const std::lock_guard lock(m_mutex);
    stepTo(m_currentIndex + 1);
}

void* RvEditorTrace::getCurrentOpaqueData()
{
    const std::lock_guard lock(m_mutex);
    return m_currentIndex < 0 ? nullptr : m_opaqueDatas[static_cast<std::size_t>(m_currentIndex)];
}

RvEditorCacheData RvEditorTrace::getCurrentCacheData() const
{
    return {RvAttributeUtility::_sCurrentCacheLiquefyDir};
}

qrvkp::RvITrack* RvEditorTrace::getTrack(std::size_t id)
{
    const std::lock_guard lock(m_mutex);
    const auto timeline = adopt(m_player->getTimeLine());
    if (!timeline)
        return nullptr;
    // A mix track goes before a main track of the same id, also when there is no wrapper for it.
    for (const auto& track : adopt(timeline->getMixTracks())) {
        if (track->getTrackID() == id)
            return RvTrackFactory::createTrack(track->getContext(), track->getTrackType());
    }
    return RvAttributeUtility::getMainTrack(timeline.get(), id);
}

void RvEditorTrace::setCacheDir(std::string dir)
{
    RvAttributeUtility::_sCacheDir = std::move(dir);
}

void RvEditorTrace::setMaxRecordStatusCounts(int counts)
{
    const std::lock_guard lock(m_mutex);
    m_maxRecordStatusCounts = counts;
}

void RvEditorTrace::printStatus()
{
    const std::lock_guard lock(m_mutex);
    if (m_currentIndex < 0)
        return;
    const RvTimeLineAttribute* current = m_descriptions[static_cast<std::size_t>(m_currentIndex)];
    if (!current)
        return;
    std::printf("-----------------RvEditorTrace Attribute----------------------\n");
    std::printf("RvEditorTrace Attribute : %s", current->serialization().c_str());
    std::printf("-----------------RvEditorTrace Timeline-----------------------\n");
    if (const std::unique_ptr<RvTimeLineAttribute> live{captureTimeLine()})
        std::printf("RvEditorTrace Timeline : %s", live->serialization().c_str());
    std::printf("--------------------------------------------------------------\n");
}

RvTimeLineAttribute* RvEditorTrace::captureTimeLine() const
{
    const auto timeline = adopt(m_player->getTimeLine());
    if (!timeline)
        return nullptr;
    const qrvkp::RvKpConfig* config = m_application->getRvKpConfig();
    return RvAttributeUtility::createTimeLineAttribute(timeline.get(), config->getKpSizeWidth(),
                                                       config->getKpSizeHeight());
}

bool RvEditorTrace::hasTimeLine() const
{
    return adopt(m_player->getTimeLine()) != nullptr;
}

void RvEditorTrace::deleteDescriptionsFrom(std::size_t index)
{
    for (std::size_t i = index; i < m_descriptions.size(); ++i)
        delete m_descriptions[i];
    m_descriptions.resize(index);
}

void RvEditorTrace::append(RvTimeLineAttribute* description, void* opaque)
{
    ++m_currentIndex;
    m_descriptions.push_back(description);
    m_opaqueDatas.push_back(opaque);
}

void RvEditorTrace::stepTo(std::int32_t target)
{
    // Between the check and this step another thread may have made the last step there was.
    if (target < 0 || target >= static_cast<std::int32_t>(m_descriptions.size()))
        return;
    auto timeline = adopt(m_player->getTimeLine());
    qrvkp::RvKpConfig* config = m_application->getRvKpConfig();
    const RvTimeLineAttribute* from = m_descriptions[static_cast<std::size_t>(m_currentIndex)];
    const RvTimeLineAttribute* to = m_descriptions[static_cast<std::size_t>(target)];
    m_currentIndex = target;

    const PlayerLock playerLock(*m_player);
    config->setKpSize(to->width, to->height);
    RvAttributeUtility::updateTimeLine(timeline.get(), from, to);
    timeline.reset(); // ours may be the last reference: no frame is drawn while the tracks go
}

} // namespace norvel
