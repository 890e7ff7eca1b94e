// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>

#include <filesystem>

namespace rvengine {

/// Decodes a still picture in a format that Qt has no plugin for, as TIFF, WebP and Targa may be,
/// by the media engine that the library is built with: exactly one of FilePictureDecoder.cpp and
/// NoPictureDecoder.cpp defines it. Null when it is no such picture or when a part of it is
/// missing.
QImage decodePicture(const std::filesystem::path& path);

} // namespace rvengine
