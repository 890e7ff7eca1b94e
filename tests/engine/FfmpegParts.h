// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

/// What the FFmpeg that the engine is linked with can do: builds of it differ.
namespace ffmpegParts {

/// Whether it has a decoder or a filter of this name; null stands for one that every build has.
bool has(const char* name);

/// Whether pictures can be encoded by the encoder of this name. Some need one of the system.
bool canEncode(const char* encoder);

/// Prints a line of what is left out, which those who run the tests look for.
void printLeftOut(const char* suite, const char* test, const char* needed);

/// The cases of a suite of tests without those whose part `needs` is not there.
template <class Case>
std::vector<Case> possible(const char* suite, const std::vector<Case>& cases)
{
    std::vector<Case> left;
    for (const Case& each : cases) {
        if (has(each.needs))
            left.push_back(each);
        else
            printLeftOut(suite, each.name, each.needs);
    }
    return left;
}

} // namespace ffmpegParts
