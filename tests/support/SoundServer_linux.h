// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>

/// A sound server of the test's own, with a device that nobody hears. What is played on it is the
/// default input, too.
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

private:
    const QTemporaryDir m_folder;
    QProcess m_server;
    QProcess m_player;
};

/// Asks a program to end, if it runs, and waits for that.
void endProcess(QProcess& process);
