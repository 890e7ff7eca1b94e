// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/PictureReader.h>

#include <gtest/gtest.h>

#include "support/TestMedia.h"

#include <QTemporaryDir>

extern "C" {
#include <libavutil/log.h>
}

#include <atomic>
#include <cstdarg>

namespace {

std::atomic<int> lines{0};

void countLine(void* /*context*/, int /*level*/, const char* /*format*/, va_list /*arguments*/)
{
    ++lines;
}

} // namespace

TEST(HostLogTest, AHostThatSetTheLevelOfFfmpegsLogKeepsItsLog)
{
    av_log_set_level(AV_LOG_DEBUG);
    av_log_set_callback(countLine);
    const QTemporaryDir folder;
    const std::string path = TestMedia::file(folder.path(), "a.mp4", QByteArray(5000, 'x'));
    EXPECT_EQ(rvengine::PictureReader::open(path), nullptr);
    EXPECT_GT(lines, 0);
}
