// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Which files hold settings, what counts when they are missing, and when they make a check due.
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QFileInfo>
#include <climits>
#include <functional>
#include <tuple>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "DataTable.h"
#include "app/settings/CRecordKeeper.h"
#include "app/settings/DefaultSettings.h"
#include "platform/settings/CSettingsIdentity.h"
#include "platform/settings/SettingsStore.h"
#include "support/ScopedEnvironment.h"
#include "support/TextPrinting.h"

namespace {

const std::string USERS = "/tmp/home/.config/";
const std::string MACHINES = "/tmp/etc/xdg/";
const std::string WHOLE_MAKER = "VARDO Technologies.conf";

class Settings : public testing::Test {
public:
    Settings() { Clear(); }
    ~Settings() override { Clear(); }

protected:
    static void Clear() {
        for (const auto& folder : {USERS, MACHINES}) {
            std::filesystem::remove_all(folder);
            std::filesystem::create_directories(folder);
        }
    }
    // The stored number; -7 when it is missing.
    static int Number(int hive, const CAtlString& key, const CAtlString& name) {
        int error = 99;
        const int value = ReadRegistryDword(hive, key, name, -7, error);
        EXPECT_EQ(error, value == -7 ? REGISTRY_NOT_FOUND : REGISTRY_OK);
        return value;
    }
    static void WriteOwn(int hive, const CAtlString& name, int value) {
        WriteRegistryDword(hive, DefaultSettings::VPU_SETTINGS_KEY, name, value);
    }
};

}  // namespace

TEST_F(Settings, LandInTheFileGroupAndKey) {
    WriteOwn(HKEY_CURRENT_USER, L"Interval", 14);
    WriteRegistryString(HKEY_LOCAL_MACHINE, L"\\Software\\X", L"Path", L"/opt/\u4E2D");
    EXPECT_EQ(ReadWholeFile(MACHINES + WHOLE_MAKER), "[Software]\nX\\Path=/opt/\xE4\xB8\xAD\n");
    const std::string interval = "[Software]\nVARDO%20Technologies\\Product%20Update\\Interval=14\n";
    EXPECT_EQ(ReadWholeFile(USERS + WHOLE_MAKER), interval);
    WriteRegistryString(HKEY_LOCAL_MACHINE, L"X", L"days", L"99999999999");
    EXPECT_EQ(Number(HKEY_LOCAL_MACHINE, L"X", L"days"), 0);
    WriteRegistryDword(5, L"Any", L"hive", 1);
    EXPECT_EQ(ReadWholeFile(USERS + WHOLE_MAKER), interval + "\n[Any]\nhive=1\n");
}

TEST_F(Settings, WritingKeepsWhatOtherSoftwareHasWritten) {
    for (const QStringList& row : DataTable("settings-lines.txt")) {
        const auto bytes = [&row](int cell) {
            return QString(row[cell]).replace(u'\u23CE', '\n').toLatin1().toStdString();
        };
        std::ofstream(USERS + WHOLE_MAKER) << bytes(0);
        WriteRegistryDword(HKEY_CURRENT_USER, L"S\\K", L"n", 14);
        EXPECT_EQ(ReadWholeFile(USERS + WHOLE_MAKER), bytes(1));
        EXPECT_EQ(Number(HKEY_CURRENT_USER, L"S\\K", L"n"), 14);
    }
    if (chown((USERS + WHOLE_MAKER).c_str(), 4711, 4712) == 0) {
        WriteRegistryDword(HKEY_CURRENT_USER, L"S\\K", L"n", 15);
        EXPECT_EQ(QFileInfo((USERS + WHOLE_MAKER).c_str()).groupId(), 4712U) << "the user's, and not root's";
    }
    std::filesystem::remove(USERS + WHOLE_MAKER);
    const std::string damaged = "[Z]\nx=\"never closed\n";
    std::ofstream(USERS + WHOLE_MAKER) << damaged;
    WriteRegistryDword(HKEY_CURRENT_USER, L"S\\K", L"n", 14);
    EXPECT_EQ(ReadWholeFile(USERS + WHOLE_MAKER), damaged) << "the value would be a part of x";
    std::ofstream(USERS + WHOLE_MAKER) << "[S]\n";
    for (int value = 10; value < 60; ++value) {
        WriteRegistryDword(HKEY_CURRENT_USER, L"S\\K", L"n", value);
        EXPECT_EQ(Number(HKEY_CURRENT_USER, L"S\\K", L"n"), value) << "of the same size, and at once";
    }
    const auto written = std::filesystem::last_write_time(USERS + WHOLE_MAKER);
    WriteRegistryDword(HKEY_CURRENT_USER, L"S\\K", L"n", 59);
    EXPECT_EQ(std::filesystem::last_write_time(USERS + WHOLE_MAKER), written) << "it holds the value already";
}

