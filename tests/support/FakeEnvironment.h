// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A world for tests: its facts are set, and what was asked of it is recorded.
#pragma once

#include "platform/desktop/IAttendedEnvironment.h"

#include <QEventLoop>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <utility>
#include <vector>

class FakeEnvironment : public IAttendedEnvironment {
public:
    // What the world answers.
    QDate today{2026, 3, 15};
    CVardoDirectoryPath sharedDataFolder;
    bool programsStart = true;
    bool pagesOpen = true;
    bool selfUpdateConfirmed = false;

    // What was asked of it, in order.
    std::vector<std::pair<QString, QStringList>> startedPrograms;
    std::vector<CAtlString> openedPages;
    int selfUpdateQuestions = 0;
    SelfUpdateOffer selfUpdateOffer;
    int selfUpdateWarnings = 0;
    // What the user was told about waiting: what for, the bytes, and "." for its end.
    QStringList progress;
    // What the user does who has enough of it.
    boost::function<void()> cancelWaiting;
    // What happens while a page is being opened, which then takes until StopWaiting.
    std::function<void()> whileOpening;

    QDate Today() const override { return today; }
    QTime Now() const override { return {14, 5}; }
    CVardoDirectoryPath SharedDataFolder() const override { return sharedDataFolder; }
    bool StartDetached(const QString& program, const QStringList& arguments) override {
        startedPrograms.emplace_back(program, arguments);
        return programsStart;
    }
    bool OpenWebPage(const CAtlString& address, const QString& /*product*/) override {
        openedPages.push_back(address);
        if (whileOpening) {
            QEventLoop wait;
            wait_ = &wait;
            QTimer::singleShot(0, &wait, whileOpening);
            wait.exec();
            wait_ = nullptr;
        }
        return pagesOpen;
    }
    void StopWaiting() override {
        if (wait_)
            wait_->quit();
    }
    bool ConfirmSelfUpdate(const SelfUpdateOffer& offer) override {
        ++selfUpdateQuestions;
        selfUpdateOffer = offer;
        return selfUpdateConfirmed;
    }
    void WarnSelfUpdateFailed() override { ++selfUpdateWarnings; }
    std::unique_ptr<IProgress> MakeProgress(const boost::function<void()>& cancel) override {
        cancelWaiting = cancel;
        return std::make_unique<FakeProgress>(progress);
    }

private:
    struct FakeProgress : IProgress {
        explicit FakeProgress(QStringList& log) : log_(log) {}
        void Begin(Task task) override {
            const QStringList names{"program", "list", "installer"};
            log_ << names.at(static_cast<int>(task));
        }
        void SetBytes(int done, int total) override { log_ << QString("%1/%2").arg(done).arg(total); }
        void Pause() override { log_ << "."; }
        QStringList& log_;
    };

    QPointer<QEventLoop> wait_;
};
