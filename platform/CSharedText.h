// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What the wide and the narrow string of the program have in common: one pointer to a reference-counted,
// copy-on-write, 0-terminated array of characters, and the operations that do not depend on an encoding.
#pragma once

#include "platform/TextFunctions.h"

#include <algorithm>
#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <utility>

// Base of CAtlString and CAtlStringA. Text is the class that derives from it, Char its character type.
//
// Layout: the object is one pointer to the characters; in front of them, in the same allocation, stand the
// reference count, the length and the capacity (32 bits each, in characters without the terminator). All
// empty texts share one static array that is never counted and never freed. Copies share the array; a change
// makes it private first. A negative count on any other array marks it locked: its copies are deep.
//
// Counts are atomic, so copies that share an array may live in different threads; one object belongs to one
// thread at a time. Positions and lengths are in characters, -1 means "not found". No operation reports an
// error; running out of memory throws std::bad_alloc.
template <typename Text, typename Char>
class CSharedText {
public:
    // Length in characters, without the terminator.
    int GetLength() const { return Header()->length; }
    bool IsEmpty() const { return GetLength() == 0; }
    // Characters that fit without a new allocation.
    int GetCapacity() const { return Header()->capacity; }

    // Becomes the shared empty text.
    void Empty() {
        Release();
        data_ = EmptyData();
    }

    // The characters, 0-terminated; valid until the next change or the end of this object.
    const Char* GetString() const { return data_; }
    const Char* begin() const { return data_; }
    const Char* end() const { return data_ + GetLength(); }

    // The character at index, which must be from 0 to GetLength().
    Char GetAt(int index) const { return data_[index]; }
    Char operator[](int index) const { return data_[index]; }
    // Stores a character at index, which must be below GetLength().
    void SetAt(int index, Char ch) {
        MakePrivate(GetLength());
        data_[index] = ch;
    }

    // A private array of at least max(capacity, GetLength()) characters for direct writing. Until
    // ReleaseBuffer nothing else may be called on this text.
    Char* GetBuffer(int capacity) {
        MakePrivate(std::max(capacity, GetLength()));
        return data_;
    }
    // Ends direct writing. The length becomes newLength; with -1 it stays when it is not 0, else it becomes
    // the position of the first 0 character.
    void ReleaseBuffer(int newLength = -1) {
        if (data_ == EmptyData())
            return;
        if (newLength < 0) {
            newLength = GetLength();
            if (newLength == 0)
                newLength = static_cast<int>(std::find(data_, data_ + GetCapacity(), Char(0)) - data_);
        }
        SetLength(newLength);
    }

    // Ordinal, case-sensitive order: below 0, 0 or above 0. Like the C library's, it ends at the first 0
    // character.
    int Compare(const Char* other) const { return Functions::Compare(data_, other ? other : EmptyData()); }
    int Compare(const Text& other) const {
        const Char* const text = other.GetString();
        return data_ == text || HasCharactersOf(other) ? 0 : Functions::Compare(data_, text);
    }
    // The same with the case folding of the current C locale.
    int CompareNoCase(const Char* other) const {
        return Functions::CompareNoCase(data_, other ? other : EmptyData());
    }
    int CompareNoCase(const Text& other) const { return CompareNoCase(other.GetString()); }

    // First occurrence at or after start; -1 for an empty text or a start outside this one.
    int Find(const Char* sub, int start = 0) const {
        if (!sub)
            return -1;
        return FindRange(sub, static_cast<int>(std::char_traits<Char>::length(sub)), start);
    }
    int Find(const Text& sub, int start = 0) const {
        return FindRange(sub.GetString(), sub.GetLength(), start);
    }
    int Find(Char ch, int start = 0) const {
        const int length = GetLength();
        if (start < 0 || start > length)
            return -1;
        return IndexOf(std::char_traits<Char>::find(data_ + start, Size(length - start), ch));
    }
    // Last occurrence.
    int ReverseFind(Char ch) const {
        for (int i = GetLength() - 1; i >= 0; --i)
            if (data_[i] == ch)
                return i;
        return -1;
    }
    // First character that is in set.
    int FindOneOf(const Char* set) const {
        const Char* found = std::find_if(begin(), end(), InSet(set));
        return found == end() ? -1 : IndexOf(found);
    }
    int FindOneOf(const Text& set) const { return FindOneOf(set.GetString()); }

