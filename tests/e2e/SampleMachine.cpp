// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "e2e/SampleMachine.h"

#include <QSettings>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace {

// All that belongs to a machine besides the program: the site's files, the browsers and what they noted.
const std::string RUN = "/tmp/run";
const std::string HOME = "/tmp/home";
const std::string BROWSERS = RUN + "/browsers";
const std::string OPENED_PAGES = RUN + "/opened-pages";
const std::string RUNTIME = RUN + "/runtime";
const char READY[] = "Serving ";

void Run(const std::string& program, const std::vector<std::string>& arguments) {
    ChildProcess process(program, arguments);
    if (!process.WaitForEnd() || process.ExitCode() != 0)
        throw std::runtime_error(program + " failed: " + process.Output() + process.Errors());
}

// A user who never ran the program.
void StartAfresh() {
    for (const std::string& folder : {RUN, HOME})
        std::filesystem::remove_all(folder);
    std::filesystem::create_directories(HOME);
    std::filesystem::create_directories(RUNTIME);
    std::filesystem::permissions(RUNTIME, std::filesystem::perms::owner_all);
}

void InstallBrowser() {
    std::filesystem::create_directories(BROWSERS);
    const std::string browser = BROWSERS + "/firefox";
    std::ofstream(browser) << "#!/bin/sh\nprintf '%s\\n' \"$*\" >>" << OPENED_PAGES << "\n";
    std::filesystem::permissions(browser, std::filesystem::perms::owner_all);
}

// Settings of all the maker's software, whose file has the maker's name.
QString SettingsFile(const QString& folder) {
    return folder + "/VARDO Technologies.conf";
}

QSettings UserSettings() {
    return {SettingsFile(qEnvironmentVariable("XDG_CONFIG_HOME")), QSettings::IniFormat};
}

QString MachineFile() {
    return SettingsFile(QString::fromStdString(RUN) + "/machine");
}

QString UpdateKey(const QString& name) {
    return "Software/VARDO Technologies/Product Update/" + name;
}

QString ProxyKey(const QString& name) {
    return "Software/VARDO Technologies/VARDO Board Software/ProxyInformation/" + name;
}

}  // namespace

SampleMachine::SampleMachine(const std::string& folder, bool selfUpdate) : folder_(folder) {
    StartAfresh();
    std::filesystem::remove_all(folder);
    Run(VARDO_CMAKE, {"--install", VARDO_BINARY_DIR, "--prefix", folder});
    InstallBrowser();
    std::vector<std::string> arguments{folder, RUN};
    if (selfUpdate)
        arguments.insert(arguments.begin(), "--self-update");
    server_ = std::make_unique<ChildProcess>(VARDO_SOURCE_DIR "/scripts/sample-site.sh", arguments);
    WaitUntil([this] { return server_->Output().ends_with("/\n") || !server_->IsRunning(); });
    const std::string output = server_->Output();
    if (!output.starts_with(READY))
        throw std::runtime_error("no site: " + server_->Errors());
    site_ = output.substr(sizeof READY - 1, output.find('\n') - (sizeof READY - 1));
}

std::unique_ptr<ChildProcess> SampleMachine::Start(const std::string& display,
                                                   const std::vector<std::string>& arguments) {
    const std::string path = BROWSERS + ":" + std::getenv("PATH");
    return std::make_unique<ChildProcess>(folder_ + "/bin/VARDOProductUpdate", arguments,
                                          ChildProcess::Environment{{"PATH", path},
                                                                    {"DISPLAY", display},
                                                                    {"WAYLAND_DISPLAY", ""},
                                                                    {"QT_QPA_PLATFORM", ""},
                                                                    {"XDG_RUNTIME_DIR", RUNTIME},
                                                                    {"XDG_CONFIG_DIRS", RUN + "/machine"}});
}

std::string SampleMachine::Requests() const {
    return ReadWholeFile(RUN + "/access.log");
}

std::vector<std::string> SampleMachine::OpenedPages() const {
    std::istringstream notes(ReadWholeFile(OPENED_PAGES));
    std::vector<std::string> pages;
    for (std::string page; std::getline(notes, page);)
        pages.push_back(page.starts_with(site_) ? page.substr(site_.size()) : page);
    return pages;
}

QVariant SampleMachine::Setting(const QString& name) {
    return UserSettings().value(UpdateKey(name));
}

void SampleMachine::SetSetting(const QString& name, const QVariant& value) {
    UserSettings().setValue(UpdateKey(name), value);
}

QVariant SampleMachine::ProxySetting(const QString& name) {
    return QSettings(MachineFile(), QSettings::IniFormat).value(ProxyKey(name));
}

void SampleMachine::SetProxy(int port) {
    QSettings settings(MachineFile(), QSettings::IniFormat);
    settings.setValue(ProxyKey("HttpProxyHost"), "127.0.0.1");
    settings.setValue(ProxyKey("HttpProxyPort"), port);
}

void SampleMachine::KnowBoardSoftwareOnly() const {
    std::ofstream(folder_ + "/share/products.xml")
        << R"(<Products Version="1.0.0.0"><Product Name="Board" BaseXml="SoftwareUpdateVBS"/></Products>)";
}
