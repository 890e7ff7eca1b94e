// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/compose/Compositor.h>

#include <gtest/gtest.h>

#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"

#include <QDir>

#include <thread>

namespace {

int threadsOfThisProcess()
{
    return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

} // namespace

TEST(DecoderThreadsTest, AreNoMoreThanTheProcessorsWhateverTheNumberOfClips)
{
    const WarningCapture warnings;
    const int before = threadsOfThisProcess();
    const int processors = static_cast<int>(std::thread::hardware_concurrency());
    SceneSketch sketch;
    sketch.addMain(sketch.video(sharedMedia::numbered()), 2000);
    for (int i = 0; i < 12; ++i)
        sketch.addMix(sketch.video(sharedMedia::numbered()), 0, 2000);
    {
        rvengine::Compositor first(rvengine::makePictureSource());
        rvengine::Compositor second(rvengine::makePictureSource());
        for (const long long time : {0, 40, 1000}) {
            ASSERT_FALSE(first.compose(sketch.scene(), time, QSize(160, 90)).isNull());
            ASSERT_FALSE(second.compose(sketch.scene(), time, QSize(160, 90)).isNull());
            EXPECT_LE(threadsOfThisProcess(), before + processors);
        }
        if (processors > 1) {
            EXPECT_GT(threadsOfThisProcess(), before) << "else one of them would do all the work";
        }
    }
    EXPECT_LE(threadsOfThisProcess(), before);
}
