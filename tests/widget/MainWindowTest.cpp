// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The main window with the real controller, on an installation of files.
#include "ui/MainWindow.h"

#include "support/CheckFixture.h"
#include "support/LoopbackServer.h"
#include "support/TextPrinting.h"

#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QHelpEvent>
#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

#include "net/Downloader.h"
#include "platform/CSettingsIdentity.h"
#include "platform/SettingsStore.h"

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
        window_.SetProductListController(controller_);
        window_.SetProxyHandler(proxyHandler_);
        window_.SetRecordKeeper(record_);
    }

    template <typename Widget>
    Widget* Find(const char* name) const {
        return window_.findChild<Widget*>(name);
    }
    // The texts of a row's cells, and its button in brackets when there is one, in parentheses when it cannot
    // be pressed.
    std::string Row(int row) const {
        std::string text;
        for (int column = 0; column < 3; ++column)
            text += (column > 0 ? "|" : "") + table_.item(row, column)->text().toStdString();
        const QPushButton* button = Button(row);
        if (!button)
            return text;
        const std::string caption = button->text().toStdString();
        return text + (button->isEnabled() ? "[" + caption + "]" : "(" + caption + ")");
    }
    std::vector<std::string> Rows() const {
        std::vector<std::string> rows;
        for (int row = 0; row < table_.rowCount(); ++row)
            rows.push_back(Row(row));
        return rows;
    }
    QPushButton* Button(int row) const { return qobject_cast<QPushButton*>(table_.cellWidget(row, 3)); }
    int BusyBars() const {
        int bars = 0;
        for (int row = 0; row < table_.rowCount(); ++row)
            if (const QWidget* cell = table_.cellWidget(row, 2))
                bars += static_cast<int>(cell->findChildren<QProgressBar*>("busyBar").size());
        return bars;
    }

    boost::shared_ptr<CProductListController> controller_;
    boost::shared_ptr<ProxyHandlerBase> proxyHandler_;
    boost::shared_ptr<CRecordKeeper> record_;
    MainWindow window_;
    QTableWidget& table_;
    QPushButton& retry_;
};

using Lines = std::vector<std::string>;

TEST_F(MainWindowTest, StartsWithAnEmptyTableThatOnlyShows) {
    EXPECT_EQ(table_.rowCount(), 0);
    QStringList headers;
    for (int column = 0; column < table_.columnCount(); ++column)
        headers << table_.horizontalHeaderItem(column)->text();
    EXPECT_EQ(headers, QStringList({"Product", "Installed version", "Latest version", QString(29, ' ')}));
    EXPECT_FALSE(table_.isSortingEnabled() || table_.horizontalHeader()->sectionsClickable() ||
                 table_.horizontalHeader()->sectionsMovable());
    EXPECT_EQ(table_.selectionMode(), QAbstractItemView::NoSelection);
    EXPECT_TRUE(Find<QLabel>("labelDate")->text().isEmpty() && Find<QLabel>("statusLabel")->text().isEmpty());
    EXPECT_EQ(Find<QSpinBox>("spinBox")->minimum(), 0);
    EXPECT_EQ(Find<QSpinBox>("spinBox")->maximum(), 60);
}

TEST_F(MainWindowTest, TabReachesEverything) {
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    Install();
    window_.show();
    window_.OnCheckUpdates();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    Find<QPushButton>("cancelButton")->setFocus();
    QStringList visited;
    do {
        visited << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget()->objectName() != "cancelButton" && visited.size() < 20);
    EXPECT_EQ(visited, QStringList({"cancelButton", "proxyButton", "retryButton", "tableWidget", "rowButton",
                                    "checkBox", "spinBox"}));
}

TEST_F(MainWindowTest, EnterPressesNoButtonButTheFocusedOne) {
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    Install();
    window_.show();
    window_.OnCheckUpdates();
    const QSignalSpy ended(&window_, &QDialog::finished);
    QTest::keyClick(Find<QSpinBox>("spinBox"), Qt::Key_Return);
    EXPECT_TRUE(environment_->openedPages.empty() && ended.isEmpty());
    Button(0)->setFocus();
    QTest::keyClick(Button(0), Qt::Key_Return);
    EXPECT_EQ(environment_->openedPages.size(), 1U);
}

