// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FfmpegLog.h"

#include "Ffmpeg.h"
#include "FfmpegErrors.h"

#include <QByteArray>
#include <QLoggingCategory>

#include <array>
#include <cstdarg>

namespace rvengine {

namespace {

Q_LOGGING_CATEGORY(ffmpegLog, "norvel.ffmpeg", QtWarningMsg)

// Called in any thread of FFmpeg's.
void logLine(void* context, int level, const char* format, va_list arguments)
{
    const bool isError = level <= AV_LOG_ERROR;
    const bool isInfo = level <= AV_LOG_WARNING && ffmpegLog().isInfoEnabled();
    const bool isDebug = level <= AV_LOG_VERBOSE && ffmpegLog().isDebugEnabled();
    if (!isError && !isInfo && !isDebug)
        return;
    std::array<char, 1024> line{};
    int atStart = 1;
    av_log_format_line2(context, level, format, arguments, line.data(),
                        static_cast<int>(line.size()), &atStart);
    const QString text = QString::fromUtf8(line.data()).trimmed();
    if (isError)
        FfmpegErrors::add(text);
    if (isInfo)
        qCInfo(ffmpegLog).noquote() << text;
    else if (isDebug)
        qCDebug(ffmpegLog).noquote() << text;
}

} // namespace

void redirectFfmpegLog()
{
    static const bool done = [] {
        if (av_log_get_level() == AV_LOG_INFO)
            av_log_set_callback(logLine);
        return true;
    }();
    static_cast<void>(done);
}

} // namespace rvengine
