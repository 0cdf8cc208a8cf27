#include "veldtrim/xml_reader.h"

#include "support/temporary_directory.h"
#include "veldtrim/cmarkup_stl.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <sstream>

namespace veldtrim {
namespace {

using Names = std::vector<std::string>;

TEST(XmlReaderTest, PathsSelectDataAndAttributes) {
    const struct {
        const char* path;
        bool found;
        const char* value;
    } cases[] = {
        {"a/b", true, "7"},       {"A/B", true, "7"},   {"a/b[2]", true, "7"},
        {"cfg/a/b", false, "-"},  {"", true, ""},       {"a/", true, "7"},
        {"/b", true, "7"},        {"a//", false, "-"},  {"e/@id", true, "5&"},
        {"e/@x", false, ""},      {"e/@", true, "id"},  {"e/@empty", false, ""},
        {"none/@id", false, "-"}, {"@id", false, "-"},  {"e/@id/x", false, "-"},
        {"e", true, ""},          {"a/b/@", false, ""},
    };
    XMLReader reader;
    ASSERT_TRUE(reader.setString("<cfg><a><b>7</b></a><e id='5&amp;' empty=''/></cfg>"));
    for (const auto& [path, found, value] : cases) {
        std::string is = "-";
        EXPECT_EQ(reader.getString(path, is), found) << path;
        EXPECT_EQ(is, value) << path;
    }
}

TEST(XmlReaderTest, NumbersConvertOrFail) {
    XMLReader reader;
    ASSERT_TRUE(reader.setString("<r><d>-1e3</d><w>two words</w><e></e><p v='3.9'/></r>"));
    std::int32_t whole = 1;
    double real = 1;
    float single = 1;
    std::string word;
    EXPECT_TRUE(reader.getInt("p/@v", whole) && whole == 3);
    EXPECT_TRUE(reader.getDouble("d", real) && real == -1000.0);
    EXPECT_TRUE(reader.getFloat("p/@v", single) && single == 3.9F);
    EXPECT_TRUE(XMLReader::stringToInt(" 42abc", whole) && whole == 42);
    EXPECT_TRUE(XMLReader::stringToDouble("1,5", real) && real == 1.0);
    EXPECT_TRUE(XMLReader::stringToFloat("1e3", single) && single == 1000.0F);
    EXPECT_TRUE(XMLReader::stringToString("  two words", word) && word == "two");
    EXPECT_FALSE(reader.getDouble("w", real) || reader.getDouble("e", real));
    EXPECT_FALSE(reader.getInt("none", whole) || XMLReader::stringToString(" \t", word));
    EXPECT_EQ(whole, 42) << "unchanged";
}

TEST(XmlReaderTest, ListsTheNamesBelow) {
    const Names all = {"Kestrune", "kestrune", "TavelReffModule", "Other"};
    const struct {
        const char* path;
        const char* type;
        Names names;
    } cases[] = {{"modules", "all", all},        {"modules", "Kestrune", {all[0], all[2]}},
                 {"modules", "Other", {all[3]}}, {"modules", "x", {}},
                 {"Modules", "x", all},          {"q/modules", "Other", all}};
    const std::string modules =
        "<modules><Kestrune/><kestrune/><TavelReffModule/><Other/></modules>";
    XMLReader reader;
    ASSERT_TRUE(reader.setString("<p>" + modules + "<q>" + modules + "</q></p>"));
    for (const auto& [path, type, names] : cases) {
        Names items = {"old"};
        EXPECT_TRUE(reader.getItemsBelow(path, items, type));
        EXPECT_EQ(items, names) << path << " " << type;
        EXPECT_FALSE(reader.getItemsBelow("none", items, type));
        EXPECT_EQ(items, names) << "unchanged";
    }
}

TEST(XmlReaderTest, LoadsTextsAndFiles) {
    const test::TemporaryDirectory directory;
    XMLReader reader;
    CMarkupSTL document;
    const std::string path = directory.write("file.xml", "<r><e id=\"5\"/></r>");
    EXPECT_TRUE(XMLReader::checkFile(path) && reader.setFile(path) &&
                XMLReader::setFile(path, &document));
    EXPECT_EQ(reader.getSubDocument("e"), "<e id=\"5\"/>");
    EXPECT_EQ(reader.getSubDocument("none"), "");
    ASSERT_EQ(directory.write("file.xml", "<!-- no element -->"), path);
    EXPECT_FALSE(XMLReader::checkFile(path) || reader.setFile(path) ||
                 XMLReader::setFile(path, &document));
    EXPECT_EQ(reader.getSubDocument(""), "");
    std::filesystem::remove(path);
    EXPECT_FALSE(XMLReader::checkFile(path) || XMLReader::setFile(path, nullptr));
    EXPECT_TRUE(reader.setString(std::string("<a/>\0<", 6)));
}

TEST(XmlReaderTest, TheStaticTraversalGoesOnFromWhereTheDocumentStands) {
    CMarkupSTL document;
    ASSERT_TRUE(document.setDocument("<r><a n='1'><a n='2'/></a></r>"));
    EXPECT_TRUE(XMLReader::traversePath("a", &document));
    EXPECT_EQ(document.getAttribute("n"), "1");
    EXPECT_TRUE(XMLReader::traversePath("a", &document));
    EXPECT_EQ(document.getAttribute("n"), "2");
    EXPECT_FALSE(XMLReader::traversePath("a", &document));
    document.resetPosition();
    EXPECT_FALSE(XMLReader::traversePath("a/none", &document));
    EXPECT_EQ(document.getAttribute("n"), "1") << "as deep as it got";
    EXPECT_FALSE(XMLReader::traversePath("a", nullptr));
}

TEST(XmlReaderTest, PromptsForAPrefix) {
    const XMLReader reader;
    Names names(5);
    std::istringstream typed("  town more\n");
    std::streambuf* const before = std::cin.rdbuf(typed.rdbuf());
    testing::internal::CaptureStdout();
    reader.prepNames(names[0], names[1], names[2], names[3]);
    reader.prepNames(names[4]);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "\nenter prefix of _node (and _polygon, and _city) file:\n"
              "\n\nenter prefix of _city file:\n");
    std::cin.rdbuf(before);
    EXPECT_EQ(names,
              (Names{"town_node", "town_polygon", "town_city.xml", "town.poly", "more_city.xml"}));
}

} // namespace
} // namespace veldtrim
