// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The product list: reading it, choosing between its copies, refreshing it, and the passes over it.
#include <gtest/gtest.h>
#include <boost/make_shared.hpp>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/stat.h>

#include "products/CProductListController.h"
#include "support/FakeDownloader.h"
#include "support/FakeEnvironment.h"
#include "support/ScopedEnvironment.h"
#include "support/TextPrinting.h"

namespace {

const std::string INSTALLED = "share/products.xml";
const std::string USERS = "home/.VARDO Technologies/Product Update/products.xml";
const std::string ADDRESS = "http://h/products.xml";

std::string Element(const std::string& key) {
    return "<Product Name='" + key + "' BaseXml='" + key + "'/>";
}

std::string List(const std::string& version, const std::string& products,
                 const std::string& address = ADDRESS) {
    return "<Products Version='" + version + "' Url='" + address + "'>" + products + "</Products>";
}

class ProductList : public testing::Test {
protected:
    ProductList() {
        tree_.MakeDirectory("share");
        environment_->sharedDataFolder = CVardoDirectoryPath(tree_.Path("share").c_str());
        controller_.SetDownloader(downloader_);
    }

    // The keys of the current list's products.
    std::string Keys() const {
        std::string keys;
        for (const auto& product : controller_.GetProducts())
            keys += product->GetKey().ToQString().toStdString();
        return keys;
    }
    bool FetchedFilesAreGone() const {
        return std::none_of(downloader_->files.begin(), downloader_->files.end(),
                            [](const std::string& file) { return std::filesystem::exists(file); });
    }
    // A local description, and the remote one unless an update exists.
    void Install(const std::string& key, bool reachable) {
        tree_.Write("share/" + key + ".xml", "<l><Product CurrentVersion='1.0.0.0' RemoteVersionFile='" +
                                                 key + "' RemoteVersionFileURL='http://h'/></l>");
        if (reachable)
            downloader_->Serve("http://h/" + key,
                               "<u Location='Server'><Product UpdateVersion='2.0.0.0'/></u>");
    }

    TemporaryTree tree_;
    ScopedEnvironment home_{"HOME", tree_.Path("home").c_str()};
    boost::shared_ptr<FakeEnvironment> environment_ = boost::make_shared<FakeEnvironment>();
    boost::shared_ptr<FakeDownloader> downloader_ = boost::make_shared<FakeDownloader>();
    CProductListController controller_{environment_};
};

}  // namespace

TEST_F(ProductList, IsReadInOrderWithoutWhatItDoesNotKnow) {
    Products products(environment_);
    const std::string file = tree_.Write(
        "list.xml",
        List("1.2.3.4", "text" + Element("a") + "<!-- no -->" + "<product Name='x' BaseXml='x'/>" +
                            "<Product Name='no base'/><Other/>" + Element("b") + Element("a")));
    EXPECT_TRUE(products.Load(CVardoFilePath(file.c_str())));
    ASSERT_EQ(products.GetProducts().size(), 3U);
    EXPECT_EQ(products.GetProducts()[1]->GetKey(), CAtlString("b"));
    EXPECT_EQ(products.GetVersion().GetString(), CAtlString("1.2.3.4"));
    EXPECT_EQ(products.GetAddress(), CAtlString(ADDRESS.c_str()));

    EXPECT_FALSE(
        products.Load(CVardoFilePath(tree_.Write("empty.xml", List("2.0.0.0", "<Other/>")).c_str())));
    EXPECT_FALSE(products.IsLoaded());
    EXPECT_EQ(products.GetVersion().GetString(), CAtlString("2.0.0.0"));
    EXPECT_TRUE(products.GetProducts().empty());
}

