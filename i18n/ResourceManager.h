// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The process's one resource manager.
#pragma once

#include "i18n/CResourceManagerLinux.h"

// The manager, made when it is missing; it stays the property of this module. Making, setting up and
// destroying it belong to the GUI thread.
IVardoResourceManager* GetResourceManager();

// Ends the manager and its texts.
void DestroyResourceManager();

// Loads the strings of a product in a language below languagesFolder. The pairs of the same language stay,
// and those of another are dropped.
void SetupResourceManager(int languageId, const CAtlString& languagesFolder, const CAtlString& productName);
