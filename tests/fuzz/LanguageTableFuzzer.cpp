// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The table of languages, and the folder that a code from it leads to.
#include "fuzz/Fuzzing.h"
#include "i18n/CResourceManagerLinux.h"
#include "i18n/LanguageTable.h"
#include "platform/settings/SettingsStore.h"
#include "support/Utf16Bytes.h"

namespace {

constexpr int GERMAN = 0x0407;

void CheckFolder() {
    CResourceManagerLinux manager;
    manager.Init(GERMAN, L"/tmp/fuzz/Languages/", L"VARDOProductUpdate");
    const CAtlString code = manager.GetLanguageCode();
    const bool leadsOut = code.FindOneOf(L"/\\") >= 0 || code == L"..";
    Require(!leadsOut || manager.GetString("Key") == L"Key", "no code leads out of the languages' folder");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile table("/tmp/fuzz/Languages/languages.xml");
    static const bool isSetUp = [] {
        // Where only a code that leads out of the folder could lead.
        const InputFile outside("/tmp/fuzz/VARDOProductUpdate.strings");
        outside.Write(Utf16Bytes(u"Key=v;"));
        return WriteRegistryString(HKEY_LOCAL_MACHINE, L"Software\\VARDO Technologies\\Language Setup",
                                   L"Path", L"/tmp/fuzz") == REGISTRY_OK;
    }();
    Require(isSetUp, "the settings can be written");

    table.Write(View(data, size));
    Require(ResolveLanguageId(L"de-AT") >= 0, "an ID is not negative");
    IsRightToLeft(L"ar");
    CheckFolder();

    const int id = ParseHexLanguageId(CAtlString(Bytes(View(data, size))));
    Require(id >= 0 && ParseHexLanguageId(LanguageIdText(id)) == id, "an ID's text reads as that ID");
    return 0;
}
