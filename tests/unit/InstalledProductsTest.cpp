// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Installed products: their versions on the disk, their checks, and how they disable one another.
#include <gtest/gtest.h>
#include <filesystem>
#include <string>
#include <vector>

#include "ProductTest.h"

namespace {

class InstalledProducts : public ProductTest {
protected:
    InstalledProducts() {
        downloader_->Serve(
            "http://h/r.xml",
            "<u Location='Server'><Product UpdateVersion='3.0.0.0' UpdateWebPage='http://new'/></u>");
        downloader_->Serve("http://h/nopage.xml",
                           "<u Location='Server'><Product UpdateVersion='3.0.0.0'/></u>");
    }

    Product MakeB(const std::string& disablers = "") {
        return Make(
            "<Product Name='Bee' BaseXml='B' DefaultUrl='http://default'><DisableUpdatesIfInstalled>" +
            disablers + "</DisableUpdatesIfInstalled></Product>");
    }
    // The item with an installed version; the number of items when there is none.
    static unsigned ItemOf(const IProduct& product, const char* version) {
        unsigned item = 0;
        while (item < product.GetItemCount() && product.GetInstalledVersion(item) != CAtlString(version))
            ++item;
        return item;
    }
};

}  // namespace

TEST_F(InstalledProducts, AreMadeFromUsableElementsAlone) {
    EXPECT_FALSE(CreateProduct(nullptr, environment_));
    EXPECT_FALSE(Make("<Product Name='n'/>"));
    EXPECT_FALSE(Make("<Product BaseXml='b'/>"));
    EXPECT_FALSE(Make("<Product Name='' BaseXml='b'/>"));
    EXPECT_FALSE(Make("<product Name='n' BaseXml='b'/>"));
    const Product product = Make("<Product Name='Ünï 中' BaseXml='b'/>");
    ASSERT_TRUE(product);
    EXPECT_EQ(product->GetName(), QString("Ünï 中"));
    EXPECT_EQ(product->GetKey(), CAtlString("b"));
    EXPECT_EQ(product->GetDescriptionName(), CAtlString("b"));
    EXPECT_EQ(product->GetActionTexts(), (QList<QString>{"Current", "Update"}));
    EXPECT_EQ(product->GetItemCount(), 0U);
    EXPECT_FALSE(Check(product));
}

TEST_F(InstalledProducts, FilesThatBelongToABaseName) {
    const struct {
        const char* file;
        bool belongs;
    } cases[] = {
        {"B.xml", true},   {"B2.xml", true}, {"B10.xml", true},  {"B2 beta.xml", true}, {"B2.5.xml", true},
        {"BX.xml", false}, {"b.xml", false}, {"B-2.xml", false}, {"B2.xml.bak", false}, {"AB.xml", false},
        {".B.xml", false}, {"B.XML", false}, {"B.2.xml", false}, {"sub/B.xml", false},
    };
    for (const auto& c : cases) {
        Install(c.file, "1.0.0.0");
        EXPECT_EQ(MakeB()->FindInstalled(), c.belongs) << c.file;
        std::filesystem::remove(shared_.Path(c.file));
    }
    // Removing several neighbours from what was listed must not skip any.
    for (const char* file : {"BA.xml", "BB.xml", "BC.xml", "BD.xml", "B7.xml"})
        Install(file, std::string("1.0.0.") + std::to_string(file[1]));
    const Product product = MakeB();
    product->FindInstalled();
    EXPECT_EQ(product->GetItemCount(), 1U);
}

