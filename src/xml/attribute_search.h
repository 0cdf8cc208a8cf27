/// The search for attributes in start tags.
#pragma once

#include "token_span.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {

/// Finds attributes in the start tags of one document, in time that is linear over all tags.
///
/// The search looks at tokens, and a quote that is not closed within its tag carries it beyond the
/// tag, possibly to the end of the document. With a million siblings of that kind, going the whole
/// way every time would take hours. But as long as no name has matched, what a search finds from a
/// token on depends only on where that token is, and searches that begin in different tags soon
/// meet on the same tokens. So the first search that goes far beyond its tag leaves marks on its
/// way, with what it found in the end, and later searches for the same name stop at the first mark.
class AttributeSearch {
public:
    /// Forgets all marks. Call it when the document changes.
    void reset() { marksByName_.clear(); }

    /// Moves `span` from after the "<" of a start tag to the value of the attribute `name`: the
    /// second token after one that matches the name, which must be quoted. With an empty name, to
    /// the name of the first attribute. False when there is none before a bare ">" or "/".
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

    std::map<std::string, Marks, std::less<>> marksByName_;
    std::vector<std::int32_t> passed_; ///< where the current search will leave marks
};

} // namespace veldtrim
