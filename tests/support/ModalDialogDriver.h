// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Operates the modal dialogs that the code under test opens.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <functional>
#include <utility>

// While it lives, hands each modal dialog once to a function, from the dialog's own event loop. Rejects a
// dialog that the function leaves open, so that no test hangs.
class ModalDialogDriver {
public:
    explicit ModalDialogDriver(std::function<void(QDialog&)> operate) : operate_(std::move(operate)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
        timer_.start(1);
    }

    // The number of dialogs so far.
    int Count() const { return count_; }

private:
    void Look() {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        ++count_;
        operate_(*dialog);
        if (dialog->isVisible())
            dialog->reject();
    }

    std::function<void(QDialog&)> operate_;
    QTimer timer_;
    int count_ = 0;
};
