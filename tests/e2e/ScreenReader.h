// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// What a screen reader is told of a program: the tree of its accessible objects, over AT-SPI.
#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>
#include <QSet>
#include <QStringList>

#include "support/ChildProcess.h"

// A session bus of its own, on which the accessibility bus starts by itself. Programs that are to be read
// need its address as DBUS_SESSION_BUS_ADDRESS, and QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1.
class ScreenReader {
public:
    ScreenReader() {
        if (!WaitUntil([this] { return bus_.Output().ends_with('\n'); }))
            throw std::runtime_error("no session bus: " + bus_.Errors());
        const auto session = QDBusConnection::connectToBus(Address(), "session");
        const QDBusReply<QString> reply =
            QDBusInterface("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", session).call("GetAddress");
        accessibility_ = QDBusConnection::connectToBus(reply.value(), "accessibility");
        if (!accessibility_.isConnected())
            throw std::runtime_error("no accessibility bus: " + reply.error().message().toStdString());
    }
    ~ScreenReader() {
        QDBusConnection::disconnectFromBus("accessibility");
        QDBusConnection::disconnectFromBus("session");
    }

    // Of the session bus.
    QString Address() const { return QString::fromStdString(bus_.Output()).trimmed(); }

    // "role: name" of everything that can be reached from the root, in the order of the tree. An object that
    // was reached twice stands there once.
    QStringList Read() const {
        QStringList lines;
        QSet<QString> seen;
        Walk(ROOT, seen, [&](const Object& object) {
            const QString role = Call(object, ACCESSIBLE, "GetRoleName").toString();
            lines << role + ": " + Property(object, "Name").toString();
        });
        return lines;
    }
    // Presses the first button of that name, as a screen reader does; false when there is none.
    bool Press(const QString& name) const {
        bool pressed = false;
        QSet<QString> seen;
        Walk(ROOT, seen, [&](const Object& object) {
            if (!pressed && Property(object, "Name").toString() == name)
                pressed = Call(object, "org.a11y.atspi.Action", "DoAction", {0}).toBool();
        });
        return pressed;
    }

private:
    // The name of a program on the bus, and the path of one of its objects.
    struct Object {
        QString bus;
        QString path;
    };
    static constexpr const char* ACCESSIBLE = "org.a11y.atspi.Accessible";
    static inline const Object ROOT{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};

    QVariant Call(const Object& object, const QString& interface, const QString& method,
                  const QVariantList& arguments = {}) const {
        auto message = QDBusMessage::createMethodCall(object.bus, object.path, interface, method);
        message.setArguments(arguments);
        return accessibility_.call(message).arguments().value(0);
    }
    QVariant Property(const Object& object, const QString& name) const {
        return Call(object, "org.freedesktop.DBus.Properties", "Get", {ACCESSIBLE, name})
            .value<QDBusVariant>()
            .variant();
    }
    std::vector<Object> Children(const Object& object) const {
        std::vector<Object> children;
        const auto list = Call(object, ACCESSIBLE, "GetChildren").value<QDBusArgument>();
        for (list.beginArray(); !list.atEnd();) {
            Object child;
            QDBusObjectPath path;
            list.beginStructure();
            list >> child.bus >> path;
            list.endStructure();
            child.path = path.path();
            children.push_back(child);
        }
        return children;
    }
    template <typename Visit>
    void Walk(const Object& object, QSet<QString>& seen, const Visit& visit) const {
        if (seen.contains(object.bus + object.path))
            return;
        seen.insert(object.bus + object.path);
        visit(object);
        for (const Object& child : Children(object))
            Walk(child, seen, visit);
    }

    ChildProcess bus_{"dbus-daemon", {"--session", "--nofork", "--print-address"}};
    QDBusConnection accessibility_{"none"};
};
