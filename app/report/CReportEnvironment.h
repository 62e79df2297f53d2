// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The world around the report: the machine, and nobody to ask.
#pragma once

#include "platform/IEnvironment.h"

// The date and the installation are the real ones. It starts nothing, opens nothing and shows nothing.
class CReportEnvironment : public IEnvironment {
public:
    QDate Today() const override;
    CVardoDirectoryPath SharedDataFolder() const override;
    bool StartDetached(const QString& program, const QStringList& arguments) override;
    bool OpenWebPage(const CAtlString& address) override;
    bool ConfirmSelfUpdate() override;
    void WarnSelfUpdateFailed() override;
    // Nobody waits in front of a window.
    std::unique_ptr<IProgress> MakeProgress(const boost::function<void()>& /*cancel*/) override {
        return nullptr;
    }
};
