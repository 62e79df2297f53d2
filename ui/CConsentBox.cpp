// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CConsentBox.h"

#include <QKeyEvent>

CConsentBox::CConsentBox(const QString& title, const QString& text)
    : QMessageBox(QMessageBox::Question, title, text, QMessageBox::Ok) {}

void CConsentBox::closeEvent(QCloseEvent* event) {
    // Past QMessageBox, which would press the only button. NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QDialog::closeEvent(event);
}

void CConsentBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel))
        reject();
    else
        QMessageBox::keyPressEvent(event);
}
