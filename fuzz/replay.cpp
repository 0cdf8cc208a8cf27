// Feeds files to a fuzz target without a fuzzer: the plain program around each of them.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void replay(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    // The name comes first: it is all that is left when the target ends the process.
    std::fprintf(stderr, "%s\n", path.string().c_str());
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

std::vector<fs::path> filesAt(const fs::path& path) {
    if (!fs::is_directory(path)) {
        return {path};
    }
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

/// Replays the files, and the files in the directories, that the arguments name. An argument that
/// names nothing is a failure: a corpus that went astray must not pass for a clean one.
int main(int argc, char* argv[]) {
    try {
        std::size_t replayed = 0;
        for (int i = 1; i < argc; ++i) {
            if (!fs::exists(argv[i])) {
                std::fprintf(stderr, "there is no %s\n", argv[i]);
                return 2;
            }
            for (const fs::path& path : filesAt(argv[i])) {
                replay(path);
                ++replayed;
            }
        }
        std::fprintf(stderr, "%zu inputs replayed\n", replayed);
        return replayed == 0 ? 2 : 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "an exception left the target: %s\n", error.what());
        return 1;
    }
}
