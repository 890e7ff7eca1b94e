// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// Which files the probe opens where files are shared and named as on Windows.

#include "MediaProbeFixture.h"
#include "support/TestMedia.h"

#include <gtest/gtest.h>

#include <string>

#include <qt_windows.h>

namespace {

/// Nobody else can open the file while an object of this lives.
class HeldFile
{
public:
    explicit HeldFile(const std::string& path)
        : m_handle(CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                               FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        EXPECT_NE(m_handle, INVALID_HANDLE_VALUE);
    }
    ~HeldFile() { CloseHandle(m_handle); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

private:
    const HANDLE m_handle;
};

} // namespace

TEST_F(MediaProbeTest, RefusesAFileThatAnotherHoldsUntilItIsFree)
{
    const std::string path = TestMedia::picture(folder(), "a.png", 120, 80);
    {
        const HeldFile held(path);
        expectNothing(path);
    }
    EXPECT_EQ(width(path), 120);
}

TEST_F(MediaProbeTest, RefusesADevice)
{
    expectNothing("NUL");
    expectNothing("CON");
    EXPECT_EQ(m_probe.probedCount(), 0U);
}
