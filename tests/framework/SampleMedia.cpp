// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SampleMedia.h"

#include "support/TestMedia.h"

#include <QTemporaryDir>

namespace {

QString folder()
{
    static const QTemporaryDir directory;
    return directory.path();
}

} // namespace

std::string SampleMedia::video()
{
    static const std::string path =
        TestMedia::video(folder(), "video.mp4", VideoWidth, VideoHeight, "25", 1);
    return path;
}

std::string SampleMedia::picture()
{
    static const std::string path =
        TestMedia::picture(folder(), "picture.png", PictureWidth, PictureHeight);
    return path;
}

std::string SampleMedia::sound()
{
    static const std::string path = TestMedia::sound(folder(), "sound.wav", 1);
    return path;
}
