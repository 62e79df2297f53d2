// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A machine with the program and the maker's software on it, and the maker's site.
#pragma once

#include <QSettings>
#include <memory>
#include <sstream>

#include "support/ChildProcess.h"

// The update-check settings in the user's file.
struct UpdateSettings : QSettings {
    UpdateSettings() : QSettings("/tmp/home/.config/VARDO Technologies.conf", IniFormat) {
        beginGroup("Software/VARDO Technologies/Product Update");
    }
};
// The proxy settings that all of the maker's software on this machine shares.
struct ProxySettings : QSettings {
    ProxySettings() : QSettings("/tmp/run/machine/VARDO Technologies.conf", IniFormat) {
        beginGroup("Software/VARDO Technologies/VARDO Board Software/ProxyInformation");
    }
};

// Installs the built program into FOLDER, lays the sample installation over it, and serves the sample site
// with a real web server. The browser of this machine only notes each page that it should open.
class SampleMachine {
public:
    // The name mixes scripts and holds a space, so that what works here works in any folder.
    static inline const std::string FOLDER = "/tmp/Обновление 製品 تحديث/v 1";

    // Its user has never run the program. With selfUpdate the site offers a newer version of it.
    explicit SampleMachine(bool selfUpdate = false) {
        for (const char* folder : {FOLDER.c_str(), "/tmp/run", "/tmp/home"})
            std::filesystem::remove_all(folder);
        for (const char* folder : {"/tmp/home", "/tmp/run/browsers", "/tmp/run/runtime"})
            std::filesystem::create_directories(folder);
        std::ofstream("/tmp/run/browsers/firefox")
            << "#!/bin/sh\npage=$*\nprintf '%s\\n' \"${page#http://127.0.0.1:[0-9]*/}\" >>/tmp/run/pages\n";
        for (const char* path : {"/tmp/run/browsers/firefox", "/tmp/run/runtime"})
            std::filesystem::permissions(path, std::filesystem::perms::owner_all);

        if (ChildProcess(VARDO_CMAKE, {"--install", VARDO_BINARY_DIR, "--prefix", FOLDER}).ExitCode() != 0)
            throw std::runtime_error("the program cannot be installed");
        std::vector<std::string> arguments{FOLDER, "/tmp/run"};
        if (selfUpdate)
            arguments.insert(arguments.begin(), "--self-update");
        site_ = std::make_unique<ChildProcess>(VARDO_SOURCE_DIR "/scripts/sample-site.sh", arguments);
        if (!WaitUntil([this] { return site_->Output().ends_with("/\n"); }))
            throw std::runtime_error("no site: " + site_->Errors());
    }

    // Starts the program; display is the value of DISPLAY.
    static std::unique_ptr<ChildProcess> Start(const std::string& display,
                                               const std::vector<std::string>& arguments) {
        const std::map<std::string, std::string> variables{
            {"PATH", std::string("/tmp/run/browsers:") + getenv("PATH")},
            {"DISPLAY", display},
            {"QT_QPA_PLATFORM", ""},
            {"XDG_RUNTIME_DIR", "/tmp/run/runtime"},
            {"XDG_CONFIG_DIRS", "/tmp/run/machine"}};
        return std::make_unique<ChildProcess>(FOLDER + "/bin/VARDOProductUpdate", arguments, variables);
    }
    // Starts the report without a display.
    static std::unique_ptr<ChildProcess> StartReport(const std::vector<std::string>& arguments) {
        const std::map<std::string, std::string> variables{
            {"DISPLAY", ""}, {"QT_QPA_PLATFORM", "xcb"}, {"XDG_CONFIG_DIRS", "/tmp/run/machine"}};
        return std::make_unique<ChildProcess>(FOLDER + "/bin/VARDOUpdateReport", arguments, variables);
    }

    // The site's requests so far: a line each, with method, path and status.
    static std::string Requests() { return ReadWholeFile("/tmp/run/access.log"); }
    // Replaces the installed product list by one with the board software alone and without an address.
    static void KnowBoardSoftwareOnly() {
        std::ofstream(FOLDER + "/share/products.xml")
            << R"(<Products Version="1.0.0.0"><Product Name="B" BaseXml="SoftwareUpdateVBS"/></Products>)";
    }

private:
    std::unique_ptr<ChildProcess> site_;
};
