// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Both files of a notification: the input is read as its local description and as its message.
#include <boost/make_shared.hpp>

#include "fuzz/Fuzzing.h"
#include "i18n/Language.h"
#include "platform/xml/XmlFile.h"
#include "products/Notification.h"
#include "support/FakeEnvironment.h"

namespace {

// Notifications on a machine with board software of their generation.
struct World {
    World() {
        environment->sharedDataFolder = CVardoDirectoryPath(L"/tmp/fuzz/share");
        description.Write("<Notification URL='http://h' File='f'/>");
        board.Write(
            "<l><Product CurrentVersion='9.0.0.0' RemoteVersionFile='f' RemoteVersionFileURL='h'/></l>");
        SetLocaleOverride("de-AT");
        Require(message.FindInstalled(), "the notification is there");
    }

    Notification Make(const char* base) const {
        TiXmlElement element("Notification");
        element.SetAttribute("BaseXML", base);
        element.SetAttribute("Name", "n");
        Notification notification(environment);
        Require(notification.Init(&element), "the element is good");
        return notification;
    }

    boost::shared_ptr<FakeEnvironment> environment = boost::make_shared<FakeEnvironment>();
    boost::shared_ptr<OnePageDownloader> web = boost::make_shared<OnePageDownloader>();
    InputFile description{"/tmp/fuzz/share/message.xml"};
    InputFile board{"/tmp/fuzz/share/SoftwareUpdateVBS.xml"};
    InputFile local{"/tmp/fuzz/share/local.xml"};
    Notification message = Make("message");
    Notification described = Make("local");
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static World world;
    const std::string_view input = View(data, size);

    world.local.Write(input);
    if (world.described.FindInstalled())
        Require(world.described.GetCheckAddress().Find(L'/') >= 0, "an address has a folder and a file");

    world.web->Serve(input);
    world.message.SetDownloader(world.web);
    const bool checked = world.message.CheckForUpdates();
    Require(checked == world.message.IsChecked(0), "the answer is the state");
    Require(!world.web->IsFileLeft(), "the fetched file is deleted");
    const bool available = world.message.IsUpdateAvailable(0);
    Require(checked || !available, "what was not read is not shown");
    if (available)
        world.message.GetName();
    return 0;
}
