// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The questions and warnings, as the user meets them.
#include "ui/CDesktopEnvironment.h"

#include <gtest/gtest.h>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextDocument>

#include "support/ModalDialogDriver.h"
#include "support/ScopedEnvironment.h"
#include "support/TextPrinting.h"

namespace {

// The box as the user sees it: title, text and buttons.
QString Contents(QDialog& dialog) {
    const auto& box = dynamic_cast<QMessageBox&>(dialog);
    QStringList parts = {box.windowTitle(), box.text()};
    QTextDocument more;
    more.setHtml(box.informativeText());
    if (!more.isEmpty())
        parts << more.toPlainText();
    for (const QAbstractButton* button : box.buttons())
        parts << button->text().remove('&');
    return parts.join("|");
}

TEST(MessageBoxes, SayWhatTheMatterIsAndTakeOnlyOkForConsent) {
    QStringList seen;
    std::function<void(QDialog&)> answer = [](QDialog& box) { box.close(); };
    const ModalDialogDriver user([&](QDialog& box) {
        seen << Contents(box);
        answer(box);
    });
    CDesktopEnvironment world;
    const SelfUpdateOffer offer{.installed = "1.0.0.0", .offered = "<b>2</b>", .host = "site"};
    EXPECT_FALSE(world.ConfirmSelfUpdate(offer));
    answer = [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); };
    EXPECT_FALSE(world.ConfirmSelfUpdate(offer));
    answer = [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); };
    EXPECT_TRUE(world.ConfirmSelfUpdate(offer));
    answer = [](QDialog& box) { QTest::mouseClick(box.findChild<QPushButton*>(), Qt::LeftButton); };
    EXPECT_TRUE(world.ConfirmSelfUpdate(offer));
    const ScopedEnvironment noBrowser("PATH", "/nowhere");
    EXPECT_FALSE(
        world.OpenWebPage(L"http://page/?<b>a</b>\n" + CAtlString(std::wstring(400, L'x').c_str()), "Notes"));
    EXPECT_FALSE(world.OpenWebPage("", "<i>Notes</i> & more"));
    world.WarnSelfUpdateFailed();
    EXPECT_EQ(
        seen.mid(3),
        QStringList({"VARDO Product Update|A new version of VARDO Product Update must be "
                     "downloaded and installed before you proceed.|Version 1.0.0.0 is installed. Version "
                     "<b>2</b> comes from site. Press Escape to go on without it.|OK",
                     "VARDO Product Update|Could not open a Web browser. Please open a Web browser "
                     "manually and go to: \nhttp://page/?%3Cb%3Ea%3C/b%3E%0A" +
                         QString(267, 'x') + "\u2026|OK",
                     "VARDO Product Update|There is no Web page for the update of <i>Notes</i> & more. "
                     "Please ask its maker for the update.|OK",
                     "VARDO Product Update|Could not download the new version of VARDO Product Update.|OK"}));
}

}  // namespace
