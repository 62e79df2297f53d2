// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/CCatalog.h"
#include "catalog/Checks.h"
#include "catalog/ElementChecks.h"
#include "catalog/FormatRules.h"
#include "platform/desktop/CUnattendedEnvironment.h"
#include "products/Notification.h"

#include <QLocale>
#include <algorithm>
#include <boost/make_shared.hpp>
#include <map>

namespace {

using namespace NotificationRules;

// Returns false, and adds a finding, for a root of another name.
bool HasRoot(const CCatalogFile& file, CFindings& findings) {
    const TiXmlElement& root = *file.GetRoot();
    if (root.ValueStr() == NOTIFICATION)
        return true;
    findings.Add(file.GetPath(), root.Row(), Code::WRONG_ROOT,
                 "the root is not <Notification>: the program rejects the file");
    return false;
}

void AddRejected(const CCatalogFile& file, CFindings& findings) {
    if (findings.CountErrors(file.GetPath()) == 0)
        findings.Add(file.GetPath(), 0, Code::REJECTED, "the program rejects the file");
}

void CheckDescription(const CCatalogFile& file, const CCatalog& catalog, CFindings& findings) {
    if (HasRoot(file, findings))
        CheckElement(file, *file.GetRoot(), DESCRIPTION, findings);
    if (!Notification(catalog.GetEnvironment()).ReadDescription(file.GetFilePath()))
        AddRejected(file, findings);
}

void CheckDates(const CCatalogFile& file, const CCatalog& catalog, CFindings& findings) {
    const TiXmlElement& root = *file.GetRoot();
    const QDate start = Notification::ReadDate(XmlAttribute(root, START_DATE));
    const QDate stop = Notification::ReadDate(XmlAttribute(root, STOP_DATE));
    if (!start.isValid() || !stop.isValid())
        return;
    const int line = AttributeLine(root, STOP_DATE);
    if (start.addDays(1) >= stop)
        findings.Add(file.GetPath(), line, Code::NEVER_SHOWN,
                     "there is no day after StartDate and before StopDate: it is never shown");
    else if (catalog.GetEnvironment()->Today() >= stop)
        findings.Add(file.GetPath(), line, Code::EXPIRED, "the message is no longer shown");
}

// Checks the texts; returns their codes, with the lines where they come first.
std::map<QString, int> CheckTexts(const CCatalogFile& file, const TiXmlElement& texts, CFindings& findings) {
    std::map<QString, int> lines;
    for (const TiXmlElement* text : Children(&texts)) {
        const QString code = CAtlString(text->Value()).ToQString();
        const auto [first, isNew] = lines.try_emplace(code, text->Row());
        if (!isNew)
            findings.Add(file.GetPath(), text->Row(), Code::DUPLICATE_KEY,
                         QString("this text for \"%1\" replaces that of line %2")
                             .arg(code, QString::number(first->second)));
        if (XmlAttribute(*text, TEXT_VALUE).IsEmpty())
            findings.Add(file.GetPath(), text->Row(), Code::EMPTY_TEXT,
                         QString("the text for \"%1\" is empty: so is the row").arg(code));
    }
    return lines;
}

// Whether a language's users see a text other than the English one.
bool HasText(const std::map<QString, int>& texts, const QString& code) {
    const QStringList candidates = Notification::TextCodes(code);
    return std::any_of(candidates.begin(), candidates.end() - 1,
                       [&](const QString& candidate) { return texts.contains(candidate); });
}

// How Qt, by the standard (ISO 639, and ISO 3166 for regions), writes the code of a language; empty for any
// other text.
QString StandardCode(const QString& code) {
    const QLocale locale(code);
    if (locale.language() == QLocale::C)
        return {};
    return code.contains(u'_') ? locale.name() : QLocale::languageToCode(locale.language());
}

void CheckCodes(const CCatalogFile& file, const std::map<QString, int>& texts,
                const std::vector<QString>& languages, CFindings& findings) {
    const auto isKnown = [&](const QString& code) {
        return std::any_of(languages.begin(), languages.end(), [&](const QString& language) {
            return Notification::TextCodes(language).contains(code);
        });
    };
    for (const auto& [code, line] : texts) {
        const QString standard = StandardCode(code);
        if (languages.empty() ? code == standard : isKnown(code))
            continue;
        const QString hint =
            standard.isEmpty() || standard == code ? QString() : QString(": write \"%1\"").arg(standard);
        findings.Add(file.GetPath(), line, Code::UNKNOWN_LANGUAGE,
                     (languages.empty() ? QString("there is no language \"%1\"%2")
                                        : QString("no language table here has a language \"%1\"%2"))
                         .arg(code, hint));
    }
}

void CheckLanguages(const CCatalogFile& file, const TiXmlElement& element,
                    const std::map<QString, int>& texts, const std::vector<QString>& languages,
                    CFindings& findings) {
    QStringList missing;
    for (const QString& code : languages)
        if (!HasText(texts, code))
            missing += code;
    if (!missing.isEmpty())
        findings.Add(file.GetPath(), element.Row(), Code::MISSING_TRANSLATION,
                     QString("there is no text for %1: it is shown in English there")
                         .arg(missing.join(QLatin1String(", "))));
    CheckCodes(file, texts, languages, findings);
}

void CheckMessage(const CCatalogFile& file, const CCatalog& catalog, const std::vector<QString>& languages,
                  CFindings& findings) {
    const TiXmlElement& root = *file.GetRoot();
    if (HasRoot(file, findings)) {
        CheckElement(file, root, MESSAGE, findings);
        CheckDates(file, catalog, findings);
        const TiXmlElement* element = root.FirstChildElement(TEXTS);
        const auto texts = element ? CheckTexts(file, *element, findings) : std::map<QString, int>();
        if (texts.empty()) {
            findings.Add(file.GetPath(), root.Row(), Code::MISSING_ELEMENT,
                         "there is no text in <Text>: the message is not shown");
        } else {
            if (!texts.contains(Notification::TextCodes({}).back()))
                findings.Add(file.GetPath(), element->Row(), Code::NO_ENGLISH,
                             "there is no text for \"en\": where no other fits, the row is empty");
            CheckLanguages(file, *element, texts, languages, findings);
        }
    }
    if (!Notification(catalog.GetEnvironment()).ReadMessage(ReadFileBytes(file.GetFilePath())))
        AddRejected(file, findings);
}

// Looks for the description of a listed notification, and for board software in the folder of that
// description, which stands for an installation.
void CheckListedOne(const CCatalog& catalog, const CCatalogFile& list, const TiXmlElement& element,
                    CFindings& findings) {
    const int line = AttributeLine(element, ListFormat::NOTIFICATION_BASE);
    const QString name = AttributeText(element, ListFormat::NOTIFICATION_BASE) + QLatin1String(".xml");
    const auto files = catalog.FilesOf(FileKind::NOTIFICATION_DESCRIPTION);
    const auto find = [&](Qt::CaseSensitivity sensitivity) {
        return std::find_if(files.begin(), files.end(), [&](const CCatalogFile* file) {
            return file->GetName().compare(name, sensitivity) == 0;
        });
    };
    const auto found = find(Qt::CaseSensitive);
    if (found == files.end()) {
        const auto other = find(Qt::CaseInsensitive);
        findings.Add(list.GetPath(), line, Code::MISSING_FILE,
                     QString("there is no description \"%1\": the notification has no row%2")
                         .arg(name, other == files.end()
                                        ? QString()
                                        : QString("; \"%1\" differs in case only").arg((*other)->GetPath())));
    } else if (!IsBoardInstalled(boost::make_shared<CUnattendedEnvironment>(
                   CVardoDirectoryPath(CAtlString((*found)->GetFolder()))))) {
        findings.Add((*found)->GetPath(), 0, Code::NO_BOARD,
                     "no board software below version 10.0.0.0 is in this folder, as in an "
                     "installation: the notification would have no row there");
    }
}

// Beside local descriptions, the listed notifications should have theirs, too.
void CheckListed(const CCatalog& catalog, CFindings& findings) {
    if (catalog.FilesOf(FileKind::LOCAL_DESCRIPTION).empty())
        return;
    for (const CCatalogFile* list : catalog.FilesOf(FileKind::PRODUCT_LIST))
        for (const TiXmlElement* element : Children(list->GetRoot(), ListFormat::NOTIFICATION))
            if (!XmlAttribute(*element, ListFormat::NOTIFICATION_BASE).IsEmpty())
                CheckListedOne(catalog, *list, *element, findings);
}

}  // namespace

void CheckNotifications(const CCatalog& catalog, CFindings& findings) {
    const std::vector<QString> languages = LanguageCodes(catalog);
    for (const CCatalogFile* file : catalog.ReadableFilesOf(FileKind::NOTIFICATION_DESCRIPTION))
        CheckDescription(*file, catalog, findings);
    for (const CCatalogFile* file : catalog.ReadableFilesOf(FileKind::MESSAGE))
        CheckMessage(*file, catalog, languages, findings);
    CheckListed(catalog, findings);
}
