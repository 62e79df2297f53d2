// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The maker's public keys on this machine.
#pragma once

#include "platform/files/CVardoFilePath.h"
#include "signing/CMinisignSignature.h"

#include <vector>

// What a file of public keys held when this object was made: one key or several, so that a new one can come
// before the old one goes. A value; any thread.
class CKeyFile {
public:
    // A file that cannot be read, or holds anything but keys, counts as a key file without keys.
    explicit CKeyFile(const CVardoFilePath& file);

    // Whether something bears the file's name, or may do so where the system does not say: then a signature
    // is needed.
    bool IsThere() const { return isThere_; }
    bool HasKeys() const { return !keys_.empty(); }
    const std::vector<CMinisignKey>& GetKeys() const { return keys_; }
    // Whether one of the keys made the signature and its trusted comment.
    bool HasMade(const CMinisignSignature& signature) const;
    // The same, and whether it is the signature of these bytes, or of what the file holds from its present
    // position to its end.
    bool HasSigned(std::string_view contents, const CMinisignSignature& signature) const;
    bool HasSigned(const CFileDescriptor& file, const CMinisignSignature& signature) const;

private:
    bool isThere_;
    std::vector<CMinisignKey> keys_;
};
