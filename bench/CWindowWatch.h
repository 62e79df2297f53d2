// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// When a window appears on the display.
#pragma once

struct xcb_connection_t;

// Watches the display of the environment from its construction on.
class CWindowWatch {
public:
    CWindowWatch();
    ~CWindowWatch();
    CWindowWatch(const CWindowWatch&) = delete;
    CWindowWatch& operator=(const CWindowWatch&) = delete;

    // The descriptor on which news arrive.
    int Descriptor() const;
    // Whether a top-level window larger than a pixel or two has been mapped since the last call.
    bool WasMapped();

private:
    xcb_connection_t* connection_;
};
