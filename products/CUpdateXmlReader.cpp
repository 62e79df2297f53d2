// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "products/CUpdateXmlReader.h"

#include "platform/Addresses.h"
#include "platform/CVardoFilePath.h"
#include "platform/XmlFile.h"

namespace {

constexpr const char* PRODUCT = "Product";
constexpr const char* TEST_PRODUCT = "TestProduct";

// What the product elements of remote descriptions are called, for all readers.
const char* offerElement = PRODUCT;

CVersionString VersionAttribute(const TiXmlElement& element, const char* name) {
    return CVersionString(XmlAttribute(element, name));
}

CUpdateEntry ReadOffer(const TiXmlElement& element) {
    return CUpdateEntry{
        .version = VersionAttribute(element, "UpdateVersion"),
        .installFile = XmlAttribute(element, "UpdateInstallFile"),
        .installUrl = XmlAttribute(element, "UpdateInstallURL"),
        .installSize = XmlAttribute(element, "UpdateInstallSize"),
        .webPage = XmlAttribute(element, "UpdateWebPage"),
        .argument = XmlAttribute(element, "UpdateArgument"),
    };
}

void ReadRangedOffers(const TiXmlElement& product, CUpdateTable& table) {
    const TiXmlElement* compatibility = product.FirstChildElement("Compatibility");
    if (!compatibility)
        return;
    for (const TiXmlElement* range = compatibility->FirstChildElement("Range"); range;
         range = range->NextSiblingElement("Range")) {
        const TiXmlElement* offer = range->FirstChildElement(offerElement);
        if (!offer)
            continue;
        table.AddRangedOffer(CVersionStringRange(VersionAttribute(*range, "VersionFrom"),
                                                 VersionAttribute(*range, "VersionTo")),
                             ReadOffer(*offer));
    }
}

}  // namespace

const CAtlString CUpdateXmlReader::TEST_MARKER(L"/tmp/testmark.dat");

CUpdateXmlReader::CUpdateXmlReader() {
    offerElement = CVardoFilePath(TEST_MARKER).Exists() ? TEST_PRODUCT : PRODUCT;
}

bool CUpdateXmlReader::LoadLocal() {
    return ParseLocal(ReadFileBytes(CVardoFilePath(GetLocalFile())));
}

bool CUpdateXmlReader::LoadRemote() {
    const CVardoFilePath fetched(GetRemoteFile());
    if (fetched.IsEmpty())
        return false;
    const CAtlStringA text = ReadFileBytes(fetched);
    fetched.Delete();
    return ParseRemote(text);
}

bool CUpdateXmlReader::IsUpdateAvailable() const {
    return localLoaded_ && remoteLoaded_ && GetCurrentVersion().IsLess(table_.ChooseOffer().version);
}

bool CUpdateXmlReader::ParseLocal(const CAtlStringA& text) {
    TiXmlDocument document;
    if (!ParseXml(text, TIXML_DEFAULT_ENCODING, document))
        return false;
    const TiXmlElement* product = document.RootElement()->FirstChildElement(PRODUCT);
    if (!product)
        return false;
    table_.SetCurrentVersion(VersionAttribute(*product, "CurrentVersion"));
    remoteFileName_ = XmlAttribute(*product, "RemoteVersionFile");
    remoteFolder_ = WithTrailingSlash(XmlAttribute(*product, "RemoteVersionFileURL"));
    noUpdates_ = XmlAttribute(*product, "NoUpdates").Compare(L"true") == 0;
    if (GetCurrentVersion().GetString().IsEmpty() || remoteFolder_.IsEmpty() || remoteFileName_.IsEmpty())
        return false;
    localLoaded_ = true;
    return true;
}

bool CUpdateXmlReader::ParseRemote(const CAtlStringA& text) {
    TiXmlDocument document;
    if (!ParseXml(text, TIXML_DEFAULT_ENCODING, document))
        return false;
    const TiXmlElement* root = document.RootElement();
    if (XmlAttribute(*root, "Location").Compare(L"Server") != 0)
        return false;
    const TiXmlElement* product = root->FirstChildElement(offerElement);
    if (!product)
        product = root->FirstChildElement(PRODUCT);
    if (!product)
        return false;
    table_.SetDefaultOffer(ReadOffer(*product));
    ReadRangedOffers(*product, table_);
    remoteLoaded_ = true;
    return true;
}
