// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A dated message from the maker.
#pragma once

#include "platform/desktop/IEnvironment.h"
#include "products/IProduct.h"

#include <QCoreApplication>
#include <QDate>
#include <QStringList>
#include <boost/shared_ptr.hpp>
#include <map>

class TiXmlDocument;

// Its local description, "<key>.xml" in the shared data folder, says where the message lies; the message
// brings a page, a date window and the text in several languages. It is one item within these dates, on
// machines with board software of the generations that it is for; item indices are ignored. Once the user has
// opened the page, the item stays but is no longer wanted, in this and every later run.
class Notification : public IProduct {
    Q_DECLARE_TR_FUNCTIONS(Notification)

public:
    // The name of its element in the list file.
    static const CAtlString ELEMENT_NAME;

    explicit Notification(const boost::shared_ptr<IEnvironment>& environment);

    bool Init(const TiXmlElement* element) override;
    bool FindInstalled() override;
    bool CheckForUpdates() override;
    CAtlString GetCheckAddress() const override;
    CAtlString GetKey() const override { return key_; }
    // The text in the user's language, else in that language without its region, else in English.
    QString GetName() const override;
    bool IsChecked(unsigned /*item*/) const override { return checked_; }
    bool IsUpdateAvailable(unsigned item) const override;
    bool IsWanted(unsigned item) const override;
    bool HasAction(unsigned item) const override { return IsUpdateAvailable(item); }
    // Dismisses the notification and opens its page in the browser.
    bool RunAction(unsigned item) override;
    bool IsHighlighted(unsigned /*item*/) const override { return true; }
    unsigned GetItemCount() const override { return IsUpdateAvailable(0) ? 1 : 0; }
    CAtlString GetInstalledVersion(unsigned /*item*/) const override { return L" "; }
    CAtlString GetLatestVersion(unsigned /*item*/) const override { return L" "; }
    void SetRow(unsigned /*item*/, int row) override { row_ = row; }
    int GetRow(unsigned /*item*/) const override { return row_; }
    QList<QString> GetActionTexts() const override { return {tr("Current"), tr("More...")}; }
    CAtlString GetDescriptionName() const override { return key_; }
    CAtlString GetPage(unsigned /*item*/) const override { return webPage_; }

    // Reads a local description; true when it says where the message lies.
    bool ReadDescription(const CVardoFilePath& file);
    // Reads a message's bytes; true when it has all that a row needs.
    bool ReadMessage(const CAtlStringA& bytes);
    // The codes under which the text for a language is looked for, in that order.
    static QStringList TextCodes(const QString& languageCode);
    // Reads a message's date; invalid when the text is not a date.
    static QDate ReadDate(const CAtlString& text);

private:
    // The root of a description or message; null, with the verdict, when the bytes hold none.
    const TiXmlElement* Load(const CAtlStringA& bytes, TiXmlDocument& document);
    // Whether the message that was read is for today and for this machine.
    Verdict JudgeToday() const;
    void ReadTexts(const TiXmlElement& message);

    Verdict verdict_ = Verdict::NOT_READ;
    bool checked_ = false;
    int row_ = -1;
    CAtlString key_;
    CAtlString name_;
    CAtlString webPage_;
    // The window is open after startDate_ and before stopDate_.
    QDate startDate_;
    QDate stopDate_;
    // By language code.
    std::map<QString, QString> texts_;
    CAtlString messageFolder_;
    CAtlString messageFile_;
    boost::shared_ptr<IEnvironment> environment_;
};

// Whether the maker's board software is installed in a version below 10.0.0.0. Where it is installed in
// several versions, the first one found counts. Searches the shared data folder at every call. GUI thread
// only.
bool IsBoardInstalled(const boost::shared_ptr<IEnvironment>& environment);
