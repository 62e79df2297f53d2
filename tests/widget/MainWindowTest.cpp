// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The main window with the real controller, on an installation of files.
#include "ui/MainWindow.h"

#include "support/CheckFixture.h"
#include "support/LoopbackServer.h"
#include "support/TextPrinting.h"

#include <gmock/gmock.h>
#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QToolTip>

#include "net/Downloader.h"
#include "net/dialog/ProxyAuth.h"
#include "ui/PlainText.h"

namespace {

class MainWindowTest : public CheckFixture {
protected:
    MainWindowTest()
        : controller_(boost::make_shared<CProductListController>(environment_)),
          proxyHandler_(boost::make_shared<ProxyHandlerBase>()),
          record_(boost::make_shared<CRecordKeeper>()),
          window_(environment_),
          table_(*Find<QTableWidget>("tableWidget")),
          retry_(*Find<QPushButton>("retryButton")) {
        controller_->SetDownloader(downloader_);
        proxyHandler_->SetDialog(boost::make_shared<CProxyDialog>());
        window_.SetProductListController(controller_);
        window_.SetProxyHandler(proxyHandler_);
        window_.SetRecordKeeper(record_);
    }

    template <typename Widget>
    Widget* Find(const char* name) const {
        return window_.findChild<Widget*>(name);
    }
    void CheckAndShow() {
        Install();
        window_.show();
        window_.OnCheckUpdates();
    }
    // The texts of each row's cells; an enabled button in brackets, a disabled one in parentheses.
    std::vector<std::string> Rows() const {
        std::vector<std::string> rows;
        for (int row = 0; row < table_.rowCount(); ++row) {
            QString text = table_.item(row, 0)->text();
            for (const int column : {1, 2})
                text += "|" + table_.item(row, column)->text();
            if (const QPushButton* button = Button(row))
                text += QString(button->isEnabled() ? "[%1]" : "(%1)").arg(button->text());
            rows.push_back(text.toStdString());
        }
        return rows;
    }
    // The accessible description of a cell, or of the button in its place.
    QString Described(int row, int column) const {
        QWidget* button = table_.cellWidget(row, column);
        const auto* table = QAccessible::queryAccessibleInterface(&table_)->tableInterface();
        const auto* object =
            button ? QAccessible::queryAccessibleInterface(button) : table->cellAt(row, column);
        return object->text(QAccessible::Description);
    }
    QString Status() const { return Find<QLabel>("statusLabel")->text(); }
    QPushButton* Button(int row) const { return qobject_cast<QPushButton*>(table_.cellWidget(row, 3)); }

