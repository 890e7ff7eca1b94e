// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QIODevice>

namespace rvengine {

/// Whether the picture file in `device`, of the Qt format `format`, reaches the end that its own
/// structure tells of. Reads from the current position of the device.
///
/// Qt decodes a cut JPEG, GIF or BMP without complaint and leaves the missing part grey or black;
/// for the other formats, whose decoders do complain, the answer is true.
bool isCompletePicture(QIODevice& device, const QByteArray& format);

} // namespace rvengine
