// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Why a file could not be fetched, in words for the user.
#pragma once

#include "net/TransferRecord.h"

#include <QString>

// The host, or the proxy when it is to blame, and the reason, in the user's language: the record's error when
// there is one, else what the answer's status says. Only the reason when this computer is to blame. One line
// of plain text. For a transfer that failed. Any thread.
QString FailureText(const TransferRecord& record);
