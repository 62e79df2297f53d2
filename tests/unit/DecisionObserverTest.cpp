// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What an observer learns of the files that products read: the first reason why each does not count.
#include "ProductTest.h"
#include "products/IDecisionObserver.h"

namespace {

struct Verdicts : IDecisionObserver {
    Verdict local = Verdict::NOT_READ;
    Verdict remote = Verdict::NOT_READ;
    void OnLocalFile(const CVardoFilePath& /*file*/, Verdict verdict, const CVersionString&) override {
        local = verdict;
    }
    void OnRemoteFile(Verdict verdict) override { remote = verdict; }
};

// A product's local file and the one that it fetches from http://h/r; empty: there is none.
struct Files {
    std::string local;
    std::string remote;
    Verdict localVerdict;
    Verdict remoteVerdict;
};

class DecisionObserver : public ProductTest {
protected:
    // The product, found and checked as far as its files allow.
    Product Expect(const char* element, const std::string& file, const std::string& address,
                   const Files& files) {
        Verdicts verdicts;
        std::filesystem::remove(shared_.Path(file));
        if (!files.local.empty())
            shared_.Write(file, files.local);
        downloader_->Forget(address);
        if (!files.remote.empty())
            downloader_->Serve(address, files.remote);
        Product product = Make(element);
        product->SetObserver(verdicts);
        const bool isFound = product->FindInstalled();
        const bool isAccepted = isFound && Check(product);
        EXPECT_EQ(isFound && product->IsChecked(0), isAccepted) << files.remote;
        product->SetObserver(ConsoleObserver());
        EXPECT_EQ(verdicts.local, files.localVerdict) << files.local;
        EXPECT_EQ(verdicts.remote, files.remoteVerdict) << files.local << '\n' << files.remote;
        return product;
    }
};

}  // namespace

using enum Verdict;

TEST_F(DecisionObserver, LearnsWhyDescriptionsDoNotCount) {
    const std::string good =
        "<l><Product CurrentVersion='1' RemoteVersionFile='r' RemoteVersionFileURL='http://h'/></l>";
    const Files rows[] = {
        {"<l", "", NO_XML, NOT_READ},
        {"<l/>", "", NO_PRODUCT, NOT_READ},
        {"<l><Product/></l>", "", NO_VERSION, NOT_READ},
        {"<l><Product CurrentVersion='1'/></l>", "", NO_FOLDER, NOT_READ},
        {"<l><Product CurrentVersion='1' RemoteVersionFileURL='u'/></l>", "", NO_FILE_NAME, NOT_READ},
        {good, "", COUNTS, NOT_FETCHED},
        {good, "<u", COUNTS, NO_XML},
        {good, "<u Location='Client'><Product/></u>", COUNTS, NOT_FOR_CLIENTS},
        {good, "<u><Product/></u>", COUNTS, NOT_FOR_CLIENTS},
        {good, "<u Location='Server'/>", COUNTS, NO_PRODUCT},
        {good, "<u Location='Server'><Product/></u>", COUNTS, COUNTS},
    };
    for (const Files& files : rows)
        Expect("<Product Name='n' BaseXml='B'/>", "B.xml", "http://h/r", files);
}

TEST_F(DecisionObserver, LearnsWhyNotificationsAreNotShown) {
    const auto message = [](const char* page, const char* start, const char* stop) {
        return std::string("<Notification WebPage='") + page + "' StartDate='" + start + "' StopDate='" +
               stop + "'><Text><en value='t'/></Text></Notification>";
    };
    const std::string good = "<Notification URL='http://h' File='r'/>";
    const Files rows[] = {
        {"", "", MISSING, NOT_READ},
        {"<n/>", "", NO_NOTIFICATION, NOT_READ},
        {"<notification URL='http://h' File='r'/>", "", NO_NOTIFICATION, NOT_READ},
        {"<Notification File='r'/>", "", NO_FOLDER, NOT_READ},
        {"<Notification URL='u'/>", "", NO_FILE_NAME, NOT_READ},
        {good, "<n/>", COUNTS, NO_NOTIFICATION},
        {good, "<Notification/>", COUNTS, NO_TEXT},
        {good, "<Notification><Text/><Text><en value='t'/></Text></Notification>", COUNTS, NO_TEXT},
        {good, message("", "20260101", "20261231"), COUNTS, NO_PAGE},
        {good, message("p", "20261301", "20261231"), COUNTS, NO_DATES},
        {good, message("p", "", "20261231"), COUNTS, NO_DATES},
        {good, message("p", "20260101", "2026-12-31"), COUNTS, NO_DATES},
        {good, message("p", "20260315", "20261231"), COUNTS, TOO_EARLY},
        {good, message("p", "20260101", "20260315"), COUNTS, OVER},
        {good, message("p", "20260101", "20261231"), COUNTS, NO_BOARD},
    };
    const auto items = [this](const Files& files) {
        return Expect("<Notification BaseXML='N'/>", "N.xml", "http://h/r", files)->GetItemCount();
    };
    for (const Files& files : rows)
        EXPECT_EQ(items(files), 0U) << files.local << '\n' << files.remote;
    Install("SoftwareUpdateVBS.xml", "9.0.0.0");
    EXPECT_EQ(items({good, message("p", "20260101", "20261231"), COUNTS, COUNTS}), 1U);
}

TEST_F(DecisionObserver, LearnsWhyGalleryContentIsNotChecked) {
    const std::string good = "<i><category id='a' version='1'/></i>";
    const auto expect = [this](const Files& files) {
        const Product product = Expect("<Gallery Name='n' GUID='{G}' DefaultUrl='http://h'/>",
                                       "Uninstall/updateinfo.xml", "http://h/gallery_categories.xml", files);
        EXPECT_EQ(product->GetItemCount(), files.localVerdict == COUNTS ? 1U : 0U) << files.local;
    };
    RecordGallery("", "", "/bin/true");
    expect({good, "", NO_RECORD, NOT_READ});
    RecordGallery(shared_.Path("m.xml"), "", "");
    expect({good, "", NO_TOOL, NOT_READ});
    RecordGallery("", "m", "/bin/true");
    expect({good, "", NO_MANIFEST, NOT_READ});
    RecordGallery(shared_.Path("m.xml"), "", "/bin/true");
    const Files rows[] = {
        {"", "", MISSING, NOT_READ},
        {"<i/>", "", NO_CATEGORY, NOT_READ},
        {"<i><category version='1'/><category id='' version='1'/></i>", "", NO_CATEGORY, NOT_READ},
        {good, "", COUNTS, NOT_FETCHED},
        {good, "<g/>", COUNTS, NO_CATEGORY},
        {good, "<g><categories><category id='b'/></categories></g>", COUNTS, UNKNOWN_CATEGORIES},
        {good, "<g><categories><category id='a'/></categories></g>", COUNTS, COUNTS},
    };
    for (const Files& files : rows)
        expect(files);
}
