/// Numbers in the attributes of a boundary file.
#pragma once

#include <veldtrim/cmarkup_stl.h>
#include <veldtrim/xml_reader.h>

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace veldtrim {

inline bool convert(std::string text, double& value) {
    return XMLReader::stringToDouble(std::move(text), value);
}

inline bool convert(std::string text, int& value) {
    return XMLReader::stringToInt(std::move(text), value);
}

/// Reads attributes as numbers of one type, in time that stays linear in the document: a long value
/// that many elements share is converted once.
template <typename Number>
class AttributeNumbers {
public:
    explicit AttributeNumbers(const CMarkupSTL& document) : document_(document) {}

    /// The attribute of the document's child position as a number; false, with `value` of no
    /// meaning, when it is missing or none.
    bool read(const char* name, Number& value) {
        const std::string_view source = document_.getChildAttributeSource(name);
        if (source.size() <= usualLength) {
            return source.find('&') == std::string_view::npos
                       ? convert(std::string(source), value)
                       : convert(document_.getChildAttribute(name), value);
        }
        const auto [place, isNew] = longOnes_.try_emplace(source.data());
        Known& known = place->second;
        if (isNew) {
            known.isNumber = convert(document_.getChildAttribute(name), known.value);
        }
        value = known.value;
        return known.isNumber;
    }

private:
    struct Known {
        Number value = 0;
        bool isNumber = false;
    };

    /// Longer than any number that is meant as one.
    static constexpr std::size_t usualLength = 256;

    const CMarkupSTL& document_;
    std::map<const char*, Known> longOnes_; ///< by the place of the value in the text
};

} // namespace veldtrim
