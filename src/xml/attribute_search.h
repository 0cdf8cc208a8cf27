#pragma once

#include "token_span.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {

/// Finds attributes in the start tags of one document, in time that stays linear over all tags.
///
/// The search looks at tokens, and a quote that is not closed within its tag carries it beyond the
/// tag, at worst to the end of the document. Were every such search to go the whole way, a million
/// siblings of that kind would take hours. But what a search finds from some token on depends on
/// the token's place alone as long as no name has matched, and searches that begin in different
/// tags soon run over the same tokens. So the first search that goes far beyond its tag leaves
/// marks on its way, with what it found in the end, and later ones for the same name stop at the
/// first mark.
class AttributeSearch {
public:
    /// Forgets all marks. To be called when the document changes.
    void reset() { marksByName.clear(); }

    /// Moves `span`, which stands after the "<" of a start tag, to the value of the attribute
    /// `name`: a quoted token that is second after a token that matches the name. With an empty
    /// name, to the name of the first attribute. False when there is none before a bare ">" or "/".
    ///
    /// `tagEnd` is the offset of the start tag's ">".
    bool find(TokenSpan& span, std::int32_t tagEnd, std::string_view name);

private:
    /// The place of a found token, or of nothing.
    struct Outcome {
        std::int32_t left = 0;
        std::int32_t right = -1;
        bool found = false;
    };
    using Marks = std::map<std::int32_t, Outcome>;

    Marks& marksOf(std::string_view name);
    bool findMarked(TokenSpan& span, std::string_view name, Marks& marks);

    std::map<std::string, Marks, std::less<>> marksByName;
    std::vector<std::int32_t> passed; ///< marks to be set by the search under way
};

} // namespace veldtrim
