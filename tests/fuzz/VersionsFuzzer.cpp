// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Version texts, one a line: their order must be one, whatever they are, and ranges must agree with it.
#include <map>

#include "fuzz/Fuzzing.h"
#include "products/CUpdateTable.h"

namespace {

// The most lines that are compared with one another: time grows with the cube.
constexpr std::size_t MOST = 4;

void CheckText(const CVersionString& version) {
    if (!version.IsValid())
        return;
    const CVersionString again(version.GetString());
    Require(again.IsValid() && again.IsEqual(version), "a version's text reads as that version");
    Require(again.GetString() == version.GetString(), "a normal text is its own normal form");
}

void CheckPair(const CVersionString& a, const CVersionString& b) {
    Require(a.IsLess(b) + a.IsEqual(b) + a.IsGreater(b) == 1, "less, equal or greater, and only one");
    Require(a.IsLess(b) == b.IsGreater(a), "less one way is greater the other way");
    Require(a.IsEqual(b) == b.IsEqual(a), "equality goes both ways");
    Require(a.IsValid() || !b.IsValid() || a.IsLess(b), "no version is below every version");

    const CVersionStringRange range(a, b);
    Require(range.Contains(a) && range.Contains(b), "a range contains its ends");
    Require(range.IsEqual(CVersionStringRange(b, a)), "ends in the wrong order are exchanged");
}

void CheckTriple(const CVersionString& a, const CVersionString& b, const CVersionString& c) {
    if (!a.IsGreater(b) && !b.IsGreater(c))
        Require(!a.IsGreater(c), "the order is transitive");
    const bool between = !b.IsLess(a) && !b.IsGreater(c);
    if (!a.IsGreater(c))
        Require(CVersionStringRange(a, c).Contains(b) == between, "a range contains what lies between");
}

// Every two neighbours are a range with an offer of its own, and the last version is the installed one.
void CheckTable(const std::vector<CVersionString>& versions) {
    CUpdateTable table;
    table.SetCurrentVersion(versions.back());
    bool contained = false;
    for (std::size_t i = 0; i + 1 < versions.size(); ++i) {
        const CVersionStringRange range(versions[i], versions[i + 1]);
        const bool isFirst = i == 0;
        table.AddRangedOffer(range, {.argument = L"ranged"});
        contained = isFirst ? range.Contains(versions.back()) : contained;
    }
    if (contained)
        Require(table.ChooseOffer().argument == L"ranged", "a range that contains the version counts");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<CVersionString> versions;
    for (const std::string_view line : Split(View(data, size), '\n'))
        if (versions.size() < MOST)
            versions.emplace_back(CAtlString(Bytes(line)));
    for (const CVersionString& a : versions) {
        CheckText(a);
        for (const CVersionString& b : versions) {
            CheckPair(a, b);
            for (const CVersionString& c : versions)
                CheckTriple(a, b, c);
        }
    }
    CheckTable(versions);
    CVersionString reused;
    for (const CVersionString& version : versions)
        reused.SetString(version.GetString());
    return 0;
}
