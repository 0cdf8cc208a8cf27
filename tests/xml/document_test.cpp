#include "reference_markup.h"
#include "support/temporary_directory.h"
#include "veldtrim/cmarkup_stl.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

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

    const struct {
        const char* name;
        const char* found;
    } names[] = {{"group", "5"},   {"group[2]", "5"}, {"group=x", "5"}, {"GROUP/x", "5"},
                 {"group x", "5"}, {"groups", ""},    {"grou", ""},     {"group\t", ""},
                 {nullptr, "1"},   {"", "1"}};
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

TEST(DocumentTest, CutsAttributesFromTheStartTag) {
    const struct {
        const char* tag;
        const char* name;
        const char* value;
    } cases[] = {
        {"<a x=\"1\" y='2'/>", "y", "2"},
        {"<a x=\"1\" y='2'/>", "X", "1"},
        {"<a x=\"1\" y='2'/>", "", "x"},
        {"<a/>", "", ""},
        {"<a x=1/>", "x", ""},
        {"<a x='&lt;&amp;lt;&quot;&apos;&gt;&#65;&LT;&lt'/>", "x", "<&lt;\"'>&#65;&LT;&lt"},
        {"<a x=''/>", "x", ""},
        {"<a x y='2'/>", "x", ""},
        {"<a x y='2'/>", "y", "2"},
        {"<a x y '2'/>", "x", "2"},
        {"<a x '1' '2'/>", "x", "2"},
        {"<a x ? '2'/>", "x", "2"},
        {"<a x / '2'/>", "x", ""},
        {"<a x=y x='2'/>", "x", ""},
        {"<a '' x='2'/>", "x", "2"},
        {"<a x='1'/>", "a", ""},
        {"<a xy='1'/>", "x", ""},
        {"<a x='1'/>", "x[3]", "1"},
        {"<a\n x\t=\r'1'/>", "x", "1"},
        {"<a z='>' x='1'/></a>", "x", "1"},
        {"<a z=> x='1'/></a>", "x", ""},
        {"<a x='1", "x", ""},
    };
    for (const auto& [tag, name, value] : cases) {
        CMarkupSTL document;
        document.setDocument((std::string("<r>") + tag + "</r>").c_str());
        document.findChildElement(nullptr);
        EXPECT_EQ(document.getChildAttribute(name), value) << tag << " " << name;
    }
}

TEST(DocumentTest, CutsDataFromTheContent) {
    const struct {
        const char* text;
        const char* data;
    } cases[] = {
        {"<a/>", ""},
        {"<a></a>", ""},
        {"<a> x\n</a>", " x\n"},
        {"<a>a &lt; b &amp;amp; &#65; &foo; &</a>", "a < b &amp; &#65; &foo; &"},
        {"<a>text<b/></a>", ""},
        {"<a> \n<![CDATA[x<y&lt;]]> more ]]></a>", "x<y&lt;"},
        {"<a><![cdata[x]]></a>", "<![cdata[x]]>"},
        {"<a><![CDATA[]]></a>", ""},
        {"<a>z <![CDATA[x]]></a>", "z <![CDATA[x]]>"},
        {"<a>\"<![CDATA[x\"]]></a>", "x\""},
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

/// Siblings whose quotes often run on into what follows.
std::string quoteSoup(std::mt19937& random) {
    static const char* const pieces[] = {
        "<a '/>'", "<b \"/>", "<a x='1'/>", "<a x=\"/>",  "text", "<b x y", " '",      "\"",
        "<c/>",    " x = ",   "<a/>",       "='x' y='2'", "/>",   " ",      "<b ' '/>"};
    std::string text = "<r>";
    // Few kinds of pieces at a time make for long ways without an end.
    const unsigned first = static_cast<unsigned>(random() % std::size(pieces));
    const unsigned kinds = static_cast<unsigned>(1 + random() % std::size(pieces));
    for (unsigned i = 20 + static_cast<unsigned>(random() % 200); i > 0; --i) {
        text += pieces[(first + random() % kinds) % std::size(pieces)];
    }
    return text + "></r>";
}

TEST(DocumentTest, AttributesAgreeWithThePlainRules) {
    std::mt19937 random(11);
    int values = 0;
    for (int round = 0; round < 3000; ++round) {
        const std::string text = quoteSoup(random);
        reference::Markup expected(text);
        CMarkupSTL document;
        ASSERT_EQ(document.setDocument(text.c_str()), expected.ok) << text;
        const std::vector<ElementPosition> elements = document.getElements();
        for (int child = expected.ok ? elements[1].firstChild : 0; child != 0;
             child = elements[static_cast<std::size_t>(child)].nextSibling) {
            ASSERT_TRUE(document.findChildElement(nullptr));
            for (const char* name : {"x", "y", "", "text", "none"}) {
                const std::string value = document.getChildAttribute(name);
                ASSERT_EQ(value, expected.attribute(child, name))
                    << name << " of element " << child << " of " << text;
                values += value.empty() ? 0 : 1;
            }
        }
    }
    EXPECT_GT(values, 10000);
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
        std::string values;
        while (document.findChildElement(nullptr)) {
            found += document.getChildAttribute("type").empty() ? 1 : 0;
            values += document.getChildAttribute("last");
        }
        EXPECT_EQ(found, siblings);
    }
}

TEST(DocumentTest, LoadsTheBytesOfAFile) {
    const test::TemporaryDirectory directory;
    CMarkupSTL document;
    const std::string bytes = "\xEF\xBB\xBF<a>1\r\n2\x1A</a>\r\n";
    ASSERT_TRUE(document.loadFile(directory.write("crlf.xml", bytes).c_str()));
    EXPECT_EQ(document.getDocText(), bytes);
    document.findChildElement("none");
    EXPECT_EQ(document.getData(), "1\r\n2\x1A");

    ASSERT_TRUE(
        document.loadFile(directory.write("zero.xml", std::string("<a/>\0</b>", 9)).c_str()));
    EXPECT_EQ(document.getDocText(), "<a/>");
    EXPECT_TRUE(document.setDocument(document.getDocText().c_str()));
}

TEST(DocumentTest, FailedLoadLeavesAnEmptyDocument) {
    const test::TemporaryDirectory directory;
    const std::string missing = directory.path("missing.xml");
    const std::string sparse = directory.write("huge.xml", "<a/>");
    std::filesystem::resize_file(sparse, std::uintmax_t{1} << 31U);
    for (const std::string& path : {missing, directory.path(""), directory.write("empty.xml", ""),
                                    directory.write("zero.xml", std::string(1, '\0')), sparse,
                                    directory.write("bad.xml", "<a>"), std::string()}) {
        CMarkupSTL document;
        ASSERT_TRUE(document.setDocument("<old/>"));
        EXPECT_FALSE(document.loadFile(path.c_str())) << path;
        EXPECT_EQ(document.getDocText(), "") << path;
        EXPECT_FALSE(document.findChildElement(nullptr)) << path;
        EXPECT_EQ(document.getElementMarkup() + document.getData() + document.getAttribute(""), "");
    }
    EXPECT_FALSE(CMarkupSTL().loadFile(nullptr));
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
