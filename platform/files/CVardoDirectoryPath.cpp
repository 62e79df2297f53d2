// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/files/CVardoDirectoryPath.h"

#include <QRandomGenerator>
#include <cerrno>
#include <climits>
#include <memory>

#include <dirent.h>
#include <fnmatch.h>

#include "platform/files/Addresses.h"
#include "platform/files/CTemporaryFolder.h"
#include "platform/files/CVardoFilePath.h"
#include "platform/files/FileSystem.h"
#include "platform/text/TextConversion.h"

namespace {

// The text without separators and control characters, so that it can stand in a file's name.
CAtlString WithinName(const CAtlString& text) {
    CAtlString name;
    for (const wchar_t ch : text)
        if (ch != L'/' && ch != L'\\' && ch >= L' ' && (ch < 0x7F || ch > 0x9F))
            name += ch;
    return name;
}

// A name that is not UTF-8 would come out cut short, and so would be the name of another file.
bool IsWhollyDecoded(const char* bytes, const CAtlString& decoded) {
    return EncodeUtf8(decoded.GetString()) == bytes;
}

// Calls use(bytes, name) for each entry of a folder whose name is UTF-8 and does not begin with ".". False
// when the folder is there, but could not be read to its end.
template <typename Use>
bool ForEachName(const CAtlString& path, const Use& use) {
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(FileSystem::SystemPath(path).c_str()),
                                                        &closedir);
    if (!directory)
        return errno == ENOENT;
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(directory.get());
        if (!entry)
            return errno == 0;
        const CAtlString name(entry->d_name);
        if (entry->d_name[0] != '.' && IsWhollyDecoded(entry->d_name, name))
            use(entry->d_name, name);
    }
}

}  // namespace

CVardoDirectoryPath::CVardoDirectoryPath(const CAtlString& path) : path_(NormalPath(path)) {}

CVardoDirectoryPath::CVardoDirectoryPath(const CVardoFilePath& file)
    : path_(file.GetFilePathString().Left(file.GetFilePathString().ReverseFind(L'/'))) {}

bool CVardoDirectoryPath::Exists() const {
    return FileSystem::Exists(path_);
}

void CVardoDirectoryPath::Append(const CAtlString& name) {
    if (!name.IsEmpty())
        path_ = NormalPath(path_ + L"/" + name);
}

CVardoFilePath CVardoDirectoryPath::Combine(const CVardoDirectoryPath& directory,
                                            const CAtlString& fileName) {
    return CVardoFilePath(directory.path_ + L"/" + fileName);
}

bool CVardoDirectoryPath::RemoveLastComponent() {
    const int slash = path_.ReverseFind(L'/');
    if (slash < 0)
        return false;
    path_ = path_.Left(slash);
    return true;
}

bool CVardoDirectoryPath::Create() const {
    if (Exists())
        return true;
    // The system refuses a path that long, and its components could overflow the stack.
    if (path_.GetLength() >= PATH_MAX)
        return false;
    CVardoDirectoryPath parent(*this);
    if (parent.RemoveLastComponent())
        parent.Create();
    return FileSystem::CreateDirectory(path_) || Exists();
}

void CVardoDirectoryPath::ListFiles(const CAtlString& pattern, std::vector<CVardoFilePath>& files) const {
    const std::string patternBytes = FileSystem::SystemPath(pattern);
    const CAtlString folder = WithTrailingSlash(path_);
    ForEachName(path_, [&](const char* bytes, const CAtlString& name) {
        // Looks at the name first, which saves a system call for each other name.
        if (fnmatch(patternBytes.c_str(), bytes, 0) != 0)
            return;
        const CVardoFilePath file(folder + name);
        if (FileSystem::IsFile(file.GetFilePathString()))
            files.push_back(file);
    });
}

bool CVardoDirectoryPath::ListNames(std::vector<CAtlString>& names) const {
    return ForEachName(path_, [&](const char* /*bytes*/, const CAtlString& name) { names.push_back(name); });
}

CVardoDirectoryPath CVardoDirectoryPath::GetTempDirectory() {
    return CTemporaryFolder::OfProcess().Get();
}

CVardoFilePath CVardoDirectoryPath::GetTempFilePath(const CAtlString& extension, const CAtlString& baseName) {
    return ClaimFile(GetTempDirectory(), extension, baseName, [](const CVardoFilePath& file) {
        return !FileSystem::IsTaken(file.GetFilePathString());
    });
}

CVardoFilePath CVardoDirectoryPath::ClaimFile(const CVardoDirectoryPath& directory,
                                              const CAtlString& extension, const CAtlString& baseName,
                                              const boost::function<bool(const CVardoFilePath&)>& claim) {
    if (directory.IsEmpty())
        return CVardoFilePath();
    const CAtlString base = baseName.IsEmpty() ? CAtlString(BASE_NAME) : WithinName(baseName);
    const CAtlString ending = WithinName(extension);
    CVardoFilePath candidate = Combine(directory, base + ending);
    for (int tries = 1; !claim(candidate); ++tries) {
        if (tries == MAX_TEMP_NAMES)
            return CVardoFilePath();
        const CAtlString number(QString("(%1)").arg(QRandomGenerator::global()->bounded(INT_MAX)));
        candidate = Combine(directory, base + number + ending);
    }
    return candidate;
}
