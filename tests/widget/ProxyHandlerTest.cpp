// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// When the proxy handler answers by itself, when it asks the user, and what it stores.
#include <gtest/gtest.h>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <boost/make_shared.hpp>

#include "net/ProxyHandlerBase.h"
#include "net/dialog/ProxyAuth.h"
#include "support/ModalDialogDriver.h"
#include "support/TextPrinting.h"
#include "unit/DataTable.h"

namespace {

QLineEdit* Edit(const QDialog& dialog, const char* name) {
    return dialog.findChild<QLineEdit*>(name);
}

void Type(const QDialog& dialog, const char* name, const QString& text) {
    Edit(dialog, name)->selectAll();
    QTest::keyClick(Edit(dialog, name), Qt::Key_Delete);
    QTest::keyClicks(Edit(dialog, name), text);
}

void Press(const QDialog& dialog, const QString& button) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
}

class ProxyHandler : public testing::Test {
protected:
    // Clears the settings of user and machine, so that no test finds what another one stored.
    ProxyHandler() {
        handler_.SetDialog(boost::make_shared<CProxyDialog>());
        QSettings(QSettings::UserScope, "VARDO Technologies").clear();
        stored_.clear();
        stored_.beginGroup("Software/VARDO Technologies/VARDO Board Software/ProxyInformation");
    }

    // The answer to a 407 as "user:password"; "-" for a refusal.
    static QString Answer(ProxyHandlerBase& handler) {
        CAtlString user(L"?");
        CAtlString password(L"?");
        if (!handler.OnProxyAuthRequired(L"asking.example", 3128, user, password))
            return "-";
        return user.ToQString() + ":" + password.ToQString();
    }

    static QString Settings(const ProxyHandlerBase& handler) {
        CAtlString host;
        CAtlString user;
        CAtlString password;
        int port = 0;
        handler.GetProxySettings(host, port, user, password);
        return QStringLiteral("%1:%2 %3:%4")
            .arg(host.ToQString(), QString::number(port), user.ToQString(), password.ToQString());
    }

    QSettings stored_{QSettings::SystemScope, "VARDO Technologies"};
    ProxyHandlerBase handler_;
};

}  // namespace

TEST_F(ProxyHandler, AnswersOncePerRunAndThenAsks) {
    for (const QStringList& row : DataTable("proxy-questions.txt")) {
        SCOPED_TRACE(row.join(" | ").toStdString());
        ProxyHandlerBase handler;
        handler.SetDialog(boost::make_shared<CProxyDialog>());
        handler.SetProxyHost(L"set.example");
        handler.SetCredentials(CAtlString(row[0]), L"word");
        handler.SetInteractive(row[1] == "yes");
        const QStringList userDoes = row[2].split(' ', Qt::SkipEmptyParts);
        QStringList toDo = userDoes;
        const ModalDialogDriver driver([&](QDialog& dialog) {
            const QString action = toDo.isEmpty() ? "unexpected dialog" : toDo.takeFirst();
            EXPECT_EQ(dialog.windowTitle(), "Proxy Authentication Required");
            EXPECT_EQ(dialog.focusWidget(), Edit(dialog, "proxyUserNameEdit"));
            for (const auto& [name, shown] :
                 {std::pair("proxyHostEdit", "asking.example"), {"proxyPortEdit", "3128"}})
                EXPECT_TRUE(Edit(dialog, name)->isReadOnly() && Edit(dialog, name)->text() == shown) << name;
            Type(dialog, "proxyUserNameEdit", "typed");
            Type(dialog, "proxyPasswordEdit", "secret");
            if (action == "Close")
                dialog.close();
            else
                Press(dialog, action == "OK" ? "okButton" : "cancelButton");
        });
        for (const QString& answer : row[3].split(' '))
            EXPECT_EQ(Answer(handler), answer);
        EXPECT_EQ(driver.Count(), userDoes.size());
        EXPECT_TRUE(Settings(handler).startsWith("set.example:0 ")) << "the handler's own proxy stays";
    }
}

TEST_F(ProxyHandler, StoresInTheOrganisationsFileWhateverTheApplicationIsCalled) {
    handler_.LoadProxySettings();
    EXPECT_EQ(Settings(handler_), ":8080 :");
    QCoreApplication::setOrganizationName("Another Organisation");
    QCoreApplication::setApplicationName("Another Application");
    handler_.SetProxyHost(L"saved.example");
    EXPECT_TRUE(handler_.SaveProxySettings());
    EXPECT_EQ(stored_.value("HttpProxyHost"), "saved.example");
    stored_.setValue("HttpProxyHost", "http://other.example:3128/");
    handler_.LoadProxySettings();
    EXPECT_EQ(QCoreApplication::organizationName(), "Another Organisation");
    EXPECT_EQ(QCoreApplication::applicationName(), "Another Application");
    QCoreApplication::setOrganizationName("");
    QCoreApplication::setApplicationName("");
    EXPECT_EQ(Settings(handler_), "other.example:3128 :");
}

