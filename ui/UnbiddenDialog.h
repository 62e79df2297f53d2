// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Dialogs that open while the user does something else.
#pragma once

#include <QApplication>
#include <QDialog>

// As exec() of a dialog that was never shown. The keyboard stays with the window that the user works in,
// since keys on their way there could press a button here; the taskbar points to the dialog. GUI thread only.
inline int ExecUnbidden(QDialog& dialog) {
    dialog.setAttribute(Qt::WA_ShowWithoutActivating);
    // Qt asks X for the focus of modal windows; exec() makes the dialog modal later.
    dialog.setModal(false);
    dialog.show();
    QApplication::alert(&dialog);
    return dialog.exec();
}
