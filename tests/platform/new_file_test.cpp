#include "platform/new_file.h"

#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace veldtrim::test {

namespace {

std::vector<std::string> namesIn(const std::string& directory) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        names.push_back(entry.path().filename().string());
    }
    return names;
}

TEST(NewFile, HasItsNameOnlyWhenItIsPublished) {
    for (const bool isPublished : {true, false}) {
        const TemporaryDirectory directory;
        const std::string path = directory.path("new");
        {
            NewFile file(path);
            file.write("whole");
            EXPECT_FALSE(std::filesystem::exists(path));
            if (isPublished) {
                file.publish();
                EXPECT_EQ(readBytes(path), "whole");
            }
        }
        EXPECT_EQ(namesIn(directory.path("")),
                  std::vector<std::string>(isPublished ? 1 : 0, "new"));
    }
}

TEST(NewFile, NeverReplacesAFileThatAppearsMeanwhile) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("new");
    {
        NewFile file(path);
        NewFile second(path); // has an unfinished file of its own
        file.write("mine");
        static_cast<void>(directory.write("new", "other"));
        for (NewFile* const each : {&file, &second}) {
            try {
                each->publish();
                FAIL() << "an existing file was replaced";
            } catch (const std::system_error& error) {
                EXPECT_EQ(error.code(), std::errc::file_exists);
            }
        }
    }
    EXPECT_EQ(readBytes(path), "other");
    EXPECT_EQ(namesIn(directory.path("")), std::vector<std::string>{"new"});
}

} // namespace

} // namespace veldtrim::test
