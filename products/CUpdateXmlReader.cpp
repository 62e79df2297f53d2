// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CUpdateXmlReader.h"

#include "platform/files/Addresses.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/files/FileSystem.h"
#include "platform/xml/XmlFile.h"
#include "products/CFetchedFile.h"
#include "products/DescriptionFormat.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace DescriptionFormat;

// The name of the product elements in remote descriptions; test mode changes it for the whole process.
const char* currentOfferElement = PRODUCT;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

CVersionString VersionAttribute(const TiXmlElement& element, const char* name) {
    return CVersionString(XmlAttribute(element, name));
}

CUpdateEntry ReadOffer(const TiXmlElement& element) {
    return CUpdateEntry{
        .version = VersionAttribute(element, UPDATE_VERSION),
        .installFile = XmlAttribute(element, INSTALL_FILE),
        .installUrl = XmlAttribute(element, INSTALL_FOLDER),
        .installSize = XmlAttribute(element, INSTALL_SIZE),
        .webPage = XmlAttribute(element, WEB_PAGE),
        .argument = XmlAttribute(element, ARGUMENT),
    };
}

// Reads a product element's own offer and those of its ranges, which are in elements of that name.
void ReadOffers(const TiXmlElement& product, const char* offerElement, CUpdateTable& table) {
    table.SetDefaultOffer(ReadOffer(product));
    for (const TiXmlElement* range : Children(product.FirstChildElement(COMPATIBILITY), RANGE))
        if (const TiXmlElement* offer = range->FirstChildElement(offerElement))
            table.AddRangedOffer(CVersionStringRange(VersionAttribute(*range, VERSION_FROM),
                                                     VersionAttribute(*range, VERSION_TO)),
                                 ReadOffer(*offer));
}

}  // namespace

const CAtlString CUpdateXmlReader::TEST_MARKER(L"/tmp/testmark.dat");

CUpdateXmlReader::CUpdateXmlReader() {
    currentOfferElement = IsTestMode() ? TEST_PRODUCT : PRODUCT;
}

// Every user can create files in the marker's folder.
bool CUpdateXmlReader::IsTestMode() {
    struct stat status {};
    return lstat(FileSystem::SystemPath(TEST_MARKER).c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           (status.st_uid == 0 || status.st_uid == geteuid());
}

bool CUpdateXmlReader::LoadLocal() {
    return ParseLocal(ReadFileBytes(CVardoFilePath(GetLocalFile())));
}

bool CUpdateXmlReader::LoadRemote() {
    const CVardoDirectoryPath sharedFolder{CVardoFilePath(GetLocalFile())};
    const CFetchedFile fetched(GetDownloader(), GetRemoteAddress(), sharedFolder);
    verdict_ = fetched.GetVerdict();
    return verdict_ == Verdict::COUNTS && ParseRemote(fetched.GetBytes());
}

bool CUpdateXmlReader::IsUpdateAvailable() const {
    return localLoaded_ && remoteLoaded_ && GetCurrentVersion().IsLess(table_.ChooseOffer().version);
}

CAtlString CUpdateXmlReader::GetInstallerAddress() const {
    return JoinTrimmed(GetUpdateInstallURL(), GetUpdateInstallFile());
}

bool CUpdateXmlReader::ParseLocal(const CAtlStringA& text) {
    TiXmlDocument document;
    if (!ParseXml(text, TIXML_DEFAULT_ENCODING, document))
        return Reject(verdict_, Verdict::NO_XML);
    const TiXmlElement* product = document.RootElement()->FirstChildElement(PRODUCT);
    if (!product)
        return Reject(verdict_, Verdict::NO_PRODUCT);
    table_.SetCurrentVersion(VersionAttribute(*product, CURRENT_VERSION));
    remoteFileName_ = XmlAttribute(*product, REMOTE_FILE);
    remoteFolder_ = WithTrailingSlash(XmlAttribute(*product, REMOTE_FOLDER));
    noUpdates_ = XmlAttribute(*product, NO_UPDATES).Compare(L"true") == 0;
    if (GetCurrentVersion().GetString().IsEmpty())
        return Reject(verdict_, Verdict::NO_VERSION);
    if (remoteFolder_.IsEmpty())
        return Reject(verdict_, Verdict::NO_FOLDER);
    if (remoteFileName_.IsEmpty())
        return Reject(verdict_, Verdict::NO_FILE_NAME);
    localLoaded_ = true;
    return Accept(verdict_);
}

bool CUpdateXmlReader::ParseRemote(const CAtlStringA& text) {
    TiXmlDocument document;
    if (!ParseXml(text, TIXML_DEFAULT_ENCODING, document))
        return Reject(verdict_, Verdict::NO_XML);
    const TiXmlElement* root = document.RootElement();
    if (XmlAttribute(*root, LOCATION).Compare(LOCATION_SERVER) != 0)
        return Reject(verdict_, Verdict::NOT_FOR_CLIENTS);
    const TiXmlElement* product = root->FirstChildElement(currentOfferElement);
    if (!product)
        product = root->FirstChildElement(PRODUCT);
    if (!product)
        return Reject(verdict_, Verdict::NO_PRODUCT);
    ReadOffers(*product, currentOfferElement, table_);
    remoteLoaded_ = true;
    return Accept(verdict_);
}
