// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/QHttpResponseHeader.h"

#include <QRegularExpression>

bool QHttpResponseHeader::offersProxyScheme(const char* scheme) const {
    static const QRegularExpression QUOTED(R"("(\\.|[^"\\])*")");
    const QString challenges = QString::fromLatin1(proxyChallenges_).remove(QUOTED);
    const QRegularExpression offered(QStringLiteral("(^|,)\\s*%1\\s*(?=$|,|\\s[^=,]*=)").arg(scheme),
                                     QRegularExpression::CaseInsensitiveOption);
    return offered.match(challenges).hasMatch();
}
