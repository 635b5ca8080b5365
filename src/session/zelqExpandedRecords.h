#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "log/zelqBCnrObject.h"
#include "log/zelqDataSources.h"
#include "log/zelqParallel.h"

/// The records whose text stands in the expanded-data window, in display order, with their line
/// counts. A tree that is balanced at random: inserting, removing and finding a line take O(log n).
/// What needs memory and does not get it throws std::bad_alloc and changes nothing.
class zelqExpandedRecords {
public:
    /// How many lines the text of a record has; `sources` are those of its log.
    using LineCount = std::size_t (*)(const zelqBCnrObject& record, zelqAddressForm form,
                                      const zelqDataSources& sources);

    /// `sources` must outlive the object.
    zelqExpandedRecords(LineCount countLines, const zelqDataSources& sources)
        : countLines_(countLines), sources_(&sources) {}

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
    /// The first line of the record of a number, counted from 0 and below recordCount().
    [[nodiscard]] std::size_t lineOfRecord(std::size_t number) const noexcept;
    /// The number of the record; it must be here.
    [[nodiscard]] std::size_t numberOf(const zelqBCnrObject& record) const noexcept;

    /// Where insert() would put the record: before the first one with a larger entry index.
    [[nodiscard]] std::size_t insertionLine(const zelqBCnrObject& record) const noexcept;
    /// The lines that insert() would add.
    [[nodiscard]] std::size_t lineCountOf(const zelqBCnrObject& record,
                                          zelqAddressForm form) const noexcept {
        return countLines_(record, form, *sources_);
    }
    /// Sets memory aside for as many records more, whose insertion then cannot fail.
    void reserve(std::size_t more);
    /// Inserts a record that is not here.
    void insert(zelqBCnrObject& record, zelqAddressForm form);
    void remove(const zelqBCnrObject& record) noexcept;
    /// Removes the records that are not marked as expanded any more.
    void removeCollapsed() noexcept;
    void clear() noexcept;
    void swap(zelqExpandedRecords& other) noexcept;

    /// An empty tree of the same kind.
    [[nodiscard]] zelqExpandedRecords newTree() const { return {countLines_, *sources_}; }

    // Trees that take the place of this one can be made on another thread while what stands in its
    // lines is looked up here. Records know one place in a tree: meanwhile nobody may ask here for
    // that of a record.

    /// A tree in which these records, which are not here, were inserted one after another; in O(n)
    /// all together if they are many. `form(record)`: how each shows its addresses.
    template <typename Form>
    [[nodiscard]] zelqExpandedRecords with(std::vector<zelqBCnrObject*> records, const Form& form,
                                           const zelqParallel& parallel) const {
        zelqExpandedRecords tree(countLines_, *sources_);
        if (!isWorthRebuilding(records.size())) {
            tree.copy(*this, records.size());
            for (zelqBCnrObject* record : records) {
                tree.insert(*record, form(*record));
            }
            return tree;
        }
        sortByEntryIndex(records);
        tree.nodes_ = inOrder(records.size());
        const std::size_t before = tree.nodes_.size();
        tree.nodes_.resize(before + records.size());
        parallel.walk(records.size(), [&](std::size_t /*part*/) {
            return [&, before](std::size_t first, std::size_t end) {
                for (; first < end; ++first) {
                    zelqBCnrObject& record = *records[first];
                    tree.nodes_[before + first] = makeNode(record, form(record));
                }
            };
        });
        tree.mergeAndRebuild(before);
        return tree;
    }
    /// What the tree without collapsed records is made of: takeOutCollapsed() makes it one.
    [[nodiscard]] zelqExpandedRecords forRemoval() const;
    void takeOutCollapsed() noexcept;
    /// To be called when entry indices have changed; the order stays.
    void refreshKeys() noexcept;
    /// Aborts if the tree is not sound. For tests.
    void checkInvariants() const;

    /// Calls `visit(zelqBCnrObject&)` for each record in display order.
    template <typename Visit>
    void forEach(Visit&& visit) const {
        for (Index tree = first(root_); tree != kNone; tree = next(tree)) {
            visit(*nodes_[tree].record);
        }
    }
    /// The same in any order, by several threads.
    template <typename Visit>
    void forEachUnordered(const Visit& visit) const noexcept {
        zelqParallel::walkToEnd(nodes_.size(), [this, &visit](std::size_t /*part*/) {
            return [this, &visit](std::size_t first, std::size_t end) {
                for (; first < end; ++first) {
                    if (nodes_[first].record != nullptr) {
                        visit(*nodes_[first].record);
                    }
                }
            };
        });
    }
    /// The first place of each record, in display order.
    [[nodiscard]] std::vector<Place> places() const;

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

    [[nodiscard]] Index first(Index tree) const noexcept;
    [[nodiscard]] Index next(Index index) const noexcept;
    [[nodiscard]] bool isWorthRebuilding(std::size_t added) const noexcept;
    static void sortByEntryIndex(std::vector<zelqBCnrObject*>& records);
    [[nodiscard]] std::vector<Node> inOrder(std::size_t more) const;
    void copy(const zelqExpandedRecords& other, std::size_t more);
    void mergeAndRebuild(std::size_t before) noexcept;
    void rebuild() noexcept;
    Index build(std::size_t first, std::size_t end) noexcept;
    std::int32_t refreshKeys(Index tree) noexcept;
    [[nodiscard]] Node makeNode(zelqBCnrObject& record, zelqAddressForm form) const noexcept;
    Index newNode(zelqBCnrObject& record, zelqAddressForm form);
    void update(Index index) noexcept;
    Index join(Index left, Index right) noexcept;
    void splitBefore(Index tree, std::int32_t larger, Index& left, Index& right) noexcept;
    [[nodiscard]] std::uint64_t random(std::uint64_t below) noexcept;

    LineCount countLines_;
    const zelqDataSources* sources_;
    std::vector<Node> nodes_ = std::vector<Node>(1);
    Index free_ = kNone;  ///< the first of the unused nodes, which are linked by `right`
    Index root_ = kNone;
    std::mt19937 random_;
};
