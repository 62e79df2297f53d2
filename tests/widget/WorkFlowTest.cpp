// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Whole checks, from the command line to the settings, with a user in front of the windows.
#include "app/CApplicationFactory.h"
#include "support/CheckFixture.h"
#include "support/TextPrinting.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <csignal>
#include <functional>

namespace {

class WorkFlow : public CheckFixture {
protected:
    // Runs the program with these arguments. When a window's check has ended, calls atEnd and closes the
    // window, as a user would.
    void Run(std::vector<std::string> arguments, const std::function<void(QWidget&)>& atEnd = {}) {
        arguments.insert(arguments.begin(), "/proc/self/exe");
        std::vector<char*> argv;
        argv.reserve(arguments.size());
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        CApplicationFactory factory(environment_, downloader_);
        factory.Parse(static_cast<int>(argv.size()), argv.data());
        // cppcheck-suppress danglingLifetime; what runs in a test asks only while Run is under way.
        running_ = &factory;
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] {
            QWidget* window = QApplication::activeWindow();
            const auto* retry = window ? window->findChild<QPushButton*>("retryButton") : nullptr;
            // Any other dialog asks for credentials.
            if (window && !retry)
                isAsked_ = window->close();
            if (!retry || !retry->isEnabled())
                return;
            latest_ << window->findChild<QTableWidget*>("tableWidget")->item(0, 2)->text();
            if (atEnd)
                atEnd(*window);
            window->close();
        });
        user.start(5);
        EXPECT_EQ(factory.Run(), 0);
        // As main does, runs the event loop once more.
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        QCoreApplication::exec();
    }
    void OfferSelfUpdate(const std::string& attributes = "") {
        tree_.Write("share/VardoProductUpdate.xml",
                    "<U><Product CurrentVersion='1.0.0.0' RemoteVersionFile='self.xml' "
                    "RemoteVersionFileURL='http://self' " +
                        attributes + "/></U>");
        downloader_->Serve("http://self/self.xml",
                           "<U Location='Server'><Product UpdateVersion='2.0.0.0' "
                           "UpdateInstallFile='setup.bin' UpdateInstallURL='http://self/get\\//' "
                           "UpdateArgument='-quiet now'/></U>");
        downloader_->Serve("http://self/get/setup.bin", "installer");
    }

    // The first row's latest version in each window that the program showed.
    QStringList latest_;
    bool isAsked_ = false;
    CApplicationFactory* running_ = nullptr;
};

TEST_F(WorkFlow, EndsWhenASignalComesWhileItServesNoEventsOrTheSessionEnds) {
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    Install();
    QEvent quit(QEvent::Quit);
    const std::function<void()> ends[] = {[] { std::raise(SIGTERM); },
                                          [&] { QCoreApplication::sendEvent(qApp, &quit); }};
    for (const auto& end : ends)
        for (const std::size_t request : {1U, 2U}) {
            StoreSettings(1, 30, 0);
            downloader_->addresses.clear();
            downloader_->whileDownloading = [&] {
                if (downloader_->addresses.size() == request)
                    end();
            };
            Run({"-silent"});
            EXPECT_EQ(downloader_->addresses.size(), request);
            EXPECT_TRUE(latest_.isEmpty());
        }
}

TEST_F(WorkFlow, StartedAgainItShowsItsWindowEvenBeforeASilentCheckHasEnded) {
    AddProduct("Planner", {"1.0.0.0"}, "1.0.0.0");
    Install();
    const auto window = [] { return QApplication::activeModalWidget(); };
    // The user starts it again while it fetches the list, and while it fetches the product.
    for (const std::size_t request : {1U, 2U}) {
        downloader_->addresses.clear();
        isAsked_ = false;
        environment_->progress.clear();
        downloader_->whileDownloading = [&] {
            if (downloader_->addresses.size() == request)
                running_->Activate();
            QTest::qWait(10);
            EXPECT_EQ(window() != nullptr, downloader_->addresses.size() == 2) << "it has its rows";
            CAtlString user, password;
            downloader_->proxy->OnProxyAuthRequired(L"proxy", 8080, user, password);
            EXPECT_EQ(isAsked_, window() != nullptr) << "it asks only where it has a window";
        };
        StoreSettings(1, 30, 0);
        Run({"-silent"}, [&](QWidget& seen) {
            seen.showMinimized();
            running_->Activate();
            EXPECT_FALSE(seen.isMinimized());
        });
        EXPECT_EQ(latest_, QStringList(static_cast<int>(request), "1.0.0.0"));
        EXPECT_EQ(environment_->progress.contains("list"), request == 1) << "the user waits from now on";
    }
}

