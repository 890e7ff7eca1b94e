// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FfmpegProgram.h"

#include <QProcess>

bool runFfmpeg(const QStringList& arguments)
{
    return QProcess::execute("ffmpeg", QStringList{"-v", "error", "-nostdin", "-y"} + arguments) ==
           0;
}
