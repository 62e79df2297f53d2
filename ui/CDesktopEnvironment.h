// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The real world around the program.
#pragma once

#include "platform/desktop/CProcessStarter.h"
#include "platform/desktop/IAttendedEnvironment.h"

// The machine's date, processes and desktop, and the user behind message boxes. May be constructed before the
// application object, but is used only while that lives. GUI thread only.
class CDesktopEnvironment : public IAttendedEnvironment {
public:
    // Empty when the executable's folder has no parent.
    CVardoDirectoryPath SharedDataFolder() const override;
    bool StartDetached(const QString& program, const QStringList& arguments) override;
    bool OpenWebPage(const CAtlString& address, const QString& product) override;
    void StopWaiting() override { starter_.StopWaiting(); }
    bool ConfirmSelfUpdate(const SelfUpdateOffer& offer) override;
    void WarnSelfUpdateFailed() override;
    std::unique_ptr<IProgress> MakeProgress(const boost::function<void()>& cancel) override;

private:
    CProcessStarter starter_;
};
