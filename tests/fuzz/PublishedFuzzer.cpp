// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Reads the input as an answer of the maker's site: as the list, a description, a message, and the categories
// of gallery content.
#include <boost/make_shared.hpp>

#include "fuzz/Fuzzing.h"
#include "i18n/Language.h"
#include "platform/settings/CSettingsIdentity.h"
#include "platform/settings/SettingsStore.h"
#include "products/CGalleryExtensionInfo.h"
#include "products/CProductsByKey.h"
#include "products/Products.h"
#include "support/FakeEnvironment.h"

namespace {

constexpr const char* LIST =
    "<P Version='1'><Product Name='p' BaseXml='SoftwareUpdateVBS'/><Notification Name='n' BaseXML='message'/>"
    "<Gallery Name='g' GUID='{G}' DefaultUrl='http://h'/></P>";

// A machine with a product of each kind and an Austrian user.
struct World {
    World() {
        const std::string share = "/tmp/fuzz/share/";
        environment->sharedDataFolder = CVardoDirectoryPath(CAtlString(share.c_str()));
        InputFile(share + "SoftwareUpdateVBS.xml")
            .Write(
                "<l><Product CurrentVersion='9.0.0.0' RemoteVersionFile='f' RemoteVersionFileURL='h'/></l>");
        InputFile(share + "message.xml").Write("<Notification URL='http://h' File='f'/>");
        InputFile("/tmp/fuzz/content/Uninstall/updateinfo.xml")
            .Write("<i><category id='a' version='1'/><category id='b'/></i>");
        const CSettingsIdentity notebook("VARDO Technologies", "", "VARDO Notebook");
        const CAtlString key = CGalleryExtensionInfo::PreferencesPath + L"\\TeamContent\\{G}";
        WriteRegistryString(HKEY_LOCAL_MACHINE, key, L"ImsManifestXml", L"/tmp/fuzz/content/manifest.xml");
        WriteRegistryString(HKEY_LOCAL_MACHINE, key, L"AppPath", L"/tmp/fuzz/tool");
        SetLocaleOverride("de-AT");
        environment->LendSharedFiles(environment->SharedFiles());
        Require(installed.Load({}, Bytes(LIST)) && installed.GetProducts().size() == 3, "the list is good");
    }

    boost::shared_ptr<FakeEnvironment> environment = boost::make_shared<FakeEnvironment>();
    boost::shared_ptr<OnePageDownloader> web = boost::make_shared<OnePageDownloader>();
    Products installed{environment};
};

void AskEverything(IProduct& product) {
    product.GetName();
    product.GetCheckAddress();
    product.GetDescriptionName();
    for (unsigned item = 0; item < product.GetItemCount(); ++item) {
        product.GetInstalledVersion(item);
        product.GetLatestVersion(item);
        product.HasAction(item);
    }
}

void CheckWith(World& world, IProduct& product) {
    Require(product.FindInstalled(), "the product is there");
    product.SetDownloader(world.web);
    const bool isChecked = product.CheckForUpdates();
    Require(!world.web->IsFileLeft(), "the fetched file is deleted");
    Require(isChecked == product.IsChecked(0), "the answer is the state");
    Require(isChecked || !product.IsUpdateAvailable(0), "nothing is offered that was not read");
    AskEverything(product);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static World world;
    const std::string_view input = View(data, size);
    world.web->Serve(input);
    for (const auto& product : world.installed.GetProducts())
        CheckWith(world, *product);

    Products list(world.environment);
    const bool loaded = list.Load({}, Bytes(input));
    Require(loaded == list.IsLoaded() && loaded != list.GetProducts().empty(), "a loaded list has products");
    for (const auto& product : list.GetProducts())
        product->FindInstalled();
    for (const auto& product : list.GetProducts()) {
        product->ApplyDisablers(list.GetProducts());
        AskEverything(*product);
    }
    return 0;
}