TEST_F(ProductList, TheNewerCopyIsTaken) {
    const struct {
        const char* situation;
        std::string users;
        std::string installed;
        const char* taken;
    } cases[] = {
        {"no copy", "", "", ""},
        {"the installed copy alone", "", List("1.0.0.0", Element("i")), "i"},
        {"the user's alone", List("1.0.0.0", Element("u")), "", "u"},
        {"the user's is newer", List("1.0.0.1", Element("u")), List("1.0.0.0", Element("i")), "u"},
        {"the installed is newer", List("1.0.0.0", Element("u")), List("1.0.0.1", Element("i")), "i"},
        {"the same version", List("1.0.0.0", Element("u")), List("1.0.0.0", Element("i")), "u"},
        {"the user's has no version", List("", Element("u")), List("0.0.0.0", Element("i")), "i"},
        {"the user's is damaged", "<Products Version='9.0.0.0'", List("1.0.0.0", Element("i")), "i"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        for (const auto& [path, contents] : {std::pair(USERS, c.users), std::pair(INSTALLED, c.installed)}) {
            tree_.Write(path, contents);
            if (contents.empty())
                std::filesystem::remove(tree_.Path(path));
        }
        EXPECT_EQ(controller_.LoadProductList(), *c.taken != '\0');
        EXPECT_EQ(Keys(), c.taken);
    }
}

TEST_F(ProductList, WithoutAHomeThereIsNoUsersCopy) {
    tree_.Write(INSTALLED, List("1.0.0.0", Element("i")));
    for (const char* home : {static_cast<const char*>(nullptr), "", "/tmp/\xFFhome"}) {
        const ScopedEnvironment noHome("HOME", home);
        EXPECT_TRUE(controller_.LoadProductList());
        downloader_->Serve(ADDRESS, List("2.0.0.0", Element("n")));
        std::filesystem::remove(tree_.Path(INSTALLED));
        tree_.MakeDirectory(INSTALLED);
        EXPECT_TRUE(controller_.UpdateProductList());
        EXPECT_EQ(Keys(), "n");
        for (const char* misplaced :
             {"/.VARDO Technologies", "/tmp/.VARDO Technologies", ".VARDO Technologies"})
            EXPECT_FALSE(std::filesystem::exists(misplaced)) << misplaced;
        std::filesystem::remove(tree_.Path(INSTALLED));
        tree_.Write(INSTALLED, List("1.0.0.0", Element("i")));
    }
}

TEST_F(ProductList, IsRefreshedFromItsAddress) {
    const std::string old = List("1.0.0.0", Element("old"));
    const struct {
        const char* situation;
        std::string current;
        std::string served;
        bool fetched;
        bool refreshed;
        const char* keys;
    } cases[] = {
        {"a newer list", old, List("1.0.0.1", Element("new")), true, true, "new"},
        {"the same version", old, List("1.0.0.0", Element("new")), true, true, "old"},
        {"an older list", old, List("0.9.0.0", Element("new")), true, true, "old"},
        {"a list without version", old, List("", Element("new")), true, true, "old"},
        {"a list without products", old, List("2.0.0.0", ""), true, false, "old"},
        {"not XML", old, "404 not found", true, false, "old"},
        {"nothing there", old, "", true, false, "old"},
        {"no address", List("1.0.0.0", Element("old"), ""), List("2.0.0.0", Element("new")), false, false,
         "old"},
        {"no product to check", List("1.0.0.0", "<Product/>"), List("2.0.0.0", Element("new")), false, false,
         ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        downloader_->addresses.clear();
        tree_.Write(INSTALLED, c.current);
        if (c.served.empty())
            downloader_->Forget(ADDRESS);
        else
            downloader_->Serve(ADDRESS, c.served);
        controller_.LoadProductList();
        EXPECT_EQ(controller_.UpdateProductList(), c.refreshed);
        EXPECT_EQ(downloader_->addresses.size(), c.fetched ? 1U : 0U);
        EXPECT_EQ(Keys(), c.keys);
        const bool stored = std::string(c.keys) == "new";
        EXPECT_EQ(ReadWholeFile(tree_.Path(INSTALLED)), stored ? c.served : c.current);
        EXPECT_TRUE(FetchedFilesAreGone());
    }
    EXPECT_FALSE(std::filesystem::exists(tree_.Path(USERS)));
}

TEST_F(ProductList, NothingIsFetchedWithoutADownloaderOrAList) {
    EXPECT_FALSE(controller_.UpdateProductList());
    tree_.Write(INSTALLED, List("1.0.0.0", Element("i")));
    controller_.LoadProductList();
    controller_.SetDownloader(nullptr);
    EXPECT_FALSE(controller_.UpdateProductList());
    EXPECT_TRUE(downloader_->addresses.empty());
}

TEST_F(ProductList, ANewerListGoesToTheUserWhenTheInstallationCannotBeWritten) {
    tree_.MakeDirectory(INSTALLED);
    tree_.Write(USERS, List("1.0.0.0", Element("u")));
    const std::string newest = List("2.0.0.0", Element("n"));
    downloader_->Serve(ADDRESS, newest);
    for (const bool hasCopy : {true, false}) {
        ASSERT_TRUE(controller_.LoadProductList());
        if (!hasCopy)
            std::filesystem::remove_all(tree_.Path("home"));
        downloader_->Serve(ADDRESS, hasCopy ? newest : List("3.0.0.0", Element("o")));
        EXPECT_TRUE(controller_.UpdateProductList());
        CProductListController later(environment_);
        EXPECT_TRUE(later.LoadProductList());
        EXPECT_EQ(later.GetProducts()[0]->GetKey(), CAtlString(hasCopy ? "n" : "o"));
    }
}

TEST_F(ProductList, AStoredListCanBeReadByEveryUser) {
    tree_.Write(USERS, List("1.0.0.0", Element("u")));
    downloader_->Serve(ADDRESS, List("2.0.0.0", Element("n")));
    controller_.LoadProductList();
    ASSERT_TRUE(controller_.UpdateProductList());
    struct stat status {};
    ASSERT_EQ(stat(tree_.Path(INSTALLED).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0644U);
}

TEST_F(ProductList, EveryProductIsFoundAndCheckedInOrder) {
    EXPECT_FALSE(controller_.FindInstalled());
    EXPECT_FALSE(controller_.CheckForUpdates());
    tree_.Write(INSTALLED, List("1.0.0.0", Element("a") + Element("absent") + Element("c") + Element("d")));
    Install("a", false);
    Install("c", true);
    Install("d", false);
    controller_.LoadProductList();
    EXPECT_TRUE(controller_.FindInstalled());
    EXPECT_FALSE(controller_.IsAnyUpdateAvailable());

    std::string events;
    const auto record = [&events](const char* event) {
        return [&events, event](const boost::shared_ptr<IProduct>& product) {
            events += event + product->GetKey().ToQString().toStdString() + " ";
        };
    };
    downloader_->whileDownloading = [&events] { events += "get "; };
    controller_.SetCheckStartedCallback(record("+"));
    controller_.SetCheckFinishedCallback(record("-"));
    downloader_->announced.clear();
    EXPECT_TRUE(controller_.CheckForUpdates());
    using Addresses = std::vector<std::string>;
    EXPECT_EQ(downloader_->announced, (std::vector<Addresses>{downloader_->addresses, Addresses()}));
    EXPECT_EQ(events, "+a get -a +absent -absent +c get -c +d get -d ");
    EXPECT_TRUE(controller_.GetLastCheckResult());
    EXPECT_TRUE(controller_.IsAnyUpdateAvailable());

    downloader_->Forget("http://h/c");
    controller_.SetCheckStartedCallback({});
    controller_.SetCheckFinishedCallback({});
    EXPECT_FALSE(controller_.CheckForUpdates());
    EXPECT_FALSE(controller_.GetLastCheckResult());
    EXPECT_EQ(downloader_->addresses.size(), 6U);
}

TEST_F(ProductList, ADismissedNotificationIsNoNews) {
    tree_.Write(INSTALLED, List("1.0.0.0", "<Notification Name='dismissed in a list' BaseXML='N'/>"));
    tree_.Write("share/N.xml", "<Notification URL='http://h' File='n'/>");
    Install("SoftwareUpdateVBS", false);
    downloader_->Serve("http://h/n",
                       "<Notification WebPage='p' StartDate='20000101' StopDate='20991231'>"
                       "<Text><en value='x'/></Text></Notification>");
    controller_.LoadProductList();
    controller_.FindInstalled();
    EXPECT_TRUE(controller_.CheckForUpdates());
    EXPECT_TRUE(controller_.IsAnyUpdateAvailable());
    controller_.GetProducts()[0]->RunAction(0);
    EXPECT_FALSE(controller_.IsAnyUpdateAvailable());
}

TEST_F(ProductList, MayBeReplacedWhileItIsChecked) {
    tree_.Write(INSTALLED, List("1.0.0.0", Element("a") + Element("b")));
    Install("a", true);
    Install("b", true);
    controller_.LoadProductList();
    controller_.FindInstalled();
    downloader_->whileDownloading = [this] { controller_.LoadProductList(); };
    EXPECT_TRUE(controller_.CheckForUpdates());
    EXPECT_EQ(downloader_->addresses, (std::vector<std::string>{"http://h/a", "http://h/b"}));
}
