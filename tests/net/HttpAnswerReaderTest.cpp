// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Answers as servers write them, in pieces as networks deliver them.
#include <gtest/gtest.h>

#include "net/CHttpAnswerReader.h"

namespace {

enum class Outcome { WHOLE, BROKEN, UNFINISHED };

struct Answer {
    const char* situation;
    std::string bytes;
    Outcome outcome;  // when the connection stays open
    int status;       // 0 for no head
    std::string body;
    bool isWholeAtEnd = false;  // when the connection ends then
    friend void PrintTo(const Answer& row, std::ostream* out) { *out << row.situation; }
};

const std::string OK = "HTTP/1.1 200 OK\r\n";
const std::string CHUNKED = OK + "Transfer-Encoding: Chunked\r\n\r\n";
// Their sizes take more room than MAX_LINES.
std::string ManyChunks() {
    std::string chunks;
    for (int i = 0; i < 60'000; ++i)
        chunks += "1\r\nx\r\n";
    return chunks;
}
const std::string LONG_LINES(CHttpAnswerReader::MAX_LINES, 'x');

const Answer ANSWERS[] = {
    {"Length", OK + "Content-Length: 4\r\n\r\nbody", Outcome::WHOLE, 200, "body", true},
    {"LengthInOtherLetters", OK + "cOnTeNt-LeNgTh:4\r\n\r\nbody", Outcome::WHOLE, 200, "body", true},
    {"MoreThanItsLength", OK + "Content-Length: 4\r\n\r\nbodyHTTP/1.1 500", Outcome::WHOLE, 200, "body",
     true},
    {"LessThanItsLength", OK + "Content-Length: 5\r\n\r\nbody", Outcome::UNFINISHED, 200, "body"},
    {"LengthZero", OK + "Content-Length: 0\r\n\r\n", Outcome::WHOLE, 200, "", true},
    {"LargestLength", OK + "Content-Length: 9223372036854775807\r\n\r\nx", Outcome::UNFINISHED, 200, "x"},
    {"LengthBeyondAllNumbers", OK + "Content-Length: 9223372036854775808\r\n\r\nx", Outcome::BROKEN, 200, ""},
    {"NegativeLength", OK + "Content-Length: -1\r\n\r\nx", Outcome::BROKEN, 200, ""},
    {"LengthWithAnotherUnit", OK + "Content-Length: 4k\r\n\r\nx", Outcome::BROKEN, 200, ""},
    {"TwoLengths", OK + "Content-Length: 1\r\nContent-Length: 4\r\n\r\nbody", Outcome::BROKEN, 200, ""},
    {"EmptyLength", OK + "Content-Length:\r\n\r\nbody", Outcome::BROKEN, 200, ""},
    {"UntilTheEnd", "HTTP/1.0 200 OK\r\n\r\nto the end", Outcome::UNFINISHED, 200, "to the end", true},
    {"NoReason", "HTTP/1.1 200\r\n\r\n", Outcome::UNFINISHED, 200, "", true},
    {"LineFeedsAlone", "HTTP/1.1 200 OK\nContent-Length: 1\n\nx", Outcome::WHOLE, 200, "x", true},
    {"FoldedField", OK + "X: a\r\n b\r\nContent-Length:\r\n\t 1\r\n\r\nx", Outcome::WHOLE, 200, "x", true},
    {"FoldBeforeAllFields", OK + " X: a\r\n\r\n", Outcome::BROKEN, 0, ""},
    {"FieldWithoutColon", OK + "X\r\n\r\n", Outcome::BROKEN, 0, ""},
    {"FieldWithoutName", OK + ": x\r\n\r\n", Outcome::BROKEN, 0, ""},
    {"Chunks", CHUNKED + "4\r\nbody\r\n00A;x=\"y\"\r\n and more.\r\n0\r\n\r\n", Outcome::WHOLE, 200,
     "body and more.", true},
    {"ManyChunks", CHUNKED + ManyChunks() + "0\r\n\r\n", Outcome::WHOLE, 200, std::string(60'000, 'x'), true},
    {"Trailers", CHUNKED + "1\r\nx\r\n0\r\nX: y\r\nZ: 0\r\n\r\n", Outcome::WHOLE, 200, "x", true},
    {"ChunksOverrideALength",
     OK + "Content-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nxy\r\n0\r\n\r\n", Outcome::WHOLE, 200,
     "xy", true},
    {"NoLastChunk", CHUNKED + "1\r\nx\r\n", Outcome::UNFINISHED, 200, "x"},
    {"NoEndOfTrailers", CHUNKED + "1\r\nx\r\n0\r\n", Outcome::UNFINISHED, 200, "x"},
    {"ChunkLongerThanItsSize", CHUNKED + "1\r\nxy\r\n0\r\n\r\n", Outcome::BROKEN, 200, "x"},
    {"ChunkWithoutSize", CHUNKED + ";x\r\n", Outcome::BROKEN, 200, ""},
    {"ChunkOfNoNumber", CHUNKED + "0x4\r\nbody\r\n", Outcome::BROKEN, 200, ""},
    {"ChunkOfANegativeSize", CHUNKED + "-4\r\nbody\r\n", Outcome::BROKEN, 200, ""},
    {"ChunkBeyondAllNumbers", CHUNKED + "ffffffffffffffff\r\nbody\r\n", Outcome::BROKEN, 200, ""},
    {"UnknownCoding", OK + "Transfer-Encoding: gzip, chunked\r\n\r\n0\r\n\r\n", Outcome::BROKEN, 200, ""},
    {"AnnouncedBefore",
     "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 103 Early Hints\r\nContent-Length: 9\r\n\r\n" + OK +
         "Content-Length: 1\r\n\r\nx",
     Outcome::WHOLE, 200, "x", true},
    {"OnlyAnnounced", "HTTP/1.1 100 Continue\r\n\r\n", Outcome::UNFINISHED, 0, ""},
    {"AnotherProtocol", "HTTP/1.1 101 Switching Protocols\r\nUpgrade: x\r\n\r\n", Outcome::BROKEN, 0, ""},
    {"NoContent", "HTTP/1.1 204 No Content\r\nContent-Length: 4\r\n\r\nbody", Outcome::WHOLE, 204, "", true},
    {"NotModified", "HTTP/1.1 304 Not Modified\r\nTransfer-Encoding: chunked\r\n\r\n", Outcome::WHOLE, 304,
     "", true},
    {"Nothing", "", Outcome::UNFINISHED, 0, ""},
    {"HalfAHead", OK + "Content-Le", Outcome::UNFINISHED, 0, ""},
    {"MailServer", "220 mail.example ESMTP\r\n", Outcome::BROKEN, 0, ""},
    {"ProtocolOfTheFuture", "HTTP/2 200\r\n\r\n", Outcome::BROKEN, 0, ""},
    {"StatusOfFourDigits", "HTTP/1.1 2000 OK\r\n\r\n", Outcome::BROKEN, 0, ""},
    {"StatusOfTwoDigits", "HTTP/1.1 20 OK\r\n\r\n", Outcome::BROKEN, 0, ""},
    {"StatusBelowAll", "HTTP/1.1 099 OK\r\n\r\n", Outcome::BROKEN, 0, ""},
    {"EndlessLine", OK + LONG_LINES, Outcome::BROKEN, 0, ""},
    {"EndlessSizeOfAChunk", CHUNKED + "1\r\nx\r\n" + LONG_LINES, Outcome::BROKEN, 200, "x"},
};

class HttpAnswerReader : public testing::TestWithParam<Answer> {
protected:
    // The bytes come in pieces of a size; whether the outcome is the row's.
    static void ReadIn(qsizetype size) {
        const Answer& row = GetParam();
        const QByteArray bytes = QByteArray::fromStdString(row.bytes);
        CHttpAnswerReader reader;
        QByteArray body;
        for (qsizetype i = 0; i < bytes.size(); i += size)
            body += reader.Read(QByteArrayView(bytes).sliced(i, std::min(size, bytes.size() - i)));
        EXPECT_EQ(body.toStdString(), row.body);
        EXPECT_EQ(reader.Header().statusCode(), row.status);
        EXPECT_EQ(reader.IsComplete(), row.outcome == Outcome::WHOLE);
        EXPECT_EQ(reader.IsBroken(), row.outcome == Outcome::BROKEN);
        reader.End();
        EXPECT_EQ(reader.IsComplete(), row.isWholeAtEnd);
        EXPECT_NE(reader.IsComplete(), reader.IsBroken());
    }
};

TEST_P(HttpAnswerReader, KnowsWhatIsWhole) {
    ReadIn(1 << 20);
    ReadIn(1);
    ReadIn(7);
}

INSTANTIATE_TEST_SUITE_P(, HttpAnswerReader, testing::ValuesIn(ANSWERS),
                         [](const auto& row) { return row.param.situation; });

TEST(HttpAnswerReaderHeader, TellsWhatTheTransferAsksFor) {
    CHttpAnswerReader reader;
    reader.Read(
        "HTTP/1.1 407 Proxy\r\nProxy-Authenticate: Digest realm=\"a\"\r\ncontent-length: 12\r\n"
        "proxy-authenticate: Basic realm=\"b\"\r\n\r\n");
    EXPECT_EQ(reader.Header().statusCode(), 407);
    EXPECT_TRUE(reader.Header().offersProxyScheme("Basic"));
    EXPECT_TRUE(reader.Header().offersProxyScheme("Digest"));
    EXPECT_EQ(reader.Header().contentLength(), 12);
    EXPECT_FALSE(reader.Header().isChunked());
}

}  // namespace
