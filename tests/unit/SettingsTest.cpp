// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Where settings land, what is read where they are missing, and when a check is due by them.
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <climits>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "app/settings/CRecordKeeper.h"
#include "app/settings/DefaultSettings.h"
#include "platform/CSettingsIdentity.h"
#include "platform/SettingsStore.h"
#include "support/TextPrinting.h"

namespace {

const std::filesystem::path USERS = "/tmp/home/.config";
const std::filesystem::path MACHINES = "/tmp/etc/xdg";
const std::string WHOLE_MAKER = "VARDO Technologies.conf";

class Settings : public testing::Test {
protected:
    void SetUp() override { Clear(); }
    void TearDown() override { Clear(); }
    static void Clear() {
        for (const auto& folder : {USERS, MACHINES}) {
            std::filesystem::remove_all(folder);
            std::filesystem::create_directories(folder);
        }
    }

    static std::string Contents(const std::filesystem::path& file) {
        std::ostringstream text;
        text << std::ifstream(file).rdbuf();
        return text.str();
    }
    static int Number(int hive, const CAtlString& key, const CAtlString& name, int& error) {
        return ReadRegistryDword(hive, key, name, -7, error);
    }
    static void WriteOwn(int hive, const CAtlString& name, int value) {
        WriteRegistryDword(hive, DefaultSettings::VPU_SETTINGS_KEY, name, value);
    }

    int error_ = 99;
};

// While it lives, the machine's settings folder cannot be written, not even by root.
class UnwritableMachine {
public:
    UnwritableMachine() {
        std::filesystem::rename(MACHINES, kept_);
        std::ofstream(MACHINES.string()) << "";
    }
    ~UnwritableMachine() {
        std::filesystem::remove(MACHINES);
        std::filesystem::rename(kept_, MACHINES);
    }
    UnwritableMachine(const UnwritableMachine&) = delete;
    UnwritableMachine& operator=(const UnwritableMachine&) = delete;

private:
    std::filesystem::path kept_ = "/tmp/etc/kept";
};

}  // namespace

TEST_F(Settings, LandInTheFileGroupAndKey) {
    EXPECT_EQ(
        WriteRegistryDword(HKEY_CURRENT_USER, L"Software/VARDO Technologies/Product Update", L"Interval", 14),
        REGISTRY_OK);
    EXPECT_EQ(Contents(USERS / WHOLE_MAKER),
              "[Software]\nVARDO%20Technologies\\Product%20Update\\Interval=14\n");
    EXPECT_EQ(WriteRegistryString(HKEY_LOCAL_MACHINE, L"\\Software\\X", L"Path", L"/opt/\u4E2D"),
              REGISTRY_OK);
    EXPECT_EQ(Contents(MACHINES / WHOLE_MAKER), "[Software]\nX\\Path=/opt/\xE4\xB8\xAD\n");
    EXPECT_EQ(Contents(USERS / WHOLE_MAKER).find("Path"), std::string::npos);
    WriteRegistryDword(5, L"Any", L"hive", 1);
    EXPECT_NE(Contents(USERS / WHOLE_MAKER).find("[Any]\nhive=1"), std::string::npos);
}

TEST_F(Settings, FileFollowsTheIdentity) {
    const struct {
        const char* organization;
        const char* application;
        std::string file;
    } cases[] = {
        {"", "", WHOLE_MAKER},
        {"vardotech", "", WHOLE_MAKER},
        {"VARDO Technologies", "Language Setup", "VARDO Technologies/Language Setup.conf"},
        {"vardotech", "Gallery", "VARDO Technologies/Gallery.conf"},
        {"Other", "App", "Other/App.conf"},
        {"Other", "", "Other.conf"},
    };
    for (const auto& c : cases) {
        Clear();
        const CSettingsIdentity identity(c.organization, "", c.application);
        WriteRegistryDword(HKEY_CURRENT_USER, L"K", L"user", 1);
        WriteRegistryDword(HKEY_LOCAL_MACHINE, L"K", L"machine", 2);
        EXPECT_EQ(Contents(USERS / c.file), "[K]\nuser=1\n") << c.file;
        EXPECT_EQ(Contents(MACHINES / c.file), "[K]\nmachine=2\n") << c.file;
    }
}

TEST_F(Settings, IdentitiesNestAndRestore) {
    const QString before = QCoreApplication::applicationName();
    {
        const CSettingsIdentity outer("Outer", "outer.example", "App");
        {
            const CSettingsIdentity inner("", "", "");
            EXPECT_EQ(CSettingsIdentity::Organization(), "VARDO Technologies");
            EXPECT_EQ(CSettingsIdentity::Application(), "");
        }
        EXPECT_EQ(QCoreApplication::organizationName(), "Outer");
        EXPECT_EQ(QCoreApplication::organizationDomain(), "outer.example");
        EXPECT_EQ(CSettingsIdentity::Application(), "App");
    }
    EXPECT_EQ(QCoreApplication::organizationName(), "");
    EXPECT_EQ(QCoreApplication::applicationName(), before);
    EXPECT_EQ(CSettingsIdentity::Application(), "");
}

