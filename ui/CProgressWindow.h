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

// Says what the program waits for, over a bar that is busy or shows the part that has arrived. Every way to
// close it cancels. It is not modal, and does not appear while a modal dialog is open, since it would cover
// the dialog and not respond.
class CProgressWindow : public QDialog, public IProgress {
    Q_OBJECT

public:
    // How long the user waits for all but installers before the window appears.
    static constexpr std::chrono::milliseconds PATIENCE{700};

    // cancel is called after the user has closed the window.
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
    // The patience that is left.
    std::chrono::milliseconds patience_ = PATIENCE;
};
