// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <gtest/gtest.h>

#include <QString>

#include <qt_windows.h>

/// A file that another program has open while an object of this lives.
class HeldFile
{
public:
    /// `shared` says what others may do in the meantime: 0 for nothing, or FILE_SHARE_READ.
    HeldFile(const std::string& path, DWORD access, DWORD shared)
        : m_handle(CreateFileW(QString::fromStdString(path).toStdWString().c_str(), access, shared,
                               nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        EXPECT_NE(m_handle, INVALID_HANDLE_VALUE) << path;
    }
    ~HeldFile() { CloseHandle(m_handle); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

private:
    const HANDLE m_handle;
};