TEST_F(Settings, ReadsAndDefaults) {
    EXPECT_EQ(Number(HKEY_CURRENT_USER, L"Software\\A\\B", L"n", error_), -7);
    EXPECT_EQ(error_, REGISTRY_NOT_FOUND);
    for (const int value : {0, -1, INT_MAX, INT_MIN}) {
        WriteRegistryDword(HKEY_CURRENT_USER, L"Software\\A\\B", L"n", value);
        for (const wchar_t* key : {L"Software\\A\\B", L"/Software/A/B/", L"\\/Software//A\\B"}) {
            EXPECT_EQ(Number(HKEY_CURRENT_USER, key, L"n", error_), value);
            EXPECT_EQ(error_, REGISTRY_OK);
        }
    }
    EXPECT_EQ(Number(HKEY_LOCAL_MACHINE, L"Software\\A\\B", L"n", error_), -7);
    EXPECT_EQ(error_, REGISTRY_NOT_FOUND);
    for (const wchar_t* text : {L"", L"a, b; \"c\" = %\\d\r\n", L"\u4E2D\U0001F600", L" @blank "}) {
        WriteRegistryString(HKEY_CURRENT_USER, L"T", L"t", text);
        EXPECT_EQ(ReadRegistryString(HKEY_CURRENT_USER, L"T", L"t", L"default", error_), text);
        EXPECT_EQ(error_, REGISTRY_OK);
        EXPECT_EQ(Number(HKEY_CURRENT_USER, L"T", L"t", error_), 0);
    }
    EXPECT_EQ(ReadRegistryString(HKEY_CURRENT_USER, L"T", L"u", L"default", error_), L"default");
    EXPECT_EQ(error_, REGISTRY_NOT_FOUND);
}

TEST_F(Settings, ReadsWhatOtherSoftwareWrote) {
    std::ofstream((USERS / WHOLE_MAKER).string()) << "[Software]\nX\\n=12\nX\\text=seven\n";
    EXPECT_EQ(Number(HKEY_CURRENT_USER, L"Software/X", L"n", error_), 12);
    EXPECT_EQ(Number(HKEY_CURRENT_USER, L"Software/X", L"text", error_), 0);
    std::ofstream((USERS / WHOLE_MAKER).string()) << "[Software]\nX\\n=12345\n";
    EXPECT_EQ(Number(HKEY_CURRENT_USER, L"Software/X", L"n", error_), 12345);
}

TEST_F(Settings, UnwritableMachineFileIsReplacedByTheUsers) {
    const UnwritableMachine unwritable;
    EXPECT_EQ(WriteRegistryDword(HKEY_LOCAL_MACHINE, L"K", L"m", 3), REGISTRY_OK);
    EXPECT_EQ(Contents(USERS / WHOLE_MAKER), "[K]\nm=3\n");
    EXPECT_EQ(Number(HKEY_LOCAL_MACHINE, L"K", L"m", error_), 3);
    EXPECT_EQ(error_, REGISTRY_OK);
}

TEST_F(Settings, EnumeratesSubKeysThenValues) {
    for (const wchar_t* name : {L"X/deep", L"Y/deep", L"v", L"w"})
        WriteRegistryDword(HKEY_CURRENT_USER, L"Top\\Key", name, 1);
    std::vector<CAtlString> names{L"held"};
    EnumRegistryKeys(HKEY_CURRENT_USER, L"/Top/Key/", names);
    EXPECT_EQ(names, (std::vector<CAtlString>{L"held", L"X", L"Y", L"v", L"w"}));
}

TEST_F(Settings, DueRule) {
    const struct {
        const char* situation;
        bool on;
        int interval;
        int lastChecked;
        int today;
        bool due;
    } cases[] = {
        {"never checked", true, 30, 0, 2451545, true},
        {"switched off", false, 30, 0, 2451545, false},
        {"the day before", true, 30, 2451545, 2451574, false},
        {"the day itself", true, 30, 2451545, 2451575, true},
        {"interval 0", true, 0, 2451545, 2451545, true},
        {"negative interval", true, -5, 2451545, 2451545, true},
        {"checked in the future", true, 7, 2451600, 2451545, false},
        {"beyond 32 bits", true, 30, INT_MIN, INT_MAX, true},
        {"far future", true, INT_MAX, INT_MAX, 0, false},
    };
    for (const auto& c : cases) {
        WriteOwn(HKEY_CURRENT_USER, DefaultSettings::LAST_CHECKED, c.lastChecked);
        CRecordKeeper record;
        EXPECT_TRUE(record.Load());
        record.SetCheckUpdates(c.on);
        record.SetInterval(c.interval);
        record.SetNewLastChecked(c.today);
        EXPECT_EQ(record.IsCheckDue(c.today), c.due) << c.situation;
    }
}

TEST_F(Settings, RecordDefaultsUntilSomethingIsStored) {
    CRecordKeeper record;
    EXPECT_FALSE(record.Load());
    EXPECT_TRUE(record.GetCheckUpdates());
    EXPECT_EQ(record.GetInterval(), 30);
    EXPECT_EQ(record.GetLastChecked(), 0);
    EXPECT_EQ(record.GetNewLastChecked(), 0);
}

TEST_F(Settings, RecordTakesTheMachinesAndKeepsTheUsers) {
    WriteOwn(HKEY_LOCAL_MACHINE, DefaultSettings::INTERVAL, 7);
    WriteOwn(HKEY_LOCAL_MACHINE, DefaultSettings::CHECK_UPDATES, 2);
    CRecordKeeper record;
    EXPECT_FALSE(record.Load());
    EXPECT_FALSE(record.GetCheckUpdates());
    EXPECT_EQ(record.GetInterval(), 7);
    record.SetNewLastChecked(2451545);
    EXPECT_EQ(record.GetLastChecked(), 0);
    record.Save();
    const std::string prefix = "VARDO%20Technologies\\Product%20Update\\";
    EXPECT_EQ(Contents(USERS / WHOLE_MAKER), "[Software]\n" + prefix + "CheckUpdates=0\n" + prefix +
                                                 "Interval=7\n" + prefix + "LastChecked=2451545\n");
    WriteOwn(HKEY_LOCAL_MACHINE, DefaultSettings::INTERVAL, 90);
    EXPECT_TRUE(record.Load());
    EXPECT_EQ(record.GetInterval(), 7);
    EXPECT_EQ(record.GetLastChecked(), 2451545);
}
