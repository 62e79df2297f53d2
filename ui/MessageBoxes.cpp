// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/MessageBoxes.h"

#include "ui/CConsentBox.h"

namespace {

QString Title() {
    return QObject::tr("VARDO Product Update");
}

// As plain text: an address comes from outside and is no markup.
void Warn(const QString& text) {
    QMessageBox box(QMessageBox::Warning, Title(), text, QMessageBox::Ok);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

}  // namespace

void WarnNoBrowser(const CAtlString& address) {
    const QString text =
        QObject::tr("Could not open a Web browser. Please open a Web browser manually and go to: \n");
    Warn(text + address.ToQString());
}

void WarnNoPage(const QString& product) {
    Warn(QObject::tr("There is no Web page for the update of %1. Please ask its maker for the update.")
             .arg(product));
}

bool AskForSelfUpdate() {
    const QString text = QObject::tr(
        "A new version of VARDO Product Update must be downloaded and installed before you proceed.");
    CConsentBox box(Title(), text);
    return box.exec() == QMessageBox::Ok;
}

void WarnSelfUpdateNotDownloaded() {
    Warn(QObject::tr("Could not download the new version of VARDO Product Update."));
}
