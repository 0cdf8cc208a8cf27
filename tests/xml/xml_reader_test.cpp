#include "veldtrim/xml_reader.h"

#include "support/temporary_directory.h"
#include "veldtrim/cmarkup_stl.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

namespace veldtrim {
namespace {

using Names = std::vector<std::string>;

TEST(XmlReaderTest, PathsSelectDataAndAttributes) {
    const std::string plain = "<cfg><a><b>7</b></a><e id='5&amp;' empty=''/></cfg>";
    const struct {
        std::string text;
        std::string path;
        bool found;
        const char* value;
    } cases[] = {{plain, "a/b", true, "7"},
                 {plain, "A/B[2]", true, "7"},
                 {plain, "a b/b=c", true, "7"},
                 {plain, "cfg/a/b", false, "-"},
                 {plain, "", true, ""},
                 {plain, "a/", true, "7"},
                 {plain, "e/@ID", true, "5&"},
                 {plain, "e/@x", false, ""},
                 {plain, "e/@", true, "id"},
                 {plain, "e/@empty", false, ""},
                 {plain, "none/@id", false, "-"},
                 {plain, "e/@id/x", false, "-"},
                 {"<r><a x='&lt;&amp;lt;&quot;&apos;&gt;&#65;&LT;&lt'/></r>", "a/@x", true,
                  "<&lt;\"'>&#65;&LT;&lt"},
                 {"<r><a\n x\t=\r'1'/></r>", "a/@x[3]", true, "1"},
                 {"<r><a>a &lt; b &amp;amp; &#65; &</a></r>", "a", true, "a < b &amp; &#65; &"},
                 {"<r><a><![CDATA[x>]]</a>]]></a></r>", "a", true, "x>]]</a>"}};
    for (auto [text, path, found, value] : cases) {
        SCOPED_TRACE(testing::Message() << path << " in " << text);
        XMLReader reader;
        ASSERT_TRUE(reader.setString(text));
        std::string is = "-";
        EXPECT_EQ(reader.getString(path, is), found);
        EXPECT_EQ(is, value);
        EXPECT_EQ(reader.getString(path, path), found) << "with the path as the value";
        EXPECT_TRUE(*value == '-' || path == value);
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

TEST(XmlReaderTest, ListsTheNamesOfChildren) {
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
        Names items = {type, path};
        EXPECT_TRUE(reader.getItemsBelow(items[1], items, items[0])) << "arguments from `items`";
        EXPECT_EQ(items, names) << path << " " << type;
        EXPECT_FALSE(reader.getItemsBelow("none", items, type));
        EXPECT_EQ(items, names) << "unchanged";
    }
}

TEST(XmlReaderTest, LoadsTextsAndFiles) {
    const test::TemporaryDirectory directory;
    XMLReader reader;
    EXPECT_TRUE(reader.setFile(directory.write("file.xml", "<r><e id=\"5\"/></r>")));
    EXPECT_EQ(reader.getSubDocument("e"), "<e id=\"5\"/>");
    EXPECT_EQ(reader.getSubDocument("none"), "");
    EXPECT_FALSE(reader.setFile(directory.write("empty.xml", "<!-- no element -->")));
    EXPECT_EQ(reader.getSubDocument(""), "");
    EXPECT_TRUE(reader.setString(std::string("<a/>\0<", 6)));
}

TEST(XmlReaderTest, TheStaticTraversalStartsAtTheCurrentPosition) {
    CMarkupSTL document;
    ASSERT_TRUE(document.setDocument("<r><a n='1'><a n='2'/></a></r>"));
    for (const char* number : {"1", "2"}) {
        EXPECT_TRUE(XMLReader::traversePath("a", &document));
        EXPECT_EQ(document.getAttribute("n"), number);
    }
    document.resetPosition();
    EXPECT_FALSE(XMLReader::traversePath("a/none", &document));
    EXPECT_EQ(document.getAttribute("n"), "1") << "the depth that was reached";
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
