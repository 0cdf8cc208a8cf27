/// A directory for one test, removed with everything in it.
#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace veldtrim::test {

class TemporaryDirectory {
public:
    TemporaryDirectory() {
        static std::atomic<unsigned> counter{std::random_device{}()};
        path_ =
            std::filesystem::temp_directory_path() / ("veldtrim-test-" + std::to_string(counter++));
        std::filesystem::create_directory(path_);
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    [[nodiscard]] std::string path(std::string_view name) const {
        return (path_ / std::filesystem::path(name)).string();
    }

    /// Writes the bytes to the file `name` and returns its path.
    [[nodiscard]] std::string write(std::string_view name, std::string_view bytes) const {
        const std::filesystem::path file = path_ / std::filesystem::path(name);
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return file.string();
    }

private:
    std::filesystem::path path_;
};

/// All bytes of a file, or an error text if it cannot be opened.
inline std::string readBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return "(cannot open " + path + ")";
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace veldtrim::test
