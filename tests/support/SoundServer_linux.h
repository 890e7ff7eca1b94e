// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/SoundSamples.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QProcess>
#include <QTemporaryDir>

#include <cstddef>

/// A sound server of the test's own, with a device that nobody hears, and what is played on it.
/// What is played is the default input, too.
///
/// Started before the process's first look for a device; programs and libraries find the server by
/// the environment. It holds nothing of the user's: the home is a folder that goes with the server.
class SoundServer
{
public:
    static constexpr int Rate = 48000; ///< of the device, in Hz

    SoundServer();
    ~SoundServer();
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    /// Waits until the device is there.
    testing::AssertionResult isReady();

    /// Plays a sine of half of full level on the device, until it is told to play another one or
    /// nothing; 0 Hz is nothing.
    testing::AssertionResult play(int frequency);

    /// Records all that is played on the device; the first call waits until that is there.
    testing::AssertionResult record();
    /// The frames that were recorded so far.
    std::size_t recorded();
    /// What was recorded between two frames, on the left channel.
    Samples sound(std::size_t from, std::size_t to) const;
    /// Waits until that many frames more are recorded, and gives them.
    Samples next(std::size_t frames);

private:
    const QTemporaryDir m_folder;
    QProcess m_server;
    QProcess m_player;
    QProcess m_recorder;
    QByteArray m_bytes;
};
