// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Takes an HTTP answer apart while it arrives.
#pragma once

#include "net/QHttpResponseHeader.h"

#include <QByteArray>
#include <QByteArrayView>
#include <optional>
#include <utility>
#include <vector>

// One answer to a GET (RFC 9112), in pieces of any size. Answers that only announce another one (1xx) are
// passed over. A body ends by its length, by its last chunk, or with the connection when it has neither; one
// that ends in another way is broken, and so is whatever is no HTTP/1.
class CHttpAnswerReader {
public:
    // The most bytes of a head with what was passed over before it, and of the lines from one byte of a body
    // that comes in chunks to the next.
    static constexpr qsizetype MAX_LINES = 262'144;

    // Takes the next bytes of the connection and returns those of the body among them. What comes behind the
    // end of the answer does not count.
    QByteArray Read(QByteArrayView bytes);
    // The connection has ended.
    void End();

    // Its status is 0 until the head has arrived whole.
    const QHttpResponseHeader& Header() const { return header_; }
    bool IsComplete() const { return state_ == State::COMPLETE; }
    // Nothing that still comes can change that.
    bool IsBroken() const { return state_ == State::BROKEN; }

private:
    enum class State {
        STATUS_LINE,
        FIELDS,
        BODY,         // rest_ bytes of it are missing
        BODY_TO_END,  // until the connection ends
        CHUNK_SIZE,   // the line before a chunk
        CHUNK,        // rest_ bytes of it are missing
        CHUNK_END,    // the empty line behind a chunk
        TRAILERS,     // the lines behind the last chunk
        COMPLETE,
        BROKEN,
    };

    // Whether bytes that come now are the body's.
    bool IsInBody() const;
    // Takes the body's bytes off the front.
    QByteArrayView TakeBody(QByteArrayView& bytes);
    // Takes a line off the front, or the beginning of one.
    void TakeLine(QByteArrayView& bytes);
    // What follows a line.
    State After(const QByteArray& line);
    State AfterStatusLine(const QByteArray& line);
    State AfterField(const QByteArray& line);
    State AfterHead();
    State AfterChunkSize(const QByteArray& line);
    // The values of the fields of a name, joined by commas (RFC 9110, 5.3).
    std::optional<QByteArray> ValuesOf(const char* name) const;

    State state_ = State::STATUS_LINE;
    // The beginning of a line whose end has not arrived.
    QByteArray line_;
    // The bytes of lines since the last byte of the body.
    qsizetype lineBytes_ = 0;
    int status_ = 0;
    std::vector<std::pair<QByteArray, QByteArray>> fields_;
    QHttpResponseHeader header_;
    qint64 rest_ = 0;
};
