/// The rules of XML documents once more, as simple as possible: recursive, character by character
/// and slow. The judge of the real parser on small documents.
#pragma once

#include "veldtrim/cmarkup_stl.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace veldtrim::reference {

struct Token {
    std::string text{}; ///< without quotes
    bool quoted = false;
    int left = 0; ///< offset of `text`
    int next = 0; ///< where the search for the next token begins

    /// Whether the token is one of these characters and not quoted, or begins with one.
    [[nodiscard]] bool isAny(const std::string& characters) const {
        return !quoted && !text.empty() && characters.find(text[0]) != std::string::npos;
    }
};

class Markup {
public:
    explicit Markup(std::string document) : text(std::move(document)), elements(1) {
        const int root = text.empty() ? 0 : parse(0);
        ok = root > 0;
        if (!ok) {
            elements.assign(1, ElementPosition());
        }
        elements[0].firstChild = std::max(root, 0);
    }

    bool ok = false;
    std::string error;
    std::string text;
    std::vector<ElementPosition> elements;

    ElementPosition& at(int element) { return elements[static_cast<std::size_t>(element)]; }

    /// Value of the attribute as written; empty if the element does not have it.
    std::string attribute(int element, const std::string& name) {
        Token token{.next = at(element).startLeft + 1};
        for (int number = 0, matched = 0; next(token) && !token.isAny(">/"); ++number) {
            if (matched != 0 && number == matched + 2) {
                return token.quoted ? token.text : "";
            }
            if (matched == 0 && number > 0 && !token.quoted && !token.isAny("=")) {
                if (name.empty()) {
                    return token.text;
                }
                matched = matches(token, name) ? number : 0;
            }
        }
        return "";
    }

    /// The first token of the element's start tag: its name as written.
    Token nameOf(int element) {
        Token token{.next = at(element).startLeft + 1};
        next(token);
        return token;
    }

    /// Whether a search for `name` finds what the token names.
    static bool matches(const Token& token, const std::string& name) {
        const std::string& written = token.text;
        const auto sameLetter = [](unsigned char a, unsigned char b) {
            return std::tolower(a) == std::tolower(b);
        };
        return written.size() <= name.size() &&
               std::equal(written.begin(), written.end(), name.begin(), sameLetter) &&
               (written.size() == name.size() ||
                std::string(" =/[").find(name[written.size()]) != std::string::npos);
    }

    /// Moves to the next token; false at the end of the text.
    bool next(Token& token) const {
        const auto left = text.find_first_not_of(" \t\n\r", static_cast<std::size_t>(token.next));
        if (left == std::string::npos) {
            return false;
        }
        const std::size_t quote = text[left] == '"' || text[left] == '\'' ? 1 : 0;
        const std::size_t end =
            quote == 1 ? text.find(text[left], left + 1)
                       : std::max(text.find_first_of(" \t\n\r<>=\\/?!", left), left + 1);
        const std::size_t begin = left + quote;
        token = {text.substr(begin, end - begin), quote == 1, static_cast<int>(begin),
                 static_cast<int>(std::min(end, text.size() - quote) + quote)};
        return true;
    }

    /// Offset of the first `wanted` from `from` on, or -1.
    [[nodiscard]] int find(const std::string& wanted, int from) const {
        return static_cast<int>(text.find(wanted, static_cast<std::size_t>(from)));
    }

private:
    int fail(const std::string& message) {
        error = message;
        return -1;
    }

    /// Index of the next element in `parent`, 0 if an end tag comes first, or -1 after an error.
    int parse(int parent) {
        const int self = static_cast<int>(elements.size());
        elements.emplace_back().parent = parent;
        Token token;
        for (int scan = at(parent).endLeft; token.text.empty();) {
            const int open = find("<", scan);
            if (open < 0) {
                return fail("Element tag not found");
            }
            at(self).startLeft = at(parent).endLeft = open;
            token.next = open + 1;
            if (!next(token) || token.quoted) {
                return fail(token.quoted ? "Tag starts with quote" : "Abrupt end within tag");
            }
            if (token.isAny("/")) {
                elements.pop_back();
                return 0;
            }
            if (token.isAny("!?")) {
                token = {};
                scan = afterNode(open);
                if (scan < 0) {
                    return fail("Invalid node");
                }
            }
        }
        const int close = find(">", token.next);
        if (close < 0) {
            return fail("End of tag not found");
        }
        at(self).startRight = at(self).endRight = close;
        if (text[static_cast<std::size_t>(close) - 1] == '/') {
            at(self).endLeft = close - 1;
            return self;
        }
        at(self).endLeft = close + 1;
        for (int last = 0, child = 0; (child = parse(self)) != 0; last = child) {
            if (child < 0) {
                return -1;
            }
            (last == 0 ? at(self).firstChild : at(last).nextSibling) = child;
            at(self).endLeft = at(child).endRight + 1;
        }
        return parseEndTag(self, token.text);
    }

    int parseEndTag(int self, const std::string& name) {
        Token token{.next = at(self).endLeft + 1};
        next(token); // the "/"
        for (bool isName = true; next(token); isName = false) {
            if (isName && !token.quoted && !matches(token, name)) {
                return fail("End tag does not correspond to " + name);
            }
            if (token.isAny(">")) {
                at(self).endRight = token.left;
                return self;
            }
        }
        return fail("End tag not completed for element " + name);
    }

    /// Offset after the node that begins at `open`, or -1 if there is none.
    [[nodiscard]] int afterNode(int open) const {
        const std::string start = text.substr(static_cast<std::size_t>(open) + 1, 2);
        if (start.size() < 2 || (start[0] != '?' && start[0] != '!')) {
            return -1;
        }
        if (start[0] == '?' || start[1] == '[' || start[1] == '-') {
            const std::string end = start[0] == '?' ? "?>" : start[1] == '[' ? "]]>" : "-->";
            const int found = find(end, open);
            return found < 0 ? -1 : found + static_cast<int>(end.size());
        }
        Token token{.next = open};
        for (int depth = 0; next(token);) {
            depth += token.isAny("[") ? 1 : token.isAny("]") ? -1 : 0;
            if (token.isAny(">") && depth == 0) {
                return token.next;
            }
        }
        return -1;
    }
};

} // namespace veldtrim::reference
