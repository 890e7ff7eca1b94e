// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAudioEncoderSettings>
#include <QStringList>

namespace norvel {

/// The settings to record with where a backend offers these codecs.
///
/// They are the wanted ones if their codec is offered. If not, its place is taken by wide-band AMR,
/// else by narrow-band AMR, which knows no other rate than 8000 Hz. Bit rates are a matter of the
/// codec: that of another one is left to it. A backend without any AMR is asked for nothing and
/// takes settings of its own.
QAudioEncoderSettings offeredEncoding(const QAudioEncoderSettings& wanted,
                                      const QStringList& offeredCodecs);

} // namespace norvel
