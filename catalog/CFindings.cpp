// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/CFindings.h"

#include "platform/text/PrintableText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <tuple>

namespace {

QString Name(Severity severity) {
    switch (severity) {
        case Severity::ERROR:
            return "error";
        case Severity::WARNING:
            return "warning";
        case Severity::NOTE:
            break;
    }
    return "note";
}

QString Counted(int count, const QString& noun) {
    return QString("%1 %2%3").arg(count == 0 ? QString("no") : QString::number(count), noun,
                                  count == 1 ? QString() : QString("s"));
}

}  // namespace

void CFindings::Add(const QString& file, int line, const FindingCode& code, const QString& text) {
    findings_.push_back({file, std::max(line, 1), code, Printable(text)});
}

std::vector<Finding> CFindings::Sorted() const {
    std::vector<Finding> sorted = findings_;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Finding& a, const Finding& b) {
        return std::tie(a.file, a.line) < std::tie(b.file, b.line);
    });
    return sorted;
}

int CFindings::Count(Severity severity) const {
    return static_cast<int>(std::count_if(findings_.begin(), findings_.end(), [&](const Finding& finding) {
        return finding.code.severity == severity;
    }));
}

int CFindings::CountErrors(const QString& file) const {
    return static_cast<int>(std::count_if(findings_.begin(), findings_.end(), [&](const Finding& finding) {
        return finding.code.severity == Severity::ERROR && finding.file == file;
    }));
}

QString CFindings::Summary() const {
    return Counted(Count(Severity::ERROR), Name(Severity::ERROR)) + ", " +
           Counted(Count(Severity::WARNING), Name(Severity::WARNING));
}

CFindings CFindings::WithoutNotes() const {
    CFindings others(*this);
    std::erase_if(others.findings_,
                  [](const Finding& finding) { return finding.code.severity == Severity::NOTE; });
    return others;
}

QByteArray CFindings::ToText() const {
    QString text;
    for (const Finding& finding : Sorted())
        text += QString("%1:%2: %3: %4 [%5]\n")
                    .arg(Printable(finding.file), QString::number(finding.line), Name(finding.code.severity),
                         finding.text, QString::fromLatin1(finding.code.name));
    return text.toUtf8();
}

QByteArray CFindings::ToJson() const {
    QJsonArray array;
    for (const Finding& finding : Sorted())
        array.append(QJsonObject{{"file", finding.file},
                                 {"line", finding.line},
                                 {"severity", Name(finding.code.severity)},
                                 {"code", QString::fromLatin1(finding.code.name)},
                                 {"text", finding.text}});
    return PrintableJson(QJsonDocument(array));
}
