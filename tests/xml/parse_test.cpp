#include "judges/reference_markup.h"
#include "veldtrim/cmarkup_stl.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace veldtrim {
namespace {

TEST(ParseTest, SaysWhyATextIsRefused) {
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"", ""},
        {"</a>", ""},
        {"<?x?></a>", ""},
        {"plain", "Element tag not found"},
        {"<a><b>", "Element tag not found"},
        {"<a", "End of tag not found"},
        {"<a>< \t\r\n", "Abrupt end within tag"},
        {"<a><\"b\"></a>", "Tag starts with quote"},
        {"<a><!-- open", "Invalid node"},
        {"<a><![CDATA[ ]] ></a>", "Invalid node"},
        {"<?xml", "Invalid node"},
        {"<!", "Invalid node"},
        {"<!DOCTYPE a [ <b> '>]' > <a/>", "Invalid node"},
        {"<!DOCTYPE a ] > <a/>", "Invalid node"},
        {"<\n?xml?><a/>", "Invalid node"},
        {"<a><b></a>", "End tag does not correspond to b"},
        {"<%s></b>", "End tag does not correspond to %s"},
        {"<a></\"a\" =", "End tag not completed for element a"},
        {"<a><bc></bc", "End tag not completed for element bc"},
    };
    for (const auto& [text, error] : cases) {
        CMarkupSTL document;
        EXPECT_FALSE(document.setDocument(text)) << text;
        EXPECT_EQ(document.getParseError(), error) << text;
        EXPECT_EQ(document.getElements()[0].firstChild, 0) << text;
        EXPECT_FALSE(document.findChildElement(nullptr)) << text;
    }
    CMarkupSTL document;
    EXPECT_FALSE(document.setDocument("<a>") || document.setDocument(nullptr));
    EXPECT_TRUE(document.setDocument("<a/>"));
    EXPECT_EQ(document.getParseError(), "Element tag not found") << "the last";
}

TEST(ParseTest, AcceptsWhatTheRulesLetPass) {
    for (const char* text :
         {"<a></A>", "<a/><b/>", "hello <a/>", "< a >< / a >", "<a></a x='1' y>", "<a></\"x\">",
          "<a[2></a>", "<<></<>", "<=></=>", "<a x='>'></a>", "<!--><a/>",
          "<?xml version='1.0'?><!-- > --><!DOCTYPE r [ <!ENTITY e '>]'> > ] ><r/>",
          "<a><![CDATA[</a>]]></a>"}) {
        EXPECT_TRUE(CMarkupSTL().setDocument(text)) << text;
    }
}

/// Texts of tags and their near misses, mostly well nested so that the parse gets far.
class TagSoup {
public:
    explicit TagSoup(unsigned seed) : random(seed) {}

    std::string document() {
        if (pick(20) == 0) {
            return openQuotes();
        }
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

    const char* odd() {
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

    /// Siblings whose quotes often run on into what follows.
    std::string openQuotes() {
        static const char* const pieces[] = {
            "<a '/>'", "<b \"/>", "<a x='1'/>", "<a x=\"/>",  "text", "<b x y", " '",      "\"",
            "<c/>",    " x = ",   "<a/>",       "='x' y='2'", "/>",   " ",      "<b ' '/>"};
        constexpr int count = std::size(pieces);
        // Few kinds of pieces at a time make for long ways without an end.
        const int first = pick(count);
        const int kinds = 1 + pick(count);
        std::string text = "<r>";
        for (int i = 20 + pick(200); i > 0; --i) {
            text += pieces[(first + pick(kinds)) % count];
        }
        return text + "></r>";
    }

    std::mt19937 random;
};

TEST(ParseTest, IndexErrorAndAttributesAgreeWithThePlainRules) {
    TagSoup soup(20240607);
    int good = 0;
    int values = 0;
    for (int round = 0; round < 60000; ++round) {
        const std::string text = soup.document();
        reference::Markup expected(text);
        CMarkupSTL document;
        ASSERT_EQ(document.setDocument(text.c_str()), expected.ok) << text;
        ASSERT_EQ(document.getParseError(), expected.error) << text;
        good += expected.ok ? 1 : 0;
        const std::vector<ElementPosition> elements = document.getElements();
        for (std::size_t i = 0; i < expected.elements.size(); ++i) {
            const ElementPosition& is = elements[i];
            const ElementPosition& should = expected.elements[i];
            ASSERT_TRUE(is.startLeft == should.startLeft && is.startRight == should.startRight &&
                        is.endLeft == should.endLeft && is.endRight == should.endRight &&
                        is.parent == should.parent && is.firstChild == should.firstChild &&
                        is.nextSibling == should.nextSibling)
                << "element " << i << " of " << text;
        }
        for (int child = expected.ok ? elements[1].firstChild : 0; child != 0;
             child = elements[static_cast<std::size_t>(child)].nextSibling) {
            ASSERT_TRUE(document.findChildElement(nullptr));
            for (const char* name : {"x", "y", "", "text", "none"}) {
                const std::string written = expected.attribute(child, name);
                if (written.find('&') == std::string::npos) {
                    ASSERT_EQ(document.getChildAttribute(name), written)
                        << name << " of element " << child << " of " << text;
                    values += written.empty() ? 0 : 1;
                }
            }
        }
    }
    EXPECT_GT(good, 20000);
    EXPECT_LT(good, 50000);
    EXPECT_GT(values, 10000);
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
}

} // namespace
} // namespace veldtrim
