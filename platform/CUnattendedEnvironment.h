// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The world around a program that only looks.
#pragma once

#include "platform/IEnvironment.h"

#include <memory>

// The machine's date and one shared data folder, and nobody to ask: it starts nothing, opens nothing and
// shows nothing.
class CUnattendedEnvironment : public IEnvironment {
public:
    // With an empty folder nothing is installed.
    explicit CUnattendedEnvironment(const CVardoDirectoryPath& sharedDataFolder)
        : folder_(sharedDataFolder) {}

    QDate Today() const override { return QDate::currentDate(); }
    CVardoDirectoryPath SharedDataFolder() const override { return folder_; }
    bool StartDetached(const QString& /*program*/, const QStringList& /*arguments*/) override {
        return false;
    }
    bool OpenWebPage(const CAtlString& /*address*/) override { return false; }
    bool ConfirmSelfUpdate() override { return false; }
    void WarnSelfUpdateFailed() override {}
    std::unique_ptr<IProgress> MakeProgress(const boost::function<void()>& /*cancel*/) override {
        return std::make_unique<NothingToSee>();
    }

private:
    struct NothingToSee : IProgress {
        void Begin(Task /*task*/) override {}
        void SetBytes(int /*done*/, int /*total*/) override {}
        void Pause() override {}
    };

    CVardoDirectoryPath folder_;
};
