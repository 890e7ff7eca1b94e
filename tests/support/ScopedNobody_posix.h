// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

/// While an object of this lives, the process has the rights of nobody if it was root before, who
/// may read and write all.
class ScopedNobody
{
public:
    ScopedNobody() { change(Nobody); }
    ~ScopedNobody() { change(Root); }
    ScopedNobody(const ScopedNobody&) = delete;
    ScopedNobody& operator=(const ScopedNobody&) = delete;

private:
    static constexpr uid_t Root = 0;
    static constexpr uid_t Nobody = 65534;

    // Some calls go by the effective user, and access() by the real one. The saved one is the way
    // back.
    void change(uid_t user)
    {
        if (m_wasRoot) {
            EXPECT_EQ(setresuid(user, user, Root), 0);
        }
    }

    const bool m_wasRoot = geteuid() == Root;
};
