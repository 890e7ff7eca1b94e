// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <engine/media/MediaProbe.h>
#include <engine/media/PictureReader.h>
#include <engine/media/SoundReader.h>

#include <gtest/gtest.h>

#include "SharedMedia.h"
#include "WarningCapture.h"
#include "support/TestMedia.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTcpServer>
#include <QTemporaryDir>

#include <random>
#include <string>

using rvengine::MediaKind;
using rvengine::MediaProbe;
using rvengine::PictureReader;
using rvengine::SoundReader;

namespace {

/// Files whose content is not what it seems.
class LyingFileTest : public testing::Test
{
protected:
    QString folder() const { return m_folder.path(); }

    static void expectRefused(const std::string& path)
    {
        MediaProbe probe;
        EXPECT_FALSE(probe.probe(path, MediaKind::Video)) << path;
        EXPECT_FALSE(probe.probe(path, MediaKind::Sound)) << path;
        EXPECT_FALSE(probe.probe(path, MediaKind::Picture)) << path;
        EXPECT_EQ(PictureReader::open(path), nullptr) << path;
        EXPECT_EQ(SoundReader::open(path), nullptr) << path;
    }

    /// A text that names another file, under names that do and do not tell what it is.
    void expectRefused(const QByteArray& text, const QStringList& names)
    {
        for (const QString& name : names)
            expectRefused(TestMedia::file(folder(), name, text));
    }

    QTemporaryDir m_folder;
    WarningCapture m_warnings;
};

QByteArray playlist(const QByteArray& entry)
{
    return "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:4\n#EXTINF:4.0,\n" + entry +
           "\n#EXT-X-ENDLIST\n";
}

QByteArray description(int port)
{
    return "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\n"
           "m=video " +
           QByteArray::number(port) + " RTP/AVP 96\na=rtpmap:96 H264/90000\n";
}

} // namespace

TEST_F(LyingFileTest, PlaylistsAreNotFollowed)
{
    const std::string target = TestMedia::video(folder(), "target.ts", 160, 90, "25", 4);
    const QByteArray path = QByteArray::fromStdString(target);
    expectRefused(playlist("target.ts"), {"relative.m3u8", "relative.mp4", "relative"});
    expectRefused(playlist(path), {"absolute.m3u8", "absolute.mp4"});
    expectRefused(playlist("file://" + path), {"url.m3u8", "url.mp4"});
    expectRefused("ffconcat version 1.0\nfile target.ts\nduration 4\n",
                  {"list.ffconcat", "list.mp4", "list"});
    expectRefused("ffconcat version 1.0\nfile '" + path + "'\n", {"absolute.ffconcat", "path.mp4"});
    expectRefused("<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" "
                  "type=\"static\" mediaPresentationDuration=\"PT4S\"><Period><AdaptationSet "
                  "mimeType=\"video/mp4\"><Representation id=\"1\" bandwidth=\"1\"><BaseURL>" +
                      path + "</BaseURL></Representation></AdaptationSet></Period></MPD>\n",
                  {"manifest.mpd", "manifest.mp4"});
    MediaProbe probe;
    EXPECT_TRUE(probe.probe(target, MediaKind::Video)) << "else nothing would be shown here";
}

TEST_F(LyingFileTest, NoPortIsAsked)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    const QByteArray address = "127.0.0.1:" + QByteArray::number(server.serverPort());
    for (const char* protocol : {"http", "tcp", "rtsp", "rtmp", "ftp"}) {
        expectRefused(playlist(QByteArray(protocol) + "://" + address + "/a.ts"),
                      {"list.m3u8", "list.mp4"});
        expectRefused("ffconcat version 1.0\nfile " + QByteArray(protocol) + "://" + address +
                          "/a.ts\n",
                      {"list.ffconcat"});
    }
    expectRefused(description(server.serverPort()), {"session.sdp", "session.mp4"});
    EXPECT_FALSE(server.waitForNewConnection(100));
}

TEST_F(LyingFileTest, AQuickTimeReferenceIsNotFollowed)
{
    const std::string target = TestMedia::video(folder(), "target.mov", 160, 90, "25", 1, false);
    // A movie whose only content is the way to another one.
    const QByteArray url = "target.mov";
    const auto atom = [](const QByteArray& type, const QByteArray& content) {
        const quint32 size = static_cast<quint32>(content.size() + 8);
        QByteArray head;
        for (int shift = 24; shift >= 0; shift -= 8)
            head.append(static_cast<char>(size >> shift));
        return head + type + content;
    };
    const QByteArray reference =
        atom("rdrf", QByteArray(4, '\0') + "url " + QByteArray(3, '\0') +
                         QByteArray(1, static_cast<char>(url.size())) + url);
    const QByteArray movie = atom("moov", atom("rmra", atom("rmda", reference)));
    expectRefused(TestMedia::file(folder(), "reference.mov", atom("ftyp", "qt  ....") + movie));
    MediaProbe probe;
    EXPECT_TRUE(probe.probe(target, MediaKind::Video));
}

TEST_F(LyingFileTest, TextsAreNoVideos)
{
    expectRefused("Only a text.\nOf two lines.\n", {"a.txt", "a.nfo", "a.ans", "a.mp4", "a.srt"});
    expectRefused("1\n00:00:00,000 --> 00:00:02,000\nHello\n", {"b.srt", "b.mp4"});
}

