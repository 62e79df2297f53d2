// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Signs with the minisign tool and keys of its own.
#pragma once

#include "support/ChildProcess.h"
#include "support/TemporaryTree.h"

// A maker with a new pair of keys, which the destructor deletes. Throws when the tool fails.
class Minisign {
public:
    Minisign() { Run({"-G", "-W", "-p", files_.Path("key.pub"), "-s", files_.Path("key")}); }

    // The contents of the public key file.
    std::string Key() const { return ReadWholeFile(files_.Path("key.pub")); }
    std::string SecretKeyFile() const { return files_.Path("key"); }
    // Signs the contents; returns the text of the signature file. Without a comment the tool writes its own,
    // for "setup.bin"; the option "-l" makes the old form.
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
