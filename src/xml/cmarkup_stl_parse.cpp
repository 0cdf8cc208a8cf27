#include "veldtrim/cmarkup_stl.h"

#include "attribute_search.h"
#include "token_span.h"

#include <algorithm>
#include <limits>
#include <new>

namespace veldtrim {
namespace {

// The kinds of nodes that skipNode finds; 0 means that there is no complete node.
constexpr std::int32_t cdataSection = 8;
constexpr std::int32_t processingInstruction = 16;
constexpr std::int32_t comment = 32;
constexpr std::int32_t documentType = 64;

constexpr std::size_t longestText = std::numeric_limits<std::int32_t>::max();

} // namespace

bool CMarkupSTL::setDocument(const char* text) {
    const std::size_t length = text == nullptr ? 0 : std::strlen(text);
    if (length > longestText) {
        parseError = "Document too large";
        parseErrorLine = parseErrorColumn = 0;
        docText = std::string();
    } else if (length == 0) {
        docText = std::string();
    } else {
        docText.assign(text, length);
    }
    return indexDocument();
}

/// Rebuilds the index of `docText`. Links the root to the document last, so that the document is
/// empty if memory for the index runs out.
bool CMarkupSTL::indexDocument() {
    freePos = 1;
    resetPosition();
    attributeSearch->reset();
    at(0) = ElementPosition();
    const std::size_t wanted = docText.size() / 64 + 8;
    if (elements.size() < wanted) {
        // Release the old index, which is not needed, before the new one is allocated.
        std::vector<ElementPosition>(1).swap(elements);
        growTo(wanted, wanted);
    }
    const std::int32_t root = docText.empty() ? 0 : parseElement();
    if (root <= 0) {
        at(0) = ElementPosition();
        freePos = 1;
        return false;
    }
    at(0).firstChild = root;
    return true;
}

/// Indexes the first element of the text and everything inside it. Returns its index, 0 if the
/// first tag is an end tag, or -1 after an error.
///
/// The open elements are the chain of parents of the current one, so nesting of any depth needs no
/// stack besides the index itself.
std::int32_t CMarkupSTL::parseElement() {
    std::int32_t parent = 0;
    std::int32_t previousSibling = 0;
    while (true) {
        std::int32_t element = openElement(parent);
        if (element < 0) {
            return element;
        }
        if (element > 0) {
            if (parent != 0) {
                (previousSibling == 0 ? at(parent).firstChild : at(previousSibling).nextSibling) =
                    element;
            }
            if (!at(element).isEmptyElement()) {
                parent = element;
                previousSibling = 0;
                continue;
            }
        } else {
            if (parent == 0) {
                return 0;
            }
            if (!closeElement(parent)) {
                return -1;
            }
            element = parent;
            parent = at(element).parent;
        }
        if (parent == 0) {
            return element;
        }
        at(parent).endLeft = at(element).endRight + 1;
        previousSibling = element;
    }
}

/// Resizes the index to `size` slots. Reserves memory for `expected` slots, or at least for the
/// next growth: unused memory costs nothing, but moving a large index would take time.
void CMarkupSTL::growTo(std::size_t size, std::size_t expected) {
    if (elements.capacity() < size) {
        std::size_t room = size + size / 2;
        while (room < expected) {
            room += room / 2;
        }
        try {
            elements.reserve(room);
        } catch (const std::bad_alloc&) {
            elements.reserve(size);
        }
    }
    elements.resize(size);
}

/// Adds the next start tag inside `parent` to the index. Returns its index, 0 if an end tag comes
/// first (`endLeft` of the parent is then the offset of its "<"), or -1 after an error.
std::int32_t CMarkupSTL::openElement(std::int32_t parent) {
    const std::int32_t index = freePos;
    const std::size_t size = elements.size();
    if (static_cast<std::size_t>(index) == size) {
        // Expects the rest of the text to be as dense in elements as the part that was read.
        const auto read = static_cast<std::size_t>(elements.back().startLeft) + 1;
        growTo(size + size / 2, size * std::uint64_t{docText.size()} / read);
    }
    freePos = index + 1;
    ElementPosition& element = at(index);
    ElementPosition& enclosing = at(parent);
    element.parent = parent;
    element.firstChild = 0;
    element.nextSibling = 0;

    TokenSpan span(docText);
    std::int32_t scan = enclosing.endLeft;
    while (true) {
        const std::int32_t open = findCharacter(span.text, span.length, '<', scan);
        if (open < 0) {
            return recordParseError("Element tag not found", enclosing.startLeft);
        }
        element.startLeft = open;
        enclosing.endLeft = open;
        span.next = open + 1;
        if (!nextToken(span)) {
            return recordParseError("Abrupt end within tag", open);
        }
        if (span.isString) {
            return recordParseError("Tag starts with quote", open);
        }
        const char first = span.first();
        if (first == '/') {
            --freePos;
            return 0;
        }
        if (first != '!' && first != '?') {
            break;
        }
        scan = open;
        if (skipNode(scan) == 0) {
            return recordParseError("Invalid node", open);
        }
    }
    const std::int32_t close = findCharacter(span.text, span.length, '>', span.next);
    if (close < 0) {
        return recordParseError("End of tag not found", element.startLeft);
    }
    element.startRight = close;
    if (span.text[close - 1] == '/') {
        element.endLeft = close - 1;
        element.endRight = close;
    } else {
        element.endLeft = close + 1;
        element.endRight = 0;
    }
    return index;
}

/// Reads the end tag of `element`, whose "<" `openElement` has stored in `endLeft`. Returns false
/// after an error.
bool CMarkupSTL::closeElement(std::int32_t element) {
    ElementPosition& closing = at(element);
    TokenSpan nameSpan(docText, closing.startLeft + 1);
    nextToken(nameSpan);
    const std::string_view name = tokenText(nameSpan);

    // The first token is the "/" by which openElement recognised the end tag.
    TokenSpan span(docText, closing.endLeft + 1);
    nextToken(span);
    for (int token = 2; nextToken(span); ++token) {
        if (span.isString) {
            continue;
        }
        if (token == 2 && !nameMatches(span, name)) {
            recordParseError("End tag does not correspond to %s", closing.endLeft, name);
            return false;
        }
        if (span.first() == '>') {
            closing.endRight = span.left;
            return true;
        }
    }
    recordParseError("End tag not completed for element %s", closing.endLeft, name);
    return false;
}

/// Moves `offset` from the "<" of a comment, processing instruction, CDATA section or document type
/// declaration to the character after its end, and returns its kind. Returns 0, with `offset`
/// unchanged, if it is none of these or not complete.
std::int32_t CMarkupSTL::skipNode(std::int32_t& offset) const {
    const std::size_t start = static_cast<std::size_t>(offset);
    // The terminating NUL can come right after the "<"; nothing is read beyond it.
    const char kindCharacter = docText.c_str()[start + 1];
    const char second = kindCharacter == '\0' ? '\0' : docText.c_str()[start + 2];
    if (second == '\0') {
        return 0;
    }
    std::string_view terminator;
    std::int32_t kind = documentType;
    if (kindCharacter == '?') {
        kind = processingInstruction;
        terminator = "?>";
    } else if (kindCharacter != '!') {
        return 0;
    } else if (second == '[') {
        kind = cdataSection;
        terminator = "]]>";
    } else if (second == '-') {
        kind = comment;
        terminator = "-->";
    }
    if (kind != documentType) {
        const std::size_t found = docText.find(terminator, start);
        if (found == std::string::npos) {
            return 0;
        }
        offset = static_cast<std::int32_t>(found + terminator.size());
        return kind;
    }
    TokenSpan span(docText, offset);
    for (std::int64_t depth = 0; nextToken(span);) {
        if (span.isString) {
            continue;
        }
        const char first = span.first();
        if (first == '[') {
            ++depth;
        } else if (first == ']') {
            --depth;
        } else if (first == '>' && depth == 0) {
            offset = span.next;
            return kind;
        }
    }
    return 0;
}

/// Stores the error text, with `name` in place of "%s", and the line and column of `offset`, and
/// releases the index slot of the failed element. Returns -1.
std::int32_t CMarkupSTL::recordParseError(std::string_view format, std::int32_t offset,
                                          std::string_view name) {
    const std::string_view before = std::string_view(docText).substr(0, std::size_t(offset));
    parseErrorLine = 1 + static_cast<std::int32_t>(std::count(before.begin(), before.end(), '\n'));
    parseErrorColumn = static_cast<std::int32_t>(before.size() - (before.rfind('\n') + 1)) + 1;
    parseError = format;
    if (const std::size_t place = parseError.find("%s");
        place != std::string::npos && !name.empty()) {
        parseError.replace(place, 2, name);
    }
    --freePos;
    return -1;
}

} // namespace veldtrim
