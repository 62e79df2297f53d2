// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Installed products: their versions on the disk, their checks, and how they disable one another.
#include <tuple>

#include "ProductTest.h"
#include "products/CProductsByKey.h"

namespace {

class InstalledProducts : public ProductTest {
protected:
    InstalledProducts() {
        downloader_->Serve("http://h/r.xml", "<u Location='Server'><Product UpdateVersion='3.0.0.0'/></u>");
    }

    Product MakeB(const std::string& disablers = "") {
        return Make("<Product Name='Bee' BaseXml='B'><DisableUpdatesIfInstalled>" + disablers +
                    "</DisableUpdatesIfInstalled></Product>");
    }
};

std::string Disabler(const std::string& uid, const std::string& from, const std::string& to) {
    return "<Disabler uid='" + uid + "' versionFrom='" + from + "' versionTo='" + to + "'/>";
}

}  // namespace

TEST_F(InstalledProducts, FilesThatBelongToABaseName) {
    for (const char* file : {"B.xml", "B2.xml", "B10.xml", "B2 beta.xml", "B2.5.xml"}) {
        Install(file, "1.0.0.0");
        EXPECT_TRUE(MakeB()->FindInstalled()) << file;
        std::filesystem::remove(shared_.Path(file));
    }
    // Together, because removing several neighbours from what was listed must not skip any.
    for (const char* file : {"BA.xml", "BB.xml", "BC.xml", "BD.xml", "b.xml", "B-2.xml", "B2.xml.bak",
                             "AB.xml", ".B.xml", "B.XML", "B.2.xml", "sub/B.xml"})
        Install(file, "1.0.0.0");
    EXPECT_FALSE(MakeB()->FindInstalled());
}

TEST_F(InstalledProducts, EachVersionIsOneItemAndTheHighestIsChecked) {
    Install("B.xml", "2.0.0.0");
    Install("B1.xml", "1.0.0.0");
    Install("B2.xml", "02.0.0.0");
    Install("B3.xml", "");
    shared_.MakeDirectory("B4.xml");
    const Product product = MakeB();
    EXPECT_TRUE(product->FindInstalled());
    ASSERT_EQ(product->GetItemCount(), 2U);
    EXPECT_NE(product->GetInstalledVersion(0), product->GetInstalledVersion(1));
    EXPECT_FALSE(product->CheckForUpdates()) << "no downloader";
    EXPECT_TRUE(Check(product));
    EXPECT_EQ(downloader_->addresses, std::vector<std::string>{"http://h/r.xml"});
    for (const unsigned item : {0U, 1U})
        EXPECT_EQ(product->IsChecked(item), product->GetInstalledVersion(item) == CAtlString("2.0.0.0"));
    environment_->pagesOpen = false;
    EXPECT_FALSE(product->RunAction(0)) << "no browser";
    EXPECT_FALSE(Check(MakeB())) << "not looked for";
}

TEST_F(InstalledProducts, AreDisabledByOthersInTheGivenVersions) {
    const std::string other = Disabler("X", "", "9.0.0.0");
    const std::tuple<const char*, std::string, bool, const char*> cases[] = {
        {"none", "", false, ""},
        {"in range", Disabler("K", "1.0.0.0", "1.5.0.0"), true, "K K\n"},
        {"out of range", Disabler("K", "1.6.0.0", "1.9.9.9"), false, "K K\nB2 K\n"},
        {"another case", Disabler("k", "1.0.0.0", "1.9.9.9"), false, "K k\nB2 k\n"},
        {"no ends", "<Disabler uid='K'/>", false, "K K\nB2 K\n"},
        {"the second of each", other + Disabler("B2", "", "9.0.0.0"), true, "K X\nK B2\nB2 X\nB2 B2\n"},
        {"itself, and one of its own key", Disabler("B", "", "9.0.0.0"), false, "K B\nB2 B\n"},
    };
    Install("B.xml", "1.0.0.0");
    Install("K.xml", "1.5.0.0");
    Install("B2.xml", "1.0.0.0");
    for (const auto& [situation, disablers, disabled, lines] : cases) {
        SCOPED_TRACE(situation);
        const Product product = MakeB(disablers);
        const IProduct::List all = {product, MakeB(), Make("<Product Name='Kay' BaseXml='K'/>"),
                                    Make("<Product Name='absent' BaseXml='Z'/>"),
                                    Make("<Product Name='Bee 2' BaseXml='B2'/>")};
        for (const Product& each : all)
            each->FindInstalled();
        testing::internal::CaptureStdout();
        product->ApplyDisablers(all);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), lines);
        IDecisionObserver deaf;
        const Product quiet = MakeB(disablers);
        quiet->SetObserver(deaf);
        quiet->FindInstalled();
        quiet->ApplyDisablers(all);
        EXPECT_EQ(quiet->HasAction(0), !disabled) << "found by key";
        EXPECT_TRUE(Check(product) && product->IsUpdateAvailable(0));
        EXPECT_EQ(product->HasAction(0), !disabled);
        EXPECT_EQ(product->GetLatestVersion(0), CAtlString(disabled ? "1.0.0.0" : "3.0.0.0"));
    }
}
