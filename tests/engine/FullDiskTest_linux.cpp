// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/playback/Exporter.h>

#include <gtest/gtest.h>

#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <chrono>
#include <csignal>
#include <memory>
#include <string>
#include <thread>

using rvengine::ExportNews;
using rvengine::ExportState;

namespace {

/// While it lives, no file of the process can become longer.
class ScopedFileLimit
{
public:
    explicit ScopedFileLimit(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &m_before), 0);
        rlimit limited = m_before;
        limited.rlim_cur = bytes;
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    }
    ~ScopedFileLimit()
    {
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &m_before), 0);
        std::signal(SIGXFSZ, m_handler);
    }
    ScopedFileLimit(const ScopedFileLimit&) = delete;
    ScopedFileLimit& operator=(const ScopedFileLimit&) = delete;

private:
    void (*const m_handler)(int);
    rlimit m_before{};
};

ExportNews exported(const rvengine::Scene& scene, const std::string& path)
{
    const auto exporter =
        rvengine::startExport(std::make_shared<const rvengine::Scene>(scene), path, {}, [] {});
    while (exporter->news().state == ExportState::Running)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return exporter->news();
}

} // namespace

TEST(FullDiskTest, AnExportThatFailsMidwayLeavesTheFileThatStoodThere)
{
    const WarningCapture warnings;
    const QTemporaryDir folder;
    const std::string path = TestMedia::file(folder.path(), "out.mp4", "the film of yesterday");
    SceneSketch sketch;
    sketch.addMain(sketch.video(sharedMedia::numbered()), 4000);
    const ExportNews whole = exported(sketch.scene(), folder.filePath("whole.mp4").toStdString());
    ASSERT_EQ(whole.state, ExportState::Finished);
    const auto bytes = QFileInfo(folder.filePath("whole.mp4")).size();
    ASSERT_TRUE(QFile::remove(folder.filePath("whole.mp4")));
    ExportNews news;
    {
        const ScopedFileLimit limit(static_cast<rlim_t>(bytes / 2));
        news = exported(sketch.scene(), path);
    }
    EXPECT_EQ(news.state, ExportState::Failed);
    EXPECT_TRUE(news.error.contains("out.mp4")) << news.error.toStdString();
    EXPECT_EQ(TestMedia::content(path), "the film of yesterday");
    const QDir::Filters all = QDir::Files | QDir::Hidden;
    EXPECT_EQ(QDir(folder.path()).entryList(all), QStringList{"out.mp4"}) << "nothing is left";
}
