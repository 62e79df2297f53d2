// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CHttpAnswerParser.h"

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/basic_dynamic_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <stdexcept>

namespace beast = boost::beast;
namespace http = boost::beast::http;

namespace {

constexpr int LOWEST_STATUS = 100;

}  // namespace

struct CHttpAnswerParser::Parser : http::response_parser<http::basic_dynamic_body<beast::flat_buffer>> {
    Parser(std::size_t maxHead, qint64 maxBody) {
        // Takes the body in the same call as the head.
        eager(true);
        header_limit(static_cast<std::uint32_t>(maxHead));
        body_limit(static_cast<std::uint64_t>(maxBody));
    }

    int Status() const { return static_cast<int>(get().result_int()); }
    bool IsInterim() const { return Status() < QHttpResponseHeader::OK; }
    // Whether the status is one (RFC 9110, 15) and the body comes out as it was meant. True as long as the
    // head has not arrived whole.
    bool IsUnderstood() const {
        if (Status() < LOWEST_STATUS)
            return false;
        const auto codings = get().equal_range(http::field::transfer_encoding);
        return std::all_of(codings.first, codings.second, [](const auto& field) {
            return beast::iequals(field.value(), "chunked") || beast::iequals(field.value(), "identity");
        });
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
    // Returns how many bytes it has taken.
    std::size_t Take(const QByteArray& bytes, beast::error_code& error) {
        try {
            return put({bytes.constData(), static_cast<std::size_t>(bytes.size())}, error);
        } catch (const std::length_error&) {
            // A field of more than 64 KiB, which its container has no room for.
            error = http::error::header_limit;
            return 0;
        }
    }
    qint64 ContentLength() const { return static_cast<qint64>(content_length().value_or(0)); }
};

CHttpAnswerParser::CHttpAnswerParser(qint64 maxBody)
    : maxBody_(maxBody), parser_(std::make_unique<Parser>(MAX_HEAD, maxBody)) {}

CHttpAnswerParser::~CHttpAnswerParser() = default;

QByteArray CHttpAnswerParser::Read(const QByteArray& bytes) {
    if (bytes.isEmpty())
        End();
    rest_ += bytes;
    QByteArray body;
    bool goesOn = true;
    while (goesOn && IsOpen() && !rest_.isEmpty()) {
        beast::error_code error;
        const std::size_t taken = parser_->Take(rest_, error);
        rest_.remove(0, static_cast<qsizetype>(taken));
        if (parser_->is_header_done() && !parser_->IsInterim() && header_.statusCode() == 0)
            header_ = {parser_->Status(), parser_->ProxyChallenges(), parser_->ContentLength()};
        body += parser_->TakeBody();
        goesOn = parser_->is_done();
        const bool isTooLong = !goesOn && rest_.size() > MAX_HEAD;
        if ((error && error != http::error::need_more) || isTooLong || !parser_->IsUnderstood())
            state_ = State::BROKEN;
        else if (goesOn && !parser_->IsInterim())
            state_ = State::COMPLETE;
        else if (goesOn)
            PassOver(taken);
    }
    return body;
}

void CHttpAnswerParser::PassOver(std::size_t bytes) {
    // Nobody asked for another protocol, and the announcements of one answer share a bound.
    maxHead_ -= std::min(maxHead_, bytes);
    if (parser_->Status() == QHttpResponseHeader::SWITCHING_PROTOCOLS || maxHead_ == 0)
        state_ = State::BROKEN;
    else
        parser_ = std::make_unique<Parser>(maxHead_, maxBody_);
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
