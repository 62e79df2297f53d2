// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A display in memory, and a user's hands on it.
#pragma once

#include <chrono>
#include <string>

#include "support/ChildProcess.h"

// A window as xdotool knows it.
struct Window {
    std::string id;
    std::string title;
    int width = 0;
    int height = 0;
};

// An X server of its own, on a display number that nobody else uses. It has no window manager: the newest
// window of a program is the one that the user works in. All operations work on the windows of one process.
class Desktop {
public:
    Desktop();

    // The value of the environment variable DISPLAY.
    const std::string& Name() const { return name_; }

    // The newest visible window of the process with this title; an empty id when there is none. An empty
    // title fits all.
    Window Find(qint64 process, const std::string& title = "") const;
    // Waits for it; fails the test when it does not come.
    Window WaitFor(qint64 process, const std::string& title) const;
    bool WaitUntilGone(const Window& window) const;

    // A click at this place; negative numbers count from the right and from the bottom.
    void Click(const Window& window, int x, int y) const;
    // Turns the mouse wheel up over the middle of the window, far enough to reach the top of anything.
    void ScrollUp(const Window& window) const;
    // Keys by their X names, e.g. "Tab" or "ctrl+a"; the window gets the focus first.
    void Press(const Window& window, const std::string& keys) const;
    void Type(const Window& window, const std::string& text) const;

private:
    std::string Do(std::vector<std::string> arguments) const;

    ChildProcess server_;
    std::string name_;
};
