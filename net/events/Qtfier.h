// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// From a Qt signal to a function object.
#pragma once

#include <QObject>
#include <boost/function.hpp>

// Turns any parameterless signal into a call of a stored function, on the thread that this object lives on.
// It must live as long as the connection is wanted.
class Qtfier : public QObject {
    Q_OBJECT

public:
    explicit Qtfier(const boost::function<void()>& action) : action_(action) {}

public slots:
    // Calls the action; an empty one throws boost::bad_function_call.
    void Slot() { action_(); }

private:
    boost::function<void()> action_;
};