    boost::shared_ptr<CProductListController> controller_;
    boost::shared_ptr<ProxyHandlerBase> proxyHandler_;
    boost::shared_ptr<CRecordKeeper> record_;
    MainWindow window_;
    QTableWidget& table_;
    QPushButton& retry_;
};

using Lines = std::vector<std::string>;

TEST_F(MainWindowTest, TabReachesEverythingAndEnterPressesTheFocusedButtonAlone) {
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    CheckAndShow();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    Find<QPushButton>("cancelButton")->setFocus();
    QStringList visited;
    do {
        visited << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget()->objectName() != "cancelButton" && visited.size() < 20);
    EXPECT_EQ(visited.join(" "),
              QString("cancelButton proxyButton retryButton tableWidget rowButton checkBox spinBox"));

    QTest::keyClick(Find<QSpinBox>("spinBox"), Qt::Key_Return);
    EXPECT_TRUE(environment_->openedPages.empty() && window_.isVisible());
    Button(0)->setFocus();
    QTest::keyClick(Button(0), Qt::Key_Return);
    EXPECT_EQ(environment_->openedPages.size(), 1U);
    EXPECT_FALSE(Button(0)->isEnabled()) << "for a second";
    EXPECT_TRUE(QTest::qWaitFor([this] { return Button(0)->hasFocus(); }));
    retry_.setFocus();
    QTest::keyClick(&retry_, Qt::Key_Space);
    EXPECT_TRUE(retry_.hasFocus());
    downloader_->whileDownloading = [this] { Find<QSpinBox>("spinBox")->setFocus(); };
    QTest::keyClick(&retry_, Qt::Key_Space);
    EXPECT_FALSE(retry_.hasFocus()) << "the user has moved it during the check";
}

TEST_F(MainWindowTest, FocusedButtonOrCellIsScrolledIntoView) {
    for (char key = 'a'; key <= 'z'; ++key)
        AddProduct(std::string(1, key), {"1.0.0.0"}, "2.0.0.0");
    CheckAndShow();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    QWidget& viewport = *table_.viewport();
    for (const int row : {25, 0}) {
        Button(row)->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        EXPECT_TRUE(viewport.rect().contains(Button(row)->geometry())) << row;
    }
    table_.setFocus();
    for (const auto& [key, row] : {std::pair(Qt::Key_End, 25), {Qt::Key_Home, 0}}) {
        QTest::keyClick(&table_, key, Qt::ControlModifier);
        EXPECT_TRUE(viewport.rect().contains(table_.visualItemRect(table_.item(row, 1)))) << row;
    }
    table_.setCurrentItem(nullptr);
    table_.scrollToBottom();
    emit qApp->focusChanged(nullptr, Button(0));
    table_.setCurrentCell(0, 0);
    EXPECT_GT(table_.rowAt(0), 0) << "the window became active, and the user chose nothing";
}

TEST_F(MainWindowTest, ShowsWhatACheckFinds) {
    AddProduct("Notes", {"1.0.0.0", "3.0.0.0", "2.0.0.0"}, "4.0.0.0", "手書きノート");
    AddProduct("Current", {"1.0.0.0"}, "1.0.0.0");
    AddProduct("Lost", {"1.0.0.0"}, "");
    AddProduct("Absent", {}, "1.0.0.0");
    testing::internal::CaptureStdout();
    CheckAndShow();
    EXPECT_TRUE(testing::internal::GetCapturedStdout().ends_with(
        "\n- Checking Lost...\n- Done Lost\n- Checking Absent...\n- Done Absent\n"));
    Lines rows = Rows();
    std::sort(rows.begin(), rows.end());
    EXPECT_EQ(rows, Lines({"Current|1.0.0.0|1.0.0.0(Current)", "Lost|1.0.0.0|N/A(Current)",
                           "手書きノート|1.0.0.0|N/A", "手書きノート|2.0.0.0|N/A",
                           "手書きノート|3.0.0.0|4.0.0.0[Update]"}));
    EXPECT_EQ(table_.horizontalHeaderItem(2)->text(), QString("Latest version"));
    EXPECT_FALSE(table_.isSortingEnabled()) << "the rows are known by their numbers";
}

// Collects the names of the object and of all below it, as a screen reader would; "?" for a missing one.
void CollectNames(const QAccessibleInterface& object, QStringList& names) {
    const auto role = object.role();
    const QString name = object.text(QAccessible::Name);
    const bool needsName = role == QAccessible::Button || role == QAccessible::CheckBox ||
                           role == QAccessible::SpinBox || role == QAccessible::Table ||
                           role == QAccessible::EditableText || role == QAccessible::ProgressBar;
    names << (name.isEmpty() && needsName ? "?" : name);
    for (int i = 0; i < object.childCount(); ++i)
        if (const QAccessibleInterface* child = object.child(i))
            CollectNames(*child, names);
}

TEST_F(MainWindowTest, EveryControlIsNamedAndRowButtonsSayForWhat) {
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    AddProduct("Current", {"1.0.0.0"}, "1.0.0.0");
    CheckAndShow();
    QStringList names;
    CollectNames(*QAccessible::queryAccessibleInterface(&window_), names);
    EXPECT_THAT(names, testing::IsSupersetOf<QString>(
                           {"Products", "Latest version", "Planner", "Update Planner 1.0.0.0",
                            "Current Current 1.0.0.0", "Check for updates automatically every:",
                            "Days between checks", "Connection Options", "Close"}));
    EXPECT_FALSE(names.contains("?")) << names.join('\n').toStdString();
}

TEST_F(MainWindowTest, WhatHasNoRoomIsShownInATip) {
    const QString longName = QString("Tools & <b>more</b> ").repeated(20).trimmed();
    AddProduct("Short", {"20000.20000.20000.20000"}, "20000.20000.20000.20000");
    AddProduct("Long", {"1.0.0.0"}, "1.0.0.0", longName.toHtmlEscaped().toStdString());
    // With the scroll bar.
    for (const char more : std::string("abcdefghijkl"))
        AddProduct(std::string(1, more), {"1.0.0.0"}, "1.0.0.0");
    downloader_->Serve("http://site/Long.xml", "no description");
    downloader_->whileDownloading = [] { QApplication::processEvents(); };
    CheckAndShow();
    const auto tipAt = [](QWidget* widget, const QPoint& at) {
        QHelpEvent help(QEvent::ToolTip, at, widget->mapToGlobal(at));
        QApplication::sendEvent(widget, &help);
        QTextDocument tip;
        tip.setHtml(QToolTip::text());
        EXPECT_TRUE(tip.isEmpty() || tip.firstBlock().textDirection() == QApplication::layoutDirection());
        return tip.toPlainText();
    };
    auto* status = Find<QLabel>("statusLabel");
    for (const auto& [row, tip] : {std::pair(0, QString()), {1, Isolated(longName)}})
        EXPECT_EQ(tipAt(table_.viewport(), table_.visualItemRect(table_.item(row, 0)).center()), tip);
    const int half = window_.screen()->availableGeometry().width() / 2;
    EXPECT_TRUE(QTest::qWaitFor([&] { return table_.columnWidth(0) == half; }));
    for (const Qt::LayoutDirection direction : {Qt::RightToLeft, Qt::LeftToRight}) {
        QApplication::setLayoutDirection(direction);
        EXPECT_EQ(tipAt(status, QPoint(1, 1)), longName + ": site: The server's answer cannot be read");
    }
    EXPECT_LT(window_.minimumSizeHint().width(), status->fontMetrics().horizontalAdvance(status->text()));
    const QImage elided = status->grab().toImage();
    status->setText("short");
    EXPECT_NE(status->grab().toImage(), elided);
    tipAt(status, QPoint(1, 1));
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
    window_.move(30, 40);
    window_.close();
    MainWindow next(environment_);
    const QSize size = next.size();
    next.SetRecordKeeper(record_);
    EXPECT_EQ(next.geometry(), QRect(window_.geometry().topLeft(), size)) << "its own names decide";
}

TEST_F(MainWindowTest, StatusSaysWhyAProductCannotBeChecked) {
    LoopbackServer site;
    AddProduct("Planner", {"1.0.0.0"}, "");
    elements_ +=
        "<Notification Name='n' BaseXML='Absent'/><Gallery Name='n' GUID='{A}' DefaultUrl='http://absent'/>";
    Install();
    window_.show();
    const auto downloader = boost::make_shared<Downloader>();
    downloader->SetProxy("127.0.0.1", site.Port());
    controller_->SetDownloader(downloader);
    const auto* status = Find<QLabel>("statusLabel");
    const QString time = QLocale::system().toString(QTime(14, 5), QLocale::ShortFormat) + ". ";
    const std::string answer = "<U Location=\"Server\"><Product/></U>";
    const std::vector<std::pair<LoopbackAnswer, QString>> cases{
        {LoopbackAnswer::Status(404), "site: The server does not have the file (404)"},
        {LoopbackAnswer::Status(503), "site or proxy 127.0.0.1: The server cannot answer (503)"},
        {LoopbackAnswer::Body(""), "site: The server's answer is empty"},
        {LoopbackAnswer::Challenge("Basic realm=\"r\""), "site: The proxy wants a user name and password"},
        {{.body = answer, .announcedLength = 999}, "site: The server's answer is incomplete or too large"},
        {LoopbackAnswer::Body("no description"), "site: The server's answer cannot be read"},
        {LoopbackAnswer::Body(answer), ""}};
    for (const auto& [served, words] : cases) {
        site.Serve(LoopbackServer::ANY, served);
        window_.OnCheckUpdates();
        EXPECT_EQ(status->text(), words.isEmpty() ? "Everything is up to date" : "Planner: " + words);
        EXPECT_EQ(table_.item(0, 2)->toolTip(),
                  words.isEmpty() ? "" : "Could not be checked at " + time + words);
    }
}

TEST_F(MainWindowTest, StatusSumsUpWhatCameOfTheCheck) {
    const std::string lost = ": site: The server's answer cannot be read";
    // The versions that the site offers for A, B and C, where 1 is installed; empty without a description.
    const std::vector<std::pair<std::array<std::string, 3>, std::string>> cases{
        {{"2", "3", "1"}, "2 updates"},
        {{"2", "", "1"}, "1 update. B" + lost},
        {{"1", "", ""}, "2 products could not be checked" + lost},
        {{"", "", ""}, "Nothing could be checked" + lost}};
    CheckAndShow();
    EXPECT_EQ(Status(), "No VARDO products were found on this computer");
    for (const auto& [offers, summary] : cases) {
        elements_.clear();
        for (std::size_t i = 0; i < offers.size(); ++i) {
            const std::string key(1, static_cast<char>('A' + i));
            downloader_->Forget("http://site/" + key + ".xml");
            AddProduct(key, {"1.0.0.0"}, offers[i].empty() ? "" : offers[i] + ".0.0.0");
        }
        CheckAndShow();
        EXPECT_EQ(Status().toStdString(), summary);
    }
    downloader_->addresses.clear();
    downloader_->whileDownloading = [] { QTest::qWait(50); };
    controller_->SetTimeLimit(std::chrono::milliseconds(1));
    CheckAndShow();
    EXPECT_EQ(downloader_->addresses, Lines({"http://site/A.xml"})) << "the rest is left out";
    EXPECT_EQ(Status(), "Nothing could be checked: No answer");
    EXPECT_TRUE(Described(0, 2).endsWith("site: No answer") && Described(2, 2).endsWith(". No answer"));
    tree_.Write("share/VardoCatalogue.pub", "no key");
    controller_->UpdateProductList();
    retry_.click();
    EXPECT_TRUE(Status().endsWith(". site: The list is not signed by the maker"));
}

TEST_F(MainWindowTest, RowsSayWhyAndTheirMenuSkipsAVersion) {
    AddProduct("Notes", {"1.0.0.0", "3.0.0.0"}, "4.0.0.0");
    AddProduct("Board", {"1.0.0.0"}, "1.0.0.0", "Board &lt;b&gt;");
    elements_ +=
        "<Product Name='Off' BaseXml='Off'><DisableUpdatesIfInstalled><Disabler uid='Board' "
        "versionFrom='1.0.0.0' versionTo='2.0.0.0'/></DisableUpdatesIfInstalled></Product>";
    tree_.Write("share/Off.xml",
                "<U><Product CurrentVersion='0.9.0.0' RemoteVersionFile='Board.xml' "
                "RemoteVersionFileURL='http://site'/></U>");
    CheckAndShow();
    const int newest = Rows()[0] == "Notes|3.0.0.0|4.0.0.0[Update]" ? 0 : 1;
    for (const int column : {2, 3})
        EXPECT_EQ(Described(1 - newest, column),
                  "Version 3.0.0.0 is installed, too, and only the newest is checked.");
    EXPECT_EQ(Described(2, 3), "") << "plainly current";
    EXPECT_EQ(Described(3, 3), "Its updates are turned off, because Board <b> is installed.");
    EXPECT_EQ(table_.item(3, 3)->toolTip(), Described(3, 3));

    const auto menu = [&](int row) {
        table_.setCurrentCell(row, 0);
        QTest::keyClick(&table_, Qt::Key_F10, Qt::ShiftModifier);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    };
    const auto choose = [&](int row, const QString& text) {
        QStringList all;
        QMenu* opened = menu(row);
        for (QAction* action : opened->actions()) {
            all << (action->isEnabled() ? "" : "!") + action->text();
            if (action->text() == text)
                action->trigger();
        }
        opened->close();
        return all.join('|');
    };
    window_.activateWindow();
    table_.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    EXPECT_EQ(choose(3, "Copy"), "!Open Page|Copy|Why?|Skip This Version") << "it opens a silent window";
    EXPECT_EQ(QApplication::clipboard()->text(), "Off\t0.9.0.0\t0.9.0.0");
    QContextMenuEvent click(QContextMenuEvent::Mouse, {}, Button(2)->mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(Button(2), &click);
    ASSERT_TRUE(QApplication::activePopupWidget()) << "although the button is disabled";
    QApplication::activePopupWidget()->close();
    EXPECT_EQ(Status(), "1 update");
    EXPECT_EQ(choose(newest, "Skip This Version"), "Open Page|Copy|Why?|Skip This Version");
    EXPECT_EQ(Described(newest, 3), "You skip version 4.0.0.0.");
    EXPECT_EQ(Status(), "Everything is up to date");
    choose(3, "Skip This Version");
    EXPECT_FALSE(controller_->IsAnyUpdateAvailable());
    downloader_->Serve("http://site/Notes.xml",
                       "<U Location='Server'><Product UpdateVersion='4.1.0.0'/></U>");
    retry_.click();
    EXPECT_TRUE(controller_->IsAnyUpdateAvailable()) << "a newer one";
    choose(newest, "Skip This Version");
    EXPECT_EQ(choose(newest, "Offer This Version Again"), "Open Page|Copy|Why?|Offer This Version Again");
    EXPECT_EQ(Described(newest, 3), "");
    choose(newest, "Open Page");
    EXPECT_EQ(environment_->openedPages, std::vector<CAtlString>({"http://page/Notes"}));

    choose(3, "Why?");
    auto* why = Find<QPlainTextEdit>("explanation");
    EXPECT_TRUE(why->toPlainText().contains("disabler      Board 1.0.0.0 is installed, which disables"));
    for (QPushButton* button : why->window()->findChildren<QPushButton*>())
        button->click();
    EXPECT_EQ(QApplication::clipboard()->text(), table_.item(3, 3)->toolTip() + '\n' + why->toPlainText())
        << "and it is closed";
    QTest::keyClick(&table_, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QApplication::clipboard()->text().endsWith("\nOff\t0.9.0.0\t0.9.0.0"));
    downloader_->whileDownloading = [&] {
        EXPECT_EQ(Status(), "") << "the rest is not checked yet";
        choose(newest, "Skip This Version");
    };
    retry_.click();
    downloader_->whileDownloading = {};
    for (const char* lost : {"Notes", "Board"})
        downloader_->Forget(std::string("http://site/") + lost + ".xml");
    retry_.click();
    EXPECT_TRUE(Status().startsWith("Nothing could be checked: ")) << "the third one is turned off";
}

TEST_F(MainWindowTest, ShowsBusyBarsWhenAProductTakesLong) {
    AddProduct("Fast", {"1.0.0.0"}, "1.0.0.0");
    AddProduct("Slow", {"1.0.0.0", "2.0.0.0"}, "3.0.0.0");
    downloader_->whileDownloading = [&] {
        if (downloader_->addresses.size() == 1)
            return;
        QTest::qWait(MainWindow::BUSY_AFTER - 300);
        EXPECT_FALSE(table_.findChild<QProgressBar*>("busyBar"));
        QTest::qWait(600);
        const auto bars = table_.findChildren<QProgressBar*>("busyBar");
        ASSERT_EQ(bars.size(), 2);
        EXPECT_EQ(bars[0]->accessibleName(), QString("Checking Slow"));
        EXPECT_FALSE(retry_.isEnabled() || Find<QPushButton>("proxyButton")->isEnabled());
        window_.hide();
        window_.ShowProducts();
        window_.show();
        EXPECT_TRUE(table_.cellWidget(1, 2) && table_.cellWidget(2, 2)) << "shown only now";
    };
    CheckAndShow();
    EXPECT_FALSE(table_.cellWidget(1, 2) || table_.cellWidget(2, 2));
    EXPECT_TRUE(retry_.isEnabled() && Find<QPushButton>("proxyButton")->isEnabled());
}

TEST_F(MainWindowTest, LateNotificationIsAddedAtTheEndAndTinted) {
    const std::string notice(400, 'x');
    elements_ += "<Notification Name='Courses' BaseXML='Note'/>";
    AddProduct("SoftwareUpdateVBS", {"9.5.0.0"}, "9.5.0.0");
    tree_.Write("share/Note.xml", "<Notification URL='http://site' File='note.xml'/>");
    downloader_->Serve("http://site/note.xml",
                       "<Notification WebPage='http://page' StartDate='20260301' StopDate='20260401'>"
                       "<Text><en value='" +
                           notice + "'/></Text></Notification>");
    CheckAndShow();
    const Lines rows({"SoftwareUpdateVBS|9.5.0.0|9.5.0.0(Current)", notice + "| | [More...]"});
    EXPECT_EQ(Rows(), rows);
    EXPECT_LT(table_.columnWidth(0), table_.screen()->availableGeometry().width() / 2) << "as before it";
    window_.hide();
    controller_->LoadProductList();
    controller_->FindInstalled();
    window_.ShowProducts();
    controller_->CheckForUpdates();
    window_.show();
    EXPECT_EQ(Rows(), rows) << "as after a silent check";
    EXPECT_EQ(table_.item(0, 0)->background().style(), Qt::NoBrush);
    EXPECT_EQ(table_.item(1, 0)->background().style(), Qt::LinearGradientPattern);
    EXPECT_EQ(table_.columnSpan(0, 0), 1);
    EXPECT_EQ(table_.columnSpan(1, 0), 3) << "it has no versions";
    table_.setPalette(Qt::black);
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        window_.setLayoutDirection(direction);
        const QRect cell = table_.visualItemRect(table_.item(1, 0)).adjusted(1, 1, -1, -1);
        const QImage drawn = table_.viewport()->grab().toImage();
        const bool isLeftStronger =
            drawn.pixelColor(cell.topLeft()).blue() > drawn.pixelColor(cell.topRight()).blue();
        EXPECT_EQ(isLeftStronger, direction == Qt::LeftToRight);
    }
}

TEST_F(MainWindowTest, LivesWhileAButtonActs) {
    AddProduct("Gone", {"1.0.0.0"}, "2.0.0.0");
    AddProduct("Stays", {"1.0.0.0"}, "2.0.0.0");
    CheckAndShow();
    environment_->whileOpening = [this] {
        EXPECT_TRUE(!Button(0)->isEnabled() && Button(1)->isEnabled());
        std::filesystem::remove(tree_.Path("share/Gone.xml"));
        retry_.click();
        environment_->StopWaiting();
    };
    QTest::mouseClick(Button(0), Qt::LeftButton);
    EXPECT_EQ(environment_->openedPages, std::vector<CAtlString>({"http://page/Gone"}));
    EXPECT_EQ(Rows(), Lines({"Stays|1.0.0.0|2.0.0.0[Update]"})) << "the rows were built anew";
    QTest::qWait(1);
    EXPECT_EQ(window_.findChildren<QPushButton*>("rowButton").size(), 1);
    environment_->whileOpening = [this] { window_.close(); };
    QTest::mouseClick(Button(0), Qt::LeftButton);
    EXPECT_FALSE(window_.isVisible()) << "closing does not wait for the browser";
}

TEST_F(MainWindowTest, CanBeClosedWhileAProductIsChecked) {
    for (const char* product : {"First", "Second", "Third"})
        AddProduct(product, {"1.0.0.0"}, "2.0.0.0");
    Install();
    const std::function<void()> ways[] = {
        [this] { window_.close(); }, [this] { QTest::keyClick(&window_, Qt::Key_Escape); },
        [this] { QTest::mouseClick(Find<QPushButton>("cancelButton"), Qt::LeftButton); }};
    for (const auto& close : ways) {
        downloader_->addresses.clear();
        downloader_->cancels = 0;
        downloader_->whileDownloading = [&] {
            if (downloader_->addresses.size() < 2)
                return;
            QTest::mouseClick(&retry_, Qt::LeftButton);
            close();
            EXPECT_FALSE(window_.isVisible());
            QTest::qWait(10);
        };
        QTimer::singleShot(0, &window_, &MainWindow::OnCheckUpdates);
        EXPECT_EQ(window_.exec(), QDialog::Rejected);
        EXPECT_EQ(downloader_->cancels, 1);
        EXPECT_EQ(downloader_->addresses, Lines({"http://site/First.xml", "http://site/Second.xml"}))
            << "neither a fetch inside another nor the rest";
        EXPECT_EQ(record_->GetNewLastChecked(), 0) << "a check that was broken off is no check";
    }
    downloader_->whileDownloading = {};
    EXPECT_TRUE(controller_->CheckForUpdates()) << "as after Retry in the window of a silent check";
}

}  // namespace
