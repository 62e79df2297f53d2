// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A text and its copies under a series of operations, beside a standard string that does the same.
#include <fuzzer/FuzzedDataProvider.h>
#include <algorithm>
#include <array>

#include "fuzz/Fuzzing.h"

namespace {

// Texts that share their characters, each with its model.
struct Pair {
    CAtlString text;
    std::wstring model;
};
using Pairs = std::array<Pair, 3>;

constexpr std::size_t LONGEST = 400;

std::wstring Taken(FuzzedDataProvider& input) {
    // Few letters, so that what is looked for is found.
    const std::string letters = input.ConsumeRandomLengthString(12);
    std::wstring text;
    for (const char letter : letters)
        text += L"ab, c\u00E9\U0001F600z"[static_cast<unsigned char>(letter) % 8];
    return text;
}

int TakenPosition(FuzzedDataProvider& input) {
    return input.ConsumeIntegralInRange(-2, 40);
}

std::size_t Clamped(int value, std::size_t most) {
    return std::min(static_cast<std::size_t>(std::max(value, 0)), most);
}

int Index(std::size_t found) {
    return found == std::wstring::npos ? -1 : static_cast<int>(found);
}

int ReplaceInModel(std::wstring& model, wchar_t old, wchar_t now) {
    const auto count = static_cast<int>(std::count(model.begin(), model.end(), old));
    std::replace(model.begin(), model.end(), old, now);
    return old == now ? 0 : count;
}

void Change(FuzzedDataProvider& input, Pair& pair, const Pair& other) {
    auto& [text, model] = pair;
    const std::wstring word = Taken(input);
    const int at = TakenPosition(input);
    switch (input.ConsumeIntegralInRange(0, 8)) {
        case 0:
            text = word.c_str();
            model = word;
            break;
        case 1:
            text += other.text;
            model += other.model;
            break;
        case 2:
            text += L'\u00E9';
            model += L'\u00E9';
            break;
        case 3:
            text.Delete(at, static_cast<int>(word.size()));
            model.erase(Clamped(at, model.size()), word.size());
            break;
        case 4: {
            const wchar_t now = word.empty() ? L'a' : word.front();
            Require(text.Replace(L'a', now) == ReplaceInModel(model, L'a', now), "Replace counts");
            break;
        }
        case 5:
            text.TrimLeft(L'a');
            model.erase(0, model.find_first_not_of(L'a'));
            break;
        case 6:
            text.TrimRight(L'a');
            model.erase(model.find_last_not_of(L'a') + 1);
            break;
        case 7:
            text += text.GetString();
            model += std::wstring(model);
            break;
        default:
            text = other.text;
            model = other.model;
    }
}

void Look(FuzzedDataProvider& input, const Pair& pair) {
    const auto& [text, model] = pair;
    const std::wstring word = Taken(input);
    const int at = TakenPosition(input);
    const std::size_t index = Clamped(at, model.size());
    const auto count = static_cast<int>(word.size());
    Require(text.Mid(at, count) == model.substr(index, word.size()).c_str(), "Mid");
    Require(text.Left(at) == model.substr(0, index).c_str(), "Left");
    Require(text.Right(at) == model.substr(model.size() - index).c_str(), "Right");
    Require(text.Find(L'b', at) == (at < 0 ? -1 : Index(model.find(L'b', index))), "Find");
    Require(text.FindOneOf(word.c_str()) == Index(model.find_first_of(word)), "FindOneOf");
    Require(text.ReverseFind(L'b') == Index(model.rfind(L'b')), "ReverseFind");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    Pairs pairs;
    while (input.remaining_bytes() > 0) {
        Pair& pair = pairs[input.ConsumeIntegralInRange<std::size_t>(0, 2)];
        Change(input, pair, pairs[input.ConsumeIntegralInRange<std::size_t>(0, 2)]);
        if (pair.model.size() > LONGEST)
            pair = Pair();
        for (const Pair& each : pairs)
            Require(each.text == each.model.c_str() &&
                        each.text.GetLength() == static_cast<int>(each.model.size()),
                    "a change shows in the one text that was changed");
        Look(input, pair);
    }
    return 0;
}