TEST_F(MainWindowTest, ShowsWhatACheckFinds) {
    AddProduct("Notes", {"1.0.0.0", "3.0.0.0", "2.0.0.0"}, "4.0.0.0", "手書きノート");
    AddProduct("Current", {"1.0.0.0"}, "1.0.0.0");
    AddProduct("Lost", {"1.0.0.0"}, "");
    AddProduct("Absent", {}, "1.0.0.0");
    Install();
    testing::internal::CaptureStdout();
    window_.OnCheckUpdates();
    const std::string printed = testing::internal::GetCapturedStdout();
    Lines rows = Rows();
    std::sort(rows.begin(), rows.end());
    EXPECT_EQ(rows, Lines({"Current|1.0.0.0|1.0.0.0(Current)", "Lost|1.0.0.0|N/A(Current)",
                           "手書きノート|1.0.0.0|N/A", "手書きノート|2.0.0.0|N/A",
                           "手書きノート|3.0.0.0|4.0.0.0[Update]"}));
    EXPECT_TRUE(printed.starts_with("\n- Checking ")) << printed;
    EXPECT_NE(printed.find("\n- Checking Lost...\n- Done Lost\n- Checking Absent...\n- Done Absent\n"),
              std::string::npos)
        << printed;
}

TEST_F(MainWindowTest, NameWithoutRoomIsShownInATip) {
    const QString longName = QString("Tools & <b>more</b> ").repeated(20).trimmed();
    AddProduct("Short", {"1.0.0.0"}, "1.0.0.0");
    AddProduct("Long", {"1.0.0.0"}, "1.0.0.0", longName.toHtmlEscaped().toStdString());
    Install();
    window_.show();
    window_.OnCheckUpdates();
    const auto tipOf = [&](int row) {
        const QPoint at = table_.visualItemRect(table_.item(row, 0)).center();
        QHelpEvent help(QEvent::ToolTip, at, table_.viewport()->mapToGlobal(at));
        QApplication::sendEvent(table_.viewport(), &help);
        QTextDocument tip;
        tip.setHtml(QToolTip::text());
        return tip.toPlainText();
    };
    EXPECT_EQ(tipOf(0), QString());
    EXPECT_EQ(tipOf(1), longName);
    QToolTip::hideText();
}

TEST_F(MainWindowTest, RecordsADateOnlyWhenSomethingCouldBeChecked) {
    AddProduct("Lost", {"1.0.0.0"}, "");
    Install();
    window_.OnCheckUpdates();
    EXPECT_EQ(record_->GetNewLastChecked(), 0);
    AddProduct("Found", {"1.0.0.0"}, "1.0.0.0");
    Install();
    window_.OnCheckUpdates();
    EXPECT_EQ(record_->GetNewLastChecked(), Today());
    EXPECT_TRUE(retry_.isEnabled() && proxyHandler_->IsInteractive());
}

TEST_F(MainWindowTest, ControlsChangeTheRecordAndNothingElse) {
    StoreSettings(0, 7, 2451545);
    const std::string stored = StoredSettings();
    record_->Load();
    Install();
    window_.OnCheckUpdates();
    auto* box = Find<QCheckBox>("checkBox");
    auto* days = Find<QSpinBox>("spinBox");
    EXPECT_FALSE(box->isChecked());
    EXPECT_EQ(days->value(), 7);
    EXPECT_EQ(Find<QLabel>("labelDate")->text(),
              QLocale::system().toString(QDate(2000, 1, 1), QLocale::ShortFormat));
    box->click();
    days->setValue(14);
    EXPECT_TRUE(record_->GetCheckUpdates());
    EXPECT_EQ(record_->GetInterval(), 14);
    EXPECT_EQ(StoredSettings(), stored);
}

TEST_F(MainWindowTest, ShowsBusyBarsWhenAProductTakesLong) {
    AddProduct("Fast", {"1.0.0.0"}, "1.0.0.0");
    AddProduct("Slow", {"1.0.0.0", "2.0.0.0"}, "3.0.0.0");
    Install();
    int early = -1;
    int late = -1;
    downloader_->whileDownloading = [&] {
        if (!downloader_->addresses.back().ends_with("Slow.xml"))
            return;
        QTest::qWait(MainWindow::BUSY_AFTER - 300);
        early = BusyBars();
        QTest::qWait(600);
        late = BusyBars();
        EXPECT_FALSE(retry_.isEnabled() || Find<QPushButton>("proxyButton")->isEnabled());
    };
    window_.show();
    window_.OnCheckUpdates();
    EXPECT_EQ(early, 0);
    EXPECT_EQ(late, 2);
    EXPECT_EQ(BusyBars(), 0);
}

