/// An XML document: its text, an index of its elements, and navigation between them.
#pragma once

#include "veldtrim/xml_export.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {

class AttributeSearch;

/// One element of a document: byte offsets into the text, and links to other elements, which are
/// their positions in the index. The link 0 means none; as `parent`, it means the document.
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

/// One XML document: its unchanged text and an index of its elements.
///
/// The parser does not validate. It indexes the first top-level element and everything inside it,
/// skips comments, processing instructions, CDATA sections and document type declarations, and
/// stops at the first error. Attribute values, character data and names are extracted from the text
/// on demand. The encoding is ignored. Names match regardless of the case of ASCII letters. A ">"
/// ends a start tag even inside a quoted value, and attribute values must be quoted.
///
/// A document has three positions: the main position is the current element, the child position is
/// one of its children, and the parent position is its parent. Typical use: load a document, call
/// `findChildElement` in a loop, read values with `getChildAttribute`, descend with `intoElement`
/// and return with `outOfElement`.
///
/// A requested name also matches an element or attribute name if it continues after that name with
/// a space, "=", "/" or "[": `group[2]` finds `group`.
///
/// Texts of 2 GiB or more are refused. Nothing is printed. The only exceptions are those for a lack
/// of memory. Not thread-safe: even const queries share state.
class VELDTRIM_XML_API CMarkupSTL {
public:
    /// An empty document.
    CMarkupSTL();
    virtual ~CMarkupSTL();
    CMarkupSTL(const CMarkupSTL&) = delete;
    CMarkupSTL& operator=(const CMarkupSTL&) = delete;

    /// Reads the whole file and parses it as `setDocument` does. Also returns false, without a
    /// parse error, if the path is not that of a regular file, or if the file cannot be read, is
    /// empty or has 2 GiB or more. After a failure the document is empty.
    bool loadFile(const char* filePath);

    /// Replaces the document with `text` and parses it. A null pointer means the empty text. Resets
    /// the positions. Returns whether a root element was parsed. After a failure the document has
    /// no elements, and `getParseError` gives the reason, unless the text is empty or its first tag
    /// is an end tag.
    bool setDocument(const char* text);

    /// Clears the three positions: the next search starts at the root element.
    void resetPosition();

    /// Moves the child position to the next child of the main position with this name. A null or
    /// empty name matches any child. If the positions are cleared, the root element becomes the
    /// main position first, whatever its name. Returns false if there is no such child; the
    /// positions then do not change any further.
    bool findChildElement(const char* name);

    /// Descends: the child position becomes the main position, and the child position is cleared.
    /// Without a main position, nothing changes.
    void intoElement();

    /// Ascends: the main position becomes the child position, and its parent the main position. At
    /// the top, nothing changes.
    void outOfElement();

    /// Value of an attribute of the main position, with entities decoded. Empty if the attribute
    /// does not exist, its value is not quoted, or `name` is null. If `name` is empty, the result
    /// is the name of the first attribute.
    [[nodiscard]] std::string getAttribute(const char* name) const;

    /// The same for the child position.
    [[nodiscard]] std::string getChildAttribute(const char* name) const;

    /// The same as written in the text, without decoding entities. Valid until the document
    /// changes. If quotes are not closed, many elements can share one long value; the address of
    /// the view then shows whether two values are the same.
    [[nodiscard]] std::string_view getChildAttributeSource(const char* name) const;

    /// Character data of the main position. If the content begins with a CDATA section, the result
    /// is that section as written; otherwise it is the whole content, with entities decoded. Empty
    /// if the element has child elements. The entities lt, gt, amp, apos and quot are decoded, no
    /// others.
    [[nodiscard]] std::string getData() const;

    /// Name of the child position as written; empty if there is no child position.
    [[nodiscard]] std::string getChildTagName() const;

    /// Text of the main position from the "<" of its start tag through the ">" of its end tag;
    /// empty if there is no main position.
    [[nodiscard]] std::string getElementMarkup() const;

    /// The last parse error of this object. A later success does not clear it.
    [[nodiscard]] const std::string& getParseError() const { return parseError; }

    /// The line of that error and its byte in the line, both counted from 1; 0 if the error has no
    /// place or there was none. For a missing end tag, this is the place of the start tag.
    [[nodiscard]] std::int32_t getParseErrorLine() const { return parseErrorLine; }
    [[nodiscard]] std::int32_t getParseErrorColumn() const { return parseErrorColumn; }

    /// The document's text.
    [[nodiscard]] const std::string& getDocText() const { return docText; }

    /// The index. Position 0 is the document; its `firstChild` is the root element, or 0. The
    /// elements follow in document order. Positions that no link reaches are unused.
    [[nodiscard]] const std::vector<ElementPosition>& getElements() const { return elements; }

private:
    bool indexDocument();
    std::int32_t parseElement();
    void growTo(std::size_t size, std::size_t expected);
    std::int32_t openElement(std::int32_t parent);
    bool closeElement(std::int32_t element);
    std::int32_t skipNode(std::int32_t& offset) const;
    std::int32_t recordParseError(std::string_view format, std::int32_t offset,
                                  std::string_view name = {});

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
    std::int32_t nodeKind = 0; ///< 1 if the main position is an element
    std::int32_t parseErrorLine = 0;
    std::int32_t parseErrorColumn = 0;
    std::unique_ptr<AttributeSearch> attributeSearch;
};

} // namespace veldtrim
