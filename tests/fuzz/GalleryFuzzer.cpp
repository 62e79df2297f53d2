// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The two category lists of gallery content: the installed one, a form feed, the published one.
#include <boost/make_shared.hpp>

#include "fuzz/Fuzzing.h"
#include "platform/settings/CSettingsIdentity.h"
#include "platform/settings/SettingsStore.h"
#include "platform/xml/XmlFile.h"
#include "products/CGalleryExtensionInfo.h"
#include "products/GalleryVersion.h"
#include "support/FakeEnvironment.h"

namespace {

// Content that the notebook software has recorded.
struct World {
    World() {
        const CSettingsIdentity notebook("VARDO Technologies", "", "VARDO Notebook");
        const CAtlString key = CGalleryExtensionInfo::PreferencesPath + L"\\TeamContent\\{G}";
        WriteRegistryString(HKEY_LOCAL_MACHINE, key, L"ImsManifestXml", L"/tmp/fuzz/content/manifest.xml");
        WriteRegistryString(HKEY_LOCAL_MACHINE, key, L"AppPath", L"/tmp/fuzz/tool");

        TiXmlElement element("Gallery");
        for (const auto& [name, value] :
             {std::pair("Name", "n"), {"GUID", "{G}"}, {"DefaultUrl", "http://h"}})
            element.SetAttribute(name, value);
        Require(gallery.Init(&element), "the element is good");
        gallery.SetDownloader(web);
    }

    boost::shared_ptr<OnePageDownloader> web = boost::make_shared<OnePageDownloader>();
    InputFile installed{"/tmp/fuzz/content/Uninstall/updateinfo.xml"};
    GalleryVersion gallery{boost::make_shared<FakeEnvironment>()};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static World world;
    const std::vector<std::string_view> lists = Split(View(data, size), '\f');
    GalleryVersion& gallery = world.gallery;

    world.installed.Write(lists.front());
    const bool found = gallery.FindInstalled();
    Require(found == (gallery.GetItemCount() == 1), "content is there when a category is known");
    Require(!gallery.IsUpdateAvailable(0), "nothing new before the check");

    world.web->Serve(lists.back());
    const bool checked = gallery.CheckForUpdates();
    Require(checked == gallery.IsChecked(0), "the answer is the state");
    Require(found || !checked, "nothing is published of what is not installed");
    Require(!world.web->IsFileLeft(), "the fetched file is deleted");
    gallery.GetInstalledVersion(0);
    gallery.GetLatestVersion(0);
    gallery.HasAction(0);
    return 0;
}
