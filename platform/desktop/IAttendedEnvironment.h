// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A world with a user in it.
#pragma once

#include "platform/desktop/IEnvironment.h"

#include <boost/function.hpp>
#include <memory>

// Tells the user what the program waits for, and lets them end the waiting. Belongs to the waiting code, and
// must not be destroyed while it reports that the user has enough. GUI thread only.
class IProgress {
public:
    enum class Task {
        LOOKING_FOR_PROGRAM,  // for a newer version of the program itself
        LOOKING_FOR_LIST,     // for a newer product list
        FETCHING_INSTALLER,
    };

    virtual ~IProgress() = default;
    // The program waits for this from now on. The fetching of an installer is shown at once, because the user
    // has just asked for it; any other task only when the waiting for such tasks takes long in sum. A cancel
    // restarts the sum.
    virtual void Begin(Task task) = 0;
    // How much of it has arrived, in bytes; total is 0 or less when unknown.
    virtual void SetBytes(int done, int total) = 0;
    // The program does not wait any more; nothing is shown until the next Begin.
    virtual void Pause() = 0;
};

// A newer version of the program itself.
struct SelfUpdateOffer {
    // Versions, as they are to be shown.
    QString installed;
    QString offered;
    // Where its installer comes from.
    QString host;
    // The user waits for the program. Else the question must not take the keyboard from other windows.
    bool isAwaited = true;
};

// What a check asks of the user before it has a window. GUI thread only.
class IAttendedEnvironment : public IEnvironment {
public:
    // Asks whether the new version of the program may be installed now; true only for OK.
    virtual bool ConfirmSelfUpdate(const SelfUpdateOffer& offer) = 0;
    // Tells the user that the new version could not be downloaded, or is not the maker's.
    virtual void WarnSelfUpdateFailed() = 0;
    // Makes the object that tells the user about waiting; never null. It shows nothing before its Begin, and
    // calls cancel, while the program serves events, when the user has enough.
    virtual std::unique_ptr<IProgress> MakeProgress(const boost::function<void()>& cancel) = 0;
};
