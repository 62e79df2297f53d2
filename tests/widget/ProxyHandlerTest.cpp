// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// When the proxy handler answers by itself, when it asks the user, and what it stores.
#include <gtest/gtest.h>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTest>

#include "net/ProxyAuth.h"
#include "net/ProxyHandlerBase.h"
#include "support/ModalDialogDriver.h"
#include "support/TextPrinting.h"

namespace {

const char* const KEY = "Software/VARDO Technologies/VARDO Board Software/ProxyInformation/";

QLineEdit* Edit(const QDialog& dialog, const char* name) {
    return dialog.findChild<QLineEdit*>(name);
}

void Type(const QDialog& dialog, const char* name, const QString& text) {
    QLineEdit* edit = Edit(dialog, name);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
}

void Press(const QDialog& dialog, const char* button) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
}

class ProxyHandler : public testing::Test {
protected:
    ProxyHandler() { Forget(); }
    ~ProxyHandler() override { Forget(); }

    // Both files, so that no test finds what another one stored.
    static void Forget() {
        for (const auto scope : {QSettings::SystemScope, QSettings::UserScope})
            QSettings(QSettings::NativeFormat, scope, "VARDO Technologies").clear();
    }

    static QVariant Stored(const char* name) {
        return QSettings(QSettings::SystemScope, "VARDO Technologies").value(QString(KEY) + name);
    }

    static void Store(const char* name, const QVariant& value) {
        QSettings(QSettings::SystemScope, "VARDO Technologies").setValue(QString(KEY) + name, value);
    }

    // "user:password" of the answer to a 407, "-" for a refusal.
    QString Answer() {
        CAtlString user(L"?");
        CAtlString password(L"?");
        if (!handler_.OnProxyAuthRequired(L"asking.example", 3128, user, password))
            return "-";
        return user.ToQString() + ":" + password.ToQString();
    }

    QString Settings() const {
        CAtlString host;
        CAtlString user;
        CAtlString password;
        int port = 0;
        handler_.GetProxySettings(host, port, user, password);
        return QStringLiteral("%1:%2 %3:%4")
            .arg(host.ToQString())
            .arg(port)
            .arg(user.ToQString(), password.ToQString());
    }

    ProxyHandlerBase handler_;
};

struct Asking {
    const char* situation;
    const char* heldUserName;
    bool interactive;
    // What the user does in each dialog: "OK" gives typed:secret, "Cancel" or "Close" declines.
    QStringList userDoes;
    // One answer for each 407 in a row.
    QStringList answers;
};

class ProxyHandlerAsking : public ProxyHandler, public testing::WithParamInterface<Asking> {};

const Asking ASKING[] = {
    {"SilentWithoutCredentials", "", false, {}, {"-", "-"}},
    {"SilentWithCredentialsHandsThemOutOnce", "held", false, {}, {"held:word", "-"}},
    {"InteractiveWithoutCredentialsAsksAtOnce", "", true, {"OK", "OK"}, {"typed:secret", "typed:secret"}},
    {"InteractiveWithCredentialsAsksSecond", "held", true, {"OK"}, {"held:word", "typed:secret"}},
    {"CancelEndsAllAsking", "", true, {"Cancel"}, {"-", "-", "-"}},
    {"ClosingTheDialogIsCancel", "held", true, {"Close"}, {"held:word", "-", "-"}},
    {"CancelAfterOk", "", true, {"OK", "Cancel"}, {"typed:secret", "-", "-"}},
};

}  // namespace

