// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// A file may be removed while it is read.

#include <engine/compose/Compositor.h>

#include <gtest/gtest.h>

#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <QFile>
#include <QTemporaryDir>

TEST(VanishingFileTest, IsReadOnWhenItVanishesWhileItIsRead)
{
    const WarningCapture warnings;
    const QTemporaryDir folder;
    const std::string path = TestMedia::copy(sharedMedia::numbered(), folder.path(), "gone.mp4");
    SceneSketch sketch;
    sketch.addMain(sketch.video(path), 4000);
    rvengine::Compositor compositor(rvengine::makePictureSource());
    const auto number = [&](long long time) {
        return TestMedia::frameNumber(compositor.compose(sketch.scene(), time, QSize(320, 180)));
    };
    EXPECT_EQ(number(0), 0);
    ASSERT_TRUE(QFile::remove(QString::fromStdString(path)));

    for (const long long time : {40LL, 2000LL, 400LL})
        EXPECT_EQ(number(time), time / 40);
}
