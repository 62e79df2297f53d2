// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A maker's folder, made of the samples, which both the check and the program read.
#pragma once

#include "ProductTest.h"
#include "catalog/Checks.h"
#include "i18n/CResourceManagerLinux.h"
#include "i18n/Language.h"
#include "i18n/LanguageTable.h"
#include "support/Utf16Bytes.h"

#include <QSettings>
#include <QStringDecoder>
#include <algorithm>

// The folder holds "program", an installation with the shipped languages, and "site", which is published at
// http://127.0.0.1:8080/.
class CatalogTest : public ProductTest {
public:
    ~CatalogTest() override {
        SetLocaleOverride({});
        std::filesystem::remove_all(MACHINE);
        std::filesystem::remove(MACHINE + ".conf");
    }

protected:
    CatalogTest() {
        LayOut();
        SetLocaleOverride("en_US");
        WriteRegistryString(HKEY_LOCAL_MACHINE, "Software\\VARDO Technologies\\Language Setup", "Path",
                            shared_.Path("program").c_str());
        QSettings(QSettings::NativeFormat, QSettings::SystemScope, "VARDO Technologies", "Language Setup")
            .setValue("Path", QString::fromStdString(shared_.Path("program")));
    }

    // Lays out the folder, in place of what it held.
    void LayOut() {
        std::filesystem::remove_all(shared_.Root());
        const std::string samples = VARDO_SOURCE_DIR "/samples/";
        CopyTree(samples + "installation", shared_.Path("program"));
        CopyTree(samples + "site", shared_.Path("site"));
        CopyTree(samples + "machine/VARDO Technologies", MACHINE);
        CopyTree(OwnLanguagesFolder().toStdString(), shared_.Path("program/Languages"));
        environment_->sharedDataFolder = CVardoDirectoryPath(shared_.Path("program/share").c_str());
    }
    // Replaces the first occurrence of a text in a file, or the whole file for an empty text. Strings files
    // are UTF-16, all others UTF-8.
    void Alter(const std::string& file, const QString& what, const QString& with) {
        const bool isStrings = file.ends_with(".strings");
        const QByteArray bytes = QByteArray::fromStdString(ReadWholeFile(shared_.Path(file)));
        QString text =
            isStrings ? QString(QStringDecoder(QStringDecoder::Utf16)(bytes)) : QString::fromUtf8(bytes);
        ASSERT_TRUE(text.contains(what)) << file << ": " << what.toStdString();
        text.replace(text.indexOf(what), what.isEmpty() ? text.size() : what.size(), with);
        shared_.Write(file, isStrings ? Utf16Bytes(text.toStdU16String()) : text.toStdString());
    }

    // The lines that the check prints, without the folder's name, except those that others holds.
    QStringList Check(const QStringList& others = {}) const {
        const QString root = QString::fromStdString(shared_.Root());
        QStringList lines = QString::fromUtf8(CheckCatalog(CCatalog(root, {})).ToText()).split('\n');
        lines.replaceInStrings(root + "/", "");
        erase_if(lines, [&](const QString& line) { return line.isEmpty() || others.contains(line); });
        return lines;
    }
    // The number of lines that begin with a place, such as "site/products.xml:3: error", and end with a code.
    static qsizetype Count(const QStringList& findings, const QString& place, const QString& code) {
        return std::count_if(findings.begin(), findings.end(), [&](const QString& line) {
            return line.startsWith(place) && line.endsWith(" [" + code + ']');
        });
    }

    // Publishes the site as it is now.
    void ServeSite() {
        downloader_ = boost::make_shared<FakeDownloader>();
        const std::string site = shared_.Path("site");
        for (const auto& entry : std::filesystem::recursive_directory_iterator(site))
            if (!entry.is_directory())
                downloader_->Serve("http://127.0.0.1:8080" + entry.path().string().substr(site.size()),
                                   ReadWholeFile(entry.path()));
    }
    // The rows of the window after a check.
    std::vector<std::string> Rows() {
        ServeSite();
        CProductListController controller(environment_);
        controller.SetDownloader(downloader_);
        controller.LoadProductList();
        controller.UpdateProductList();
        controller.FindInstalled();
        told_.clear();
        controller.SetFailureCallback([this](const QString& reason) { told_ << reason; });
        controller.CheckForUpdates();
        return RowsOf(controller);
    }
    // The German text for a key, then "|<" if Hebrew is written from right to left, else "|>".
    static std::string InGerman(const char* key, const std::string& languages) {
        CResourceManagerLinux manager;
        manager.Init(ParseHexLanguageId(LanguageIdFromCode("de")), languages.c_str(), "VARDOProductUpdate");
        return manager.GetString(key).ToQString().toStdString() + (IsRightToLeft("he") ? "|<" : "|>");
    }

    // The failures that the last check told.
    QStringList told_;

private:
    void CopyTree(const std::string& from, const std::filesystem::path& to) const {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(from)) {
            if (entry.is_directory())
                continue;
            const std::filesystem::path target = to / std::filesystem::relative(entry.path(), from);
            QByteArray bytes = QByteArray::fromStdString(ReadWholeFile(entry.path()));
            bytes.replace("@PORT@", "8080");
            bytes.replace("@PROGRAM@", shared_.Path("program").c_str());
            std::filesystem::create_directories(target.parent_path());
            std::ofstream(target, std::ios::binary) << bytes.toStdString();
        }
    }

    const std::string MACHINE = qEnvironmentVariable("XDG_CONFIG_DIRS").toStdString() + "/VARDO Technologies";
};
