// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// scale_benchmark COUNT FOLDER: loads the list of an installation of COUNT products, finds the installed
// versions and applies the disablers. Its last line of output is the processor time that this took, in
// milliseconds.
#include <QCoreApplication>
#include <algorithm>
#include <boost/make_shared.hpp>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include <sys/resource.h>

#include "platform/desktop/CUnattendedEnvironment.h"
#include "products/CProductListController.h"

namespace {

double ProcessorMilliseconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) * 1e3 +
           static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e3;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    const QCoreApplication application(argc, argv);
    const int count = std::atoi(argv[1]);
    const std::filesystem::path folder(argv[2]);
    setenv("HOME", argv[2], 1);

    const double before = ProcessorMilliseconds();
    CProductListController controller(boost::make_shared<CUnattendedEnvironment>(
        CVardoDirectoryPath(CAtlString((folder / "share").c_str()))));
    controller.LoadProductList();
    controller.FindInstalled();
    const double used = ProcessorMilliseconds() - before;

    // The measured work must be complete.
    const auto products = controller.GetProducts();
    const bool complete = products.size() == static_cast<std::size_t>(count) &&
                          std::all_of(products.begin(), products.end(),
                                      [](const auto& product) { return product->GetItemCount() == 1; });
    std::cout << used << std::endl;
    return complete ? 0 : 1;
}
