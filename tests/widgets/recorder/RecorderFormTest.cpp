// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FakeBackend.h"
#include "RecorderPanel.h"
#include "widgets/player/ContextTranslator.h"

#include <norvel/widgets/recorder/RecorderWgtForm.h>

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QCoreApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QListView>
#include <QVBoxLayout>

namespace {

constexpr int unlimited = QWIDGETSIZE_MAX;

/// The form on a bare dialog, as it is before the recorder's dialog changes anything.
class RecorderFormTest : public testing::Test
{
protected:
    RecorderFormTest() { form.setupUi(&dialog); }

    /// What stands in a layout, in order: names, "spacer" for a spacer.
    static QStringList itemsOf(const QLayout* layout)
    {
        QStringList names;
        for (int i = 0; i < layout->count(); ++i) {
            QLayoutItem* const item = layout->itemAt(i);
            names.append(item->widget()   ? item->widget()->objectName()
                         : item->layout() ? item->layout()->objectName()
                                          : QString("spacer"));
        }
        return names;
    }

    /// The texts of all labels and boxes, the title first.
    QStringList texts() const
    {
        return {dialog.windowTitle(),           form.btnRecord->text(),
                form.lblDuration->text(),       form.lblRecorderTips->text(),
                form.lblInputDevice->text(),    form.lblMicrophoneState->text(),
                form.lblIputVolume->text(),     form.chkRemoveEcho->text(),
                form.lblRemoveEchoInfo->text(), form.chkDraftMute->text(),
                form.lblDraftMute->text()};
    }

    QDialog dialog;
    RecorderWgtForm form;
};

template <class Layout>
bool isLayout(const QLayout* layout, const char* name)
{
    return dynamic_cast<const Layout*>(layout) && layout->objectName() == name;
}

} // namespace

TEST_F(RecorderFormTest, HasItsSizeAndNameAndIsEnabled)
{
    EXPECT_EQ(dialog.objectName(), "recorderWgt");
    EXPECT_EQ(dialog.size(), QSize(365, 546));
    EXPECT_TRUE(dialog.isEnabled());

    QDialog other;
    other.setObjectName("mine");
    other.setEnabled(false);
    RecorderWgtForm().setupUi(&other);
    EXPECT_EQ(other.objectName(), "mine");
    EXPECT_TRUE(other.isEnabled());
}

TEST_F(RecorderFormTest, HasItsTexts)
{
    EXPECT_EQ(texts(), (QStringList{"recorderWgt", "", "00:00:00", "未开始录制", "输入设备",
                                    "麦克风连接成功", "输入音量", "回声消除",
                                    "开启后将避免扬声器产生的回声问题", "草稿静音",
                                    "开启后会将时间片段所有声音关闭"}));
}

TEST_F(RecorderFormTest, TranslatesItsTextsInItsContext)
{
    QStringList expected;
    for (const QString& text : texts())
        expected.append(text.isEmpty() ? text : "recorderWgt:" + text);
    ContextTranslator translator;
    QCoreApplication::installTranslator(&translator);
    form.retranslateUi(&dialog);
    EXPECT_EQ(texts(), expected);
}

TEST_F(RecorderFormTest, HasTwoBlocksAFillerAndASpacer)
{
    EXPECT_EQ(dialog.layout(), form.verticalLayout);
    EXPECT_TRUE(isLayout<QVBoxLayout>(form.verticalLayout, "verticalLayout"));
    EXPECT_EQ(form.verticalLayout->spacing(), 10);
    EXPECT_EQ(form.verticalLayout->contentsMargins(), QMargins(15, 23, 15, 15));
    EXPECT_EQ(itemsOf(form.verticalLayout),
              (QStringList{"wgtPlayRecord", "widget_4", "widget_3", "spacer"}));

    EXPECT_EQ(form.verticalLayout->itemAt(3), form.verticalSpacer);
    EXPECT_EQ(form.verticalSpacer->sizeHint(), QSize(20, 40));
    EXPECT_EQ(form.verticalSpacer->sizePolicy(),
              QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Expanding));
}

