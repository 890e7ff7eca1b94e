// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/base/Utf8.h>

#include "LocalFile.h"
#include "PictureProbe.h"
#include "StreamProbe.h"

#include <QMimeDatabase>

namespace rvengine {

namespace {

/// What every video and sound is said to be when there is no engine to measure it.
constexpr int AssumedWidth = 1920;
constexpr int AssumedHeight = 1080;
constexpr long long AssumedDurationMs = 10000;

QString mimeTypeOf(const std::filesystem::path& path)
{
    QFile file;
    if (!openForReading(file, path))
        return {};
    const QString name = textOf(path.filename().u8string());
    return QMimeDatabase().mimeTypeForFileNameAndData(name, &file).name();
}

} // namespace

std::optional<MediaInfo> probeStream(const std::filesystem::path& path, MediaKind kind)
{
    if (kind == MediaKind::Video && isStillPicture(path))
        return std::nullopt;
    const QString type = mimeTypeOf(path);
    const bool isVideo = type.startsWith(QLatin1String("video/"));
    const bool isSound = type.startsWith(QLatin1String("audio/"));
    if (kind == MediaKind::Video && isVideo)
        return MediaInfo{AssumedWidth, AssumedHeight, AssumedDurationMs};
    if (kind == MediaKind::Sound && (isSound || isVideo))
        return MediaInfo{0, 0, AssumedDurationMs};
    return std::nullopt;
}

} // namespace rvengine
