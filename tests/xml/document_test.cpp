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

TEST(DocumentTest, SaysWhyATextIsRefused) {
    const struct {
        const char* text;
        const char* error;
        int line;
        int column;
    } cases[] = {{"", "", 0, 0},
                 {"plain", "Element tag not found", 1, 1},
                 {"<a>\n<b><c/>", "Element tag not found", 2, 1},
                 {"\n\n <a", "End of tag not found", 3, 2},
                 {"<a>< \t\r\n", "Abrupt end within tag", 1, 4},
                 {"<a>\n<\"b\"></a>", "Tag starts with quote", 2, 1},
                 {"<a><!-- open", "Invalid node", 1, 4},
                 {"<!", "Invalid node", 1, 1},
                 {"<a><b>\n </a>", "End tag does not correspond to b", 2, 2},
                 {"<%s></b>", "End tag does not correspond to %s", 1, 5},
                 {"<a><bc></bc", "End tag not completed for element bc", 1, 8}};
    for (const auto& [text, error, line, column] : cases) {
        CMarkupSTL document;
        EXPECT_FALSE(document.setDocument(text)) << text;
        EXPECT_EQ(document.getParseError(), error) << text;
        EXPECT_EQ(document.getParseErrorLine(), line) << text;
        EXPECT_EQ(document.getParseErrorColumn(), column) << text;
        EXPECT_FALSE(document.findChildElement(nullptr)) << text;
    }
    CMarkupSTL document;
    EXPECT_FALSE(document.setDocument("<a>") || document.setDocument(nullptr));
    EXPECT_TRUE(document.setDocument("<a/>"));
    EXPECT_EQ(document.getParseError(), "Element tag not found") << "the last";
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

    const std::string sparse = directory.write("huge.xml", "<a/>");
    std::filesystem::resize_file(sparse, std::uintmax_t{1} << 31U);
    const std::string pipe = directory.path("pipe.xml");
#ifdef _WIN32
    const std::vector<std::string> devices{"nul", "con", "con.xml", R"(\\.\pipe\none)"};
#else
    const std::vector<std::string> devices{pipe};
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
#endif
    std::vector<std::string> paths{directory.path("missing.xml"),
                                   directory.path(""),
                                   directory.write("empty.xml", ""),
                                   directory.write("zero.xml", std::string(1, '\0')),
                                   directory.write("comment.xml", "<!-- no element -->"),
                                   directory.write("bad.xml", "<a>"),
                                   sparse,
                                   ""};
    paths.insert(paths.end(), devices.begin(), devices.end()); // which must not wait for input
    for (const std::string& path : paths) {
        ASSERT_TRUE(document.setDocument("<old/>"));
        EXPECT_FALSE(document.loadFile(path.c_str()) || XMLReader::checkFile(path)) << path;
        EXPECT_EQ(document.getDocText(), "") << path;
        EXPECT_FALSE(document.findChildElement(nullptr)) << path;
        EXPECT_EQ(document.getElementMarkup() + document.getData() + document.getAttribute(""), "");
    }
    EXPECT_FALSE(document.loadFile(nullptr) || XMLReader::setFile(good, nullptr));
}

} // namespace
} // namespace veldtrim