TEST_F(RecorderFormTest, HasButtonBarAndInputInItsTopBlock)
{
    EXPECT_EQ(form.wgtPlayRecord->sizePolicy(),
              QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed));
    EXPECT_EQ(form.wgtPlayRecord->styleSheet(), "");
    EXPECT_EQ(form.wgtPlayRecord->layout(), form.verticalLayout_4);
    EXPECT_TRUE(isLayout<QVBoxLayout>(form.verticalLayout_4, "verticalLayout_4"));
    EXPECT_EQ(form.verticalLayout_4->spacing(), 6);
    QWidget window;
    QWidget plain(&window); // windows have other margins
    const QMargins margins = QVBoxLayout(&plain).contentsMargins();
    EXPECT_EQ(form.verticalLayout_4->contentsMargins(),
              QMargins(margins.left(), 25, margins.right(), 12));
    EXPECT_EQ(itemsOf(form.verticalLayout_4),
              (QStringList{"horizontalLayout", "progressBar", "wgtMiddle"}));

    EXPECT_EQ(form.progressBar->minimumSize(), QSize(0, 30));
    EXPECT_EQ(form.progressBar->maximumSize(), QSize(unlimited, 30));
    EXPECT_EQ(form.progressBar->value(), 0);
    EXPECT_EQ(form.progressBar->minimum(), 0);
    EXPECT_EQ(form.progressBar->maximum(), 100);
}

TEST_F(RecorderFormTest, HasTheTextsBesideTheButton)
{
    EXPECT_TRUE(isLayout<QHBoxLayout>(form.horizontalLayout, "horizontalLayout"));
    EXPECT_EQ(form.horizontalLayout->spacing(), 10);
    EXPECT_EQ(itemsOf(form.horizontalLayout), (QStringList{"btnRecord", "verticalLayout_2"}));
    EXPECT_EQ(form.btnRecord->minimumSize(), QSize(64, 64));
    EXPECT_EQ(form.btnRecord->maximumSize(), QSize(64, 64));
    EXPECT_TRUE(form.btnRecord->isCheckable());
    EXPECT_FALSE(form.btnRecord->isChecked());
    EXPECT_EQ(form.btnRecord->cursor().shape(), Qt::PointingHandCursor);

    EXPECT_TRUE(isLayout<QVBoxLayout>(form.verticalLayout_2, "verticalLayout_2"));
    EXPECT_EQ(form.verticalLayout_2->spacing(), 0);
    EXPECT_EQ(itemsOf(form.verticalLayout_2), (QStringList{"lblDuration", "lblRecorderTips"}));
    EXPECT_EQ(form.lblDuration->alignment(), Qt::AlignLeft | Qt::AlignBottom);
    EXPECT_EQ(form.lblRecorderTips->alignment(), Qt::AlignLeft | Qt::AlignTop);
}