TEST_P(ProxyHandlerAsking, AnswersOncePerRunAndThenAsks) {
    const Asking& row = GetParam();
    handler_.SetProxyHost(L"set.example");
    handler_.SetCredentials(row.heldUserName, L"word");
    handler_.SetInteractive(row.interactive);
    QStringList toDo = row.userDoes;
    const ModalDialogDriver driver([&](QDialog& dialog) {
        const QString action = toDo.isEmpty() ? "unexpected dialog" : toDo.takeFirst();
        Type(dialog, "proxyUserNameEdit", "typed");
        Type(dialog, "proxyPasswordEdit", "secret");
        if (action == "Close")
            dialog.close();
        else
            Press(dialog, action == "OK" ? "okButton" : "cancelButton");
    });

    QStringList answers;
    for (qsizetype i = 0; i < row.answers.size(); ++i)
        answers << Answer();
    EXPECT_EQ(answers, row.answers);
    EXPECT_EQ(driver.Count(), row.userDoes.size());
    EXPECT_TRUE(Settings().startsWith("set.example:0 "));
}

INSTANTIATE_TEST_SUITE_P(, ProxyHandlerAsking, testing::ValuesIn(ASKING),
                         [](const auto& row) { return row.param.situation; });

TEST_F(ProxyHandler, ShowsWhichProxyAsks) {
    handler_.SetInteractive(true);
    handler_.SetCredentials(CAtlString(), L"word");
    const ModalDialogDriver driver([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Proxy Authentication Required");
        EXPECT_EQ(Edit(dialog, "proxyHostEdit")->text(), "asking.example");
        EXPECT_EQ(Edit(dialog, "proxyPortEdit")->text(), "3128");
        EXPECT_EQ(Edit(dialog, "proxyPasswordEdit")->text(), "word");
        EXPECT_EQ(dialog.focusWidget(), Edit(dialog, "proxyUserNameEdit"));
        Type(dialog, "proxyHostEdit", "other");
        EXPECT_EQ(Edit(dialog, "proxyHostEdit")->text(), "asking.example") << "is read-only";
        Press(dialog, "okButton");
    });
    EXPECT_EQ(Answer(), ":word");
    EXPECT_EQ(driver.Count(), 1);
    EXPECT_TRUE(Settings().startsWith(":0 ")) << "the handler's own proxy stays";
}

TEST_F(ProxyHandler, LoadsWithDefaults) {
    handler_.LoadProxySettings();
    EXPECT_EQ(Settings(), ":8080 :");
    Store("HttpProxyHost", "stored.example");
    handler_.LoadProxySettings();
    EXPECT_EQ(Settings(), "stored.example:8080 :");
    Store("HttpProxyPort", 3128);
    handler_.LoadProxySettings();
    EXPECT_EQ(Settings(), "stored.example:3128 :");
}

TEST_F(ProxyHandler, UsesTheOrganisationsFileWhateverTheApplicationIsCalled) {
    QCoreApplication::setOrganizationName("Another Organisation");
    QCoreApplication::setApplicationName("Another Application");
    handler_.SetProxyHost(L"saved.example");
    EXPECT_TRUE(handler_.SaveProxySettings());
    EXPECT_EQ(QCoreApplication::organizationName(), "Another Organisation");
    EXPECT_EQ(QCoreApplication::applicationName(), "Another Application");
    QCoreApplication::setOrganizationName("");
    QCoreApplication::setApplicationName("");
    EXPECT_EQ(Stored("HttpProxyHost"), "saved.example");
    EXPECT_EQ(Stored("HttpProxyPort"), 0);
}

