// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CExplanation.h"

#include "platform/text/PrintableText.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QStringList>

namespace {

QString Or(const QString& text, const char* otherwise) {
    return text.isEmpty() ? QString(otherwise) : text;
}

QString Version(const QJsonValue& version) {
    return QString("\"%1\" %2")
        .arg(version["text"].toString(), version["valid"].toBool() ? "read as " + version["read"].toString()
                                                                   : "which is no valid version");
}

QString Range(const QJsonValue& range) {
    return QString("%1 to %2")
        .arg(Or(range["from"].toString(), "(none)"), Or(range["to"].toString(), "(none)"));
}

QString File(const QJsonValue& file) {
    QStringList parts{Or(file["file"].toString(), "(no file)") + ": " +
                      (file["used"].toBool() ? "used" : "passed over, " + file["reason"].toString())};
    if (file["version"].isObject())
        parts << "version " + Version(file["version"]);
    return parts.join("; ");
}

QString Disabler(const QJsonValue& disabler) {
    return QString("%1 %2 is %3 %4")
        .arg(disabler["key"].toString(), disabler["installed"]["read"].toString(),
             disabler["disables"].toBool() ? "installed, which disables the updates: it is within"
                                           : "installed, which disables nothing: it is outside",
             Range(disabler["range"]));
}

QString Request(const QJsonValue& request) {
    const QString proxy = request["proxy"].toString();
    // All values in one arg() call, because an address may contain what looks like a placeholder.
    QString text =
        QString("%1 %2: status %3, %4 bytes, %5 ms")
            .arg(request["address"].toString(), proxy.isEmpty() ? "directly" : "through " + proxy,
                 QString::number(request["status"].toInt()), QString::number(request["bytes"].toInteger()),
                 QString::number(request["milliseconds"].toInteger()));
    if (const QString error = request["error"].toString(); !error.isEmpty())
        text += "; " + error;
    return text;
}

QString Category(const QJsonValue& category) {
    return QString("%1: installed %2, published %3")
        .arg(category["id"].toString(), Or(category["installed"].toString(), "(none)"),
             Or(category["published"].toString(), "(none)"));
}

QString Offer(const QJsonValue& offer) {
    const QString whom = offer["range"].isObject() ? "for installed versions from " + Range(offer["range"])
                                                   : QString("for all installed versions");
    return QString("%1: version %2").arg(whom, Version(offer["version"]));
}

QString SilentCheck(const QJsonValue& check) {
    const QString due = check["due"].toBool() ? "due, " : "not due, ";
    QString opens = "whether it would open the window is known only after a check";
    if (check["opensWindow"].isBool())
        opens = check["opensWindow"].toBool() ? "it would open the window" : "it would not open the window";
    return due + check["reason"].toString() + "; " + opens;
}

QString List(const QJsonValue& list) {
    QString text = QString("%1, version %2; passed over %3, %4")
                       .arg(list["file"].toString(), list["version"].toString(),
                            Or(list["passedOver"].toString(), "(no file)"), list["reason"].toString());
    if (const QString host = list["otherHost"].toString(); !host.isEmpty())
        text += "; unlike that one it is fetched from " + host;
    return text;
}

// The lines of a paragraph, each with its title.
class CParagraph {
public:
    explicit CParagraph(const QString& title) : text_(Printable(Cut(title)) + '\n') {}

    void Add(const char* title, const QString& line) {
        text_ += QString("  %1 %2\n").arg(title, -13).arg(Printable(Cut(line)));
    }
    void Add(const char* title, const QJsonValue& facts, QString (*toText)(const QJsonValue&)) {
        const QJsonArray all = facts.toArray();
        for (const QJsonValue fact : all)
            Add(title, toText(fact));
    }
    const QString& ToText() const { return text_; }

private:
    QString text_;
};

void AddAnswer(CParagraph& paragraph, const QJsonObject& explanation) {
    if (const QJsonObject answer = explanation["answer"].toObject(); !answer.isEmpty())
        paragraph.Add("answer",
                      answer["used"].toBool() ? QString("used") : "not used, " + answer["reason"].toString());
    paragraph.Add("category", explanation["categories"], Category);
    if (const QJsonObject offer = explanation["offer"].toObject(); !offer.isEmpty())
        paragraph.Add("offer", Offer(offer));
}

}  // namespace

QString CommonExplanation(const QJsonObject& report) {
    CParagraph paragraph("The whole report");
    paragraph.Add("list", List(report["list"]));
    paragraph.Add("silent check", SilentCheck(report["silentCheck"]));
    return paragraph.ToText();
}

QString ExplanationText(const QJsonObject& row) {
    const QJsonObject explanation = row["explain"].toObject();
    CParagraph paragraph(
        QString("%1 (%2)").arg(Or(row["name"].toString(), "(no name)"), row["key"].toString()));
    if (explanation["files"].toArray().isEmpty())
        paragraph.Add("file", "there is no description file of this name");
    paragraph.Add("file", explanation["files"], File);
    paragraph.Add("disabler", explanation["disablers"], Disabler);
    paragraph.Add("request", explanation["requests"], Request);
    AddAnswer(paragraph, explanation);
    if (explanation["silentCheck"]["forThisProduct"].toBool())
        paragraph.Add("silent check", "it would open the window for this product");
    return paragraph.ToText();
}
