// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/ThreadEventLoops.h"

namespace {

// Looked at by QThread when a thread starts; one that knows it no longer only takes longer.
constexpr const char* WITHOUT_GLIB = "QT_NO_THREADED_GLIB";

bool isSetHere = false;

}  // namespace

void DoWithoutGLibInThreads() {
    isSetHere = !qEnvironmentVariableIsSet(WITHOUT_GLIB) && qputenv(WITHOUT_GLIB, "1");
}

QProcessEnvironment EnvironmentOfChildren() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (isSetHere)
        environment.remove(WITHOUT_GLIB);
    return environment;
}
