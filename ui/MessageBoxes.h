// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Every question and warning of the program, one function each. GUI thread only; each returns when the user
// has answered.
#pragma once

#include "platform/desktop/IAttendedEnvironment.h"
#include "platform/text/CAtlString.h"

#include <QString>

// No browser could be started: tells the user which address to open by hand.
void WarnNoBrowser(const CAtlString& address);

// A product's update has no page that could be opened: the text, and the warning.
QString NoPageText(const QString& product);
void WarnNoPage(const QString& product);

// A new version of the program must be installed first; true only when the user pressed OK. Closing the box,
// also by Escape, is no consent.
bool AskForSelfUpdate(const SelfUpdateOffer& offer);

// The new version of the program could not be downloaded.
void WarnSelfUpdateNotDownloaded();
