// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <kparextension/kparextension_export.h>
#include <rvkpcore/RvIEffectTrack.h>

#include <map>
#include <string>

namespace qkpar {

/// Base of the AR tracks: an effect that an AR script describes.
class KPAREXTENSION_EXPORT RvARITrack : public qrvkp::RvIEffectTrack
{
public:
    /// The script's parameters by name, UTF-8.
    std::map<std::string, std::string> getScriptParams() const;
    /// Sets one parameter of the script; the others stay.
    void setScriptParam(const std::string& key, const std::string& value);

    /// A configuration text that the AR kernel reads as a whole.
    std::string getGlobalParamConfiguration() const;
    void setGlobalParamConfiguration(const std::string& configuration);

protected:
    using RvIEffectTrack::RvIEffectTrack;
    ~RvARITrack() override;
};

} // namespace qkpar
