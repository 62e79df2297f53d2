// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Keeps from run to run when silent checks run and where the window was.
#pragma once

#include "app/settings/CPolicy.h"
#include "app/settings/DefaultSettings.h"

#include <QByteArray>
#include <QDate>

// Holds the update-check settings between Load and Save. Dates are Julian day numbers, as of
// QDate::toJulianDay; 0 means never. GUI thread only; shared by the workflow and the main window.
class CRecordKeeper {
public:
    virtual ~CRecordKeeper() = default;

    // Reads the values: those of the user, else the machine's, else the defaults; the policy goes before all.
    // True when there is a "LastChecked".
    bool Load();
    // Writes the three values, except those that the policy sets, to the user's settings, and the window's
    // place if it has changed. Failures are not reported.
    void Save() const;
    // Whether a silent check is due today: checks are on, and at least the interval has passed since the
    // loaded date.
    bool IsCheckDue(const QDate& today) const;

    // The Julian day of the next silent check, counted from what Save writes.
    long long GetNextCheck() const { return static_cast<long long>(newLastChecked_) + interval_; }

    // The policy as read by Load.
    const CPolicy& GetPolicy() const { return policy_; }
    bool GetCheckUpdates() const { return checkUpdates_; }
    void SetCheckUpdates(bool on) { checkUpdates_ = on; }
    // In days.
    int GetInterval() const { return interval_; }
    void SetInterval(int days) { interval_ = days; }
    // The date as it was loaded.
    int GetLastChecked() const { return lastChecked_; }
    // The date that Save writes.
    int GetNewLastChecked() const { return newLastChecked_; }
    // Today, a check has reached a product.
    void NoteCheck(const QDate& today) { newLastChecked_ = static_cast<int>(today.toJulianDay()); }
    // As QWidget::saveGeometry gives it; empty for a user who never had a window.
    const QByteArray& GetWindowPlace() const { return windowPlace_; }
    void SetWindowPlace(const QByteArray& place) {
        isWindowMoved_ = isWindowMoved_ || place != windowPlace_;
        windowPlace_ = place;
    }

private:
    CPolicy policy_;
    bool checkUpdates_ = true;
    int interval_ = DefaultSettings::DEFAULT_INTERVAL;
    int lastChecked_ = 0;
    int newLastChecked_ = 0;
    QByteArray windowPlace_;
    bool isWindowMoved_ = false;
};
