// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// A line with the round trip of a distant server, on one machine.
#pragma once

#include <utility>  // Boost 1.74 uses std::exchange without it

#include <boost/asio/io_context.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <chrono>
#include <thread>

#include "platform/files/CFileDescriptor.h"

// Makes two network namespaces with one TUN device in each. A packet that enters one device comes out of the
// other one DELAY later; the line does not limit the rate. The namespaces have no other device that is up,
// and nothing outside of them changes. They end with the object and the last process in them. A thread of its
// own passes the packets on.
class CDelayedLine {
public:
    static constexpr std::chrono::milliseconds DELAY{50};
    // The addresses of the two ends.
    static constexpr const char* CLIENT = "10.0.0.1";
    static constexpr const char* SERVER = "10.0.0.2";

    // The calling process needs CAP_SYS_ADMIN in its user namespace, and must be able to open a TUN device.
    // Throws std::system_error, which says what is missing.
    CDelayedLine();
    ~CDelayedLine();
    CDelayedLine(const CDelayedLine&) = delete;
    CDelayedLine& operator=(const CDelayedLine&) = delete;

    // Descriptors of the namespaces, for setns(2).
    int ClientNamespace() const { return client_.network.Get(); }
    int ServerNamespace() const { return server_.network.Get(); }

private:
    using Device = boost::asio::posix::stream_descriptor;
    struct End {
        CFileDescriptor network;
        Device device;
    };

    End MakeEnd(const char* address, const char* peer);
    void Pass(Device& from, Device& to);

    boost::asio::io_context events_;
    End client_;
    End server_;
    std::thread thread_;
};
