#include "output/zelqSummaryText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <string_view>

#include "log/zelqUtf8.h"
#include "output/zelqIsoTime.h"
#include "output/zelqTerminalText.h"

namespace {

constexpr std::array<std::string_view, zelqLogSummary::kTypes.size()> kTypeNames{
    "Error", "Trace", "Message", "Unknown"};
constexpr std::size_t kErrors = 0;  ///< place of Error among the types
constexpr std::size_t kNumberWidth = 10;
constexpr std::size_t kShareWidth = 7;
constexpr std::size_t kBarWidth = 36;
constexpr std::size_t kListWidth = 38;
constexpr std::size_t kFewestLogCharacters = 12;

std::string atLeft(std::string text, std::size_t width) {
    const std::size_t length = zelqUtf8::length(text);
    text.append(length < width ? width - length : 0, ' ');
    return text;
}

std::string atRight(const std::string& text, std::size_t width) {
    std::string padded(text.size() < width ? width - text.size() : 0, ' ');
    padded += text;
    return padded;
}

std::string joined(std::initializer_list<std::string_view> texts) {
    std::string text;
    for (const std::string_view part : texts) {
        text += part;
    }
    return text;
}

std::string atRight(std::uint64_t number, std::size_t width) {
    return atRight(std::to_string(number), width);
}

/// What fits of a text; the rest is three dots.
std::string shortened(std::string text, std::size_t width) {
    if (zelqUtf8::length(text) <= width) {
        return text;
    }
    std::size_t end = 0;
    for (std::size_t length = 0; length + 3 < width; ++length) {
        end += std::max<std::size_t>(1, zelqUtf8::firstOf(std::string_view(text).substr(end)).size);
    }
    return text.substr(0, end) + "...";
}

std::string counted(std::uint64_t count, std::string_view one, std::string_view several) {
    return joined({std::to_string(count), " ", count == 1 ? one : several});
}

/// "23.3 %", to the nearest tenth.
std::string share(std::uint64_t part, std::uint64_t whole) {
    const auto tenths = static_cast<std::uint64_t>(
        whole == 0 ? 0.0 : 1000.0 * static_cast<double>(part) / static_cast<double>(whole) + 0.5);
    return joined({std::to_string(tenths / 10), ".", std::to_string(tenths % 10), " %"});
}

std::string timeText(std::int64_t time) {
    std::string text;
    zelqIsoTime::append(time, text);
    return text;
}

/// The two largest units of a time: "2 d 3 h", "5 min 12 s".
std::string duration(std::int64_t seconds) {
    struct Unit {
        std::int64_t seconds;
        std::string_view name;
    };
    constexpr std::array<Unit, 4> kUnits{{{86400, " d"}, {3600, " h"}, {60, " min"}, {1, " s"}}};
    std::string text;
    for (std::size_t i = 0; i < kUnits.size(); ++i) {
        const std::int64_t count = seconds / kUnits[i].seconds;
        seconds %= kUnits[i].seconds;
        if (count > 0) {
            text = joined({std::to_string(count), kUnits[i].name});
            if (i + 1 < kUnits.size() && seconds / kUnits[i + 1].seconds > 0) {
                text += joined(
                    {" ", std::to_string(seconds / kUnits[i + 1].seconds), kUnits[i + 1].name});
            }
            return text;
        }
    }
    return "0 s";
}

std::string findingsText(std::uint64_t findings) {
    return findings == 0
               ? "no damage"
               : joined({counted(findings, "finding", "findings"), " (see raslog check)"});
}

void appendTimes(const zelqShownSummary& summary, std::string& text) {
    if (summary.hasTimes) {
        text += joined({"  ", timeText(summary.first), " to ", timeText(summary.last), ", ",
                        duration(summary.last - summary.first),
                        "\n  Largest gap: ", duration(summary.gap.seconds)});
        text += summary.gap.exact ? joined({" after ", timeText(summary.gap.after)}) : " at most";
        const std::string minute = timeText(summary.minute.start);
        text += joined({"\n  Busiest minute: ", summary.minute.exact ? "" : "in the time from ",
                        summary.minute.exact ? minute.substr(0, minute.rfind(':')) : minute, ", ",
                        counted(summary.minute.entries, "entry", "entries"), "\n"});
    }
    if (summary.withoutDate > 0) {
        text += joined({"  Without a date that a calendar has: ",
                        counted(summary.withoutDate, "entry", "entries"), "\n"});
    }
}

void appendTypes(const zelqShownSummary& summary, std::string& text) {
    text += joined({"\n", atLeft("Type", kNumberWidth), atRight("Entries", kNumberWidth),
                    atRight("Share", kNumberWidth), "\n"});
    for (std::size_t i = 0; i < kTypeNames.size(); ++i) {
        text += joined({atLeft(std::string(kTypeNames[i]), kNumberWidth),
                        atRight(summary.types[i], kNumberWidth),
                        atRight(share(summary.types[i], summary.entries), kNumberWidth), "\n"});
    }
}

void appendBars(const zelqShownSummary& summary, std::string& text) {
    if (summary.bars.empty()) {
        return;
    }
    const std::uint64_t largest =
        std::ranges::max(summary.bars, {}, &zelqTimeProfile::Bar::entries).entries;
    const auto scaled = [](std::uint64_t part, std::uint64_t whole, std::size_t width) {
        const double exact =
            static_cast<double>(part) / static_cast<double>(whole) * static_cast<double>(width);
        return part == 0 ? std::size_t{0}
                         : static_cast<std::size_t>(std::max(1LL, std::llround(exact)));
    };
    text +=
        joined({"\n", atLeft(joined({"From, ", duration(summary.bars[0].seconds), " each"}), 19),
                atRight("Entries", kNumberWidth), atRight("Errors", kShareWidth + 2),
                "  # errors, = others\n"});
    for (const zelqTimeProfile::Bar& bar : summary.bars) {
        text += joined({timeText(bar.start), atRight(bar.entries, kNumberWidth)});
        if (bar.entries > 0) {
            const std::size_t length = scaled(bar.entries, largest, kBarWidth);
            const std::size_t errors = scaled(bar.errors, bar.entries, length);
            text += joined({atRight(share(bar.errors, bar.entries), kShareWidth + 2), "  "});
            text.append(errors, '#').append(length - errors, '=');
        }
        text += '\n';
    }
}

/// The lines of a list, its heading first.
template <typename Value>
std::vector<std::string> linesOf(const std::string& heading,
                                 const zelqShownSummary::List<Value>& list) {
    const auto line = [](std::string value, const std::string& entries) {
        constexpr std::size_t kValueWidth = kListWidth - kNumberWidth;
        return atLeft(shortened(std::move(value), kValueWidth), kValueWidth) +
               atRight(entries, kNumberWidth);
    };
    std::vector<std::string> lines{line(joined({heading, list.missing > 0 ? " (over " : " (",
                                                std::to_string(list.different), " different)"}),
                                        "Entries")};
    for (const auto& count : list.top) {
        std::string value;
        if constexpr (std::is_same_v<Value, std::string>) {
            zelqUtf8::appendLatin1(count.value, value);
            value = zelqTerminalText::escaped(value);
        } else {
            value = std::to_string(count.value);
        }
        lines.push_back(line(std::move(value), std::to_string(count.entries)));
    }
    return lines;
}

void appendBeside(const std::vector<std::string>& left, const std::vector<std::string>& right,
                  std::string& text) {
    const std::string none;
    text += '\n';
    for (std::size_t i = 0; i < std::max(left.size(), right.size()); ++i) {
        const std::string& atLeftSide = i < left.size() ? left[i] : none;
        text += i < right.size() ? joined({atLeft(atLeftSide, kListWidth), "    ", right[i]})
                                 : atLeftSide;
        text += '\n';
    }
}

void appendLists(const zelqShownSummary& summary, std::string& text) {
    if (summary.entries == 0) {
        return;
    }
    appendBeside(linesOf("Function", summary.functions), linesOf("PID", summary.pids), text);
    if (!summary.majorErrors.top.empty()) {
        appendBeside(linesOf("Major error", summary.majorErrors),
                     linesOf("Minor error", summary.minorErrors), text);
    }
    const std::uint64_t missing =
        std::max({summary.functions.missing, summary.pids.missing, summary.majorErrors.missing,
                  summary.minorErrors.missing});
    if (missing > 0) {
        text +=
            joined({"\nThere are too many different values to count each: counts in these "
                    "lists may lack ",
                    std::to_string(missing), ".\n"});
    }
}

void appendAll(const zelqShownSummary& summary, std::string& text) {
    text += joined({"  ", counted(summary.entries, "entry", "entries"), ", ",
                    counted(summary.bytes, "byte", "bytes"), ", ", findingsText(summary.findings),
                    "\n"});
    appendTimes(summary, text);
    appendTypes(summary, text);
    appendBars(summary, text);
    appendLists(summary, text);
}

}  // namespace

