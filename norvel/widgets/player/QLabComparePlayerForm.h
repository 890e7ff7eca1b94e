// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

/// The form of a `QLabComparePlayer`, in the manner of a generated form class.
class QLabComparePlayerForm
{
public:
    void setupUi(QWidget* player);
    void retranslateUi(QWidget* player);
};
