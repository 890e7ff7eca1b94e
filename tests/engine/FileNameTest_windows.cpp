// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// Files by all the kinds of names that Windows has: measured, seen, heard and written.

#include <engine/compose/Compositor.h>
#include <engine/media/LocalFile.h>
#include <engine/media/MediaProbe.h>
#include <engine/media/PictureReader.h>

#include <gtest/gtest.h>

#include "SceneSketch.h"
#include "SharedMedia.h"
#include "WarningCapture.h"
#include "WholeScene.h"
#include "support/TestMedia.h"

#include <QDir>
#include <QTemporaryDir>

#include <ostream>
#include <string>

#include <qt_windows.h>

using rvengine::Compositor;
using rvengine::ExportState;
using rvengine::MediaKind;
using rvengine::PictureReader;

namespace {

constexpr QSize CanvasSize(320, 180);

/// The folder as C:\..., in another spelling.
QString asItIs(const QString& folder)
{
    return folder;
}

QString literal(const QString& folder)
{
    return "\\\\?\\" + folder;
}

/// The system shares every drive under this name with its administrators.
QString share(const QString& folder)
{
    return "\\\\localhost\\" + folder.left(1) + '$' + folder.mid(2);
}

QString literalShare(const QString& folder)
{
    return "\\\\?\\UNC\\" + share(folder).mid(2);
}

struct NameCase
{
    const char* name;
    QString folder; ///< below the temporary folder
    QString (*spelled)(const QString& folder);
};

void PrintTo(const NameCase& testCase, std::ostream* stream)
{
    *stream << testCase.name;
}

/// More than 260 characters, no single name more than 255.
QString longName()
{
    const QString name(60, 'l');
    return QStringList{name, name, name, name, name, name}.join('\\');
}

class FileNameTest : public testing::TestWithParam<NameCase>
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir(m_folder.path()).mkpath(QDir::fromNativeSeparators(GetParam().folder)));
        m_plain = QDir::toNativeSeparators(m_folder.path()) + '\\' + GetParam().folder;
    }

    std::string pathOf(const QString& name) const
    {
        return (GetParam().spelled(m_plain) + '\\' + name).toStdString();
    }

    /// A copy of a file in the folder.
    std::string copy(const std::string& source, const QString& name) const
    {
        const std::wstring from = QString::fromStdString(source).toStdWString();
        const std::wstring to = (literal(m_plain) + '\\' + name).toStdWString();
        EXPECT_TRUE(CopyFileW(from.c_str(), to.c_str(), TRUE)) << GetLastError();
        return pathOf(name);
    }

    /// The names of all files in the folder.
    QStringList files() const { return QDir(m_plain).entryList(QDir::Files | QDir::Hidden); }

    QTemporaryDir m_folder;
    QString m_plain; ///< of the tested folder
    WarningCapture m_warnings;
    SceneSketch m_sketch;
};

std::string nameOf(const testing::TestParamInfo<NameCase>& info)
{
    return info.param.name;
}

} // namespace

TEST_P(FileNameTest, TheFolderIsNamedAsTheCaseSays)
{
    EXPECT_EQ(literal(m_plain).size() > MAX_PATH, GetParam().folder.size() > 260);
    const std::wstring name = GetParam().spelled(m_plain).toStdWString();
    const bool isTooLong = name.size() >= MAX_PATH && name.find(L'?') == std::wstring::npos;
    EXPECT_TRUE(isTooLong || GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES)
        << GetLastError() << ": the system itself does not know the name";
}

TEST_P(FileNameTest, AFileIsMeasured)
{
    rvengine::MediaProbe probe;
    const auto video = probe.probe(copy(sharedMedia::numbered(), "视频.mp4"), MediaKind::Video);
    ASSERT_TRUE(video);
    EXPECT_EQ(QSize(video->width, video->height), CanvasSize);
    const auto sound = probe.probe(copy(sharedMedia::tone(), "声音.wav"), MediaKind::Sound);
    ASSERT_TRUE(sound);
    EXPECT_EQ(sound->durationMs, 5000);
    const std::string red =
        TestMedia::solidPicture(sharedMedia::folder(), "red.png", 32, 16, Qt::red);
    const auto picture = probe.probe(copy(red, "图片.png"), MediaKind::Picture);
    ASSERT_TRUE(picture);
    EXPECT_EQ(QSize(picture->width, picture->height), QSize(32, 16));
}

TEST_P(FileNameTest, AMissingFileIsNotMeasured)
{
    rvengine::MediaProbe probe;
    EXPECT_FALSE(probe.probe(pathOf("missing.mp4"), MediaKind::Video));
    EXPECT_FALSE(probe.probe(GetParam().spelled(m_plain).toStdString(), MediaKind::Video));
}

