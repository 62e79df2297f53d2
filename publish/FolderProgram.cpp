// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "publish/FolderProgram.h"

#include "catalog/ValueChecks.h"
#include "platform/text/PrintableText.h"
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

QList<QCommandLineOption> FolderOptions() {
    return {{"site", {}, "ADDRESS"}, {{"h", "help"}, {}}, {"version", {}}};
}

FolderArguments TakeFolder(const QCommandLineParser& parser, const QStringList& folders) {
    FolderArguments arguments{.isHelp = parser.isSet("help"), .isVersion = parser.isSet("version")};
    arguments.folder = folders.value(0);
    const QString& folder = arguments.folder;
    const QString site = parser.value("site");
    const qsizetype sign = site.indexOf(u'=');
    arguments.siteAddress = site.left(sign);
    arguments.siteFolder = sign < 0 ? folder : Within(folder, site.mid(sign + 1));
    const QFileInfo info(folder);
    if (folders.size() != 1)
        arguments.problem = "there must be one folder";
    else if (!info.isDir() || !info.isReadable())
        arguments.problem = QString("\"%1\" is no folder that can be read").arg(folder);
    else if (!site.isEmpty() && !CanBeFetched(arguments.siteAddress))
        arguments.problem = "--site takes an address with \"http://\" and a host";
    else if (arguments.siteFolder.isEmpty())
        arguments.problem = QString("\"%1\" is no folder in \"%2\"").arg(site.mid(sign + 1), folder);
    return arguments;
}

int RefuseUsage(const ProgramTexts& texts, const QString& problem, std::ostream& err) {
    err << texts.name << ": " << problem.toStdString() << '\n' << texts.usage;
    return EXIT_WRONG_USAGE;
}

int Fail(const ProgramTexts& texts, const QString& problem, std::ostream& err) {
    err << texts.name << ": " << Printable(problem).toStdString() << '\n';
    return EXIT_ERRORS;
}

int RunProgram(const ProgramTexts& texts, const FolderArguments& arguments,
               const boost::function<int()>& work, std::ostream& out, std::ostream& err) {
    int status = EXIT_CLEAN;
    if (arguments.isHelp)
        out << texts.usage << texts.help;
    else if (arguments.isVersion)
        out << texts.name << ' ' << VARDO_VERSION << '\n';
    else if (!arguments.problem.isEmpty())
        return RefuseUsage(texts, arguments.problem, err);
    else {
        if (CUpdateXmlReader::IsTestMode())
            err << texts.name << ": because of " << CUpdateXmlReader::TEST_MARKER.ToQString().toStdString()
                << ", TestProduct is read in place of Product\n";
        status = work();
    }
    return out.flush() ? status : Fail(texts, "the output could not be written", err);
}
