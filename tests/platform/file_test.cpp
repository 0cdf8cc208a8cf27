#include "platform/file.h"

#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <system_error>

namespace veldtrim::test {

namespace {

namespace fs = std::filesystem;

TEST(PlatformFile, ReadsFromAnOffset) {
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "0123456789");
    PlatformFile file = PlatformFile::openForReading(path);
    for (const auto& [offset, rest] :
         {std::pair(7, "789"), {0, "0123456789"}, {10, ""}, {99, ""}}) {
        std::array<char, 20> bytes{};
        file.moveTo(offset);
        const std::size_t got = file.read(bytes.data(), bytes.size());
        EXPECT_EQ(std::string(bytes.data(), got), rest) << offset;
    }
}

TEST(PlatformFile, ContinuesAFileThatItCutsOff) {
    const TemporaryDirectory directory;
    const std::string path = directory.write("file", "0123456789");
    for (const auto& [size, whole] : {std::pair(4, "0123+"), {5, "0123++"}, {0, "+"}}) {
        PlatformFile file = PlatformFile::openToContinue(path, size);
        file.write("+");
        file.close();
        EXPECT_EQ(readBytes(path), whole);
    }
    EXPECT_TRUE(PlatformFile::openToContinue(directory.path("none"), 0).openError());
    EXPECT_FALSE(fs::exists(directory.path("none")));
}

} // namespace

} // namespace veldtrim::test
