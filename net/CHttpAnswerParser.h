// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Takes an HTTP answer apart while it arrives.
#pragma once

#include "net/QHttpResponseHeader.h"

#include <QByteArray>
#include <memory>

// One answer to a GET (RFC 9112), in pieces of any size, by Boost.Beast's parser. Answers that only announce
// another one (1xx) are passed over. What that parser refuses is broken, and so is a body in a coding that
// nobody here could undo.
class CHttpAnswerParser {
public:
    // The most bytes of a head with what was passed over before it, and of what lies between two chunks.
    static constexpr qsizetype MAX_HEAD = 262'144;

    // maxBody is in bytes.
    explicit CHttpAnswerParser(qint64 maxBody);
    ~CHttpAnswerParser();

    // Takes the next bytes of the connection, of which there are none only when it has ended, and returns
    // those of the body among them.
    QByteArray Read(const QByteArray& bytes);

    // Its status is 0 until the head has arrived whole.
    const QHttpResponseHeader& Header() const { return header_; }
    bool IsComplete() const { return state_ == State::COMPLETE; }
    // Nothing that still comes can change that.
    bool IsBroken() const { return state_ == State::BROKEN; }
    // The connection is good for another request: the answer is complete, nothing lies behind its end, and
    // the server said that it keeps the connection (RFC 9112, 9.3).
    bool LeavesConnectionOpen() const;

private:
    struct Parser;
    enum class State { OPEN, COMPLETE, BROKEN };

    bool IsOpen() const { return state_ == State::OPEN; }
    void End();
    // Goes on behind an interim answer of so many bytes.
    void PassOver(std::size_t bytes);

    State state_ = State::OPEN;
    QHttpResponseHeader header_;
    qint64 maxBody_;
    std::size_t maxHead_ = MAX_HEAD;
    // What the parser has not taken yet.
    QByteArray rest_;
    std::unique_ptr<Parser> parser_;
};