TEST_F(LyingFileTest, AScalablePictureDoesNotReadOtherFiles)
{
    const std::string other =
        TestMedia::solidPicture(folder(), "other.png", 64, 64, QColor(Qt::red));
    const std::string path = TestMedia::file(
        folder(), "a.svg",
        "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
        "width=\"64\" height=\"64\"><image xlink:href=\"" +
            QByteArray::fromStdString(other) + "\" width=\"64\" height=\"64\"/></svg>\n");
    EXPECT_EQ(PictureReader::open(path), nullptr);
}

TEST_F(LyingFileTest, AFileOfTooManyStreamsIsRefused)
{
    QStringList maps;
    for (int i = 0; i <= rvengine::MostStreams; ++i)
        maps += QStringList{"-map", "0:a"};
    const std::string path = TestMedia::made(folder(), "many.mka",
                                             QStringList{"-f", "lavfi", "-i", "sine=duration=0.2"} +
                                                 maps + QStringList{"-c:a", "flac"});
    MediaProbe probe;
    EXPECT_FALSE(probe.probe(path, MediaKind::Sound));
}

TEST_F(LyingFileTest, AHugePictureIsRefused)
{
    // A PNG header of 2^30 x 2^30 px and no pixels, as a video and as itself.
    const QByteArray png = QByteArray::fromHex("89504e470d0a1a0a0000000d49484452"
                                               "4000000040000000080200000077c3bd05"
                                               "0000000049454e44ae426082");
    expectRefused(TestMedia::file(folder(), "huge.png", png));
    expectRefused(TestMedia::file(folder(), "huge.mov", png));
}

TEST_F(LyingFileTest, ReadingEndsWhenItsOwnerGoes)
{
    rvengine::Interrupt interrupt;
    const auto reader = PictureReader::open(sharedMedia::numbered(), interrupt);
    ASSERT_NE(reader, nullptr);
    const QImage first = reader->picture(0, QSize());
    interrupt.raise();
    const long long before = reader->decodedCount();
    EXPECT_EQ(reader->picture(3900, QSize()), first) << "it gives what it has";
    EXPECT_EQ(reader->decodedCount(), before);
    EXPECT_EQ(PictureReader::open(sharedMedia::numbered(), interrupt), nullptr);
    EXPECT_EQ(SoundReader::open(sharedMedia::tone(), interrupt), nullptr);
}

TEST_F(LyingFileTest, SoundIsNoMoreReadWhenItsOwnerGoes)
{
    rvengine::Interrupt interrupt;
    const auto reader = SoundReader::open(sharedMedia::tone(), interrupt);
    ASSERT_NE(reader, nullptr);
    std::vector<float> samples(9600);
    // Nothing of it was read, some of it, and all.
    interrupt.raise();
    for (const long long start : {0LL, 24000LL, 100000LL, 0LL, 239000LL, 10LL})
        EXPECT_FALSE(reader->read(start, 4800, samples.data())) << start;

    rvengine::Interrupt later;
    const auto begun = SoundReader::open(sharedMedia::tone(), later);
    ASSERT_NE(begun, nullptr);
    EXPECT_TRUE(begun->read(48000, 4800, samples.data()));
    later.raise();
    for (const long long start : {0LL, 200000LL, 0LL, 10LL})
        EXPECT_FALSE(begun->read(start, 4800, samples.data())) << start;
}

/// Damaged copies of files of many formats: whatever comes of them, it comes to an end.
class DamagedFileTest : public testing::TestWithParam<const char*>
{
};

TEST_P(DamagedFileTest, EndsInARefusalOrInPicturesAndSound)
{
    const QTemporaryDir folder;
    const WarningCapture warnings;
    const QString extension = GetParam();
    const std::string whole =
        TestMedia::video(folder.path(), "whole." + extension, 96, 54, "25", 1, extension != "gif");
    const QByteArray bytes = TestMedia::content(whole);
    std::mt19937 generator(1);
    for (int round = 0; round < 12; ++round) {
        QByteArray damaged = bytes;
        for (int i = 0; i < 1 + round * 4; ++i) {
            const int at = static_cast<int>(generator() % static_cast<unsigned>(damaged.size()));
            damaged[at] = static_cast<char>(generator() & 0xFF);
        }
        if (round % 3 == 2)
            damaged.truncate(static_cast<int>(generator() % static_cast<unsigned>(damaged.size())));
        const std::string path = TestMedia::file(folder.path(), "damaged." + extension, damaged);
        MediaProbe().probe(path, MediaKind::Video);
        if (const auto reader = PictureReader::open(path)) {
            for (const double time : {0.0, 500.0, 990.0, 40.0, 1e6})
                reader->picture(time, QSize(48, 27));
        }
        if (const auto reader = SoundReader::open(path)) {
            std::vector<float> samples(9600);
            for (const long long start : {0LL, 24000LL, 47000LL, 100LL, 10000000LL})
                reader->read(start, 4800, samples.data());
        }
    }
    SUCCEED();
}

INSTANTIATE_TEST_SUITE_P(Formats, DamagedFileTest,
                         testing::Values("mp4", "mkv", "webm", "avi", "ts", "mpg", "flv", "wmv",
                                         "mov", "ogv", "gif"),
                         [](const auto& format) { return std::string(format.param); });
