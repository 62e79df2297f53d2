// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/ThreadEventLoops.h"

namespace {

// QThread looks whether it is empty when a thread starts; one that knows it no longer only takes longer.
constexpr const char* WITHOUT_GLIB = "QT_NO_THREADED_GLIB";
// Tells it from what the user has set.
constexpr const char* OURS = "by VARDO Product Update";

}  // namespace

void DoWithoutGLibInThreads() {
    if (!qEnvironmentVariableIsSet(WITHOUT_GLIB))
        qputenv(WITHOUT_GLIB, OURS);
}

QProcessEnvironment EnvironmentOfChildren() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (environment.value(WITHOUT_GLIB) == QLatin1String(OURS))
        environment.remove(WITHOUT_GLIB);
    return environment;
}
