// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "platform/files/CFileDescriptor.h"
#include "products/CProductListController.h"
#include "products/ProductListFiles.h"
#include "report/RunFacts.h"

#include <QFile>
#include <QJsonDocument>
#include <QSettings>
#include <algorithm>
#include <chrono>

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <pwd.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds LONGEST_LOOK{10};
// In bytes; far more than the settings and the facts of one user take.
constexpr qint64 LONGEST_FACTS = 1 << 20;

bool BecomeUser(const passwd& user) {
    return initgroups(user.pw_name, user.pw_gid) == 0 && setgid(user.pw_gid) == 0 &&
           setuid(user.pw_uid) == 0 && setenv("HOME", user.pw_dir, 1) == 0 &&
           unsetenv("XDG_CONFIG_HOME") == 0;
}

QString OwnSettings() {
    return QSettings(QSettings::UserScope, "VARDO Technologies").fileName();
}

// The facts of the user that the process runs as; empty when the home has neither settings nor a list.
QJsonObject OwnFacts(const char* name, const boost::shared_ptr<IEnvironment>& environment) {
    if (!QFile::exists(OwnSettings()) && !UserProductList().Exists())
        return {};
    CProductListController controller(environment);
    controller.LoadProductList();
    const Products& list = *controller.GetProductList();
    return {{"user", QString::fromUtf8(name)},
            {"list", QJsonObject{{"file", list.GetPath().GetFilePathString().ToQString()},
                                 {"version", list.GetVersion().GetString().ToQString()}}},
            {"settings", SettingsFacts()},
            {"silentCheck", SilentCheckFacts(environment->Today())}};
}

// Runs in the other process, and never returns.
[[noreturn]] void TellFacts(const passwd& user, const boost::shared_ptr<IEnvironment>& environment,
                            int pipe) {
    QFile out;
    if (BecomeUser(user) && QFile(OwnSettings()).size() <= LONGEST_FACTS &&
        out.open(pipe, QIODevice::WriteOnly))
        out.write(QJsonDocument(OwnFacts(user.pw_name, environment)).toJson());
    out.close();
    _exit(0);
}

// What comes until the other side closes the pipe; nothing when the end, or too much, comes first.
QByteArray ReadWhole(const CFileDescriptor& pipe, const QDeadlineTimer& end) {
    QByteArray bytes;
    QByteArray part(1 << 16, Qt::Uninitialized);
    pollfd ready{.fd = pipe.Get(), .events = POLLIN, .revents = 0};
    while (bytes.size() <= LONGEST_FACTS && poll(&ready, 1, static_cast<int>(end.remainingTime())) > 0) {
        const ssize_t count = read(pipe.Get(), part.data(), static_cast<std::size_t>(part.size()));
        if (count <= 0)
            return bytes;
        bytes.append(part.constData(), count);
    }
    return {};
}

// Empty when there is nothing to tell; nothing when the other process failed or the end has come.
std::optional<QJsonObject> FactsOf(const passwd& user, const boost::shared_ptr<IEnvironment>& environment,
                                   const QDeadlineTimer& end) {
    int ends[2];
    if (end.hasExpired() || pipe2(ends, O_CLOEXEC) != 0)
        return {};
    const CFileDescriptor read(ends[0]);
    CFileDescriptor write(ends[1]);
    const pid_t child = fork();
    if (child == 0)
        TellFacts(user, environment, write.Get());
    write.Close();
    if (child < 0)
        return {};
    const QByteArray facts = ReadWhole(read, std::min(end, QDeadlineTimer(LONGEST_LOOK)));
    // Its user may have stopped it (kill(2)), at any moment.
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const QJsonDocument document = QJsonDocument::fromJson(facts);
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

}  // namespace

QJsonArray UsersFacts(const boost::shared_ptr<IEnvironment>& environment, const QDeadlineTimer& end,
                      QStringList& unread) {
    QJsonArray users;
    setpwent();
    // cppcheck-suppress getpwentCalled; one thread walks through the users.
    while (const passwd* user = getpwent()) {
        const auto facts = FactsOf(*user, environment, end);
        if (!facts)
            unread << QString::fromUtf8(user->pw_name);
        else if (!facts->isEmpty())
            users.append(*facts);
    }
    endpwent();
    return users;
}
