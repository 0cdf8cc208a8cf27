/// Path queries for the numbers, texts and names in an XML document.
#pragma once

#include "veldtrim/xml_export.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace veldtrim {

class CMarkupSTL;

/// Answers path queries about one XML document.
///
/// A path is a list of element names separated by "/". The first name is that of a child of the
/// root element; the name of the root is not part of a path. Each name selects the first element in
/// document order that it matches by the rules of `CMarkupSTL`. An empty name matches any element.
/// There are no indices and no wildcards.
///
/// Every query begins at the top of the document. It returns whether the path leads to an element
/// and, for numbers, whether the text can be converted. If the path does not lead to an element,
/// the value is unchanged; after a failed conversion, it is what the extraction left. An argument
/// may refer to the value that the query sets. Only `prepNames` prints. Invalid input does not
/// cause an exception. Not thread-safe: even const queries move the positions of the document.
class VELDTRIM_XML_API XMLReader {
public:
    /// A reader of an empty document.
    XMLReader();
    ~XMLReader();
    XMLReader(const XMLReader&) = delete;
    XMLReader& operator=(const XMLReader&) = delete;

    /// Loads a file. Returns false, with an empty document, if the file does not exist, cannot be
    /// read or parsed, or does not contain an element.
    bool setFile(const std::string& path);
    /// The same for a document of the caller.
    static bool setFile(const std::string& path, CMarkupSTL* document);
    /// Parses a text up to its first NUL. Returns false, with an empty document, if that fails.
    bool setString(const std::string& text);
    /// Whether `setFile` would return true.
    static bool checkFile(const std::string& path);

    /// Descends along the path from the document's current positions; reset them first to start at
    /// the top. Afterwards the main position is the element at the path. If there is none, returns
    /// false and leaves the document at the depth that was reached.
    static bool traversePath(const std::string& path, CMarkupSTL* document);

    /// Gets the character data of the element at the path, which can be empty. If the last
    /// component begins with "@", gets the value of that attribute of the element before it, and
    /// also returns false if the value is empty. "@" alone gets the name of the first attribute.
    bool getString(const std::string& path, std::string& value) const;
    /// `getString`, converted as by `stringToDouble`.
    bool getDouble(const std::string& path, double& value) const;
    /// `getString`, converted as by `stringToFloat`.
    bool getFloat(const std::string& path, float& value) const;
    /// `getString`, converted as by `stringToInt`.
    bool getInt(const std::string& path, std::int32_t& value) const;

    /// Replaces `items` with the names of the element's children, in document order. Returns false,
    /// with `items` unchanged, if there is no element at the path.
    ///
    /// `type` filters the names only if the path is "modules": "all" keeps every name, "Kestrune"
    /// keeps "Kestrune" and "TavelReffModule", and any other type keeps the names equal to it.
    bool getItemsBelow(const std::string& path, std::vector<std::string>& items,
                       const std::string& type) const;

    /// Text of the element at the path from the "<" of its start tag through the ">" of its end
    /// tag, as written; empty if there is no element at the path.
    [[nodiscard]] std::string getSubDocument(const std::string& path) const;

    /// Asks for a prefix on standard output, reads one word from standard input, and appends
    /// "_node", "_polygon", "_city.xml" and ".poly" to it to form the four names. At the end of the
    /// input, the prefix is empty.
    void prepNames(std::string& nodeFile, std::string& polygonFile, std::string& cityFile,
                   std::string& polyFile) const;
    /// The same for only the name that ends in "_city.xml".
    void prepNames(std::string& cityFile) const;

    /// Convert the beginning of a text as the formatted extraction of an input stream does in the
    /// classic locale: leading white space is skipped, and anything after the value is ignored.
    /// Return false if the extraction fails; `value` is then what it left.
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
