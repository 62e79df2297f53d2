// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The syntax of strings files. It knows text only, no files.
#pragma once

#include "platform/text/CAtlString.h"

#include <QString>
#include <cstddef>
#include <string_view>

// The value of 0-9, A-F or a-f, -1 for any other character. Independent of the locale.
constexpr int HexDigit(char32_t ch) {
    if (ch >= U'0' && ch <= U'9')
        return static_cast<int>(ch - U'0');
    if (ch >= U'A' && ch <= U'F')
        return static_cast<int>(ch - U'A') + 10;
    return ch >= U'a' && ch <= U'f' ? static_cast<int>(ch - U'a') + 10 : -1;
}

// Splits the bytes of a strings file into its pairs, in the file's order. The bytes are UTF-16: the first
// code unit is skipped as the byte order mark; FE FF in front of an even number of bytes means big-endian,
// anything else little-endian. A last odd byte is dropped. Every sequence of bytes is accepted.
//
// Tokens are taken in pairs and separated by "=", ";", blanks, tabs, line ends and 0. A double quote switches
// the quoted mode, in which separators are ordinary and a backslash starts an escape; a token may be partly
// quoted. Outside of quotes there are comments as in C and C++, which do not end a token.
class CStringsReader {
public:
    explicit CStringsReader(std::string_view bytes);

    // The next pair whose key is not empty; false at the end of the text. A last key without text is dropped.
    bool ReadPair(CAtlString& key, CAtlString& text);

    // The next pair, also one whose key is empty.
    bool ReadAnyPair(CAtlString& key, CAtlString& text);

    // How a token stands in the file; positions are in code units behind the byte order mark.
    struct Token {
        qsizetype begin = 0;
        qsizetype end = 0;
        // Longer than a token may be.
        bool isCut = false;
        // The file ends within its quotes.
        bool isUnclosed = false;
        // It holds an escape that stands for nothing but its own letter, or a \u without four digits.
        bool hasOddEscape = false;
    };
    // The last pair's tokens. After the end of the pairs: a last key without a text has an end above 0, its
    // text the end 0.
    const Token& GetKeyToken() const { return keyToken_; }
    const Token& GetTextToken() const { return textToken_; }
    // The whole text, behind the mark.
    const QString& GetText() const { return text_; }
    // Where the comment begins that does not end before the file does; -1 when none was read.
    qsizetype GetOpenComment() const { return openComment_; }

    // The longest token, in UTF-16 code units; the rest of a longer one is dropped.
    static constexpr qsizetype MAX_TOKEN_UNITS = 10239;

private:
    // The next token, which may be empty when it is quoted; false at the end of the text.
    bool ReadToken(QString& token, Token& facts);
    // Moves behind the comment that starts here; false when none does.
    bool SkipComment();
    // The unit that an escape stands for; the position is behind its backslash.
    char16_t ReadEscape(Token& facts);
    char16_t ReadHexEscape(Token& facts);

    bool AtEnd() const { return position_ >= text_.size(); }
    bool StartsWith(const char16_t* word) const;
    // Moves behind the next occurrence of word, or to the end; true when it occurs.
    bool SkipPast(const char16_t* word);

    QString text_;
    qsizetype position_ = 0;
    Token keyToken_;
    Token textToken_;
    qsizetype openComment_ = -1;
};
