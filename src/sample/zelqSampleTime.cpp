#include "sample/zelqSampleTime.h"

#include <array>
#include <ctime>

std::optional<zelqSampleTime::Time> zelqSampleTime::parse(const std::string& text) {
    for (const char* const form : {"%Y-%m-%d", "%Y-%m-%dT%H:%M:%S"}) {
        std::tm time{};
        if (::strptime(text.c_str(), form, &time) == nullptr) {
            continue;
        }
        // strptime() takes forms that are not exact and timegm() turns a day that does not exist
        // into another one: in both cases the time is no longer written as it was given.
        const std::time_t seconds = ::timegm(&time);
        std::array<char, 32> exact{};
        std::strftime(exact.data(), exact.size(), form, &time);
        if (text == exact.data()) {
            return zelqSampleTime::Time(std::chrono::seconds(seconds));
        }
    }
    return std::nullopt;
}
