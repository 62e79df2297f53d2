// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the tests of the real program have in common.
#pragma once

#include <gtest/gtest.h>
#include <QDate>
#include <memory>
#include <string>
#include <vector>

#include "e2e/Desktop.h"
#include "e2e/SampleMachine.h"

// A desktop, a sample machine and the window of the program that runs there.
class ProgramTest : public testing::Test {
protected:
    static constexpr const char* TITLE = "VARDO Product Update";

    // Starts the program on the desktop and waits for its window.
    void Open(const std::vector<std::string>& arguments = {}) {
        program_ = machine_.Start(desktop_.Name(), arguments);
        window_ = desktop_.WaitFor(program_->Id(), TITLE);
    }
    // How many products have been checked so far.
    int Checked() const {
        int count = 0;
        const std::string output = "\n" + program_->Output();
        for (size_t at = 0; (at = output.find("\n- Done ", at)) != std::string::npos; ++at)
            ++count;
        return count;
    }
    bool WaitUntilChecked(int products) const {
        return WaitUntil([&] { return Checked() >= products; });
    }
    // Closes the window with its own button; true when the program then ends by itself.
    bool Close() {
        desktop_.Click(window_, -40, -20);
        return program_->WaitForEnd() && program_->ExitCode() == 0;
    }
    static int Today() { return static_cast<int>(QDate::currentDate().toJulianDay()); }

    // The products of the list on the sample site.
    static constexpr int PRODUCTS = 11;

    SampleMachine machine_;
    Desktop desktop_;
    std::unique_ptr<ChildProcess> program_;
    Window window_;
};
