// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The product list, and what its products find in a folder with files of some other kind alone.
#include <boost/make_shared.hpp>

#include "fuzz/Fuzzing.h"
#include "products/CProductsByKey.h"
#include "products/Products.h"
#include "support/FakeEnvironment.h"

namespace {

void AskEverything(IProduct& product) {
    product.GetName();
    product.GetCheckAddress();
    product.GetDescriptionName();
    Require(product.GetActionTexts().size() == 2, "a button has two captions");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile list("/tmp/fuzz/products.xml");
    static const InputFile strangers[] = {InputFile("/tmp/fuzz/share/a1.xml"),
                                          InputFile("/tmp/fuzz/share/" + std::string(200, 'a') + "1.xml")};
    static const auto environment = [] {
        for (const InputFile& stranger : strangers)
            stranger.Write("not a description");
        auto world = boost::make_shared<FakeEnvironment>();
        world->sharedDataFolder = CVardoDirectoryPath(L"/tmp/fuzz/share");
        world->LendSharedFiles(world->SharedFiles());
        return world;
    }();

    list.Write(View(data, size));
    Products products(environment);
    const bool loaded = products.Load(CVardoFilePath(CAtlString(list.Path().c_str())));
    Require(loaded == products.IsLoaded() && loaded != products.GetProducts().empty(),
            "a list is loaded when it has products");
    for (const auto& product : products.GetProducts()) {
        Require(!product->FindInstalled() && product->GetItemCount() == 0, "nothing is installed");
        Require(!product->CheckForUpdates(), "without a downloader nothing is fetched");
    }
    for (const auto& product : products.GetProducts()) {
        product->ApplyDisablers(products.GetProducts());
        AskEverything(*product);
    }
    return 0;
}
