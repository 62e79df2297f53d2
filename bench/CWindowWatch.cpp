// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "CWindowWatch.h"

#include <cstdlib>
#include <memory>
#include <stdexcept>

#include <xcb/xcb.h>

namespace {

constexpr int SMALLEST = 50;

template <typename Reply>
std::unique_ptr<Reply, void (*)(void*)> Owned(Reply* reply) {
    return {reply, &std::free};
}

bool IsLarge(xcb_connection_t* connection, xcb_window_t window) {
    const auto geometry =
        Owned(xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    return geometry && geometry->width > SMALLEST && geometry->height > SMALLEST;
}

}  // namespace

CWindowWatch::CWindowWatch() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_))
        throw std::runtime_error("no display");
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, screen->root, XCB_CW_EVENT_MASK, &events);
    // After this round trip, no event is missed.
    Owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

CWindowWatch::~CWindowWatch() {
    xcb_disconnect(connection_);
}

int CWindowWatch::Descriptor() const {
    return xcb_get_file_descriptor(connection_);
}

bool CWindowWatch::WasMapped() {
    bool mapped = false;
    while (const auto event = Owned(xcb_poll_for_event(connection_)))
        if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY)
            mapped = IsLarge(connection_, reinterpret_cast<xcb_map_notify_event_t*>(event.get())->window) ||
                     mapped;
    return mapped;
}
