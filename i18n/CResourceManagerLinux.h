// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The texts of one language, from the strings files of its folder; and the manager that all share.
#pragma once

#include "platform/files/CVardoDirectoryPath.h"
#include "platform/text/CAtlString.h"

#include <string>
#include <unordered_map>

// The texts of the language that is set up.
class IVardoResourceManager {
public:
    virtual ~IVardoResourceManager() = default;
    // The text for a key (UTF-8), or the key itself when no text has it. Any thread, while nothing is loaded.
    virtual CAtlString GetString(const char* key) const = 0;
};

// Starts without a language and without texts. Loading belongs to the GUI thread.
class CResourceManagerLinux : public IVardoResourceManager {
public:
    // Loads the product's strings of a language from the folder that bears the language's code, below
    // languagesFolder (which may end in "/"). The pairs of the same language are kept, those of another are
    // dropped. True when the language's folder exists; false also for a code that could lead out of
    // languagesFolder, with which nothing is read.
    bool Init(int languageId, const CAtlString& languagesFolder, const CAtlString& productName);

    // Reads the file "<name>.strings" of a folder, after dropping the present pairs unless append is set.
    // RESULT_OK, or RESULT_INVALID_ARGUMENT when there is no such file, or it is empty or larger than
    // MAX_STRINGS_BYTES.
    int LoadStrings(const CVardoDirectoryPath& folder, const CAtlString& name, bool append);

    CAtlString GetString(const char* key) const override;

    // Whether a language's code may be the name of its folder; the texts of any other language are not read.
    static bool IsFolderName(const CAtlString& code);

    // The largest strings file that is read, in bytes.
    static constexpr long MAX_STRINGS_BYTES = 16L * 1024 * 1024;

private:
    static constexpr int NO_LANGUAGE = -1;

    int languageId_ = NO_LANGUAGE;
    std::unordered_map<std::wstring, CAtlString> strings_;
};

// The process's one manager, made when it is missing; it stays the property of this module. Making, setting
// up and destroying it belong to the GUI thread.
IVardoResourceManager* GetResourceManager();

// Ends the manager and its texts.
void DestroyResourceManager();

// Loads the strings of a product in a language below languagesFolder. The pairs of the same language stay,
// and those of another are dropped.
void SetupResourceManager(int languageId, const CAtlString& languagesFolder, const CAtlString& productName);