std::string zelqSummaryText::of(const zelqShownSummary& summary) {
    std::string text = zelqTerminalText::escaped(summary.log) + '\n';
    appendAll(summary, text);
    return text;
}

std::string zelqSummaryText::of(const std::vector<zelqShownSummary>& logs,
                                const zelqShownSummary& all) {
    std::size_t width = kFewestLogCharacters;
    for (const zelqShownSummary& log : logs) {
        width = std::max(width, zelqUtf8::length(zelqTerminalText::escaped(log.log)));
    }
    const auto line = [width](const std::string& log, const std::string& entries,
                              const std::string& errors, const std::string& damage,
                              const std::string& first, const std::string& last) {
        return joined({atLeft(log, width), atRight(entries, kNumberWidth),
                       atRight(errors, kShareWidth + 1), atRight(damage, kNumberWidth),
                       first.empty() ? "" : "  ", first, first.empty() ? "" : "  ", last, "\n"});
    };
    std::string text = line("Log", "Entries", "Errors", "Findings", "First              ", "Last");
    for (const zelqShownSummary& log : logs) {
        text +=
            line(zelqTerminalText::escaped(log.log), std::to_string(log.entries),
                 share(log.types[kErrors], log.entries), std::to_string(log.findings),
                 log.hasTimes ? timeText(log.first) : "", log.hasTimes ? timeText(log.last) : "");
    }
    text += joined({"\nAll ", counted(logs.size(), "log", "logs"), "\n"});
    appendAll(all, text);
    return text;
}
