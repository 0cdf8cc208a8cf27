/// The rules of XML documents once more, as simple as possible: recursive, character by character
/// and slow. The judge of the real parser on small documents.
#pragma once

#include "veldtrim/cmarkup_stl.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

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

    /// Value of the attribute as written; empty if the element does not have it.
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

    char get(int offset) const { return text.c_str()[offset]; }

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
        const int size = static_cast<int>(text.size());
        const auto place = [&](std::size_t found) {
            return found == std::string::npos ? size : static_cast<int>(found);
        };
        const auto left = text.find_first_not_of(" \t\n\r", static_cast<std::size_t>(token.next));
        token.left = token.right = token.next = place(left);
        token.quoted = get(token.left) == '"' || get(token.left) == '\'';
        if (left == std::string::npos) {
            return false;
        }
        if (token.quoted) {
            token.next = std::min(place(text.find(text[left], left + 1)) + 1, size);
            token.right = place(text.find(text[left], left + 1)) - 1;
            ++token.left;
        } else {
            token.next = place(text.find_first_of(" \t\n\r<>=\\/?!", left));
            token.next += token.next == token.left ? 1 : 0;
            token.right = token.next - 1;
        }
        return true;
    }

    bool matches(const Token& token, const std::string& name) const {
        const std::string written = cut(token.left, token.right);
        const auto sameLetter = [](unsigned char a, unsigned char b) {
            return std::tolower(a) == std::tolower(b);
        };
        return written.size() <= name.size() &&
               std::equal(written.begin(), written.end(), name.begin(), sameLetter) &&
               (written.size() == name.size() ||
                std::string(" =/[").find(name[written.size()]) != std::string::npos);
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

    /// Offset after the node that begins at `open`, or -1 if there is none.
    int afterNode(int open) const {
        const char kind = get(open + 1);
        const char second = kind == '\0' ? '\0' : get(open + 2);
        if (second == '\0' || (kind != '?' && kind != '!')) {
            return -1;
        }
        if (kind == '?' || second == '[' || second == '-') {
            const std::string end = kind == '?' ? "?>" : second == '[' ? "]]>" : "-->";
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
