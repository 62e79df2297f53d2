// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "CDelayedLine.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/steady_timer.hpp>
#include <cerrno>
#include <cstring>
#include <future>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace asio = boost::asio;

namespace {

// The most bytes that a device takes at once; a TUN device has the MTU of an Ethernet.
constexpr std::size_t MTU = 1500;

// Returns the result of a system call; throws when it has failed.
int Checked(int result, const char* what) {
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

// A machine whose /dev has no such file may still have the driver, under these numbers
// (Documentation/networking/tuntap.rst of the kernel). Deletes the file in /tmp at once.
int OpenTun() {
    const int found = open("/dev/net/tun", O_RDWR | O_CLOEXEC);
    if (found >= 0 || errno != ENOENT)
        return Checked(found, "/dev/net/tun");
    const std::string file = "/tmp/tun." + std::to_string(getpid());
    Checked(mknod(file.c_str(), S_IFCHR | S_IRUSR | S_IWUSR, makedev(10, 200)), "no /dev/net/tun; mknod");
    const int made = open(file.c_str(), O_RDWR | O_CLOEXEC);
    const int error = errno;
    unlink(file.c_str());
    errno = error;
    return Checked(made, "no /dev/net/tun; its driver");
}

void SetAddress(int socket, ifreq request, unsigned long property, const char* address) {
    sockaddr_in internet{};
    internet.sin_family = AF_INET;
    inet_pton(AF_INET, address, &internet.sin_addr);
    std::memcpy(&request.ifr_addr, &internet, sizeof(internet));
    Checked(ioctl(socket, property, &request), "the address of a TUN device");
}

// See netdevice(7).
void SetUp(ifreq device, const char* address, const char* peer) {
    const CFileDescriptor socket(Checked(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0), "a socket"));
    SetAddress(socket.Get(), device, SIOCSIFADDR, address);
    SetAddress(socket.Get(), device, SIOCSIFDSTADDR, peer);
    device.ifr_flags = IFF_UP;
    Checked(ioctl(socket.Get(), SIOCSIFFLAGS, &device), "the start of a TUN device");
}

}  // namespace

CDelayedLine::CDelayedLine() : client_(MakeEnd(CLIENT, SERVER)), server_(MakeEnd(SERVER, CLIENT)) {
    Pass(client_.device, server_.device);
    Pass(server_.device, client_.device);
    thread_ = std::thread([this] { events_.run(); });
}

CDelayedLine::~CDelayedLine() {
    events_.stop();
    thread_.join();
}

// A thread of its own makes the namespace and ends, so that all other threads stay in their own one.
CDelayedLine::End CDelayedLine::MakeEnd(const char* address, const char* peer) {
    const auto make = [this, address, peer] {
        Checked(unshare(CLONE_NEWNET), "no network namespace");
        CFileDescriptor network(Checked(open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC), "/proc"));
        const CFileDescriptor tun(OpenTun());
        ifreq request{};
        request.ifr_flags = IFF_TUN | IFF_NO_PI;
        Checked(ioctl(tun.Get(), TUNSETIFF, &request), "no TUN device");
        SetUp(request, address, peer);
        // Only now can asio wait for its packets: before TUNSETIFF a device has nothing to wait for.
        Device device(events_, Checked(fcntl(tun.Get(), F_DUPFD_CLOEXEC, 0), "a TUN device"));
        return End{std::move(network), std::move(device)};
    };
    return std::async(std::launch::async, make).get();
}

// A packet that the device refuses is lost, as on every line.
void CDelayedLine::Pass(Device& from, Device& to) {
    const auto packet = std::make_shared<std::vector<char>>(MTU);
    from.async_read_some(asio::buffer(*packet), [this, packet, &from, &to](auto error, std::size_t size) {
        if (error)
            return;
        packet->resize(size);
        const auto timer = std::make_shared<asio::steady_timer>(events_, DELAY);
        timer->async_wait([packet, timer, &to](auto) {
            boost::system::error_code ignored;
            to.write_some(asio::buffer(*packet), ignored);
        });
        Pass(from, to);
    });
}
