// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/player/QLabComparePlayerForm.h>

#include <QCoreApplication>
#include <QWidget>

void QLabComparePlayerForm::setupUi(QWidget* player)
{
    if (player->objectName().isEmpty())
        player->setObjectName(QStringLiteral("QLabComparePlayer"));
    player->resize(600, 500);
    player->setMinimumSize(QSize(0, 0));
    retranslateUi(player);
    QMetaObject::connectSlotsByName(player);
}

void QLabComparePlayerForm::retranslateUi(QWidget* player)
{
    player->setWindowTitle(QCoreApplication::translate("QLabComparePlayer", "Form"));
}
