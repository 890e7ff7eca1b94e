// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltRuntime.h"

#include <QByteArray>

#include <framework/mlt.h>

namespace rvengine {

namespace {

bool initialise()
{
    // A host that uses MLT itself has chosen its modules and its log level.
    if (mlt_factory_repository() != nullptr)
        return true;
    constexpr const char* DeniedModules = "MLT_REPOSITORY_DENY";
    if (!qEnvironmentVariableIsSet(DeniedModules))
        qputenv(DeniedModules, "libmltjackrack");
    // The avformat module hands this level on to FFmpeg when it is first used.
    mlt_log_set_level(MLT_LOG_QUIET);
    return mlt_factory_init(nullptr) != nullptr;
}

} // namespace

bool startMltRuntime()
{
    static const bool started = initialise();
    return started;
}

std::mutex& mltOpening()
{
    static std::mutex mutex;
    return mutex;
}

bool isNameForMlt(const std::string& path)
{
    return path.find("\\?") == std::string::npos;
}

} // namespace rvengine