TEST_F(WorkFlow, InteractiveCheckShowsTheWindowAndSavesWhatTheUserChose) {
    StoreSettings(0, 7, 2451545);
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    Install();
    const std::string before = StoredSettings();
    bool raised = false;
    Run({"-overrideproxy", "-proxy", "given.example"}, [&](QWidget& window) {
        auto* days = window.findChild<QSpinBox*>("spinBox");
        EXPECT_EQ(days->value(), 7);
        days->setValue(61);
        auto* box = window.findChild<QCheckBox*>("checkBox");
        EXPECT_FALSE(box->isChecked() || days->isEnabled());
        box->click();
        EXPECT_TRUE(days->isEnabled());
        EXPECT_EQ(window.findChild<QLabel*>("labelDate")->text(),
                  QLocale::system().toString(QDate(2000, 1, 1), QLocale::ShortFormat));
        EXPECT_EQ(window.findChild<QLabel*>("labelDate")->toolTip(),
                  "The next automatic check is due on " +
                      QLocale::system().toString(environment_->today.addDays(60), QLocale::ShortFormat) +
                      ".");
        window.findChild<QPushButton*>("rowButton")->click();
        EXPECT_EQ(StoredSettings(), before) << "nothing is written while the window is open";
        window.setGeometry(40, 50, 700, 450);
        QObject::connect(qobject_cast<QDialog*>(&window), &QDialog::finished,
                         [&] { environment_->onToday = [&] { raised = std::raise(SIGTERM) == 0; }; });
    });
    environment_->onToday = {};
    EXPECT_TRUE(raised);
    EXPECT_EQ(latest_, QStringList("2.0.0.0"));
    EXPECT_EQ(StoredSettings(), "CheckUpdates=1 Interval=60 LastChecked=" + std::to_string(Today()));
    EXPECT_EQ(QSettings(QSettings::SystemScope, "VARDO Technologies")
                  .value("Software/VARDO Technologies/VARDO Board Software/ProxyInformation/HttpProxyHost"),
              "given.example");
    EXPECT_EQ(environment_->openedPages, std::vector<CAtlString>({"http://page/Planner"}));
    EXPECT_EQ(downloader_->addresses,
              std::vector<std::string>({"http://site/products.xml", "http://site/Planner.xml"}));
    StoreSettings(1, 7, 0);
    const int day = Today();
    Run({"-silent"}, [&](QWidget& window) {
        EXPECT_EQ(window.geometry(), QRect(40, 50, 700, 450));
        EXPECT_TRUE(window.findChild<QLabel*>("labelDate")->toolTip().contains(" is due on "));
        EXPECT_TRUE(window.testAttribute(Qt::WA_ShowWithoutActivating) && !QApplication::activeModalWidget())
            << "the user is typing elsewhere";
        environment_->today = environment_->today.addDays(1);
    });
    EXPECT_EQ(StoredSettings(), "CheckUpdates=1 Interval=7 LastChecked=" + std::to_string(day))
        << "left open over midnight, which is no check";
    EXPECT_EQ(latest_.size(), 2);
}

TEST_F(WorkFlow, CheckOfNothingKeepsTheRecordAndIsSeenWhenInteractive) {
    AddProduct("Lost", {"1.0.0.0"}, "");
    Install();
    StoreSettings(2, 90, 2451545);
    Run({"-silent"});
    EXPECT_TRUE(downloader_->addresses.empty()) << "any number but 1 switches the silent check off";
    EXPECT_EQ(StoredSettings(), "CheckUpdates=2 Interval=90 LastChecked=2451545");
    Run({"x"}, [](QWidget& window) { EXPECT_EQ(window.findChild<QSpinBox*>("spinBox")->value(), 90); });
    EXPECT_EQ(StoredSettings(), "CheckUpdates=0 Interval=90 LastChecked=2451545");
    StoreSettings(1, 91, Today() + 1000);
    Run({"-silent"});
    EXPECT_EQ(downloader_->addresses.size(), 2U) << "after the clock was set back, none is due";
    StoreSettings(1, 91, 2451545);
    Run({"-silent"});
    EXPECT_EQ(latest_, QStringList("N/A")) << "the interactive one";
    EXPECT_EQ(StoredSettings(), "CheckUpdates=1 Interval=91 LastChecked=2451545");
    EXPECT_EQ(downloader_->addresses.size(), 4U) << "the list and the product, twice";
}

