#include "log/zelqMemoryLimit.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <limits>
#include <optional>
#include <string_view>

#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

/// What the files of a version's groups are called, and which lines of the last one count the
/// memory of file contents.
struct Version {
    const char* limit;
    const char* use;
    std::string_view inactive;
    std::string_view active;
};
constexpr Version kFirst{.limit = "memory.limit_in_bytes",
                         .use = "memory.usage_in_bytes",
                         .inactive = "total_inactive_file",
                         .active = "total_active_file"};
constexpr Version kSecond{.limit = "memory.max",
                          .use = "memory.current",
                          .inactive = "inactive_file",
                          .active = "active_file"};

/// The number that a file holds; none if it holds something else or is not there.
std::optional<std::uint64_t> number(const std::string& file) {
    std::ifstream stream(file);
    std::uint64_t value = 0;
    return stream >> value ? std::optional(value) : std::nullopt;
}

std::uint64_t fileContents(const std::string& group, const Version& version) {
    std::ifstream stream(group + "memory.stat");
    std::string name;
    std::uint64_t value = 0;
    std::uint64_t sum = 0;
    while (stream >> name >> value) {
        sum += name == version.inactive || name == version.active ? value : 0;
    }
    return sum;
}

/// What one group leaves; `group` ends with a slash.
std::size_t leftIn(const std::string& group, const Version& version) {
    const std::optional<std::uint64_t> limit = number(group + version.limit);
    const std::optional<std::uint64_t> use = number(group + version.use);
    if (!limit.has_value() || !use.has_value()) {
        return kNoLimit;
    }
    const std::uint64_t kept = *use - std::min(*use, fileContents(group, version));
    return *limit - std::min(*limit, kept);
}

/// What a group and those above it leave. Inside a container the group's path may be one of the
/// system outside; the container's own group is then the topmost one that is seen.
std::size_t leftFrom(const std::string& top, std::string path, const Version& version) {
    std::size_t left = kNoLimit;
    while (!path.empty()) {
        left = std::min(left, leftIn(top + path + (path.back() == '/' ? "" : "/"), version));
        path.resize(path == "/" ? 0 : std::max<std::size_t>(path.rfind('/'), 1));
    }
    return left;
}

/// What a limit of the process leaves of it; `pages` are in use.
std::size_t leftOf(const rlimit& limit, std::uint64_t pages) {
    const std::uint64_t used = pages * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
    return limit.rlim_cur == RLIM_INFINITY
               ? kNoLimit
               : limit.rlim_cur - std::min<rlim_t>(limit.rlim_cur, used);
}

}  // namespace

std::size_t zelqMemoryLimit::left(const std::string& root) {
    std::size_t left = kNoLimit;
    std::ifstream groups(root + "/proc/self/cgroup");
    std::string line;  // "number:controllers:/path"; version 2 has no controllers here
    while (std::getline(groups, line)) {
        const std::size_t colon = line.find(':');
        const std::size_t path = line.find(":/");
        if (path == std::string::npos) {
            continue;
        }
        const std::string top = root + "/sys/fs/cgroup";
        const std::string controllers = ',' + line.substr(colon + 1, path - colon - 1) + ',';
        if (path == colon + 1) {
            left = std::min(left, leftFrom(top, line.substr(path + 1), kSecond));
            left = std::min(left, leftFrom(top + "/unified", line.substr(path + 1), kSecond));
        } else if (controllers.find(",memory,") != std::string::npos) {
            left = std::min(left, leftFrom(top + "/memory", line.substr(path + 1), kFirst));
        }
    }
    return left;
}

std::size_t zelqMemoryLimit::leftOfProcess() {
    rlimit space{};
    rlimit data{};
    if (::getrlimit(RLIMIT_AS, &space) != 0 || ::getrlimit(RLIMIT_DATA, &data) != 0 ||
        (space.rlim_cur == RLIM_INFINITY && data.rlim_cur == RLIM_INFINITY)) {
        return kNoLimit;  // most processes have none, and need not ask further
    }
    std::ifstream file("/proc/self/statm");
    std::uint64_t size = 0;
    std::uint64_t use = 0;  // data and stack, the sixth number
    file >> size;
    for (int number = 2; number <= 6; ++number) {
        file >> use;
    }
    return file ? std::min(leftOf(space, size), leftOf(data, use)) : kNoLimit;
}
