// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeBackend.h"
#include "RecorderPanel.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QImage>
#include <QLayout>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStyleOptionSlider>
#include <QStyleOptionSpinBox>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <vector>

namespace {

const QString pictures = ":/images/recorder/";

/// The dialog as it is seen, in a host that has the pictures.
class RecorderStyleTest : public testing::Test
{
protected:
    RecorderStyleTest() { panel.show(); }

    QImage seen() { return panel.dialog.grab().toImage().convertToFormat(QImage::Format_ARGB32); }
    /// A widget with what is behind it.
    QImage seen(QWidget& widget)
    {
        return seen().copy(QRect(widget.mapTo(&panel.dialog, QPoint()), widget.size()));
    }

    /// The colours in a part of a picture.
    static std::set<std::string> colours(const QImage& image, const QRect& part)
    {
        std::set<std::string> names;
        for (int y = part.top(); y <= part.bottom(); ++y)
            for (int x = part.left(); x <= part.right(); ++x)
                names.insert(image.pixelColor(x, y).name().toStdString());
        return names;
    }
    static std::string colour(const QImage& image, int x, int y)
    {
        return image.pixelColor(x, y).name().toStdString();
    }

    /// A picture of the host on a ground, stretched to a size.
    static QImage onGround(const QString& name, const QSize& size, const QColor& ground)
    {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(ground);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(image.rect(), QImage(pictures + name));
        return image;
    }

    /// How far the colours of two pictures of a size are apart in the mean, of 255.
    static double difference(const QImage& a, const QImage& b)
    {
        double sum = 0;
        for (int y = 0; y < a.height(); ++y)
            for (int x = 0; x < a.width(); ++x) {
                const QColor first = a.pixelColor(x, y);
                const QColor second = b.pixelColor(x, y);
                sum += std::abs(first.red() - second.red()) +
                       std::abs(first.green() - second.green()) +
                       std::abs(first.blue() - second.blue());
            }
        return a.size() == b.size() ? sum / (3.0 * a.width() * a.height()) : 255.0;
    }

    /// Whether the text of a widget has a colour and a size in px.
    static testing::AssertionResult hasText(const QWidget& widget, const char* colour, int size)
    {
        const QString shown = widget.palette().color(widget.foregroundRole()).name();
        const bool isRight = shown == QColor(colour).name() && widget.font().pixelSize() == size;
        return (isRight ? testing::AssertionSuccess() : testing::AssertionFailure())
               << shown.toStdString() << ", " << widget.font().pixelSize() << " px";
    }

    /// Before the panel, which else had the platform's backend where this is the first test.
    FakeBackend& backend = FakeBackend::instance() = FakeBackend();
    RecorderPanel panel{"/recorded"};
    const QColor ground = QColor("#070709"); ///< of the top block
};

} // namespace

TEST_F(RecorderStyleTest, TextsHaveTheirColoursAndSizes)
{
    EXPECT_TRUE(hasText(panel.label("lblRecorderTips"), "#4C4C4C", 16));
    EXPECT_TRUE(hasText(panel.label("lblDuration"), "white", 20));
    EXPECT_TRUE(hasText(panel.label("lblInputDevice"), "#D4D4D4", 14));
    EXPECT_TRUE(hasText(panel.label("lblIputVolume"), "#D4D4D4", 14));
    for (const char* name : {"lblMicrophoneState", "lblRemoveEchoInfo", "lblDraftMute"})
        EXPECT_TRUE(hasText(panel.label(name), "#6C6C6C", 13)) << name;
    for (const char* name : {"chkRemoveEcho", "chkDraftMute"}) {
        const auto& box = panel.named<QCheckBox>(name);
        EXPECT_TRUE(hasText(box, "white", 14)) << name;
        EXPECT_TRUE(box.font().bold()) << name;
    }
    EXPECT_TRUE(hasText(panel.devices(), "white", panel.dialog.font().pixelSize()))
        << "a size that is not its own";
    EXPECT_TRUE(hasText(panel.spinBox(), "#c8c8c8", 10));
}

TEST_F(RecorderStyleTest, TheTopBlockLiesRoundedOnTheDialog)
{
    const QImage image = seen();
    EXPECT_EQ(colour(image, 2, 2), "#1b1b1c");
    EXPECT_EQ(colour(image, image.width() - 3, image.height() - 3), "#1b1b1c");

    const QRect block = panel.named<QWidget>("wgtPlayRecord").geometry();
    EXPECT_EQ(colour(image, block.left() + 14, block.top() + 1), "#070709");
    EXPECT_EQ(colour(image, block.left() + 1, block.top() + 14), "#070709");
    // A circle of 14 px leaves 4 px of the diagonal free.
    for (const int inset : {0, 1, 2, 3})
        EXPECT_EQ(colour(image, block.left() + inset, block.top() + inset), "#1b1b1c") << inset;
    for (const int inset : {5, 6})
        EXPECT_EQ(colour(image, block.right() - inset, block.bottom() - inset), "#070709") << inset;
}

