// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Decoding and encoding: what goes there and back must be what it was.
#include <QStringDecoder>
#include <cstring>

#include "fuzz/Fuzzing.h"
#include "platform/text/TextConversion.h"

namespace {

std::string Encoded(const CAtlString& text) {
    // Exactly as large as announced, so that a byte more is noticed.
    std::vector<char> out(static_cast<std::size_t>(Utf8Size(text.GetString(), text.GetLength())));
    const int written = EncodeUtf8(text.GetString(), text.GetLength(), out.data());
    Require(written <= static_cast<int>(out.size()), "the announced size suffices");
    return {out.data(), static_cast<std::size_t>(written)};
}

void CheckBytes(std::string_view bytes) {
    const CAtlString text(Bytes(bytes));
    const std::string back = Encoded(text);
    Require(bytes.starts_with(back), "encoding gives the bytes that were decoded");
    const std::string_view rest = bytes.substr(back.size());
    Require(CAtlString(Bytes(rest)).IsEmpty(), "decoding ends only where no sequence begins");

    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString theirs = decoder(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
    Require(!rest.empty() || !decoder.hasError(), "what is decoded whole is well formed");
    Require(rest.empty() == !decoder.hasError() || bytes.starts_with("\xEF\xBB\xBF"), "both agree on errors");
    const bool hasMark = bytes.starts_with("\xEF\xBB\xBF");
    if (rest.empty() && !hasMark && bytes.find('\0') == std::string_view::npos)
        Require(text.ToQString() == theirs && CAtlString(theirs) == text, "both decode the same");
}

// Any 32-bit values at all as characters.
void CheckCharacters(std::string_view bytes) {
    std::vector<wchar_t> characters(bytes.size() / sizeof(wchar_t));
    if (characters.empty())
        return;
    std::memcpy(characters.data(), bytes.data(), characters.size() * sizeof(wchar_t));
    const CAtlString text(characters.data(), static_cast<int>(characters.size()));
    const std::string encoded = Encoded(text);
    const CAtlString decoded(Bytes(encoded));
    for (int i = 0; i < decoded.GetLength(); ++i)
        Require(decoded[i] == text[i] || decoded[i] == 0xFFFD, "characters come back, or as U+FFFD");
    const std::unique_ptr<char[]> copy = DuplicateAsUtf8(text.GetString());
    Require(encoded.starts_with(copy.get()), "the copy is the same up to its first 0");
    text.ToQString();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = View(data, size);
    CheckBytes(input);
    CheckCharacters(input);
    return 0;
}
