// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Why a file could not be fetched, in words for the user.
#pragma once

#include "platform/CAtlString.h"

#include <QString>

// The host of url and the reason, in the user's language: error when there is one, else what the answer's
// status says (0 when there was no answer). One line of plain text. Any thread.
QString FailureText(const CAtlString& url, const QString& error, int status);
