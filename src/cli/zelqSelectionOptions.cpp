#include "cli/zelqSelectionOptions.h"

#include <array>
#include <stdexcept>

#include <CLI/CLI.hpp>

#include "output/zelqSearchTexts.h"

namespace {

constexpr const char* kGroup = "Select records";

struct NumberOption {
    zelqFilterKind kind;
    const char* name;
    const char* what;
};

constexpr std::array kNumberOptions{
    NumberOption{zelqFilterKind::Pid, "--pid", "PIDs"},
    NumberOption{zelqFilterKind::Tid, "--tid", "TIDs"},
    NumberOption{zelqFilterKind::MajorError, "--major", "Major errors"},
    NumberOption{zelqFilterKind::MinorError, "--minor", "Minor errors"},
    NumberOption{zelqFilterKind::DetectPoint, "--detect-point", "Detect points"},
};

void require(const zelqStatus& status, const std::string& option) {
    if (!status.ok()) {
        throw std::runtime_error(option + ": " + status.text);
    }
}

}  // namespace

void zelqSelectionOptions::addTo(CLI::App& command) {
    // One value each, or the logs after it would be taken for more of them.
    const auto add = [&command](const char* name, auto& values, const std::string& what,
                                const char* type) {
        return command.add_option(name, values, what)
            ->allow_extra_args(false)
            ->type_name(type)
            ->group(kGroup);
    };
    add("--from", from_,
        "Not before: a date (2026-11-21), a time of any day (14:05, 14:05:30) or both "
        "(2026-11-21T14:05)",
        "TIME");
    add("--to", to_,
        "Not after; a date is the whole day, a time without seconds the whole minute: --to 14:10",
        "TIME");
    add("--type", types_, "Types, as the window's filter groups them: --type error,trace",
        "{error,trace,message,unknown},...")
        ->delimiter(',');
    for (const NumberOption& option : kNumberOptions) {
        add(option.name, numbers_[option.kind],
            std::string(option.what) + ", each a number or a range: 1-10,42,0x80000001",
            "NUMBER,...");
    }
    add("--detect-point-type", detectPointTypes_,
        "Detect point types: --detect-point-type entry,exit",
        "{entry,exit,api-call,debug,none},...")
        ->delimiter(',');
    add("--function", functions_,
        "Functions whose name is like this: * is any text, ? a character, [a-f] one of these; "
        "given several times, any of them: --function 'Open*'",
        "GLOB");
    add("--match", texts_,
        "With this text in the function, another cell, or the data as ASCII or EBCDIC: --match "
        "timeout",
        "TEXT");
    add("--match-bytes", bytes_, "With these bytes in the data: --match-bytes \"C1 40 7E\"",
        "BYTES");
    add("--match-regex", expressions_,
        "With a match of this regular expression (RE2): --match-regex 'time.?out'", "RE");
    command
        .add_flag("-i,--ignore-case", ignoreCase_,
                  "Letters of --match, --match-regex and --function stand for both cases")
        ->group(kGroup);
    command.add_flag("--invert", invert_, "Select all other records: --type trace --invert")
        ->group(kGroup);
}

zelqSelection zelqSelectionOptions::selection(const zelqLocaleText& locale) const {
    zelqSelection selection;
    if (from_) {
        require(selection.setFrom(*from_), "--from");
    }
    if (to_) {
        require(selection.setTo(*to_), "--to");
    }
    for (const std::string& type : types_) {
        require(selection.addType(type), "--type");
    }
    for (const NumberOption& option : kNumberOptions) {
        for (const std::string& list : numbers_.at(option.kind)) {
            require(selection.addNumbers(option.kind, list), option.name);
        }
    }
    for (const std::string& type : detectPointTypes_) {
        require(selection.addDetectPointType(type), "--detect-point-type");
    }
    for (const std::string& glob : functions_) {
        require(selection.addFunction(glob, !ignoreCase_), "--function");
    }
    using Kind = zelqSearchPattern::Kind;
    const auto addPatterns = [&](Kind kind, const Values& patterns, const char* option) {
        for (const std::string& text : patterns) {
            require(selection.addPattern({.kind = kind, .text = text, .matchCase = !ignoreCase_},
                                         zelqSearchTexts::of(locale)),
                    option);
        }
    };
    addPatterns(Kind::Text, texts_, "--match");
    addPatterns(Kind::Bytes, bytes_, "--match-bytes");
    addPatterns(Kind::RegularExpression, expressions_, "--match-regex");
    selection.setInverted(invert_);
    return selection;
}
