#include "support/temporary_directory.h"
#include "veldtrim/cmarkup_stl.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace veldtrim {
namespace {

TEST(DocumentTest, StepsThroughTheChildrenOfEachLevel) {
    CMarkupSTL document;
    ASSERT_TRUE(document.setDocument(
        "<root><a n='1'/><b n='2'><a n='3'/></b><A n='4'>text</A>< group n='5'/></root>"));
    EXPECT_EQ(document.getChildTagName(), "");
    EXPECT_FALSE(document.findChildElement("root"));
    EXPECT_EQ(document.getElementMarkup().substr(0, 6), "<root>");

    document.resetPosition();
    std::string seen;
    while (document.findChildElement("a")) {
        seen += document.getChildTagName() + document.getChildAttribute("n") + " ";
    }
    EXPECT_EQ(seen, "a1 A4 ");
    EXPECT_FALSE(document.findChildElement("a"));
    EXPECT_EQ(document.getChildAttribute("n"), "4");
    document.intoElement();
    EXPECT_EQ(document.getData(), "text");
    document.outOfElement();
    EXPECT_EQ(document.getChildTagName(), "A");
    document.outOfElement();
    EXPECT_EQ(document.getChildTagName(), "A") << "the root has nothing above it";

    const std::pair<const char*, const char*> names[] = {
        {"group", "5"}, {"group[2]", "5"}, {"group=x", "5"}, {"GROUP/x", "5"}, {"group x", "5"},
        {"groups", ""}, {"grou", ""},      {"group\t", ""},  {nullptr, "1"},   {"", "1"}};
    for (const auto& [name, found] : names) {
        document.resetPosition();
        EXPECT_EQ(document.findChildElement(name), *found != '\0') << name;
        EXPECT_EQ(document.getChildAttribute("n"), found) << name;
    }
    document.resetPosition();
    ASSERT_TRUE(document.findChildElement("b"));
    document.intoElement();
    ASSERT_TRUE(document.findChildElement("a"));
    EXPECT_EQ(document.getChildAttribute("n"), "3");
    EXPECT_EQ(document.getAttribute("N"), "2");
    EXPECT_EQ(document.getAttribute(nullptr), "");
}

TEST(DocumentTest, DescendingWithoutAChildLeavesNoCurrentElement) {
    CMarkupSTL document;
    ASSERT_TRUE(document.setDocument("<r><a><b x='1'/></a></r>"));
    EXPECT_FALSE(document.findChildElement("none"));
    document.intoElement();
    EXPECT_EQ(document.getElementMarkup(), "");
    EXPECT_EQ(document.getAttribute("x"), "");
    EXPECT_TRUE(document.findChildElement("b")) << "the search goes on in the first child";
    EXPECT_EQ(document.getChildAttribute("x"), "1");

    ASSERT_TRUE(document.setDocument("<r x='1'/>"));
    EXPECT_FALSE(document.findChildElement(nullptr));
    document.intoElement();
    EXPECT_TRUE(document.findChildElement("r")) << "a root without children is found from here";
    EXPECT_EQ(document.getChildTagName(), "r");
    EXPECT_EQ(document.getChildAttribute("x"), "");
    EXPECT_EQ(document.getData(), "");
}

TEST(DocumentTest, CutsAttributesAndDataFromTheText) {
    struct Attribute {
        const char* tag;
        const char* name;
        const char* value;
    };
    for (const auto& [tag, name, value] :
         {Attribute{"<a x=\"1\" y='2'/>", "X", "1"}, Attribute{"<a x=\"1\" y='2'/>", "", "x"},
          Attribute{"<a x='&lt;&amp;lt;&quot;&apos;&gt;&#65;&LT;&lt'/>", "x",
                    "<&lt;\"'>&#65;&LT;&lt"},
          Attribute{"<a x y '2'/>", "x", "2"}, Attribute{"<a x / '2'/>", "x", ""},
          Attribute{"<a x=y x='2'/>", "x", ""}, Attribute{"<a x='1'/>", "x[3]", "1"},
          Attribute{"<a\n x\t=\r'1'/>", "x", "1"}, Attribute{"<a z='>' x='1'/></a>", "x", "1"},
          Attribute{"<a z=> x='1'/></a>", "x", ""}, Attribute{"<a xy='1'/>", "x", ""}}) {
        CMarkupSTL document;
        ASSERT_TRUE(document.setDocument((std::string("<r>") + tag + "</r>").c_str())) << tag;
        document.findChildElement(nullptr);
        EXPECT_EQ(document.getChildAttribute(name), value) << tag << " " << name;
    }
    const struct {
        const char* text;
        const char* data;
    } cases[] = {
        {"<a/>", ""},
        {"<a> x\n</a>", " x\n"},
        {"<a>a &lt; b &amp;amp; &#65; &foo; &</a>", "a < b &amp; &#65; &foo; &"},
        {"<a>text<b/></a>", ""},
        {"<a> \n<![CDATA[x<y&lt;]]> more ]]></a>", "x<y&lt;"},
        {"<a><![cdata[x]]></a>", "<![cdata[x]]>"},
        {"<a><![CDATA[]]></a>", ""},
        {"<a>z <![CDATA[x]]></a>", "z <![CDATA[x]]>"},
        {"<a>\"<![CDATA[x]]>\"</a>", "\"<![CDATA[x]]>\""},
        {"<a><![CDATA[x>]]</a>]]></a>", "x>]]</a>"},
        {"<a z='>'>1</a>", "'>1"},
    };
    for (const auto& [text, data] : cases) {
        CMarkupSTL document;
        ASSERT_TRUE(document.setDocument((std::string(text) + "]]>").c_str())) << text;
        document.findChildElement("none");
        EXPECT_EQ(document.getData(), data) << text;
        EXPECT_EQ(document.getElementMarkup(), text);
    }
}

TEST(DocumentTest, OpenQuotesInEverySiblingDoNotMultiplyTheWork) {
    constexpr int siblings = 200000;
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
    ASSERT_TRUE(document.loadFile(directory.write("crlf.xml", bytes + '\0' + "<").c_str()));
    EXPECT_EQ(document.getDocText(), bytes);

    const std::string sparse = directory.write("huge.xml", "<a/>");
    std::filesystem::resize_file(sparse, std::uintmax_t{1} << 31U);
    for (const std::string& path :
         {directory.path("missing.xml"), directory.path(""), directory.write("empty.xml", ""),
          directory.write("zero.xml", std::string(1, '\0')), sparse,
          directory.write("bad.xml", "<a>"), std::string()}) {
        ASSERT_TRUE(document.setDocument("<old/>"));
        EXPECT_FALSE(document.loadFile(path.c_str())) << path;
        EXPECT_EQ(document.getDocText(), "") << path;
        EXPECT_FALSE(document.findChildElement(nullptr)) << path;
        EXPECT_EQ(document.getElementMarkup() + document.getData() + document.getAttribute(""), "");
    }
    EXPECT_FALSE(document.loadFile(nullptr));
#ifdef _WIN32
    for (const char* device : {"nul", "con", "con.xml", R"(\\.\pipe\none)"}) {
        EXPECT_FALSE(CMarkupSTL().loadFile(device)) << device << " and does not wait for input";
    }
#else
    const std::string pipe = directory.path("pipe.xml");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(CMarkupSTL().loadFile(pipe.c_str())) << "and does not wait for a writer";
#endif
}

} // namespace
} // namespace veldtrim