TEST_F(RecorderStyleTest, ALinePartsTheTopBlock)
{
    auto& frame = panel.named<QFrame>("frmLine");
    frame.setFrameShape(QFrame::NoFrame); // of the style of the platform, over the line's colour
    const QImage line = seen(frame);
    ASSERT_EQ(line.height(), 1);
    EXPECT_EQ(colours(line, line.rect()), std::set<std::string>{"#2d2d2e"});
}

TEST_F(RecorderStyleTest, TheButtonShowsTheHostsPictureOfItsState)
{
    const QSize size(64, 64);
    ASSERT_EQ(panel.button().size(), size);
    const QImage start = onGround("start.png", size, ground);
    const QImage stop = onGround("stop.png", size, ground);
    ASSERT_GT(difference(start, stop), 10.0);
    EXPECT_LT(difference(seen(panel.button()), start), 0.1);
    panel.click();
    EXPECT_LT(difference(seen(panel.button()), stop), 0.1);
    panel.click();
    EXPECT_LT(difference(seen(panel.button()), start), 0.1);
}

TEST_F(RecorderStyleTest, TheDevicesAreAFlatBoxWithAnArrowAndABorderUnderThePointer)
{
    QComboBox& box = panel.devices();
    QImage image = seen(box);
    EXPECT_EQ(colour(image, image.width() / 2, 3), "#29292d");
    EXPECT_EQ(colour(image, image.width() / 2, 0), "#29292d") << "no border";
    EXPECT_NE(colour(image, 0, 0), "#29292d") << "rounded";

    QStyleOptionComboBox option;
    option.initFrom(&box);
    const QRect arrow =
        box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, &box);
    const QPoint middle = arrow.center() - QPoint(10, 0);
    const QImage shown = image.copy(QRect(middle - QPoint(13, 13), QSize(28, 28)));
    const QImage expected = onGround("combox_up.png", {26, 26}, QColor("#29292d"));
    double nearest = 255;
    for (const QPoint& offset : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)})
        nearest = std::min(nearest, difference(shown.copy({offset, QSize(26, 26)}), expected));
    EXPECT_LT(nearest, 0.1) << "26 x 26 px, 10 px from the right";

    box.setAttribute(Qt::WA_UnderMouse);
    image = seen(box);
    EXPECT_EQ(colour(image, image.width() / 2, 0), "#72787e");
    EXPECT_EQ(colour(image, image.width() / 2, 1), "#29292d") << "of 1 px";
    EXPECT_EQ(colour(image, image.width() / 2, image.height() - 1), "#72787e");
}

TEST_F(RecorderStyleTest, TheListOfDevicesIsDarkWithRowsOf25Px)
{
    QAbstractItemView& list = *panel.devices().view();
    list.ensurePolished();
    EXPECT_EQ(list.palette().color(QPalette::Base).name(), "#2e2e33");
    EXPECT_EQ(list.palette().color(QPalette::Text).name(), "#ffffff");
    EXPECT_EQ(list.palette().color(QPalette::Highlight).name(), "#303842");
    EXPECT_EQ(list.visualRect(list.model()->index(0, 0)).height(), 25);
}

TEST_F(RecorderStyleTest, TheSpinBoxIsASmallFrameWithoutArrows)
{
    QSpinBox& box = panel.spinBox();
    const QImage image = seen(box);
    const int middle = image.width() / 2;
    EXPECT_EQ(colour(image, middle, 0), "#404040");
    EXPECT_EQ(colour(image, middle, image.height() - 1), "#404040");
    EXPECT_EQ(colour(image, middle, 1), "#2c2c2c");
    EXPECT_NE(colour(image, 0, 0), "#404040") << "rounded";
    const QLineEdit& edit = *box.findChild<QLineEdit*>();
    EXPECT_EQ(edit.palette().color(QPalette::Highlight).name(), "#5379b4");
    EXPECT_EQ(edit.palette().color(QPalette::HighlightedText).name(), "#ebebeb");

    QStyleOptionSpinBox option;
    option.initFrom(&box);
    option.subControls = QStyle::SC_All;
    const auto rectOf = [&](QStyle::SubControl part) {
        return box.style()->subControlRect(QStyle::CC_SpinBox, &option, part, &box);
    };
    const QRect up = rectOf(QStyle::SC_SpinBoxUp);
    const QRect down = rectOf(QStyle::SC_SpinBoxDown);
    EXPECT_EQ(up.size(), down.size());
    EXPECT_EQ(up.width(), 12 + 1) << "with its margin on the right";
    EXPECT_EQ(up.topRight(), box.rect().topRight());
    EXPECT_EQ(down.bottomRight(), box.rect().bottomRight());
    for (const QRect& button : {up.adjusted(0, 2, -2, 0), down.adjusted(0, 0, -2, -2)})
        EXPECT_EQ(colours(image, button), std::set<std::string>{"#2c2c2c"});

    box.setAttribute(Qt::WA_UnderMouse);
    EXPECT_EQ(colour(seen(box), middle, 1), "#3b3b3b");
}

