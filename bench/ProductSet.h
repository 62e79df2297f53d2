// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Installations of any size, made for the measurements.
#pragma once

#include <filesystem>
#include <string>

// Fills installation/share with a list of count products and a local description of each, whose remote one is
// address + "/<number>.xml". The first DISABLERS products name a disabler whose installed version is out of
// its range. Creates folders. Nothing newer is on offer, so a silent check shows no window.
struct ProductSet {
    static constexpr int DISABLERS = 10;

    static void Install(const std::filesystem::path& installation, int count, const std::string& address);
    // Writes the remote descriptions "0.xml" to "<count - 1>.xml" into site.
    static void Publish(const std::filesystem::path& site, int count);
    // The text of each remote description.
    static std::string Offer();
};
