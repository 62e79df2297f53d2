// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

// Temporary files for the length of a scope.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

// Makes a new directory below /tmp, and removes it with all its contents when the scope ends.
class TemporaryTree {
public:
    TemporaryTree() {
        if (!mkdtemp(root_.data()))
            throw std::runtime_error("no temporary directory");
    }
    ~TemporaryTree() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    TemporaryTree(const TemporaryTree&) = delete;
    TemporaryTree& operator=(const TemporaryTree&) = delete;

    const std::string& Root() const { return root_; }
    std::string Path(const std::string& relative) const { return root_ + "/" + relative; }

    // Writes a file and creates its folders; returns its path.
    std::string Write(const std::string& relative, const std::string& contents) const {
        std::string path = Path(relative);
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << contents;
        return path;
    }
    // Creates a directory and its parents; returns its path.
    std::string MakeDirectory(const std::string& relative) const {
        std::filesystem::create_directories(Path(relative));
        return Path(relative);
    }

private:
    std::string root_ = "/tmp/tree-XXXXXX";
};

// Returns the bytes of a file; empty when it cannot be read.
inline std::string ReadWholeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