    // The first, or the last, count characters; counts are clamped to 0 and the length.
    Text Left(int count) const { return Mid(0, count); }
    Text Right(int count) const {
        count = std::clamp(count, 0, GetLength());
        return Mid(GetLength() - count, count);
    }
    // At most count characters from first on; negative arguments count as 0, a first beyond the end gives the
    // empty text.
    Text Mid(int first, int count) const {
        first = std::max(first, 0);
        count = std::max(count, 0);
        if (first > GetLength())
            return Text();
        count = std::min(count, GetLength() - first);
        if (first == 0 && count == GetLength())
            return Self();
        return Text(data_ + first, count);
    }
    Text Mid(int first) const { return Mid(first, GetLength()); }

    // By towupper and towlower of the current C locale, character by character.
    void MakeUpper() { Transform(&Functions::Upper); }
    void MakeLower() { Transform(&Functions::Lower); }

    // Removes white space (iswspace) from the left end, the right end, or both.
    Text& TrimLeft() { return TrimLeftWhile(&Functions::IsSpace); }
    Text& TrimRight() { return TrimRightWhile(&Functions::IsSpace); }
    Text& Trim() {
        TrimLeft();
        return TrimRight();
    }
    // Removes the run of one character, or of the characters of a set.
    Text& TrimLeft(Char ch) { return TrimLeftWhile(Is(ch)); }
    Text& TrimRight(Char ch) { return TrimRightWhile(Is(ch)); }
    Text& TrimLeft(const Char* set) { return TrimLeftWhile(InSet(set)); }
    Text& TrimRight(const Char* set) { return TrimRightWhile(InSet(set)); }
    Text& TrimLeft(const Text& set) { return TrimLeft(set.GetString()); }
    Text& TrimRight(const Text& set) { return TrimRight(set.GetString()); }

    // Replaces every occurrence and returns how many there were; an empty old text, or one equal to the new
    // one, changes nothing. Occurrences do not overlap and are found from left to right.
    int Replace(Char old, Char now) {
        const auto count = static_cast<int>(std::count(begin(), end(), old));
        if (old == now || count == 0)
            return 0;
        MakePrivate(GetLength());
        std::replace(data_, data_ + GetLength(), old, now);
        return count;
    }
    int Replace(const Text& old, const Text& now) {
        if (old.IsEmpty() || old.Compare(now) == 0)
            return 0;
        int count = 0;
        for (int at = Find(old); at >= 0; at = Find(old, at + old.GetLength()))
            ++count;
        if (count > 0)
            ReplaceAll(old, now, count);
        return count;
    }

    // Deletes every occurrence of ch and returns how many there were.
    int Remove(Char ch) {
        const auto count = static_cast<int>(std::count(begin(), end(), ch));
        if (count == 0)
            return 0;
        MakePrivate(GetLength());
        const Char* last = std::remove(data_, data_ + GetLength(), ch);
        SetLength(IndexOf(last));
        return count;
    }

    // Inserts before index, which is clamped to the text; returns the new length.
    int Insert(int index, Char ch) { return InsertRange(index, &ch, 1); }
    int Insert(int index, const Text& text) {
        const Text keep(text);  // NOLINT(performance-unnecessary-copy-initialization): may be this text.
        return InsertRange(index, keep.GetString(), keep.GetLength());
    }

    // Deletes count characters from index on and returns the length from before. A negative index counts as
    // 0, a count beyond the end as the rest.
    int Delete(int index, int count = 1) {
        const int length = GetLength();
        index = std::max(index, 0);
        if (count <= 0 || index >= length)
            return length;
        count = std::min(count, length - index);
        MakePrivate(length);
        std::char_traits<Char>::move(data_ + index, data_ + index + count, Size(length - index - count));
        SetLength(length - count);
        return length;
    }

    // The token at or after pos, which moves to the start of the next one, or to -1 after the last. Runs of
    // delimiters never give empty tokens; at the end of the text the result is empty and pos -1.
    Text Tokenize(const Char* delimiters, int& pos) const {
        const int length = GetLength();
        if (pos < 0 || pos >= length) {
            pos = -1;
            return Text();
        }
        const auto isDelimiter = InSet(delimiters);
        const Char* first = std::find_if_not(begin() + pos, end(), isDelimiter);
        const Char* last = std::find_if(first, end(), isDelimiter);
        const Char* next = std::find_if_not(last, end(), isDelimiter);
        pos = next == end() ? -1 : IndexOf(next);
        return Text(first, static_cast<int>(last - first));
    }

protected:
    CSharedText() noexcept : data_(EmptyData()) {}
    CSharedText(const CSharedText& other) : data_(other.data_) {
        // Counted first and looked at afterwards, and compared with 0: one locked instruction, no load before
        // it. A locked array has one owner, so nobody sees its count change and change back.
        if (data_ != EmptyData() && ++Header()->references <= 0) [[unlikely]]
            BecomeDeepCopy();
    }
    CSharedText(CSharedText&& other) noexcept : data_(std::exchange(other.data_, EmptyData())) {}
    ~CSharedText() { Release(); }

