// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What an observer learns of the files that products read: the first reason why each does not count.
#include "DataTable.h"
#include "ProductTest.h"
#include "products/CExplanation.h"
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

// A kind of product: its element in the list, its local file and a good one, and the address of the remote
// file.
struct Kind {
    const char* element;
    const char* file;
    const char* good;
    const char* address;
};

const Kind PRODUCT{
    "<Product Name='n' BaseXml='B'/>", "B.xml",
    "<l><Product CurrentVersion='1' RemoteVersionFile='r' RemoteVersionFileURL='http://h'/></l>",
    "http://h/r"};
const Kind NOTIFICATION{"<Notification BaseXML='N'/>", "N.xml", "<Notification URL='http://h' File='r'/>",
                        "http://h/r"};
const Kind GALLERY{"<Gallery Name='n' GUID='{G}' DefaultUrl='http://h'/>", "Uninstall/updateinfo.xml",
                   "<i><category id='a' version='1'/></i>", "http://h/gallery_categories.xml"};

// The message between two days for "DATES <day> <day>".
std::string Message(const QString& cell) {
    if (!cell.startsWith("DATES "))
        return cell.toStdString();
    return QString(
               "<Notification WebPage='p' StartDate='%1' StopDate='%2'><Text><en "
               "value='t'/></Text></Notification>")
        .arg(cell.section(' ', 1, 1), cell.section(' ', 2))
        .toStdString();
}

}  // namespace

TEST_F(ProductTest, AnObserverLearnsWhyFilesDoNotCount) {
    const std::string manifest = shared_.Path("m.xml");
    for (const QStringList& row : DataTable("verdicts.txt")) {
        SCOPED_TRACE(row.join(" | ").toStdString());
        const QString name = row[0];
        const Kind& kind = name == "product"                                  ? PRODUCT
                           : name == "notification" || name == "beside board" ? NOTIFICATION
                                                                              : GALLERY;
        if (name == "beside board")
            Install("SoftwareUpdateVBS.xml", "9.0.0.0");
        if (name == "unrecorded")
            RecordGallery("", "", "/bin/true");
        else if (name == "no manifest")
            RecordGallery("", "m", "/bin/true");
        else
            RecordGallery(manifest, "", name == "without tool" ? "" : "/bin/true");
        std::filesystem::remove(shared_.Path(kind.file));
        if (row[1] != "-")
            shared_.Write(kind.file, row[1] == "GOOD" ? kind.good : row[1].toStdString());
        downloader_->Forget(kind.address);
        if (row[2] != "-")
            downloader_->Serve(kind.address, Message(row[2]));

        Verdicts verdicts;
        const Product product = Make(kind.element);
        product->SetObserver(verdicts);
        const bool isFound = product->FindInstalled();
        const bool isAccepted = isFound && Check(product);
        product->SetObserver(ConsoleObserver());
        EXPECT_EQ(isFound, row[3] != "local");
        EXPECT_EQ(isFound && product->IsChecked(0), isAccepted);
        EXPECT_EQ(VerdictText(verdicts.local), isFound ? "" : row[4]);
        EXPECT_EQ(VerdictText(verdicts.remote), isFound ? row[4] : "it was not read");
        const bool isShown = &kind == &NOTIFICATION ? row[3].isEmpty() : isFound;
        EXPECT_EQ(product->GetItemCount(), isShown ? 1U : 0U);
    }
}
