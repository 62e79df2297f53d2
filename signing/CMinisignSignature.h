// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A signature that the minisign tool made for a file, in today's form ("ED"), which signs the hash of the
// contents. The older form ("Ed") is refused: in it a signed hash could be passed off as the file.
#pragma once

#include "platform/files/CFileDescriptor.h"
#include "signing/CMinisignKey.h"

#include <QDate>
#include <string>
#include <vector>

// Signs a file's contents and, with a second signature over the first one and the comment, a line of text.
// What a signature says counts only after IsBy or IsOf returned true. A value; any thread.
class CMinisignSignature {
public:
    // A larger file is not a signature file; the tool's own comments have at most 8 KiB.
    static constexpr std::size_t MAX_FILE_BYTES = std::size_t{16} * 1024;

    // Reads the bytes of a signature file: its four lines. Nothing when the bytes hold anything else. Any
    // bytes may come.
    static std::optional<CMinisignSignature> Parse(std::string_view bytes);

    // Whether this key made the signature and its trusted comment. This says nothing about the file yet.
    bool IsBy(const CMinisignKey& key) const;
    // The same, and whether it is the signature of what file holds from its present position to its end. The
    // file is read piece by piece.
    bool IsOf(const CFileDescriptor& file, const CMinisignKey& key) const;
    // The same for these bytes.
    bool IsOf(std::string_view contents, const CMinisignKey& key) const;
    // Says which key is meant; IsBy says whether that key made it.
    const MinisignFormat::KeyId& GetKeyId() const { return keyId_; }
    // A line of any bytes but control characters; tabs may be in it.
    const std::string& GetTrustedComment() const { return trustedComment_; }
    // What follows beginning in each word of the trusted comment that begins with it. Words are separated by
    // blanks and tabs.
    std::vector<std::string> GetWords(std::string_view beginning) const;
    // The same for the only such word; nothing for no such word, or several.
    std::optional<std::string> GetOnlyWord(std::string_view beginning) const;

private:
    CMinisignSignature() = default;

    MinisignFormat::KeyId keyId_{};
    // Signs the contents' BLAKE2b-512 hash.
    MinisignFormat::Signature signature_{};
    std::string trustedComment_;
    // Signs that signature, directly followed by the trusted comment.
    MinisignFormat::Signature globalSignature_{};
};

// A signature's last day is the word "until:yyyyMMdd" of its trusted comment.

// Today's date in UTC.
QDate TodayInUtc();
// The day that the word's value names; invalid when the text is not a day.
QDate ReadLastDay(const std::string& text);
// Whether a signature with that last day is over: from the second day after it on, because some clocks are
// ahead.
bool IsOver(const QDate& lastDay, const QDate& today);
