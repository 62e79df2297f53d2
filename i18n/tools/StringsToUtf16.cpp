// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A tool of the build: turns a readable UTF-8 strings file into the UTF-16 that the program reads.
//
//   StringsToUtf16 <source> <destination>
//
// Writes little-endian UTF-16 with a byte order mark. Ends with 1, and a line on standard error, when a file
// cannot be read or written or the source is not UTF-8.
#include <QFile>
#include <QString>
#include <QStringDecoder>
#include <QStringEncoder>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: StringsToUtf16 <source> <destination>\n", stderr);
        return 1;
    }
    QFile source(QFile::decodeName(argv[1]));
    if (!source.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s: cannot be read\n", argv[1]);
        return 1;
    }
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(source.readAll());
    if (decode.hasError()) {
        std::fprintf(stderr, "%s: is not UTF-8\n", argv[1]);
        return 1;
    }
    QStringEncoder encode(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
    const QByteArray bytes = encode(text);
    QFile destination(QFile::decodeName(argv[2]));
    if (!destination.open(QIODevice::WriteOnly) || destination.write(bytes) != bytes.size() ||
        !destination.flush()) {
        std::fprintf(stderr, "%s: cannot be written\n", argv[2]);
        return 1;
    }
    return 0;
}
