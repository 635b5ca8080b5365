#include "log/zelqParallel.h"

#include <numeric>
#include <thread>

namespace {

/// Below this a thread costs more than it saves.
constexpr std::size_t kFew = 200'000;

}  // namespace

std::size_t zelqParallel::partsOf(std::size_t count) noexcept {
    static const std::size_t processors =
        std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMostParts);
    return count < kFew ? 1 : processors;
}

zelqParallel::Failures zelqParallel::run(
    std::size_t parts, const std::function<void(std::size_t part)>& work) noexcept {
    Failures failures;
    const auto attempt = [&failures, &work](std::size_t part) noexcept {
        try {
            work(part);
        } catch (...) {
            failures[part] = std::current_exception();
        }
    };
    {
        std::array<std::jthread, kMostParts> threads;
        for (std::size_t part = 1; part < parts; ++part) {
            try {
                threads[part] = std::jthread([&attempt, part] { attempt(part); });
            } catch (const std::exception&) {  // no memory or no thread for it
                attempt(part);
            }
        }
        attempt(0);
    }
    return failures;
}

void zelqParallel::rethrow(const Failures& failures) {
    for (const std::exception_ptr& failure : failures) {
        if (failure != nullptr) {
            std::rethrow_exception(failure);
        }
    }
}

zelqParallel::Records zelqParallel::joined(std::vector<Part>& parts) {
    Records all = std::move(parts.front().records);
    const std::size_t size = std::accumulate(
        parts.begin() + 1, parts.end(), all.size(),
        [](std::size_t sum, const Part& part) { return sum + part.records.size(); });
    zelqHeap::require((size - all.size()) * sizeof(void*));
    all.reserve(size);
    for (auto part = parts.begin() + 1; part != parts.end(); ++part) {
        all.insert(all.end(), part->records.begin(), part->records.end());
        part->records = Records();
    }
    return all;
}
