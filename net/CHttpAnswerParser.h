// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The parser of HTTP answers.
#pragma once

#include "net/QHttpResponseHeader.h"

#include <QByteArray>
#include <memory>

// Reads one answer to a GET (RFC 9112) in pieces of any size, with Boost.Beast's parser. It skips answers
// that only announce another one (1xx). An answer is broken when that parser refuses it, when its status is
// 101 or below 100, or when its body has a transfer coding that this program cannot undo.
class CHttpAnswerParser {
public:
    // The most bytes of a head with the skipped answers before it, and of the text between two chunks.
    static constexpr qsizetype MAX_HEAD = 262'144;

    // maxBody is in bytes.
    explicit CHttpAnswerParser(qint64 maxBody);
    ~CHttpAnswerParser();

    // Takes the next bytes of the connection and returns the bytes of the body among them. An empty array
    // says that the connection has ended.
    QByteArray Read(const QByteArray& bytes);

    // Its status is 0 until the whole head has arrived.
    const QHttpResponseHeader& Header() const { return header_; }
    bool IsComplete() const { return state_ == State::COMPLETE; }
    // A broken answer stays broken.
    bool IsBroken() const { return state_ == State::BROKEN; }
    // The connection can carry another request: the answer is complete, no byte follows it, and the server
    // keeps the connection (RFC 9112, 9.3).
    bool LeavesConnectionOpen() const;

private:
    struct Parser;
    enum class State { OPEN, COMPLETE, BROKEN };

    bool IsOpen() const { return state_ == State::OPEN; }
    void End();
    // Starts anew after an interim answer of that many bytes.
    void Skip(std::size_t bytes);

    State state_ = State::OPEN;
    QHttpResponseHeader header_;
    qint64 maxBody_;
    std::size_t maxHead_ = MAX_HEAD;
    // What the parser has not taken yet.
    QByteArray rest_;
    std::unique_ptr<Parser> parser_;
};
