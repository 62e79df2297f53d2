// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Whole checks, from the command line to the settings, with a user in front of the windows.
#include "app/CApplicationFactory.h"
#include "support/CheckFixture.h"
#include "support/TextPrinting.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <functional>

#include "platform/CVardoDirectoryPath.h"
#include "platform/SettingsStore.h"

namespace {

class WorkFlow : public CheckFixture {
protected:
    // Runs the program with these arguments; the user closes the window when its check has ended, after
    // doing what atEnd does.
    int Run(std::vector<std::string> arguments, const std::function<void(QWidget&)>& atEnd = {}) {
        arguments.insert(arguments.begin(), "/proc/self/exe");
        std::vector<char*> argv;
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        CApplicationFactory factory(environment_, downloader_);
        factory.Parse(static_cast<int>(argv.size()), argv.data());
        gui_ = factory.IsGuiEnabled();
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] {
            if (QWidget* window = QApplication::activeModalWidget())
                UseWindow(*window, atEnd);
        });
        user.start(5);
        const int result = factory.Run();
        // As main does; it also ends what a self-update asked of the event loops.
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        QCoreApplication::exec();
        return result;
    }
    void UseWindow(QWidget& window, const std::function<void(QWidget&)>& atEnd) {
        if (!window.findChild<QPushButton*>("retryButton")->isEnabled())
            return;
        ++windows_;
        if (atEnd)
            atEnd(window);
        window.close();
    }
    void OfferSelfUpdate(const std::string& localExtra = "", bool installerExists = true) {
        tree_.Write("share/VardoProductUpdate.xml",
                    "<U><Product CurrentVersion=\"1.0.0.0\" RemoteVersionFile=\"self.xml\" "
                    "RemoteVersionFileURL=\"http://self\" " +
                        localExtra + "/></U>");
        downloader_->Serve("http://self/self.xml",
                           "<U Location=\"Server\"><Product UpdateVersion=\"2.0.0.0\" "
                           "UpdateInstallFile=\"setup.bin\" UpdateInstallURL=\"http://self/get\\//\" "
                           "UpdateArgument=\"-quiet now\"/></U>");
        if (installerExists)
            downloader_->Serve("http://self/get/setup.bin", "installer");
    }

    bool gui_ = false;
    int windows_ = 0;
};

TEST_F(WorkFlow, InteractiveCheckShowsTheWindowAndSavesWhatTheUserChose) {
    StoreSettings(0, 7, 2451545);
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    Install();
    const std::string before = StoredSettings();
    EXPECT_EQ(Run({},
                  [&](QWidget& window) {
                      window.findChild<QSpinBox*>("spinBox")->setValue(21);
                      window.findChild<QCheckBox*>("checkBox")->setChecked(true);
                      window.findChild<QPushButton*>("rowButton")->click();
                      EXPECT_EQ(StoredSettings(), before) << "nothing is written while the window is open";
                  }),
              0);
    EXPECT_EQ(windows_, 1);
    EXPECT_EQ(StoredSettings(), "CheckUpdates=1 Interval=21 LastChecked=" + std::to_string(Today()) + " ");
    EXPECT_EQ(environment_->openedPages, std::vector<CAtlString>({"http://page/Planner"}));
    EXPECT_EQ(downloader_->addresses,
              std::vector<std::string>({"http://site/products.xml", "http://site/Planner.xml"}));
}

TEST_F(WorkFlow, InteractiveCheckOfNothingKeepsTheDate) {
    StoreSettings(2, 7, 2451545);
    AddProduct("Lost", {"1.0.0.0"}, "");
    Install();
    EXPECT_EQ(Run({"x"}), 0);
    EXPECT_EQ(StoredSettings(), "CheckUpdates=0 Interval=7 LastChecked=2451545 ");
}

struct Due {
    const char* name;
    int checkUpdates;
    int interval;
    int daysAgo;
    bool due;
};

class SilentCheck : public WorkFlow, public testing::WithParamInterface<Due> {};

TEST_P(SilentCheck, RunsOnlyWhenDue) {
    const Due& due = GetParam();
    StoreSettings(due.checkUpdates, due.interval, Today() - due.daysAgo);
    AddProduct("Current", {"1.0.0.0"}, "1.0.0.0");
    Install();
    const std::string before = StoredSettings();
    EXPECT_EQ(Run({"-silent"}), 0);
    EXPECT_TRUE(gui_);
    EXPECT_EQ(windows_, 0) << "nothing new, nothing shown";
    EXPECT_EQ(downloader_->addresses.empty(), !due.due);
    if (due.due)
        EXPECT_TRUE(StoredSettings().ends_with("LastChecked=" + std::to_string(Today()) + " "));
    else
        EXPECT_EQ(StoredSettings(), before);
}

constexpr Due DUES[] = {
    {"SwitchedOff", 0, 1, 100, false},
    {"SwitchedOffByAnotherNumber", 2, 1, 100, false},
    {"NextDay", 1, 1, 1, true},
    {"SameDay", 1, 1, 0, false},
    {"DayBeforeTheInterval", 1, 30, 29, false},
    {"DayOfTheInterval", 1, 30, 30, true},
    {"NoInterval", 1, 0, 0, true},
    {"NegativeInterval", 1, -5, 0, true},
    {"CheckedInTheFuture", 1, 1, -1, false},
};
INSTANTIATE_TEST_SUITE_P(, SilentCheck, testing::ValuesIn(DUES),
                         [](const auto& due) { return std::string(due.param.name); });

