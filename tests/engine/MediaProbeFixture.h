// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/media/MediaProbe.h>

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <string>

/// What the probe does with any file under either engine: which files it opens and what it keeps in
/// memory. The media are pictures, which both engines measure.
class MediaProbeTest : public testing::Test
{
protected:
    QString folder() const { return m_folder.path(); }

    int width(const std::string& path)
    {
        const auto info = m_probe.probe(path, rvengine::MediaKind::Picture);
        return info ? info->width : -1;
    }

    void expectNothing(const std::string& path)
    {
        for (const rvengine::MediaKind kind :
             {rvengine::MediaKind::Video, rvengine::MediaKind::Picture, rvengine::MediaKind::Sound})
            EXPECT_FALSE(m_probe.probe(path, kind)) << path << " as " << static_cast<int>(kind);
    }

    QTemporaryDir m_folder;
    rvengine::MediaProbe m_probe;
};