TEST_F(RecorderStyleTest, TheSliderIsBlueUpToItsHandleAndWhiteBeyond)
{
    QSlider& slider = panel.slider();
    slider.setValue(50);
    QStyleOptionSlider option;
    option.initFrom(&slider);
    option.orientation = Qt::Horizontal;
    option.state |= QStyle::State_Horizontal;
    option.maximum = 100;
    option.sliderPosition = 50;
    const QRect handle = slider.style()->subControlRect(QStyle::CC_Slider, &option,
                                                        QStyle::SC_SliderHandle, &slider);
    EXPECT_EQ(handle.width(), 10);
    EXPECT_EQ(handle.top(), 4);
    EXPECT_EQ(handle.bottom(), slider.height() - 5);

    const QImage image = seen(slider);
    const int middle = image.height() / 2;
    EXPECT_EQ(colour(image, handle.left() - 8, middle), "#017cff");
    EXPECT_EQ(colour(image, handle.right() + 8, middle), "#ffffff");
    EXPECT_EQ(colour(image, handle.left() - 8, 0), "#070709") << "no groove";
    const QImage box(pictures + "box.png");
    EXPECT_EQ(colour(image, handle.center().x(), handle.center().y()), colour(box, 5, 5));
}

TEST_F(RecorderStyleTest, TheBarIsAFrameWithChunksAndNoText)
{
    QProgressBar& bar = panel.bar();
    EXPECT_FALSE(bar.isTextVisible());
    ASSERT_EQ(bar.height(), 30);
    QImage image = seen(bar);
    EXPECT_EQ(colour(image, 100, 0), "#808080");
    EXPECT_EQ(colours(image, image.rect().adjusted(4, 4, -4, -4)), std::set<std::string>{"#070709"})
        << "transparent";

    bar.setValue(50);
    image = seen(bar);
    std::vector<int> starts;
    for (int x = 1; x < image.width(); ++x) {
        if (colour(image, x, 15) == "#004d52" && colour(image, x - 1, 15) != "#004d52")
            starts.push_back(x);
    }
    ASSERT_GT(starts.size(), 10U);
    EXPECT_LT(starts.back(), bar.width() / 2 + 10);
    EXPECT_GT(starts.back(), bar.width() / 2 - 20);
    for (std::size_t i = 1; i < starts.size(); ++i)
        EXPECT_EQ(starts[i] - starts[i - 1], starts[1] - starts[0]);
    EXPECT_NEAR(starts[1] - starts[0], 9, 1) << "8 px and a margin";
}

TEST_F(RecorderStyleTest, TextsAreWholeAndNothingOverlaps)
{
    for (const bool isToggled : {false, true}) {
        if (isToggled) {
            panel.click();
            panel.click();
            ASSERT_TRUE(QTest::qWaitFor([&] { return panel.dialog.height() == 540; }));
            // The height is fixed: where the font for Chinese is so tall that the texts need more,
            // they are drawn closer together.
            if (panel.dialog.layout()->minimumSize().height() > panel.dialog.height())
                break;
        }
        for (const QLabel* label : panel.dialog.findChildren<QLabel*>()) {
            EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
            EXPECT_GE(label->height(), label->sizeHint().height()) << label->text().toStdString();
        }
        for (const QWidget* part : panel.dialog.findChildren<QWidget*>()) {
            const QWidget* const parent = part->parentWidget();
            if (!part->isVisible() || !parent->layout())
                continue;
            const std::string name = part->objectName().toStdString();
            EXPECT_TRUE(parent->rect().contains(part->geometry())) << name;
            for (const QWidget* other :
                 parent->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
                EXPECT_TRUE(other == part || !other->isVisible() ||
                            !part->geometry().intersects(other->geometry()))
                    << name << ", " << other->objectName().toStdString();
        }
    }
}
