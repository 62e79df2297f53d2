// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/files/CVardoFilePath.h"

#include "platform/files/FileSystem.h"

#include <cstddef>
#include <new>
#include <utility>

CVardoFilePath::CVardoFilePath(const CAtlString& path) : path_(NormalPath(path)) {}

CAtlStringA CVardoFilePath::GetFilePathStringA() const {
    return CAtlStringA(path_);
}

CAtlString CVardoFilePath::GetFileName() const {
    return path_.Mid(path_.ReverseFind(L'/') + 1);
}

CAtlString CVardoFilePath::GetExtension() const {
    const int dot = path_.ReverseFind(L'.');
    return dot > path_.ReverseFind(L'/') ? path_.Mid(dot) : CAtlString();
}

CAtlString CVardoFilePath::GetFileTitle() const {
    const CAtlString name = GetFileName();
    const int dot = name.ReverseFind(L'.');
    return dot < 0 ? name : name.Left(dot);
}

bool CVardoFilePath::Exists() const {
    return FileSystem::Exists(path_);
}

bool CVardoFilePath::Delete() const {
    if (!Exists())
        return true;
    FileSystem::MakeWritable(path_);
    return FileSystem::DeleteFile(path_);
}

off_t CVardoFilePath::GetSize() const {
    off_t size = -1;
    return FileSystem::OpenForReading(path_, size).IsOpen() ? size : -1;
}

off_t CVardoFilePath::ReadAll(std::unique_ptr<char[]>& buffer) const {
    buffer.reset();
    off_t size = 0;
    const CFileDescriptor file = FileSystem::OpenForReading(path_, size);
    if (!file.IsOpen() || size == 0 || !std::in_range<std::size_t>(size))
        return 0;
    // Running out of memory is a failure like any other.
    std::unique_ptr<char[]> bytes(new (std::nothrow) char[static_cast<std::size_t>(size)]);
    const off_t count = bytes ? FileSystem::ReadFully(file, bytes.get(), size) : 0;
    if (count > 0)
        buffer = std::move(bytes);
    return count;
}

CAtlString NormalPath(const CAtlString& path) {
    CAtlString normal(path);
    normal.Replace(L'\\', L'/');
    const int last = normal.GetLength() - 1;
    if (last >= 0 && normal[last] == L'/')
        normal.Delete(last);
    return normal;
}
