// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A downloader for tests, which serves texts.
#pragma once

#include "net/IDownloader.h"
#include "support/TemporaryTree.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

// Answers each address that Serve was given with a new file of its contents, which only the user may read,
// and every other address with a failure.
class FakeDownloader : public IDownloader {
public:
    void Serve(const std::string& address, const std::string& contents) { contents_[address] = contents; }
    void Forget(const std::string& address) { contents_.erase(address); }

    CAtlString Download(const CAtlString& url) override {
        const std::string address = url.ToQString().toStdString();
        addresses.push_back(address);
        isCancelled_ = false;
        if (whileDownloading)
            whileDownloading();
        const auto found = contents_.find(address);
        if (found == contents_.end() || isCancelled_)
            return CAtlString();
        files.push_back(tree_.Write("download" + std::to_string(files.size()) + ".xml", found->second));
        using std::filesystem::perms;
        std::filesystem::permissions(files.back(), perms::owner_read | perms::owner_write);
        return CAtlString(files.back().c_str());
    }

    CAtlString DownloadInstaller(const CAtlString& url, const ProgressCallback& progress) override {
        installers.push_back(url.ToQString().toStdString());
        if (progress)
            progress(1, 2);
        return Download(url);
    }

    void SetProxyHandler(const boost::shared_ptr<ProxyHandlerBase>& handler) override { proxy = handler; }
    void SetFailureCallback(const FailureCallback& callback) override { failed_ = callback; }
    void TellFailure(const QString& reason) override {
        if (failed_)
            failed_(reason);
    }

    void FetchAhead(const std::vector<CAtlString>& urls) override {
        announced.emplace_back();
        for (const CAtlString& url : urls)
            announced.back().push_back(url.ToQString().toStdString());
    }

    void Cancel() override {
        ++cancels;
        isCancelled_ = true;
    }

    boost::shared_ptr<ProxyHandlerBase> proxy;
    int cancels = 0;
    // The addresses of each call of FetchAhead.
    std::vector<std::vector<std::string>> announced;
    // The addresses of fetched installers, in order.
    std::vector<std::string> installers;
    // All fetched addresses, and the paths of the returned files, in order.
    std::vector<std::string> addresses;
    std::vector<std::string> files;
    // Called during each fetch, while the real downloader would serve events.
    std::function<void()> whileDownloading;

private:
    std::map<std::string, std::string> contents_;
    TemporaryTree tree_;
    FailureCallback failed_;
    bool isCancelled_ = false;
};
