// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// Roots as Windows takes them.

#include "timeline/LiquifyCacheFixture.h"

#include <gtest/gtest.h>

#include <qt_windows.h>

namespace {

TEST_F(LiquifyCacheTest, ARootOnADriveThatIsNotThereGivesNoFolder)
{
    ASSERT_EQ(GetDriveTypeA("Q:\\"), static_cast<UINT>(DRIVE_NO_ROOT_DIR));
    setRoot(QStringLiteral("Q:/cache"));
    const auto record = capture();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->effectPath, "");
    EXPECT_EQ(current(), "");
}

TEST_F(LiquifyCacheTest, AChineseRootTakesAWindowsThatHasTheLettersInItsEncoding)
{
    constexpr UINT simplifiedChinese = 936;
    const ScopedPathEncoding encodingOfWindows("System");
    setRoot(m_cache.root() + QStringLiteral("/缓存 文件夹"));
    addStroke(4.0F);
    const auto record = capture();
    ASSERT_TRUE(record);
    if (GetACP() == simplifiedChinese) {
        EXPECT_TRUE(record->effectPath.startsWith(m_cache.root() + "/缓存 文件夹/Norvel/Undo/"));
        EXPECT_EQ(savedRadii(record->effectPath), std::vector<float>{4.0F});
        EXPECT_EQ(current(), record->effectPath.toStdString());
    } else {
        EXPECT_EQ(record->effectPath, "");
        EXPECT_EQ(current(), "");
    }
}

} // namespace
