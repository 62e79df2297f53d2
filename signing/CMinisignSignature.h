// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A signature that the minisign tool made for a file, in the form that it has today ("ED"): that of the
// contents' hash. The older form ("Ed") is no signature here: in it a hash that was signed could be passed
// off as the file.
#pragma once

#include "platform/files/CFileDescriptor.h"
#include "signing/CMinisignKey.h"

#include <QDate>
#include <string>
#include <vector>

// Signs a file's contents and, with a second signature over the first one and the comment, a line of text.
// What a signature says counts only once its key has been found to be the right one. A value; any thread.
class CMinisignSignature {
public:
    // A larger signature file is none; the tool's own comments have at most 8 KiB.
    static constexpr std::size_t MAX_FILE_BYTES = std::size_t{16} * 1024;

    // Reads the bytes of a signature file: its four lines, and nothing else. Nothing comes out of bytes that
    // are anything else. Any bytes may come.
    static std::optional<CMinisignSignature> Parse(std::string_view bytes);

    // Whether this key made the signature and its trusted comment. Of the file this says nothing yet.
    bool IsBy(const CMinisignKey& key) const;
    // The same, and whether it is the signature of what file holds from its present position to its end. The
    // file is read piece by piece.
    bool IsOf(const CFileDescriptor& file, const CMinisignKey& key) const;
    // The same of these bytes.
    bool IsOf(std::string_view contents, const CMinisignKey& key) const;
    // Says which key is meant; IsBy says whether it was that one.
    const MinisignFormat::KeyId& GetKeyId() const { return keyId_; }
    // A line of any bytes but control characters; tabs may be in it.
    const std::string& GetTrustedComment() const { return trustedComment_; }
    // What follows beginning in each word of the trusted comment that begins so. Words are separated by
    // blanks and tabs.
    std::vector<std::string> GetWords(std::string_view beginning) const;
    // The same of the only such word; nothing when there is none, or there are several.
    std::optional<std::string> GetOnlyWord(std::string_view beginning) const;

private:
    CMinisignSignature() = default;

    MinisignFormat::KeyId keyId_{};
    // Of the contents' BLAKE2b-512 hash.
    MinisignFormat::Signature signature_{};
    std::string trustedComment_;
    // Over the signature, directly followed by the trusted comment.
    MinisignFormat::Signature globalSignature_{};
};

// Until when a signature is good, as a word of its trusted comment says it ("until:yyyyMMdd").

// Today's date in UTC.
QDate TodayInUtc();
// The day that the word's value names; invalid when it names none.
QDate ReadLastDay(const std::string& text);
// Whether a signature with that last day is over: from the second day after it on, because some clocks are
// ahead.
bool IsOver(const QDate& lastDay, const QDate& today);
