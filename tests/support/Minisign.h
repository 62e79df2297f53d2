// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The minisign tool, with keys of its own.
#pragma once

#include "support/ChildProcess.h"
#include "support/TemporaryTree.h"

// A maker with a fresh pair of keys, which end with this object. Throws when the tool fails.
class Minisign {
public:
    Minisign() { Run({"-G", "-W", "-p", files_.Path("key.pub"), "-s", files_.Path("key")}); }

    // The public key file.
    std::string Key() const { return ReadWholeFile(files_.Path("key.pub")); }
    std::string SecretKeyFile() const { return files_.Path("key"); }
    // The signature file for these contents. Without a comment the tool writes its own, for "setup.bin"; with
    // "-l" among the options it signs in the old form.
    std::string Sign(const std::string& contents, const std::string& comment,
                     std::vector<std::string> options = {}) const {
        options.insert(options.begin(), {"-S", "-s", files_.Path("key"), "-x", files_.Path("signature"), "-m",
                                         files_.Write("setup.bin", contents)});
        if (!comment.empty())
            options.insert(options.end(), {"-t", comment});
        Run(options);
        return ReadWholeFile(files_.Path("signature"));
    }

private:
    static void Run(const std::vector<std::string>& arguments) {
        if (ChildProcess("minisign", arguments).ExitCode() != 0)
            throw std::runtime_error("minisign failed");
    }

    TemporaryTree files_;
};
