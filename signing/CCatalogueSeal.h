// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Whether an XML file of the maker's site is the maker's, the one that was asked for, and still valid.
#pragma once

#include "platform/files/CVardoDirectoryPath.h"
#include "signing/CKeyFile.h"

#include <QDate>
#include <optional>
#include <string>
#include <string_view>

// Holds the maker's public keys for such files, when there are any on this machine.
//
// The signature is in the file, as a comment at its end:
//
//     <!--minisign
//     (the four lines of a signature file of minisign)
//     -->
//
// It signs all bytes before the comment's "<". The trusted comment must hold, among words that are separated
// by blanks and tabs, exactly one "path:" with the path of the file's address as it is sent to the site, and
// exactly one "until:" with the last day for which the signature is meant, as "yyyyMMdd" in UTC. A value; any
// thread. Any bytes may come.
class CCatalogueSeal {
public:
    // The name of the keys' file in the shared data folder, and what the comment begins with.
    static constexpr const wchar_t* KEY_FILE = L"VardoCatalogue.pub";
    static constexpr std::string_view COMMENT = "<!--minisign";

    enum class Judgement {
        GOOD,           // also when there is no key file
        UNSIGNED,       // Read finds no statement
        WRONG_ADDRESS,  // signed for another path
        EXPIRED,        // later than the day after the last one: some clocks are ahead
    };
    // What the maker says of a file.
    struct Statement {
        // Percent-encoded, without the host; begins with "/".
        std::string path;
        QDate until;
    };

    // Reads the keys.
    explicit CCatalogueSeal(const CVardoDirectoryPath& sharedFolder);

    // Whether files must be signed.
    bool IsRequired() const { return keys_.IsThere(); }
    // What a good signature says of its file; nothing without a good one.
    std::optional<Statement> Read(std::string_view file) const;
    // Judges the bytes of a file from an address. today is in UTC; with an invalid date the last day does not
    // count.
    Judgement Judge(std::string_view file, const CAtlString& address, const QDate& today) const;

    // The path of an address as it is sent to the site.
    static std::string PathOf(const CAtlString& address);
    // The part of a file that is to be signed: all before its first signature.
    static std::string_view WithoutSignature(std::string_view file);

private:
    CKeyFile keys_;
};
