// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "catalog/CCatalogFile.h"

namespace {

// The readers of descriptions follow the encoding that the file declares, and keep its line ends.
bool IsDescription(FileKind kind) {
    return kind == FileKind::LOCAL_DESCRIPTION || kind == FileKind::REMOTE_DESCRIPTION;
}

}  // namespace

void CCatalogFile::SetKind(FileKind kind) {
    if (IsDescription(kind) != IsDescription(kind_))
        document_.reset();
    kind_ = kind;
}

const TiXmlElement* CCatalogFile::GetRoot() const {
    Load();
    return document_->RootElement();
}

const XmlFault& CCatalogFile::GetFault() const {
    Load();
    return fault_;
}

void CCatalogFile::Load() const {
    if (document_)
        return;
    document_ = std::make_unique<TiXmlDocument>();
    if (IsDescription(kind_))
        ParseXml(ReadFileBytes(GetFilePath()), TIXML_DEFAULT_ENCODING, *document_, &fault_);
    else
        LoadXml(GetFilePath(), *document_, TIXML_ENCODING_UTF8, &fault_);
}
