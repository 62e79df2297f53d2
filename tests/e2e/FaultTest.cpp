// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The installed program on a machine that fails: killed at any moment, without room, without permission.
#include <random>

#include <sys/mount.h>

#include "e2e/ProgramTest.h"
#include "platform/files/CVardoDirectoryPath.h"

namespace {

const std::string SHARE = SampleMachine::FOLDER + "/share";
const std::string LIST = SHARE + "/products.xml";
const std::string USERS_LIST = "/tmp/home/.VARDO Technologies/Product Update/products.xml";

// A small disk, or a write protection, over a folder and what it holds.
class Mounted {
public:
    enum Kind { FULL, READ_ONLY };

    Mounted(const std::string& folder, Kind kind) : folder_(folder) {
        const TemporaryTree copy;
        std::filesystem::create_directories(folder);
        std::filesystem::copy(folder, copy.Root(), std::filesystem::copy_options::recursive);
        Check(mount("tmpfs", folder_.c_str(), "tmpfs", 0, "size=16m,mode=700"));
        std::filesystem::copy(copy.Root(), folder, std::filesystem::copy_options::recursive);
        if (kind == FULL)
            std::ofstream(folder + "/filler") << std::string(std::size_t{17} << 20, '.') << std::flush;
        else
            Check(mount(nullptr, folder_.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr));
    }
    ~Mounted() { umount2(folder_.c_str(), MNT_DETACH); }
    Mounted(const Mounted&) = delete;
    Mounted& operator=(const Mounted&) = delete;

private:
    void Check(int result) const {
        if (result != 0)
            throw std::runtime_error("cannot mount " + folder_);
    }

    std::string folder_;
};

class FaultTest : public ProgramTest {
protected:
    FaultTest() {
        UpdateSettings().setValue("Interval", 7);
        UpdateSettings().setValue("CheckUpdates", 1);
    }

    // One whole check of so many products with the window, as a user runs it.
    void CheckAll(int products = PRODUCTS) {
        Open();
        EXPECT_TRUE(WaitUntilChecked(products)) << program_->Output();
        EXPECT_TRUE(Close());
    }
    static std::string TempFolder() {
        return CVardoDirectoryPath::GetTempDirectory().GetDirectoryPathString().ToQString().toStdString();
    }
    bool UsesTheNewList() const { return program_->Output().find("VARDO Timeline") != std::string::npos; }

    const std::string oldList_ = ReadWholeFile(LIST);
};

TEST_F(FaultTest, KilledAtAnyMomentItLosesNothingAndStartsAgain) {
    constexpr int KILLS = 200;
    CheckAll();
    const std::string newList = ReadWholeFile(LIST);
    ASSERT_NE(oldList_, newList);
    const auto files = [] {
        return std::distance(std::filesystem::directory_iterator(SHARE),
                             std::filesystem::directory_iterator());
    };
    const auto filesBefore = files();

    std::mt19937 random{20261124};  // NOLINT(cert-msc32-c, cert-msc51-cpp): the same moments in each run
    std::uniform_int_distribution<int> moment(0, 250);
    int replaced = 0;
    for (int kill = 0; kill < KILLS; ++kill) {
        std::ofstream(LIST) << oldList_;
        Start({});
        std::this_thread::sleep_for(std::chrono::milliseconds(moment(random)));
        program_->Signal(SIGKILL);
        ASSERT_TRUE(program_->WaitForEnd());
        const std::string list = ReadWholeFile(LIST);
        ASSERT_TRUE(list == oldList_ || list == newList) << "half a list: " << list;
        replaced += list == newList ? 1 : 0;
    }
    EXPECT_GT(replaced, 0) << "never killed after the list was replaced";
    EXPECT_LT(replaced, KILLS) << "never killed before";
    EXPECT_LE(files(), filesBefore + 1) << "halves of lists pile up";
    EXPECT_EQ(Setting("Interval"), 7);

    CheckAll();
    EXPECT_EQ(ReadWholeFile(LIST), newList);
    EXPECT_EQ(Setting("LastChecked"), Today());
}

TEST_F(FaultTest, WithoutRoomForDownloadsNothingIsCheckedAndNothingLost) {
    const Mounted full(TempFolder(), Mounted::FULL);
    CheckAll(PRODUCTS - 1);
    EXPECT_EQ(ReadWholeFile(LIST), oldList_) << "the newer one knows one product more";
    EXPECT_EQ(Setting("LastChecked"), 0);
    EXPECT_EQ(Setting("Interval"), 7);
}

TEST_F(FaultTest, ListGoesToTheUserWhereTheInstallationTakesNone) {
    for (const auto kind : {Mounted::FULL, Mounted::READ_ONLY}) {
        std::filesystem::remove(USERS_LIST);
        const Mounted installation(SHARE, kind);
        for (const char* check : {"first", "second"}) {
            CheckAll();
            EXPECT_EQ(ReadWholeFile(LIST), oldList_) << kind << check;
            EXPECT_THAT(ReadWholeFile(USERS_LIST), HasSubstr("Version=\"1.3.0.0\"")) << kind << check;
            EXPECT_TRUE(UsesTheNewList()) << kind << check;
        }
    }
}

TEST_F(FaultTest, SettingsStayWholeWhereTheHomeTakesNone) {
    for (const auto kind : {Mounted::READ_ONLY, Mounted::FULL}) {
        const Mounted home("/tmp/home", kind);
        CheckAll();
        EXPECT_TRUE(UsesTheNewList()) << kind;
        EXPECT_EQ(Setting("Interval"), 7) << kind;
        EXPECT_EQ(Setting("CheckUpdates"), 1) << kind;
        EXPECT_EQ(Setting("LastChecked"), -1) << kind;
    }
}

// The day of the last check is then in the future: no silent check until it has come, but a user who looks is
// served, and that mends it.
TEST_F(FaultTest, WithTheClockSetBackACheckByHandSetsTheDayRight) {
    UpdateSettings().setValue("LastChecked", Today() + 1000);
    Start({"-silent"});
    EXPECT_TRUE(program_->EndsWell());
    EXPECT_EQ(machine_.Requests(), "");
    EXPECT_EQ(Setting("LastChecked"), Today() + 1000);
    CheckAll();
    EXPECT_EQ(Setting("LastChecked"), Today());
}

}  // namespace
