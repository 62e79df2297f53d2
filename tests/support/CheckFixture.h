// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// An installation and a site for tests of whole checks.
#pragma once

#include "support/FakeDownloader.h"
#include "support/FakeEnvironment.h"
#include "support/TemporaryTree.h"

#include <gtest/gtest.h>
#include <boost/make_shared.hpp>
#include <string>
#include <vector>

// A test adds products first; Install then writes the list. The fakes record what a check asks of them.
class CheckFixture : public testing::Test {
protected:
    CheckFixture();

    // Adds a product with these installed versions and the page "http://page/<key>". With an empty offer, the
    // site has no remote description of it.
    void AddProduct(const std::string& key, const std::vector<std::string>& installed,
                    const std::string& offered, const std::string& name = {});
    // Writes the list of all added products; the site offers the same list.
    void Install();

    // Writes the user's settings; StoredSettings returns them in one line, sorted by name, without the
    // window's place.
    static void StoreSettings(int checkUpdates, int interval, int lastChecked);
    static std::string StoredSettings();

    int Today() const { return static_cast<int>(environment_->today.toJulianDay()); }

    TemporaryTree tree_;
    boost::shared_ptr<FakeEnvironment> environment_ = boost::make_shared<FakeEnvironment>();
    boost::shared_ptr<FakeDownloader> downloader_ = boost::make_shared<FakeDownloader>();
    // The elements of the list; AddProduct appends its own.
    std::string elements_;
};
