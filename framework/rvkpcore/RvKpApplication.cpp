// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpApplication.h>

namespace qrvkp {

RvKpApplication::RvKpApplication() = default;

RvKpApplication::~RvKpApplication() = default;

RvKpPlayer* RvKpApplication::getPlayer()
{
    return &m_player;
}

RvKpConfig* RvKpApplication::getRvKpConfig()
{
    return &m_config;
}

} // namespace qrvkp
