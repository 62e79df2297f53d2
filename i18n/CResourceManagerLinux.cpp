// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "i18n/CResourceManagerLinux.h"

#include "i18n/CStringsReader.h"
#include "i18n/LanguageTable.h"
#include "platform/text/ResultCodes.h"

#include <memory>
#include <string_view>

namespace {

std::wstring KeyOf(const CAtlString& text) {
    return {text.begin(), text.end()};
}

std::unique_ptr<CResourceManagerLinux>& TheManager() {
    static std::unique_ptr<CResourceManagerLinux> manager;
    return manager;
}

CResourceManagerLinux& Manager() {
    if (!TheManager())
        TheManager() = std::make_unique<CResourceManagerLinux>();
    return *TheManager();
}

}  // namespace

bool CResourceManagerLinux::Init(int languageId, const CAtlString& languagesFolder,
                                 const CAtlString& productName) {
    if (languageId != languageId_)
        strings_.clear();
    languageId_ = languageId;
    if (languagesFolder.IsEmpty())
        return false;
    const CAtlString code = LanguageAttributeById(languageId, LanguageFormat::CODE);
    if (!IsFolderName(code))
        return false;
    CVardoDirectoryPath folder(languagesFolder);
    folder.Append(code);
    LoadStrings(folder, productName, true);
    return folder.Exists();
}

// The code comes from a table that anyone may have written.
bool CResourceManagerLinux::IsFolderName(const CAtlString& code) {
    return code.FindOneOf(L"/\\") < 0 && code != L".." && code != L".";
}

int CResourceManagerLinux::LoadStrings(const CVardoDirectoryPath& folder, const CAtlString& name,
                                       bool append) {
    if (!append)
        strings_.clear();
    const CVardoFilePath file = CVardoDirectoryPath::Combine(folder, name + L".strings");
    if (!file.Exists() || file.GetSize() > MAX_STRINGS_BYTES)
        return RESULT_INVALID_ARGUMENT;
    std::unique_ptr<char[]> buffer;
    const off_t size = file.ReadAll(buffer);
    if (size <= 0)
        return RESULT_INVALID_ARGUMENT;
    CStringsReader reader(std::string_view(buffer.get(), static_cast<size_t>(size)));
    CAtlString key;
    CAtlString text;
    while (reader.ReadPair(key, text))
        strings_[KeyOf(key)] = text;
    return RESULT_OK;
}

CAtlString CResourceManagerLinux::GetString(const char* key) const {
    const CAtlString wideKey(key);
    const auto found = strings_.find(KeyOf(wideKey));
    return found == strings_.end() || found->second.IsEmpty() ? wideKey : found->second;
}

IVardoResourceManager* GetResourceManager() {
    return &Manager();
}

void DestroyResourceManager() {
    TheManager().reset();
}

void SetupResourceManager(int languageId, const CAtlString& languagesFolder, const CAtlString& productName) {
    Manager().Init(languageId, languagesFolder, productName);
}
