// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// An environment for tests, which set its answers and read what the program asked of it.
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
    // Its answers.
    QDate today{2026, 3, 15};
    CVardoDirectoryPath sharedDataFolder;
    bool programsStart = true;
    bool pagesOpen = true;
    bool selfUpdateConfirmed = false;

    // What the program asked of it, in order.
    std::vector<std::pair<QString, QStringList>> startedPrograms;
    std::vector<CAtlString> openedPages;
    int selfUpdateQuestions = 0;
    SelfUpdateOffer selfUpdateOffer;
    int selfUpdateWarnings = 0;
    // What the progress showed: each task, the bytes, and "." for a pause.
    QStringList progress;
    // Cancels the waiting, as the user would.
    boost::function<void()> cancelWaiting;
    // Called whenever the program asks for the day.
    std::function<void()> onToday;
    // Called while a page is being opened, which then lasts until StopWaiting.
    std::function<void()> whileOpening;

    QDate Today() const override {
        if (onToday)
            onToday();
        return today;
    }
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
