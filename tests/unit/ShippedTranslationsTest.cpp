// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Each built translation holds every text that the program passes to tr or translate, and every text that Qt
// shows in the program's dialogs.
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTranslator>
#include <map>
#include <memory>
#include <set>

#include "i18n/CStringsReader.h"
#include "i18n/LanguageTable.h"
#include "support/TemporaryTree.h"
#include "support/TextPrinting.h"

namespace {

using Texts = std::set<QString>;

const QStringList SHIPPED = {"ar", "de", "es", "fr", "he", "ja", "pl", "pt_BR", "zh_CN"};

// The texts that a C++ source passes on for translation, joined from their literals, and those of a form. A
// call without a literal stands for its unknown text, and fails the test, since no file holds it.
Texts TextsOfFile(QString file) {
    static const QRegularExpression COMMENT(R"(^\s*//.*$)", QRegularExpression::MultilineOption);
    static const QRegularExpression JOINT(R"x("\s*")x");
    static const QString LITERALS = R"x("((?:[^"\\]|\\.|"\s*")*)")x";
    static const QRegularExpression CALL(
        R"(\b(?:tr|QT_TR_NOOP)\(\s*)" + LITERALS +
        R"x(|\b(?:(?:QCoreApplication::)?translate|QT_TRANSLATE_NOOP)\(\s*"\w+",\s*)x" + LITERALS +
        R"x(|<string>([^<\n]+)</|\btr\(\s*[^"\s][^;]*|\bQCoreApplication::translate\([^;]*)x");
    Texts texts;
    for (auto found = CALL.globalMatch(file.remove(COMMENT)); found.hasNext();) {
        const auto call = found.next();
        QString text = call.captured(1) + call.captured(2) + call.captured(3);
        text.remove(JOINT).replace("\\n", "\n").replace("&amp;", "&");
        texts.insert(text.isEmpty() ? call.captured() : text);
    }
    return texts;
}

Texts TextsOfProgram() {
    Texts texts;
    for (const char* room : {"app", "i18n", "net", "platform", "products", "signing", "ui"}) {
        QDirIterator files(QStringLiteral(VARDO_SOURCE_DIR "/") + room, {"*.cpp", "*.h", "*.ui"}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext())
            texts.merge(TextsOfFile(QString::fromStdString(ReadWholeFile(files.next().toStdString()))));
    }
    texts.erase(":");  // stands between the fields of host and port
    return texts;
}

// Records the texts that Qt asks for, and translates nothing.
class Recorder : public QTranslator {
public:
    Recorder() { QCoreApplication::installTranslator(this); }
    QString translate(const char* context, const char* text, const char* /*comment*/,
                      int /*n*/) const override {
        if (QByteArray(context) != "QShortcut")
            asked.insert(text);
        return {};
    }
    bool isEmpty() const override { return false; }
    mutable Texts asked;
};

// The texts that Qt asks for on this platform, and its captions on GNOME.
Texts TextsOfQt() {
    const Recorder recorder;
    recorder.asked = {"&OK", "&Cancel", "&Close"};
    const QMessageBox box(QMessageBox::Question, "title", "text",
                          QMessageBox::Ok | QMessageBox::Cancel | QMessageBox::Yes | QMessageBox::No |
                              QMessageBox::Close | QMessageBox::Retry);
    QLineEdit field;
    const std::unique_ptr<QMenu> menu(field.createStandardContextMenu());
    return recorder.asked;
}

std::map<QString, QString> ShippedPairs(const QString& code) {
    const std::string bytes =
        ReadWholeFile((OwnLanguagesFolder() + code + "/VARDOProductUpdate.strings").toStdString());
    CStringsReader reader(bytes);
    std::map<QString, QString> pairs;
    CAtlString key;
    CAtlString text;
    while (reader.ReadPair(key, text))
        pairs[key.ToQString()] = text.ToQString();
    return pairs;
}

}  // namespace

TEST(ShippedTranslations, EveryTextIsInEveryFileInTheSameShape) {
    static const QRegularExpression BREAKS_AT_END("\\n*$");
    EXPECT_EQ(QDir(OwnLanguagesFolder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name), SHIPPED);
    Texts texts = TextsOfProgram();
    ASSERT_GE(texts.size(), 23U) << "far too few: are the sources where they were?";
    texts.merge(TextsOfQt());
    for (const QString& code : SHIPPED) {
        const auto pairs = ShippedPairs(code);
        for (const QString& text : texts)
            EXPECT_TRUE(pairs.contains(text)) << code.toStdString() << " lacks: " << text.toStdString();
        for (const auto& [key, text] : pairs) {
            SCOPED_TRACE(code.toStdString() + ": " + key.toStdString());
            EXPECT_FALSE(text.isEmpty());
            EXPECT_EQ(BREAKS_AT_END.match(text).captured(), BREAKS_AT_END.match(key).captured());
            EXPECT_EQ(text.count('&'), key.count('&')) << "mnemonics";
            EXPECT_EQ(text.count("VARDO Product Update"), key.count("VARDO Product Update"));
        }
        const CAtlString id = LanguageIdFromCode(code);
        EXPECT_EQ(LanguageAttributeById(ParseHexLanguageId(id), "Code").ToQString(), code);
        EXPECT_EQ(IsRightToLeft(id), code == "ar" || code == "he");
    }
}