TEST_F(ProxyHandler, OptionsChangeWhatTheNextFetchUsesAndAChangedHostIsStored) {
    struct Row {
        const char* field;
        const char* typed;
        const char* button;
        bool accepted;
        const char* settings;
        QVariant storedHost;
    };
    const QVariant nothing;
    const Row rows[] = {
        {"proxyPortEdit", "3128", "cancelButton", false, "old.example:0 user:word", nothing},
        {"proxyPortEdit", "3128", "okButton", true, "old.example:3128 user:word", nothing},
        {"proxyPasswordEdit", "new", "okButton", true, "old.example:3128 user:new", nothing},
        {"proxyHostEdit", "OLD.example", "okButton", true, "OLD.example:3128 user:new", "OLD.example"},
        {"proxyHostEdit", "", "okButton", true, ":3128 user:new", ""},
        {"proxyPortEdit", "", "okButton", true, ":0 user:new", ""},
    };
    handler_.SetProxyHost(L"old.example");
    handler_.SetCredentials(L"user", L"word");
    QWidget parent;
    for (const Row& row : rows) {
        const ModalDialogDriver driver([&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Proxy Authentication");
            EXPECT_EQ(dialog.parentWidget(), &parent);
            Type(dialog, row.field, row.typed);
            Press(dialog, row.button);
        });
        EXPECT_EQ(handler_.ShowProxyOptionsDialog(&parent), row.accepted) << row.settings;
        EXPECT_EQ(driver.Count(), 1);
        EXPECT_EQ(Settings(), row.settings);
        EXPECT_EQ(Stored("HttpProxyHost"), row.storedHost) << row.settings;
        EXPECT_EQ(Stored("HttpProxyPort"), row.storedHost.isValid() ? QVariant(3128) : nothing)
            << row.settings;
    }
}

TEST_F(ProxyHandler, AcceptedOptionsLiftARefusal) {
    handler_.SetCredentials(L"held", L"word");
    handler_.OnProxyAuthCanceled();
    EXPECT_EQ(Answer(), "-");
    QString button = "cancelButton";
    const ModalDialogDriver driver([&](QDialog& dialog) { Press(dialog, button.toLatin1()); });
    handler_.ShowProxyOptionsDialog(nullptr);
    EXPECT_EQ(Answer(), "-");
    button = "okButton";
    handler_.ShowProxyOptionsDialog(nullptr);
    EXPECT_EQ(Answer(), "held:word");
}

TEST(ProxyDialog, KeepsToPortsThatExist) {
    ProxyAuth dialog(nullptr);
    const std::pair<const char*, bool> rows[] = {{"1", true},      {"8080", true}, {"65534", true},
                                                 {"65535", false}, {"0", false},   {"12a", false}};
    for (const auto& [typed, acceptable] : rows) {
        Type(dialog, "proxyPortEdit", typed);
        const QLineEdit* edit = Edit(dialog, "proxyPortEdit");
        EXPECT_EQ(edit->hasAcceptableInput() && edit->text() == typed, acceptable) << typed;
    }
    Edit(dialog, "proxyPortEdit")->setText("none");
    EXPECT_EQ(dialog.GetPort(), 0);
}

TEST(ProxyDialog, HidesThePasswordAndLeadsThroughTheFieldsInOrder) {
    ProxyAuth dialog(nullptr);
    EXPECT_EQ(Edit(dialog, "proxyPasswordEdit")->echoMode(), QLineEdit::Password);
    dialog.show();
    dialog.activateWindow();
    Edit(dialog, "proxyHostEdit")->setFocus();
    QStringList visited;
    for (int i = 0; i < 6; ++i) {
        visited << dialog.focusWidget()->objectName();
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(visited, QStringList({"proxyHostEdit", "proxyPortEdit", "proxyUserNameEdit",
                                    "proxyPasswordEdit", "okButton", "cancelButton"}));
}

TEST(ProxyDialog, OnlyItsWidthChanges) {
    ProxyAuth dialog(nullptr);
    EXPECT_EQ(dialog.size(), QSize(340, 175));
    dialog.resize(1000, 1000);
    EXPECT_EQ(dialog.size(), QSize(500, 175));
    dialog.resize(1, 1);
    EXPECT_EQ(dialog.size(), QSize(298, 175));
}

TEST(ProxyDialog, DrawsTheAskingProxyAsBackground) {
    ProxyAuth dialog(nullptr);
    dialog.SetAuthenticationMode();
    for (const char* name : {"proxyHostEdit", "proxyPortEdit"})
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            const QPalette palette = Edit(dialog, name)->palette();
            EXPECT_EQ(palette.color(group, QPalette::Base), palette.color(group, QPalette::Window)) << name;
        }
    EXPECT_FALSE(Edit(dialog, "proxyUserNameEdit")->isReadOnly());
}
