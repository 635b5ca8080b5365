#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "log/zelqMemory.h"
#include "log/zelqMemoryLimit.h"

namespace {

constexpr std::size_t kNoLimit = SIZE_MAX;

struct Case {
    const char* what;
    const char* groups;                        ///< /proc/self/cgroup
    std::map<std::string, std::string> files;  ///< below /sys/fs/cgroup
    std::size_t left;
};

TEST(Heap, LeavesSomeMemoryToOthers) {
    EXPECT_TRUE(zelqHeap::has(zelqHeap::available() / 2));
    EXPECT_FALSE(zelqHeap::has(zelqHeap::available()));
}

TEST(Heap, HasNoMoreThanTheProcessMayTake) {
    constexpr std::size_t kMost = std::size_t{3} << 30;
    std::ifstream statm("/proc/self/statm");
    std::size_t pages = 0;
    statm >> pages;
    for (const int which : {RLIMIT_AS, RLIMIT_DATA}) {
        rlimit before{};
        ASSERT_EQ(::getrlimit(which, &before), 0);
        const rlimit limit{pages * 4096 + kMost, before.rlim_max};
        ASSERT_EQ(::setrlimit(which, &limit), 0);
        const std::size_t left = zelqMemoryLimit::leftOfProcess();
        const std::size_t available = zelqHeap::available();
        ::setrlimit(which, &before);
        EXPECT_GT(left, kMost / 2);
        EXPECT_LE(available, left + (std::size_t{1} << 20));
        if (which == RLIMIT_AS) {
            EXPECT_LE(left, kMost);
        }
    }
    EXPECT_EQ(zelqMemoryLimit::leftOfProcess(), kNoLimit);
}

TEST(MemoryLimit, IsWhatTheTightestGroupLeaves) {
    const Case cases[]{
        {"no groups at all", "", {}, kNoLimit},
        {"version 2 without a limit",
         "0::/a\n",
         {{"a/memory.max", "max"}, {"a/memory.current", "5"}},
         kNoLimit},
        {"file contents can be given up",
         "0::/a\n",
         {{"a/memory.max", "1000"},
          {"a/memory.current", "900"},
          {"a/memory.stat", "anon 1\ninactive_file 200\nactive_file 30\nshmem 7\n"}},
         330},
        {"a group above is tighter",
         "0::/a/b/c\n",
         {{"a/b/memory.max", "1000"},
          {"a/b/memory.current", "1"},
          {"a/memory.max", "100"},
          {"a/memory.current", "40"}},
         60},
        {"more in use than the limit",
         "0::/\n",
         {{"memory.max", "10"}, {"memory.current", "40"}},
         0},
        {"version 1 beside version 2",
         "3:cpuset:/\n2:cpu,memory:/x/y\n0::/\n",
         {{"memory/x/memory.limit_in_bytes", "500"},
          {"memory/x/memory.usage_in_bytes", "300"},
          {"memory/x/memory.stat", "inactive_file 99\ntotal_inactive_file 10\n"},
          {"unified/memory.max", "450"},
          {"unified/memory.current", "40"}},
         210},
        {"a container's path is one of the system outside",
         "0::/../outside\n",
         {{"memory.max", "70"}, {"memory.current", "20"}},
         50},
        {"damaged files", "nonsense\n:::\n0::/a", {{"a/memory.max", "x"}}, kNoLimit},
    };
    for (const auto& [what, groups, files, left] : cases) {
        const std::filesystem::path root = testing::TempDir() + "memory_limit";
        std::filesystem::remove_all(root);
        const auto write = [&root](const std::string& name, const std::string& text) {
            std::filesystem::create_directories((root / name).parent_path());
            std::ofstream(root / name) << text;
        };
        write("proc/self/cgroup", groups);
        for (const auto& [name, text] : files) {
            write("sys/fs/cgroup/" + name, text);
        }
        EXPECT_EQ(zelqMemoryLimit::left(root.string()), left) << what;
        std::filesystem::remove_all(root);
    }
}

}  // namespace
