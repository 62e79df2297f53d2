// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/ConsoleObserver.h"

#include "platform/text/CAtlStringA.h"

#include <iostream>

namespace {

class CConsoleObserver : public IDecisionObserver {
public:
    void OnComparison(const CAtlString& key, const CAtlString& disabler) override {
        std::cout << CAtlStringA(key).GetString() << ' ' << CAtlStringA(disabler).GetString() << '\n';
    }
};

}  // namespace

IDecisionObserver& ConsoleObserver() {
    static CConsoleObserver console;
    return console;
}
