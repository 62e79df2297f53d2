// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/CCatalog.h"
#include "catalog/Checks.h"
#include "i18n/CResourceManagerLinux.h"
#include "i18n/CStringsReader.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string_view>

namespace {

// The keys of a file, and the lines where they came last.
using KeyLines = std::map<QString, int>;

// Checks one file.
class CStringsCheck {
public:
    CStringsCheck(const CCatalogFile& file, CFindings& findings) : file_(file), findings_(findings) {}

    // Returns its keys; empty when keys and texts cannot be told apart to the end.
    KeyLines Run() {
        std::unique_ptr<char[]> buffer;
        const CVardoFilePath path = file_.GetFilePath();
        const bool isTooLarge = path.GetSize() > CResourceManagerLinux::MAX_STRINGS_BYTES;
        const off_t size = isTooLarge ? 0 : path.ReadAll(buffer);
        if (size <= 0) {
            Add(0, Code::UNREADABLE,
                "the file cannot be read, is empty or is too large: it is taken for missing");
            return {};
        }
        const std::string_view bytes(buffer.get(), static_cast<std::size_t>(size));
        if (IsUtf16(bytes))
            ReadPairs(bytes);
        return isDamaged_ ? KeyLines() : lines_;
    }

private:
    void Add(int line, const FindingCode& code, const QString& text) {
        findings_.Add(file_.GetPath(), line, code, text);
    }

    bool IsUtf16(std::string_view bytes) {
        const bool hasMark = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
        if (!hasMark)
            Add(0, Code::NOT_UTF16,
                "the file is not UTF-16 with a byte order mark: the program reads other texts in it");
        else if (bytes.size() % 2 != 0)
            Add(0, Code::NOT_UTF16,
                "the file has an odd number of bytes, and so is no UTF-16: a big-endian one is misread");
        return hasMark && bytes.size() % 2 == 0;
    }

    void ReadPairs(std::string_view bytes) {
        CStringsReader reader(bytes);
        CAtlString key;
        CAtlString text;
        while (reader.ReadAnyPair(key, text))
            CheckPair(reader, key.ToQString(), text);
        if (reader.GetKeyToken().end > 0 && reader.GetTextToken().end == 0) {
            CheckToken(reader, reader.GetKeyToken());
            Add(LineAt(reader, reader.GetKeyToken().begin), Code::LOOSE_KEY,
                "the last key has no text: the program drops it");
        }
        isDamaged_ = isDamaged_ || reader.GetOpenComment() >= 0;
        if (reader.GetOpenComment() >= 0)
            Add(LineAt(reader, reader.GetOpenComment()), Code::UNCLOSED,
                "a comment does not end: all behind it is lost");
    }

    void CheckPair(const CStringsReader& reader, const QString& key, const CAtlString& text) {
        const CStringsReader::Token& keyToken = reader.GetKeyToken();
        const CStringsReader::Token& textToken = reader.GetTextToken();
        const int line = LineAt(reader, keyToken.begin);
        CheckStep(reader, line);
        CheckToken(reader, keyToken);
        CheckToken(reader, textToken);
        if (isDamaged_)
            return;
        if (key.isEmpty()) {
            Add(line, Code::EMPTY_KEY, "the key is empty: it is ignored with its text");
            return;
        }
        if (text.IsEmpty())
            Add(LineAt(reader, textToken.begin), Code::EMPTY_TEXT,
                QString("the text of \"%1\" is empty: the English one is shown").arg(key));
        const auto [known, isNew] = lines_.try_emplace(key, line);
        if (!isNew)
            Add(line, Code::DUPLICATE_KEY,
                QString("this text of \"%1\" replaces that of line %2")
                    .arg(key, QString::number(known->second)));
        known->second = line;
    }

