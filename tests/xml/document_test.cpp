#include "support/temporary_directory.h"
#include "veldtrim/cmarkup_stl.h"
#include "veldtrim/xml_reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace veldtrim {
namespace {

// Random documents show that each text is refused for the right reason.
TEST(DocumentTest, SaysWhereATextIsRefused) {
    const struct {
        const char* text;
        int line;
        int column;
    } cases[] = {{"", 0, 0},
                 {"plain", 1, 1},
                 {"<a>\n<b><c/>", 2, 1},
                 {"\n\n <a", 3, 2},
                 {"<a>< \t\r\n", 1, 4},
                 {"<a>\n<\"b\"></a>", 2, 1},
                 {"<a><!-- open", 1, 4},
                 {"<a><b>\n </a>", 2, 2},
                 {"<a><bc></bc", 1, 8}};
    for (const auto& [text, line, column] : cases) {
        CMarkupSTL document;
        EXPECT_FALSE(document.setDocument(text)) << text;
        EXPECT_EQ(document.getParseErrorLine(), line) << text;
        EXPECT_EQ(document.getParseErrorColumn(), column) << text;
    }
}

TEST(DocumentTest, KeepsTheLastReason) {
    CMarkupSTL document;
    EXPECT_FALSE(document.setDocument(""));
    EXPECT_EQ(document.getParseError(), "");
    EXPECT_FALSE(document.setDocument("<%s></b>"));
    EXPECT_EQ(document.getParseError(), "End tag does not correspond to %s");
    EXPECT_FALSE(document.setDocument("<a>") || document.setDocument(nullptr));
    EXPECT_FALSE(document.findChildElement(nullptr));
    EXPECT_TRUE(document.setDocument("<a/>"));
    EXPECT_EQ(document.getParseError(), "Element tag not found");
}

TEST(DocumentTest, AcceptsWhatTheRulesLetPass) {
    for (const char* text :
         {"<a></A>", "hello < a >< / a >", "<a></\"x\">", "<a><![CDATA[</a>]]></a>", "<!--><a/>",
          "<?xml version='1.0'?><!-- > --><!DOCTYPE r [ <!ENTITY e '>]'> > ] ><r/>"}) {
        EXPECT_TRUE(CMarkupSTL().setDocument(text)) << text;
    }
}

TEST(DocumentTest, NestingNeedsNoStack) {
    std::string text;
    for (const char* tag : {"<a>", "</a>"}) {
        for (int level = 0; level < 1'000'000; ++level) {
            text += tag;
        }
        EXPECT_EQ(CMarkupSTL().setDocument(text.c_str()), text.ends_with("</a>"));
    }
}

TEST(DocumentTest, OpenQuotesInEverySiblingDoNotMultiplyTheWork) {
    constexpr int siblings = 200'000;
    for (const std::string element : {"<group '/>'", "<g \"/>", "<g x='1' \"'/>'\"", "<g '\"/>"}) {
        std::string text = "<r>";
        for (int i = 0; i < siblings; ++i) {
            text += element;
        }
        CMarkupSTL document;
        ASSERT_TRUE(document.setDocument((text + " last='5'></r>").c_str())) << element;
        int found = 0;
        while (document.findChildElement(nullptr)) {
            found += document.getChildAttribute("type").empty() ? 1 : 0;
            static_cast<void>(document.getChildAttribute("last"));
        }
        EXPECT_EQ(found, siblings);
    }
}

TEST(DocumentTest, LoadsTheBytesOfAFileOrNothing) {
    const test::TemporaryDirectory directory;
    CMarkupSTL document;
    const std::string bytes = "\xEF\xBB\xBF<a>1\r\n2\x1A</a>\r\n";
    const std::string good = directory.write("crlf.xml", bytes + '\0' + "<");
    EXPECT_TRUE(document.loadFile(good.c_str()) && XMLReader::checkFile(good));
    EXPECT_EQ(document.getDocText(), bytes);
    EXPECT_FALSE(document.loadFile(nullptr) || XMLReader::setFile(good, nullptr));

    const std::string sparse = directory.write("huge.xml", "<a/>");
    std::filesystem::resize_file(sparse, std::uintmax_t{1} << 31U);
#ifdef _WIN32
    const std::vector<std::string> devices{"nul", "con", "con.xml", R"(\\.\pipe\none)"};
#else
    const std::vector<std::string> devices{directory.path("pipe.xml")};
    ASSERT_EQ(mkfifo(devices[0].c_str(), 0600), 0);
#endif
    std::vector<std::string> paths = devices; // which must not wait for input
    paths.insert(paths.end(), {"", sparse, directory.path(""), directory.path("missing.xml"),
                               directory.write("zero.xml", std::string(1, '\0')),
                               directory.write("comment.xml", "<!-- no element -->"),
                               directory.write("bad.xml", "<a>")});
    for (const std::string& path : paths) {
        ASSERT_TRUE(document.setDocument("<old/>"));
        EXPECT_FALSE(document.loadFile(path.c_str()) || XMLReader::checkFile(path)) << path;
        EXPECT_FALSE(document.findChildElement(nullptr)) << path;
        EXPECT_EQ(document.getDocText() + document.getElementMarkup() + document.getData(), "");
    }
}

} // namespace
} // namespace veldtrim
