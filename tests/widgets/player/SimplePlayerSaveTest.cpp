// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayerMedia.h"
#include "SimplePlayerFixture.h"

#include <rvkpcore/RvKpTimeLine.h>

#include <QTemporaryDir>

using namespace qrvkp;

TEST_F(SimplePlayerTest, LeavesTheTimeWhileTheTimelineIsSaved)
{
    const QTemporaryDir folder;
    player().setTimeLine(PlayerMedia::timelineOf(PlayerMedia::red(320, 180, 8.0)).get());
    player().seekTo(1000, true);
    EXPECT_EQ(time(), "00:00:01/00:00:08");
    ASSERT_TRUE(player().startSave(folder.filePath("saved.mp4").toStdString()));
    ASSERT_TRUE(player().getSaveMode());
    player().seekTo(5000, true);
    EXPECT_EQ(time(), "00:00:01/00:00:08");
    player().cancelSave();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !player().getSaveMode(); }, PatienceMs));
    player().seekTo(5000, true);
    EXPECT_EQ(time(), "00:00:05/00:00:08");
}
