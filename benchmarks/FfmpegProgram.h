// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

/// Runs the `ffmpeg` program with these arguments and waits for its end; false if it fails.
bool runFfmpeg(const QStringList& arguments);
