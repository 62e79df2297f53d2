// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The installed program where a file system is full or read-only.
#include <sys/mount.h>

#include "e2e/ProgramTest.h"
#include "platform/files/CVardoDirectoryPath.h"

namespace {

const std::string SHARE = SampleMachine::FOLDER + "/share";
const std::string LIST = SHARE + "/products.xml";
const std::string USERS_LIST = "/tmp/home/.VARDO Technologies/Product Update/products.xml";

// Mounts a full disk, one with room for a single small file, or a read-only one over the folder, whose files
// it holds.
class Mounted {
public:
    enum Kind { FULL, ALMOST_FULL, READ_ONLY };

    Mounted(const std::string& folder, Kind kind) : folder_(folder) {
        const TemporaryTree copy;
        std::filesystem::create_directories(folder);
        std::filesystem::copy(folder, copy.Root(), std::filesystem::copy_options::recursive);
        Check(mount("tmpfs", folder_.c_str(), "tmpfs", 0, "size=16m,mode=700"));
        std::filesystem::copy(copy.Root(), folder, std::filesystem::copy_options::recursive);
        if (kind == READ_ONLY) {
            Check(mount(nullptr, folder_.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr));
            return;
        }
        const std::string filler = folder + "/filler";
        std::ofstream(filler) << std::string(std::size_t{17} << 20, '.') << std::flush;
        if (kind == ALMOST_FULL)
            std::filesystem::resize_file(filler, std::filesystem::file_size(filler) - PAGE_BYTES);
    }
    ~Mounted() { umount2(folder_.c_str(), MNT_DETACH); }
    Mounted(const Mounted&) = delete;
    Mounted& operator=(const Mounted&) = delete;

private:
    static constexpr std::uintmax_t PAGE_BYTES = 4096;

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

    // Opens the window, waits until so many products have been checked, and closes it.
    void CheckAll(int products = PRODUCTS) {
        Open();
        EXPECT_TRUE(WaitUntilChecked(products)) << program_->Output();
        EXPECT_TRUE(Close());
    }

    const std::string oldList_ = ReadWholeFile(LIST);
};

TEST_F(FaultTest, WithoutRoomForDownloadsNothingIsCheckedAndNothingLost) {
    const CAtlString downloads = CVardoDirectoryPath::GetTempDirectory().GetDirectoryPathString();
    const Mounted full(downloads.ToQString().toStdString(), Mounted::FULL);
    CheckAll(PRODUCTS - 1);
    EXPECT_EQ(ReadWholeFile(LIST), oldList_) << "the newer one knows one product more";
    EXPECT_EQ(Setting("LastChecked"), 0);
    EXPECT_EQ(Setting("Interval"), 7);
}

// In the second round the user's list exists already, from the first.
TEST_F(FaultTest, ListGoesToTheUserWhereTheInstallationTakesNone) {
    for (const auto kind : {Mounted::FULL, Mounted::READ_ONLY}) {
        const Mounted installation(SHARE, kind);
        CheckAll();
        EXPECT_EQ(ReadWholeFile(LIST), oldList_) << kind;
        EXPECT_THAT(ReadWholeFile(USERS_LIST), HasSubstr("Version=\"1.3.0.0\"")) << kind;
        EXPECT_THAT(program_->Output(), HasSubstr("VARDO Timeline")) << kind;
    }
}

TEST_F(FaultTest, SettingsStayWholeWhereTheHomeTakesNone) {
    for (const auto kind : {Mounted::READ_ONLY, Mounted::FULL, Mounted::ALMOST_FULL}) {
        const Mounted home("/tmp/home", kind);
        CheckAll();
        EXPECT_THAT(program_->Output(), HasSubstr("VARDO Timeline")) << kind;
        EXPECT_EQ(Setting("Interval"), 7) << kind;
        EXPECT_EQ(Setting("CheckUpdates"), 1) << kind;
        EXPECT_EQ(Setting("LastChecked"), -1) << kind;
    }
}

}  // namespace
