// XML text: the index against the reference parser's and its own invariants, then every navigation
// and query in an order drawn from the input. The document comes first, up to the first NUL; the
// rest is operations, each a byte and a byte for its operand.

#include "judges/reference_cursor.h"
#include "target.h"

#include <veldtrim/cmarkup_stl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using veldtrim::CMarkupSTL;
using veldtrim::ElementPosition;
using veldtrim::fuzz::Draw;
using veldtrim::fuzz::ReferenceCursor;
using veldtrim::fuzz::require;

/// The reference parser calls itself for each level.
constexpr std::size_t longestText = 8192;

/// Elements whose markup is parsed once more: all of a usual document, and no quadratic time.
constexpr std::size_t mostReparsed = 48;

bool operator==(const ElementPosition& a, const ElementPosition& b) {
    return a.startLeft == b.startLeft && a.startRight == b.startRight && a.endLeft == b.endLeft &&
           a.endRight == b.endRight && a.parent == b.parent && a.firstChild == b.firstChild &&
           a.nextSibling == b.nextSibling;
}

void checkLinks(const std::vector<ElementPosition>& elements, std::size_t count,
                std::int32_t length) {
    for (std::size_t i = 1; i < count; ++i) {
        const ElementPosition& element = elements[i];
        const auto self = static_cast<std::int32_t>(i);
        require(0 <= element.startLeft && element.startLeft < element.startRight &&
                    element.endRight < length,
                "offsets lie in the text");
        require(element.isEmptyElement()
                    ? element.endRight == element.startRight
                    : element.startRight < element.endLeft && element.endLeft < element.endRight,
                "offsets are in order");
        require(element.parent < self && (element.firstChild == 0 || element.firstChild > self) &&
                    (element.nextSibling == 0 || element.nextSibling > self),
                "links follow the document's order, so there is no circle");
        if (element.parent != 0) {
            const ElementPosition& parent = elements[static_cast<std::size_t>(element.parent)];
            require(parent.startRight < element.startLeft && element.endRight < parent.endLeft,
                    "a child lies within its parent");
        }
        if (element.nextSibling != 0) {
            const ElementPosition& next = elements[static_cast<std::size_t>(element.nextSibling)];
            require(next.parent == element.parent && element.endRight < next.startLeft,
                    "siblings have one parent and follow each other");
        }
    }
}

/// The markup of each element, parsed by itself, has the shape that it has in the document.
void checkMarkup(const CMarkupSTL& document, std::size_t count) {
    for (std::size_t i = 1; i < std::min(count, mostReparsed); ++i) {
        const ElementPosition& element = document.getElements()[i];
        const auto start = static_cast<std::size_t>(element.startLeft);
        const std::string markup = document.getDocText().substr(
            start, static_cast<std::size_t>(element.endRight) + 1 - start);
        CMarkupSTL again;
        require(again.setDocument(markup.c_str()), "an element's markup parses");
        again.resetPosition();
        again.findChildElement(nullptr);
        require(again.getElementMarkup() == markup, "an element's markup is one element");
        for (std::size_t j = 1; i + j < count; ++j) {
            const ElementPosition& inside = document.getElements()[i + j];
            if (inside.startLeft > element.endRight) {
                break;
            }
            const ElementPosition& same = again.getElements().at(j + 1);
            require(same.startLeft == inside.startLeft - element.startLeft &&
                        same.endRight == inside.endRight - element.startLeft &&
                        same.parent == inside.parent - static_cast<std::int32_t>(i) + 1,
                    "an element's markup has the element's shape");
        }
    }
}

void navigate(CMarkupSTL& document, ReferenceCursor& judge, Draw operations) {
    static constexpr std::array<std::string_view, 14> names{
        "",  "a", "b",    "A",  "ab", "group", "point",
        "x", "y", "id=1", "a/", "a ", "a[2",   "segmenttype"};
    while (operations.more()) {
        const std::size_t operation = operations.below(10);
        const std::string name(operations.oneOf(names));
        switch (operation) {
        case 0:
            document.resetPosition();
            judge.reset();
            break;
        case 1:
            document.intoElement();
            judge.into();
            break;
        case 2:
            document.outOfElement();
            judge.outOf();
            break;
        case 3:
            require(document.getAttribute(name.c_str()) == judge.attribute(name), "getAttribute");
            break;
        case 4:
            require(document.getChildAttribute(name.c_str()) == judge.childAttribute(name),
                    "getChildAttribute");
            break;
        case 5:
            require(document.getData() == judge.data(), "getData");
            break;
        case 6:
            require(document.getChildTagName() == judge.childName(), "getChildTagName");
            break;
        case 7:
            require(document.getElementMarkup() == judge.elementMarkup(), "getElementMarkup");
            break;
        default:
            require(document.findChildElement(name.c_str()) == judge.findChild(name),
                    "findChildElement");
            break;
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Draw input(veldtrim::fuzz::textOf(data, size));
    const std::string text(input.until('\0').substr(0, longestText));

    CMarkupSTL document;
    ReferenceCursor judge(text);
    require(document.setDocument(text.c_str()) == judge.markup().ok, "setDocument");
    require(document.getParseError() == judge.markup().error, "getParseError");
    const std::vector<ElementPosition>& expected = judge.markup().elements;
    const std::vector<ElementPosition>& elements = document.getElements();
    require(elements.size() >= expected.size(), "all elements are in the index");
    for (std::size_t i = 1; i < expected.size(); ++i) {
        require(elements[i] == expected[i], "the index is the reference parser's");
    }
    require(elements[0].firstChild == expected[0].firstChild, "the root is linked");
    checkLinks(elements, expected.size(), static_cast<std::int32_t>(text.size()));
    checkMarkup(document, expected.size());
    document.resetPosition();
    navigate(document, judge, input);
    return 0;
}
