// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The questions and warnings, as the user meets them.
#include "ui/MessageBoxes.h"

#include <gtest/gtest.h>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "support/ModalDialogDriver.h"
#include "support/TextPrinting.h"

namespace {

// The box as the user sees it: title, text and buttons.
QString Contents(QDialog& dialog) {
    const auto& box = dynamic_cast<QMessageBox&>(dialog);
    QStringList parts = {box.windowTitle(), box.text()};
    for (const QAbstractButton* button : box.buttons())
        parts << button->text().remove('&');
    return parts.join("|");
}

void PressOk(QDialog& dialog) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(), Qt::LeftButton);
}

TEST(MessageBoxes, SelfUpdateNeedsTheOk) {
    const struct {
        const char* answer;
        std::function<void(QDialog&)> give;
        bool consent;
    } answers[] = {
        {"OK", PressOk, true},
        {"Enter", [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); }, true},
        {"Escape", [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); }, false},
        {"title bar", [](QDialog& box) { box.close(); }, false},
    };
    for (const auto& answer : answers) {
        const ModalDialogDriver user([&](QDialog& box) {
            EXPECT_EQ(Contents(box),
                      QString("VARDO Product Update|A new version of VARDO Product Update must be "
                              "downloaded and installed before you proceed.|OK"));
            answer.give(box);
        });
        EXPECT_EQ(AskForSelfUpdate(), answer.consent) << answer.answer;
        EXPECT_EQ(user.Count(), 1);
    }
}

TEST(MessageBoxes, WarningsSayWhatFailed) {
    QStringList seen;
    const ModalDialogDriver user([&](QDialog& box) {
        seen << Contents(box);
        PressOk(box);
    });
    WarnNoBrowser("http://page/?<b>a</b>&b=2");
    WarnSelfUpdateNotDownloaded();
    EXPECT_EQ(seen,
              QStringList({"VARDO Product Update|Could not open a Web browser. Please open a Web browser "
                           "manually and go to: \nhttp://page/?<b>a</b>&b=2|OK",
                           "VARDO Product Update|Could not download the new version of VARDO Product "
                           "Update.|OK"}));
}

}  // namespace
