// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Tells when a window appears on the display.
#pragma once

struct xcb_connection_t;

// Watches the display that DISPLAY names, from its construction on.
class CWindowWatch {
public:
    CWindowWatch();
    ~CWindowWatch();
    CWindowWatch(const CWindowWatch&) = delete;
    CWindowWatch& operator=(const CWindowWatch&) = delete;

    // The descriptor that has data once something has happened.
    int Descriptor() const;
    // Whether a top-level window of more than 50 by 50 pixels has been mapped since the last call.
    bool WasMapped();

private:
    xcb_connection_t* connection_;
};
