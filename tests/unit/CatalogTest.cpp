// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "CatalogTest.h"

#include <QSettings>
#include <QStringDecoder>
#include <QStringEncoder>
#include <algorithm>
#include <filesystem>

#include "i18n/CResourceManagerLinux.h"
#include "i18n/Language.h"
#include "i18n/LanguageTable.h"
#include "net/QtDownloader.h"
#include "products/CProductListController.h"

namespace fs = std::filesystem;

namespace {

const std::string SITE = "http://127.0.0.1:8080/";

fs::path MachineSettings() {
    return fs::path(qEnvironmentVariable("XDG_CONFIG_DIRS").toStdString()) / "VARDO Technologies";
}

bool IsStrings(const std::string& file) {
    return file.ends_with(".strings");
}

}  // namespace

CatalogTest::CatalogTest() {
    LayOut();
    SetLocaleOverride("en_US");
    WriteRegistryString(HKEY_LOCAL_MACHINE, "Software\\VARDO Technologies\\Language Setup", "Path",
                        shared_.Path("program").c_str());
    QSettings(QSettings::NativeFormat, QSettings::SystemScope, "VARDO Technologies", "Language Setup")
        .setValue("Path", QString::fromStdString(shared_.Path("program")));
}

CatalogTest::~CatalogTest() {
    SetLocaleOverride({});
    fs::remove_all(MachineSettings());
    fs::remove(MachineSettings().string() + ".conf");
}

void CatalogTest::LayOut() {
    fs::remove_all(shared_.Root());
    const std::string samples = VARDO_SOURCE_DIR "/samples/";
    CopyTree(samples + "installation", shared_.Path("program"));
    CopyTree(samples + "site", shared_.Path("site"));
    CopyTree(samples + "machine/VARDO Technologies", MachineSettings().string());
    CopyTree(OwnLanguagesFolder().toStdString(), shared_.Path("program/Languages"));
    environment_->sharedDataFolder = CVardoDirectoryPath(shared_.Path("program/share").c_str());
}

void CatalogTest::CopyTree(const std::string& from, const std::string& to) const {
    for (const auto& entry : fs::recursive_directory_iterator(from)) {
        const fs::path target = fs::path(to) / fs::relative(entry.path(), from);
        if (entry.is_directory())
            continue;
        QByteArray bytes = QByteArray::fromStdString(ReadWholeFile(entry.path()));
        bytes.replace("@PORT@", "8080");
        bytes.replace("@PROGRAM@", shared_.Path("program").c_str());
        fs::create_directories(target.parent_path());
        std::ofstream(target, std::ios::binary) << bytes.toStdString();
    }
}

void CatalogTest::Alter(const std::string& file, const QString& what, const QString& with) {
    const QByteArray bytes = QByteArray::fromStdString(ReadWholeFile(shared_.Path(file)));
    QString text =
        IsStrings(file) ? QString(QStringDecoder(QStringDecoder::Utf16)(bytes)) : QString::fromUtf8(bytes);
    ASSERT_TRUE(text.contains(what)) << file << ": " << what.toStdString();
    text.replace(text.indexOf(what), what.isEmpty() ? text.size() : what.size(), with);
    QStringEncoder utf16(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
    shared_.Write(file, (IsStrings(file) ? QByteArray(utf16(text)) : text.toUtf8()).toStdString());
}

CFindings CatalogTest::CheckBut(const CFindings& others) const {
    const auto known = others.Sorted();
    CFindings findings;
    for (const Finding& each : CheckCatalog(CCatalog(QString::fromStdString(shared_.Root()), {})).Sorted())
        if (std::none_of(known.begin(), known.end(), [&](const Finding& other) {
                return other.file == each.file && other.line == each.line && other.text == each.text;
            }))
            findings.Add(each.file, each.line, each.code, each.text);
    return findings;
}

int CatalogTest::Count(const CFindings& findings, const FindingCode& code, const std::string& file,
                       int line) const {
    const auto all = findings.Sorted();
    return static_cast<int>(std::count_if(all.begin(), all.end(), [&](const Finding& finding) {
        return std::string(finding.code.name) == code.name && (line == 0 || finding.line == line) &&
               finding.file.toStdString() == shared_.Path(file);
    }));
}

std::vector<std::string> CatalogTest::Rows() {
    downloader_ = boost::make_shared<FakeDownloader>();
    for (const auto& entry : fs::recursive_directory_iterator(shared_.Path("site")))
        if (!entry.is_directory())
            downloader_->Serve(SITE + fs::relative(entry.path(), shared_.Path("site")).string(),
                               ReadWholeFile(entry.path()));
    CProductListController controller(environment_);
    controller.SetDownloader(downloader_);
    controller.LoadProductList();
    controller.UpdateProductList();
    controller.FindInstalled();
    controller.CheckForUpdates();
    std::vector<std::string> rows;
    for (const auto& product : controller.GetProducts())
        for (unsigned item = 0; item < product->GetItemCount(); ++item)
            rows.push_back(Row(*product, item));
    return rows;
}

std::string CatalogTest::Row(IProduct& product, unsigned item) {
    environment_->openedPages.clear();
    QString action = "-";
    if (product.HasAction(item)) {
        action = product.GetActionTexts()[product.IsUpdateAvailable(item)];
        product.RunAction(item);
    }
    const CAtlString page = environment_->openedPages.empty() ? "" : environment_->openedPages.back();
    return QStringList{product.GetName(), product.GetInstalledVersion(item).ToQString(),
                       product.GetLatestVersion(item).ToQString(), action, page.ToQString()}
        .join('|')
        .toStdString();
}

std::string CatalogTest::InGerman(const char* key, const std::string& languages) {
    CResourceManagerLinux manager;
    manager.Init(ParseHexLanguageId(LanguageIdFromCode("de")), languages.c_str(), "VARDOProductUpdate");
    return manager.GetString(key).ToQString().toStdString() + (IsRightToLeft("he") ? "|<" : "|>");
}
