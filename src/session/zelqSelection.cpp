#include "session/zelqSelection.h"

#include <algorithm>
#include <array>
#include <utility>

#include <re2/re2.h>

#include "log/zelqLatin1.h"

namespace {

constexpr std::size_t kLongestGlob = 1000;

/// One character of a regular expression that stands for itself.
std::string literal(char character) {
    return re2::RE2::QuoteMeta({&character, 1});
}

/// The class that begins at "[", as a regular expression; empty if it does not end. `at` is left at
/// its last character.
std::string classAt(std::string_view glob, std::size_t& at) {
    const bool negated = at + 1 < glob.size() && (glob[at + 1] == '!' || glob[at + 1] == '^');
    const std::size_t first = at + (negated ? 2 : 1);
    const std::size_t end = glob.find(']', first + 1);  // a "]" that comes first is a member
    if (first >= glob.size() || end == std::string_view::npos) {
        return {};
    }
    std::string expression = negated ? "[^" : "[";
    for (const char member : glob.substr(first, end - first)) {
        expression += member == '-' ? "-" : literal(member);
    }
    at = end;
    return expression + ']';
}

/// A glob as a regular expression, which needs no more than linear time.
std::string expressionOf(std::string_view glob) {
    std::string expression;
    for (std::size_t at = 0; at < glob.size(); ++at) {
        switch (glob[at]) {
            case '*':
                expression += ".*";
                break;
            case '?':
                expression += '.';
                break;
            case '[':
                if (const std::string members = classAt(glob, at); !members.empty()) {
                    expression += members;
                } else {
                    expression += literal('[');
                }
                break;
            case '\\':
                at += at + 1 < glob.size() ? 1 : 0;
                [[fallthrough]];
            default:
                expression += literal(glob[at]);
        }
    }
    return expression;
}

zelqStatus unknownName(std::string_view name, std::string_view known) {
    return zelqStatus::failure(std::errc::invalid_argument,
                               std::string("'").append(name).append("' is none of ").append(known));
}

}  // namespace

zelqStatus zelqSelection::addType(std::string_view name) {
    Types types = types_.value_or(Types());
    if (name == "error") {
        types.known.showError = true;
    } else if (name == "trace") {
        types.known.showTrace = true;
    } else if (name == "message") {
        types.known.showMessage = true;
    } else if (name == "unknown") {
        types.showUnknown = true;
    } else {
        return unknownName(name, "error, trace, message, unknown");
    }
    types_ = types;
    return {};
}

zelqStatus zelqSelection::addNumbers(zelqFilterKind kind, std::string_view list) {
    zelqNumberRanges ranges;
    if (const auto known = numbers_.find(kind); known != numbers_.end()) {
        ranges = known->second;
    }
    zelqStatus status = ranges.add(list);
    if (status.ok()) {
        numbers_[kind] = std::move(ranges);
    }
    return status;
}

zelqStatus zelqSelection::addDetectPointType(std::string_view name) {
    using Names = std::pair<std::string_view, std::string_view>;
    static constexpr std::array kNames{Names{"entry", "Entry"}, Names{"exit", "Exit"},
                                       Names{"api-call", "API Call"}, Names{"debug", "DEBUG"},
                                       Names{"none", ""}};
    const auto* const known = std::ranges::find(kNames, name, &Names::first);
    if (known == kNames.end()) {
        return unknownName(name, "entry, exit, api-call, debug, none");
    }
    detectPointTypes_.insert(known->second);
    return {};
}

zelqStatus zelqSelection::addFunction(std::string_view glob, bool matchCase) {
    const auto [bytes, unknown] = zelqLatin1::fromUtf8(glob);
    if (unknown) {
        return zelqStatus::failure(std::errc::invalid_argument,
                                   "character " + std::to_string(*unknown + 1) +
                                       ": logs hold no characters but those of Latin-1");
    }
    if (bytes.size() > kLongestGlob) {
        return zelqStatus::failure(
            std::errc::invalid_argument,
            "the glob has more than " + std::to_string(kLongestGlob) + " characters");
    }
    re2::RE2::Options options;
    options.set_encoding(re2::RE2::Options::EncodingLatin1);
    options.set_log_errors(false);
    options.set_never_capture(true);
    options.set_dot_nl(true);
    options.set_case_sensitive(matchCase);
    auto expression = std::make_shared<const re2::RE2>(expressionOf(bytes), options);
    if (!expression->ok()) {
        return zelqStatus::failure(std::errc::invalid_argument,
                                   std::string("'").append(glob) +
                                       "' is no glob: " + zelqLatin1::toUtf8(expression->error()));
    }
    functions_.push_back(std::move(expression));
    return {};
}

zelqStatus zelqSelection::addPattern(const zelqSearchPattern::Query& query,
                                     const zelqRecordMatcher::LocaleTexts& texts) {
    auto pattern = std::make_shared<const zelqSearchPattern>(query);
    if (pattern->status().ok()) {
        patterns_.emplace_back(pattern, texts);
    }
    return pattern->status();
}

bool zelqSelection::isEverything() const noexcept {
    return times_.isEverything() && !types_ && numbers_.empty() && detectPointTypes_.empty() &&
           functions_.empty() && patterns_.empty() && !inverted_;
}

bool zelqSelection::accepts(const zelqBCnrObject& record) {
    return meetsAll(record) != inverted_;
}

bool zelqSelection::meetsAll(const zelqBCnrObject& record) {
    const bool hasType = !types_ || types_->known.matcher()(record) ||
                         (types_->showUnknown && record.icon() == zelqRecordIcon::Unknown);
    return hasType && times_.contains(record) &&
           std::ranges::all_of(
               numbers_,
               [&record](const auto& wanted) {
                   return wanted.second.contains(zelqValueTest::valueOf(wanted.first, record));
               }) &&
           (detectPointTypes_.empty() || detectPointTypes_.contains(record.detectPointType())) &&
           (functions_.empty() || hasFunction(record)) &&
           std::ranges::all_of(patterns_,
                               [&record](zelqRecordMatcher& one) { return one.matches(record); });
}

bool zelqSelection::hasFunction(const zelqBCnrObject& record) {
    name_.clear();
    record.function().appendTo(name_);
    return std::ranges::any_of(functions_, [this](const auto& expression) {
        return expression->Match(name_, 0, name_.size(), re2::RE2::ANCHOR_BOTH, nullptr, 0);
    });
}
