// Whole files, written and read in one go.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace zorvanelink::test {

inline std::string WriteFile(std::filesystem::path const& path, std::string const& bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return path.string();
}

inline std::string ReadFile(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace zorvanelink::test
