#include "platform/new_name.h"

#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace veldtrim::test {

namespace {

namespace fs = std::filesystem;

/// Everything that a name can be of already.
TEST(RenameToNewName, ReplacesNothing) {
    const TemporaryDirectory directory;
    const auto path = [&](const char* name) { return directory.path(name); };
    fs::create_directories(path("empty directory"));
    fs::create_directories(path("directory/in"));
    static_cast<void>(directory.write("file", "mine"));
    fs::create_symlink("nowhere", path("link"));
    for (const char* from : {"new file", "new directory"}) {
        if (from == std::string("new file")) {
            static_cast<void>(directory.write(from, "new"));
        } else {
            fs::create_directories(path(from) + "/new");
        }
        for (const char* to : {"empty directory", "directory", "file", "link"}) {
            EXPECT_EQ(renameToNewName(path(from), path(to)), std::errc::file_exists) << to;
            EXPECT_TRUE(fs::exists(path(from)));
        }
        const std::string unused = path(from) + " renamed";
        EXPECT_FALSE(renameToNewName(path(from), unused));
        EXPECT_TRUE(fs::exists(unused) && !fs::exists(path(from)));
    }
    EXPECT_TRUE(fs::is_empty(path("empty directory")));
    EXPECT_EQ(readBytes(path("file")), "mine");
    EXPECT_EQ(renameToNewName(path("none"), path("other")), std::errc::no_such_file_or_directory);
}

} // namespace

} // namespace veldtrim::test
