#include "cli/zelqProgress.h"

#include <algorithm>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds kDelay{1000};
constexpr std::chrono::milliseconds kInterval{200};
constexpr std::string_view kWipe = "\x1B[K";

void write(const std::string& text) {
    // What cannot be shown is not missed.
    static_cast<void>(!::write(STDERR_FILENO, text.data(), text.size()));
}

}  // namespace

zelqProgress::zelqProgress(const std::vector<std::string>& logs, const std::string& output,
                           bool twice)
    : isOn_(::isatty(STDERR_FILENO) == 1 && (output != "-" || ::isatty(STDOUT_FILENO) == 0)),
      twice_(twice),
      next_(std::chrono::steady_clock::now() + kDelay) {
    for (const std::string& name : logs) {
        starts_.push_back(total_);
        struct stat file {};
        if (::stat(name.c_str(), &file) == 0 && S_ISREG(file.st_mode)) {
            total_ += static_cast<std::uint64_t>(file.st_size);
        } else {
            isTotalKnown_ = false;
        }
    }
}

zelqProgress::~zelqProgress() {
    if (isShown_) {
        write(std::string(kWipe));
    }
}

void zelqProgress::show(std::uint64_t done) {
    const auto now = std::chrono::steady_clock::now();
    if (now < next_) {
        return;
    }
    next_ = now + kInterval;
    isShown_ = true;
    const std::uint64_t all = std::max<std::uint64_t>(1, twice_ ? 2 * total_ : total_);
    std::string text(kWipe);
    text += isTotalKnown_ ? std::to_string(std::min<std::uint64_t>(100, done * 100 / all)) + " %"
                          : std::to_string(done >> 20U) + " MiB";
    text += '\r';
    write(text);
}
