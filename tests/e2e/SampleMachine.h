// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A machine with the program and the maker's software on it, and the maker's site on the other end of the
// line.
#pragma once

#include <QString>
#include <QVariant>
#include <memory>
#include <string>
#include <vector>

#include "support/ChildProcess.h"

// Installs the program that was built into a folder, lays the sample installation over it, and serves the
// sample site with a real web server. Browsers on this machine only note which page they were asked for.
class SampleMachine {
public:
    // selfUpdate: the site offers a newer version of the program.
    explicit SampleMachine(const std::string& folder = "/tmp/vardo", bool selfUpdate = false);

    const std::string& Folder() const { return folder_; }
    // The site's address, with a "/" at its end.
    const std::string& Site() const { return site_; }
    void StopSite() { server_.reset(); }

    // Starts the program; display is the value of DISPLAY, empty for none.
    std::unique_ptr<ChildProcess> Start(const std::string& display,
                                        const std::vector<std::string>& arguments = {});

    // The site's requests so far: method, path and status, a line each.
    std::string Requests() const;
    // The pages that browsers were asked for, in order, without the site's address.
    std::vector<std::string> OpenedPages() const;

    // A value of the update-check settings in the user's file; invalid when it is absent.
    static QVariant Setting(const QString& name);
    static void SetSetting(const QString& name, const QVariant& value);
    // A value of the proxy settings that all of the maker's software on this machine shares.
    static QVariant ProxySetting(const QString& name);
    static void SetProxy(int port);
    // Replaces the installed product list by one that never changes and knows the board software only.
    void KnowBoardSoftwareOnly() const;

private:
    std::string folder_;
    std::unique_ptr<ChildProcess> server_;
    std::string site_;
};
