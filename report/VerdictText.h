// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The reasons of readers in words.
#pragma once

#include "products/Verdict.h"

#include <QString>

// Why a file does not count; empty when it does.
QString VerdictText(Verdict verdict);