TEST_F(WorkFlow, SilentCheckShowsTheWindowWhenSomethingIsNew) {
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    Install();
    Run({"-silent"}, [](QWidget& window) {
        EXPECT_EQ(window.findChild<QTableWidget*>("tableWidget")->item(0, 2)->text(), QString("2.0.0.0"));
        EXPECT_EQ(window.findChild<QPushButton*>("rowButton")->text(), QString("Update"));
    });
    EXPECT_EQ(windows_, 1);
    EXPECT_TRUE(StoredSettings().ends_with("LastChecked=" + std::to_string(Today()) + " "));
}

TEST_F(WorkFlow, SilentCheckWithoutNetworkWritesTheOldDateBack) {
    StoreSettings(1, 9, 2451545);
    AddProduct("Lost", {"1.0.0.0"}, "");
    Install();
    EXPECT_EQ(Run({"-silent"}), 0);
    EXPECT_EQ(windows_, 0);
    EXPECT_EQ(StoredSettings(), "CheckUpdates=1 Interval=9 LastChecked=2451545 ");
}

TEST_F(WorkFlow, RemovesWhatAnEarlierRunLeftBehind) {
    const CAtlString folder = CVardoDirectoryPath::GetTempDirectory().GetDirectoryPathString();
    const std::string left = (folder + L"/NBKTemp.xml").ToQString().toStdString();
    std::ofstream(left) << "left";
    std::filesystem::last_write_time(left,
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(200));
    Run({"-silent"});
    EXPECT_FALSE(std::filesystem::exists(left));
}

TEST_F(WorkFlow, FaultyCommandLineIsReportedWithoutAWindow) {
    Install();
    testing::internal::CaptureStdout();
    EXPECT_EQ(Run({"-silent", "-style", "motif"}), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "error in parameters\n");
    EXPECT_FALSE(gui_);
    EXPECT_EQ(windows_, 0);
    EXPECT_TRUE(downloader_->addresses.empty());
}

TEST_F(WorkFlow, TakesTheProxyFromTheCommandLineOnlyWhenToldTo) {
    struct Spy : FakeDownloader {
        void SetProxyHandler(const boost::shared_ptr<ProxyHandlerBase>& handler) override { proxy = handler; }
        boost::shared_ptr<ProxyHandlerBase> proxy;
    };
    ProxyHandlerBase stored;
    stored.LoadProxySettings();
    stored.SetProxyHost("stored");
    stored.SaveProxySettings();
    const auto proxyOf = [&](CCmdLineContext context) {
        const auto spy = boost::make_shared<Spy>();
        CWorkFlow(environment_, spy).Initialize(context);
        CAtlString host, userName, password;
        int port = -1;
        spy->proxy->GetProxySettings(host, port, userName, password);
        return (host + ":" + std::to_string(port).c_str() + " " + userName + " " + password).ToQString();
    };
    CCmdLineContext context;
    context.proxy = "given";
    context.userName = "anna";
    context.password = "secret";
    EXPECT_EQ(proxyOf(context), QString("stored:8080 anna secret"));
    context.overrideProxy = true;
    EXPECT_EQ(proxyOf(context), QString("given:0 anna secret"));
    context.proxy = "";
    EXPECT_EQ(proxyOf(context), QString(":0 anna secret"));
    stored.SetProxyHost("");
    stored.SaveProxySettings();
}

TEST_F(WorkFlow, SelfUpdateStartsTheInstallerAndEndsWithoutSaving) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{}, {"-silent"}}) {
        StoreSettings(1, 7, 2451545);
        OfferSelfUpdate();
        environment_->selfUpdateConfirmed = true;
        environment_->startedPrograms.clear();
        downloader_->addresses.clear();
        EXPECT_EQ(Run(arguments), 0);
        EXPECT_EQ(downloader_->addresses,
                  std::vector<std::string>({"http://self/self.xml", "http://self/get/setup.bin"}));
        EXPECT_EQ(downloader_->installers.back(), "http://self/get/setup.bin");
        const std::string installer = downloader_->files.back();
        ASSERT_EQ(environment_->startedPrograms.size(), 1U);
        EXPECT_EQ(environment_->startedPrograms[0].first.toStdString(), installer);
        EXPECT_EQ(environment_->startedPrograms[0].second, QStringList("-quiet now"));
        EXPECT_EQ(std::filesystem::status(installer).permissions(), std::filesystem::perms::owner_all);
        EXPECT_EQ(windows_, 0);
        EXPECT_EQ(StoredSettings(), "CheckUpdates=1 Interval=7 LastChecked=2451545 ");
    }
}

TEST_F(WorkFlow, CheckGoesOnWhenTheSelfUpdateIsDeclined) {
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    Install();
    OfferSelfUpdate();
    Run({});
    EXPECT_EQ(environment_->selfUpdateQuestions, 1);
    EXPECT_TRUE(environment_->startedPrograms.empty());
    EXPECT_EQ(downloader_->addresses.back(), "http://site/Planner.xml");
    EXPECT_EQ(windows_, 1);
}

TEST_F(WorkFlow, CheckGoesOnWhenTheInstallerCannotBeFetched) {
    Install();
    OfferSelfUpdate("", false);
    environment_->selfUpdateConfirmed = true;
    Run({});
    EXPECT_EQ(environment_->selfUpdateWarnings, 1);
    EXPECT_TRUE(environment_->startedPrograms.empty());
    EXPECT_EQ(windows_, 1);
}

TEST_F(WorkFlow, NothingIsAskedWhenTheProgramMustNotUpdateItself) {
    Install();
    OfferSelfUpdate("NoUpdates=\"true\"");
    Run({});
    EXPECT_EQ(environment_->selfUpdateQuestions, 0);
    EXPECT_EQ(
        std::count(downloader_->addresses.begin(), downloader_->addresses.end(), "http://self/self.xml"), 0);
    EXPECT_EQ(windows_, 1);
}

}  // namespace
