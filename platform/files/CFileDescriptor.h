// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// An open file that closes itself.
#pragma once

#include <utility>

#include <unistd.h>

// Owns one file descriptor; a negative one stands for "not open". Any thread may use its own objects.
class CFileDescriptor {
public:
    explicit CFileDescriptor(int descriptor = -1) noexcept : descriptor_(descriptor) {}
    CFileDescriptor(CFileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    CFileDescriptor(const CFileDescriptor&) = delete;
    CFileDescriptor& operator=(const CFileDescriptor&) = delete;
    ~CFileDescriptor() { Close(); }

    bool IsOpen() const { return descriptor_ >= 0; }
    int Get() const { return descriptor_; }
    // Closes the file. False when nothing was open, or closing reports a failed write (close(2)).
    bool Close() { return IsOpen() && ::close(std::exchange(descriptor_, -1)) == 0; }

private:
    int descriptor_;
};
