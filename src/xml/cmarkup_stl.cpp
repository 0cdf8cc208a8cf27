#include "veldtrim/cmarkup_stl.h"

#include "attribute_search.h"
#include "platform/document_file.h"
#include "token_span.h"

#include <array>
#include <limits>

namespace veldtrim {
namespace {

struct Entity {
    std::string_view text; ///< what follows the "&"
    char character;
};

constexpr std::array<Entity, 5> entities = {
    {{"lt;", '<'}, {"amp;", '&'}, {"gt;", '>'}, {"apos;", '\''}, {"quot;", '"'}}};

/// Replaces `text` with the bytes of the file up to the first NUL. Returns false if the file cannot
/// be read as a whole, is empty, or is too large for 32-bit offsets.
bool readFile(const char* filePath, std::string& text) {
    if (!readDocumentFile(filePath, std::numeric_limits<std::int32_t>::max(), text)) {
        return false;
    }
    const std::size_t end = text.find('\0');
    if (end != std::string::npos) {
        text.resize(end);
    }
    return true;
}

} // namespace

CMarkupSTL::CMarkupSTL() : elements(1), attributeSearch(std::make_unique<AttributeSearch>()) {
    setDocument(nullptr);
}

CMarkupSTL::~CMarkupSTL() = default;

bool CMarkupSTL::loadFile(const char* filePath) {
    // A copy, because the path can be a part of this document. The old text is released before the
    // new one is read, so that only one is in memory.
    const std::string path = filePath == nullptr ? std::string() : filePath;
    setDocument(nullptr);
    if (!readFile(path.c_str(), docText)) {
        setDocument(nullptr);
        return false;
    }
    return indexDocument() || setDocument(nullptr);
}

void CMarkupSTL::resetPosition() {
    parentPos = 0;
    mainPos = 0;
    childPos = 0;
    nodeKind = 0;
}

std::int32_t CMarkupSTL::findElementIndex(std::int32_t parent, std::int32_t after,
                                          const char* name) const {
    std::int32_t candidate = after != 0 ? at(after).nextSibling : at(parent).firstChild;
    if (name == nullptr || *name == '\0') {
        return candidate;
    }
    const std::string_view requested(name);
    for (; candidate != 0; candidate = at(candidate).nextSibling) {
        TokenSpan span(docText, at(candidate).startLeft + 1);
        nextToken(span);
        if (nameMatches(span, requested)) {
            break;
        }
    }
    return candidate;
}

bool CMarkupSTL::findChildElement(const char* name) {
    if (mainPos == 0) {
        const std::int32_t first = findElementIndex(parentPos, 0, nullptr);
        if (first != 0) {
            parentPos = at(first).parent;
            mainPos = first;
            childPos = 0;
            nodeKind = 1;
        }
    }
    const std::int32_t child = findElementIndex(mainPos, childPos, name);
    if (child == 0) {
        return false;
    }
    mainPos = at(child).parent;
    parentPos = at(mainPos).parent;
    childPos = child;
    nodeKind = mainPos != 0 ? 1 : 0;
    return true;
}

void CMarkupSTL::intoElement() {
    if (mainPos != 0 && nodeKind == 1) {
        parentPos = mainPos;
        mainPos = childPos;
        childPos = 0;
        nodeKind = mainPos != 0 ? 1 : 0;
    }
}

void CMarkupSTL::outOfElement() {
    if (parentPos != 0) {
        childPos = mainPos;
        mainPos = parentPos;
        parentPos = at(mainPos).parent;
        nodeKind = 1;
    }
}

std::string CMarkupSTL::getAttribute(const char* name) const {
    return attributeOf(mainPos, name);
}

std::string CMarkupSTL::getChildAttribute(const char* name) const {
    return attributeOf(childPos, name);
}

std::string_view CMarkupSTL::getChildAttributeSource(const char* name) const {
    return attributeSource(childPos, name);
}

std::string CMarkupSTL::attributeOf(std::int32_t element, const char* name) const {
    return decodeText(attributeSource(element, name));
}

std::string_view CMarkupSTL::attributeSource(std::int32_t element, const char* name) const {
    if (element == 0 || nodeKind != 1 || name == nullptr) {
        return {};
    }
    TokenSpan span(docText, at(element).startLeft + 1);
    return attributeSearch->find(span, at(element).startRight, name) ? tokenText(span)
                                                                     : std::string_view();
}

std::string CMarkupSTL::getData() const {
    const ElementPosition& element = at(mainPos);
    if (mainPos == 0 || element.firstChild != 0 || element.isEmptyElement()) {
        return {};
    }
    TokenSpan span(docText, element.startRight + 1);
    nextToken(span);
    if (span.first() == '<' && element.endLeft - span.left > 11 &&
        docText.compare(static_cast<std::size_t>(span.left) + 1, 8, "![CDATA[") == 0) {
        const std::string_view content(docText.data(), static_cast<std::size_t>(element.endLeft));
        const std::size_t end = content.find("]]>", static_cast<std::size_t>(span.next));
        if (end != std::string_view::npos) {
            const std::size_t begin = static_cast<std::size_t>(span.left) + 9;
            return docText.substr(begin, end - begin);
        }
    }
    const std::size_t begin = static_cast<std::size_t>(element.startRight) + 1;
    return decodeText({docText.data() + begin, static_cast<std::size_t>(element.endLeft) - begin});
}

std::string CMarkupSTL::getChildTagName() const {
    if (childPos == 0) {
        return {};
    }
    TokenSpan span(docText, at(childPos).startLeft + 1);
    nextToken(span);
    return std::string(tokenText(span));
}

std::string CMarkupSTL::getElementMarkup() const {
    if (mainPos == 0) {
        return {};
    }
    const ElementPosition& element = at(mainPos);
    const std::size_t begin = static_cast<std::size_t>(element.startLeft);
    const std::size_t last = static_cast<std::size_t>(element.endRight);
    return docText.substr(begin, last - begin + 1);
}

std::string CMarkupSTL::decodeText(std::string_view rest) {
    std::size_t ampersand = rest.find('&');
    if (ampersand == std::string_view::npos) {
        return std::string(rest);
    }
    std::string decoded;
    decoded.reserve(rest.size());
    while (ampersand != std::string_view::npos) {
        decoded.append(rest.substr(0, ampersand));
        rest.remove_prefix(ampersand + 1);
        char character = '&';
        for (const Entity& entity : entities) {
            if (rest.starts_with(entity.text)) {
                character = entity.character;
                rest.remove_prefix(entity.text.size());
                break;
            }
        }
        decoded += character;
        ampersand = rest.find('&');
    }
    decoded.append(rest);
    return decoded;
}

} // namespace veldtrim
