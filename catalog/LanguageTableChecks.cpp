// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/Checks.h"
#include "catalog/ElementChecks.h"
#include "catalog/FormatRules.h"
#include "i18n/CResourceManagerLinux.h"

#include <algorithm>
#include <map>

namespace {

using namespace LanguageRules;

// Whether there is a strings file in the folder of a language, which lies beside the table. A table for
// programs that have their texts elsewhere stands alone.
bool HasTexts(const CCatalog& catalog, const CCatalogFile& table, const QString& code) {
    const auto files = catalog.FilesOf(FileKind::STRINGS);
    const QString folder = table.GetFolder() + '/';
    const auto isIn = [](const QString& place) {
        return [place](const CCatalogFile* file) { return (file->GetFolder() + '/').startsWith(place); };
    };
    return std::none_of(files.begin(), files.end(), isIn(folder)) ||
           std::any_of(files.begin(), files.end(), isIn(folder + code + '/'));
}

// Checks one table.
class CTableCheck {
public:
    CTableCheck(const CCatalogFile& file, const CCatalog& catalog, CFindings& findings)
        : file_(file), catalog_(catalog), findings_(findings) {}

    void Run() {
        CheckElement(file_, *file_.GetRoot(), TABLE, findings_);
        for (const TiXmlElement* language : Children(file_.GetRoot())) {
            CheckId(*language, AttributeText(*language, LanguageRules::ID));
            CheckCode(*language, AttributeText(*language, CODE));
            const QString direction = AttributeText(*language, RIGHT_TO_LEFT);
            if (!direction.isEmpty() && direction != u"0" && direction != u"1")
                Add(*language, RIGHT_TO_LEFT, Code::BAD_VALUE,
                    QString("RightToLeft \"%1\" is read as \"0\"").arg(direction));
        }
    }

private:
    void Add(const TiXmlElement& element, const char* name, const FindingCode& code, const QString& text) {
        findings_.Add(file_.GetPath(), AttributeLine(element, name), code, text);
    }

    void AddOnce(const TiXmlElement& element, const char* name, const QString& text) {
        // The program looks a language up without regard to case.
        const auto [first, isNew] =
            lines_.try_emplace(QLatin1String(name) + '=' + text.toLower(), element.Row());
        if (!isNew)
            Add(element, name, Code::DUPLICATE_KEY,
                QString("%1 \"%2\" is that of line %3 too, which counts")
                    .arg(QLatin1String(name), text, QString::number(first->second)));
    }

    void CheckId(const TiXmlElement& language, const QString& id) {
        if (id.isEmpty())
            return;
        const int number = ParseHexLanguageId(id);
        if (number == 0 || LanguageIdText(number).CompareNoCase(CAtlString(id)) != 0)
            Add(language, LanguageRules::ID, Code::BAD_LANGUAGE_ID,
                QString("ID \"%1\" is not four hexadecimal digits: the language is not found by it").arg(id));
        AddOnce(language, LanguageRules::ID, id);
    }

    void CheckCode(const TiXmlElement& language, const QString& code) {
        if (code.isEmpty())
            return;
        AddOnce(language, CODE, code);
        if (!CResourceManagerLinux::IsFolderName(CAtlString(code)))
            Add(language, CODE, Code::BAD_LANGUAGE_CODE,
                QString("Code \"%1\" is no name for a folder: the language has no texts").arg(code));
        else if (!code.startsWith(QLatin1String("en")) && !HasTexts(catalog_, file_, code))
            Add(language, CODE, Code::NO_TEXTS,
                QString(
                    "there is no strings file in \"%1/\" beside the table: this language is shown in English")
                    .arg(code));
    }

    const CCatalogFile& file_;
    const CCatalog& catalog_;
    CFindings& findings_;
    // The line of each first value, by attribute and value.
    std::map<QString, int> lines_;
};

}  // namespace

void CheckLanguageTables(const CCatalog& catalog, CFindings& findings) {
    for (const CCatalogFile* file : catalog.ReadableFilesOf(FileKind::LANGUAGE_TABLE))
        CTableCheck(*file, catalog, findings).Run();
}
