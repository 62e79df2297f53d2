// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CVersionString.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <tuple>
#include <utility>

namespace {

// Reads a number as scanf's "%i" does: white space, a sign, a base prefix, digits, and no further. A number
// beyond an int becomes the nearest int. A text without a number changes nothing.
void ScanInteger(const CAtlString& text, int& number) {
    const CAtlStringA narrow(text);
    char* end = nullptr;
    const long value = std::strtol(narrow.GetString(), &end, 0);
    if (end == narrow.GetString())
        return;
    number = static_cast<int>(
        std::clamp<long>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// False, and -1, for an empty component; true for any other, even one that holds no number.
bool ReadComponent(CAtlString component, int& number) {
    if (component.IsEmpty()) {
        number = -1;
        return false;
    }
    component.TrimLeft(L'0');
    ScanInteger(component.IsEmpty() ? CAtlString(L"0") : component, number);
    return true;
}

CAtlString CutAtDot(CAtlString& rest) {
    const int dot = rest.Find(L'.');
    if (dot < 0)
        return CAtlString();
    CAtlString component = rest.Left(dot);
    rest = rest.Mid(dot + 1);
    return component;
}

CAtlString CutRight(CAtlString& rest, int count) {
    CAtlString piece = rest.Right(count);
    rest = rest.Left(rest.GetLength() - count);
    return piece;
}

// How a text without dots is cut, from its right-hand end.
struct CompactForm {
    int shortest;
    int longest;
    // The index of the number that a piece is read into, and the piece's size in characters.
    std::array<std::pair<int, int>, 4> pieces;
};

constexpr CompactForm COMPACT_FORMS[] = {
    {12, std::numeric_limits<int>::max(), {{{3, 4}, {2, 4}, {1, 3}, {0, 3}}}},
    {8, 11, {{{3, 2}, {2, 3}, {1, 2}, {0, 2}}}},
    {7, 7, {{{2, 2}, {3, 2}, {1, 2}, {0, 2}}}},
};

bool ReadDotted(CAtlString rest, const std::array<int*, 4>& numbers) {
    bool valid = true;
    for (int i = 0; i < 3; ++i)
        valid = ReadComponent(CutAtDot(rest), *numbers[static_cast<std::size_t>(i)]) && valid;
    return ReadComponent(rest, *numbers[3]) && valid;
}

bool ReadCompact(CAtlString rest, const std::array<int*, 4>& numbers) {
    const int length = rest.GetLength();
    const auto* form =
        std::find_if(std::begin(COMPACT_FORMS), std::end(COMPACT_FORMS), [&](const CompactForm& candidate) {
            return length >= candidate.shortest && length <= candidate.longest;
        });
    if (form == std::end(COMPACT_FORMS))
        return false;
    bool valid = true;
    for (const auto& [index, size] : form->pieces) {
        if (index == 0)
            valid = valid && rest.GetLength() <= size;
        valid = ReadComponent(CutRight(rest, size), *numbers[static_cast<std::size_t>(index)]) && valid;
    }
    return valid;
}

}  // namespace

CVersionString::CVersionString(const CAtlString& text) {
    CVersionString::SetString(text);
}

bool CVersionString::IsLess(const CVersionString& other) const {
    if (!valid_ && !other.valid_)
        return sourceText_.Compare(other.sourceText_) < 0;
    if (!valid_ || !other.valid_)
        return !valid_;
    return std::tie(first_, second_, third_, fourth_) <
           std::tie(other.first_, other.second_, other.third_, other.fourth_);
}

bool CVersionString::IsEqual(const CVersionString& other) const {
    if (!valid_ && !other.valid_)
        return sourceText_.Compare(other.sourceText_) == 0;
    if (!valid_ || !other.valid_)
        return false;
    return !other.IsLess(*this) && !IsLess(other);
}

bool CVersionString::IsGreater(const CVersionString& other) const {
    if (!valid_ && !other.valid_)
        return sourceText_.Compare(other.sourceText_) > 0;
    if (!valid_ || !other.valid_)
        return valid_;
    return other.IsLess(*this);
}

CAtlString CVersionString::GetString() const {
    return valid_ ? normalisedText_ : sourceText_;
}

CVersionString& CVersionString::SetString(const CAtlString& text) {
    const std::array<int*, 4> numbers{&first_, &second_, &third_, &fourth_};
    valid_ = text.Find(L'.') >= 0 ? ReadDotted(text, numbers) : ReadCompact(text, numbers);
    sourceText_ = text;
    normalisedText_.Format(L"%i.%i.%i.%i", first_, second_, third_, fourth_);
    return *this;
}

CVersionString& CVersionString::SetString(const CAtlStringA& text) {
    return SetString(CAtlString(text));
}
