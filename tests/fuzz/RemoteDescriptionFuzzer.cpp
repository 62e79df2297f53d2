// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The remote description: what is offered to an installed version.
#include "fuzz/Fuzzing.h"
#include "products/CUpdateXmlReader.h"

namespace {

class Reader : public CUpdateXmlReader {
public:
    explicit Reader(const char* installed) {
        const std::string local = std::string("<l><Product CurrentVersion='") + installed +
                                  "' RemoteVersionFile='f' RemoteVersionFileURL='http://h'/></l>";
        Require(ParseLocal(Bytes(local)), "a good local description is read");
    }

protected:
    CAtlString GetLocalFile() const override { return {}; }
    CAtlString GetRemoteFile() override { return {}; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CAtlStringA text = Bytes(View(data, size));
    // One below every range and one within those of the samples.
    for (const char* installed : {"unknown", "10.2.0.0"}) {
        Reader reader(installed);
        const bool loaded = reader.ParseRemote(text);
        Require(loaded == reader.IsRemoteLoaded(), "the answer is the state");
        const bool newer = reader.GetCurrentVersion().IsLess(reader.GetUpdateVersion());
        Require(reader.IsUpdateAvailable() == (loaded && newer), "only what is newer is an update");
        const CAtlString page = reader.GetUpdateWebPage();
        Require(reader.ParseRemote(text) == loaded, "the same text says the same");
        Require(reader.GetUpdateWebPage() == page, "ranges read again change nothing");
        Require(reader.GetRemoteAddress() == L"http://h/f", "a remote description moves nothing");
    }
    return 0;
}
