// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// From an object's events to function objects.
#pragma once

#include <QEvent>
#include <QObject>
#include <boost/function.hpp>
#include <map>

// An event filter with one handler per event type. Install it with QObject::installEventFilter; it must live
// as long as it is installed.
class QtEventProxy : public QObject {
    Q_OBJECT

public:
    // Gets the watched object and the event; true ends the event's way.
    using Handler = boost::function<bool(QObject*, QEvent*)>;

    QtEventProxy() = default;

    // Sets or replaces the handler of an event type (a value of QEvent::Type). An empty handler is ignored.
    void SetHandler(int eventType, const Handler& handler);
    // What the handler of the event's type answers; false without one.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::map<int, Handler> handlers_;
};
