// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The world in which published files are checked.
#pragma once

#include "platform/IEnvironment.h"

// Nothing is installed, nothing is started, nobody is asked.
class CCatalogEnvironment : public IEnvironment {
public:
    QDate Today() const override { return QDate::currentDate(); }
    CVardoDirectoryPath SharedDataFolder() const override { return {}; }
    bool StartDetached(const QString& /*program*/, const QStringList& /*arguments*/) override {
        return false;
    }
    bool OpenWebPage(const CAtlString& /*address*/) override { return false; }
    bool ConfirmSelfUpdate() override { return false; }
    void WarnSelfUpdateFailed() override {}
    std::unique_ptr<IProgress> MakeProgress(const boost::function<void()>& /*cancel*/) override {
        return nullptr;
    }
};