TEST_P(FileNameTest, VideosAndPicturesAreSeen)
{
    const std::string green =
        TestMedia::solidPicture(sharedMedia::folder(), "green.png", 32, 16, QColor(20, 200, 40));
    m_sketch.addMain(m_sketch.video(copy(sharedMedia::numbered(), "视频.mp4")), 1000);
    m_sketch.addMain(m_sketch.picture(copy(green, "图片.png")), 1000);
    Compositor compositor(rvengine::makePictureSource());

    const QImage first = compositor.compose(m_sketch.scene(), 480, CanvasSize);
    EXPECT_EQ(TestMedia::frameNumber(first), 12);
    const QImage second = compositor.compose(m_sketch.scene(), 1500, CanvasSize);
    EXPECT_EQ(second.pixelColor(160, 90), QColor(20, 200, 40));
    EXPECT_EQ(m_warnings.take(), QStringList());
}

TEST_P(FileNameTest, SoundIsHeard)
{
    m_sketch.addMain(m_sketch.sound(copy(sharedMedia::tone(), "声音.wav")), 1000);
    EXPECT_NEAR(loudestOf(m_sketch.scene(), 1000), 0.5F, 0.01F);
    EXPECT_EQ(m_warnings.take(), QStringList());
}

TEST_P(FileNameTest, AFileIsWritten)
{
    m_sketch.addMain(m_sketch.video(sharedMedia::numbered()), 400);
    m_sketch.addMix(m_sketch.sound(sharedMedia::tone()), 0, 400);
    const std::string path = pathOf("导出.mp4");
    const auto written = finishedExport(m_sketch.scene(), path);
    ASSERT_EQ(written.state, ExportState::Finished) << written.error.toStdString();
    // Once more, over the file that is there now.
    const auto again = finishedExport(m_sketch.scene(), path);
    ASSERT_EQ(again.state, ExportState::Finished) << again.error.toStdString();

    EXPECT_EQ(files(), QStringList("导出.mp4")) << "nothing else is left";
    const auto reader = PictureReader::open(path);
    ASSERT_NE(reader, nullptr);
    for (int frame = 0; frame < 10; ++frame)
        EXPECT_EQ(TestMedia::frameNumber(reader->picture(frame * 40, CanvasSize)), frame);
    SceneSketch heard;
    heard.addMain(heard.sound(path), 400);
    EXPECT_NEAR(loudestOf(heard.scene(), 380), 0.5F, 0.04F);
}

TEST_P(FileNameTest, ASourceIsNotOverwritten)
{
    const std::string source = copy(sharedMedia::numbered(), "视频.mp4");
    m_sketch.addMain(m_sketch.video(source), 400);
    const auto news = finishedExport(m_sketch.scene(), source);
    EXPECT_EQ(news.state, ExportState::Failed);
    EXPECT_TRUE(news.error.contains("part of what is to be saved")) << news.error.toStdString();
    EXPECT_EQ(files(), QStringList("视频.mp4"));
    rvengine::MediaProbe probe;
    const auto video = probe.probe(source, MediaKind::Video);
    ASSERT_TRUE(video);
    EXPECT_EQ(video->durationMs, 4000);
}

INSTANTIATE_TEST_SUITE_P(All, FileNameTest,
                         testing::Values(NameCase{"Chinese", "中文 素材（一）", &asItIs},
                                         NameCase{"Long", longName(), &asItIs},
                                         NameCase{"Literal", "中文", &literal},
                                         NameCase{"LiteralLong", longName(), &literal},
                                         NameCase{"Share", "中文", &share},
                                         NameCase{"ShareLong", longName(), &share},
                                         NameCase{"LiteralShare", "中文", &literalShare},
                                         NameCase{"LiteralShareLong", longName(), &literalShare}),
                         nameOf);

TEST(LiteralNameTest, IsAnotherNameOfTheSameFile)
{
    const QString plain = QDir::toNativeSeparators(QString::fromStdString(sharedMedia::tone()));
    const auto absolute = rvengine::absolutePath(plain.toStdString());
    ASSERT_TRUE(absolute);
    EXPECT_EQ(rvengine::absolutePath(literal(plain).toStdString()), absolute);
    EXPECT_EQ(rvengine::absolutePath(literalShare(plain).toStdString()),
              rvengine::absolutePath(share(plain).toStdString()));
}

TEST(LiteralNameTest, IsRefusedWhereItsPlainFormNamesAnotherFile)
{
    for (const char* name : {"\\\\?\\C:\\a\\..\\b.mp4", "\\\\?\\C:\\a.mp4.", "\\\\?\\C:\\a/b.mp4",
                             "\\\\?\\relative.mp4", "\\\\?\\C:\\NUL"})
        EXPECT_FALSE(rvengine::absolutePath(name)) << name;
}
