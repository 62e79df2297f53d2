// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "support/CheckFixture.h"

#include "app/settings/DefaultSettings.h"
#include "platform/settings/SettingsStore.h"

#include <QRegularExpression>
#include <QSettings>

CheckFixture::CheckFixture() {
    const std::string share = tree_.MakeDirectory("share");
    environment_->sharedDataFolder = CVardoDirectoryPath(CAtlString(share.c_str()));
    for (const QSettings::Scope scope : {QSettings::UserScope, QSettings::SystemScope})
        QSettings(scope, "VARDO Technologies").clear();
    StoreSettings(1, 30, 0);
}

void CheckFixture::AddProduct(const std::string& key, const std::vector<std::string>& installed,
                              const std::string& offered, const std::string& name) {
    elements_ += "<Product Name='" + (name.empty() ? key : name) + "' BaseXml='" + key +
                 "' DefaultUrl='http://page/" + key + "'/>";
    const std::string remote =
        "' RemoteVersionFile='" + key + ".xml' RemoteVersionFileURL='http://site'/></U>";
    std::string file = "share/" + key;
    for (const std::string& version : installed) {
        tree_.Write(file + ".xml",
                    std::string("<U><Product CurrentVersion='").append(version).append(remote));
        // The name of the next version's file: a digit must follow the key.
        file += "2";
    }
    if (!offered.empty())
        downloader_->Serve("http://site/" + key + ".xml",
                           "<U Location='Server'><Product UpdateVersion='" + offered + "'/></U>");
}

void CheckFixture::Install() {
    const std::string list =
        "<Products Version='1.0.0.0' Url='http://site/products.xml'>" + elements_ + "</Products>";
    tree_.Write("share/products.xml", list);
    downloader_->Serve("http://site/products.xml", list);
}

void CheckFixture::StoreSettings(int checkUpdates, int interval, int lastChecked) {
    const auto write = [](const CAtlString& name, int value) {
        WriteRegistryDword(HKEY_CURRENT_USER, DefaultSettings::VPU_SETTINGS_KEY, name, value);
    };
    write(DefaultSettings::CHECK_UPDATES, checkUpdates);
    write(DefaultSettings::INTERVAL, interval);
    write(DefaultSettings::LAST_CHECKED, lastChecked);
}

std::string CheckFixture::StoredSettings() {
    QSettings settings(QSettings::UserScope, "VARDO Technologies");
    settings.beginGroup("Software/VARDO Technologies/Product Update");
    QStringList all;
    for (const QString& name : settings.childKeys().filter(QRegularExpression("^(?!Window$)")))
        all << name + "=" + settings.value(name).toString();
    return all.join(" ").toStdString();
}