TEST_F(Settings, FileFollowsTheIdentityWhichEndsWithItsScope) {
    const CSettingsIdentity outer("Outer", "outer.example", "App");
    for (const QStringList& row : DataTable("settings-files.txt")) {
        const CSettingsIdentity identity(row[0], "", row[1]);
        WriteRegistryDword(HKEY_CURRENT_USER, L"K", L"user", 1);
        WriteRegistryDword(HKEY_LOCAL_MACHINE, L"K", L"machine", 2);
        EXPECT_EQ(ReadWholeFile(USERS + row[2].toStdString()), "[K]\nuser=1\n");
        EXPECT_EQ(ReadWholeFile(MACHINES + row[2].toStdString()), "[K]\nmachine=2\n");
        Clear();
    }
    EXPECT_EQ(QCoreApplication::organizationName(), "Outer");
    EXPECT_EQ(QCoreApplication::organizationDomain(), "outer.example");
    EXPECT_EQ(CSettingsIdentity::Application(), "App");
}

TEST_F(Settings, ReadsAndDefaults) {
    for (const int value : {0, INT_MAX, INT_MIN}) {
        WriteRegistryDword(HKEY_CURRENT_USER, L"Software\\A\\B", L"n", value);
        EXPECT_EQ(Number(HKEY_CURRENT_USER, L"\\/Software//A\\B/", L"n"), value);
    }
    EXPECT_EQ(Number(HKEY_LOCAL_MACHINE, L"Software\\A\\B", L"n"), -7);
    int error = 99;
    for (const wchar_t* text : {L"", L"a, b; \"c\" = %\\d\r\n", L"\u4E2D\U0001F600", L" @blank "}) {
        WriteRegistryString(HKEY_CURRENT_USER, L"T", L"t", text);
        EXPECT_EQ(ReadRegistryString(HKEY_CURRENT_USER, L"T", L"t", L"default", error), text);
        EXPECT_EQ(Number(HKEY_CURRENT_USER, L"T", L"t"), 0);
    }
    EXPECT_EQ(ReadRegistryString(HKEY_CURRENT_USER, L"T", L"u", L"default", error), L"default");
    EXPECT_EQ(error, REGISTRY_NOT_FOUND);
    std::ofstream(USERS + WHOLE_MAKER) << "[T]\nquoted=\"12345\"\nseveral=1, 2\nhigh=4294967295\n";
    EXPECT_EQ(Number(HKEY_CURRENT_USER, L"T", L"high"), -1);
    EXPECT_EQ(Number(HKEY_CURRENT_USER, L"T", L"quoted"), 12345);
    EXPECT_EQ(Number(HKEY_CURRENT_USER, L"T", L"several"), 0);
    for (const wchar_t* name : {L"X/deep", L"Y/deep", L"a"})
        WriteRegistryDword(HKEY_CURRENT_USER, L"Top\\Key", name, 1);
    std::vector<CAtlString> names{L"held"};
    EnumRegistryKeys(HKEY_CURRENT_USER, L"/Top/Key/", names);
    EXPECT_EQ(names, (std::vector<CAtlString>{L"held", L"X", L"Y", L"a"}));
}

// Returns the function's result, 0 to 255, from another process, never root's, so that permissions count.
static int InAnotherProcess(const std::function<int()>& function) {
    const pid_t child = fork();
    if (child == 0)
        _exit(geteuid() == 0 && setuid(4711) != 0 ? -1 : function());
    int status = -1;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status);
}

TEST_F(Settings, AMachineFileThatIsNotToBeWrittenIsReplacedByTheUsers) {
    const std::string desktops = USERS + "kdedefaults";
    const std::tuple<const char*, mode_t, std::string> cases[] = {
        {"neither the file nor its folder may be written", 0444, MACHINES},
        {"the file may be written, its folder not", 0666, MACHINES},
        {"a link into the user's folder comes first", 0444, "/tmp/link:" + MACHINES},
    };
    std::filesystem::create_symlink(desktops, "/tmp/link");
    for (const auto& [situation, mode, directories] : cases) {
        SCOPED_TRACE(situation);
        Clear();
        std::filesystem::create_directory(desktops);
        const std::string machines = MACHINES + WHOLE_MAKER;
        std::ofstream(machines) << "[K]\nx=5\n";
        chmod(machines.c_str(), 0200);
        EXPECT_FALSE(InAnotherProcess([] { return AreMachineStoresReadable(); }));
        ASSERT_TRUE(chmod(machines.c_str(), mode) == 0 && chmod(MACHINES.c_str(), 0555) == 0);
        ASSERT_TRUE(chmod(USERS.c_str(), 0777) == 0 && chmod(desktops.c_str(), 0777) == 0);
        const ScopedEnvironment environment("XDG_CONFIG_DIRS", directories.c_str());
        InAnotherProcess([] { return WriteRegistryDword(HKEY_LOCAL_MACHINE, L"K", L"m", 30); });
        EXPECT_EQ(ReadWholeFile(USERS + WHOLE_MAKER), "[K]\nm=30\n");
        EXPECT_EQ(InAnotherProcess([] {
                      return Number(HKEY_LOCAL_MACHINE, L"K", L"m") + Number(HKEY_LOCAL_MACHINE, L"K", L"x");
                  }),
                  35);
        chmod(MACHINES.c_str(), 0755);
    }
    std::filesystem::remove("/tmp/link");
    std::filesystem::remove_all(USERS);
    const ScopedEnvironment environment("XDG_CONFIG_DIRS", desktops.c_str());
    WriteRegistryDword(HKEY_LOCAL_MACHINE, L"K", L"m", 30);
    EXPECT_EQ(ReadWholeFile(USERS + WHOLE_MAKER), "[K]\nm=30\n") << "the user's folder was not there yet";
}

