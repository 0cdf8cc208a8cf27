/// Searches start tags for attributes.
#pragma once

#include "token_span.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {

/// Finds attributes in the start tags of one document. The time for all tags together is linear.
///
/// A search goes from token to token. If a quote is not closed within its tag, the search continues
/// beyond the tag, possibly to the end of the document; with a million such siblings, this would
/// take hours. However, before the name has matched, the outcome of a search depends only on the
/// position of its current token, and searches that begin in different tags soon meet at the same
/// token. Therefore, the first search that goes far beyond its tag leaves marks with its outcome on
/// the way, and later searches for the same name stop at the first mark.
class AttributeSearch {
public:
    /// Removes all marks. Must be called when the document changes.
    void reset() { marksByName_.clear(); }

    /// Moves `span` from after the "<" of a start tag to the value of the attribute `name`. The
    /// value is the second token after one that matches the name, and must be quoted. With an empty
    /// name, moves `span` to the name of the first attribute. Returns false if there is none before
    /// an unquoted ">" or "/".
    ///
    /// `tagEnd` is the offset of the ">" of the start tag.
    bool find(TokenSpan& span, std::int32_t tagEnd, std::string_view name);

private:
    /// The position of the token that was found, if any.
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
