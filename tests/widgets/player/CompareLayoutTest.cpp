// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayerStage.h"

#include <norvel/widgets/player/LabCompareHintRightWidget.h>
#include <norvel/widgets/player/LabCompareLayout.h>

#include <QMetaMethod>
#include <QSignalSpy>
#include <QWidget>

TEST(CompareLayoutTest, TellsWhenAnItemWasAdded)
{
    QWidget parent;
    auto* const layout = new LabCompareLayout;
    parent.setLayout(layout);
    QSignalSpy changed(layout, &LabCompareLayout::subItemsDidChange);
    int counted = 0;
    QObject::connect(layout, &LabCompareLayout::subItemsDidChange,
                     [&] { counted = layout->count(); });
    layout->addItem(new QSpacerItem(1, 1));
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(counted, 1) << "it is there when it is told";
    layout->addItem(new QSpacerItem(1, 1));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(counted, 2);
}

TEST(CompareLayoutTest, HasNoMargins)
{
    EXPECT_EQ(LabCompareLayout().contentsMargins(), QMargins(0, 0, 0, 0));
}

TEST(CompareLayoutTest, HasOneSignal)
{
    const QMetaObject& metaObject = LabCompareLayout::staticMetaObject;
    EXPECT_EQ(ownMethods(metaObject), std::vector<std::string>{"subItemsDidChange()"});
    EXPECT_EQ(metaObject.method(metaObject.methodOffset()).methodType(), QMetaMethod::Signal);
}

TEST(CompareHintTest, ShowsOnlyWhatIsRightOfTheLine)
{
    QWidget parent;
    LabCompareHintRightWidget hint(&parent);
    EXPECT_EQ(hint.offset(), 0.0F);
    EXPECT_TRUE(hint.mask().isEmpty()) << "at first nothing is cut away";
    EXPECT_EQ(hint.layoutDirection(), Qt::LeftToRight);
    hint.resize(250, 120);
    hint.setOffset(100.75F);
    EXPECT_EQ(hint.offset(), 100.75F);
    EXPECT_EQ(hint.mask(), QRegion(101, 0, 149, 120));
    hint.setOffset(-199.0F);
    EXPECT_EQ(hint.mask(), QRegion(-198, 0, 449, 120));
    EXPECT_TRUE(ownMethods(LabCompareHintRightWidget::staticMetaObject).empty());
}