TEST_F(MainWindowTest, LateNotificationIsAddedTintedAndScrolledTo) {
    AddProduct("SoftwareUpdateVBS", {"9.5.0.0"}, "9.5.0.0");
    elements_ += "<Notification Name='Courses' BaseXML='Note'/>";
    for (int i = 0; i < 30; ++i)
        AddProduct("Product" + std::to_string(i), {"1.0.0.0"}, "1.0.0.0");
    tree_.Write("share/Note.xml", "<Notification URL='http://site' File='note.xml'/>");
    downloader_->Serve("http://site/note.xml",
                       "<Notification WebPage='http://page' StartDate='20260301' StopDate='20260401'>"
                       "<Text><en value='Summer courses'/></Text></Notification>");
    Install();
    window_.show();
    window_.OnCheckUpdates();
    ASSERT_EQ(table_.rowCount(), 32);
    EXPECT_EQ(Row(31), "Summer courses| | [More...]");
    EXPECT_EQ(table_.item(31, 0)->background().style(), Qt::LinearGradientPattern);
    EXPECT_EQ(table_.item(30, 0)->background().style(), Qt::NoBrush);
    EXPECT_TRUE(table_.viewport()->rect().contains(table_.visualItemRect(table_.item(31, 0))));
    Button(31)->click();
    EXPECT_EQ(environment_->openedPages, std::vector<CAtlString>({"http://page"}));
}

TEST_F(MainWindowTest, ItemThatCanActOnlyAfterItsCheckGetsItsButtonThen) {
    const auto record = [](const char* name, const std::string& value) {
        const CSettingsIdentity notebook("VARDO Technologies", "", "VARDO Notebook");
        WriteRegistryString(HKEY_LOCAL_MACHINE, "Software/VARDO Technologies/Gallery/TeamContent/{G}", name,
                            value.c_str());
    };
    record("ImsManifestXml", tree_.Path("ims/manifest.xml"));
    record("AppPath", tree_.Write("tool", ""));
    tree_.Write("ims/Uninstall/updateinfo.xml", "<i><category id='a' version='1.0'/></i>");
    downloader_->Serve("http://site/gallery_categories.xml",
                       "<g><categories><category id='a' version='2.0'/></categories></g>");
    elements_ += "<Gallery Name='Pictures' GUID='{G}' DefaultUrl='http://site'/>";
    Install();
    window_.OnCheckUpdates();
    EXPECT_EQ(Rows(), Lines({"Pictures|1.0|2.0[Update]"}));
    Button(0)->click();
    ASSERT_EQ(environment_->startedPrograms.size(), 1U);
    EXPECT_EQ(environment_->startedPrograms[0].first.toStdString(), tree_.Path("tool"));
}

TEST_F(MainWindowTest, RetryBuildsTheRowsAgain) {
    AddProduct("Gone", {"1.0.0.0"}, "2.0.0.0");
    AddProduct("Stays", {"1.0.0.0"}, "2.0.0.0");
    Install();
    window_.show();
    window_.OnCheckUpdates();
    std::filesystem::remove(tree_.Path("share/Gone.xml"));
    QTest::mouseClick(&retry_, Qt::LeftButton);
    EXPECT_EQ(Rows(), Lines({"Stays|1.0.0.0|2.0.0.0[Update]"}));
    QTest::qWait(1);
    EXPECT_EQ(window_.findChildren<QPushButton*>("rowButton").size(), 1);
}

TEST_F(MainWindowTest, RowsMayBeRebuiltWhileTheirButtonActs) {
    struct Reentrant : FakeEnvironment {
        bool OpenWebPage(const CAtlString& address) override {
            if (openedPages.empty()) {
                FakeEnvironment::OpenWebPage(address);
                window->OnCheckUpdates();
                QCoreApplication::processEvents();
            }
            return true;
        }
        MainWindow* window = nullptr;
    };
    const auto environment = boost::make_shared<Reentrant>();
    environment->window = &window_;
    environment->sharedDataFolder = environment_->sharedDataFolder;
    controller_ = boost::make_shared<CProductListController>(environment);
    controller_->SetDownloader(downloader_);
    window_.SetProductListController(controller_);
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    Install();
    window_.show();
    window_.OnCheckUpdates();
    QTest::mouseClick(Button(0), Qt::LeftButton);
    EXPECT_EQ(environment->openedPages, std::vector<CAtlString>({"http://page/Planner"}));
    EXPECT_EQ(Rows(), Lines({"Planner|1.0.0.0|2.0.0.0[Update]"}));
}

