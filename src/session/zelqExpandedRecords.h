#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "output/zelqRecordFormatter.h"

/// The records whose text stands in the expanded-data window, in display order, with their line
/// counts. A tree that is balanced at random: inserting, removing and finding a line take O(log n).
class zelqExpandedRecords {
public:
    /// A line of the window: line `line` of a record, which was inserted with these addresses.
    struct Place {
        zelqBCnrObject* record;
        zelqAddressForm form;
        std::size_t line;
    };
    /// Lines of the window: so many from `first` on.
    struct Lines {
        std::size_t first;
        std::size_t count;
    };

    [[nodiscard]] std::size_t recordCount() const noexcept { return nodes_[root_].size; }
    [[nodiscard]] std::size_t lineCount() const noexcept { return nodes_[root_].lines; }
    /// What stands in a line below lineCount().
    [[nodiscard]] Place at(std::size_t line) const noexcept;
    /// The record's lines; it must be here.
    [[nodiscard]] Lines linesOf(const zelqBCnrObject& record) const noexcept;
    [[nodiscard]] bool contains(const zelqBCnrObject& record) const noexcept;

    /// Where insert() would put the record: before the first one with a larger entry index.
    [[nodiscard]] std::size_t insertionLine(const zelqBCnrObject& record) const noexcept;
    /// Inserts a record that is not here.
    void insert(zelqBCnrObject& record, zelqAddressForm form);
    /// Inserts records that are not here, one after another, in O(n) all together if they are many.
    void insertAll(std::vector<zelqBCnrObject*> records);
    void remove(const zelqBCnrObject& record);
    /// Removes the records that are not marked as expanded any more.
    void removeCollapsed();
    void clear();
    /// To be called when entry indices have changed; the order stays.
    void refreshKeys() noexcept;

    /// Calls `visit(zelqBCnrObject&)` for each record in display order.
    template <typename Visit>
    void forEach(Visit&& visit) const {
        for (const Node node : inOrder()) {
            visit(*node.record);
        }
    }

private:
    using Index = std::uint32_t;
    static constexpr Index kNone = 0;  ///< a node of size 0, which stands for no node

    struct Node {
        zelqBCnrObject* record = nullptr;
        std::uint64_t lines = 0;  ///< of the subtree
        Index left = kNone;
        Index right = kNone;
        Index parent = kNone;
        Index size = 0;                    ///< of the subtree
        std::int32_t largest = INT32_MIN;  ///< entry index of the subtree
        std::uint32_t ownLines : 31 = 0;
        std::uint32_t reversed : 1 = 0;
    };

    [[nodiscard]] std::vector<Node> inOrder() const;
    void rebuild(std::vector<Node> order);
    Index build(std::size_t first, std::size_t end);
    static Node makeNode(zelqBCnrObject& record, zelqAddressForm form);
    Index newNode(zelqBCnrObject& record, zelqAddressForm form);
    void update(Index index) noexcept;
    Index join(Index left, Index right) noexcept;
    void splitBefore(Index tree, std::int32_t larger, Index& left, Index& right) noexcept;
    [[nodiscard]] std::uint64_t random(std::uint64_t below) noexcept;

    std::vector<Node> nodes_ = std::vector<Node>(1);
    std::vector<Index> free_;
    Index root_ = kNone;
    std::uint64_t randomState_ = 0x9E3779B97F4A7C15;
};
