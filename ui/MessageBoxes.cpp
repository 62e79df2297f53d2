// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/MessageBoxes.h"

#include "platform/files/Addresses.h"
#include "platform/text/PrintableText.h"
#include "ui/PlainText.h"
#include "ui/UnbiddenDialog.h"

#include <QKeyEvent>
#include <QMessageBox>

namespace {

// In characters. Keeps the box and its button on the screen.
constexpr qsizetype LONGEST_ADDRESS = 300;
constexpr qsizetype LONGEST_NAME = 100;

QString Title() {
    return QObject::tr("VARDO Product Update");
}

// As plain text, since an address from outside could contain markup.
void Warn(const QString& text) {
    QMessageBox box(QMessageBox::Warning, Title(), text, QMessageBox::Ok);
    box.setTextFormat(Qt::PlainText);
    // With the last flag the Tab key reaches the text, from which an address can be copied.
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard |
                                Qt::LinksAccessibleByKeyboard);
    box.exec();
}

// A question with the single button OK. Closing a plain message box, or Escape, counts as pressing its only
// button; here both end it without an answer. Lives for one exec(), which gives QMessageBox::Ok or
// QDialog::Rejected.
class CConsentBox : public QMessageBox {
public:
    CConsentBox(const QString& title, const QString& text)
        : QMessageBox(QMessageBox::Question, title, text, QMessageBox::Ok) {}

protected:
    void closeEvent(QCloseEvent* event) override {
        // Past QMessageBox, which would press the only button. NOLINTNEXTLINE(bugprone-parent-virtual-call)
        QDialog::closeEvent(event);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->matches(QKeySequence::Cancel))
            reject();
        else
            QMessageBox::keyPressEvent(event);
    }
};

}  // namespace

void WarnNoBrowser(const CAtlString& address) {
    const QString text =
        QObject::tr("Could not open a Web browser. Please open a Web browser manually and go to: \n");
    Warn(text + Cut(PercentEncode(address).ToQString(), LONGEST_ADDRESS));
}

QString NoPageText(const QString& product) {
    return QObject::tr("There is no Web page for the update of %1. Please ask its maker for the update.")
        .arg(Cut(product, LONGEST_NAME));
}

void WarnNoPage(const QString& product) {
    Warn(NoPageText(product));
}

bool AskForSelfUpdate(const SelfUpdateOffer& offer) {
    const QString text = QObject::tr(
        "A new version of VARDO Product Update must be downloaded and installed before you proceed.");
    const QString more =
        QObject::tr("Version %1 is installed. Version %2 comes from %3. Press Escape to go on without it.")
            .arg(Cut(offer.installed, LONGEST_NAME), Cut(offer.offered, LONGEST_NAME),
                 Cut(offer.host, LONGEST_NAME));
    CConsentBox box(Title(), text);
    box.setInformativeText(AsHtml(more));
    return (offer.isAwaited ? box.exec() : ExecUnbidden(box)) == QMessageBox::Ok;
}

void WarnSelfUpdateNotDownloaded() {
    Warn(QObject::tr("Could not download the new version of VARDO Product Update."));
}
