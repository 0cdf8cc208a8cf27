// Random documents, well-formed and almost so, judged by the reference parser and cursor.
#include "judges/reference_cursor.h"
#include "veldtrim/cmarkup_stl.h"

#include <gtest/gtest.h>

#include <random>
#include <span>
#include <string>
#include <tuple>

namespace veldtrim {
namespace {

class RandomDocuments {
public:
    std::string next() {
        std::string text;
        if (below(20) == 0) {
            return openQuotes();
        }
        element(text, 0);
        for (std::size_t faults = below(4); faults > 1; --faults) {
            text.replace(below(text.size()), below(3), oneOf(pieces));
        }
        return text;
    }

    std::size_t below(std::size_t limit) { return random_() % limit; }

    const char* oneOf(std::span<const char* const> texts) { return texts[below(texts.size())]; }

private:
    static constexpr const char* pieces[] = {
        "<",  ">",   "/",     "\"",  "'",   "=",    " ",    "\n",        "!",  "?",
        "[",  "]",   "<!-",   "-->", "<![", "]]>",  "<?",   "?>",        "</", "/>",
        "\\", "<!D", "&amp;", "&lt", "</a", "<b x", "a='1", "<![CDATA[", "x[", "</A>"};

    /// Mostly well nested, so that the parser gets far.
    void element(std::string& text, int depth) {
        static constexpr const char* names[] = {"a", "B", "a[1", "x=", "group", ">", "a'b", "\\"};
        static constexpr const char* attributes[] = {
            " x='1'", " y = \"&gt;\"", " z=3", " w", " v='>'", " '", " x \"", " u='/'"};
        const std::string name = names[below(below(4) == 0 ? 8 : 2)];
        text += (below(8) == 0 ? "< " : "<") + name;
        for (std::size_t i = below(3); i > 0; --i) {
            text += attributes[below(below(4) == 0 ? 8 : 3)];
        }
        if (below(4) == 0) {
            text += "/>";
            return;
        }
        text += ">";
        for (std::size_t i = depth > 6 ? 0 : below(4); i > 0; --i) {
            if (below(5) > 1) {
                element(text, depth + 1);
            } else {
                static constexpr const char* contents[] = {"<!-- c -->", "\n<![CDATA[x<y]]> z",
                                                           "b &lt; &amp;c", "<![CDATA[]]>"};
                text += below(2) == 0 ? oneOf(pieces) : oneOf(contents);
            }
        }
        text += "</" + name + (below(8) == 0 ? " q='1' >" : ">");
    }

    /// Siblings whose quotes often extend into the text that follows. With few kinds of pieces at a
    /// time, many searches go a long way.
    std::string openQuotes() {
        static constexpr const char* siblings[] = {
            "<a '/>'", "<b \"/>", "<a x='1'/>", "<a x=\"/>",  "text", "<b x y", " '",      "\"",
            "<c/>",    " x = ",   "<a/>",       "='x' y='2'", "/>",   " ",      "<b ' '/>"};
        const std::size_t first = below(std::size(siblings));
        const std::size_t kinds = 1 + below(std::size(siblings) - first);
        std::string text = "<r>";
        for (std::size_t i = 20 + below(200); i > 0; --i) {
            text += siblings[first + below(kinds)];
        }
        return text + "></r>";
    }

    std::mt19937 random_{20240607};
};

auto fields(const ElementPosition& element) {
    return std::tie(element.startLeft, element.startRight, element.endLeft, element.endRight,
                    element.parent, element.firstChild, element.nextSibling);
}

TEST(RandomDocumentsTest, AgreeWithThePlainRules) {
    RandomDocuments random;
    CMarkupSTL document; // the same for all texts: nothing of one may show in the next
    int good = 0;
    int values = 0;
    for (int round = 0; round < 40'000; ++round) {
        const std::string text = random.next();
        SCOPED_TRACE(text);
        fuzz::ReferenceCursor judge(text);
        const reference::Markup& expected = judge.markup();
        ASSERT_EQ(document.setDocument(text.c_str()), expected.ok);
        ASSERT_EQ(expected.error.empty() ? "" : document.getParseError(), expected.error);
        for (std::size_t i = 0; i < expected.elements.size(); ++i) {
            ASSERT_EQ(fields(document.getElements()[i]), fields(expected.elements[i])) << i;
        }
        good += expected.ok ? 1 : 0;
        for (int move = 0; expected.ok && move < 20; ++move) {
            static constexpr const char* names[] = {"x", "y", "", "none", "a", "A[2", "b=", "b/"};
            const char* const name = random.oneOf(names);
            const std::size_t kind = random.below(8);
            if (kind == 0) {
                document.resetPosition();
                judge.reset();
            } else if (kind == 1) {
                document.outOfElement();
                judge.outOf();
            } else if (kind == 2) {
                document.intoElement();
                judge.into();
            } else {
                const char* const wanted = *name == '\0' ? nullptr : name;
                ASSERT_EQ(document.findChildElement(wanted), judge.findChild(name));
            }
            const std::string value = document.getChildAttribute(name);
            ASSERT_EQ(value, judge.childAttribute(name)) << name;
            ASSERT_EQ(document.getAttribute(name), judge.attribute(name)) << name;
            ASSERT_EQ(document.getChildTagName(), judge.childName());
            ASSERT_EQ(document.getElementMarkup(), judge.elementMarkup());
            ASSERT_EQ(document.getData(), judge.data());
            values += value.empty() ? 0 : 1;
        }
    }
    EXPECT_GT(good, 10'000);
    EXPECT_LT(good, 35'000);
    EXPECT_GT(values, 10'000);
}

} // namespace
} // namespace veldtrim
