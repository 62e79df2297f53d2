// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/events/Qtfier.h"

Qtfier::Qtfier(const boost::function<void()>& action) : action_(action) {}

void Qtfier::Slot() {
    action_();
}
