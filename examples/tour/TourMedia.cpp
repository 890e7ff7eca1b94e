// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourMedia.h"

#include "support/FrameworkRef.h"

#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>

#include <QDir>
#include <QProcess>

#include <filesystem>

namespace {

constexpr int FfmpegTimeoutMs = 60000;

bool isVideo(const std::string& path)
{
    return adopt(qrvkp::RvKpTrack::create(path, 0, -1, 0)) != nullptr;
}

bool isPicture(const std::string& path)
{
    return adopt(qrvkp::RvSpriteTrack::create(path, 0, 1000)) != nullptr;
}

bool isSound(const std::string& path)
{
    return adopt(qrvkp::RvAudioTrack::create(path, 0, -1, 0)) != nullptr;
}

/// Puts a file to its kind. A video with sound is a video.
bool sort(const std::string& path, TourMedia& media, std::string& problem)
{
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::u8path(path), error)) {
        problem = "no such file: " + path;
        return false;
    }
    if (isVideo(path))
        media.videos.push_back(path);
    else if (isPicture(path))
        media.pictures.push_back(path);
    else if (isSound(path))
        media.sounds.push_back(path);
    else
        problem = "neither a video nor a picture nor a sound that can be read: " + path;
    return problem.empty();
}

/// A file for ffmpeg to make.
struct Recipe
{
    const char* name;
    QStringList arguments;
    bool (*isUsable)(const std::string& path);
};

QStringList source(const char* filter)
{
    return {"-f", "lavfi", "-i", filter};
}

// The encoders are ffmpeg's own, so that every build of it has them.
Recipe soundingVideo()
{
    return {"sounding.mp4",
            source("testsrc=size=320x180:rate=25:duration=3") + source("sine=duration=3") +
                QStringList{"-c:v", "mpeg4", "-c:a", "aac"},
            &isVideo};
}

Recipe silentVideo()
{
    return {"silent.mp4",
            source("testsrc2=size=240x240:rate=25:duration=2") + QStringList{"-c:v", "mpeg4"},
            &isVideo};
}

Recipe picture()
{
    return {"picture.png", source("testsrc=size=160x120") + QStringList{"-frames:v", "1"},
            &isPicture};
}

Recipe sound()
{
    return {"sound.wav", source("sine=frequency=330:duration=2"), &isSound};
}

/// The last line of what ffmpeg said, which names its reason.
std::string lastLine(const QByteArray& output)
{
    return output.trimmed().split('\n').last().trimmed().toStdString();
}

/// Makes a file in `folder` and puts its path to `paths`.
bool make(const Recipe& recipe, const QString& folder, std::vector<std::string>& paths,
          std::string& problem)
{
    const QString path = QDir(folder).filePath(recipe.name);
    const std::string what = std::string("cannot make ") + recipe.name + ": ";
    QProcess ffmpeg;
    ffmpeg.start("ffmpeg",
                 QStringList{"-v", "error", "-nostdin", "-y"} + recipe.arguments +
                     QStringList{path},
                 QIODevice::ReadOnly);
    if (!ffmpeg.waitForStarted()) {
        problem = what + "ffmpeg cannot be started";
    } else if (!ffmpeg.waitForFinished(FfmpegTimeoutMs)) {
        problem = what + "ffmpeg does not end";
    } else if (ffmpeg.exitStatus() != QProcess::NormalExit || ffmpeg.exitCode() != 0) {
        problem = what + "ffmpeg fails: " + lastLine(ffmpeg.readAllStandardError());
    } else if (!recipe.isUsable(path.toStdString())) {
        problem = what + "the framework does not take what ffmpeg made";
    } else {
        paths.push_back(path.toStdString());
    }
    return problem.empty();
}

bool makeMissing(TourMedia& media, const QString& folder, std::string& problem)
{
    if (media.videos.empty() && !(make(soundingVideo(), folder, media.videos, problem) &&
                                  make(silentVideo(), folder, media.videos, problem)))
        return false;
    if (media.pictures.empty() && !make(picture(), folder, media.pictures, problem))
        return false;
    return !media.sounds.empty() || make(sound(), folder, media.sounds, problem);
}

} // namespace

std::optional<TourMedia> TourMedia::gather(const std::vector<std::string>& files,
                                           const QString& folder, std::string& problem)
{
    problem.clear();
    TourMedia media;
    for (const std::string& file : files) {
        if (!sort(file, media, problem))
            return std::nullopt;
    }
    if (!makeMissing(media, folder, problem))
        return std::nullopt;
    return media;
}
