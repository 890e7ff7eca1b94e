// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/LiveTimeline.h"

#include "support/TestMedia.h"

#include <rvkpcore/RvSpriteTrack.h>

#include <gtest/gtest.h>

#include <QDir>

#include <cctype>

namespace {

constexpr int PictureWidth = 64;
constexpr int PictureHeight = 48;
constexpr double Seconds = 1.0;

MediaFiles makeMediaFiles()
{
    static const QTemporaryDir folder;
    const QString path = folder.path();
    MediaFiles files;
    files.video = TestMedia::video(path, "clip.mp4", PictureWidth, PictureHeight, "25", Seconds);
    files.otherVideo = TestMedia::copy(files.video, path, "other.mp4");
    files.picture = TestMedia::picture(path, "card.png", PictureWidth, PictureHeight);
    files.otherPicture = TestMedia::copy(files.picture, path, "other.png");
    files.sound = TestMedia::sound(path, "tone.wav", Seconds);
    files.otherSound = TestMedia::copy(files.sound, path, "other.wav");
    return files;
}

/// What a call made: the text behind its arrow; empty when it makes nothing.
std::string resultOf(const std::string& call)
{
    const std::string arrow = ") -> ";
    const std::size_t position = call.rfind(arrow);
    return position == std::string::npos ? std::string() : call.substr(position + arrow.size());
}

/// Takes the checksum of a picture out of a call: it is not the same on every machine.
void removeChecksum(std::string& call)
{
    const std::size_t image = call.find(", image ");
    const std::size_t checksum = image == std::string::npos ? image : call.find(" #", image);
    if (checksum == std::string::npos)
        return;
    const std::size_t end = call.find_first_not_of("0123456789", checksum + 2);
    call.erase(checksum, end - checksum);
}

} // namespace

const MediaFiles& mediaFiles()
{
    static const MediaFiles files = makeMediaFiles();
    return files;
}

LiveTimeline::LiveTimeline()
    : m_timeline(qrvkp::RvKpTimeLine::create())
{
}

Owned<qrvkp::RvKpGroup> LiveTimeline::addGroup(const std::vector<qrvkp::RvITrack*>& tracks) const
{
    auto group = owned(qrvkp::RvKpGroup::create(1000));
    for (qrvkp::RvITrack* track : tracks)
        EXPECT_TRUE(group->addTrack(track));
    EXPECT_TRUE(m_timeline->pushBackGroup(group.get()));
    return group;
}

void LiveTimeline::addPicture(std::uint64_t id) const
{
    addGroup({withId(qrvkp::RvSpriteTrack::create(mediaFiles().picture, 0, 1000), id).get()});
}

void LiveTimeline::addMix(qrvkp::RvITrack* track) const
{
    EXPECT_TRUE(m_timeline->addMixTrack(track));
}

void LiveTimeline::addDetection(std::uint64_t id) const
{
    addMix(withId(qrvkp::RvDetectionTrack::create(1, {}), id).get());
}

std::unique_ptr<norvel::RvTimeLineAttribute> LiveTimeline::capture() const
{
    return std::unique_ptr<norvel::RvTimeLineAttribute>(
        norvel::RvAttributeUtility::createTimeLineAttribute(get(), 1280.0F, 720.0F));
}

std::unique_ptr<norvel::RvAttribute> LiveTimeline::captureOnlyMix() const
{
    const auto description = capture();
    if (description->mixAttribs.size() != 1)
        return nullptr;
    std::unique_ptr<norvel::RvAttribute> record(description->mixAttribs.front());
    description->mixAttribs.clear();
    return record;
}

std::vector<std::string> loggedCalls()
{
    std::vector<std::string> calls = qrvkp::RvCallLog::entries();
    for (std::string& call : calls)
        removeChecksum(call);
    return calls;
}

std::vector<std::string> callsAbout(std::uint64_t id, const std::vector<std::string>& calls)
{
    const std::string number = std::to_string(id);
    std::vector<std::string> about;
    for (std::string call : calls) {
        const std::size_t argument = call.find('(') + 1;
        const std::size_t end = argument + number.size();
        if (call.compare(argument, number.size(), number) == 0 && !std::isdigit(call[end]))
            call.replace(argument, number.size(), "it");
        if (resultOf(call) == number)
            call.replace(call.size() - number.size(), number.size(), "it");
        about.push_back(std::move(call));
    }
    return about;
}

std::vector<std::string> callsAboutCreated(const std::vector<std::string>& calls)
{
    const std::string id = calls.empty() ? std::string() : resultOf(calls.front());
    if (id.empty() || id == "null")
        return calls;
    return callsAbout(std::stoull(id), calls);
}

std::string lines(const std::vector<std::string>& calls)
{
    std::string text;
    for (const std::string& call : calls)
        text += call + '\n';
    return text;
}

ScopedCache::ScopedCache()
{
    norvel::RvAttributeUtility::_sCacheDir = m_folder.path().toStdString();
    norvel::RvAttributeUtility::_sCurrentCacheLiquefyDir.clear();
}

ScopedCache::~ScopedCache()
{
    norvel::RvAttributeUtility::_sCacheDir = m_root;
    norvel::RvAttributeUtility::_sCurrentCacheLiquefyDir = m_current;
}

QStringList ScopedCache::folders() const
{
    return QDir(m_folder.path() + "/Norvel/Undo")
        .entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}
