// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/RvARBeautyTrack.h>
#include <kparextension/RvARFaceGroupData.h>
#include <kparextension/RvARMakeupARGroupData.h>

namespace qkpar {

/// A makeup (type 20009): groups of AR resources, for all faces and for single ones.
class KPAREXTENSION_EXPORT RvARMakeupTrack : public RvARBeautyTrack
{
public:
    /// Another wrapper of a native makeup track, with one reference; null for any other handle.
    static RvARMakeupTrack* create(void* context);
    /// A new track of the AR resource `source` (UTF-8, may be empty or missing), with one
    /// reference.
    static RvARMakeupTrack* create(const std::string& source, long long startPos,
                                   long long duration);

    /// Opacity of the whole makeup, 0 to 1.
    float getSuitAlpha() const;
    void setSuitAlpha(float alpha);

    /// The names of the groups, the bottom one first.
    std::vector<std::string> getAllARGroupOrder() const;
    void setAllARGroupOrder(const std::vector<std::string>& order);

    /// The groups for all faces.
    std::vector<RvARMakeupARGroupData> getARGroupDatas() const;
    void setARGroupDatas(const std::vector<RvARMakeupARGroupData>& groups);

    /// The groups of single faces.
    std::vector<RvARFaceGroupData> getARFaceGroupDatas() const;
    void setARFaceGroupDatas(const std::vector<RvARFaceGroupData>& faceGroups);

protected:
    using RvARBeautyTrack::RvARBeautyTrack;
    ~RvARMakeupTrack() override;

private:
    static qrvkp::RvITrack* wrap(std::shared_ptr<qrvkp::NativeTrack> native);
};

} // namespace qkpar