TEST_F(WorkFlow, TakesTheProxyFromTheCommandLineOnlyWhenToldTo) {
    ProxyHandlerBase stored;
    stored.LoadProxySettings();
    stored.SetProxyHost("stored");
    stored.SaveProxySettings();
    const auto proxyOf = [&](const char* given, bool overrideProxy) {
        CCmdLineContext context;
        context.proxy = given;
        context.userName = "anna";
        context.overrideProxy = overrideProxy;
        CWorkFlow(environment_, downloader_).Initialize(context);
        CAtlString host, userName, password;
        int port = -1;
        downloader_->proxy->GetProxySettings(host, port, userName, password);
        return (userName + "@" + host + ":" + std::to_string(port).c_str()).ToQString();
    };
    EXPECT_EQ(proxyOf("given", false), QString("anna@stored:8080"));
    EXPECT_EQ(proxyOf("given", true), QString("anna@given:0"));
    EXPECT_EQ(proxyOf("[::1]:3128", true), QString("anna@::1:3128"));
    EXPECT_EQ(proxyOf("", true), QString("anna@:0"));
    stored.SetProxyHost("");
    stored.SaveProxySettings();
}

TEST_F(WorkFlow, CancelEndsOneStepOfTheWaitingForTheWindow) {
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    Install();
    OfferSelfUpdate();
    const std::vector<std::string> all{"http://self/self.xml", "http://site/products.xml",
                                       "http://site/Planner.xml"};
    for (const std::size_t request : {1U, 2U}) {
        downloader_->addresses.clear();
        downloader_->whileDownloading = [&] {
            if (downloader_->addresses.size() == request)
                environment_->cancelWaiting();
        };
        Run({});
        EXPECT_EQ(downloader_->addresses, all);
    }
    EXPECT_EQ(environment_->selfUpdateQuestions, 1) << "none about what was not found";
    EXPECT_EQ(latest_, QStringList({"2.0.0.0", "2.0.0.0"}));
}

TEST_F(WorkFlow, CheckGoesOnWhenTheSelfUpdateIsForbiddenOrDeclinedOrFails) {
    AddProduct("Planner", {"1.0.0.0"}, "2.0.0.0");
    Install();
    OfferSelfUpdate("NoUpdates='true'");
    Run({});
    EXPECT_EQ(downloader_->addresses.front(), "http://site/products.xml") << "nothing else is asked";
    OfferSelfUpdate();
    QSettings machine(QSettings::SystemScope, "VARDO Technologies");
    machine.beginGroup("Software/VARDO Technologies/Product Update/Policy");
    machine.setValue("NoSelfUpdate", 1);
    machine.setValue("Interval", 90);
    Run({}, [](QWidget& window) {
        const auto* days = window.findChild<QSpinBox*>("spinBox");
        auto* box = window.findChild<QCheckBox*>("checkBox");
        for (const bool isOn : {false, true}) {
            box->click();
            EXPECT_TRUE(box->isChecked() == isOn && !days->isEnabled() && days->value() == 90);
        }
    });
    EXPECT_EQ(environment_->selfUpdateQuestions, 0);
    machine.remove("");
    Run({});
    EXPECT_EQ(environment_->selfUpdateQuestions, 1);
    EXPECT_TRUE(environment_->selfUpdateOffer.isAwaited);
    downloader_->Forget("http://self/get/setup.bin");
    environment_->selfUpdateConfirmed = true;
    StoreSettings(1, 30, 0);
    Run({"-silent"});
    EXPECT_FALSE(environment_->selfUpdateOffer.isAwaited);
    EXPECT_EQ(environment_->selfUpdateWarnings, 1);
    OfferSelfUpdate();
    downloader_->whileDownloading = [] { std::raise(SIGTERM); };
    Run({});
    EXPECT_TRUE(environment_->startedPrograms.empty()) << "nor when the session ends meanwhile";
    EXPECT_EQ(latest_, QStringList({"2.0.0.0", "2.0.0.0", "2.0.0.0", "2.0.0.0"}));
}

}  // namespace
