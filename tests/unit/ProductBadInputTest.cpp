// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Files of every kind that a product reads, in every state that a file can be in: the answer is "no", and the
// program goes on. (What XML is accepted at all is tested with the one place that reads it.)
#include <gtest/gtest.h>
#include <filesystem>
#include <functional>
#include <string>
#include <tuple>

#include <sys/stat.h>

#include "ProductTest.h"
#include "platform/xml/XmlFile.h"
#include "products/CProductListController.h"
#include "support/ScopedEnvironment.h"

namespace {

using Question = std::function<bool()>;

class BadInput : public ProductTest {
protected:
    // A reader answers false after every put of bad contents; of those that are XML still it may make
    // anything.
    static void HoldsAgainst(const std::function<void(const std::string&)>& put, const std::string& good,
                             const Question& read) {
        std::string deep;
        for (int level = 0; level < 100'000; ++level)
            deep += "<a>";
        const std::string start = good.substr(0, good.find('>'));
        const std::string rest = good.substr(start.size());
        const std::string nines(1'000'000, '9');
        const std::tuple<const char*, std::string, bool> states[] = {
            {"empty", "", false},
            {"cut off", good.substr(0, good.size() / 2), false},
            {"100,000 levels", deep, false},
            {"a NUL byte in front", '\0' + good, false},
            {"an element of another kind", "<other/>", false},
            {"too large a file", good + std::string(MAX_XML_BYTES, ' '), false},
            {"invalid UTF-8", start + " x='\xFF\xC0\x80\xED\xA0\x80'" + rest, true},
            {"a long attribute", start + " x='" + nines + "'" + rest, true},
        };
        for (const auto& [state, contents, isXml] : states) {
            put(contents);
            EXPECT_TRUE(!read() || isXml) << good << ": " << state;
        }
        put(good);
        EXPECT_TRUE(read()) << good;
    }
    // The same for a local file and what makes use of it, and then for a file that is fetched.
    void Holds(const std::string& file, const std::string& local, const Question& find,
               const std::string& address, const std::string& remote, const Question& check) {
        const std::string path = shared_.MakeDirectory(file);
        EXPECT_FALSE(find()) << path << ": a directory";
        std::filesystem::remove(path);
        EXPECT_FALSE(find()) << path << ": missing";
        std::filesystem::create_symlink(path, path);
        EXPECT_FALSE(find()) << path << ": a link to itself";
        std::filesystem::remove(path);
        ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
        EXPECT_FALSE(find()) << path << ": a pipe that nobody writes to";
        std::filesystem::remove(path);
        HoldsAgainst([&](const std::string& contents) { shared_.Write(file, contents); }, local, find);
        EXPECT_FALSE(check()) << address << ": missing";
        HoldsAgainst([&](const std::string& contents) { downloader_->Serve(address, contents); }, remote,
                     check);
        for (const std::string& fetched : downloader_->files)
            EXPECT_FALSE(std::filesystem::exists(fetched)) << address;
    }
};

}  // namespace

TEST_F(BadInput, OfProducts) {
    Install("SoftwareUpdateVBS.xml", "1.0.0.0");
    RecordGallery(shared_.Path("m.xml"), "", "/bin/true");
    // An element of the product list, the product's local file, and the file that it fetches.
    const std::tuple<const char*, const char*, const char*, const char*, const char*> kinds[] = {
        {"<Product Name='n' BaseXml='B'/>", "B.xml",
         "<l><Product CurrentVersion='1' RemoteVersionFile='r' RemoteVersionFileURL='http://h'/></l>",
         "http://h/r", "<u Location='Server'><Product UpdateVersion='2.0.0.0'/></u>"},
        {"<Notification BaseXML='N'/>", "N.xml", "<Notification URL='http://h' File='n'/>", "http://h/n",
         "<Notification WebPage='p' StartDate='20100101' "
         "StopDate='20991231'><Text><en/></Text></Notification>"},
        {"<Gallery Name='n' GUID='{G}' DefaultUrl='http://h'/>", "Uninstall/updateinfo.xml",
         "<i><category id='a' version='1'/></i>", "http://h/gallery_categories.xml",
         "<g><categories><category id='a' version='2'/></categories></g>"},
    };
    for (const auto& [element, file, local, address, remote] : kinds) {
        Product product;
        const auto find = [&, from = element] {
            product = Make(from);
            return product->FindInstalled();
        };
        Holds(file, local, find, address, remote,
              [&] { return find() && Check(product) && product->IsUpdateAvailable(0); });
    }
}

TEST_F(BadInput, OfProductLists) {
    const ScopedEnvironment home("HOME", shared_.Path("home").c_str());
    const std::string good = "<p Version='1.0.0.0' Url='http://h/p'><Product Name='n' BaseXml='B'/></p>";
    CProductListController controller(environment_);
    controller.SetDownloader(downloader_);
    const auto load = [&] { return controller.LoadProductList() && controller.GetProducts().size() == 1; };
    const auto refresh = [&] {
        return load() && controller.UpdateProductList() && controller.GetProducts().size() == 1;
    };
    Holds("products.xml", good, load, "http://h/p", good, refresh);
}
