// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Reads the input as a key file and a signature file of minisign, and as a file with a signature in it. The
// corpus holds real signatures; an input may count as signed only if it differs from them in layout alone.
#include <fcntl.h>

#include "fuzz/Fuzzing.h"
#include "signing/CCatalogueSeal.h"
#include "signing/CMinisignSignature.h"

namespace {

// The secret half of this key no longer exists.
constexpr const char* KEY =
    "untrusted comment: minisign public key 7937908A525D6DE8\n"
    "RWTobV1SipA3ecB5oTKph5W5fQBe1sCyqgjOGoi7CxFYxI/8a0o5aYM8\n";
constexpr const char* SIGNATURE =
    "untrusted comment: signature from minisign secret key\n"
    "RUTobV1SipA3eUKa2N6LNUz671UDakp+6q6139hAc4ULsKnTB4Lc2Oz63oiBWxQ9y9+JF88eeqLs8koxAmmuYlMrDueGsIao8QE=\n"
    "trusted comment: file:installer.sh version:3.2.0.1\n"
    "obrIGiAI1CnZDe0uC/uOClBVfneoY9CdJz/oyS05cp/+IwMPgLEaaVyxMCx1bcXl/yof/CCZ4mMefFAT9JP9DQ==\n";
constexpr const char* SIGNED_FILE = "message";
constexpr const char* SIGNED_COMMENT = "file:installer.sh version:3.2.0.1";

bool IsOf(const CMinisignSignature& signature, const InputFile& file, const CMinisignKey& key) {
    return signature.IsOf(CFileDescriptor(::open(file.Path().c_str(), O_RDONLY | O_CLOEXEC)), key);
}

const CMinisignKey& RealKey() {
    static const auto keys = CMinisignKey::ParseAll(KEY);
    return keys.at(0);
}

// A file that was signed and one that was not.
struct Files {
    explicit Files(const CMinisignKey& key) {
        message.Write(SIGNED_FILE);
        other.Write("massage");
        const auto real = CMinisignSignature::Parse(SIGNATURE);
        Require(real && IsOf(*real, message, key), "the real signature is one");
    }
    InputFile message{"/tmp/fuzz/message"};
    InputFile other{"/tmp/fuzz/other"};
};

void CheckSignature(const CMinisignSignature& signature, const CMinisignKey& key) {
    static const Files files(key);
    const bool isBy = signature.IsBy(key);
    Require(!isBy || signature.GetTrustedComment() == SIGNED_COMMENT, "only the signed comment is trusted");
    Require(isBy || !IsOf(signature, files.message, key), "a file's signature has a signed comment");
    Require(!IsOf(signature, files.other, key), "nothing is the signature of what was not signed");
    Require(!signature.IsOf(CFileDescriptor(), key), "nothing is the signature of no file");
}

const CCatalogueSeal& RealSeal() {
    static InputFile keys("/tmp/fuzz/VardoCatalogue.pub");
    keys.Write(KEY);
    static const CCatalogueSeal seal(CVardoDirectoryPath("/tmp/fuzz"));
    return seal;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = View(data, size);
    Require(!RealSeal().Read(input), "nobody has signed an XML file with the real key");
    if (const auto signature = CMinisignSignature::Parse(input))
        CheckSignature(*signature, RealKey());
    for (const CMinisignKey& other : CMinisignKey::ParseAll(input))
        Require(!other.HasSigned(std::span(data, size), {}), "no key has made a signature of zeros");
    return 0;
}
