// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/CNtlmChallenge.h"

#include <QMessageAuthenticationCode>
#include <QStringEncoder>
#include <QtEndian>
#include <algorithm>

namespace {

const QByteArray SIGNATURE("NTLMSSP\0", 8);

// [MS-NLMP], 2.2.2.5: texts in UTF-16, the name of the domain, NTLM with its extended security, and "always
// sign", which every client sends.
constexpr quint32 UTF16 = 0x1;
constexpr quint32 FLAGS = UTF16 | 0x4 | 0x200 | 0x8000 | 0x80000;

// Where the parts of a challenge begin.
constexpr qsizetype TYPE = 8;
constexpr qsizetype DOMAIN_FIELD = 12;
constexpr qsizetype CHALLENGE_FLAGS = 20;
constexpr qsizetype NONCE = 24;
constexpr qsizetype NONCE_SIZE = 8;
constexpr qsizetype FACTS_FIELD = 40;
constexpr qsizetype SMALLEST = 48;

// A fact of the challenge: the proxy's time.
constexpr quint16 TIMESTAMP = 7;

template <typename Number>
QByteArray Bytes(Number number) {
    QByteArray bytes(sizeof(number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

template <typename Number>
Number NumberAt(const QByteArray& bytes, qsizetype at) {
    return qFromLittleEndian<Number>(bytes.constData() + at);
}

// A field has the length of its bytes, the space for them, and the place where they lie.
QByteArray FieldAt(const QByteArray& message, qsizetype at) {
    const auto place = static_cast<qsizetype>(NumberAt<quint32>(message, at + 4));
    return message.mid(place, NumberAt<quint16>(message, at));
}

QByteArray ToUtf16(const QString& text) {
    return QStringEncoder(QStringEncoder::Utf16LE)(text);
}

QByteArray Hmac(const QByteArray& key, const QByteArray& bytes) {
    return QMessageAuthenticationCode::hash(bytes, key, QCryptographicHash::Md5);
}

// In tenths of microseconds since 1601; the proxy's own time where it tells that, because clocks differ.
QByteArray Time(const QByteArray& facts, const QDateTime& now) {
    for (qsizetype at = 0; at + 12 <= facts.size(); at += 4 + NumberAt<quint16>(facts, at + 2))
        if (NumberAt<quint16>(facts, at) == TIMESTAMP)
            return facts.sliced(at + 4, 8);
    return Bytes<qint64>(QDateTime(QDate(1601, 1, 1), QTime(0, 0), Qt::UTC).msecsTo(now) * 10'000);
}

}  // namespace

QByteArray CNtlmChallenge::Request() {
    return "NTLM " + (SIGNATURE + Bytes<quint32>(1) + Bytes(FLAGS) + QByteArray(16, '\0')).toBase64();
}

std::optional<CNtlmChallenge> CNtlmChallenge::From(const ProxyChallenge& challenge) {
    const QByteArray message = QByteArray::fromBase64(challenge.token);
    const bool isKnown = challenge.scheme == "ntlm" && message.size() >= SMALLEST &&
                         message.startsWith(SIGNATURE) && NumberAt<quint32>(message, TYPE) == 2 &&
                         (NumberAt<quint32>(message, CHALLENGE_FLAGS) & UTF16) != 0;
    return isKnown ? std::optional(CNtlmChallenge(message)) : std::nullopt;
}

QByteArray CNtlmChallenge::Answer(const QString& user, const QString& password, quint64 nonce,
                                  const QDateTime& now) const {
    const qsizetype backslash = user.indexOf(u'\\');
    const QString name = user.sliced(backslash + 1);
    // Letter by letter: QString would make two letters of some, as of a sharp s.
    QString capitals = name;
    std::transform(name.begin(), name.end(), capitals.begin(), [](QChar each) { return each.toUpper(); });
    QByteArray domain = user.contains(u'@') ? QByteArray() : FieldAt(message_, DOMAIN_FIELD);
    if (backslash >= 0)
        domain = ToUtf16(user.first(backslash));

    const QByteArray secret = QCryptographicHash::hash(ToUtf16(password), QCryptographicHash::Md4);
    const QByteArray key = Hmac(secret, ToUtf16(capitals) + domain);
    const QByteArray facts = FieldAt(message_, FACTS_FIELD);
    const QByteArray own = Bytes<quint64>(0x0101) + Time(facts, now) + Bytes(nonce) + Bytes<quint32>(0) +
                           facts + Bytes<quint32>(0);
    const QByteArray proof = Hmac(key, message_.sliced(NONCE, NONCE_SIZE) + own) + own;

    QByteArray head = SIGNATURE + Bytes<quint32>(3);
    QByteArray parts;
    // An empty answer of the older kind, and neither the computer's name nor a key for a session.
    for (const QByteArray& part :
         {QByteArray(24, '\0'), proof, domain, ToUtf16(name), QByteArray(), QByteArray()}) {
        constexpr quint32 HEAD_SIZE = 64;
        const auto size = static_cast<quint16>(part.size());
        head += Bytes(size) + Bytes(size) + Bytes(HEAD_SIZE + static_cast<quint32>(parts.size()));
        parts += part;
    }
    return "NTLM " + (head + Bytes(FLAGS) + parts).toBase64();
}
