// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A world with a user in it.
#pragma once

#include "platform/desktop/IEnvironment.h"
#include "platform/desktop/IProgress.h"

#include <boost/function.hpp>
#include <memory>

// What a check asks of the user before it has a window. GUI thread only.
class IAttendedEnvironment : public IEnvironment {
public:
    // Asks whether the new version of the program may be installed now; true only for OK.
    virtual bool ConfirmSelfUpdate() = 0;
    // Tells the user that the new version could not be downloaded, or is not the maker's.
    virtual void WarnSelfUpdateFailed() = 0;
    // What tells the user about waiting; nothing is shown before its Begin. cancel is called, while the
    // program serves events, when the user has enough. Never null.
    virtual std::unique_ptr<IProgress> MakeProgress(const boost::function<void()>& cancel) = 0;
};
