// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "widgets/support/ProgramRun.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cstdlib>
#include <iostream>

namespace {

QString textOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// The names of the pictures that a document shows.
QStringList shownPictures(const QString& markdown)
{
    QStringList names;
    static const QRegularExpression link(R"(!\[[^\]]*\]\(images/([^)]+)\))");
    auto matches = link.globalMatch(markdown);
    while (matches.hasNext())
        names.append(matches.next().captured(1));
    return names;
}

const QString docs = NORVEL_DOCS;

} // namespace

TEST(WidgetHostTest, SizesAreTheSameForEveryNumberOfDevicePixels)
{
    QTemporaryDir folder;
    const QString picture = folder.filePath("picture.png");
    QImage image(4, 2, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    ASSERT_TRUE(image.save(picture));

    const auto places = [](const QStringList& lines) {
        return lines.filter(QRegularExpression("^(?!seen )"));
    };
    const auto seen = [](const QStringList& lines) { return lines.filter("seen "); };
    const Output plain = run(WIDGET_HOST, {picture});
    EXPECT_EQ(plain.exitCode, 0);
    EXPECT_EQ(plain.errors, QStringList());
    // Canvas 1600 x 900 at scale 2 in a view of 800 x 600: map 96 x 54, viewer 48 x 36, which
    // was dragged from (324, 209) by (4, 3) and from (24, 9) by (5, -2).
    const QStringList expected{"item 328 212 48 36",   "map 0 0 96 54",     "viewer 29 7 48 36",
                               "mask 200 200 400 200", "image 400 x 200",   "masked 40 40 120 20",
                               "cursor 20 x 20",       "paint 0 0 400 300", "touch 0 0 400 300"};
    EXPECT_EQ(places(plain.lines).mid(0, expected.size()), expected);
    ASSERT_EQ(places(plain.lines).size(), expected.size() + 1);
    EXPECT_TRUE(places(plain.lines).last().startsWith("soft 300 x 200 "));
    EXPECT_EQ(seen(plain.lines), (QStringList{"seen map 96 x 54", "seen viewer 48 x 36",
                                              "seen mask 400 x 200", "seen paint 400 x 300",
                                              "seen touch 400 x 300", "seen window 800 x 600"}));

    const Output halves = run(WIDGET_HOST, {picture}, "1.5");
    EXPECT_EQ(halves.exitCode, 0);
    EXPECT_EQ(halves.errors, QStringList());
    EXPECT_EQ(places(halves.lines), places(plain.lines));
    EXPECT_EQ(seen(halves.lines), (QStringList{"seen map 144 x 81", "seen viewer 72 x 54",
                                               "seen mask 600 x 300", "seen paint 600 x 450",
                                               "seen touch 600 x 450", "seen window 1200 x 900"}));

    const Output twice = run(WIDGET_HOST, {picture}, "2");
    EXPECT_EQ(twice.exitCode, 0);
    EXPECT_EQ(twice.errors, QStringList());
    EXPECT_EQ(places(twice.lines), places(plain.lines));
    EXPECT_EQ(seen(twice.lines), (QStringList{"seen map 192 x 108", "seen viewer 96 x 72",
                                              "seen mask 800 x 400", "seen paint 800 x 600",
                                              "seen touch 800 x 600", "seen window 1600 x 1200"}));
}

TEST(WidgetHostTest, AMapWithoutAViewDoesNothing)
{
    const Output output = run(VIEWLESS_HOST, {});
    EXPECT_EQ(output.exitCode, 0);
    EXPECT_EQ(output.errors, QStringList());
    EXPECT_EQ(output.lines, QStringList{"no view"});
}

TEST(ScreenshotsTest, AreMadeForAllPicturesOfTheDocuments)
{
    const QStringList shown = shownPictures(textOf(docs + "/widgets.md"));
    ASSERT_EQ(shown.size(), 11);
    QTemporaryDir folder;
    const Output output = run(NORVEL_SCREENSHOTS, {folder.path()});
    EXPECT_EQ(output.exitCode, 0);
    EXPECT_EQ(output.errors, QStringList());
    QStringList made = QDir(folder.path()).entryList(QDir::Files);
    QStringList expected = shown;
    expected.sort();
    EXPECT_EQ(made, expected);
    for (const QString& name : shown) {
        const QImage fresh(folder.filePath(name));
        const QImage kept(docs + "/images/" + name);
        EXPECT_EQ(fresh.size(), QSize(800, 500)) << name.toStdString();
        EXPECT_EQ(kept.size(), QSize(800, 500)) << name.toStdString();
        EXPECT_LT(QFile(docs + "/images/" + name).size(), 400000) << name.toStdString();
    }
    EXPECT_EQ(QDir(docs + "/images").entryList(QDir::Files), expected);
}

#ifdef NORVEL_ENGINE_READS_CONTENT
TEST(ScreenshotsTest, ThePicturesOfTheDocumentsAreThoseOfTheProgram)
{
    QTemporaryDir folder;
    ASSERT_EQ(run(NORVEL_SCREENSHOTS, {folder.path()}).exitCode, 0);
    for (const QString& name : QDir(docs + "/images").entryList(QDir::Files)) {
#ifdef Q_OS_WIN
        if (name == "system-status-details.png") {
            std::cout << "Left out: ScreenshotsTest/" << name.toStdString()
                      << ": it is long lines of text, whose letters have other widths on Windows\n";
            continue;
        }
#endif
        const QImage fresh = QImage(folder.filePath(name)).convertToFormat(QImage::Format_RGB32);
        const QImage kept = QImage(docs + "/images/" + name).convertToFormat(QImage::Format_RGB32);
        ASSERT_EQ(fresh.size(), kept.size());
        int different = 0;
        for (int y = 0; y < kept.height(); ++y) {
            for (int x = 0; x < kept.width(); ++x) {
                const QRgb a = fresh.pixel(x, y);
                const QRgb b = kept.pixel(x, y);
                different += std::abs(qRed(a) - qRed(b)) > 16 ||
                             std::abs(qGreen(a) - qGreen(b)) > 16 ||
                             std::abs(qBlue(a) - qBlue(b)) > 16;
            }
        }
        // Borders may be drawn a bit differently elsewhere; a hundredth of the picture may not.
        EXPECT_LT(different, 800 * 500 / 100) << name.toStdString();
    }
}
#endif

TEST(ScreenshotsTest, TheProgramWantsAFolder)
{
    for (const QStringList& arguments :
         {QStringList(), QStringList{"/no/such/folder"}, QStringList{"a", "b"}}) {
        const Output output = run(NORVEL_SCREENSHOTS, arguments);
        EXPECT_EQ(output.exitCode, 2);
        EXPECT_EQ(output.errors, QStringList{"usage: norvel-screenshots OUTDIR"});
    }
}
