// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The tests of the installed program share this fixture.
#pragma once

#include <gmock/gmock.h>
#include <QDate>

#include "e2e/Desktop.h"
#include "e2e/SampleMachine.h"

using testing::HasSubstr;

// A desktop, a sample machine and the window of the program that runs there.
class ProgramTest : public testing::Test {
protected:
    static constexpr const char* TITLE = "VARDO Product Update";
    // The number of entries in the list on the sample site.
    static constexpr int PRODUCTS = 11;

    explicit ProgramTest(bool selfUpdate = false) : machine_(selfUpdate) {}

    void Start(const std::vector<std::string>& arguments) {
        program_ = machine_.Start(desktop_.Name(), arguments);
    }
    // Starts the program and waits for its window.
    void Open(const std::vector<std::string>& arguments = {}) {
        Start(arguments);
        window_ = desktop_.WaitFor(program_->Id(), TITLE);
    }
    // Waits until so many products have been checked.
    bool WaitUntilChecked(int products) const {
        return WaitUntil(
            [&] { return QString::fromStdString(program_->Output()).count("- Done ") >= products; });
    }
    // Closes the window, which may have grown meanwhile, with its own button; true when the program then ends
    // with 0.
    bool Close() {
        desktop_.Click(desktop_.WaitFor(program_->Id(), TITLE), -40, -20);
        return program_->ExitCode() == 0;
    }
    static int Setting(const char* name) { return UpdateSettings().value(name, -1).toInt(); }
    static int Today() { return static_cast<int>(QDate::currentDate().toJulianDay()); }

    SampleMachine machine_;
    Desktop desktop_;
    std::unique_ptr<ChildProcess> program_;
    Window window_;
};
