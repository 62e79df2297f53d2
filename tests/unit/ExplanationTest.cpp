// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The first reason why a file does not count, and how a terminal shows the report's texts.
#include <gtest/gtest.h>
#include <QJsonObject>

#include "DataTable.h"
#include "ProductTest.h"
#include "platform/files/Addresses.h"
#include "platform/text/PrintableText.h"
#include "products/CExplanation.h"
#include "products/IDecisionObserver.h"
#include "report/CTextTable.h"
#include "support/TextPrinting.h"

namespace {

struct Verdicts : IDecisionObserver {
    Verdict local = Verdict::NOT_READ;
    Verdict remote = Verdict::NOT_READ;
    void OnLocalFile(const CVardoFilePath& /*file*/, Verdict verdict, const CVersionString&) override {
        local = verdict;
    }
    void OnRemoteFile(Verdict verdict) override { remote = verdict; }
};

// A kind of product: its element in the list, its local file, good contents of that, and the remote address.
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

// For "DATES <day> <day>", a message for the days between; any other cell stands for itself.
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

TEST(ReportTable, LinesUpWhateverTheNamesAreMadeOf) {
    CTextTable table({"NAME", "STATE"});
    for (const char* name : {"Board", "電子黒板", "Planéta", "Plane\u0301ta", "\x1b[2J\n", "100 %1"})
        table.AddRow({name, "current"});
    table.AddRow({"", ""});
    EXPECT_EQ(table.ToText(), QString("NAME      STATE\n"
                                      "Board     current\n"
                                      "電子黒板  current\n"
                                      "Planéta   current\n"
                                      "Plane\u0301ta   current\n"
                                      "\uFFFD[2J\uFFFD     current\n"
                                      "100 %1    current\n"
                                      "-         -\n"));
}

TEST(ReportedAddress, HoldsNoPassword) {
    for (const QStringList& row : DataTable("addresses.txt"))
        EXPECT_EQ(WithoutPassword(row[0]), row[1]);
    // In linear time.
    const QString many = QStringLiteral("//a:b").repeated(200'000);
    EXPECT_EQ(WithoutPassword(CAtlString(many)), many);
}

TEST(PrintableText, HidesAndReordersNothing) {
    const QString text = QString::fromUtf8("a\u202Eb\u200Bc\u009Bd\u007Fe\u2028f\u200Dg\nh") + QChar(0xD800);
    EXPECT_EQ(Printable(text), QString::fromUtf8("a\uFFFDb\uFFFDc\uFFFDd\uFFFDe\uFFFDf\u200Dg\uFFFDh\uFFFD"));
    const QJsonDocument json(QJsonObject{{"k", QString::fromUtf8("\u202E\u009B\U000E0041\n\u4E2D")}});
    EXPECT_EQ(PrintableJson(json), "{\n    \"k\": \"\\u202e\\u009b\\udb40\\udc41\\n\u4E2D\"\n}\n");
    EXPECT_EQ(QJsonDocument::fromJson(PrintableJson(json)), json);
    EXPECT_EQ(PrintableNarrow(L"\u011B]0;x\u0107\n\u019B31m\u00E9 \u4E00ok"),
              "?]0;x??"
              "?31m\xE9 ?ok");
    EXPECT_EQ(Cut(QString(600, 'x')), QString(499, 'x') + "\u2026");
    EXPECT_EQ(Cut(QString::fromUtf8("ab\U0001F600c"), 4), "ab\u2026") << "no half of a character";
}
