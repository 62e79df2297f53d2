// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The small window of a program that waits.
#pragma once

#include "platform/desktop/IAttendedEnvironment.h"

#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <boost/function.hpp>
#include <chrono>

// Says what the program waits for, over a bar: busy, or as long as the part that has arrived. Every way to
// close it cancels. It is not modal, so it stands in no other window's way; while a modal dialog is open, the
// window does not appear, for it would lie on top of it and not answer.
class CProgressWindow : public QDialog, public IProgress {
    Q_OBJECT

public:
    // How long the user waits for all but installers before the window appears.
    static constexpr std::chrono::milliseconds PATIENCE{700};

    // cancel is called when the user has enough; the window has gone by then.
    explicit CProgressWindow(const boost::function<void()>& cancel);

    void Begin(Task task) override;
    void SetBytes(int done, int total) override;
    void Pause() override;

public slots:
    void reject() override;

private:
    static QString TextOf(Task task);
    void Appear();
    void Build();
    void ShowTask();

    boost::function<void()> cancel_;
    Task task_ = Task::LOOKING_FOR_PROGRAM;
    // Null until the window appears for the first time: most starts never need it, and would wait for it.
    QLabel* text_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QLabel* bytes_ = nullptr;
    QTimer appear_;
    // What is left of it, once part of it was used up.
    std::chrono::milliseconds patience_ = PATIENCE;
};
