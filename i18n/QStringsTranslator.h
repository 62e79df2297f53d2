// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Answers tr and QCoreApplication::translate from the maker's strings files.
#pragma once

#include <QString>
#include <QTranslator>

// Keeps nothing itself: every look-up goes to the resource manager. Loading belongs to the GUI thread;
// look-ups may come from any thread after it.
class QStringsTranslator : public QTranslator {
    Q_OBJECT

public:
    // The process's one translator, which load and InstallLanguage use.
    static QStringsTranslator& Instance();

    // Sets the resource manager up with the strings of a product in a language, an ID or a code, below
    // directory, or below its folder "Languages" when the path holds no such word. Always true.
    bool load(const QString& language, const QString& productName, const QString& directory);

    // The text for sourceText, or sourceText itself; one text means the same in every context and number.
    QString translate(const char* context, const char* sourceText, const char* disambiguation = nullptr,
                      int n = -1) const override;
    bool isEmpty() const override { return false; }
};
