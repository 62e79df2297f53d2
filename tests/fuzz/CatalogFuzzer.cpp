// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// The check of published files: the input is a file of every kind that goes by its name, and one that goes by
// what is in it.
#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>
#include <algorithm>
#include <sstream>

#include "catalog/RunCatalogCheck.h"
#include "fuzz/Fuzzing.h"

namespace {

constexpr const char* FOLDER = "/tmp/fuzz/catalog";

struct Outcome {
    int status;
    std::string output;
};

Outcome Check(const QStringList& options) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = RunCatalogCheck(QStringList{"check"} + options + QStringList{FOLDER}, out, err);
    Require(status >= EXIT_CLEAN && status <= EXIT_ERRORS && err.str().empty(), "the folder is checked");
    return {status, out.str()};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::vector<InputFile> files = [] {
        std::vector<InputFile> all;
        for (const char* name : {"products.xml", "gallery_categories.xml", "languages.xml", "some.xml",
                                 "de/VARDOProductUpdate.strings"})
            all.emplace_back(std::string(FOLDER) + "/" + name);
        return all;
    }();
    for (const InputFile& file : files)
        file.Write(View(data, size));

    const Outcome lines = Check({});
    const Outcome json = Check({"--json", "--site", "http://h/"});
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(json.output));
    Require(document.isArray(), "what is called JSON is");
    Require((lines.status == EXIT_CLEAN) <= (lines.output.find(": error: ") == std::string::npos),
            "an error shows in the exit status");
    const auto ends = std::count(lines.output.begin(), lines.output.end(), '\n');
    Require(lines.output.empty() || (lines.output.back() == '\n' && ends > 0), "findings are lines");
    return 0;
}