    CSharedText& operator=(const CSharedText& other) {
        if (this != &other) {
            CSharedText copy(other);
            std::swap(data_, copy.data_);
        }
        return *this;
    }
    CSharedText& operator=(CSharedText&& other) noexcept {
        std::swap(data_, other.data_);
        return *this;
    }

    // Becomes a copy of count characters, which may lie inside this very text.
    void Assign(const Char* text, int count) {
        if (count <= 0)
            return Empty();
        Char* fresh = Allocate(count);
        std::char_traits<Char>::copy(fresh, text, Size(count));
        fresh[count] = Char(0);
        HeaderOf(fresh)->length = count;
        Adopt(fresh);
    }
    void Assign(Char ch, int count) {
        if (count <= 0)
            return Empty();
        Char* fresh = Allocate(count);
        std::fill_n(fresh, count, ch);
        fresh[count] = Char(0);
        HeaderOf(fresh)->length = count;
        Adopt(fresh);
    }

    // Appends count characters, which may lie inside this very text; in place when the array is private and
    // they fit.
    void AppendRange(const Char* text, int count) {
        if (count <= 0)
            return;
        const int length = GetLength();
        if (IsPrivate()) {
            const bool inside = !std::less<>()(text, data_) && !std::less<>()(data_ + length, text);
            const std::ptrdiff_t offset = inside ? text - data_ : 0;
            Enlarge(length + count);
            std::char_traits<Char>::move(data_ + length, inside ? data_ + offset : text, Size(count));
        } else {
            Char* fresh = Allocate(length + count);
            std::char_traits<Char>::copy(fresh, data_, Size(length));
            std::char_traits<Char>::copy(fresh + length, text, Size(count));
            Adopt(fresh);
        }
        SetLength(length + count);
    }

    // The two ranges behind one another, allocated once at the final size.
    static Text Joined(const Char* a, int lengthA, const Char* b, int lengthB) {
        Text result;
        if (lengthA + lengthB == 0)
            return result;
        Char* out = result.GetBuffer(lengthA + lengthB);
        std::char_traits<Char>::copy(out, a, Size(lengthA));
        std::char_traits<Char>::copy(out + lengthA, b, Size(lengthB));
        result.SetLength(lengthA + lengthB);
        return result;
    }

    // The length of a private array that was written directly; never called on the shared empty text.
    void SetLength(int length) {
        if (data_ == EmptyData())
            return;
        Header()->length = length;
        data_[length] = Char(0);
    }

    static int LengthOf(const Char* text) {
        return text ? static_cast<int>(std::char_traits<Char>::length(text)) : 0;
    }

private:
    using Functions = TextFunctions<Char>;

    struct TextHeader {
        std::atomic<std::int32_t> references;
        std::int32_t length = 0;
        std::int32_t capacity = 0;
    };
    static_assert(sizeof(TextHeader) == 12);

    struct EmptyText {
        TextHeader header{-1, 0, 0};
        Char terminator = Char(0);
    };

    static std::size_t Size(int count) { return static_cast<std::size_t>(count); }

    static Char* EmptyData() noexcept {
        static constinit EmptyText empty;
        return &empty.terminator;
    }
    static TextHeader* HeaderOf(Char* data) {
        return std::launder(
            reinterpret_cast<TextHeader*>(reinterpret_cast<char*>(data) - sizeof(TextHeader)));
    }
    TextHeader* Header() const { return HeaderOf(data_); }

    // A fresh array with one reference, length 0 and room for exactly capacity characters.
    static Char* Allocate(int capacity) { return Place(std::malloc(Bytes(capacity)), 0, capacity); }
    static std::size_t Bytes(int capacity) {
        return sizeof(TextHeader) + (Size(capacity) + 1) * sizeof(Char);
    }
    // Writes the header of an array with one reference into memory from malloc, and returns the characters.
    static Char* Place(void* memory, int length, int capacity) {
        if (!memory)
            throw std::bad_alloc();
        auto* header = new (memory) TextHeader{1, length, capacity};
        return reinterpret_cast<Char*>(reinterpret_cast<char*>(header) + sizeof(TextHeader));
    }
    // Gives a private array room for exactly capacity characters. Nothing is kept in reserve: realloc moves
    // long arrays without copying them, so that a text may well grow piece by piece.
    void Enlarge(int capacity) {
        if (GetCapacity() < capacity) {
            const int length = GetLength();
            data_ = Place(std::realloc(static_cast<void*>(Header()), Bytes(capacity)), length, capacity);
        }
    }

