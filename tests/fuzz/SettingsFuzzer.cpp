// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A settings file that anyone may have written, as the program reads it: the proxy and when to check. Then a
// proxy host as a user may type it, which must be read as it was saved.
#include <fcntl.h>
#include <sys/stat.h>

#include "app/settings/CRecordKeeper.h"
#include "fuzz/Fuzzing.h"
#include "net/ProxyHandlerBase.h"
#include "platform/settings/SettingsStore.h"

namespace {

// A Julian day, as all of this century.
constexpr int TODAY = 2461000;

// Another time at each call, in milliseconds: what has the same size and time is not read again.
void MarkAsChanged(const InputFile& file) {
    static time_t second = 1;
    const timespec times[] = {{.tv_sec = ++second, .tv_nsec = 0}, {.tv_sec = second, .tv_nsec = 0}};
    Require(::utimensat(AT_FDCWD, file.Path().c_str(), times, 0) == 0, "the file has a time");
}

CAtlString HostOf(const ProxyHandlerBase& proxy) {
    CAtlString host;
    CAtlString ignored;
    int port = 0;
    proxy.GetProxySettings(host, port, ignored, ignored);
    return host;
}

void ReadAll() {
    ProxyHandlerBase proxy;
    proxy.LoadProxySettings();
    CRecordKeeper record;
    record.Load();
    record.SetNewLastChecked(0);
    if (record.IsCheckDue(TODAY))
        Require(record.GetCheckUpdates(), "no check is due where the user wants none");
    std::vector<CAtlString> names;
    EnumRegistryKeys(HKEY_CURRENT_USER, L"Software/VARDO Technologies", names);
}

// Through the file and back, for what settings hold: text without a 0 character.
void CheckHost(const CAtlString& host, const InputFile& file) {
    ProxyHandlerBase proxy;
    proxy.SetProxyHost(host);
    Require(proxy.SaveProxySettings(), "the port is written");
    MarkAsChanged(file);
    ProxyHandlerBase other;
    other.LoadProxySettings();
    Require(HostOf(other) == CAtlString(host.ToQString()), "a saved host is read as it was");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile users("/tmp/home/.config/VARDO Technologies.conf");
    static const InputFile machines("/tmp/etc/xdg/VARDO Technologies.conf");
    const std::string_view input = View(data, size);
    // Writing takes far longer than reading, so that only short inputs are hosts.
    const bool isHost = size > 0 && size < 64 && data[0] != '[';
    for (const InputFile* file : {&users, &machines}) {
        file->Write(isHost ? "" : input);
        MarkAsChanged(*file);
    }
    if (isHost)
        CheckHost(CAtlString(Bytes(input)), machines);
    else
        ReadAll();
    return 0;
}
