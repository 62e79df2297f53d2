// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/IDecisionObserver.h"

#include "platform/text/PrintableText.h"

#include <iostream>

namespace {

class CConsoleObserver : public IDecisionObserver {
public:
    bool WantsComparisons() const override { return lines_ < MOST_LINES; }
    void OnComparison(const CAtlString& key, const CAtlString& disabler) override {
        if (!WantsComparisons())
            return;
        ++lines_;
        std::cout << PrintableNarrow(key) << ' ' << PrintableNarrow(disabler) << '\n';
    }

private:
    // A session keeps what its programs print. Nobody reads more, and a list could ask for terabytes.
    static constexpr int MOST_LINES = 1'000;

    int lines_ = 0;
};

}  // namespace

IDecisionObserver& ConsoleObserver() {
    static CConsoleObserver console;
    return console;
}
