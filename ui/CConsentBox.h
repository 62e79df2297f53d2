// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A question to which only OK means yes.
#pragma once

#include <QMessageBox>

// A question with the single button OK. A plain message box takes its only button for the answer when it is
// closed, or when Escape is pressed; here both end it without an answer. Lives for one exec(), which gives
// QMessageBox::Ok or QDialog::Rejected.
class CConsentBox : public QMessageBox {
public:
    CConsentBox(const QString& title, const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