TEST_F(InstalledProducts, EachVersionIsOneItemAndTheHighestIsChecked) {
    Install("B.xml", "2.0.0.0");
    Install("B1.xml", "1.0.0.0");
    Install("B2.xml", "02.0.0.0");
    Install("B3.xml", "");
    shared_.Write("B4.xml", "<l><Product CurrentVersion='9.0.0.0'");
    shared_.MakeDirectory("B5.xml");
    const Product product = MakeB();
    ASSERT_TRUE(product->FindInstalled());
    ASSERT_EQ(product->GetItemCount(), 2U);
    const unsigned current = ItemOf(*product, "2.0.0.0");
    const unsigned older = ItemOf(*product, "1.0.0.0");
    ASSERT_NE(current + older, 2U * product->GetItemCount());

    EXPECT_FALSE(product->CheckForUpdates());
    ASSERT_TRUE(Check(product));
    EXPECT_EQ(downloader_->addresses, std::vector<std::string>{"http://h/r.xml"});
    for (const unsigned item : {current, older}) {
        EXPECT_EQ(product->IsChecked(item), item == current);
        EXPECT_EQ(product->IsUpdateAvailable(item), item == current);
        EXPECT_EQ(product->HasAction(item), item == current);
        EXPECT_TRUE(product->IsWanted(item));
        EXPECT_FALSE(product->IsHighlighted(item));
        product->SetRow(item, static_cast<int>(item) + 7);
        EXPECT_EQ(product->GetRow(item), static_cast<int>(item) + 7);
    }
    EXPECT_EQ(product->GetLatestVersion(current), CAtlString("3.0.0.0"));
    EXPECT_EQ(product->GetLatestVersion(older), CAtlString(""));
}

TEST_F(InstalledProducts, TheActionOpensTheUpdatesPageOrElseTheProducts) {
    const struct {
        const char* situation;
        const char* remote;
        const char* page;
    } cases[] = {
        {"the update has a page", "r.xml", "http://new"},
        {"it has none", "nopage.xml", "http://default"},
        {"it was not found", "missing.xml", "http://default"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        Install("B.xml", "1.0.0.0", c.remote);
        const Product product = MakeB();
        product->FindInstalled();
        Check(product);
        for (const bool opens : {true, false}) {
            environment_->pagesOpen = opens;
            EXPECT_EQ(product->RunAction(0), opens);
            EXPECT_EQ(environment_->openedPages.back(), CAtlString(c.page));
        }
    }
}

TEST_F(InstalledProducts, AreDisabledByOthersInTheGivenVersions) {
    const struct {
        const char* situation;
        const char* disablers;
        bool disabled;
        const char* lines;
    } cases[] = {
        {"none", "", false, ""},
        {"in range", "<Disabler uid='K' versionFrom='1.0.0.0' versionTo='1.9.9.9'/>", true, "K K\n"},
        {"out of range", "<Disabler uid='K' versionFrom='1.6.0.0' versionTo='1.9.9.9'/>", false,
         "K K\nB2 K\n"},
        {"another case", "<Disabler uid='k' versionFrom='1.0.0.0' versionTo='1.9.9.9'/>", false,
         "K k\nB2 k\n"},
        {"up to the upper end", "<Disabler uid='K' versionTo='1.5.0.0'/>", true, "K K\n"},
        {"a lower end alone reaches down", "<Disabler uid='K' versionFrom='2.0.0.0'/>", true, "K K\n"},
        {"no ends", "<Disabler uid='K'/>", false, "K K\nB2 K\n"},
        {"the second disabler, the second product",
         "<Disabler uid='X' versionTo='9.0.0.0'/><Disabler uid='B2' versionTo='9.0.0.0'/>", true,
         "K X\nK B2\nB2 X\nB2 B2\n"},
        {"itself, and one of its own key", "<Disabler uid='B' versionTo='9.0.0.0'/>", false, "K B\nB2 B\n"},
    };
    Install("B.xml", "1.0.0.0");
    Install("K.xml", "1.5.0.0");
    Install("B2.xml", "1.0.0.0");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.situation);
        const Product product = MakeB(c.disablers);
        const IProduct::List all = {product, MakeB(), Make("<Product Name='Kay' BaseXml='K'/>"),
                                    Make("<Product Name='absent' BaseXml='Z'/>"),
                                    Make("<Product Name='Bee 2' BaseXml='B2'/>")};
        for (const Product& each : all)
            each->FindInstalled();
        testing::internal::CaptureStdout();
        product->ApplyDisablers(all);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), c.lines);
        EXPECT_TRUE(Check(product));
        EXPECT_EQ(product->HasAction(0), !c.disabled);
        EXPECT_TRUE(product->IsUpdateAvailable(0));
        EXPECT_EQ(product->GetLatestVersion(0), CAtlString(c.disabled ? "1.0.0.0" : "3.0.0.0"));
    }
}
