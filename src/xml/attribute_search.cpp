#include "attribute_search.h"

namespace veldtrim {
namespace {

// A search leaves at most one mark per block of this many bytes.
constexpr std::int32_t markDistance = 64;

// Programs ask for a few names. After this many, the marks of all names are dropped.
constexpr std::size_t mostNames = 32;

enum class Step : std::uint8_t { GoOn, Found, Nothing };

/// Looks at the token in `span`, before any name has matched. If the name matches, the two tokens
/// after it decide the search: the second one must be quoted.
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
    // Only a quoted token can cross the end of the tag. A short search beyond it costs little and
    // needs no marks.
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
        // Searches that have met find the same first token in every later block.
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
