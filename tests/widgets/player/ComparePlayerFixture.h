// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CompareStage.h"
#include "PlayerMedia.h"

#include <norvel/widgets/player/LabCompareMaskView.h>

#include <support/FrameworkRef.h>

#include <rvkpcore/RvIMediaTrack.h>

/// A compare player and two small videos for it.
class ComparePlayerTest : public CompareStage
{
protected:
    static qrvkp::RvIMediaTrack& media(const FrameworkRef<qrvkp::RvITrack>& track)
    {
        return dynamic_cast<qrvkp::RvIMediaTrack&>(*track);
    }

    /// The warning about files of which one is missing.
    static QString lost(const QString& first, const QString& second)
    {
        return "输入的资源文件已丢失：" + first + "或者" + second;
    }

    /// Drags the line to this x of the view.
    void dragLineTo(int x)
    {
        const int from = static_cast<int>(mask()->lineX());
        drag(*mask(), {from, 20}, {x, 20});
        ASSERT_EQ(mask()->lineX(), x);
    }

    const QString m_red = PlayerMedia::red(320, 180, 1.0);
    const QString m_blue = PlayerMedia::blue(320, 180, 1.0);
};
