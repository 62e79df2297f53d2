// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The translations as they are built: every text that the program passes to tr or translate, and every text
// that Qt shows in its dialogs, is in every shipped file.
#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <map>
#include <memory>
#include <set>

#include "i18n/InstallLanguage.h"
#include "i18n/Language.h"
#include "i18n/LanguageTable.h"
#include "i18n/QStringsTranslator.h"
#include "i18n/StringsReader.h"
#include "support/TemporaryTree.h"
#include "support/TextPrinting.h"

namespace {

using Texts = std::set<QString>;

const QStringList SHIPPED = {"ar", "de", "es", "fr", "he", "ja", "pl", "pt_BR", "zh_CN"};

// Texts of the program that no language writes differently.
const Texts NEED_NO_TRANSLATION = {
    ":",  // stands between the fields of host and port
};

// Adjacent C++ literals as one text.
QString JoinLiterals(const QString& literals) {
    static const QRegularExpression LITERAL(R"x("((?:[^"\\]|\\.)*)")x");
    QString text;
    for (auto found = LITERAL.globalMatch(literals); found.hasNext();)
        text += found.next().captured(1);
    return text.replace("\\n", "\n").replace("\\t", "\t").replace("\\\"", "\"").replace("\\\\", "\\");
}

// The texts that a C++ source hands over for translation. A call without a literal, whose text cannot be
// found this way, is itself among them, and in no file.
Texts TextsOfSource(QString source) {
    static const QRegularExpression COMMENT(R"(^\s*//.*$)", QRegularExpression::MultilineOption);
    static const QString LITERALS = R"x(((?:"(?:[^"\\]|\\.)*"\s*)+))x";
    static const QRegularExpression CALL(
        R"(\b(?:tr|QT_TR_NOOP)\(\s*)" + LITERALS +
        R"x(|\b(?:(?:QCoreApplication::)?translate|QT_TRANSLATE_NOOP)\(\s*"\w+",\s*)x" + LITERALS +
        R"x(|\btr\(\s*[^"\s][^;]*|\bQCoreApplication::translate\([^;]*)x");
    Texts texts;
    for (auto found = CALL.globalMatch(source.remove(COMMENT)); found.hasNext();) {
        const auto call = found.next();
        const QString literals = call.captured(1) + call.captured(2);
        texts.insert(literals.isEmpty() ? call.captured() : JoinLiterals(literals));
    }
    return texts;
}

Texts TextsOfForm(const QByteArray& form) {
    Texts texts;
    for (QXmlStreamReader xml(form); !xml.atEnd();) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != u"string")
            continue;
        const bool translated = xml.attributes().value("notr") != u"true";
        const QString text = xml.readElementText();
        if (translated && !text.isEmpty())
            texts.insert(text);
    }
    return texts;
}

Texts TextsOfProgram() {
    Texts texts;
    for (const char* room : {"app", "i18n", "net", "platform", "products", "ui"}) {
        QDirIterator files(QStringLiteral(VARDO_SOURCE_DIR "/") + room, {"*.cpp", "*.h", "*.ui"}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const auto contents = QByteArray::fromStdString(ReadWholeFile(path.toStdString()));
            texts.merge(path.endsWith(".ui") ? TextsOfForm(contents) : TextsOfSource(contents));
        }
    }
    for (const QString& text : NEED_NO_TRANSLATION)
        texts.erase(text);
    return texts;
}

// Notes what is asked of it and translates nothing.
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

std::unique_ptr<QMessageBox> BoxWithAllButtons() {
    return std::make_unique<QMessageBox>(QMessageBox::Question, "title", "text",
                                         QMessageBox::Ok | QMessageBox::Cancel | QMessageBox::Yes |
                                             QMessageBox::No | QMessageBox::Close | QMessageBox::Retry);
}

// What Qt asks for on this platform, and the captions that it has on GNOME.
Texts TextsOfQt() {
    const Recorder recorder;
    recorder.asked = {"&OK", "&Cancel", "&Close"};
    const auto box = BoxWithAllButtons();
    QLineEdit field;
    const std::unique_ptr<QMenu> menu(field.createStandardContextMenu());
    return recorder.asked;
}

std::map<QString, QString> ShippedPairs(const QString& code) {
    const QString file = OwnLanguagesFolder() + code + "/VARDOProductUpdate.strings";
    const std::string bytes = ReadWholeFile(file.toStdString());
    StringsReader reader(bytes);
    std::map<QString, QString> pairs;
    CAtlString key;
    CAtlString text;
    while (reader.ReadPair(key, text))
        pairs[key.ToQString()] = text.ToQString();
    return pairs;
}

}  // namespace

