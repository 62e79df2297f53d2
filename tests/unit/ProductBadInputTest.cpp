// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Files of every kind that a product reads, in every state that a file can be in: the answer is "no", and the
// program goes on.
#include <gtest/gtest.h>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <sys/stat.h>

#include "ProductTest.h"
#include "platform/CSettingsIdentity.h"
#include "platform/SettingsStore.h"
#include "platform/XmlFile.h"
#include "products/CProductListController.h"
#include "support/ScopedEnvironment.h"

namespace {

struct BadFile {
    const char* state;
    std::string contents;
    // Whether it is still XML that a reader may find something in.
    bool readable = false;
};

std::string Repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

// States of a file whose good contents are given.
std::vector<BadFile> BadFiles(const std::string& good) {
    const std::string start = good.substr(0, good.find('>'));
    return {
        {"empty", ""},
        {"no XML", "404 Not Found"},
        {"malformed", "<a><b></a>"},
        {"cut off", good.substr(0, good.size() / 2)},
        {"cut off in an attribute", good.substr(0, good.rfind('\''))},
        {"100,000 levels", Repeated("<a>", 100'000)},
        {"a NUL byte in front", std::string(1, '\0') + good},
        {"a NUL byte inside", good.substr(0, 20) + std::string(1, '\0') + good.substr(20)},
        {"UTF-16", std::string("\xFF\xFE<\0a\0/\0>\0", 10)},
        {"an element of another kind", "<other/>"},
        {"a long attribute of another kind", "<other Version='" + std::string(1'000'000, '9') + "'/>"},
        {"too large a file", good + std::string(MAX_XML_BYTES, ' ')},
        {"invalid UTF-8", start + " x='\xFF\xC0\x80\xED\xA0\x80'" + good.substr(start.size()), true},
        {"a long attribute", start + " x='" + std::string(1'000'000, '9') + "'" + good.substr(start.size()),
         true},
    };
}

class BadInput : public ProductTest {
protected:
    // The reader of a file answers true for its good contents and false, at worst, for all others.
    void HoldsAgainstBadFiles(const std::string& path, const std::string& good,
                              const std::function<bool()>& read) {
        const auto write = [&](const std::string& contents) {
            std::filesystem::remove_all(path);
            std::filesystem::create_directories(std::filesystem::path(path).parent_path());
            std::ofstream(path, std::ios::binary) << contents;
        };
        write(good);
        EXPECT_TRUE(read()) << path;
        for (const BadFile& bad : BadFiles(good)) {
            write(bad.contents);
            EXPECT_TRUE(read() == false || bad.readable) << path << ": " << bad.state;
        }
        std::filesystem::remove_all(path);
        EXPECT_FALSE(read()) << path << ": missing";
        std::filesystem::create_directory(path);
        EXPECT_FALSE(read()) << path << ": a directory";
        std::filesystem::remove(path);
        std::filesystem::create_symlink(path, path);
        EXPECT_FALSE(read()) << path << ": a link to itself";
        std::filesystem::remove(path);
        ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
        EXPECT_FALSE(read()) << path << ": a pipe that nobody writes to";
        std::filesystem::remove(path);
    }
    // The same for a fetched file.
    void HoldsAgainstBadAnswers(const std::string& address, const std::string& good,
                                const std::function<bool()>& fetch) {
        downloader_->Serve(address, good);
        EXPECT_TRUE(fetch()) << address;
        for (const BadFile& bad : BadFiles(good)) {
            downloader_->Serve(address, bad.contents);
            EXPECT_TRUE(fetch() == false || bad.readable) << address << ": " << bad.state;
            EXPECT_FALSE(std::filesystem::exists(downloader_->files.back())) << bad.state;
        }
        downloader_->Forget(address);
        EXPECT_FALSE(fetch()) << address << ": nothing there";
    }
};

}  // namespace

TEST_F(BadInput, LocalAndRemoteDescriptions) {
    const auto found = [this] {
        const Product product = Make("<Product Name='n' BaseXml='B'/>");
        return product->FindInstalled() && product->GetItemCount() == 1;
    };
    HoldsAgainstBadFiles(
        shared_.Path("B.xml"),
        "<l><Product CurrentVersion='1.0.0.0' RemoteVersionFile='r' RemoteVersionFileURL='http://h'/></l>",
        found);
    Install("B.xml", "1.0.0.0");
    HoldsAgainstBadAnswers("http://h/r.xml", "<u Location='Server'><Product UpdateVersion='2.0.0.0'/></u>",
                           [this] {
                               const Product product = Make("<Product Name='n' BaseXml='B'/>");
                               product->FindInstalled();
                               return Check(product) && product->IsUpdateAvailable(0);
                           });
}

TEST_F(BadInput, ProductLists) {
    const ScopedEnvironment home("HOME", shared_.Path("home").c_str());
    const std::string good = "<p Version='1.0.0.0' Url='http://h/p'><Product Name='n' BaseXml='B'/></p>";
    CProductListController controller(environment_);
    controller.SetDownloader(downloader_);
    const auto load = [&controller] {
        return controller.LoadProductList() && controller.GetProducts().size() == 1;
    };
    for (const char* copy : {"products.xml", "home/.VARDO Technologies/Product Update/products.xml"})
        HoldsAgainstBadFiles(shared_.Path(copy), good, load);
    shared_.Write("products.xml", good);
    HoldsAgainstBadAnswers("http://h/p", good, [&] {
        return load() && controller.UpdateProductList() && controller.GetProducts().size() == 1;
    });
}

TEST_F(BadInput, Notifications) {
    const std::string description = "<Notification URL='http://h' File='n'/>";
    HoldsAgainstBadFiles(shared_.Path("N.xml"), description,
                         [this] { return Make("<Notification BaseXML='N'/>")->FindInstalled(); });
    shared_.Write("N.xml", description);
    HoldsAgainstBadAnswers("http://h/n",
                           "<Notification WebPage='p' StartDate='20100101' StopDate='20100110'><Text><en "
                           "value='x'/></Text></Notification>",
                           [this] {
                               const Product product = Make("<Notification BaseXML='N'/>");
                               product->FindInstalled();
                               return Check(product);
                           });
}

TEST_F(BadInput, GalleryLists) {
    {
        const CSettingsIdentity notebook("VARDO Technologies", "", "VARDO Notebook");
        const CAtlString key("Software\\VARDO Technologies\\Gallery\\TeamContent\\bad");
        WriteRegistryString(HKEY_LOCAL_MACHINE, key, "ImsManifestXml", shared_.Path("m.xml").c_str());
        WriteRegistryString(HKEY_LOCAL_MACHINE, key, "AppPath", "/bin/true");
    }
    const std::string installed = "<i><category id='a' version='1'/></i>";
    const auto make = [this] { return Make("<Gallery Name='n' GUID='bad' DefaultUrl='http://h'/>"); };
    const std::string path = shared_.Path("Uninstall/updateinfo.xml");
    HoldsAgainstBadFiles(path, installed, [&] { return make()->FindInstalled(); });
    shared_.Write("Uninstall/updateinfo.xml", installed);
    HoldsAgainstBadAnswers("http://h/gallery_categories.xml",
                           "<g><categories><category id='a' version='2'/></categories></g>", [&] {
                               const Product product = make();
                               product->FindInstalled();
                               return Check(product);
                           });
}
