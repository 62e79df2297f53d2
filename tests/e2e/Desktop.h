// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A display in memory, with a user's clicks and keys on it.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/ChildProcess.h"

// A window as xdotool knows it.
struct Window {
    std::string id;
    int width = 0;
    int height = 0;
};

// An X server of its own, on a free display number. It has no window manager, so the user works in a
// program's newest window.
class Desktop {
public:
    Desktop() {
        EXPECT_TRUE(WaitUntil([this] { return server_.Output().ends_with('\n'); })) << server_.Errors();
    }

    // The value of the environment variable DISPLAY.
    std::string Name() const { return ":" + std::to_string(std::stoi(server_.Output())); }

    void End() { server_.Signal(SIGKILL); }

    // Waits for the newest visible window of the process with this title; throws when it does not come.
    Window WaitFor(qint64 process, const std::string& title) const {
        std::string found;
        const auto search = [&] {
            found = Do({"search", "--all", "--onlyvisible", "--pid", std::to_string(process), "--name",
                        "^" + title + "$"});
            return !found.empty();
        };
        if (!WaitUntil(search))
            throw std::runtime_error("no window " + title);
        found.pop_back();
        const std::string id = found.substr(found.rfind('\n') + 1);
        const std::string geometry = Do({"getwindowgeometry", "--shell", id});
        return {id, NumberAfter("WIDTH=", geometry), NumberAfter("HEIGHT=", geometry)};
    }
    bool WaitUntilGone(const Window& window) const {
        return WaitUntil([&] {
            return Do({"search", "--onlyvisible", "--name", ""}).find(window.id) == std::string::npos;
        });
    }

    // Clicks at this place; negative numbers count from the right and from the bottom.
    void Click(const Window& window, int x, int y) const {
        Do({"mousemove", "--window", window.id, std::to_string(x < 0 ? window.width + x : x),
            std::to_string(y < 0 ? window.height + y : y), "click", "1"});
    }
    // Presses keys by their X names, such as "Tab" or "ctrl+a"; the window gets the focus first.
    void Press(const Window& window, const std::string& keys) const {
        Do({"windowfocus", "--sync", window.id, "key", keys});
    }
    // Replaces the text of the focused field.
    void Type(const Window& window, const std::string& text) const {
        Do({"windowfocus", "--sync", window.id, "key", "ctrl+a", "type", text});
    }
    std::string Do(const std::vector<std::string>& arguments) const {
        ChildProcess tool("xdotool", arguments, {{"DISPLAY", Name()}});
        tool.WaitForEnd();
        return tool.Output();
    }

private:
    static int NumberAfter(const std::string& name, const std::string& text) {
        return std::stoi(text.substr(text.find(name) + name.size()));
    }

    ChildProcess server_{"Xvfb",
                         {"-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset"}};
};
