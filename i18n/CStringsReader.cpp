// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "i18n/CStringsReader.h"

#include <QStringView>
#include <QtEndian>

namespace {

QString DecodeUnits(std::string_view bytes) {
    const bool isBigEndian = bytes.size() % 2 == 0 && bytes.starts_with("\xFE\xFF");
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size() / 2));
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2)
        text += QChar(isBigEndian ? qFromBigEndian<quint16>(bytes.data() + i)
                                  : qFromLittleEndian<quint16>(bytes.data() + i));
    return text;
}

bool IsSeparator(QChar unit) {
    return QStringView(u"=; \t\r\n").contains(unit) || unit.isNull();
}

}  // namespace

CStringsReader::CStringsReader(std::string_view bytes) : text_(DecodeUnits(bytes)) {}

bool CStringsReader::ReadPair(CAtlString& key, CAtlString& text) {
    while (ReadAnyPair(key, text))
        if (!key.IsEmpty())
            return true;
    return false;
}

bool CStringsReader::ReadAnyPair(CAtlString& key, CAtlString& text) {
    QString keyToken;
    QString textToken;
    if (!ReadToken(keyToken, keyToken_) || !ReadToken(textToken, textToken_))
        return false;
    key = keyToken;
    text = textToken;
    return true;
}

bool CStringsReader::ReadToken(QString& token, Token& facts) {
    token.clear();
    facts = {};
    bool started = false;
    bool quoted = false;
    while (!AtEnd()) {
        if (!quoted && SkipComment())
            continue;
        QChar unit = text_[position_++];
        if (!quoted && IsSeparator(unit)) {
            if (started)
                return true;
            continue;
        }
        if (!started)
            facts.begin = position_ - 1;
        started = true;
        facts.end = position_;
        if (unit == u'"') {
            quoted = !quoted;
            continue;
        }
        if (quoted && unit == u'\\') {
            if (AtEnd())
                break;
            unit = ReadEscape(facts);
        }
        if (token.size() < MAX_TOKEN_UNITS)
            token.append(unit);
        else
            facts.isCut = true;
    }
    facts.isUnclosed = quoted;
    return started;
}

bool CStringsReader::SkipComment() {
    if (StartsWith(u"/*")) {
        const qsizetype begin = position_;
        position_ += 2;
        if (!SkipPast(u"*/"))
            openComment_ = begin;
        return true;
    }
    if (!StartsWith(u"//"))
        return false;
    SkipPast(u"\n");
    return true;
}

char16_t CStringsReader::ReadEscape(Token& facts) {
    const char16_t letter = text_[position_++].unicode();
    switch (letter) {
        case u'n':
            return u'\n';
        case u't':
            return u'\t';
        case u'r':
            return u'\r';
        case u'u':
            return ReadHexEscape(facts);
        case u'"':
        case u'\\':
            return letter;
        default:
            facts.hasOddEscape = true;
            return letter;
    }
}

char16_t CStringsReader::ReadHexEscape(Token& facts) {
    int value = 0;
    for (int i = 0; i < 4 && !AtEnd(); ++i) {
        const int digit = HexDigit(text_[position_++].unicode());
        if (digit >= 0)
            value = value * 16 + digit;
        else
            facts.hasOddEscape = true;
    }
    return static_cast<char16_t>(value);
}

bool CStringsReader::StartsWith(const char16_t* word) const {
    return QStringView(text_).sliced(position_).startsWith(QStringView(word));
}

bool CStringsReader::SkipPast(const char16_t* word) {
    const qsizetype found = text_.indexOf(QStringView(word), position_);
    position_ = found < 0 ? text_.size() : found + QStringView(word).size();
    return found >= 0;
}
