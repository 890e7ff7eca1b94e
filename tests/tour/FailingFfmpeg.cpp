// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <cstdio>

/// Complains as an ffmpeg does that was built without something.
int main()
{
    std::fputs("one\nno codec\n", stderr);
    return 3;
}
