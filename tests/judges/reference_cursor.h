/// Navigation and queries on the index of the reference parser, as simple as possible: the judge of
/// those of the document and the reader.
#pragma once

#include "judges/reference_markup.h"

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
        if (const int first = at(parent_).firstChild; main_ == 0 && first != 0) {
            parent_ = at(first).parent;
            main_ = first;
            child_ = 0;
        }
        int found = child_ != 0 ? at(child_).nextSibling : at(main_).firstChild;
        while (found != 0 && !name.empty() &&
               !reference::Markup::matches(markup_.nameOf(found), name)) {
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
    std::string childName() { return child_ == 0 ? "" : markup_.nameOf(child_).text; }

    std::string elementMarkup() {
        return main_ == 0 ? "" : cut(at(main_).startLeft, at(main_).endRight + 1);
    }

    std::string data() {
        const ElementPosition& element = at(main_);
        if (main_ == 0 || element.firstChild != 0 || element.isEmptyElement()) {
            return "";
        }
        const std::string start = "<![CDATA[";
        reference::Token token{.next = element.startRight + 1};
        markup_.next(token);
        const int begin = token.left + static_cast<int>(start.size());
        const int close = markup_.find("]]>", token.next);
        if (markup_.find(start, token.left) == token.left && begin <= close &&
            close < element.endLeft) {
            return cut(begin, close);
        }
        return decoded(cut(element.startRight + 1, element.endLeft));
    }

    /// Descends along a path as far as possible.
    bool traverse(std::string path) {
        for (path += '/'; !path.empty(); path.erase(0, path.find('/') + 1)) {
            if (!findChild(path.substr(0, path.find('/')))) {
                return false;
            }
            into();
        }
        return true;
    }

private:
    const ElementPosition& at(int index) { return markup_.at(index); }

    std::string cut(int from, int to) const {
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
        for (std::size_t i = 0; i < text.size(); ++i) {
            result += text[i];
            for (const auto& [entity, character] : entities) {
                if (text.compare(i, entity.size(), entity) == 0) {
                    result.back() = character;
                    i += entity.size() - 1;
                    break;
                }
            }
        }
        return result;
    }

    reference::Markup markup_;
    int parent_ = 0;
    int main_ = 0;
    int child_ = 0;
};

} // namespace veldtrim::fuzz
