// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a check does before it has a window.
#pragma once

#include "net/IDownloader.h"
#include "platform/desktop/CInterruption.h"
#include "platform/desktop/IAttendedEnvironment.h"
#include "products/CProductListController.h"

#include <boost/shared_ptr.hpp>
#include <memory>
#include <optional>

class CSelfUpdate;

// Makes sure that the program and its product list are current. Lives for that long. GUI thread only.
//
// The user can cancel a step that takes long; the next one follows. After a cancelled download of an
// installer there is no warning: the user knows. A signal, as at the end of a session, cancels all steps.
class CPreparation {
public:
    // isWatched: the user waits for the window. Otherwise only steps after the user's consent are shown.
    CPreparation(IAttendedEnvironment& environment, const boost::shared_ptr<IDownloader>& downloader,
                 bool isWatched);

    // Offers a newer version of the program itself. True when its installer was fetched and started, if it
    // can be: the process must end, without saving anything.
    bool SelfUpdate();
    // The user waits for the window from now on.
    void Watch();
    // Lets the list refresh itself.
    void RefreshProductList(CProductListController& list);
    // Whether a signal asks the process to end.
    bool IsInterrupted();

private:
    // Whether there is a newer version.
    bool IsOffered(CSelfUpdate& update);
    bool FetchInstaller(CSelfUpdate& update);
    // A step begins that is shown only when the user waits; the next one takes its place.
    void Begin(IProgress::Task task);
    void Pause();
    void Cancel();
    void Interrupt();

    IAttendedEnvironment& environment_;
    boost::shared_ptr<IDownloader> downloader_;
    bool isWatched_;
    // The step that Begin has begun.
    std::optional<IProgress::Task> task_;
    // The installer's download was cancelled.
    bool isCancelled_ = false;
    bool isInterrupted_ = false;
    std::unique_ptr<IProgress> progress_;
    CInterruption interruption_;
};
