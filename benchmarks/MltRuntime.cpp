// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltRuntime.h"

#include <mlt++/Mlt.h>

#include <QByteArray>

namespace {

bool start()
{
    qputenv("MLT_REPOSITORY_DENY", "libmltjackrack");
    mlt_log_set_level(MLT_LOG_QUIET);
    return Mlt::Factory::init() != nullptr;
}

} // namespace

bool startMlt()
{
    static const bool started = start();
    return started;
}
