#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <functional>
#include <span>
#include <stop_token>
#include <type_traits>
#include <utility>
#include <vector>

#include "log/zelqBCnrObject.h"
#include "log/zelqMemory.h"

/// Ends a piece of work that was asked to stop.
class zelqStopped : public std::exception {};

/// Walks over many records by several threads, each of which takes a range of them. Where a thread
/// cannot be started the caller does its part. Any thread. An exception of one of them comes out
/// when all have ended. What is called `logs` has size() records, and forEach(first, end, visit)
/// visits some of them.
class zelqParallel {
public:
    using Records = std::vector<zelqBCnrObject*>;
    using Span = std::span<zelqBCnrObject* const>;

    /// Walks look at `stop` every few thousand records and end with zelqStopped.
    explicit zelqParallel(std::stop_token stop = {}) : stop_(std::move(stop)) {}

    /// Throws zelqStopped if the work was asked to stop.
    void lookAtStop() const {
        if (stop_.stop_requested()) {
            throw zelqStopped();
        }
    }

    /// Ranges begin at multiples of this.
    static constexpr std::size_t kChunk = 16384;
    /// The number of ranges for so many records: 1 while they are few, at most kMostParts.
    [[nodiscard]] static std::size_t partsOf(std::size_t count) noexcept;
    static constexpr std::size_t kMostParts = 8;

    /// For each part from 0 on, on a thread each, `make(part)` returns what is then called with the
    /// first number and the end of one piece of the part's range of `count` after another.
    template <typename Make>
    void walk(std::size_t count, const Make& make) const {
        const auto walkPart = [this, count, &make](std::size_t part) {
            walkRange(count, part, make, [this] { lookAtStop(); });
        };
        rethrow(run(partsOf(count), std::cref(walkPart)));
    }
    /// The same for work that throws nothing, which is not stopped.
    template <typename Make>
    static void walkToEnd(std::size_t count, const Make& make) noexcept {
        const auto walkPart = [count, &make](std::size_t part) noexcept {
            walkRange(count, part, make, [] {});
        };
        run(partsOf(count), std::cref(walkPart));
    }
    /// Calls `visit(zelqBCnrObject&)` for each of the records.
    template <typename Visit>
    void forEach(Span records, const Visit& visit) const {
        walk(records.size(), [records, &visit](std::size_t /*part*/) {
            return [records, &visit](std::size_t first, std::size_t end) {
                for (zelqBCnrObject* const record : records.subspan(first, end - first)) {
                    visit(*record);
                }
            };
        });
    }
    template <typename Logs, typename Visit>
    requires(!std::is_convertible_v<const Logs&, Span>) void forEach(const Logs& logs,
                                                                     const Visit& visit) const {
        walk(logs.size(), [&logs, &visit](std::size_t /*part*/) {
            return [&logs, &visit](std::size_t first, std::size_t end) {
                logs.forEach(first, end, visit);
            };
        });
    }
    /// The same for what throws nothing, which is not stopped.
    template <typename Visit>
    static void forEachToEnd(Span records, const Visit& visit) noexcept {
        walkToEnd(records.size(), [records, &visit](std::size_t /*part*/) {
            return [records, &visit](std::size_t first, std::size_t end) {
                std::for_each(records.data() + first, records.data() + end,
                              [&visit](zelqBCnrObject* record) { visit(*record); });
            };
        });
    }
    template <typename Logs, typename Visit>
    requires(!std::is_convertible_v<const Logs&, Span>) static void forEachToEnd(
        const Logs& logs, const Visit& visit) noexcept {
        walkToEnd(logs.size(), [&logs, &visit](std::size_t /*part*/) {
            return [&logs, &visit](std::size_t first, std::size_t end) {
                logs.forEach(first, end, visit);
            };
        });
    }
    /// Those for which `test(row, record)` is true, in their order. Throws std::bad_alloc.
    template <typename Test>
    [[nodiscard]] Records select(Span records, const Test& test) const {
        return gather(records.size(),
                      [records, &test](std::size_t first, std::size_t end, Records& found) {
                          for (std::size_t row = first; row < end; ++row) {
                              if (test(row, *records[row])) {
                                  found.push_back(records[row]);
                              }
                          }
                      });
    }
    /// Those for which `test(record)` is true.
    template <typename Logs, typename Test>
    requires(!std::is_convertible_v<const Logs&, Span>) [[nodiscard]] Records
        select(const Logs& logs, const Test& test) const {
        return gather(logs.size(),
                      [&logs, &test](std::size_t first, std::size_t end, Records& found) {
                          logs.forEach(first, end, [&test, &found](zelqBCnrObject& record) {
                              if (test(record)) {
                                  found.push_back(&record);
                              }
                          });
                      });
    }

    /// Does both at a time, if a thread can be started for one of them.
    template <typename One, typename Other>
    static void both(const One& one, const Other& other) {
        const auto part = [&one, &other](std::size_t number) { number == 0 ? one() : other(); };
        rethrow(run(2, std::cref(part)));
    }

private:
    struct alignas(64) Part {
        Records records;
    };

    /// `find(first, end, found)` adds what is found in a range, for which there is room.
    template <typename Find>
    [[nodiscard]] Records gather(std::size_t count, const Find& find) const {
        std::vector<Part> parts(partsOf(count));
        walk(count, [&find, &parts](std::size_t part) {
            return [&find, &found = parts[part].records](std::size_t first, std::size_t end) {
                const std::size_t most = found.size() + (end - first);
                if (most > found.capacity()) {
                    zelqHeap::require(2 * most * sizeof(void*));
                    found.reserve(std::max(most, 2 * found.capacity()));
                }
                find(first, end, found);
            };
        });
        return joined(parts);
    }
    using Failures = std::array<std::exception_ptr, kMostParts>;
    /// Calls `work` for each part, on threads. Takes no memory for a reference to work.
    static Failures run(std::size_t parts,
                        const std::function<void(std::size_t part)>& work) noexcept;
    /// Throws the first of them, if there is one.
    static void rethrow(const Failures& failures);
    /// Does one part of a walk, and `beforePiece()` before each piece of it.
    template <typename Make, typename BeforePiece>
    static void walkRange(std::size_t count, std::size_t part, const Make& make,
                          const BeforePiece& beforePiece) {
        const std::size_t parts = partsOf(count);
        const std::size_t end = bound(count, parts, part + 1);
        auto work = make(part);
        for (std::size_t first = bound(count, parts, part); first < end; first += kChunk) {
            beforePiece();
            work(first, std::min(end, first + kChunk));
        }
    }
    static Records joined(std::vector<Part>& parts);
    static std::size_t bound(std::size_t count, std::size_t parts, std::size_t part) noexcept {
        return part == parts ? count : count / kChunk * part / parts * kChunk;
    }

    std::stop_token stop_;
};
