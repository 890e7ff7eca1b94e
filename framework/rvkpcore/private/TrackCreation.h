// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvITrack.h>
#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/FaultPoint.h>
#include <rvkpcore/private/NativeTrack.h>

#include <memory>

namespace qrvkp {

/// The `create(void*)` of a wrapper class: another wrapper of a native of `trackType`, or null.
template <class Wrapper>
Wrapper* wrapContext(const char* name, void* context, int trackType, NativeTrack::Wrap wrap)
{
    auto native = shouldFail(name) ? nullptr : NativeTrack::fromContext(context, trackType);
    return native ? static_cast<Wrapper*>(wrap(std::move(native))) : nullptr;
}

/// The native of a creation `name`, or null when that creation was asked to fail.
template <class Native>
std::shared_ptr<Native> makeNative(const char* name, int trackType, NativeTrack::Wrap wrap)
{
    return shouldFail(name) ? nullptr : std::make_shared<Native>(trackType, wrap);
}

/// Ends a creation: records it and gives the first wrapper; null when there is no native.
template <class Wrapper, class Native, class... Arguments>
Wrapper* publish(const char* name, const std::shared_ptr<Native>& native,
                 const Arguments&... arguments)
{
    calls::recordCreation(name, native ? &native->id : nullptr, arguments...);
    return native ? static_cast<Wrapper*>(native->wrap()) : nullptr;
}

} // namespace qrvkp
