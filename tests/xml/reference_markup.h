#pragma once

#include "veldtrim/cmarkup_stl.h"

#include <cctype>
#include <string>
#include <vector>

/// The document's rules once more, in the plainest form: recursive, character by character, without
/// a thought of speed. Judge of the real ones on small documents.
namespace veldtrim::reference {

struct Token {
    int left = 0;
    int right = -1;
    int next = 0;
    bool quoted = false;
};

class Markup {
public:
    explicit Markup(std::string document) : text(std::move(document)), elements(1) {
        ok = !text.empty() && (root = parse(0)) > 0;
        if (!ok) {
            elements.assign(1, ElementPosition());
        } else {
            elements[0].firstChild = root;
        }
    }

    bool ok = false;
    std::string error;
    std::string text;
    std::vector<ElementPosition> elements;

    /// Value of the attribute as written, or what an absent one gives: the empty text.
    std::string attribute(int element, const std::string& name) {
        Token token;
        token.next = elements[static_cast<std::size_t>(element)].startLeft + 1;
        int matched = 0;
        for (int number = 0; next(token); ++number) {
            if (token.quoted) {
                if (matched != 0 && number == matched + 2) {
                    return cut(token.left, token.right);
                }
                continue;
            }
            const char first = get(token.left);
            if (first == '>' || first == '/') {
                return "";
            }
            if (first == '=' || matched != 0 || number == 0) {
                continue;
            }
            if (name.empty()) {
                return cut(token.left, token.right);
            }
            if (matches(token, name)) {
                matched = number;
            }
        }
        return "";
    }

    /// Name of the element as written.
    std::string name(int element) const {
        const Token token = nameToken(element);
        return cut(token.left, token.right);
    }

    /// Whether a search for `name` finds the element.
    bool isNamed(int element, const std::string& name) const {
        return matches(nameToken(element), name);
    }

private:
    int root = 0;

    Token nameToken(int element) const {
        Token token;
        token.next = elements[static_cast<std::size_t>(element)].startLeft + 1;
        next(token);
        return token;
    }

    char get(int offset) const {
        const std::size_t place = static_cast<std::size_t>(offset);
        return place < text.size() ? text[place] : '\0';
    }

    int find(const std::string& wanted, int from) const {
        const std::size_t found = text.find(wanted, static_cast<std::size_t>(from));
        return found == std::string::npos ? -1 : static_cast<int>(found);
    }

    std::string cut(int from, int to) const {
        return to < from ? ""
                         : text.substr(static_cast<std::size_t>(from),
                                       static_cast<std::size_t>(to - from + 1));
    }

    bool next(Token& token) const {
        const std::string blanks = " \t\n\r";
        const std::string terminators = blanks + "<>=\\/?!";
        int now = token.next;
        token.quoted = false;
        while (get(now) != '\0' && blanks.find(get(now)) != std::string::npos) {
            ++now;
        }
        if (get(now) == '\0') {
            token.left = token.right = token.next = now;
            return false;
        }
        if (get(now) == '"' || get(now) == '\'') {
            token.quoted = true;
            token.left = now + 1;
            int end = token.left;
            while (get(end) != '\0' && get(end) != get(now)) {
                ++end;
            }
            token.right = end - 1;
            token.next = get(end) == '\0' ? end : end + 1;
            return true;
        }
        token.left = now;
        while (get(now) != '\0' && terminators.find(get(now)) == std::string::npos) {
            ++now;
        }
        now += now == token.left ? 1 : 0;
        token.right = now - 1;
        token.next = now;
        return true;
    }

    bool matches(const Token& token, const std::string& name) const {
        const std::string written = cut(token.left, token.right);
        for (std::size_t i = 0; i < written.size(); ++i) {
            if (i >= name.size() || std::tolower(static_cast<unsigned char>(written[i])) !=
                                        std::tolower(static_cast<unsigned char>(name[i]))) {
                return false;
            }
        }
        return written.size() == name.size() ||
               std::string(" =/[").find(name[written.size()]) != std::string::npos;
    }

    int fail(const std::string& message) {
        error = message;
        return -1;
    }

    int parse(int parent) {
        const int self = static_cast<int>(elements.size());
        elements.emplace_back();
        const auto slot = [&](int index) -> ElementPosition& {
            return elements[static_cast<std::size_t>(index)];
        };
        slot(self).parent = parent;
        std::string name;
        Token token;
        for (int scan = slot(parent).endLeft; name.empty();) {
            const int open = find("<", scan);
            if (open < 0) {
                return fail("Element tag not found");
            }
            slot(self).startLeft = slot(parent).endLeft = open;
            token.next = open + 1;
            if (!next(token)) {
                return fail("Abrupt end within tag");
            }
            if (token.quoted) {
                return fail("Tag starts with quote");
            }
            if (get(token.left) == '!' || get(token.left) == '?') {
                scan = afterNode(open);
                if (scan < 0) {
                    return fail("Invalid node");
                }
            } else if (get(token.left) == '/') {
                elements.pop_back();
                return 0;
            } else {
                name = cut(token.left, token.right);
            }
        }
        const int close = find(">", token.next);
        if (close < 0) {
            return fail("End of tag not found");
        }
        slot(self).startRight = close;
        if (get(close - 1) == '/') {
            slot(self).endLeft = close - 1;
            slot(self).endRight = close;
            return self;
        }
        slot(self).endLeft = close + 1;
        for (int last = 0, child = 0; (child = parse(self)) != 0; last = child) {
            if (child < 0) {
                return -1;
            }
            (last == 0 ? slot(self).firstChild : slot(last).nextSibling) = child;
            slot(self).endLeft = slot(child).endRight + 1;
        }
        const int end = find("<", slot(self).endLeft);
        if (end < 0) {
            return fail("End tag of " + name + " element not found");
        }
        slot(self).endLeft = end;
        token.next = end + 1;
        int number = 0;
        while (next(token)) {
            ++number;
            if (token.quoted) {
                continue;
            }
            if (number == 1 && get(token.left) != '/') {
                return fail("Expecting end tag of element " + name);
            }
            if (number == 2 && !matches(token, name)) {
                return fail("End tag does not correspond to " + name);
            }
            if (get(token.left) == '>') {
                if (number < 2) {
                    break;
                }
                slot(self).endRight = token.left;
                return self;
            }
        }
        return fail("End tag not completed for element " + name);
    }

    /// Offset after the node that opens at `open`, -1 when there is none.
    int afterNode(int open) const {
        const char kind = get(open + 1);
        const char second = kind == '\0' ? '\0' : get(open + 2);
        if (second == '\0' || (kind != '?' && kind != '!')) {
            return -1;
        }
        const std::string end = kind == '?'     ? "?>"
                                : second == '[' ? "]]>"
                                : second == '-' ? "-->"
                                                : "";
        if (!end.empty()) {
            const int found = find(end, open);
            return found < 0 ? -1 : found + static_cast<int>(end.size());
        }
        Token token;
        token.next = open;
        for (int depth = 0; next(token);) {
            const char first = token.quoted ? '\0' : get(token.left);
            depth += first == '[' ? 1 : first == ']' ? -1 : 0;
            if (first == '>' && depth == 0) {
                return token.next;
            }
        }
        return -1;
    }
};

} // namespace veldtrim::reference
