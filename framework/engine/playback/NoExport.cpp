// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Exporter.h"

namespace rvengine {

std::unique_ptr<Exporter> startExport(ScenePointer, const std::string&, const ExportSettings&,
                                      std::function<void()>)
{
    return nullptr;
}

} // namespace rvengine
