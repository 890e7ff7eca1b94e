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

TEST(DecoderThreadsTest, AreTwoMoreThanTheProcessorsAtMostWhateverTheNumberOfClips)
{
    const WarningCapture warnings;
    const int before = threadsOfThisProcess();
    const int most = static_cast<int>(std::thread::hardware_concurrency()) + 2;
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
            EXPECT_LE(threadsOfThisProcess(), before + most);
        }
        EXPECT_GT(threadsOfThisProcess(), before) << "else one of them would do all the work";
    }
    EXPECT_LE(threadsOfThisProcess(), before);
}

TEST(DecoderThreadsTest, GoFromAClipThatIsOverToOneThatIsSeen)
{
    const WarningCapture warnings;
    const int before = threadsOfThisProcess();
    // As many clips as take all threads that there are, and one more.
    const int most = static_cast<int>(std::thread::hardware_concurrency()) + 2;
    SceneSketch sketch;
    sketch.addMain(sketch.video(sharedMedia::numbered()), 4000);
    for (int i = 0; i < most; ++i)
        sketch.addMix(sketch.video(sharedMedia::numbered()), 0, 1000);
    rvengine::Compositor compositor(rvengine::makePictureSource());
    const auto show = [&](long long time) {
        return !compositor.compose(sketch.scene(), time, QSize(160, 90)).isNull();
    };
    ASSERT_TRUE(show(0));
    for (int picture = 0; picture < 40; ++picture)
        ASSERT_TRUE(show(1000 + picture * 40));
    const int afterRest = threadsOfThisProcess();
    ASSERT_TRUE(show(200)) << "a jump takes what is free";
    const int afterJump = threadsOfThisProcess();
    EXPECT_LE(afterJump, before + most);
    EXPECT_LT(afterRest, before + most) << "the clips that are over gave theirs back";
    EXPECT_GT(afterJump, afterRest);
}
