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
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds LONGEST_LOOK{10};
// In bytes; far more than the facts of one user take.
constexpr qint64 LONGEST_FACTS = 1 << 20;

bool BecomeUser(const passwd& user) {
    return initgroups(user.pw_name, user.pw_gid) == 0 && setgid(user.pw_gid) == 0 &&
           setuid(user.pw_uid) == 0 && setenv("HOME", user.pw_dir, 1) == 0 &&
           unsetenv("XDG_CONFIG_HOME") == 0;
}

// Of the user that the process runs as; empty without settings and list.
QByteArray OwnFacts(const char* name, const boost::shared_ptr<IEnvironment>& environment) {
    const QString settings = QSettings(QSettings::UserScope, "VARDO Technologies").fileName();
    if (!QFile::exists(settings) && !UserProductList().Exists())
        return {};
    CProductListController controller(environment);
    controller.LoadProductList();
    const Products& list = *controller.GetProductList();
    const QJsonObject facts{{"user", QString::fromUtf8(name)},
                            {"list", QJsonObject{{"file", list.GetPath().GetFilePathString().ToQString()},
                                                 {"version", list.GetVersion().GetString().ToQString()}}},
                            {"settings", SettingsFacts()},
                            {"silentCheck", SilentCheckFacts(environment->Today())}};
    return QJsonDocument(facts).toJson();
}

// Runs in the other process, and never returns.
[[noreturn]] void TellFacts(const passwd& user, const boost::shared_ptr<IEnvironment>& environment,
                            const QDeadlineTimer& end, int pipe) {
    alarm(static_cast<unsigned>(end.remainingTime() / 1000 + 1));
    QFile out;
    if (BecomeUser(user) && out.open(pipe, QIODevice::WriteOnly))
        out.write(OwnFacts(user.pw_name, environment));
    out.close();
    _exit(0);
}

// Nothing when the other process was ended or the end has come; an empty text when there is nothing to tell.
std::optional<QByteArray> FactsOf(const passwd& user, const boost::shared_ptr<IEnvironment>& environment,
                                  const QDeadlineTimer& end) {
    int ends[2];
    if (end.hasExpired() || pipe2(ends, O_CLOEXEC) != 0)
        return {};
    const CFileDescriptor read(ends[0]);
    CFileDescriptor write(ends[1]);
    const pid_t child = fork();
    if (child == 0)
        TellFacts(user, environment, std::min(end, QDeadlineTimer(LONGEST_LOOK)), write.Get());
    write.Close();
    QFile in;
    const QByteArray facts = in.open(read.Get(), QIODevice::ReadOnly) ? in.read(LONGEST_FACTS) : QByteArray();
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return {};
    return facts;
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
            users.append(QJsonDocument::fromJson(*facts).object());
    }
    endpwent();
    return users;
}
