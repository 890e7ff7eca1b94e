// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/KpARTypes.h>
#include <kparextension/RvARITrack.h>

#include <cstdint>
#include <map>

namespace qkpar {

/// An AR filter (type 20001): parameters of the AR kernel, for all faces and for single ones.
class KPAREXTENSION_EXPORT RvARFilterTrack : public RvARITrack
{
public:
    /// Another wrapper of a native filter track, with one reference; null for any other handle.
    static RvARFilterTrack* create(void* context);
    /// A new track of the AR resource `source` (UTF-8, may be empty or missing), with one
    /// reference.
    static RvARFilterTrack* create(const std::string& source, long long startPos,
                                   long long duration);

    /// How strong the filter is, 0 to 1.
    float getFilterAlpha() const;
    void setFilterAlpha(float alpha);

    /// The parameters for all faces.
    std::map<KpARKernelParamFlag, float> getFloatParams() const;
    /// Sets one parameter for all faces; the others stay.
    void setFloatParam(KpARKernelParamFlag flag, float value);

    /// The parameters of single faces, by face id.
    std::map<std::int64_t, std::map<KpARKernelParamFlag, float>> getFloatParamsWithFaceID() const;
    /// Sets one parameter of one face; the others stay.
    void setFloatParamByFaceId(KpARKernelParamFlag flag, float value, std::int64_t faceId);

    /// The AR configuration files of single faces, by face id.
    std::map<std::int64_t, std::string> getAllArFacePlists() const;
    /// Applies the AR configuration file `path` (UTF-8, may be missing) to one face. False when it
    /// could not be applied; the face then keeps what it had.
    bool addARFacePlist(const std::string& path, std::int64_t faceId);

protected:
    using RvARITrack::RvARITrack;
    ~RvARFilterTrack() override;

private:
    static qrvkp::RvITrack* wrap(std::shared_ptr<qrvkp::NativeTrack> native);
};

} // namespace qkpar