    // Keys and texts take turns, whatever stands between them. Authors put "=" between and ";" after them.
    // Reported once, since all that follows is out of step too.
    void CheckStep(const CStringsReader& reader, int line) {
        const QStringView all(reader.GetText());
        const QStringView before = all.sliced(lastEnd_, reader.GetKeyToken().begin - lastEnd_);
        const qsizetype keyEnd = reader.GetKeyToken().end;
        const QStringView between = all.sliced(keyEnd, reader.GetTextToken().begin - keyEnd);
        lastEnd_ = reader.GetTextToken().end;
        // A comment may hold any of these signs.
        const bool isOut = (!between.contains(u'/') && (!between.contains(u'=') || between.contains(u';'))) ||
                           (!before.contains(u'/') && before.contains(u'='));
        if (isOut && !isDamaged_)
            Add(line, Code::OUT_OF_STEP,
                "not just \"=\" is between this key and its text, or \"=\" before the key: when a key "
                "or a text is missing, all from there on change places");
        isDamaged_ = isDamaged_ || isOut;
    }

    void CheckToken(const CStringsReader& reader, const CStringsReader::Token& token) {
        const int line = LineAt(reader, token.begin);
        isDamaged_ = isDamaged_ || token.isUnclosed;
        if (token.isUnclosed)
            Add(line, Code::UNCLOSED, "the quotes do not end: all behind them is one text");
        if (token.isCut)
            Add(line, Code::CUT_TEXT,
                QString("the program reads the first %1 characters only")
                    .arg(CStringsReader::MAX_TOKEN_UNITS));
        if (token.hasOddEscape)
            Add(line, Code::ODD_ESCAPE,
                "a backslash stands before a letter that means nothing there, or before a \"u\" without "
                "four hexadecimal digits");
    }

    // Positions rise, except within one pair.
    int LineAt(const CStringsReader& reader, qsizetype position) {
        const QStringView text(reader.GetText());
        if (position < countedTo_)
            return line_ - static_cast<int>(text.sliced(position, countedTo_ - position).count(u'\n'));
        line_ += static_cast<int>(text.sliced(countedTo_, position - countedTo_).count(u'\n'));
        countedTo_ = position;
        return line_;
    }

    const CCatalogFile& file_;
    CFindings& findings_;
    KeyLines lines_;
    qsizetype lastEnd_ = 0;
    // Once it is true, only tokens are checked, since keys and texts may have changed places.
    bool isDamaged_ = false;
    qsizetype countedTo_ = 0;
    int line_ = 1;
};

// Compares the files of one product in the languages of one folder: each should hold every key.
void CheckTranslations(const std::map<const CCatalogFile*, KeyLines>& files, CFindings& findings) {
    std::map<QString, const CCatalogFile*> all;
    for (const auto& [file, keys] : files)
        for (const auto& [key, line] : keys)
            all.try_emplace(key, file);
    for (const auto& [file, keys] : files)
        for (const auto& [key, other] : all)
            if (!keys.contains(key))
                findings.Add(file->GetPath(), 0, Code::MISSING_TRANSLATION,
                             QString("there is no text for \"%1\", which line %2 of \"%3\" has")
                                 .arg(key, QString::number(files.at(other).at(key)), other->GetPath()));
}

}  // namespace

void CheckStringsFiles(const CCatalog& catalog, CFindings& findings) {
    const std::vector<QString> languages = LanguageCodes(catalog);
    // The files, by the folder of the languages and the name of the product.
    std::map<QString, std::map<const CCatalogFile*, KeyLines>> products;
    for (const CCatalogFile* file : catalog.FilesOf(FileKind::STRINGS)) {
        const QString language = file->GetFolder().section(u'/', -1);
        const QString product = file->GetFolder().section(u'/', 0, -2) + '/' + file->GetName();
        // A file without keys, or with unsure ones, is left out of the comparison.
        if (KeyLines keys = CStringsCheck(*file, findings).Run(); !keys.empty())
            products[product][file] = std::move(keys);
        if (!languages.empty() && std::find(languages.begin(), languages.end(), language) == languages.end())
            findings.Add(file->GetPath(), 0, Code::UNKNOWN_LANGUAGE,
                         QString("no language table here has a language \"%1\"").arg(language));
    }
    for (const auto& [product, files] : products)
        CheckTranslations(files, findings);
}
