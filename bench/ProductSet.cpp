// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "ProductSet.h"

#include <fstream>

namespace {

void Write(const std::filesystem::path& file, const std::string& text) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << text;
}

// The hyphen keeps a name from continuing another with a digit, so each product has one description.
std::string Name(int number) {
    return "Product" + std::to_string(number) + "-";
}

std::string Element(int number) {
    const std::string disabler =
        number < ProductSet::DISABLERS
            ? "<DisableUpdatesIfInstalled><Disabler uid=\"" + Name(number + 1) +
                  "\" versionFrom=\"2.0.0.0\" versionTo=\"3.0.0.0\"/></DisableUpdatesIfInstalled>"
            : "";
    return "<Product Name=\"Product number " + std::to_string(number) + "\" BaseXml=\"" + Name(number) +
           "\" DefaultUrl=\"http://updates.invalid/\">" + disabler + "</Product>\n";
}

}  // namespace

void ProductSet::Install(const std::filesystem::path& installation, int count, const std::string& address) {
    std::string list = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Products Version=\"1.0.0.0\">\n";
    for (int i = 0; i < count; ++i) {
        list += Element(i);
        Write(installation / "share" / (Name(i) + ".xml"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Update Location=\"Local\"><Product "
              "CurrentVersion=\""
              "1.0.0." +
                  std::to_string(i) + "\" RemoteVersionFile=\"" + std::to_string(i) +
                  ".xml\" RemoteVersionFileURL=\"" + address + "\"/></Update>\n");
    }
    Write(installation / "share" / "products.xml", list + "</Products>\n");
}

void ProductSet::Publish(const std::filesystem::path& site, int count) {
    for (int i = 0; i < count; ++i)
        Write(site / (std::to_string(i) + ".xml"), Offer());
}

std::string ProductSet::Offer() {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Update Location=\"Server\"><Product "
           "UpdateVersion=\"1.0.0.0\" "
           "UpdateWebPage=\"http://updates.invalid/page.html\"/></Update>\n";
}
