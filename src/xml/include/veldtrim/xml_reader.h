/// Queries to an XML document by paths: the numbers, texts and names that a program asks for.
#pragma once

#include "veldtrim/xml_export.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace veldtrim {

class CMarkupSTL;

/// Answers questions about one XML document, addressed by paths.
///
/// A path is a list of element names separated by "/". The first names a child of the root element;
/// the root's own name is not part of a path. Each name selects the first element that matches by
/// the rule of `CMarkupSTL`, in document order; an empty name matches any. There are no indices and
/// no wildcards.
///
/// Queries return whether the path leads to an element and, for numbers, whether the text converts.
/// A path that leads nowhere leaves the value unchanged; after a failed conversion it is whatever
/// the extraction left. An argument may refer to the value that the query sets. Every query begins
/// at the top of the document. Only `prepNames` prints, and bad input raises no exception. For one
/// thread at a time: even const queries move the positions of the document.
class VELDTRIM_XML_API XMLReader {
public:
    /// A reader of an empty document.
    XMLReader();
    ~XMLReader();
    XMLReader(const XMLReader&) = delete;
    XMLReader& operator=(const XMLReader&) = delete;

    /// Loads a file. False leaves an empty document: there is no such file, it cannot be read or
    /// parsed, or it holds no element.
    bool setFile(const std::string& path);
    /// The same into a document of the caller.
    static bool setFile(const std::string& path, CMarkupSTL* document);
    /// Parses a text, up to its first NUL. False leaves an empty document.
    bool setString(const std::string& text);
    /// Whether `setFile` would be true.
    static bool checkFile(const std::string& path);

    /// Descends along the path from the document's current positions; callers that want to start at
    /// the top reset them first. On true the main position is the path's element. On false the
    /// document stays at the depth that it reached.
    static bool traversePath(const std::string& path, CMarkupSTL* document);

    /// Character data of the element at the path, which may be empty. Where the last component
    /// begins with "@", the attribute of that name of the element before it; also false where its
    /// value is empty. "@" alone asks for the name of the first attribute.
    bool getString(const std::string& path, std::string& value) const;
    /// `getString`, converted as by `stringToDouble`.
    bool getDouble(const std::string& path, double& value) const;
    /// `getString`, converted as by `stringToFloat`.
    bool getFloat(const std::string& path, float& value) const;
    /// `getString`, converted as by `stringToInt`.
    bool getInt(const std::string& path, std::int32_t& value) const;

    /// Replaces `items` with the names of the element's children, in document order. False, with
    /// `items` unchanged, when the path leads nowhere.
    ///
    /// For the path "modules" alone `type` filters: "all" keeps every name, "Kestrune" keeps
    /// "Kestrune" and "TavelReffModule", any other keeps the names equal to it.
    bool getItemsBelow(const std::string& path, std::vector<std::string>& items,
                       const std::string& type) const;

    /// Text of the element at the path from the "<" of its start tag through the ">" of its end
    /// tag, as written; empty when the path leads nowhere.
    [[nodiscard]] std::string getSubDocument(const std::string& path) const;

    /// Asks on standard output for a prefix, reads one word from standard input, and builds from it
    /// the names that end in "_node", "_polygon", "_city.xml" and ".poly". At the end of the input
    /// the prefix is empty.
    void prepNames(std::string& nodeFile, std::string& polygonFile, std::string& cityFile,
                   std::string& polyFile) const;
    /// The same for the name that ends in "_city.xml" alone.
    void prepNames(std::string& cityFile) const;

    /// Convert the beginning of a text as the formatted extraction of an input stream does in the
    /// classic locale: leading white space is skipped, and what follows the value is ignored. False
    /// when the extraction fails; `value` is then what it left.
    static bool stringToDouble(std::string text, double& value);
    static bool stringToFloat(std::string text, float& value);
    static bool stringToInt(std::string text, std::int32_t& value);
    /// The first word of the text.
    static bool stringToString(std::string text, std::string& value);

protected:
    /// The static `traversePath` on the reader's own document.
    [[nodiscard]] bool traversePath(const std::string& path) const;

private:
    std::unique_ptr<CMarkupSTL> document;
};

} // namespace veldtrim
