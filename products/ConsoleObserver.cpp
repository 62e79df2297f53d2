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
    // The session's log keeps this output, and a list could cause terabytes of it.
    static constexpr int MOST_LINES = 1'000;

    int lines_ = 0;
};

}  // namespace

IDecisionObserver& ConsoleObserver() {
    static CConsoleObserver console;
    return console;
}
