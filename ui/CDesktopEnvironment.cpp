// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ui/CDesktopEnvironment.h"

#include "platform/desktop/CUnattendedEnvironment.h"
#include "platform/desktop/DesktopLaunching.h"
#include "ui/CProgressWindow.h"
#include "ui/MessageBoxes.h"

#include <QApplication>

CVardoDirectoryPath CDesktopEnvironment::SharedDataFolder() const {
    return ::SharedDataFolder();
}

bool CDesktopEnvironment::StartDetached(const QString& program, const QStringList& arguments) {
    return starter_.StartDetached(program, arguments);
}

bool CDesktopEnvironment::OpenWebPage(const CAtlString& address, const QString& product) {
    if (address.IsEmpty()) {
        WarnNoPage(product);
        return false;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool opened = OpenURL(address, starter_);
    QApplication::restoreOverrideCursor();
    if (!opened)
        WarnNoBrowser(address);
    return opened;
}

bool CDesktopEnvironment::ConfirmSelfUpdate(const SelfUpdateOffer& offer) {
    return AskForSelfUpdate(offer);
}

void CDesktopEnvironment::WarnSelfUpdateFailed() {
    WarnSelfUpdateNotDownloaded();
}

std::unique_ptr<IProgress> CDesktopEnvironment::MakeProgress(const boost::function<void()>& cancel) {
    return std::make_unique<CProgressWindow>(cancel);
}
