#include "veldtrim/xml_reader.h"

#include "text/number.h"
#include "veldtrim/cmarkup_stl.h"

#include <iostream>
#include <utility>

namespace veldtrim {
namespace {

bool hasRoot(const CMarkupSTL& document) {
    const std::vector<ElementPosition>& elements = document.getElements();
    return !elements.empty() && elements.front().firstChild != 0;
}

/// Whether `getItemsBelow` keeps the name of a child of "modules" for the given type.
bool isModuleOfType(const std::string& name, const std::string& type) {
    if (type == "all") {
        return true;
    }
    return name == type || (type == "Kestrune" && name == "TavelReffModule");
}

std::string askPrefix(const char* prompt) {
    std::cout << std::endl << prompt << std::endl;
    std::string prefix;
    std::cin >> prefix;
    return prefix;
}

template <typename Number>
bool convert(const std::string& text, Number& value) {
    const char* at = text.data();
    return readNumber(at, at + text.size(), value);
}

template <typename Number>
bool getValue(const XMLReader& reader, const std::string& path, Number& value) {
    std::string text;
    return reader.getString(path, text) && convert(text, value);
}

} // namespace

XMLReader::XMLReader() : document(std::make_unique<CMarkupSTL>()) {}

XMLReader::~XMLReader() = default;

bool XMLReader::setFile(const std::string& path) {
    return setFile(path, document.get());
}

bool XMLReader::setFile(const std::string& path, CMarkupSTL* document) {
    return document != nullptr && document->loadFile(path.c_str()) && hasRoot(*document);
}

bool XMLReader::setString(const std::string& text) {
    return document->setDocument(text.c_str()) && hasRoot(*document);
}

bool XMLReader::checkFile(const std::string& path) {
    CMarkupSTL document;
    return setFile(path, &document);
}

bool XMLReader::traversePath(const std::string& path, CMarkupSTL* document) {
    if (document == nullptr) {
        return false;
    }
    for (std::size_t begin = 0;;) {
        const std::size_t end = path.find('/', begin);
        const std::string component = path.substr(begin, end - begin);
        if (!document->findChildElement(component.c_str())) {
            return false;
        }
        document->intoElement();
        if (end == std::string::npos) {
            return true;
        }
        begin = end + 1;
    }
}

bool XMLReader::traversePath(const std::string& path) const {
    return traversePath(path, document.get());
}

bool XMLReader::getString(const std::string& path, std::string& value) const {
    document->resetPosition();
    const std::size_t slash = path.rfind('/');
    const std::size_t last = slash == std::string::npos ? 0 : slash + 1;
    if (last < path.size() && path[last] == '@') {
        const std::string attribute = path.substr(last + 1);
        if (!traversePath(path.substr(0, slash))) {
            return false;
        }
        value = document->getAttribute(attribute.c_str());
        return !value.empty();
    }
    if (!traversePath(path)) {
        return false;
    }
    value = document->getData();
    return true;
}

bool XMLReader::getDouble(const std::string& path, double& value) const {
    return getValue(*this, path, value);
}

bool XMLReader::getFloat(const std::string& path, float& value) const {
    return getValue(*this, path, value);
}

bool XMLReader::getInt(const std::string& path, std::int32_t& value) const {
    return getValue(*this, path, value);
}

bool XMLReader::getItemsBelow(const std::string& path, std::vector<std::string>& items,
                              const std::string& type) const {
    document->resetPosition();
    if (!traversePath(path)) {
        return false;
    }
    const bool filtered = path == "modules";
    // Not directly into `items`, because `type` may be one of its elements.
    std::vector<std::string> names;
    while (document->findChildElement(nullptr)) {
        std::string name = document->getChildTagName();
        if (!filtered || isModuleOfType(name, type)) {
            names.push_back(std::move(name));
        }
    }
    items = std::move(names);
    return true;
}

std::string XMLReader::getSubDocument(const std::string& path) const {
    document->resetPosition();
    return traversePath(path) ? document->getElementMarkup() : std::string();
}

void XMLReader::prepNames(std::string& nodeFile, std::string& polygonFile, std::string& cityFile,
                          std::string& polyFile) const {
    const std::string prefix = askPrefix("enter prefix of _node (and _polygon, and _city) file:");
    nodeFile = prefix + "_node";
    polygonFile = prefix + "_polygon";
    cityFile = prefix + "_city.xml";
    polyFile = prefix + ".poly";
}

void XMLReader::prepNames(std::string& cityFile) const {
    std::cout << std::endl;
    cityFile = askPrefix("enter prefix of _city file:") + "_city.xml";
}

// The exported interface takes these texts by value.
// NOLINTBEGIN(performance-unnecessary-value-param)
bool XMLReader::stringToDouble(std::string text, double& value) {
    return convert(text, value);
}

bool XMLReader::stringToFloat(std::string text, float& value) {
    return convert(text, value);
}

bool XMLReader::stringToInt(std::string text, std::int32_t& value) {
    return convert(text, value);
}

bool XMLReader::stringToString(std::string text, std::string& value) {
    constexpr const char* blanks = " \t\n\v\f\r"; // of the classic locale
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string::npos) {
        return false;
    }
    value = text.substr(begin, text.find_first_of(blanks, begin) - begin);
    return true;
}
// NOLINTEND(performance-unnecessary-value-param)

} // namespace veldtrim
