// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/dialog/ProxyAuth.h"

#include <QIntValidator>
#include <QLayout>
#include <QLocale>
#include <QMessageBox>
#include <algorithm>

#include "net/ProxyAddress.h"
#include "ui_ProxyAuth.h"

namespace {

// Also refuses a number above the top that has no more digits, which Qt would let stand while it is typed.
class CPortValidator : public QIntValidator {
public:
    using QIntValidator::QIntValidator;
    State validate(QString& text, int& position) const override {
        return text.toInt() > top() ? Invalid : QIntValidator::validate(text, position);
    }
};

void DrawAsBackground(QLineEdit* edit) {
    edit->setReadOnly(true);
    edit->setCursorPosition(0);
    QPalette palette = edit->palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        palette.setBrush(group, QPalette::Base, QBrush(palette.color(group, QPalette::Window)));
    edit->setPalette(palette);
}

void Fill(ProxyAuth& dialog, const ProxyEntry& entry) {
    dialog.SetHost(entry.host);
    dialog.SetPort(entry.port);
    dialog.SetUserName(entry.userName);
    dialog.SetPassword(entry.password);
    dialog.SetFixed(entry.isHostFixed, entry.isPortFixed);
}

bool Ask(ProxyAuth& dialog) {
    dialog.show();
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace

ProxyAuth::ProxyAuth(QWidget* parent) : QDialog(parent), form_(std::make_unique<Ui::ProxyAuth>()) {
    form_->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose, false);
    setAttribute(Qt::WA_QuitOnClose, false);
    QLineEdit& port = *form_->proxyPortEdit;
    auto* validator = new CPortValidator(MIN_PORT, MAX_PORT, this);
    // GetPort reads no digits but these.
    validator->setLocale(QLocale::c());
    port.setValidator(validator);
    // The form's width is too narrow for five large digits and the frame.
    port.setFixedWidth(std::max(port.maximumWidth(), port.fontMetrics().horizontalAdvance("000000")));
    // Large letters need more than the form's height and least width.
    const QSize least = minimumSize().expandedTo(layout()->minimumSize());
    setMinimumSize(least);
    setMaximumSize(maximumSize().expandedTo(least));
}

ProxyAuth::~ProxyAuth() = default;

CAtlString ProxyAuth::GetHost() const {
    return CAtlString(form_->proxyHostEdit->text());
}

int ProxyAuth::GetPort() const {
    return form_->proxyPortEdit->text().toInt();
}

CAtlString ProxyAuth::GetUserName() const {
    return CAtlString(form_->proxyUserNameEdit->text());
}

CAtlString ProxyAuth::GetPassword() const {
    return CAtlString(form_->proxyPasswordEdit->text());
}

void ProxyAuth::SetHost(const CAtlString& host) {
    form_->proxyHostEdit->setText(host.ToQString());
}

void ProxyAuth::SetPort(int port) {
    form_->proxyPortEdit->setText(QString::number(port));
}

void ProxyAuth::SetUserName(const CAtlString& userName) {
    form_->proxyUserNameEdit->setText(userName.ToQString());
}

void ProxyAuth::SetPassword(const CAtlString& password) {
    form_->proxyPasswordEdit->setText(password.ToQString());
}

void ProxyAuth::SetFixed(bool isHostFixed, bool isPortFixed) {
    const std::pair<QLineEdit*, bool> edits[] = {{form_->proxyHostEdit, isHostFixed},
                                                 {form_->proxyPortEdit, isPortFixed}};
    for (const auto& [edit, isFixed] : edits) {
        edit->setDisabled(isFixed);
        edit->setToolTip(isFixed ? tr("Your administrator has set this") : QString());
    }
}

void ProxyAuth::SetAuthenticationMode() {
    setWindowTitle(tr("Proxy Authentication Required"));
    DrawAsBackground(form_->proxyHostEdit);
    DrawAsBackground(form_->proxyPortEdit);
    form_->proxyUserNameEdit->setFocus(Qt::OtherFocusReason);
}

void ProxyAuth::accept() {
    const bool canTypeHost = form_->proxyHostEdit->isEnabled() && !form_->proxyHostEdit->isReadOnly();
    if (!canTypeHost || TakeAddress())
        QDialog::accept();
}

bool ProxyAuth::TakeAddress() {
    const QString text = form_->proxyHostEdit->text().trimmed();
    const std::optional<ProxyAddress> address = ParseProxyAddress(CAtlString(text));
    if (!address && !text.isEmpty())
        return Refuse(text, *form_->proxyHostEdit);
    SetHost(address ? address->host : CAtlString());
    QLineEdit& port = *form_->proxyPortEdit;
    if (!address || !port.isEnabled())
        return true;
    if (address->port)
        SetPort(*address->port);
    return port.hasAcceptableInput() || Refuse(address->host.ToQString() + ':' + port.text(), port);
}

bool ProxyAuth::Refuse(const QString& address, QLineEdit& edit) {
    QMessageBox::warning(this, tr("VARDO Product Update"),
                         tr("This is neither the name nor the address of a proxy: %1").arg(address));
    edit.setFocus();
    return false;
}

bool CProxyDialog::AskForCredentials(ProxyEntry& entry) {
    ProxyAuth dialog(nullptr);
    Fill(dialog, entry);
    dialog.SetAuthenticationMode();
    if (!Ask(dialog))
        return false;
    entry.userName = dialog.GetUserName();
    entry.password = dialog.GetPassword();
    return true;
}

bool CProxyDialog::EditOptions(ProxyEntry& entry, QWidget* parent) {
    ProxyAuth dialog(parent);
    Fill(dialog, entry);
    const bool isAccepted = Ask(dialog);
    // This function owns the dialog, not its parent.
    dialog.setParent(nullptr);
    if (isAccepted)
        entry = {dialog.GetHost(), dialog.GetPort(), dialog.GetUserName(), dialog.GetPassword()};
    return isAccepted;
}
