// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/MessageBoxes.h"

#include "ui/CConsentBox.h"

namespace {

QString Title() {
    return QObject::tr("VARDO Product Update");
}

}  // namespace

void WarnNoBrowser(const CAtlString& address) {
    const QString text =
        QObject::tr("Could not open a Web browser. Please open a Web browser manually and go to: \n");
    QMessageBox::warning(nullptr, Title(), text + address.ToQString(), QMessageBox::Ok);
}

bool AskForSelfUpdate() {
    const QString text = QObject::tr(
        "A new version of VARDO Product Update must be downloaded and installed before you proceed.");
    CConsentBox box(Title(), text);
    return box.exec() == QMessageBox::Ok;
}

void WarnSelfUpdateNotDownloaded() {
    const QString text = QObject::tr("Could not download the new version of VARDO Product Update.");
    QMessageBox::warning(nullptr, Title(), text, QMessageBox::Ok);
}
