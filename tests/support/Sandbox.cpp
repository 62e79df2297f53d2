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
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Unless a step succeeded, names it and ends the process.
void Check(bool succeeded, const char* what) {
    if (succeeded)
        return;
    std::fprintf(stderr,
                 "The tests need a /tmp of their own and could not make one: %s: %s.\n"
                 "Run them as root, or allow unprivileged user namespaces "
                 "(sysctl kernel.unprivileged_userns_clone=1).\n",
                 what, std::strerror(errno));
    std::exit(1);
}

void EnterNamespaces() {
    const std::string user = std::to_string(getuid());
    const std::string group = std::to_string(getgid());
    const int rootless = getuid() == 0 ? 0 : CLONE_NEWUSER;
    Check(unshare(CLONE_NEWNS | CLONE_NEWIPC | rootless) == 0, "unshare");
    const std::pair<const char*, std::string> identity[] = {
        {"/proc/self/setgroups", "deny"},
        {"/proc/self/uid_map", user + " " + user + " 1"},
        {"/proc/self/gid_map", group + " " + group + " 1"}};
    for (const auto& [path, line] : identity)
        Check(!rootless || (std::ofstream(path) << line << std::flush), path);
    Check(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, "mount / private");
}

void MountEmpty(const char* path) {
    Check(mount("vardo-tests", path, "tmpfs", 0, "mode=1777") == 0, path);
}

// A source tree below /tmp stays visible under its path.
void MountPrivateTmp() {
    const char* const tree = VARDO_SOURCE_DIR;
    const bool hidden = std::string(tree).starts_with("/tmp/");
    const int keep = hidden ? open(tree, O_PATH | O_DIRECTORY) : -1;
    MountEmpty("/tmp");
    if (!hidden)
        return;
    std::filesystem::create_directories(tree);
    const std::string origin = "/proc/self/fd/" + std::to_string(keep);
    Check(mount(origin.c_str(), tree, nullptr, MS_BIND | MS_REC, nullptr) == 0, tree);
    close(keep);
}

}  // namespace

void EnterSandbox() {
    EnterNamespaces();
    MountPrivateTmp();
    MountEmpty("/dev/shm");
    umask(S_IWGRP | S_IWOTH);
    std::filesystem::create_directories("/tmp/home/.config");
    std::filesystem::create_directories("/tmp/etc/xdg");
    setenv("HOME", "/tmp/home", 1);
    setenv("XDG_CONFIG_HOME", "/tmp/home/.config", 1);
    setenv("XDG_CONFIG_DIRS", "/tmp/etc/xdg", 1);
    setenv("XDG_CACHE_HOME", "/tmp/home/.cache", 1);
    setenv("XDG_DATA_HOME", "/tmp/home/.local/share", 1);
    setenv("TMPDIR", "/tmp", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    // Without an address, Qt asks dbus-launch(1) for a bus, which outlives the tests.
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    for (const char* name :
         {"WAYLAND_DISPLAY", "DESKTOP_SESSION", "GNOME_DESKTOP_SESSION_ID", "KDE_FULL_SESSION", "http_proxy",
          "https_proxy", "all_proxy", "no_proxy", "HTTP_PROXY", "HTTPS_PROXY", "LANGUAGE"})
        unsetenv(name);
    std::setlocale(LC_ALL, "");
}
