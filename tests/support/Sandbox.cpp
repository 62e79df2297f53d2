// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "support/Sandbox.h"

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr,
                 "The tests need a /tmp of their own and could not make one: %s: %s.\n"
                 "Run them as root, or allow unprivileged user namespaces "
                 "(sysctl kernel.unprivileged_userns_clone=1).\n",
                 what, std::strerror(errno));
    std::exit(1);
}

void WriteLine(const char* path, const std::string& line) {
    std::ofstream file(path);
    file << line << std::flush;
    if (!file)
        Fail(path);
}

void EnterNamespaces() {
    const uid_t user = getuid();
    const gid_t group = getgid();
    const int rootless = user == 0 ? 0 : CLONE_NEWUSER;
    if (unshare(CLONE_NEWNS | CLONE_NEWIPC | rootless) != 0)
        Fail("unshare");
    if (rootless) {
        WriteLine("/proc/self/setgroups", "deny");
        WriteLine("/proc/self/uid_map", std::to_string(user) + " " + std::to_string(user) + " 1");
        WriteLine("/proc/self/gid_map", std::to_string(group) + " " + std::to_string(group) + " 1");
    }
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        Fail("mount / private");
}

// A source tree that itself lies under /tmp must still be seen under its name.
void MountPrivateTmp() {
    const std::string tree = VARDO_SOURCE_DIR;
    const bool hidden = tree.starts_with("/tmp/");
    const int keep = hidden ? open(tree.c_str(), O_PATH | O_DIRECTORY) : -1;
    if (mount("vardo-tests", "/tmp", "tmpfs", 0, "mode=1777") != 0)
        Fail("mount /tmp");
    if (!hidden)
        return;
    std::filesystem::create_directories(tree);
    const std::string origin = "/proc/self/fd/" + std::to_string(keep);
    if (mount(origin.c_str(), tree.c_str(), nullptr, MS_BIND | MS_REC, nullptr) != 0)
        Fail("mount the source tree");
    close(keep);
}

}  // namespace

void EnterSandbox() {
    EnterNamespaces();
    MountPrivateTmp();
    if (mount("vardo-tests", "/dev/shm", "tmpfs", 0, "mode=1777") != 0)
        Fail("mount /dev/shm");
    std::filesystem::create_directories("/tmp/home/.config");
    std::filesystem::create_directories("/tmp/etc/xdg");
    setenv("HOME", "/tmp/home", 1);
    setenv("XDG_CONFIG_HOME", "/tmp/home/.config", 1);
    setenv("XDG_CONFIG_DIRS", "/tmp/etc/xdg", 1);
    setenv("XDG_CACHE_HOME", "/tmp/home/.cache", 1);
    setenv("XDG_DATA_HOME", "/tmp/home/.local/share", 1);
    setenv("TMPDIR", "/tmp", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    for (const char* name : {"DESKTOP_SESSION", "GNOME_DESKTOP_SESSION_ID", "KDE_FULL_SESSION", "http_proxy",
                             "https_proxy", "all_proxy", "no_proxy", "HTTP_PROXY", "HTTPS_PROXY", "LANGUAGE"})
        unsetenv(name);
    std::setlocale(LC_ALL, "");
}
