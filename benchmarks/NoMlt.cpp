// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltPlaylist.h"
#include "MltScene.h"

namespace {
const char* const absence = "MLT was not there when this was built (package libmlt++-dev)";
} // namespace

class MltScene::Tracks
{
};

MltScene::MltScene(BenchScene, QSize) {}

MltScene::~MltScene() = default;

std::string MltScene::problem() const
{
    return absence;
}

bool MltScene::render(int)
{
    return false;
}

struct MltPlaylist::Source
{
};

MltPlaylist::MltPlaylist(const std::string&) {}

MltPlaylist::~MltPlaylist() = default;

std::string MltPlaylist::problem() const
{
    return absence;
}

void MltPlaylist::rebuild(int) {}