TEST_F(ProxyHandler, OptionsChangeWhatTheNextFetchUsesAndAChangedProxyIsStored) {
    handler_.SetProxyHost(L"old.example");
    handler_.SetCredentials(L"user", L"word");
    handler_.SetInteractive(true);
    {
        const ModalDialogDriver user([](QDialog& dialog) { dialog.close(); });
        CAtlString name(L"user"), word(L"word");
        ASSERT_FALSE(handler_.OnProxyAuthRequired(L"p", 1, name, word)) << "refused, so the user is asked";
    }
    QWidget parent;
    for (const QStringList& row : DataTable("proxy-options.txt")) {
        const ModalDialogDriver driver([&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Proxy Authentication");
            EXPECT_EQ(dialog.parentWidget(), &parent);
            QStringList tabs;
            for (const QWidget* each = dialog.nextInFocusChain(); each != &dialog;
                 each = each->nextInFocusChain())
                if ((each->focusPolicy() & Qt::TabFocus) != 0)
                    tabs << each->objectName();
            EXPECT_TRUE(
                tabs.join(' ').startsWith("proxyHostEdit proxyPortEdit proxyUserNameEdit proxyPasswordEdit"))
                << tabs.join(' ').toStdString();
            Type(dialog, row[0].toLatin1(), row[1]);
            Press(dialog, row[2]);
        });
        EXPECT_EQ(handler_.ShowProxyOptionsDialog(&parent), row[2] == "okButton");
        EXPECT_EQ(Settings(handler_), row[3]);
        QStringList stored;
        stored_.sync();
        for (const QString& key : stored_.childKeys())
            stored << stored_.value(key).toString();
        EXPECT_EQ(stored.join(':'), row[4]) << row[3].toStdString();
    }
    EXPECT_EQ(Answer(handler_), "user:new") << "a declined question is forgotten";
}

TEST_F(ProxyHandler, PolicyWinsAndIsNotStored) {
    QSettings policy(QSettings::SystemScope, "VARDO Technologies");
    policy.setValue("Software/VARDO Technologies/Product Update/Policy/HttpProxyHost", "u:p@set.example");
    stored_.setValue("HttpProxyPort", 3128);
    handler_.LoadProxySettings();
    EXPECT_EQ(Settings(handler_), "u:p@set.example:8080 :");
    const ModalDialogDriver driver([](QDialog& dialog) {
        EXPECT_FALSE(Edit(dialog, "proxyHostEdit")->isEnabled() ||
                     Edit(dialog, "proxyPortEdit")->isEnabled());
        Type(dialog, "proxyUserNameEdit", "user");
        Press(dialog, "okButton");
    });
    EXPECT_TRUE(handler_.ShowProxyOptionsDialog(nullptr) && handler_.SaveProxySettings());
    EXPECT_EQ(Settings(handler_), "u:p@set.example:8080 user:");
    stored_.sync();
    EXPECT_EQ(stored_.childKeys().join(' '), "HttpProxyPort");
    policy.setValue("Software/VARDO Technologies/Product Update/Policy/HttpProxyHost",
                    "http://set.example:3129/");
    handler_.LoadProxySettings();
    EXPECT_EQ(Settings(handler_), "set.example:3129 user:");
    policy.clear();
}

TEST(ProxyDialog, TakesAnAddressAsPeopleWriteIt) {
    for (const QStringList& row : DataTable("typed-proxies.txt")) {
        const QString& typed = row[0];
        QString taken = typed + "?";
        const ModalDialogDriver user([&typed](QDialog& message) {
            const auto* box = qobject_cast<QMessageBox*>(&message);
            EXPECT_TRUE(box && box->text().endsWith("address of a proxy: " + typed));
        });
        ProxyAuth dialog(nullptr);
        dialog.SetPort(8080);
        dialog.SetHost(CAtlString(typed));
        dialog.SetFixed(false, typed.startsWith("fixed"));
        dialog.findChild<QPushButton*>("okButton")->click();
        if (dialog.result() == QDialog::Accepted)
            taken = dialog.GetHost().ToQString() + ":" + QString::number(dialog.GetPort());
        EXPECT_EQ(taken, row[1]);
        EXPECT_EQ(user.Count(), taken.endsWith('?') ? 1 : 0);
    }
    QLocale::setDefault(QLocale("ar_EG"));
    const ProxyAuth arabic(nullptr);
    QLocale::setDefault(QLocale::c());
    Edit(arabic, "proxyPortEdit")->setText(QString::fromUtf8("\u0663\u0661\u0662\u0668"));
    EXPECT_FALSE(Edit(arabic, "proxyPortEdit")->hasAcceptableInput()) << arabic.GetPort();
}
