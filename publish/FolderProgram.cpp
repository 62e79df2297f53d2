// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/FolderProgram.h"

#include "catalog/ValueChecks.h"

#include <QFileInfo>
#include <ostream>

QString FolderProblem(const QCommandLineParser& parser, const QString& site) {
    const QStringList folders = parser.positionalArguments();
    if (folders.size() != 1)
        return QStringLiteral("there must be one folder");
    if (!site.isEmpty() && !CanBeFetched(site))
        return QStringLiteral("--site takes an address with \"http://\" and a host");
    if (const QFileInfo folder(folders.front()); !folder.isDir() || !folder.isReadable())
        return QStringLiteral("\"%1\" is no folder that can be read").arg(folders.front());
    return {};
}

int RefuseUsage(const char* program, const QString& problem, const char* usage, std::ostream& err) {
    err << program << ": " << problem.toStdString() << '\n' << usage;
    return EXIT_WRONG_USAGE;
}

int Finish(const char* program, int status, std::ostream& out, std::ostream& err) {
    if (out.flush())
        return status;
    err << program << ": the output could not be written\n";
    return EXIT_ERRORS;
}
