// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Whether a fetched installer is the maker's, and the one that was offered.
#pragma once

#include "platform/files/CFileDescriptor.h"
#include "platform/files/CVardoFilePath.h"
#include "signing/CMinisignSignature.h"

#include <boost/function.hpp>

// Holds the maker's public key, when there is one on this machine, and the signature of one installer. The
// order of calls is that of the functions; each is called once, and of the last two one. One thread at a
// time.
//
// The trusted comment of a signature must hold, among words that are separated by blanks and tabs, exactly
// one "file:" with the installer's file name and exactly one "version:" with its version. So an old installer
// cannot be passed off as a new one, nor another program of the maker's as this one's installer.
class CInstallerSeal {
public:
    // The name of the key's file in the shared data folder, and what an installer's address ends in when it
    // is that of its signature.
    static constexpr const wchar_t* KEY_FILE = L"VardoProductUpdate.pub";
    static constexpr const wchar_t* SIGNATURE_EXTENSION = L".minisig";

    // Reads the key. A key file that cannot be read, or is none, is a key to which no signature belongs.
    explicit CInstallerSeal(const CVardoFilePath& keyFile);

    // Whether something bears the name of the key file; only a verified installer may be started then.
    bool IsRequired() const { return isRequired_; }
    // Takes the bytes of the installer's signature file. Whether it is signed with the key, and for an
    // installer of that name (its folder is of no account) and of a version for which isOffered answers true.
    bool Accept(std::string_view signature, const CAtlString& installer,
                const boost::function<bool(const CAtlString& version)>& isOffered);
    // Whether an open file holds, from its present position to its end, what was signed; after an Accept that
    // was true. Changes nothing.
    bool IsOf(const CFileDescriptor& file) const;
    // Verifies what was fetched, after an Accept that was true: the path of the same bytes where nobody else
    // can exchange them; empty, and the file deleted, when they are not what was signed.
    CVardoFilePath Secure(const CVardoFilePath& fetched) const;

private:
    bool isRequired_;
    std::optional<CMinisignKey> key_;
    std::optional<CMinisignSignature> signature_;
};
