// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/private/NativeTrack.h>

#include <memory>
#include <string>

namespace qrvkp {

/// The natives of the tracks that are made from files: probed, with the file's values, centred on
/// the canvas. Null when the file is not of the kind, or when the creation `name` was asked to
/// fail. A negative `duration` takes all of the file from `fileStartTime` on.
std::shared_ptr<NativeMediaTrack> makeVideoNative(const char* name, const std::string& path,
                                                  long long duration, long long fileStartTime,
                                                  NativeTrack::Wrap wrap);
std::shared_ptr<NativeMediaTrack> makePictureNative(const char* name, const std::string& path,
                                                    NativeTrack::Wrap wrap);
std::shared_ptr<NativeAudioTrack> makeSoundNative(const char* name, const std::string& path,
                                                  long long duration, long long fileStartTime,
                                                  NativeTrack::Wrap wrap);

} // namespace qrvkp
