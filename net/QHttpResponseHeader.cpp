// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QHttpResponseHeader.h"

#include <QList>
#include <algorithm>

namespace {

// The end of the element of a list that begins at a place: a comma that does not stand in quotes (RFC 9110,
// 5.6.1), or the end of the list.
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

// The scheme with which an element begins a challenge; empty when the element is one more parameter of the
// challenge before it: "name = value" (RFC 9110, 11.6.1).
QByteArray SchemeOf(const QByteArray& element) {
    const QByteArray text = element.trimmed().replace('\t', ' ');
    const QByteArray name = text.first(std::find(text.begin(), text.end(), ' ') - text.begin());
    const bool isParameter = name.contains('=') || text.sliced(name.size()).trimmed().startsWith('=');
    return isParameter ? QByteArray() : name.toLower();
}

// Qt 6.4 knows no other Digest than that with MD5.
bool IsMd5(const QByteArray& challenge) {
    const QByteArray text = challenge.toLower().replace(' ', "").replace('"', "");
    const qsizetype algorithm = text.indexOf("algorithm=");
    return algorithm < 0 || text.sliced(algorithm).startsWith("algorithm=md5,") ||
           text.endsWith("algorithm=md5");
}

}  // namespace

// Qt's classes look at the first challenge of each field alone, and take Basic when there is no Digest and no
// NTLM among them.
QHttpResponseHeader::ProxyScheme QHttpResponseHeader::proxyScheme() const {
    if (statusCode_ != PROXY_AUTHENTICATION_REQUIRED)
        return ProxyScheme::NONE;
    bool offersBasic = false;
    bool offersBetter = false;
    bool qtTakesBasic = false;
    bool qtTakesBetter = false;
    for (const QByteArray& field : proxyChallenges_.split('\n'))
        for (qsizetype begin = 0; begin < field.size();) {
            const qsizetype end = EndOfElement(field, begin);
            const QByteArray scheme = SchemeOf(field.sliced(begin, end - begin));
            offersBasic = offersBasic || scheme == "basic";
            offersBetter = offersBetter || scheme == "digest" || scheme == "ntlm" || scheme == "negotiate";
            qtTakesBasic = qtTakesBasic || (begin == 0 && scheme == "basic");
            qtTakesBetter =
                qtTakesBetter || (begin == 0 && (scheme == "ntlm" || (scheme == "digest" && IsMd5(field))));
            begin = end + 1;
        }
    if (offersBasic && !offersBetter)
        return ProxyScheme::BASIC;
    return qtTakesBasic && !qtTakesBetter ? ProxyScheme::TWISTED : ProxyScheme::BETTER;
}
