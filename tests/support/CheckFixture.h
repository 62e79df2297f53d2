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

// Products are added first; Install then writes the list. The fakes record what a check asked of them.
class CheckFixture : public testing::Test {
protected:
    CheckFixture();

    // A product with these installed versions, whose page is "http://page/<key>". An empty offer leaves its
    // remote description missing on the site.
    void AddProduct(const std::string& key, const std::vector<std::string>& installed,
                    const std::string& offered, const std::string& name = {});
    // Writes the list with all that was added; the site offers the same list.
    void Install();

    // The user's settings, which are read back in one line, sorted by their names, without the window's
    // place.
    static void StoreSettings(int checkUpdates, int interval, int lastChecked);
    static std::string StoredSettings();

    int Today() const { return static_cast<int>(environment_->today.toJulianDay()); }

    TemporaryTree tree_;
    boost::shared_ptr<FakeEnvironment> environment_ = boost::make_shared<FakeEnvironment>();
    boost::shared_ptr<FakeDownloader> downloader_ = boost::make_shared<FakeDownloader>();
    // Further elements of the list.
    std::string elements_;
};
