// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "app/CApplicationFactory.h"

#include "i18n/Language.h"
#include "net/Downloader.h"
#include "ui/CDesktopEnvironment.h"

#include <QDir>
#include <algorithm>
#include <boost/bind.hpp>
#include <boost/make_shared.hpp>
#include <cstring>

namespace {

const CAtlString PASSWORD(L"password");

// The executable's path without links (empty when there is no such file), then the arguments.
CAtlString JoinCommandLine(int argc, char** argv) {
    CAtlString line;
    if (argc > 0)
        line = CAtlString(QDir(CAtlString(argv[0]).ToQString()).canonicalPath());
    for (int i = 1; i < argc; ++i)
        line += CAtlString(" ") + CAtlString(argv[i]);
    return line;
}

// Other users may read a process's arguments as long as it runs (proc(5), cmdline). So each password that
// stands there is overwritten once it has been read.
void HidePasswords(int argc, char** argv) {
    bool isPassword = false;
    for (int i = 1; i < argc; ++i) {
        char* value = isPassword ? argv[i] : nullptr;
        CAtlString name(argv[i]);
        const bool isOption = StripSwitchPrefix(name);
        isPassword = isOption && name == PASSWORD;
        if (isOption && name.Left(PASSWORD.GetLength() + 1) == PASSWORD + L":")
            value = std::strchr(argv[i], ':') + 1;
        if (value)
            std::fill_n(value, std::strlen(value), '*');
    }
}

}  // namespace

CApplicationFactory::CApplicationFactory()
    : CApplicationFactory(boost::make_shared<CDesktopEnvironment>(), boost::make_shared<Downloader>()) {}

CApplicationFactory::CApplicationFactory(const boost::shared_ptr<IAttendedEnvironment>& environment,
                                         const boost::shared_ptr<IDownloader>& downloader)
    : workFlow_(environment, downloader) {
    RegisterParameters();
}

void CApplicationFactory::RegisterParameters() {
    const CActionParameter::Action checkInteractive =
        boost::bind(&CWorkFlow::CheckInteractive, &workFlow_, boost::cref(context_));
    action_ = checkInteractive;
    parser_.AddValueParameter("proxy", &proxyParameter_);
    parser_.AddValueParameter("username", &userNameParameter_);
    parser_.AddValueParameter("password", &passwordParameter_);
    parser_.AddValueParameter("locale", &localeParameter_);
    parser_.AddFlagParameter("verbose", &verboseParameter_);
    parser_.AddFlagParameter("overrideproxy", &overrideProxyParameter_);
    silentParameter_.SetAction(boost::bind(&CWorkFlow::CheckSilently, &workFlow_, boost::cref(context_)),
                               true);
    parser_.AddFlagParameter("silent", &silentParameter_);
    errorParameter_.SetAction(boost::bind(&CWorkFlow::ReportParameterError, workFlow_, boost::cref(context_)),
                              false);
    parser_.SetErrorParameter(&errorParameter_);
    defaultParameter_.SetAction(checkInteractive, true);
    parser_.SetDefaultParameter(&defaultParameter_);
}

bool CApplicationFactory::Parse(int argc, char** argv) {
    const bool isFaultless = parser_.Parse(argc, argv);
    HidePasswords(argc, argv);
    context_.commandLine = JoinCommandLine(argc, argv);
    return isFaultless;
}

CAtlString CApplicationFactory::GetLocale() const {
    return locale_.IsEmpty() ? CAtlString(::GetLocale(true)) : locale_;
}

int CApplicationFactory::Run() {
    return action_(context_);
}
