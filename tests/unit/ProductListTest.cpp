// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The product list: how it is read, chosen among copies and refreshed, and how its products are checked.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <filesystem>
#include <string>
#include <tuple>

#include "DataTable.h"
#include "ProductTest.h"
#include "products/CProductListController.h"
#include "support/ScopedEnvironment.h"

namespace {

namespace fs = std::filesystem;
using Addresses = std::vector<std::string>;

const std::string INSTALLED = "products.xml";
const std::string USERS = "home/.VARDO Technologies/Product Update/products.xml";
const std::string ADDRESS = "http://h/products.xml";

std::string Element(const std::string& key) {
    return "<Product Name='" + key + "' BaseXml='" + key + "'/>";
}

std::string List(const std::string& version, const std::string& products) {
    return "<Products Version='" + version + "' Url='" + ADDRESS + "'>" + products + "</Products>";
}

std::string Repeated(const std::string& text, int times) {
    return QByteArray::fromStdString(text).repeated(times).toStdString();
}

class ProductList : public ProductTest {
protected:
    ProductList() {
        controller_.SetDownloader(downloader_);
        downloader_->Serve("http://h/c", "<u Location='Server'><Product UpdateVersion='2.0.0.0'/></u>");
    }

    // The keys of the current list's products.
    std::string Keys() const {
        std::string keys;
        for (const auto& product : controller_.GetProducts())
            keys += product->GetKey().ToQString().toStdString();
        return keys;
    }
    // Writes a file, or removes it for an empty text.
    void Put(const std::string& path, const std::string& contents) {
        fs::remove_all(shared_.Path(path));
        if (!contents.empty())
            shared_.Write(path, contents);
    }
    void LoadWith(const std::string& products) {
        Put(INSTALLED, List("1.0.0.0", products));
        EXPECT_TRUE(controller_.LoadProductList());
    }

    ScopedEnvironment home_{"HOME", shared_.Path("home").c_str()};
    CProductListController controller_{environment_};
};

}  // namespace

TEST_F(ProductList, IsReadInOrderWithoutWhatItDoesNotKnow) {
    LoadWith(
        "text" + Element("a") + "<!-- no --><product Name='x' BaseXml='x'/><Product Name='no base'/>" +
        "<Product BaseXml='no name'/><Product Name='' BaseXml='no name'/><Notification Name='no base'/>" +
        Element("b") + "<Gallery GUID='g' DefaultUrl='u'/><Gallery Name='n' DefaultUrl='u'/>" +
        "<Gallery Name='n' GUID='g'/><Other/>" + Element("a"));
    EXPECT_FALSE(CreateProduct(nullptr, environment_));
    EXPECT_EQ(Keys(), "aba");
}

TEST_F(ProductList, TheNewerCopyIsTaken) {
    const auto copy = [](const QString& version, const char* key) {
        return version == "-" ? "" : List(version.toStdString(), Element(key));
    };
    for (const QStringList& row : DataTable("list-versions.txt")) {
        Put(USERS, copy(row[0], "u"));
        Put(INSTALLED, copy(row[1], "i"));
        EXPECT_EQ(controller_.LoadProductList(), !row[2].isEmpty()) << row.join(" | ").toStdString();
        EXPECT_EQ(Keys(), row[2].toStdString()) << row.join(" | ").toStdString();
    }
    Put(USERS, "<Products Version='9.0.0.0'");
    EXPECT_TRUE(controller_.LoadProductList() && Keys() == "i") << "a damaged copy counts for nothing";
    Put(USERS, List("1.0.0.1", "<Other/>"));
    EXPECT_FALSE(controller_.LoadProductList()) << "a newer copy that is empty does count";
}

