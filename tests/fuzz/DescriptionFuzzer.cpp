// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The descriptions of something that can be updated: the local one, and what the remote one offers to an
// installed version. Each input is read as both.
#include "fuzz/Fuzzing.h"
#include "products/CUpdateXmlReader.h"

namespace {

class Reader : public CUpdateXmlReader {
protected:
    CAtlString GetLocalFile() const override { return {}; }
    IDownloader* GetDownloader() const override { return nullptr; }
};

void ReadLocal(const CAtlStringA& text) {
    Reader reader;
    const bool loaded = reader.ParseLocal(text);
    Require(loaded == reader.IsLocalLoaded(), "the answer is the state");
    Require(!reader.IsUpdateAvailable(), "nothing is offered by a local description");
    if (loaded) {
        Require(!reader.GetCurrentVersion().GetString().IsEmpty(), "there is a version");
        const CAtlString address = reader.GetRemoteAddress();
        const int slash = address.ReverseFind(L'/');
        Require(slash >= 0 && address.GetLength() > 1, "there is a folder and a file");
    }
    Reader again;
    Require(again.ParseLocal(text) == loaded && again.GetRemoteAddress() == reader.GetRemoteAddress() &&
                again.IsNoUpdates() == reader.IsNoUpdates(),
            "the same text says the same");
}

void ReadRemote(const CAtlStringA& text, const std::string& installed) {
    Reader reader;
    Require(reader.ParseLocal(Bytes("<l><Product CurrentVersion='" + installed +
                                    "' RemoteVersionFile='f' RemoteVersionFileURL='http://h'/></l>")),
            "a good local description is read");
    const bool loaded = reader.ParseRemote(text);
    Require(loaded == reader.IsRemoteLoaded(), "the answer is the state");
    const bool newer = reader.GetCurrentVersion().IsLess(reader.GetUpdateVersion());
    Require(reader.IsUpdateAvailable() == (loaded && newer), "only what is newer is an update");
    const CAtlString page = reader.GetUpdateWebPage();
    Require(reader.ParseRemote(text) == loaded, "the same text says the same");
    Require(reader.GetUpdateWebPage() == page, "ranges read again change nothing");
    Require(reader.GetRemoteAddress() == L"http://h/f", "a remote description moves nothing");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CAtlStringA text = Bytes(View(data, size));
    ReadLocal(text);
    // One below every range and one within those of the samples.
    for (const char* installed : {"unknown", "10.2.0.0"})
        ReadRemote(text, installed);
    return 0;
}