TEST_F(Settings, DueRule) {
    for (const QStringList& row : DataTable("due-checks.txt")) {
        const int day = row[2].toInt();
        WriteOwn(HKEY_CURRENT_USER, DefaultSettings::LAST_CHECKED, row[1].toInt());
        CRecordKeeper record;
        EXPECT_TRUE(record.Load());
        record.SetInterval(row[0].toInt());
        record.NoteCheck(QDate::fromJulianDay(day));
        EXPECT_EQ(record.IsCheckDue(QDate::fromJulianDay(day)), row[3] == "due")
            << row.join(' ').toStdString();
        record.SetCheckUpdates(false);
        EXPECT_FALSE(record.IsCheckDue(QDate::fromJulianDay(day)));
    }
}

TEST_F(Settings, PolicyOfTheMachineWinsAndIsNotCopied) {
    const std::string policy =
        "[Software]\nVARDO%20Technologies\\Product%20Update\\Policy\\CheckUpdates=0\n"
        "VARDO%20Technologies\\Product%20Update\\Policy\\Interval=3\n"
        "VARDO%20Technologies\\Product%20Update\\Policy\\NoSelfUpdate=True\n"
        "VARDO%20Technologies\\Product%20Update\\Policy\\HttpProxyPort=none\n";
    std::ofstream(USERS + WHOLE_MAKER) << policy;
    WriteOwn(HKEY_CURRENT_USER, DefaultSettings::INTERVAL, 14);
    CRecordKeeper record;
    record.Load();
    EXPECT_TRUE(record.GetCheckUpdates() && record.GetInterval() == 14) << "a user makes no policy";
    std::ofstream(MACHINES + WHOLE_MAKER) << policy;
    record.Load();
    EXPECT_FALSE(record.GetCheckUpdates());
    EXPECT_EQ(record.GetInterval(), 3);
    EXPECT_EQ(record.GetPolicy().names.join(' '), "CheckUpdates Interval NoSelfUpdate");
    EXPECT_TRUE(CPolicy().noSelfUpdate == true &&
                CPolicy().refusals.join("") ==
                    "the value of the policy \"HttpProxyPort\" cannot be understood");
    record.NoteCheck(QDate::fromJulianDay(5));
    record.Save();
    EXPECT_EQ(Number(HKEY_CURRENT_USER, DefaultSettings::VPU_SETTINGS_KEY, L"CheckUpdates"), -7);
    EXPECT_EQ(Number(HKEY_CURRENT_USER, DefaultSettings::VPU_SETTINGS_KEY, L"Interval"), 14);
    EXPECT_EQ(Number(HKEY_CURRENT_USER, DefaultSettings::VPU_SETTINGS_KEY, L"LastChecked"), 5);
}

TEST_F(Settings, RecordTakesTheMachinesAndKeepsTheUsers) {
    CRecordKeeper record;
    EXPECT_FALSE(record.Load());
    EXPECT_TRUE(record.GetCheckUpdates());
    EXPECT_EQ(record.GetInterval(), 30);
    WriteOwn(HKEY_LOCAL_MACHINE, DefaultSettings::INTERVAL, 7);
    WriteOwn(HKEY_LOCAL_MACHINE, DefaultSettings::CHECK_UPDATES, 2);
    EXPECT_FALSE(record.Load());
    record.NoteCheck(QDate::fromJulianDay(2451545));
    EXPECT_EQ(record.GetLastChecked(), 0);
    record.Save();
    const std::string prefix = "VARDO%20Technologies\\Product%20Update\\";
    EXPECT_EQ(ReadWholeFile(USERS + WHOLE_MAKER), "[Software]\n" + prefix + "CheckUpdates=0\n" + prefix +
                                                      "Interval=7\n" + prefix + "LastChecked=2451545\n");
    WriteOwn(HKEY_LOCAL_MACHINE, DefaultSettings::INTERVAL, 90);
    EXPECT_TRUE(record.Load());
    EXPECT_EQ(record.GetInterval(), 7);
    EXPECT_EQ(record.GetLastChecked(), 2451545);
}