TEST_F(ProductList, IsRefreshedFromItsAddress) {
    const std::string old = List("1.0.0.0", Element("old"));
    const std::string newer = List("1.0.0.1", Element("new"));
    const std::string notices = Repeated("<Notification Name='n' BaseXML='b'/>", 101);
    const std::string disabled = "<Product Name='n' BaseXml='n'><DisableUpdatesIfInstalled>" +
                                 Repeated("<Disabler/>", 101) + "</DisableUpdatesIfInstalled></Product>";
    const std::tuple<const char*, std::string, std::string, bool, std::string> cases[] = {
        {"no list", "", newer, false, ""},
        {"a newer list", old, newer, true, "new"},
        {"an older list", old, List("0.9.0.0", Element("new")), true, "old"},
        {"a list without products", old, List("2.0.0.0", ""), false, "old"},
        {"too many products", old, List("2.0.0.0", Repeated(Element("new"), 5'001)), false, "old"},
        {"too many notices", old, List("2.0.0.0", notices), false, "old"},
        {"too many disablers", old, List("2.0.0.0", disabled), false, "old"},
    };
    for (const auto& [situation, current, served, refreshed, keys] : cases) {
        SCOPED_TRACE(situation);
        const bool fetched = !current.empty();
        downloader_->addresses.clear();
        downloader_->Serve(ADDRESS, served);
        Put(INSTALLED, current);
        controller_.LoadProductList();
        EXPECT_EQ(controller_.UpdateProductList(), refreshed);
        EXPECT_EQ(downloader_->addresses.size(), fetched ? 1U : 0U);
        EXPECT_FALSE(fetched && fs::exists(downloader_->files.back())) << "what was fetched must not stay";
        EXPECT_EQ(Keys(), keys);
        EXPECT_EQ(ReadWholeFile(shared_.Path(INSTALLED)), keys == "new" ? served : current);
    }
    EXPECT_FALSE(fs::exists(shared_.Path(USERS)));

    Put(USERS, old);
    Put(INSTALLED, "");
    downloader_->Serve(ADDRESS, newer);
    shared_.Write("others.xml", old);
    fs::create_symlink("others.xml", shared_.Path(INSTALLED));
    EXPECT_TRUE(controller_.LoadProductList() && controller_.UpdateProductList());
    EXPECT_EQ(ReadWholeFile(shared_.Path("others.xml")), old) << "nothing is written through a link";
    EXPECT_EQ(ReadWholeFile(shared_.Path(INSTALLED)), newer);
    EXPECT_EQ(fs::status(shared_.Path(INSTALLED)).permissions(), fs::perms(0644)) << "for every user";
    controller_.SetDownloader(nullptr);
    EXPECT_FALSE(controller_.UpdateProductList());
}

TEST_F(ProductList, ANewerListIsTheUsersAloneWhenTheInstallationCannotBeWritten) {
    const std::string usual = shared_.Path("home");
    const mode_t mask = umask(0);
    downloader_->Serve(ADDRESS, List("2.0.0.0", Element("n")));
    for (const char* home : {usual.c_str(), static_cast<const char*>(nullptr), "", "/tmp/\xFFhome"}) {
        const ScopedEnvironment scope("HOME", home);
        LoadWith(Element("i"));
        Put(INSTALLED, "");
        shared_.MakeDirectory(INSTALLED);
        EXPECT_TRUE(controller_.UpdateProductList());
        EXPECT_EQ(Keys(), "n");
        EXPECT_EQ(CProductListController(environment_).LoadProductList(), home && home == usual);
        for (const char* parent : {"/", "/tmp/", ""})
            EXPECT_FALSE(fs::exists(std::string(parent) + ".VARDO Technologies")) << parent;
    }
    umask(mask);
    EXPECT_EQ(fs::status(shared_.Path(USERS)).permissions(), fs::perms(0600));
    for (const char* folder : {"home/.VARDO Technologies", "home/.VARDO Technologies/Product Update"})
        EXPECT_EQ(fs::status(shared_.Path(folder)).permissions(), fs::perms(0700)) << folder;
}

TEST_F(ProductList, EveryProductIsFoundAndCheckedInOrder) {
    EXPECT_FALSE(controller_.FindInstalled() || controller_.CheckForUpdates()) << "no list";
    LoadWith(Element("a") + Element("absent") + Element("c") + Element("d"));
    for (const std::string key : {"a", "c", "d"})
        Install(key + ".xml", "1.0.0.0", key);
    downloader_->announced.clear();
    EXPECT_TRUE(controller_.FindInstalled());
    controller_.BeginFetching();
    EXPECT_FALSE(controller_.IsAnyUpdateAvailable());
    std::string events;
    const auto record = [&events](const char* event) {
        return [&events, event](const Product& product) {
            events += event + product->GetKey().ToQString().toStdString() + " ";
        };
    };
    downloader_->whileDownloading = [&events] { events += "get "; };
    controller_.SetCheckStartedCallback(record("+"));
    controller_.SetCheckFinishedCallback(record("-"));
    EXPECT_TRUE(controller_.CheckForUpdates());
    EXPECT_EQ(downloader_->addresses, (Addresses{"http://h/a", "http://h/c", "http://h/d"}));
    EXPECT_EQ(downloader_->announced, (std::vector<Addresses>{downloader_->addresses, {}}));
    EXPECT_EQ(events, "+a get -a +absent -absent +c get -c +d get -d ");
    EXPECT_TRUE(controller_.GetLastCheckResult() && controller_.IsAnyUpdateAvailable());

    downloader_->whileDownloading = [this] { controller_.LoadProductList(); };
    EXPECT_TRUE(controller_.CheckForUpdates()) << "of products whose list is replaced meanwhile";
    EXPECT_EQ(downloader_->addresses.size(), 6U);
    downloader_->Forget("http://h/c");
    controller_.FindInstalled();
    EXPECT_FALSE(controller_.CheckForUpdates() || controller_.GetLastCheckResult());
}
