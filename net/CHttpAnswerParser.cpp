// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CHttpAnswerParser.h"

#include <algorithm>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/basic_dynamic_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <limits>
#include <stdexcept>

namespace beast = boost::beast;
namespace http = boost::beast::http;

namespace {

constexpr int LOWEST_STATUS = 100;

}  // namespace

struct CHttpAnswerParser::Parser : http::response_parser<http::basic_dynamic_body<beast::flat_buffer>> {
    explicit Parser(std::size_t maxHead) {
        header_limit(static_cast<std::uint32_t>(maxHead));
        // Beast 1.74 takes "none" for a bound that every length passes.
        body_limit(std::numeric_limits<std::uint64_t>::max());
    }

    // To be called after the head. Other bodies than that of an answer OK have no bound: they are not kept.
    void BeginBody(qint64 maxBody) {
        eager(true);
        if (Status() == QHttpResponseHeader::OK)
            body_limit(static_cast<std::uint64_t>(maxBody));
    }
    int Status() const { return static_cast<int>(get().result_int()); }
    bool IsInterim() const { return Status() < QHttpResponseHeader::OK; }
    // Status (RFC 9110, 15) and the body's coding are known. True until the whole head has arrived.
    bool IsUnderstood() const {
        if (Status() < LOWEST_STATUS)
            return false;
        const auto codings = get().equal_range(http::field::transfer_encoding);
        return std::all_of(codings.first, codings.second, [](const auto& field) {
            return beast::iequals(field.value(), "chunked") || beast::iequals(field.value(), "identity");
        });
    }
    // Beast asserts that the end of a body in chunks, which has five bytes at least (RFC 9112, 7.1), is not
    // begun with fewer.
    bool MayTake(qsizetype bytes) const {
        constexpr qsizetype LAST_CHUNK = 5;
        return !is_header_done() || !chunked() || bytes >= LAST_CHUNK;
    }
    QByteArray TakeBody() {
        beast::flat_buffer& body = get().body();
        QByteArray bytes(static_cast<const char*>(body.data().data()), static_cast<qsizetype>(body.size()));
        body.consume(body.size());
        return bytes;
    }
    // The values of all its fields.
    QByteArray ProxyChallenges() const {
        QByteArray values;
        const auto fields = get().equal_range(http::field::proxy_authenticate);
        for (auto field = fields.first; field != fields.second; ++field)
            values.append(field->value().data(), static_cast<qsizetype>(field->value().size())).append('\n');
        return values;
    }
    // Returns the number of bytes that it has taken.
    std::size_t Take(const QByteArray& bytes, beast::error_code& error) {
        try {
            return put({bytes.constData(), static_cast<std::size_t>(bytes.size())}, error);
        } catch (const std::length_error&) {
            // Beast's container takes fields of up to 64 KiB.
            error = http::error::header_limit;
            return 0;
        }
    }
    // The largest number stands for all larger ones.
    qint64 ContentLength() const {
        constexpr std::uint64_t LARGEST = std::numeric_limits<qint64>::max();
        return static_cast<qint64>(std::min<std::uint64_t>(content_length().value_or(0), LARGEST));
    }
};

CHttpAnswerParser::CHttpAnswerParser(qint64 maxBody)
    : maxBody_(maxBody), parser_(std::make_unique<Parser>(MAX_HEAD)) {}

CHttpAnswerParser::~CHttpAnswerParser() = default;

QByteArray CHttpAnswerParser::Read(const QByteArray& bytes) {
    if (bytes.isEmpty())
        End();
    rest_ += bytes;
    QByteArray body;
    bool goesOn = true;
    while (goesOn && IsOpen() && !rest_.isEmpty() && parser_->MayTake(rest_.size())) {
        beast::error_code error;
        const std::size_t taken = parser_->Take(rest_, error);
        rest_.remove(0, static_cast<qsizetype>(taken));
        // The body is parsed later, because Beast adds the fields behind it to those of the head.
        const bool isHead = parser_->is_header_done() && !parser_->eager();
        if (isHead) {
            parser_->BeginBody(maxBody_);
            if (!parser_->IsInterim())
                header_ = {parser_->Status(), parser_->ProxyChallenges(), parser_->ContentLength()};
        }
        // Beast holds an announced length against its bound only with the head.
        const bool isTooLarge =
            header_.statusCode() == QHttpResponseHeader::OK && header_.contentLength() > maxBody_;
        body += parser_->TakeBody();
        const bool isDone = parser_->is_done();
        goesOn = isDone || isHead;
        const bool isTooLong = !goesOn && rest_.size() > MAX_HEAD;
        if ((error && error != http::error::need_more) || isTooLong || isTooLarge || !parser_->IsUnderstood())
            state_ = State::BROKEN;
        else if (isDone && !parser_->IsInterim())
            state_ = State::COMPLETE;
        else if (isDone)
            Skip(taken);
    }
    return body;
}

void CHttpAnswerParser::Skip(std::size_t bytes) {
    // The request did not ask for another protocol. The skipped answers and the head share one bound.
    maxHead_ -= std::min(maxHead_, bytes);
    if (parser_->Status() == QHttpResponseHeader::SWITCHING_PROTOCOLS || maxHead_ == 0)
        state_ = State::BROKEN;
    else
        parser_ = std::make_unique<Parser>(maxHead_);
}

void CHttpAnswerParser::End() {
    beast::error_code error;
    if (IsOpen() && parser_->got_some())
        parser_->put_eof(error);
    if (IsOpen())
        state_ = parser_->is_done() && !error ? State::COMPLETE : State::BROKEN;
}

bool CHttpAnswerParser::LeavesConnectionOpen() const {
    return IsComplete() && rest_.isEmpty() && parser_->keep_alive();
}
