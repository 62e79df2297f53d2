// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/IHttpExchange.h"

QString IHttpExchange::BadAnswer() {
    return tr("The server's answer is incomplete or too large");
}
