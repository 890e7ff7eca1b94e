// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "SharedMedia.h"

#include "support/TestMedia.h"

#include <QTemporaryDir>

#include <map>

QString sharedMedia::folder()
{
    static const QTemporaryDir folder;
    return folder.path();
}

std::string sharedMedia::once(const QString& name, const std::function<std::string()>& make)
{
    static std::map<QString, std::string> made;
    const auto known = made.find(name);
    return known != made.end() ? known->second : made.emplace(name, make()).first->second;
}

const std::string& sharedMedia::numbered()
{
    static const std::string path =
        TestMedia::numberedVideo(folder(), "numbered.mp4", 320, 180, "25", 100);
    return path;
}

const std::string& sharedMedia::tone()
{
    static const std::string path = TestMedia::tone(folder(), "tone.wav", 440, 0.5, 5);
    return path;
}
