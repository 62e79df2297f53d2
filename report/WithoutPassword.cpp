// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "report/WithoutPassword.h"

#include <QRegularExpression>

QString WithoutPassword(const CAtlString& address) {
    static const QRegularExpression password("(//[^/?#:@]*):[^/?#]*@");
    return address.ToQString().replace(password, "\\1@");
}
