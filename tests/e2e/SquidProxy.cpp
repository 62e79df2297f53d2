// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "e2e/SquidProxy.h"

#include <csignal>
#include <sstream>
#include <stdexcept>

#include <sys/stat.h>

#include "support/Ports.h"

namespace {

// The password as crypt(3) with SHA-512 keeps it, and as it is for Digest, which must know it.
const char BASIC_USER[] =
    "user:$6$VardoTestSalt$qfABxoTcbX60a8y2NMx3XBTEkQAc4FRo0qzDtqZXrwsffuY.NtaKzavBa/"
    "lhq5fDKY64ohhDER66MusLXQgLM."
    "\n";
const char DIGEST_USER[] = "user:word\n";

// All that squid would do besides (other sockets, helpers, caches) is switched off.
const char QUIET[] = R"(
pid_filename none
netdb_filename none
coredump_dir none
cache deny all
cache_mem 0
pinger_enable off
udp_incoming_address 127.0.0.1
udp_outgoing_address 127.0.0.1
visible_hostname squid.test
)";

}  // namespace

SquidProxy::SquidProxy(Scheme scheme) : port_(UnusedPort()) {
    // Squid leaves root's rights behind before it opens its files.
    chmod(files_.Root().c_str(), 0777);
    squid_ = std::make_unique<ChildProcess>(
        "/usr/sbin/squid",
        std::vector<std::string>{"-N", "-f", files_.Write("squid.conf", Configuration(scheme))});
    WaitUntil([this] { return !squid_->IsRunning() || IsListening(port_); });
    if (!squid_->IsRunning())
        throw std::runtime_error("squid does not start: " + squid_->Errors());
}

SquidProxy::~SquidProxy() {
    squid_->Signal(SIGKILL);
}

std::string SquidProxy::Configuration(Scheme scheme) const {
    const bool basic = scheme == Scheme::BASIC;
    const std::string parameter = std::string("auth_param ") + (basic ? "basic" : "digest");
    const std::string passwords = files_.Write("passwords", basic ? BASIC_USER : DIGEST_USER);
    std::ostringstream text;
    text << "http_port 127.0.0.1:" << port_ << QUIET << "cache_log " << files_.Path("cache.log")
         << "\nlogformat answers %>Hs %un %rp\naccess_log stdio:" << files_.Path("access.log") << " answers\n"
         << parameter << " program /usr/lib/squid/" << (basic ? "basic_ncsa_auth " : "digest_file_auth ")
         << passwords << "\n"
         << parameter << " children 1 startup=1\n"
         << parameter << " realm test\n"
         << "acl known proxy_auth REQUIRED\nhttp_access allow known\nhttp_access deny all\n";
    return text.str();
}

// Squid logs status 0 for a connection without a request, such as the one that finds out whether it listens.
std::vector<std::string> SquidProxy::ReadLog() const {
    std::istringstream log(ReadWholeFile(files_.Path("access.log")));
    std::vector<std::string> answers;
    for (std::string line; std::getline(log, line);) {
        if (!line.starts_with("0 "))
            answers.push_back(line);
    }
    return answers;
}

std::vector<std::string> SquidProxy::Answers(std::size_t expected) const {
    WaitUntil([&] { return ReadLog().size() >= expected; }, std::chrono::seconds(5));
    return ReadLog();
}
