// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// All fuzzers use this file. Each of them hands an input to a reader and checks what the reader promises for
// any input at all; the sanitizers check the rest.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "net/IDownloader.h"
#include "platform/text/CAtlString.h"
#include "platform/text/CAtlStringA.h"

// libFuzzer calls this for each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Unless the promise was kept, names it and aborts the process; libFuzzer then stores the input.
void Require(bool kept, const char* promise);

inline std::string_view View(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}
CAtlStringA Bytes(std::string_view input);

// A file in the process's own /tmp, which lies in memory. The constructor creates its folder.
class InputFile {
public:
    explicit InputFile(std::string path);

    const std::string& Path() const { return path_; }
    // Replaces the file's contents.
    void Write(std::string_view contents) const;
    bool Exists() const;

private:
    std::string path_;
};

// Answers every address with the same page.
class OnePageDownloader : public IDownloader {
public:
    void Serve(std::string_view page) { page_ = page; }
    // Whether the reader left the fetched file behind.
    bool IsFileLeft() const { return file_.Exists(); }

    CAtlString Download(const CAtlString& url) override;

private:
    std::string page_;
    InputFile file_{"/tmp/fuzz/fetched.xml"};
};
