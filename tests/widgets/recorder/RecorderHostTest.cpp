// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/support/ProgramRun.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdlib>

namespace {

const QColor ground("#070709");

/// The dialogs that a host has shown.
class RecorderHostTest : public testing::Test
{
protected:
    /// The button at the place that all hosts tell, in a picture with so many pixels per px.
    QImage button(const QString& name, int scale) const
    {
        const QImage image(m_folder.filePath(name + ".png"));
        return image.copy(24 * scale, 48 * scale, 64 * scale, 64 * scale)
            .convertToFormat(QImage::Format_RGB32);
    }

    static QImage picture(const QString& name)
    {
        QImage picture(RECORDER_PICTURES "/" + name);
        picture.setDevicePixelRatio(1);
        QImage image(picture.size(), QImage::Format_RGB32);
        image.fill(ground);
        QPainter(&image).drawImage(0, 0, picture);
        return image;
    }

    /// The largest difference between the colours of two pictures of a size.
    static int difference(const QImage& a, const QImage& b)
    {
        if (a.size() != b.size() || a.isNull())
            return 256;
        int largest = 0;
        for (int y = 0; y < a.height(); ++y)
            for (int x = 0; x < a.width(); ++x) {
                const QRgb first = a.pixel(x, y);
                const QRgb second = b.pixel(x, y);
                largest = std::max({largest, std::abs(qRed(first) - qRed(second)),
                                    std::abs(qGreen(first) - qGreen(second)),
                                    std::abs(qBlue(first) - qBlue(second))});
            }
        return largest;
    }

    const QTemporaryDir m_folder;
    const QStringList m_toggled{"recording 220, button 24 48 64 64",
                                "stopped 540, button 24 48 64 64"};
};

} // namespace

TEST_F(RecorderHostTest, ShowsThePicturesOfTheHost)
{
    const Output output = run(RECORDER_HOST, {m_folder.path()});
    EXPECT_EQ(output.exitCode, 0);
    EXPECT_EQ(output.errors, QStringList());
    EXPECT_EQ(output.lines.mid(1), m_toggled);
    EXPECT_LE(difference(button("opened", 1), picture("start.png")), 2);
    EXPECT_LE(difference(button("recording", 1), picture("stop.png")), 2);
    EXPECT_LE(difference(button("stopped", 1), picture("start.png")), 2);
}

TEST_F(RecorderHostTest, ShowsTheLargerPicturesOnADenseScreen)
{
    const Output plain = run(RECORDER_HOST, {m_folder.path()});
    const Output dense = run(RECORDER_HOST, {m_folder.path()}, "2");
    EXPECT_EQ(dense.exitCode, 0);
    EXPECT_EQ(dense.errors, QStringList());
    EXPECT_EQ(dense.lines, plain.lines) << "sizes in px are the same";
    EXPECT_EQ(QImage(m_folder.filePath("stopped.png")).size(), QSize(652, 1080));
    EXPECT_LE(difference(button("opened", 2), picture("start@2x.png")), 2);
    EXPECT_LE(difference(button("recording", 2), picture("stop@2x.png")), 2);
}

TEST_F(RecorderHostTest, WorksInAHostWithoutThePictures)
{
    const Output output = run(BARE_HOST, {m_folder.path()});
    EXPECT_EQ(output.exitCode, 0);
    EXPECT_EQ(output.errors, QStringList()) << "and nobody complains";
    EXPECT_EQ(output.lines.mid(1), m_toggled);
    EXPECT_GT(difference(button("opened", 1), picture("start.png")), 100);
    EXPECT_NE(button("opened", 1).pixelColor(32, 32), ground) << "a plain button";
}
