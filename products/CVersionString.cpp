// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CVersionString.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <string_view>
#include <tuple>
#include <utility>

namespace {

// A part of a version text, cut without copying.
using Piece = std::wstring_view;

// Reads a number as scanf's "%i" does: white space, a sign, a base prefix, digits, and no further. A number
// beyond an int becomes the nearest int. A text without a number changes nothing.
void ScanInteger(Piece text, int& number) {
    const CAtlStringA narrow(CAtlString(text.data(), static_cast<int>(text.size())));
    char* end = nullptr;
    const long value = std::strtol(narrow.GetString(), &end, 0);
    if (end == narrow.GetString())
        return;
    number = static_cast<int>(
        std::clamp<long>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

// False, and -1, for an empty component; true for any other, even one that holds no number.
bool ReadComponent(Piece component, int& number) {
    if (component.empty()) {
        number = -1;
        return false;
    }
    component.remove_prefix(std::min(component.find_first_not_of(L'0'), component.size()));
    ScanInteger(component.empty() ? Piece(L"0") : component, number);
    return true;
}

Piece CutAtDot(Piece& rest) {
    const std::size_t dot = rest.find(L'.');
    if (dot == Piece::npos)
        return Piece();
    const Piece component = rest.substr(0, dot);
    rest.remove_prefix(dot + 1);
    return component;
}

Piece CutRight(Piece& rest, std::size_t count) {
    const std::size_t left = rest.size() - std::min(count, rest.size());
    const Piece piece = rest.substr(left);
    rest = rest.substr(0, left);
    return piece;
}

// How a text without dots is cut, from its right-hand end.
struct CompactForm {
    std::size_t shortest = 0;
    std::size_t longest = 0;
    // The index of the number that a piece is read into, and the piece's size in characters.
    std::array<std::pair<std::size_t, std::size_t>, 4> pieces;
};

constexpr CompactForm COMPACT_FORMS[] = {
    {12, std::numeric_limits<std::size_t>::max(), {{{3, 4}, {2, 4}, {1, 3}, {0, 3}}}},
    {8, 11, {{{3, 2}, {2, 3}, {1, 2}, {0, 2}}}},
    {7, 7, {{{2, 2}, {3, 2}, {1, 2}, {0, 2}}}},
};

bool ReadDotted(Piece rest, const std::array<int*, 4>& numbers) {
    bool valid = true;
    for (std::size_t i = 0; i < 3; ++i)
        valid = ReadComponent(CutAtDot(rest), *numbers[i]) && valid;
    return ReadComponent(rest, *numbers[3]) && valid;
}

bool ReadCompact(Piece rest, const std::array<int*, 4>& numbers) {
    const std::size_t length = rest.size();
    const auto* form =
        std::find_if(std::begin(COMPACT_FORMS), std::end(COMPACT_FORMS), [&](const CompactForm& candidate) {
            return length >= candidate.shortest && length <= candidate.longest;
        });
    if (form == std::end(COMPACT_FORMS))
        return false;
    bool valid = true;
    for (const auto& [index, size] : form->pieces) {
        if (index == 0)
            valid = valid && rest.size() <= size;
        valid = ReadComponent(CutRight(rest, size), *numbers[index]) && valid;
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
    return !IsLess(other) && !other.IsLess(*this);
}

bool CVersionString::IsGreater(const CVersionString& other) const {
    return other.IsLess(*this);
}

CAtlString CVersionString::GetString() const {
    if (!valid_)
        return sourceText_;
    return CAtlString(QString("%1.%2.%3.%4").arg(first_).arg(second_).arg(third_).arg(fourth_));
}

CVersionString& CVersionString::SetString(const CAtlString& text) {
    const std::array<int*, 4> numbers{&first_, &second_, &third_, &fourth_};
    const Piece piece(text.GetString(), static_cast<std::size_t>(text.GetLength()));
    valid_ = text.Find(L'.') >= 0 ? ReadDotted(piece, numbers) : ReadCompact(piece, numbers);
    sourceText_ = text;
    return *this;
}

CVersionString& CVersionString::SetString(const CAtlStringA& text) {
    return SetString(CAtlString(text));
}
