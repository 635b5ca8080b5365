#include "sample/zelqSampleTexts.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "sample/zelqRandom.h"

namespace {

constexpr std::array<std::string_view, 14> kActions{
    "Process", "Open", "Close", "Check",  "Queue",  "Send",     "Receive",
    "Convert", "Lock", "Free",  "Attach", "Update", "Dispatch", "Restart"};

constexpr std::array<std::string_view, 11> kSubjects{"Job",      "Queue", "Session", "Buffer",
                                                     "Resource", "Spool", "Channel", "Table",
                                                     "Page",     "Timer", "Node"};

// None, then the most usual first.
constexpr std::array<std::string_view, 9> kArguments{"",
                                                     "(int)",
                                                     "(const char*, unsigned)",
                                                     "(void)",
                                                     "(unsigned long, const Request&)",
                                                     "(Job*, int, bool)",
                                                     "(void (*)(int), void*)",
                                                     "(const std::string&)",
                                                     "(std::uint32_t, std::uint32_t)"};

constexpr std::size_t kFunctionCount = 120;
static_assert(kFunctionCount <= kActions.size() * kSubjects.size());

constexpr std::array<std::string_view, 14> kSentences{
    "job queued for device LP02, copies",   "JOB ACCEPTED BY SERVER SRV1 AFTER",
    "open file /spool/out/report.dat size", "retry limit reached, last return code",
    "SESSION ENDED BY OPERATOR, DURATION",  "user OPERATOR1 signed on from terminal",
    "resource table rebuilt, entries",      "NO ANSWER FROM NODE EAST4, PROBE",
    "page formatted, bytes left in buffer", "lock held by another thread, waited ms",
    "DEVICE LP07 OUT OF PAPER, TRAY",       "configuration read, section Spooling, line",
    "channel reset, frames lost",           "CHECKPOINT WRITTEN, RECORDS"};

struct EbcdicRun {
    char first;
    char last;
    std::uint8_t code;
};

constexpr std::array kEbcdicRuns{EbcdicRun{'a', 'i', 0x81}, EbcdicRun{'j', 'r', 0x91},
                                 EbcdicRun{'s', 'z', 0xA2}, EbcdicRun{'A', 'I', 0xC1},
                                 EbcdicRun{'J', 'R', 0xD1}, EbcdicRun{'S', 'Z', 0xE2},
                                 EbcdicRun{'0', '9', 0xF0}, EbcdicRun{',', ',', 0x6B},
                                 EbcdicRun{'.', '.', 0x4B}, EbcdicRun{'/', '/', 0x61}};

constexpr std::byte toEbcdic(char c) {
    for (const EbcdicRun& run : kEbcdicRuns) {
        if (c >= run.first && c <= run.last) {
            return static_cast<std::byte>(run.code + (c - run.first));
        }
    }
    return std::byte{0x40};  // a blank
}

}  // namespace

std::vector<zelqSampleFunction> zelqSampleFunction::all() {
    std::vector<zelqSampleFunction> functions;
    functions.reserve(kFunctionCount);
    for (std::size_t i = 0; i < kFunctionCount; ++i) {
        // 14 and 11 have no common factor, so no pair of words comes twice.
        std::string name(kActions[i % kActions.size()]);
        name += kSubjects[i % kSubjects.size()];
        std::string signature = name;
        signature += kArguments[(i + 1) % kArguments.size()];
        functions.push_back({.name = std::move(name), .signature = std::move(signature)});
    }
    return functions;
}

zelqSampleTexts::zelqSampleTexts(zelqRandom& random) {
    constexpr std::size_t kLines = 200;
    std::string text;
    for (std::size_t i = 0; i < kLines || text.size() < lineStarts_.back() + kLongestText; ++i) {
        if (i < kLines) {
            lineStarts_.push_back(text.size());
        }
        text += kSentences[random.below(kSentences.size())];
        text += ' ' + std::to_string(random.below(20000)) + ' ';
    }
    for (const char c : text) {
        ascii_.push_back(static_cast<std::byte>(c));
        ebcdic_.push_back(toEbcdic(c));
    }
}

std::span<const std::byte> zelqSampleTexts::pick(Encoding encoding, std::size_t size,
                                                 zelqRandom& random) const {
    const std::size_t start =
        lineStarts_[random.below(static_cast<std::uint32_t>(lineStarts_.size()))];
    return std::span(encoding == Encoding::Ascii ? ascii_ : ebcdic_).subspan(start, size);
}
