// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// Names of files are bytes here, which Qt makes of letters by the locale.

#include <engine/media/PictureReader.h>
#include <engine/playback/Exporter.h>

#include <gtest/gtest.h>

#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTextCodec>

#include <memory>

namespace {

/// A process without a locale, as many are that no person started.
class ScopedLatinNames
{
public:
    ScopedLatinNames() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1")); }
    ~ScopedLatinNames() { QTextCodec::setCodecForLocale(nullptr); }
    ScopedLatinNames(const ScopedLatinNames&) = delete;
    ScopedLatinNames& operator=(const ScopedLatinNames&) = delete;
};

} // namespace

TEST(FileNameTest, AFilmIsNotSavedByAnotherNameThanItsOwn)
{
    const WarningCapture warnings;
    const QTemporaryDir folder;
    const std::string source = TestMedia::copy(sharedMedia::numbered(), folder.path(), "电影.mp4");
    const ScopedLatinNames latin;
    EXPECT_NE(rvengine::PictureReader::open(source), nullptr) << "reading goes by the bytes";
    SceneSketch sketch;
    sketch.addMain(sketch.video(source), 200);
    const auto scene = std::make_shared<const rvengine::Scene>(sketch.scene());
    const std::string path = folder.filePath("新电影.mp4").toStdString();
    const auto exporter = rvengine::startExport(scene, path, {}, [] {});
    EXPECT_EQ(exporter->news().state, rvengine::ExportState::Failed);
    EXPECT_TRUE(exporter->news().error.contains("locale")) << exporter->news().error.toStdString();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}
