// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The answer of a server or a proxy, as it comes out of the connection.
#include <algorithm>

#include "fuzz/Fuzzing.h"
#include "net/CHttpAnswerReader.h"

namespace {

struct Reading {
    CHttpAnswerReader reader;
    QByteArray body;
};

Reading ReadInPieces(QByteArrayView input, qsizetype size) {
    Reading reading;
    for (qsizetype i = 0; i < input.size(); i += size)
        reading.body += reading.reader.Read(input.sliced(i, std::min(size, input.size() - i)));
    return reading;
}

int Status(const CHttpAnswerReader& reader) {
    return reader.Header().statusCode();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArrayView input(data, static_cast<qsizetype>(size));
    Reading whole = ReadInPieces(input, input.size() + 1);
    for (const qsizetype piece : {1, 3}) {
        const Reading same = ReadInPieces(input, piece);
        Require(same.body == whole.body && Status(same.reader) == Status(whole.reader) &&
                    same.reader.IsComplete() == whole.reader.IsComplete() &&
                    same.reader.IsBroken() == whole.reader.IsBroken(),
                "the pieces of an answer do not matter");
    }
    Require(whole.body.size() <= input.size(), "a body is part of what arrived");
    Require(whole.body.isEmpty() || Status(whole.reader) >= QHttpResponseHeader::OK, "a body has a head");
    const Reading half = ReadInPieces(input.first(input.size() / 2), input.size() + 1);
    Require(whole.body.startsWith(half.body), "what has arrived stays");
    Require(!half.reader.IsComplete() || whole.reader.IsComplete(), "what is whole stays whole");

    const bool wasComplete = whole.reader.IsComplete();
    whole.reader.End();
    Require(whole.reader.IsComplete() != whole.reader.IsBroken(), "every answer ends");
    Require(!wasComplete || whole.reader.IsComplete(), "an end does not break what is whole");
    return 0;
}
