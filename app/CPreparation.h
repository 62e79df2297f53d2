// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a check does before it has a window.
#pragma once

#include "net/IDownloader.h"
#include "platform/IEnvironment.h"
#include "platform/IProgress.h"
#include "products/CProductListController.h"

#include <boost/shared_ptr.hpp>
#include <memory>

class CSelfUpdate;

// Makes sure that the program and its product list are current. Lives for that long. GUI thread only.
//
// Whoever waits for this and sees it take long can skip the rest of it; the check that follows goes on. The
// download of an installer can be cancelled by itself, without a word of warning: the user knows.
class CPreparation {
public:
    // isWatched: somebody waits for the window. Otherwise only what follows a user's consent is shown.
    CPreparation(IEnvironment& environment, const boost::shared_ptr<IDownloader>& downloader, bool isWatched);

    // Offers a newer version of the program itself. True when its installer was started: the process must
    // end, without saving anything.
    bool SelfUpdate();
    // Lets the list refresh itself, unless the user has skipped that.
    void RefreshProductList(CProductListController& list);

private:
    // Whether there is a newer version, and still somebody to be asked about it.
    bool IsOffered(CSelfUpdate& update);
    bool FetchInstaller(CSelfUpdate& update);
    void Cancel();
    // Lets the downloader fetch again.
    void ForgetCancel();

    IEnvironment& environment_;
    boost::shared_ptr<IDownloader> downloader_;
    bool isWatched_;
    bool isCancelled_ = false;
    std::unique_ptr<IProgress> progress_;
};
