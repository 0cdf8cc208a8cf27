#include "reference_markup.h"
#include "veldtrim/cmarkup_stl.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace veldtrim {
namespace {

bool parses(const std::string& text) {
    return CMarkupSTL().setDocument(text.c_str());
}

TEST(ParseTest, SaysWhyATextIsRefused) {
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"", ""},
        {"plain", "Element tag not found"},
        {"<!-- only a comment -->", "Element tag not found"},
        {"<a><b>", "Element tag not found"},
        {"<a", "End of tag not found"},
        {"<a><b x='1'", "End of tag not found"},
        {"<", "Abrupt end within tag"},
        {"<a>< \t\r\n", "Abrupt end within tag"},
        {"<a><\"b\"></a>", "Tag starts with quote"},
        {"<'", "Tag starts with quote"},
        {"<a><!-- open", "Invalid node"},
        {"<a><![CDATA[ ]] ></a>", "Invalid node"},
        {"<?xml", "Invalid node"},
        {"<!", "Invalid node"},
        {"<?", "Invalid node"},
        {"<!DOCTYPE a [ <b> '>]' > <a/>", "Invalid node"},
        {"<!DOCTYPE a ] > <a/>", "Invalid node"},
        {"< !-- c --><a/>", "Invalid node"},
        {"<\n?xml?><a/>", "Invalid node"},
        {"<a></b>", "End tag does not correspond to a"},
        {"<a><b></a>", "End tag does not correspond to b"},
        {"<%s></b>", "End tag does not correspond to %s"},
        {"<a></>", "End tag does not correspond to a"},
        {"<a></\"a\" =", "End tag not completed for element a"},
        {"<a><bc></bc", "End tag not completed for element bc"},
        {"<a></", "End tag not completed for element a"},
        {"</a>", ""},
        {"<?x?></a>", ""},
    };
    for (const auto& [text, error] : cases) {
        CMarkupSTL document;
        EXPECT_FALSE(document.setDocument(text)) << text;
        EXPECT_EQ(document.getParseError(), error) << text;
        EXPECT_EQ(document.getElements()[0].firstChild, 0) << text;
        EXPECT_FALSE(document.findChildElement(nullptr)) << text;
    }
    const std::string longName(100000, 'n');
    CMarkupSTL document;
    EXPECT_FALSE(document.setDocument(("<" + longName + "></x>").c_str()));
    EXPECT_EQ(document.getParseError(), "End tag does not correspond to " + longName);
    EXPECT_FALSE(document.setDocument(nullptr));
    EXPECT_TRUE(document.setDocument("<a/>"));
    EXPECT_EQ(document.getParseError(), "End tag does not correspond to " + longName);
}

TEST(ParseTest, AcceptsWhatTheRulesLetPass) {
    for (const char* text :
         {"<a/>", "<a></A>", "<a/><b/>", "hello <a/>", "< a >< / a >", "<a></a x='1' y>",
          "<a></\"x\">", "<a[2></a>", "<a></a", "<<></<>", "<=></=>", "<a x='>'></a>", "<!--><a/>",
          "<?xml version='1.0'?><!-- > --><!DOCTYPE r [ <!ENTITY e '>]'> > ] ><r/>",
          "<a><![CDATA[</a>]]></a>"}) {
        EXPECT_EQ(parses(text), reference::Markup(text).ok) << text;
        EXPECT_EQ(parses(text), std::string(text) != "<a></a") << text;
    }
}

/// Texts of tags and their near misses, mostly well nested so that the parse gets far.
class TagSoup {
public:
    explicit TagSoup(unsigned seed) : random(seed) {}

    std::string document() {
        std::string text;
        element(text, 0);
        for (int faults = pick(4); faults > 1; --faults) {
            const std::size_t at = static_cast<std::size_t>(pick(static_cast<int>(text.size())));
            text.replace(at, static_cast<std::size_t>(pick(3)), odd());
        }
        return text;
    }

private:
    int pick(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }

    std::string odd() {
        static const char* const pieces[] = {
            "<",  ">",   "/",     "\"",  "'",   "=",    " ",    "\n",        "!",  "?",
            "[",  "]",   "<!-",   "-->", "<![", "]]>",  "<?",   "?>",        "</", "/>",
            "\\", "<!D", "&amp;", "&lt", "</a", "<b x", "a='1", "<![CDATA[", "x[", "</A>"};
        return pieces[pick(static_cast<int>(std::size(pieces)))];
    }

    void element(std::string& text, int depth) {
        static const char* const names[] = {"a", "B", "a[1", "x=", "group", ">", "a'b", "\\"};
        const std::string name = names[pick(pick(4) == 0 ? 8 : 2)];
        text += pick(8) == 0 ? "< " + name : "<" + name;
        for (int i = pick(3); i > 0; --i) {
            static const char* const attributes[] = {
                " x='1'", " y = \"&gt;\"", " z=3", " w", " v='>'", " '", " x \"", " u='/'"};
            text += attributes[pick(pick(4) == 0 ? 8 : 3)];
        }
        if (pick(4) == 0) {
            text += "/>";
            return;
        }
        text += ">";
        for (int i = depth > 6 ? 0 : pick(4); i > 0; --i) {
            switch (pick(5)) {
            case 0:
                text += odd();
                break;
            case 1:
                text += pick(2) == 0 ? "<!-- c -->" : "\n<![CDATA[x<y]]> z";
                break;
            default:
                element(text, depth + 1);
            }
        }
        text += pick(8) == 0 ? "</" + name + " q='1' >" : "</" + name + ">";
    }

    std::mt19937 random;
};

TEST(ParseTest, IndexAndErrorAgreeWithThePlainRules) {
    TagSoup soup(20240607);
    int good = 0;
    for (int round = 0; round < 60000; ++round) {
        const std::string text = soup.document();
        reference::Markup expected(text);
        CMarkupSTL document;
        ASSERT_EQ(document.setDocument(text.c_str()), expected.ok) << text;
        ASSERT_EQ(document.getParseError(), expected.error) << text;
        good += expected.ok ? 1 : 0;
        for (std::size_t i = 0; i < expected.elements.size(); ++i) {
            const ElementPosition& is = document.getElements()[i];
            const ElementPosition& should = expected.elements[i];
            ASSERT_TRUE(is.startLeft == should.startLeft && is.startRight == should.startRight &&
                        is.endLeft == should.endLeft && is.endRight == should.endRight &&
                        is.parent == should.parent && is.firstChild == should.firstChild &&
                        is.nextSibling == should.nextSibling)
                << "element " << i << " of " << text;
        }
    }
    EXPECT_GT(good, 20000);
    EXPECT_LT(good, 50000);
}

TEST(ParseTest, NestingNeedsNoStack) {
    constexpr int levels = 1000000;
    std::string open;
    std::string close;
    for (int i = 0; i < levels; ++i) {
        open += "<a>";
        close += "</a>";
    }
    CMarkupSTL document;
    ASSERT_TRUE(document.setDocument((open + close).c_str()));
    EXPECT_EQ(document.getElements()[levels].parent, levels - 1);
    EXPECT_FALSE(document.setDocument(open.c_str()));
    EXPECT_EQ(document.getParseError(), "Element tag not found");
    EXPECT_FALSE(document.setDocument((open + "</b>" + close).c_str()));
    EXPECT_EQ(document.getParseError(), "End tag does not correspond to a");
}

} // namespace
} // namespace veldtrim
