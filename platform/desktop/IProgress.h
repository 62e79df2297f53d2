// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the user sees, and can do about it, while the program waits for the network without a window.
#pragma once

// Tells the user what the program waits for, and lets them end the waiting. Belongs to whoever waits, and
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
    // has just asked for it; anything else only when all the waiting for such things is taking long, which
    // counts anew after a cancel.
    virtual void Begin(Task task) = 0;
    // How much of it has arrived, in bytes; total is 0 or less when unknown.
    virtual void SetBytes(int done, int total) = 0;
    // The program does not wait any more; nothing is shown until the next Begin.
    virtual void Pause() = 0;
};
