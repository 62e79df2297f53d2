// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Reads the input as the answer of a server or a proxy, in pieces as they may arrive.
#include "fuzz/Fuzzing.h"
#include "net/CHttpAnswerParser.h"

namespace {

// Reads the input in pieces of that many bytes, and then the end of the connection.
struct Reading {
    CHttpAnswerParser parser{1 << 20};
    QByteArray body;

    Reading(const QByteArray& input, qsizetype piece) {
        for (qsizetype i = 0; i < input.size(); i += piece)
            body += parser.Read(input.mid(i, piece));
        parser.Read({});
        Require(parser.IsComplete() != parser.IsBroken(), "every answer ends");
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const Reading whole(input, input.size() + 1);
    const Reading bytes(input, 1);
    Require(bytes.parser.IsComplete() == whole.parser.IsComplete(), "the pieces of an answer do not matter");
    if (whole.parser.IsBroken())
        return 0;
    Require(bytes.body == whole.body &&
                bytes.parser.Header().proxyScheme() == whole.parser.Header().proxyScheme(),
            "the pieces of an answer do not matter");
    if (const auto challenge = whole.parser.Header().ntlm())
        challenge->Answer("DOMAIN\\user", "word", 0, QDateTime::currentDateTimeUtc());
    Require(whole.parser.Header().statusCode() >= QHttpResponseHeader::OK, "a whole answer has a head");
    return 0;
}
