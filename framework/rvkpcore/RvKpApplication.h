// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvKpConfig.h>
#include <rvkpcore/RvKpPlayer.h>
#include <rvkpcore/rvkpcore_export.h>

namespace qrvkp {

/// The framework in a host's process: a host makes one after its `QApplication`. A
/// `QCoreApplication`, or none, is enough for everything that is neither seen nor played.
class RVKPCORE_EXPORT RvKpApplication
{
public:
    RvKpApplication();
    ~RvKpApplication();
    RvKpApplication(const RvKpApplication&) = delete;
    RvKpApplication& operator=(const RvKpApplication&) = delete;

    /// The player; belongs to the application.
    RvKpPlayer* getPlayer();
    /// The configuration; belongs to the application.
    RvKpConfig* getRvKpConfig();

private:
    RvKpConfig m_config;
    RvKpPlayer m_player;
};

} // namespace qrvkp
