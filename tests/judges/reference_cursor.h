/// Navigation and queries on the index of the reference parser, as simple as possible: the judge of
/// those of the document and the reader.
#pragma once

#include "judges/reference_markup.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>

namespace veldtrim::fuzz {

/// The positions of a document and what they answer.
class ReferenceCursor {
public:
    explicit ReferenceCursor(std::string text) : markup_(std::move(text)) {}

    [[nodiscard]] const reference::Markup& markup() const { return markup_; }

    void reset() { parent_ = main_ = child_ = 0; }

    bool findChild(const std::string& name) {
        if (main_ == 0) {
            if (const int first = at(parent_).firstChild; first != 0) {
                parent_ = at(first).parent;
                main_ = first;
                child_ = 0;
            }
        }
        int found = child_ != 0 ? at(child_).nextSibling : at(main_).firstChild;
        while (found != 0 && !name.empty() && !markup_.isNamed(found, name)) {
            found = at(found).nextSibling;
        }
        if (found == 0) {
            return false;
        }
        main_ = at(found).parent;
        parent_ = at(main_).parent;
        child_ = found;
        return true;
    }

    void into() {
        if (main_ != 0) {
            parent_ = std::exchange(main_, std::exchange(child_, 0));
        }
    }

    void outOf() {
        if (parent_ != 0) {
            child_ = main_;
            main_ = parent_;
            parent_ = at(main_).parent;
        }
    }

    std::string attribute(const std::string& name) { return attributeOf(main_, name); }
    std::string childAttribute(const std::string& name) { return attributeOf(child_, name); }
    [[nodiscard]] std::string childName() const { return child_ == 0 ? "" : markup_.name(child_); }

    [[nodiscard]] std::string elementMarkup() const {
        return main_ == 0 ? "" : cut(at(main_).startLeft, at(main_).endRight + 1);
    }

    [[nodiscard]] std::string data() const {
        const ElementPosition& element = at(main_);
        if (main_ == 0 || element.firstChild != 0 || element.isEmptyElement()) {
            return "";
        }
        const std::string start = "<![CDATA[";
        // The first token of the content; if it is quoted, the text between the quotes.
        std::size_t left = markup_.text.find_first_not_of(
            " \t\n\r", static_cast<std::size_t>(element.startRight) + 1);
        std::size_t behind = left + 1;
        if (const char quote = markup_.text[left]; quote == '"' || quote == '\'') {
            behind = markup_.text.find(quote, ++left);
        }
        const auto end = static_cast<std::size_t>(element.endLeft);
        if (left + start.size() + 2 < end && markup_.text.compare(left, start.size(), start) == 0) {
            const std::size_t close = markup_.text.find("]]>", behind);
            if (close < end) {
                return markup_.text.substr(left + start.size(), close - left - start.size());
            }
        }
        return decoded(cut(element.startRight + 1, element.endLeft));
    }

    /// Descends along a path as far as possible.
    bool traverse(std::string path) {
        for (bool last = false; !last;) {
            const std::size_t slash = path.find('/');
            last = slash == std::string::npos;
            if (!findChild(path.substr(0, slash))) {
                return false;
            }
            into();
            path.erase(0, last ? path.size() : slash + 1);
        }
        return true;
    }

private:
    [[nodiscard]] const ElementPosition& at(int index) const {
        return markup_.elements[static_cast<std::size_t>(index)];
    }

    [[nodiscard]] std::string cut(int from, int to) const {
        return markup_.text.substr(static_cast<std::size_t>(from),
                                   static_cast<std::size_t>(to - from));
    }

    std::string attributeOf(int element, const std::string& name) {
        return element == 0 || main_ == 0 ? "" : decoded(markup_.attribute(element, name));
    }

    static std::string decoded(const std::string& text) {
        static const std::array<std::pair<std::string, char>, 5> entities{
            {{"&lt;", '<'}, {"&amp;", '&'}, {"&gt;", '>'}, {"&apos;", '\''}, {"&quot;", '"'}}};
        std::string result;
        for (std::size_t i = 0; i < text.size();) {
            const auto* const entity =
                std::find_if(entities.begin(), entities.end(), [&](const auto& each) {
                    return text.compare(i, each.first.size(), each.first) == 0;
                });
            result += entity == entities.end() ? text[i] : entity->second;
            i += entity == entities.end() ? 1 : entity->first.size();
        }
        return result;
    }

    reference::Markup markup_;
    int parent_ = 0;
    int main_ = 0;
    int child_ = 0;
};

} // namespace veldtrim::fuzz
