// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/FolderProgram.h"

#include "catalog/ValueChecks.h"
#include "products/CUpdateXmlReader.h"

#include <QDir>
#include <QFileInfo>
#include <ostream>

namespace {

// A folder within another one, or that one itself, by a path that begins with that of the other as it was
// given; empty when it lies elsewhere.
QString Within(const QString& folder, const QString& inner) {
    const QString path =
        QDir(QFileInfo(folder).canonicalFilePath()).relativeFilePath(QFileInfo(inner).canonicalFilePath());
    if (path == QLatin1String("..") || path.startsWith(QLatin1String("../")) || !QFileInfo(inner).isDir())
        return {};
    return path == QLatin1String(".") ? folder : QDir::cleanPath(folder) + u'/' + path;
}

}  // namespace

FolderArguments ReadFolder(const QStringList& folders, const QString& site) {
    if (folders.size() != 1)
        return {.problem = "there must be one folder"};
    const QString& folder = folders.front();
    if (const QFileInfo info(folder); !info.isDir() || !info.isReadable())
        return {.problem = QString("\"%1\" is no folder that can be read").arg(folder)};
    const qsizetype sign = site.indexOf(u'=');
    FolderArguments arguments{.folder = folder,
                              .siteAddress = site.left(sign),
                              .siteFolder = sign < 0 ? folder : Within(folder, site.mid(sign + 1))};
    if (!site.isEmpty() && !CanBeFetched(arguments.siteAddress))
        arguments.problem = "--site takes an address with \"http://\" and a host";
    else if (arguments.siteFolder.isEmpty())
        arguments.problem = QString("\"%1\" is no folder in \"%2\"").arg(site.mid(sign + 1), folder);
    return arguments;
}

int RefuseUsage(const ProgramTexts& texts, const QString& problem, std::ostream& err) {
    err << texts.name << ": " << problem.toStdString() << '\n' << texts.usage;
    return EXIT_WRONG_USAGE;
}

int RunProgram(const ProgramTexts& texts, const CommonOptions& options, const boost::function<int()>& work,
               std::ostream& out, std::ostream& err) {
    int status = EXIT_CLEAN;
    if (options.isHelp)
        out << texts.usage << texts.help;
    else if (options.isVersion)
        out << texts.name << ' ' << VARDO_VERSION << '\n';
    else if (!options.problem.isEmpty())
        return RefuseUsage(texts, options.problem, err);
    else {
        if (CUpdateXmlReader::IsTestMode())
            err << texts.name << ": because of " << CUpdateXmlReader::TEST_MARKER.ToQString().toStdString()
                << ", TestProduct is read in place of Product\n";
        status = work();
    }
    if (out.flush())
        return status;
    err << texts.name << ": the output could not be written\n";
    return EXIT_ERRORS;
}