    // Leaves the locked array, which was counted once too often, for one of its own.
    void BecomeDeepCopy() {
        --Header()->references;
        data_ = DeepCopy(data_, GetLength(), GetLength());
    }
    static Char* DeepCopy(const Char* data, int length, int capacity) {
        Char* fresh = Allocate(capacity);
        std::char_traits<Char>::copy(fresh, data, Size(length) + 1);
        HeaderOf(fresh)->length = length;
        return fresh;
    }

    void Release() noexcept {
        if (data_ == EmptyData())
            return;
        // The last owner must see all that the others wrote before they let go.
        if (--Header()->references <= 0)
            std::free(Header());
    }
    void Adopt(Char* fresh) noexcept {
        Release();
        data_ = fresh;
    }

    bool IsPrivate() const {
        return data_ != EmptyData() && Header()->references.load(std::memory_order_acquire) == 1;
    }
    void MakePrivate(int capacity) {
        if (IsPrivate() && GetCapacity() >= capacity)
            return;
        Adopt(DeepCopy(data_, GetLength(), capacity));
    }

    const Text& Self() const { return static_cast<const Text&>(*this); }
    Text& Self() { return static_cast<Text&>(*this); }
    int IndexOf(const Char* found) const { return found ? static_cast<int>(found - data_) : -1; }

    static auto Is(Char wanted) {
        return [wanted](Char ch) { return ch == wanted; };
    }
    static auto InSet(const Char* set) {
        const auto length = set ? std::char_traits<Char>::length(set) : 0;
        return [set, length](Char ch) {
            return length > 0 && std::char_traits<Char>::find(set, length, ch) != nullptr;
        };
    }

    // Spares texts of one length, most of which are equal, the search for their ends: a third of a
    // comparison.
    bool HasCharactersOf(const Text& other) const {
        const int length = GetLength();
        return length == other.GetLength() &&
               std::char_traits<Char>::compare(data_, other.GetString(), Size(length)) == 0;
    }
    int FindRange(const Char* sub, int length, int start) const {
        const std::basic_string_view<Char> all(data_, Size(GetLength()));
        if (length == 0 || start < 0)
            return -1;
        const auto found = all.find(sub, Size(start), Size(length));
        return found == all.npos ? -1 : static_cast<int>(found);
    }

    template <typename Function>
    void Transform(Function function) {
        if (IsEmpty())
            return;
        MakePrivate(GetLength());
        std::transform(data_, data_ + GetLength(), data_, function);
    }

    template <typename Predicate>
    Text& TrimLeftWhile(Predicate predicate) {
        const auto run = static_cast<int>(std::find_if_not(begin(), end(), predicate) - begin());
        Delete(0, run);
        return Self();
    }
    template <typename Predicate>
    Text& TrimRightWhile(Predicate predicate) {
        int length = GetLength();
        while (length > 0 && predicate(data_[length - 1]))
            --length;
        if (length < GetLength()) {
            MakePrivate(GetLength());
            SetLength(length);
        }
        return Self();
    }

    void ReplaceAll(const Text& old, const Text& now, int count) {
        Text result;
        const int length = GetLength() + count * (now.GetLength() - old.GetLength());
        Char* out = result.GetBuffer(length);
        int from = 0;
        for (int at = Find(old); at >= 0; at = Find(old, from)) {
            out = std::copy(data_ + from, data_ + at, out);
            out = std::copy(now.begin(), now.end(), out);
            from = at + old.GetLength();
        }
        std::copy(data_ + from, data_ + GetLength(), out);
        result.SetLength(length);
        *this = std::move(result);
    }

    int InsertRange(int index, const Char* text, int count) {
        const int length = GetLength();
        index = std::clamp(index, 0, length);
        if (count <= 0)
            return length;
        MakePrivate(length + count);
        std::char_traits<Char>::move(data_ + index + count, data_ + index, Size(length - index));
        std::char_traits<Char>::copy(data_ + index, text, Size(count));
        SetLength(length + count);
        return length + count;
    }

    Char* data_;
};

// Comparisons in Compare order, with a text or a 0-terminated array on the right.
template <typename Text, typename Char>
bool operator==(const CSharedText<Text, Char>& a, const CSharedText<Text, Char>& b) {
    return a.Compare(static_cast<const Text&>(b)) == 0;
}
template <typename Text, typename Char>
bool operator==(const CSharedText<Text, Char>& a, const Char* b) {
    return a.Compare(b) == 0;
}
template <typename Text, typename Char>
auto operator<=>(const CSharedText<Text, Char>& a, const CSharedText<Text, Char>& b) {
    return a.Compare(static_cast<const Text&>(b)) <=> 0;
}
template <typename Text, typename Char>
auto operator<=>(const CSharedText<Text, Char>& a, const Char* b) {
    return a.Compare(b) <=> 0;
}
