// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/SystemSource.h>

namespace norvel {

SystemSource::~SystemSource() = default;

} // namespace norvel