// Ways to close the window while a check runs.
class ClosingWindow : public MainWindowTest, public testing::WithParamInterface<const char*> {};

TEST_P(ClosingWindow, WhileAProductIsCheckedIsSafe) {
    AddProduct("First", {"1.0.0.0"}, "2.0.0.0");
    AddProduct("Second", {"1.0.0.0"}, "2.0.0.0");
    Install();
    int depth = 0;
    int deepest = 0;
    downloader_->whileDownloading = [&] {
        deepest = std::max(deepest, ++depth);
        QTest::mouseClick(&retry_, Qt::LeftButton);
        const std::string way = GetParam();
        if (way == "TitleBar")
            window_.close();
        else if (way == "Escape")
            QTest::keyClick(&window_, Qt::Key_Escape);
        else
            QTest::mouseClick(Find<QPushButton>("cancelButton"), Qt::LeftButton);
        EXPECT_FALSE(window_.isVisible());
        QTest::qWait(10);
        --depth;
    };
    QTimer::singleShot(0, &window_, &MainWindow::OnCheckUpdates);
    EXPECT_EQ(window_.exec(), QDialog::Rejected);
    EXPECT_EQ(deepest, 1) << "a fetch must not start inside another";
    EXPECT_EQ(downloader_->cancels, 1);
    EXPECT_EQ(downloader_->addresses, Lines({"http://site/First.xml"})) << "the rest is left out";
    EXPECT_EQ(record_->GetNewLastChecked(), Today());
}
INSTANTIATE_TEST_SUITE_P(, ClosingWindow, testing::Values("TitleBar", "Escape", "Button"),
                         [](const auto& way) { return std::string(way.param); });

TEST_F(MainWindowTest, ClosingEndsATransferAtOnceAndKeepsWhatWasChecked) {
    for (const char* key : {"First", "Silent", "Third"})
        AddProduct(key, {"1.0.0.0"}, "");
    Install();
    LoopbackServer proxy;
    proxy.Serve(LoopbackServer::ANY, LoopbackAnswer::Silence());
    proxy.Serve("http://site/First.xml", LoopbackAnswer::Body("<U Location=\"Server\"><Product/></U>"));
    const auto downloader = boost::make_shared<Downloader>();
    downloader->SetProxy("127.0.0.1", proxy.Port());
    controller_->SetDownloader(downloader);
    QElapsedTimer closed;
    QTimer::singleShot(0, &window_, &MainWindow::OnCheckUpdates);
    QTimer::singleShot(300, &window_, [&] {
        EXPECT_EQ(proxy.RequestCount(), 3U) << "the others are on their way";
        closed.start();
        window_.close();
    });
    testing::internal::CaptureStdout();
    window_.exec();
    EXPECT_LT(closed.elapsed(), 500);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\n- Checking First...\n- Done First\n- Checking Silent...\n- Done Silent\n");
    EXPECT_EQ(record_->GetNewLastChecked(), Today());
    EXPECT_TRUE(QDir(CVardoDirectoryPath::GetTempDirectory().GetDirectoryPathString().ToQString())
                    .entryList(QDir::Files)
                    .isEmpty());

    proxy.Serve(LoopbackServer::ANY, LoopbackAnswer::Body("<U Location=\"Server\"><Product/></U>"));
    EXPECT_TRUE(controller_->CheckForUpdates()) << "as when a silent check's window was shown after all";
    EXPECT_EQ(proxy.RequestCount(), 6U);
}

TEST_F(MainWindowTest, LeavesTheControllerAloneWhenItIsGone) {
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    Install();
    {
        MainWindow other(environment_);
        other.SetProductListController(controller_);
    }
    controller_->LoadProductList();
    controller_->FindInstalled();
    EXPECT_TRUE(controller_->CheckForUpdates());
}

}  // namespace
