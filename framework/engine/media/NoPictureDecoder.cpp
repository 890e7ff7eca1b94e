// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PictureDecoder.h"

namespace rvengine {

QImage decodePicture(const std::filesystem::path&)
{
    return {};
}

} // namespace rvengine
