// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "BenchScene.h"

#include <QSize>

#include <memory>
#include <string>

/// A scene made of MLT's own tracks and qtblend transitions. One thread only.
class MltScene
{
public:
    MltScene(BenchScene kind, QSize canvas);
    ~MltScene();

    /// Why it cannot be rendered here; empty if it can.
    std::string problem() const;
    /// Renders the picture of that number; false if MLT gives none.
    bool render(int position);

private:
    class Tracks;
    std::unique_ptr<Tracks> m_tracks;
};
