// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "e2e/Desktop.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace {

std::vector<std::string> Lines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

}  // namespace

Desktop::Desktop()
    : server_("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset"}) {
    WaitUntil([this] { return server_.Output().find('\n') != std::string::npos || !server_.IsRunning(); });
    if (!server_.IsRunning())
        throw std::runtime_error("no display: " + server_.Errors());
    name_ = ":" + Lines(server_.Output()).front();
}

std::string Desktop::Do(std::vector<std::string> arguments) const {
    ChildProcess tool("xdotool", arguments, {{"DISPLAY", name_}});
    tool.WaitForEnd();
    return tool.Output();
}

Window Desktop::Find(qint64 process, const std::string& title) const {
    std::vector<std::string> ids = Lines(Do({"search", "--onlyvisible", "--pid", std::to_string(process)}));
    std::reverse(ids.begin(), ids.end());
    for (const std::string& id : ids) {
        const std::vector<std::string> facts =
            Lines(Do({"getwindowname", id, "getwindowgeometry", "--shell", id}));
        if (facts.size() < 5 || (!title.empty() && facts[0] != title))
            continue;
        Window window{id, facts[0]};
        for (const std::string& fact : facts) {
            if (fact.starts_with("WIDTH="))
                window.width = std::stoi(fact.substr(6));
            if (fact.starts_with("HEIGHT="))
                window.height = std::stoi(fact.substr(7));
        }
        return window;
    }
    return {};
}

Window Desktop::WaitFor(qint64 process, const std::string& title) const {
    Window window;
    EXPECT_TRUE(WaitUntil([&] { return !(window = Find(process, title)).id.empty(); }))
        << "no window " << title;
    return window;
}

bool Desktop::WaitUntilGone(const Window& window) const {
    return WaitUntil([&] {
        return Do({"search", "--onlyvisible", "--name", ""}).find(window.id) == std::string::npos;
    });
}

void Desktop::Click(const Window& window, int x, int y) const {
    const int left = x < 0 ? window.width + x : x;
    const int top = y < 0 ? window.height + y : y;
    Do({"mousemove", "--window", window.id, std::to_string(left), std::to_string(top), "click", "1"});
}

void Desktop::ScrollUp(const Window& window) const {
    Do({"mousemove", "--window", window.id, std::to_string(window.width / 2),
        std::to_string(window.height / 2), "click", "--repeat", "20", "--delay", "5", "4"});
}

void Desktop::Press(const Window& window, const std::string& keys) const {
    Do({"windowfocus", "--sync", window.id, "key", keys});
}

void Desktop::Type(const Window& window, const std::string& text) const {
    Do({"windowfocus", "--sync", window.id, "type", text});
}
