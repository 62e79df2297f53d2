// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/ValueChecks.h"

#include "net/QtDownloader.h"
#include "platform/files/Addresses.h"
#include "products/CVersionString.h"
#include "products/CVersionStringRange.h"
#include "products/Notification.h"

#include <QRegularExpression>
#include <QUrl>

namespace {

// The compact form, and the dotted form with leading zeros, mean exactly what they are read as.
bool IsPlainForm(const QString& text, const QString& readAs) {
    static const QRegularExpression leadingZeros("\\b0+(?=[0-9])");
    static const QRegularExpression compact("^[0-9]+$");
    return compact.match(text).hasMatch() || QString(text).remove(leadingZeros) == readAs;
}

void CheckVersion(const Place& place, const QString& name, const CAtlString& text, CFindings& findings) {
    const CVersionString version(text);
    const QString written = text.ToQString();
    if (!version.IsValid()) {
        findings.Add(place.file, place.line, Code::INVALID_VERSION,
                     QString("%1 \"%2\" is no version: it is below every version, and is compared as a text")
                         .arg(name, written));
        return;
    }
    const QString readAs = version.GetString().ToQString();
    if (readAs != written)
        findings.Add(place.file, place.line,
                     IsPlainForm(written, readAs) ? Code::VERSION_FORM : Code::MISREAD_VERSION,
                     QString("%1 \"%2\" is read as %3").arg(name, written, readAs));
}

void CheckAddress(const Place& place, const QString& name, const QString& text, CFindings& findings) {
    if (CanBeFetched(text))
        return;
    findings.Add(
        place.file, place.line, Code::NOT_HTTP,
        QString("%1 \"%2\" is no address that the program can fetch: it takes \"http://\" and a host")
            .arg(name, text));
}

void CheckPage(const Place& place, const QString& name, const CAtlString& text, CFindings& findings) {
    const QUrl page(WebAddress(text).ToQString());
    if (!page.isValid() || page.host().isEmpty())
        findings.Add(place.file, place.line, Code::PAGE_ADDRESS,
                     QString("%1 \"%2\" is no web address: no browser shows it").arg(name, text.ToQString()));
}

void CheckDate(const Place& place, const QString& name, const CAtlString& text, CFindings& findings) {
    if (!Notification::ReadDate(text).isValid())
        findings.Add(place.file, place.line, Code::BAD_DATE,
                     QString("%1 \"%2\" is no date of the form yyyyMMdd: the message is not shown")
                         .arg(name, text.ToQString()));
}

}  // namespace

bool CanBeFetched(const QString& text) {
    const QUrl address(text);
    return QtDownloader::CanFetch(address) && !address.host().isEmpty();
}

void CheckValue(const Place& place, const XmlAttributeRule& rule, const CAtlString& text,
                CFindings& findings) {
    if (text.IsEmpty())
        return;
    const QString name = QLatin1String(rule.name);
    const bool isLookedUp = rule.value != XmlValue::TEXT && rule.value != XmlValue::VERSION;
    if (const QString written = text.ToQString(); isLookedUp && written.trimmed() != written)
        return findings.Add(
            place.file, place.line, Code::BLANK,
            QString("%1 \"%2\" begins or ends with a blank, which belongs to it").arg(name, written));
    switch (rule.value) {
        case XmlValue::VERSION:
            return CheckVersion(place, name, text, findings);
        case XmlValue::ADDRESS:
            return CheckAddress(place, name, text.ToQString(), findings);
        case XmlValue::PAGE:
            return CheckPage(place, name, text, findings);
        case XmlValue::DATE:
            return CheckDate(place, name, text, findings);
        case XmlValue::TEXT:
        case XmlValue::KEY:
            break;
    }
}

void CheckRange(const Place& place, const CAtlString& from, const CAtlString& to, CFindings& findings) {
    const CVersionString lower(from);
    const CVersionString upper(to);
    const CVersionStringRange range(lower, upper);
    if (!range.GetTo().IsValid())
        findings.Add(place.file, place.line, Code::EMPTY_RANGE,
                     "the range holds no version: give it an upper end at least");
    else if (!upper.IsValid())
        findings.Add(place.file, place.line, Code::OPEN_RANGE,
                     QString("the range has a lower end alone, and so reaches from %1 down, not up")
                         .arg(range.GetTo().GetString().ToQString()));
    else if (lower.IsGreater(upper))
        findings.Add(
            place.file, place.line, Code::SWAPPED_RANGE,
            QString("the ends of the range are exchanged: it is read as %1 to %2")
                .arg(range.GetFrom().GetString().ToQString(), range.GetTo().GetString().ToQString()));
}

void CheckWholeAddress(const Place& place, const QString& address, CFindings& findings) {
    const QUrl url(address);
    if (QtDownloader::CanFetch(url) && (url.hasQuery() || url.hasFragment() || !url.userInfo().isEmpty()))
        findings.Add(
            place.file, place.line, Code::NOT_SENT,
            QString("of \"%1\" the program sends host, port and path only: no query, fragment or user")
                .arg(address));
}
