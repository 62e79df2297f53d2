// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/Notification.h"

#include "app/settings/DefaultSettings.h"
#include "i18n/Language.h"
#include "platform/files/Addresses.h"
#include "platform/files/CVardoDirectoryPath.h"
#include "platform/settings/SettingsStore.h"
#include "platform/xml/XmlFile.h"
#include "products/CFetchedFile.h"
#include "products/CProductVersions.h"
#include "products/ListFormat.h"
#include "products/NotificationFormat.h"

#include <QRegularExpression>

namespace {

using namespace NotificationFormat;

// The value that marks a notification as dismissed.
constexpr int DISMISSED = 1;

// "de" for "de_AT" and for "de-AT".
QString WithoutRegion(const QString& code) {
    static const QRegularExpression separator("[_-]");
    return code.section(separator, 0, 0);
}

}  // namespace

const CAtlString Notification::ELEMENT_NAME(ListFormat::NOTIFICATION);

Notification::Notification(const boost::shared_ptr<IEnvironment>& environment) : environment_(environment) {}

bool Notification::Init(const TiXmlElement* element) {
    if (!element)
        return false;
    key_ = XmlAttribute(*element, ListFormat::NOTIFICATION_BASE);
    name_ = XmlAttribute(*element, ListFormat::NOTIFICATION_NAME);
    return !key_.IsEmpty();
}

bool Notification::FindInstalled() {
    // A key must name a file in the folder, not a path out of it.
    const bool isName = key_.FindOneOf(L"/\\") < 0;
    const CVardoFilePath file =
        isName ? CVardoDirectoryPath::Combine(environment_->SharedDataFolder(), key_ + L".xml")
               : CVardoFilePath();
    const bool found = ReadDescription(file);
    GetObserver().OnLocalFile(file, verdict_, CVersionString());
    return found;
}

const TiXmlElement* Notification::Load(const CAtlStringA& bytes, TiXmlDocument& document) {
    const bool isXml = LoadXml(bytes, document);
    if (isXml && document.RootElement()->ValueStr() == NOTIFICATION)
        return document.RootElement();
    verdict_ = isXml ? Verdict::NO_NOTIFICATION : Verdict::NO_XML;
    return nullptr;
}

bool Notification::ReadDescription(const CVardoFilePath& file) {
    messageFolder_.Empty();
    messageFile_.Empty();
    if (!file.Exists())
        return Reject(verdict_, Verdict::MISSING);
    TiXmlDocument document;
    const TiXmlElement* root = Load(ReadFileBytes(file), document);
    if (!root)
        return false;
    messageFolder_ = XmlAttribute(*root, MESSAGE_FOLDER);
    messageFile_ = XmlAttribute(*root, MESSAGE_FILE);
    if (messageFolder_.IsEmpty())
        return Reject(verdict_, Verdict::NO_FOLDER);
    return messageFile_.IsEmpty() ? Reject(verdict_, Verdict::NO_FILE_NAME) : Accept(verdict_);
}

bool Notification::CheckForUpdates() {
    checked_ = false;
    const CAtlString address = GetCheckAddress();
    if (!GetDownloader() || address.IsEmpty())
        return false;
    const CFetchedFile fetched(GetDownloader().get(), address, environment_->SharedDataFolder());
    verdict_ = fetched.GetVerdict();
    checked_ = verdict_ == Verdict::COUNTS && ReadMessage(fetched.GetBytes());
    GetObserver().OnRemoteFile(checked_ ? JudgeToday() : verdict_);
    return checked_;
}

CAtlString Notification::GetCheckAddress() const {
    const bool isDescribed = !messageFolder_.IsEmpty() && !messageFile_.IsEmpty();
    return isDescribed ? JoinTrimmed(messageFolder_, messageFile_) : CAtlString();
}

bool Notification::ReadMessage(const CAtlStringA& bytes) {
    TiXmlDocument document;
    const TiXmlElement* message = Load(bytes, document);
    if (!message)
        return false;
    webPage_ = XmlAttribute(*message, WEB_PAGE);
    startDate_ = ReadDate(XmlAttribute(*message, START_DATE));
    stopDate_ = ReadDate(XmlAttribute(*message, STOP_DATE));
    ReadTexts(*message);
    if (texts_.empty())
        return Reject(verdict_, Verdict::NO_TEXT);
    if (webPage_.IsEmpty())
        return Reject(verdict_, Verdict::NO_PAGE);
    const bool areDates = startDate_.isValid() && stopDate_.isValid();
    return areDates ? Accept(verdict_) : Reject(verdict_, Verdict::NO_DATES);
}

Verdict Notification::JudgeToday() const {
    const QDate today = environment_->Today();
    if (today <= startDate_)
        return Verdict::TOO_EARLY;
    if (today >= stopDate_)
        return Verdict::OVER;
    return IsBoardInstalled(environment_) ? Verdict::COUNTS : Verdict::NO_BOARD;
}

QDate Notification::ReadDate(const CAtlString& text) {
    return QDate::fromString(text.ToQString(), "yyyyMMdd");
}

void Notification::ReadTexts(const TiXmlElement& message) {
    texts_.clear();
    for (const TiXmlElement* text : Children(message.FirstChildElement(TEXTS)))
        texts_[CAtlString(text->Value()).ToQString()] = XmlAttribute(*text, TEXT_VALUE).ToQString();
}

QStringList Notification::TextCodes(const QString& languageCode) {
    return {languageCode, WithoutRegion(languageCode), "en"};
}

QString Notification::GetName() const {
    const QString language = GetLocale(true);
    const QString code = LanguageCode(language);
    for (const QString& candidate : QStringList{language} + TextCodes(code))
        if (const auto found = texts_.find(candidate); found != texts_.end())
            return found->second;
    return QString();
}

bool Notification::IsUpdateAvailable(unsigned /*item*/) const {
    return checked_ && JudgeToday() == Verdict::COUNTS;
}

bool Notification::IsWanted(unsigned /*item*/) const {
    return ReadRegistryDword(HKEY_CURRENT_USER, DefaultSettings::NOTIFICATION_KEY, name_, 0) != DISMISSED;
}

bool Notification::RunAction(unsigned /*item*/) {
    WriteRegistryDword(HKEY_CURRENT_USER, DefaultSettings::NOTIFICATION_KEY, name_, DISMISSED);
    return !webPage_.IsEmpty() && environment_->OpenWebPage(webPage_, GetName());
}

bool IsBoardInstalled(const boost::shared_ptr<IEnvironment>& environment) {
    // The board software is found as any product is, but no list needs to name it.
    class BoardHack : public CProductVersions {
    public:
        explicit BoardHack(const boost::shared_ptr<IEnvironment>& world) : CProductVersions(world) {
            SetBaseName(L"SoftwareUpdateVBS");
        }
    };

    BoardHack board(environment);
    if (!board.FindInstalled())
        return false;
    const CVersionString installed(board.GetInstalledVersion(0));
    return installed.IsLess(CVersionString(L"10.0.0.0"));
}
