/// Numbers in the attributes of a boundary file.
#pragma once

#include <veldtrim/cmarkup_stl.h>
#include <veldtrim/xml_reader.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace veldtrim {

inline bool convert(std::string text, double& value) {
    return XMLReader::stringToDouble(std::move(text), value);
}

inline bool convert(std::string text, std::int32_t& value) {
    return XMLReader::stringToInt(std::move(text), value);
}

/// Reads attributes as numbers of one type, in time linear in the size of the document: a long
/// value that many elements share is converted once.
template <typename Number>
class AttributeNumbers {
public:
    explicit AttributeNumbers(const CMarkupSTL& document) : document_(document) {}

    /// Reads the attribute `name` of the document's child position as a number. Returns false and
    /// leaves `value` unspecified if the attribute is missing or not a number.
    bool read(const char* name, Number& value) {
        const std::string_view source = document_.getChildAttributeSource(name);
        if (source.size() <= usualLength) {
            return source.find('&') == std::string_view::npos
                       ? convert(std::string(source), value)
                       : convert(document_.getChildAttribute(name), value);
        }
        const auto [place, isNew] = longValues_.try_emplace(source.data());
        Conversion& conversion = place->second;
        if (isNew) {
            conversion.isNumber = convert(document_.getChildAttribute(name), conversion.value);
        }
        value = conversion.value;
        return conversion.isNumber;
    }

private:
    struct Conversion {
        Number value = 0;
        bool isNumber = false;
    };

    /// No meaningful number is longer than this.
    static constexpr std::size_t usualLength = 256;

    const CMarkupSTL& document_;
    std::map<const char*, Conversion> longValues_; ///< by the value's address in the text
};

} // namespace veldtrim