TEST_F(RecorderFormTest, HasDeviceAndVolumeInItsMiddle)
{
    EXPECT_EQ(form.wgtMiddle->minimumSize(), QSize(0, 0));
    EXPECT_EQ(form.wgtMiddle->layout(), form.verticalLayout_7);
    EXPECT_TRUE(isLayout<QVBoxLayout>(form.verticalLayout_7, "verticalLayout_7"));
    EXPECT_EQ(form.verticalLayout_7->spacing(), 0);
    EXPECT_EQ(form.verticalLayout_7->contentsMargins(), QMargins());
    EXPECT_EQ(itemsOf(form.verticalLayout_7),
              (QStringList{"frmLine", "widget_5", "horizontalLayout_2"}));
    EXPECT_EQ(form.frmLine->frameShape(), QFrame::StyledPanel);
    EXPECT_EQ(form.frmLine->minimumHeight(), 1);
    EXPECT_EQ(form.frmLine->maximumHeight(), 1);

    EXPECT_EQ(form.widget_5->layout(), form.verticalLayout_3);
    EXPECT_TRUE(isLayout<QVBoxLayout>(form.verticalLayout_3, "verticalLayout_3"));
    EXPECT_EQ(form.verticalLayout_3->spacing(), 10);
    EXPECT_EQ(form.verticalLayout_3->contentsMargins(), QMargins(0, 15, 0, 35));
    EXPECT_EQ(itemsOf(form.verticalLayout_3),
              (QStringList{"lblInputDevice", "cbDevice", "lblMicrophoneState"}));
    EXPECT_EQ(form.cbDevice->minimumHeight(), 30);
    EXPECT_EQ(form.cbDevice->maximumHeight(), 30);
    EXPECT_EQ(form.lblMicrophoneState->alignment(), Qt::AlignLeft | Qt::AlignTop);

    EXPECT_TRUE(isLayout<QHBoxLayout>(form.horizontalLayout_2, "horizontalLayout_2"));
    EXPECT_EQ(form.horizontalLayout_2->spacing(), 9);
    EXPECT_EQ(itemsOf(form.horizontalLayout_2),
              (QStringList{"lblIputVolume", "horizontalSlider", "spinBox"}));
    EXPECT_EQ(form.horizontalSlider->orientation(), Qt::Horizontal);
    EXPECT_EQ(form.horizontalSlider->minimum(), 0);
    EXPECT_EQ(form.horizontalSlider->maximum(), 100);
    EXPECT_EQ(form.spinBox->minimumWidth(), 50);
    EXPECT_EQ(form.spinBox->minimum(), 0);
    EXPECT_EQ(form.spinBox->maximum(), 100);
}

TEST_F(RecorderFormTest, HasTheOptionsBelow)
{
    EXPECT_EQ(form.widget_4->minimumSize(), QSize(0, 0));
    EXPECT_EQ(form.widget_4->layout(), form.verticalLayout_8);
    EXPECT_TRUE(isLayout<QVBoxLayout>(form.verticalLayout_8, "verticalLayout_8"));
    EXPECT_EQ(form.verticalLayout_8->spacing(), 0);
    EXPECT_EQ(form.verticalLayout_8->contentsMargins(), QMargins());
    EXPECT_EQ(itemsOf(form.verticalLayout_8), QStringList{"wgtBottom"});

    EXPECT_EQ(form.wgtBottom->styleSheet(), "");
    EXPECT_EQ(form.wgtBottom->layout(), form.verticalLayout_5);
    EXPECT_TRUE(isLayout<QVBoxLayout>(form.verticalLayout_5, "verticalLayout_5"));
    EXPECT_EQ(form.verticalLayout_5->spacing(), 9);
    EXPECT_EQ(form.verticalLayout_5->contentsMargins(), QMargins());
    EXPECT_EQ(itemsOf(form.verticalLayout_5),
              (QStringList{"chkRemoveEcho", "lblRemoveEchoInfo", "frame", "chkDraftMute",
                           "lblDraftMute"}));
    EXPECT_EQ(form.frame->frameShape(), QFrame::StyledPanel);
    EXPECT_EQ(form.frame->minimumHeight(), 1);
    EXPECT_EQ(form.frame->maximumHeight(), 1);

    EXPECT_EQ(form.widget_3->styleSheet(), "");
    EXPECT_EQ(form.widget_3->layout(), form.verticalLayout_6);
    EXPECT_TRUE(isLayout<QVBoxLayout>(form.verticalLayout_6, "verticalLayout_6"));
    EXPECT_EQ(form.verticalLayout_6->spacing(), 9);
    EXPECT_EQ(form.verticalLayout_6->contentsMargins(), QMargins());
    EXPECT_EQ(form.verticalLayout_6->count(), 0);
}
