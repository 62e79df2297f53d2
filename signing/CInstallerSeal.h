// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Whether a fetched installer is the maker's, and the one that was offered.
#pragma once

#include "platform/files/CFileDescriptor.h"
#include "platform/files/CVardoFilePath.h"
#include "signing/CKeyFile.h"

#include <QDate>
#include <boost/function.hpp>
#include <optional>

// Holds the maker's public keys, when there are any on this machine, and the signature of one installer.
// Accept comes first, then IsOf or Secure. One thread at a time.
//
// The trusted comment of a signature must hold, among words that are separated by blanks and tabs, exactly
// one "file:" with the installer's file name and exactly one "version:" with its version. So an old installer
// cannot be passed off as a new one, nor another program of the maker's as this one's installer. At most one
// "argument:" has the argument, percent-encoded; without it the argument is empty. At most one "until:" has
// the last day, as in a CCatalogueSeal.
class CInstallerSeal {
public:
    // The name of the key file in the shared data folder, and what is appended to an installer's address to
    // get its signature's.
    static constexpr const wchar_t* KEY_FILE = L"VardoProductUpdate.pub";
    static constexpr const wchar_t* SIGNATURE_EXTENSION = L".minisig";

    // What a description offers.
    struct Offer {
        // Its folder does not count.
        CAtlString file{};
        // What the installer is started with.
        CAtlString argument{};
        // Whether a text is the offered version.
        boost::function<bool(const CAtlString&)> isVersion{};
        // In UTC.
        QDate today{};
    };

    // Why a signature was not accepted: the first reason that applies.
    enum class Refusal {
        NOTHING,
        NO_SIGNATURE,  // the bytes are not a signature
        KEY,           // no key in the key file has made it, but all that it says fits the offer
        FILE_NAME,
        VERSION,
        ARGUMENT,
        LAST_DAY,
    };

    // The trusted comment of a signature for an offer: the file without its folder, the version, and the
    // argument, if there is one.
    static QString CommentFor(const CAtlString& file, const CAtlString& version, const CAtlString& argument);

    // Reads the keys.
    explicit CInstallerSeal(const CVardoFilePath& keyFile) : keys_(keyFile) {}

    // Whether something bears the name of the key file; only a verified installer may be started then.
    bool IsRequired() const { return keys_.IsThere(); }
    // Takes the bytes of the installer's signature file. True when one of the keys made it for what is
    // offered.
    bool Accept(std::string_view signature, const Offer& offer);
    // Why the last Accept was false, and its signature, if the bytes were one.
    Refusal GetRefusal() const { return refusal_; }
    const std::optional<CMinisignSignature>& GetSignature() const { return signature_; }
    const CKeyFile& GetKeys() const { return keys_; }
    // After an Accept that was true: whether an open file holds, from its present position to its end, what
    // was signed. Reads the file to its end.
    bool IsOf(const CFileDescriptor& file) const;
    // After an Accept that was true: moves a fetched file to where nobody else can exchange it, and returns
    // the new path. When it is not what was signed, deletes it and returns an empty path.
    CVardoFilePath Secure(const CVardoFilePath& fetched) const;

private:
    Refusal Examine(const Offer& offer) const;

    CKeyFile keys_;
    std::optional<CMinisignSignature> signature_;
    Refusal refusal_ = Refusal::NO_SIGNATURE;
};
