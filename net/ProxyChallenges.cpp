// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/ProxyChallenges.h"

#include <QByteArrayList>
#include <QRandomGenerator>
#include <algorithm>

namespace {

// The end of the element that begins there: a comma outside of quotes (RFC 9110, 5.6.1), or the list's end.
qsizetype EndOfElement(const QByteArray& list, qsizetype begin) {
    bool isQuoted = false;
    qsizetype i = begin;
    for (; i < list.size() && (isQuoted || list[i] != ','); ++i) {
        if (list[i] == '"')
            isQuoted = !isQuoted;
        else if (isQuoted && list[i] == '\\')
            ++i;
    }
    return std::min(i, list.size());
}

// The scheme of the challenge that an element begins; empty when the element is one more parameter of the
// challenge before it: "name = value" (RFC 9110, 11.2).
QByteArray SchemeOf(const QByteArray& element) {
    const QByteArray name = element.first(std::find(element.begin(), element.end(), ' ') - element.begin());
    const bool isParameter = name.contains('=') || element.sliced(name.size()).trimmed().startsWith('=');
    return isParameter ? QByteArray() : name;
}

QByteArray Unquoted(const QByteArray& value) {
    if (!value.startsWith('"'))
        return value;
    QByteArray text;
    for (qsizetype i = 1; i < value.size() && value[i] != '"'; ++i) {
        if (value[i] == '\\' && i + 1 < value.size())
            ++i;
        text += value[i];
    }
    return text;
}

QByteArray Quoted(QByteArray text) {
    return '"' + text.replace('\\', "\\\\").replace('"', "\\\"") + '"';
}

}  // namespace

QList<ProxyChallenge> ParseChallenges(const QByteArray& fields) {
    QList<ProxyChallenge> challenges;
    for (const QByteArray& field : fields.split('\n'))
        for (qsizetype begin = 0; begin < field.size();) {
            const qsizetype end = EndOfElement(field, begin);
            QByteArray text = field.sliced(begin, end - begin).replace('\t', ' ').trimmed();
            if (const QByteArray scheme = SchemeOf(text); !scheme.isEmpty()) {
                text = text.sliced(scheme.size()).trimmed();
                challenges.push_back({scheme.toLower(), {}, text});
            }
            const qsizetype equals = text.indexOf('=');
            if (equals > 0 && !challenges.isEmpty())
                challenges.back().parameters.insert(text.first(equals).trimmed().toLower(),
                                                    Unquoted(text.sliced(equals + 1).trimmed()));
            begin = end + 1;
        }
    return challenges;
}

std::optional<CDigestChallenge> CDigestChallenge::From(const ProxyChallenge& challenge) {
    const QByteArray algorithm = challenge.parameters.value("algorithm", "MD5").toUpper();
    const QByteArray protection = challenge.parameters.value("qop", "auth").toLower().replace(' ', "");
    if (challenge.scheme != "digest" || (algorithm != "MD5" && algorithm != "SHA-256") ||
        !protection.split(',').contains("auth"))
        return std::nullopt;
    CDigestChallenge digest;
    digest.algorithm_ = algorithm == "MD5" ? QCryptographicHash::Md5 : QCryptographicHash::Sha256;
    digest.parameters_ = challenge.parameters;
    digest.isStale_ = challenge.parameters.value("stale").toLower() == "true";
    return digest;
}

// RFC 7616, 3.4.
QByteArray CDigestChallenge::Answer(const QByteArray& user, const QByteArray& password,
                                    const QByteArray& target) {
    const auto hash = [this](const QByteArrayList& parts) {
        return QCryptographicHash::hash(parts.join(':'), algorithm_).toHex();
    };
    const QByteArray realm = parameters_.value("realm");
    const QByteArray nonce = parameters_.value("nonce");
    const QByteArray secret = hash({user, realm, password});
    const QByteArray request = hash({"GET", target});
    QByteArray text = "Digest username=" + Quoted(user) + ", realm=" + Quoted(realm) +
                      ", nonce=" + Quoted(nonce) + ", uri=" + Quoted(target);
    if (parameters_.contains("algorithm"))
        text += ", algorithm=" + parameters_.value("algorithm");
    if (parameters_.contains("opaque"))
        text += ", opaque=" + Quoted(parameters_.value("opaque"));
    if (!parameters_.contains("qop"))
        return text + ", response=" + Quoted(hash({secret, nonce, request}));
    const QByteArray count = QByteArray::number(++answers_, 16).rightJustified(8, '0');
    const QByteArray own = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    return text + ", qop=auth, nc=" + count + ", cnonce=" + Quoted(own) +
           ", response=" + Quoted(hash({secret, nonce, count, own, "auth", request}));
}
