// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QtEventProxy.h"

void QtEventProxy::SetHandler(int eventType, const Handler& handler) {
    if (handler)
        handlers_[eventType] = handler;
}

bool QtEventProxy::eventFilter(QObject* watched, QEvent* event) {
    const auto found = handlers_.find(event->type());
    return found != handlers_.end() && found->second(watched, event);
}
