// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the wide and the narrow string of the program have in common: one pointer to a reference-counted,
// copy-on-write, 0-terminated array of characters.
#pragma once

#include <algorithm>
#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <new>
#include <string_view>
#include <utility>

// Base of CAtlString and CAtlStringA; Char is the type of their characters.
//
// Layout: the object is one pointer to the characters. The header stands in front of them, in the same
// allocation: reference count, length and capacity, 32 bits each, the last two in characters without the
// terminator. All empty texts share one static array that is never counted and never freed. Copies share the
// array; a change makes it private first. A negative count on any other array marks it locked: its copies are
// deep.
//
// Counts are atomic, so copies that share an array may live in different threads; one object belongs to one
// thread at a time. Positions and lengths are in characters, -1 means "not found". No operation reports an
// error; running out of memory throws std::bad_alloc.
template <typename Char>
class CSharedText {
public:
    // Length in characters, without the terminator.
    int GetLength() const { return GetHeader()->length; }
    bool IsEmpty() const { return GetLength() == 0; }

    // Becomes the shared empty text.
    void Empty() { *this = CSharedText(); }

    // The characters, 0-terminated; valid until the next change or the end of this object.
    const Char* GetString() const { return data_; }
    const Char* begin() const { return data_; }
    const Char* end() const { return data_ + GetLength(); }

    // The character at index, which must be from 0 to GetLength().
    Char operator[](int index) const { return data_[index]; }

    // A private array of at least max(capacity, GetLength()) characters for direct writing. Until
    // ReleaseBuffer nothing else may be called on this text.
    Char* GetBuffer(int capacity) {
        MakePrivate(std::max(capacity, GetLength()));
        return data_;
    }
    // Ends direct writing. The length becomes newLength; with -1 it stays when it is not 0, else it becomes
    // the position of the first 0 character.
    void ReleaseBuffer(int newLength = -1) {
        if (newLength < 0 && IsEmpty())
            newLength = static_cast<int>(std::find(data_, data_ + GetHeader()->capacity, Char(0)) - data_);
        SetLength(newLength < 0 ? GetLength() : newLength);
    }

    // Ordinal, case-sensitive order: below 0, 0 or above 0. Like the C library's, it ends at the first 0
    // character. A null pointer counts as empty text.
    int Compare(const Char* other) const { return CompareUpTo0(data_, other ? other : EmptyData()); }
    int Compare(const CSharedText& other) const { return Compare(other.data_); }
    bool operator==(const Char* other) const { return Compare(other) == 0; }
    bool operator==(const CSharedText& other) const { return Compare(other) == 0; }
    auto operator<=>(const Char* other) const { return Compare(other) <=> 0; }
    auto operator<=>(const CSharedText& other) const { return Compare(other) <=> 0; }

    // First occurrence at or after start; -1 also for a start outside the text.
    int Find(Char ch, int start = 0) const {
        return start < 0 ? -1 : ToIndex(GetView().find(ch, static_cast<std::size_t>(start)));
    }

protected:
    using View = std::basic_string_view<Char>;

    CSharedText() noexcept : data_(EmptyData()) {}
    // A copy of count characters. A null pointer, and a count that is not positive, give the empty text.
    CSharedText(const Char* text, int count) : CSharedText() {
        if (text)
            Append(text, count);
    }
    CSharedText(const CSharedText& other) : CSharedText() {
        if (other.References() < 0) {
            // Copies the characters of a locked array; the empty text has none.
            Append(other.data_, other.GetLength());
        } else {
            data_ = other.data_;
            ++References();
        }
    }
    CSharedText(CSharedText&& other) noexcept : data_(std::exchange(other.data_, EmptyData())) {}
    ~CSharedText() { Release(); }

    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the copy outlives what it replaces.
    CSharedText& operator=(const CSharedText& other) {
        CSharedText copy(other);
        std::swap(data_, copy.data_);
        return *this;
    }
    CSharedText& operator=(CSharedText&& other) noexcept {
        std::swap(data_, other.data_);
        return *this;
    }

    View GetView() const { return {data_, static_cast<std::size_t>(GetLength())}; }
    static int LengthOf(const Char* text) { return text ? static_cast<int>(View(text).size()) : 0; }
    // The answer of a view's search as an index.
    static int ToIndex(std::size_t found) { return found == View::npos ? -1 : static_cast<int>(found); }

    // Appends count characters, in place when the array is private and they fit. They may lie in this text's
    // own array only if that is shared.
    void Append(const Char* text, int count) {
        if (count <= 0)
            return;
        const int length = GetLength();
        MakePrivate(length + count);
        std::copy_n(text, count, data_ + length);
        SetLength(length + count);
    }

private:
    struct Header {
        std::int32_t references;
        std::int32_t length;
        std::int32_t capacity;
    };
    struct EmptyText {
        Header header{-1, 0, 0};
        Char terminator = Char(0);
    };

    // Nothing writes to the shared empty text.
    static Char* EmptyData() noexcept {
        static constexpr EmptyText EMPTY;
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): all other texts can be written.
        return const_cast<Char*>(&EMPTY.terminator);
    }
    static int CompareUpTo0(const wchar_t* a, const wchar_t* b) { return std::wcscmp(a, b); }
    static int CompareUpTo0(const char* a, const char* b) { return std::strcmp(a, b); }

    Header* GetHeader() const { return reinterpret_cast<Header*>(data_) - 1; }
    std::atomic_ref<std::int32_t> References() const {
        return std::atomic_ref<std::int32_t>(GetHeader()->references);
    }

    // Makes the array this text's own, with room for capacity characters (the length at least).
    void MakePrivate(int capacity) {
        if (References() == 1 && GetHeader()->capacity >= capacity)
            return;
        const int length = GetLength();
        Char* const copy = Allocate(capacity);
        std::copy_n(data_, length, copy);
        Release();
        data_ = copy;
        SetLength(length);
    }
    // An array with one reference and room for exactly capacity characters.
    static Char* Allocate(int capacity) {
        const std::size_t characters = static_cast<std::size_t>(capacity) + 1;
        auto* header = static_cast<Header*>(std::malloc(sizeof(Header) + characters * sizeof(Char)));
        if (!header)
            throw std::bad_alloc();
        header->references = 1;
        header->capacity = capacity;
        return reinterpret_cast<Char*>(header + 1);
    }
    void Release() noexcept {
        if (data_ != EmptyData() && --References() < 1)
            std::free(GetHeader());
    }
    void SetLength(int length) {
        if (data_ == EmptyData())
            return;
        GetHeader()->length = length;
        data_[length] = Char(0);
    }

    Char* data_;
};
