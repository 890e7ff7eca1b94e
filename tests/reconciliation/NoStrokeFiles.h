// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/TimelineSamples.h"

#include <string>

/// Keeps captures from saving the strokes of liquify tracks: every one of thousands would wait for
/// the disk, and captures within one millisecond share a folder, which then tells nothing.
class NoStrokeFiles
{
public:
    NoStrokeFiles()
    {
        // Nothing can be made below a file.
        norvel::RvAttributeUtility::_sCacheDir = TimelineSamples::picture();
    }
    ~NoStrokeFiles() { norvel::RvAttributeUtility::_sCacheDir = m_cacheDir; }
    NoStrokeFiles(const NoStrokeFiles&) = delete;
    NoStrokeFiles& operator=(const NoStrokeFiles&) = delete;

private:
    const std::string m_cacheDir = norvel::RvAttributeUtility::_sCacheDir;
};
