#include "attribute_search.h"

namespace veldtrim {
namespace {

// At most one mark in this many bytes.
constexpr std::int32_t markDistance = 64;

// Programs ask for a handful of names; whoever asks for more starts over.
constexpr std::size_t mostNames = 32;

enum class Step : std::uint8_t { GoOn, Found, Nothing };

/// Looks at the token in `span`, before any name has matched. When the name matches, looks at the
/// two tokens after it, which settle the search: the second must be quoted.
inline Step look(TokenSpan& span, std::string_view name, bool isTagName) {
    if (span.isString) {
        return Step::GoOn;
    }
    const char first = span.first();
    if (first == '>' || first == '/') {
        return Step::Nothing;
    }
    if (first == '=' || isTagName) {
        return Step::GoOn;
    }
    if (name.empty()) {
        return Step::Found;
    }
    if (!nameMatches(span, name)) {
        return Step::GoOn;
    }
    if (!nextToken(span) || (!span.isString && (span.first() == '>' || span.first() == '/'))) {
        return Step::Nothing;
    }
    return nextToken(span) && span.isString ? Step::Found : Step::Nothing;
}

} // namespace

bool AttributeSearch::find(TokenSpan& span, std::int32_t tagEnd, std::string_view name) {
    // Only a quoted token can cross the tag's end; searching a little way beyond it costs little.
    const std::int64_t nearEnd = std::int64_t{tagEnd} + markDistance;
    for (bool isTagName = true; nextToken(span); isTagName = false) {
        const Step step = look(span, name, isTagName);
        if (step != Step::GoOn) {
            return step == Step::Found;
        }
        if (span.next > nearEnd) {
            return findMarked(span, name, marksOf(name));
        }
    }
    return false;
}

AttributeSearch::Marks& AttributeSearch::marksOf(std::string_view name) {
    const auto known = marksByName_.find(name);
    if (known != marksByName_.end()) {
        return known->second;
    }
    if (marksByName_.size() >= mostNames) {
        marksByName_.clear();
    }
    return marksByName_[std::string(name)];
}

bool AttributeSearch::findMarked(TokenSpan& span, std::string_view name, Marks& marks) {
    passed_.clear();
    Outcome outcome;
    std::int32_t block = span.next / markDistance;
    while (true) {
        // Searches that have met agree on the first token of every further block.
        if (span.next / markDistance != block) {
            block = span.next / markDistance;
            const auto mark = marks.find(span.next);
            if (mark != marks.end()) {
                outcome = mark->second;
                break;
            }
            passed_.push_back(span.next);
        }
        if (!nextToken(span)) {
            break;
        }
        const Step step = look(span, name, false);
        if (step != Step::GoOn) {
            outcome = {span.left, span.right, step == Step::Found};
            break;
        }
    }
    for (const std::int32_t offset : passed_) {
        marks.emplace_hint(marks.end(), offset, outcome);
    }
    span.left = outcome.left;
    span.right = outcome.right;
    return outcome.found;
}

} // namespace veldtrim
