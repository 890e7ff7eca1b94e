// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// No file can be removed while it is read.

#include <engine/compose/Compositor.h>

#include <gtest/gtest.h>

#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <QFile>
#include <QTemporaryDir>

TEST(VanishingFileTest, StaysWhileItIsRead)
{
    const WarningCapture warnings;
    const QTemporaryDir folder;
    const std::string path = TestMedia::copy(sharedMedia::numbered(), folder.path(), "kept.mp4");
    QFile file(QString::fromStdString(path));
    {
        SceneSketch sketch;
        sketch.addMain(sketch.video(path), 4000);
        rvengine::Compositor compositor(rvengine::makePictureSource());
        const auto number = [&](long long time) {
            return TestMedia::frameNumber(
                compositor.compose(sketch.scene(), time, QSize(320, 180)));
        };
        EXPECT_EQ(number(0), 0);
        EXPECT_FALSE(file.remove());
        for (const long long time : {40LL, 2000LL, 400LL})
            EXPECT_EQ(number(time), time / 40);
    }
    EXPECT_TRUE(file.remove()) << "nobody reads it any more";
}
