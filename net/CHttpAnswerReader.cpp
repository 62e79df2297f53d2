// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CHttpAnswerReader.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace {

constexpr int DECIMAL = 10;
constexpr int HEXADECIMAL = 16;

// Of digits alone, without a sign or white space.
std::optional<qint64> ToNumber(QByteArrayView text, int base) {
    quint64 number = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), number, base);
    if (error != std::errc() || end != text.end() || number > std::numeric_limits<qint64>::max())
        return std::nullopt;
    return static_cast<qint64>(number);
}

}  // namespace

QByteArray CHttpAnswerReader::Read(QByteArrayView bytes) {
    QByteArray body;
    while (!bytes.isEmpty() && !IsComplete() && !IsBroken()) {
        if (IsInBody())
            body += TakeBody(bytes);
        else
            TakeLine(bytes);
    }
    return body;
}

void CHttpAnswerReader::End() {
    if (state_ == State::BODY_TO_END)
        state_ = State::COMPLETE;
    else if (!IsComplete())
        state_ = State::BROKEN;
}

bool CHttpAnswerReader::IsInBody() const {
    return state_ == State::BODY || state_ == State::BODY_TO_END || state_ == State::CHUNK;
}

QByteArrayView CHttpAnswerReader::TakeBody(QByteArrayView& bytes) {
    lineBytes_ = 0;
    if (state_ == State::BODY_TO_END)
        return std::exchange(bytes, {});
    const qsizetype count = std::min<qint64>(rest_, bytes.size());
    const QByteArrayView taken = bytes.first(count);
    bytes = bytes.sliced(count);
    rest_ -= count;
    if (rest_ == 0)
        state_ = state_ == State::CHUNK ? State::CHUNK_END : State::COMPLETE;
    return taken;
}

void CHttpAnswerReader::TakeLine(QByteArrayView& bytes) {
    const qsizetype end = bytes.indexOf('\n');
    const QByteArrayView taken = end < 0 ? bytes : bytes.first(end + 1);
    bytes = bytes.sliced(taken.size());
    line_ += taken;
    lineBytes_ += taken.size();
    if (lineBytes_ > MAX_LINES)
        state_ = State::BROKEN;
    else if (end >= 0)
        // The carriage return may be missing (RFC 9112, 2.2).
        state_ = After(line_.chopped(line_.endsWith("\r\n") ? 2 : 1));
    if (end >= 0)
        line_.clear();
}

CHttpAnswerReader::State CHttpAnswerReader::After(const QByteArray& line) {
    switch (state_) {
        case State::STATUS_LINE:
            return AfterStatusLine(line);
        case State::FIELDS:
            return line.isEmpty() ? AfterHead() : AfterField(line);
        case State::CHUNK_SIZE:
            return AfterChunkSize(line);
        case State::CHUNK_END:
            return line.isEmpty() ? State::CHUNK_SIZE : State::BROKEN;
        case State::TRAILERS:
            return line.isEmpty() ? State::COMPLETE : State::TRAILERS;
        default:
            return State::BROKEN;
    }
}

// "HTTP/1.1 200 OK" (RFC 9112, 4).
CHttpAnswerReader::State CHttpAnswerReader::AfterStatusLine(const QByteArray& line) {
    constexpr qsizetype STATUS_BEGIN = 9;
    constexpr qsizetype STATUS_END = 12;
    const bool isHttp = line.startsWith("HTTP/1.") && line.size() >= STATUS_END &&
                        line[STATUS_BEGIN - 1] == ' ' &&
                        (line.size() == STATUS_END || line[STATUS_END] == ' ');
    if (!isHttp)
        return State::BROKEN;
    const std::optional<qint64> status =
        ToNumber(QByteArrayView(line).sliced(STATUS_BEGIN, STATUS_END - STATUS_BEGIN), DECIMAL);
    status_ = static_cast<int>(status.value_or(0));
    return status_ < QHttpResponseHeader::CONTINUE ? State::BROKEN : State::FIELDS;
}

CHttpAnswerReader::State CHttpAnswerReader::AfterField(const QByteArray& line) {
    // A field may go on in a line that begins with white space (RFC 9112, 5.2).
    const bool goesOn = line.startsWith(' ') || line.startsWith('\t');
    const qsizetype colon = line.indexOf(':');
    if (goesOn ? fields_.empty() : colon < 1)
        return State::BROKEN;
    if (goesOn)
        fields_.back().second = (fields_.back().second + ' ' + line).trimmed();
    else
        fields_.emplace_back(line.first(colon).trimmed(), line.sliced(colon + 1).trimmed());
    return State::FIELDS;
}

// RFC 9112, 6.3.
CHttpAnswerReader::State CHttpAnswerReader::AfterHead() {
    if (status_ == QHttpResponseHeader::SWITCHING_PROTOCOLS)
        return State::BROKEN;
    if (status_ < QHttpResponseHeader::OK) {
        fields_.clear();
        return State::STATUS_LINE;
    }
    const std::optional<QByteArray> codings = ValuesOf("Transfer-Encoding");
    const std::optional<QByteArray> length = ValuesOf("Content-Length");
    const std::optional<qint64> bytes = length && !codings ? ToNumber(*length, DECIMAL) : std::nullopt;
    header_ = QHttpResponseHeader(status_, ValuesOf("Proxy-Authenticate").value_or(QByteArray()),
                                  bytes.value_or(0), codings.has_value());
    rest_ = bytes.value_or(0);
    if (status_ == QHttpResponseHeader::NO_CONTENT || status_ == QHttpResponseHeader::NOT_MODIFIED)
        return State::COMPLETE;
    if (codings)
        return codings->compare("chunked", Qt::CaseInsensitive) == 0 ? State::CHUNK_SIZE : State::BROKEN;
    if (!length)
        return State::BODY_TO_END;
    if (!bytes)
        return State::BROKEN;
    return rest_ == 0 ? State::COMPLETE : State::BODY;
}

// The size, perhaps with an extension (RFC 9112, 7.1).
CHttpAnswerReader::State CHttpAnswerReader::AfterChunkSize(const QByteArray& line) {
    const qsizetype extension = line.indexOf(';');
    const QByteArray text = extension < 0 ? line : line.first(extension);
    const std::optional<qint64> size = ToNumber(text.trimmed(), HEXADECIMAL);
    if (!size)
        return State::BROKEN;
    rest_ = *size;
    return rest_ == 0 ? State::TRAILERS : State::CHUNK;
}

std::optional<QByteArray> CHttpAnswerReader::ValuesOf(const char* name) const {
    std::optional<QByteArray> values;
    for (const auto& [field, value] : fields_) {
        if (field.compare(name, Qt::CaseInsensitive) == 0)
            values = values ? *values + ", " + value : value;
    }
    return values;
}
