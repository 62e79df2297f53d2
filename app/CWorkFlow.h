// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the process does: the checks, from the settings to the window and back.
#pragma once

#include "app/CCmdLineContext.h"
#include "app/settings/CRecordKeeper.h"
#include "net/IDownloader.h"
#include "net/ProxyHandlerBase.h"
#include "platform/desktop/IAttendedEnvironment.h"
#include "products/CProductListController.h"

#include <boost/shared_ptr.hpp>

class CPreparation;
class MainWindow;

// Owns the components of a check; a copy shares them. GUI thread only. Each action runs to its end, windows
// included, before it returns; only tests use what it returns. One action per process.
class CWorkFlow {
public:
    // Everything that comes from outside the process comes from these two.
    CWorkFlow(const boost::shared_ptr<IAttendedEnvironment>& environment,
              const boost::shared_ptr<IDownloader>& downloader);
    virtual ~CWorkFlow() = default;
    CWorkFlow(const CWorkFlow&) = default;
    CWorkFlow& operator=(const CWorkFlow&) = default;

    // Prepares the components from the command line and the settings; returns the result of the record's
    // Load.
    bool Initialize(const CCmdLineContext& context);
    // Whether the user's settings want a silent check today.
    bool IsCheckDue() const;
    // Calls CPreparation::SelfUpdate.
    bool SelfUpdate();

    // Opens the window, checks, and saves the settings when the user has closed it. Always 0.
    int CheckInteractive(const CCmdLineContext& context);
    // Checks when a check is due, and opens the window only when something is new. Always 0.
    int CheckSilently(const CCmdLineContext& context);
    // Called when the user starts the program again while an action runs: brings its windows to the front,
    // also minimised ones, with a waiting dialog on top. The window of a silent check comes once its rows are
    // there, and stays until the user closes it; until then, what takes long is shown.
    void Activate();
    // The command line was faulty. Always 1.
    int ReportParameterError(const CCmdLineContext& context);

private:
    // The command line's proxy when it is to override the stored one.
    void TakeProxy(const CCmdLineContext& context);
    // Tidies up after earlier runs, then runs CPreparation. True when the process must end: a newer program
    // takes over, or a signal came.
    bool Prepare(bool isWatched);
    void Connect(MainWindow& window) const;
    // Checks the products of the window's rows, with the window hidden unless Activate shows it. True when
    // the user is to see the result.
    bool CheckBehind(MainWindow& window);
    // Today becomes the date of the last check when any product could be checked.
    void RecordSuccess();

    boost::shared_ptr<IDownloader> downloader_;
    boost::shared_ptr<CProductListController> productList_;
    boost::shared_ptr<ProxyHandlerBase> proxyHandler_;
    boost::shared_ptr<CRecordKeeper> recordKeeper_;
    boost::shared_ptr<IAttendedEnvironment> environment_;
    bool isActivated_ = false;
    // The preparation, while it lives.
    CPreparation* preparation_ = nullptr;
    // The window of a silent check that runs, before Activate.
    MainWindow* hidden_ = nullptr;
};