TEST(ShippedTranslations, TheExtractorFindsWhatIsPassedOn) {
    const struct {
        const char* situation;
        const char* source;
        Texts texts;
    } cases[] = {
        {"a call", "f(tr(\"Close\"), QObject::tr( \"A b\" ))", {"Close", "A b"}},
        {"literals on several lines", "tr(\"one \"\n   \"two\")", {"one two"}},
        {"escapes", R"x(tr("go to: \n\t\"\\"))x", {"go to: \n\t\"\\"}},
        {"a context", "QCoreApplication::translate(\"ProxyAuth\", \"OK\", nullptr)", {"OK"}},
        {"a text for later",
         "QT_TR_NOOP(\"Later\") QT_TRANSLATE_NOOP(\"C\", \"Much later\")",
         {"Later", "Much later"}},
        {"neither", "str(\"a\");\n  // tr(\"b\")\nconstexpr(\"c\"); translate(const char* d);", {}},
        {"not a literal", "tr(text);", {"tr(text)"}},
    };
    for (const auto& one : cases)
        EXPECT_EQ(TextsOfSource(one.source), one.texts) << one.situation;
    EXPECT_EQ(TextsOfForm("<ui><string>A &amp;b</string><string notr=\"true\">c</string><string/></ui>"),
              Texts{"A &b"});

    const Texts texts = TextsOfProgram();
    EXPECT_GE(texts.size(), 23U) << "far too few: are the sources where they were?";
    for (const char* known :
         {"Retry", "Installed version", "Proxy Authentication Required",
          "Could not open a Web browser. Please open a Web browser manually and go to: \n"})
        EXPECT_TRUE(texts.contains(known)) << known;
}

TEST(ShippedTranslations, EveryTextIsInEveryFile) {
    EXPECT_EQ(QDir(OwnLanguagesFolder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name), SHIPPED);
    Texts texts = TextsOfProgram();
    texts.merge(TextsOfQt());
    for (const QString& code : SHIPPED) {
        const auto pairs = ShippedPairs(code);
        for (const QString& text : texts)
            EXPECT_TRUE(pairs.contains(text)) << code.toStdString() << " lacks: " << text.toStdString();
    }
}

TEST(ShippedTranslations, TranslationsKeepTheShapeOfTheirTexts) {
    static const QRegularExpression BREAKS_AT_END("\\n*$");
    for (const QString& code : SHIPPED)
        for (const auto& [key, text] : ShippedPairs(code)) {
            SCOPED_TRACE(code.toStdString() + ": " + key.toStdString());
            EXPECT_FALSE(text.isEmpty());
            EXPECT_EQ(BREAKS_AT_END.match(text).captured(), BREAKS_AT_END.match(key).captured());
            EXPECT_EQ(text.count('&'), key.count('&')) << "mnemonics";
            EXPECT_EQ(text.count("VARDO Product Update"), key.count("VARDO Product Update"));
        }
}

TEST(ShippedTranslations, TheTableHasARowForEachFolder) {
    for (const QString& code : SHIPPED) {
        const CAtlString id = LanguageIdFromCode(code);
        EXPECT_EQ(LanguageAttributeById(ParseHexLanguageId(id), "Code").ToQString(), code);
        EXPECT_EQ(id.GetLength(), 4) << code.toStdString();
        EXPECT_NE(LanguageAttributeById(ParseHexLanguageId(id), "NativeName"), id);
        EXPECT_EQ(IsRightToLeft(id), code == "ar" || code == "he") << code.toStdString();
    }
}

TEST(ShippedTranslations, QtsOwnButtonsSpeakTheLanguage) {
    const struct {
        const char* language;
        const char *ok, *cancel, *yes, *no, *retry;
    } cases[] = {
        {"de", "OK", "Abbrechen", "&Ja", "&Nein", "Wiederholen"},
        {"es", "Aceptar", "Cancelar", "&Sí", "&No", "Reintentar"},
        {"ar", "موافق", "إلغاء", "&نعم", "&لا", "إعادة المحاولة"},
        {"en_US", "OK", "Cancel", "&Yes", "&No", "Retry"},
    };
    for (const auto& one : cases) {
        SetLocaleOverride(one.language);
        ASSERT_TRUE(InstallLanguage("VARDOProductUpdate", qApp, true));
        const auto box = BoxWithAllButtons();
        EXPECT_EQ(box->button(QMessageBox::Ok)->text(), one.ok);
        EXPECT_EQ(box->button(QMessageBox::Cancel)->text(), one.cancel);
        EXPECT_EQ(box->button(QMessageBox::Yes)->text(), one.yes);
        EXPECT_EQ(box->button(QMessageBox::No)->text(), one.no);
        EXPECT_EQ(box->button(QMessageBox::Retry)->text(), one.retry);
        QCoreApplication::removeTranslator(&QStringsTranslator::Instance());
    }
    SetLocaleOverride({});
    QApplication::setLayoutDirection(Qt::LeftToRight);
}
