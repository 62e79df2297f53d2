// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The local description of something that can be updated.
#include "fuzz/Fuzzing.h"
#include "products/CUpdateXmlReader.h"

namespace {

class Reader : public CUpdateXmlReader {
protected:
    CAtlString GetLocalFile() const override { return {}; }
    CAtlString GetRemoteFile() override { return {}; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CAtlStringA text = Bytes(View(data, size));
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
    return 0;
}
