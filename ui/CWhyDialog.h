// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Why a product's rows are as they are.
#pragma once

#include <QDialog>

// Shows texts and a button that copies them. It is modal to its parent's window, and deletes itself when it
// is closed. GUI thread only.
class CWhyDialog : public QDialog {
    Q_OBJECT

public:
    // reason is in the user's language and may be empty; explanation is for support staff.
    CWhyDialog(const QString& product, const QString& reason, const QString& explanation, QWidget* parent);
};
