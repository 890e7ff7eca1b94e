// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/SoundSamples.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <cstddef>
#include <memory>

/// What is played on the default output, recorded.
///
/// Created before the process's first look for a device, which it may change the environment for.
class PlayedSound
{
public:
    static constexpr int Rate = 48000; ///< of the recording, in Hz

    PlayedSound();
    ~PlayedSound();
    PlayedSound(const PlayedSound&) = delete;
    PlayedSound& operator=(const PlayedSound&) = delete;

    /// Records all that is played; the first call waits until sound, or silence, comes.
    testing::AssertionResult record();
    /// The frames that were recorded so far.
    std::size_t recorded();
    /// What was recorded between two frames, on the left channel.
    Samples sound(std::size_t from, std::size_t to) const;
    /// Waits until that many frames more are recorded, and gives them.
    Samples next(std::size_t frames);

private:
    /// Where the platform gives the sound.
    class Source
    {
    public:
        virtual ~Source() = default;
        virtual testing::AssertionResult start() = 0;
        /// What was recorded since the last call: frames of two channels of 16 bits. It may end
        /// within a frame.
        virtual QByteArray read() = 0;
    };
    class PlatformSource;
    static std::unique_ptr<Source> makeSource();

    const std::unique_ptr<Source> m_source;
    bool m_isStarted = false;
    QByteArray m_bytes;
};
