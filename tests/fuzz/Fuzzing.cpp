// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "fuzz/Fuzzing.h"

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include <fcntl.h>
#include <unistd.h>

#include "platform/files/CFileDescriptor.h"
#include "support/Sandbox.h"

// The address sanitizer's default options, which ASAN_OPTIONS overrides. Short stacks of allocations and a
// small quarantine double the speed. Above the limit, malloc returns null, as on a small machine, and
// operator new ends the process with a report.
extern "C" const char* __asan_default_options() {  // NOLINT(bugprone-reserved-identifier): its name.
    return "detect_stack_use_after_return=1:strict_string_checks=1:malloc_context_size=4:"
           "quarantine_size_mb=16:allocator_may_return_null=1:max_allocation_size_mb=512";
}

extern "C" const char* __ubsan_default_options() {  // NOLINT(bugprone-reserved-identifier): its name.
    return "print_stacktrace=1";
}

// libFuzzer calls this once, before the first input.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    EnterSandbox();
    // The readers would write to the terminal a thousand times a second.
    std::cout.rdbuf(nullptr);
    static const QCoreApplication application(*argc, *argv);
    return 0;
}

void Require(bool kept, const char* promise) {
    if (kept)
        return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort();
}

CAtlStringA Bytes(std::string_view input) {
    return CAtlStringA(input.data(), static_cast<int>(input.size()));
}

InputFile::InputFile(std::string path) : path_(std::move(path)) {
    std::filesystem::create_directories(std::filesystem::path(path_).parent_path());
}

void InputFile::Write(std::string_view contents) const {
    const CFileDescriptor file(::open(path_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    const ssize_t written = ::write(file.Get(), contents.data(), contents.size());
    Require(written == static_cast<ssize_t>(contents.size()), "the machine has room for the input");
}

bool InputFile::Exists() const {
    return ::access(path_.c_str(), F_OK) == 0;
}

CAtlString OnePageDownloader::Download(const CAtlString& /*url*/) {
    file_.Write(page_);
    return CAtlString(file_.Path().c_str());
}
