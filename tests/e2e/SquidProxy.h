// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A real proxy on loopback that lets only one user through.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/TemporaryTree.h"

// Squid, which caches nothing and asks everybody for credentials.
class SquidProxy {
public:
    enum class Scheme { BASIC, DIGEST };
    // The only user, and the word that lets him through.
    static constexpr const char* USER = "user";
    static constexpr const char* PASSWORD = "word";

    // Returns when it answers; throws std::runtime_error when it does not.
    explicit SquidProxy(Scheme scheme);
    // Asked to end, squid takes a second for it, and it keeps nothing that is worth one.
    ~SquidProxy();
    SquidProxy(const SquidProxy&) = delete;
    SquidProxy& operator=(const SquidProxy&) = delete;

    int Port() const { return port_; }
    // Its answers in order: the status, the user ("-" for none) and the path; waits until there are so many.
    std::vector<std::string> Answers(std::size_t expected) const;

private:
    std::string Configuration(Scheme scheme) const;
    std::vector<std::string> ReadLog() const;

    TemporaryTree files_;
    int port_ = 0;
    std::unique_ptr<ChildProcess> squid_;
};
