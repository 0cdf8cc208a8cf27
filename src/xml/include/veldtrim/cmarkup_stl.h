/// An XML document: its text, an index of its elements, and navigation over them.
#pragma once

#include "veldtrim/xml_export.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {

class AttributeSearch;

/// One element of the index: byte offsets into the document text, and links to other elements by
/// their place in the index. Link 0 means none; as `parent` it means the document.
struct ElementPosition {
    std::int32_t startLeft = 0;   ///< "<" that opens the start tag
    std::int32_t startRight = 0;  ///< ">" that closes the start tag
    std::int32_t endLeft = 0;     ///< "<" that opens the end tag; the "/" of an empty element
    std::int32_t endRight = 0;    ///< ">" that closes the end tag; `startRight` if empty
    std::int32_t parent = 0;      ///< the enclosing element
    std::int32_t firstChild = 0;  ///< the first element inside
    std::int32_t nextSibling = 0; ///< the next element with the same parent

    [[nodiscard]] bool isEmptyElement() const { return endLeft == startRight - 1; }
};

/// One XML document: its text, byte for byte, and an index of its elements.
///
/// The parser does not validate. It indexes the first top-level element and everything inside it,
/// skips comments, processing instructions, CDATA sections and document type declarations, and
/// stops at the first fault. Attribute values, character data and names are cut out of the text on
/// demand. The encoding is ignored; names match regardless of the case of ASCII letters.
///
/// Three positions move over the index: the main position is the current element, the child
/// position one of its children, the parent position its parent. Typical use: load, then
/// `findChildElement` in a loop, `getChildAttribute`, `intoElement` to descend, `outOfElement` to
/// come back. A ">" ends a start tag even inside a quoted value, and attribute values must be
/// quoted.
///
/// A requested name also matches an element or attribute name when it continues after that name
/// with a space, "=", "/" or "[": `group[2]` finds `group`.
///
/// Texts of 2 GiB or more are refused. Nothing is printed. No input raises an exception; only a
/// lack of memory does. For one thread at a time: even queries share state.
class VELDTRIM_XML_API CMarkupSTL {
public:
    /// An empty document.
    CMarkupSTL();
    virtual ~CMarkupSTL();
    CMarkupSTL(const CMarkupSTL&) = delete;
    CMarkupSTL& operator=(const CMarkupSTL&) = delete;

    /// Reads the whole file and parses it as `setDocument` does. Also false, without a parse error,
    /// for a path that is not a regular file, and for a file that cannot be read, is empty, or
    /// holds 2 GiB or more. False always leaves an empty document.
    bool loadFile(const char* filePath);

    /// Replaces the document with `text`, up to its NUL, and parses it; a null pointer means the
    /// empty text. True when a root element was parsed. On false the document has no elements, and
    /// `getParseError` says why, unless the text is empty or its first tag is an end tag. Resets
    /// the positions.
    bool setDocument(const char* text);

    /// Clears the three positions: the next search starts at the root element.
    void resetPosition();

    /// Moves the child position to the next child of the main position with this name. A null or
    /// empty name means any. From cleared positions the root element, whatever its name, becomes
    /// the main position first. False when there is no such child; the positions then stay, apart
    /// from that first step.
    bool findChildElement(const char* name);

    /// Descends: the child position becomes the main position, and there is no child position any
    /// more. Without a main position nothing changes.
    void intoElement();

    /// Climbs: the main position becomes the child position, its parent the main position. At the
    /// top nothing changes.
    void outOfElement();

    /// Value of an attribute of the main position, entities decoded. Empty when there is no such
    /// attribute, its value is not quoted, or the name is null. An empty name asks for the name of
    /// the first attribute.
    [[nodiscard]] std::string getAttribute(const char* name) const;

    /// The same for the child position.
    [[nodiscard]] std::string getChildAttribute(const char* name) const;

    /// The same as written in the text, entities included; valid as long as the document. Where
    /// quotes are left open, many elements can share one long value: callers that ask all of them
    /// can tell by the address of the view which values they have seen.
    [[nodiscard]] std::string_view getChildAttributeSource(const char* name) const;

    /// Character data of the main position: the first CDATA section as written if the content
    /// begins with one, else the whole content, entities decoded. Empty for an element that has
    /// child elements. The entities are lt, gt, amp, apos and quot; others stay as written.
    [[nodiscard]] std::string getData() const;

    /// Name of the child position as written; empty without one.
    [[nodiscard]] std::string getChildTagName() const;

    /// Text of the main position from the "<" of its start tag through the ">" of its end tag;
    /// empty without one.
    [[nodiscard]] std::string getElementMarkup() const;

    /// The last parse error of this object. A later success does not clear it.
    [[nodiscard]] const std::string& getParseError() const { return parseError; }

    /// The document's text.
    [[nodiscard]] const std::string& getDocText() const { return docText; }

    /// The index. Place 0 is the document, whose `firstChild` is the root element or 0. The
    /// elements follow in document order, as many as the links reach; places after them are unused.
    [[nodiscard]] const std::vector<ElementPosition>& getElements() const { return elements; }

private:
    bool indexDocument();
    std::int32_t parseElement();
    void growTo(std::size_t size, std::size_t expected);
    std::int32_t openElement(std::int32_t parent);
    bool closeElement(std::int32_t element);
    std::int32_t skipNode(std::int32_t& offset) const;
    std::int32_t recordParseError(std::string_view format, std::string_view name = {});

    [[nodiscard]] ElementPosition& at(std::int32_t index) {
        return elements[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] const ElementPosition& at(std::int32_t index) const {
        return elements[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] std::int32_t findElementIndex(std::int32_t parent, std::int32_t after,
                                                const char* name) const;
    [[nodiscard]] std::string attributeOf(std::int32_t element, const char* name) const;
    [[nodiscard]] std::string_view attributeSource(std::int32_t element, const char* name) const;
    static std::string decodeText(std::string_view rest);

    std::string docText;
    std::string parseError;
    std::vector<ElementPosition> elements;
    std::int32_t parentPos = 0;
    std::int32_t mainPos = 0;
    std::int32_t childPos = 0;
    std::int32_t freePos = 1;
    std::int32_t nodeKind = 0; ///< 1 when the main position is an element
    std::unique_ptr<AttributeSearch> attributeSearch;
};

} // namespace veldtrim
