// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// Which files the probe opens where files are shared and named as on Windows.

#include "HeldFile_windows.h"
#include "MediaProbeFixture.h"
#include "support/TestMedia.h"

#include <gtest/gtest.h>

#include <string>

TEST_F(MediaProbeTest, RefusesAFileThatAnotherHoldsUntilItIsFree)
{
    const std::string path = TestMedia::picture(folder(), "a.png", 120, 80);
    {
        const HeldFile held(path, GENERIC_READ, 0);
        expectNothing(path);
    }
    EXPECT_EQ(width(path), 120);
}

TEST_F(MediaProbeTest, RefusesADevice)
{
    for (const char* name :
         {"NUL", "CON", "C:\\NUL", "\\\\.\\NUL", "\\\\?\\NUL", "\\\\.\\pipe\\a.mp4",
          "\\\\?\\pipe\\a.mp4", "\\\\?\\GLOBALROOT\\Device\\Null"})
        expectNothing(name);
    EXPECT_EQ(m_probe.probedCount(), 0U);
}
