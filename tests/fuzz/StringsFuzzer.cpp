// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The bytes of a strings file.
#include <utility>

#include "fuzz/Fuzzing.h"
#include "i18n/CStringsReader.h"

namespace {

using Pairs = std::vector<std::pair<CAtlString, CAtlString>>;

void CheckPlace(const CStringsReader& reader) {
    const auto& key = reader.GetKeyToken();
    const auto& text = reader.GetTextToken();
    Require(0 <= key.begin && key.begin < key.end && key.end <= text.begin && text.begin < text.end &&
                text.end <= reader.GetText().size(),
            "a key and its text stand in the file, in this order");
}

Pairs Read(std::string_view bytes) {
    Pairs pairs;
    CStringsReader reader(bytes);
    CAtlString key;
    CAtlString text;
    while (reader.ReadPair(key, text)) {
        CheckPlace(reader);
        pairs.emplace_back(key, text);
        Require(!key.IsEmpty(), "a pair has a key");
        Require(pairs.size() <= bytes.size() / 2, "a pair takes characters");
    }
    return pairs;
}

// The other byte order of a text with a mark.
std::string Swapped(std::string_view bytes) {
    std::string swapped(bytes);
    for (std::size_t i = 0; i + 1 < swapped.size(); i += 2)
        std::swap(swapped[i], swapped[i + 1]);
    return swapped;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = View(data, size);
    const Pairs pairs = Read(bytes);
    const bool hasMark = bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE");
    if (hasMark && size % 2 == 0)
        Require(Read(Swapped(bytes)) == pairs, "both byte orders say the same");
    return 0;
}
