// What is done for many records at a time: the tree is built anew.

#include <algorithm>
#include <new>
#include <utility>

#include <boost/sort/pdqsort/pdqsort.hpp>

#include "log/zelqMemory.h"
#include "session/zelqExpandedRecords.h"

/// Building the tree anew is worth it for many; and the walk that finds a record's place is a merge
/// only where the records are in order.
bool zelqExpandedRecords::isWorthRebuilding(std::size_t added) const noexcept {
    if (added <= recordCount() / 16) {
        return false;
    }
    std::int32_t last = INT32_MIN;
    for (Index tree = first(root_); tree != kNone; tree = next(tree)) {
        const std::int32_t index = nodes_[tree].record->entryIndex();
        if (index < last) {
            return false;
        }
        last = index;
    }
    return true;
}

/// In the order of their numbers; records of the same number stay as they stand. Numbers that stand
/// together are sorted several times as fast as records are.
void zelqExpandedRecords::sortByEntryIndex(std::vector<zelqBCnrObject*>& records) {
    const auto isBefore = [](const zelqBCnrObject* a, const zelqBCnrObject* b) {
        return a->entryIndex() < b->entryIndex();
    };
    if (std::ranges::is_sorted(records, isBefore)) {
        return;
    }
    zelqHeap::require(2 * records.size() * sizeof(std::uint64_t));
    std::vector<std::uint64_t> keys(records.size());
    for (std::size_t place = 0; place < records.size(); ++place) {
        constexpr std::uint32_t kSign = 0x80000000;
        const auto number = static_cast<std::uint32_t>(records[place]->entryIndex()) ^ kSign;
        keys[place] = std::uint64_t{number} << 32 | place;
    }
    const auto middle = keys.begin() + static_cast<std::ptrdiff_t>(keys.size() / 2);
    const auto sort = [](auto first, auto end) { boost::sort::pdqsort_branchless(first, end); };
    if (zelqParallel::partsOf(keys.size()) == 1) {
        sort(keys.begin(), keys.end());
    } else {
        zelqParallel::both([&] { sort(keys.begin(), middle); }, [&] { sort(middle, keys.end()); });
        std::inplace_merge(keys.begin(), middle, keys.end());
    }
    std::vector<zelqBCnrObject*> sorted(records.size());
    std::ranges::transform(keys, sorted.begin(),
                           [&records](std::uint64_t key) { return records[key & 0xFFFFFFFF]; });
    records.swap(sorted);
}

void zelqExpandedRecords::copy(const zelqExpandedRecords& other, std::size_t more) {
    zelqHeap::require((other.nodes_.size() + more) * sizeof(Node));
    nodes_.reserve(other.nodes_.size() + more);
    nodes_ = other.nodes_;
    free_ = other.free_;
    root_ = other.root_;
}

/// Merges nodes of new records, which stand from `before` on, with those before them.
void zelqExpandedRecords::mergeAndRebuild(std::size_t before) noexcept {
    std::inplace_merge(nodes_.begin() + 1, nodes_.begin() + static_cast<std::ptrdiff_t>(before),
                       nodes_.end(), [](const Node& a, const Node& b) {
                           return a.record->entryIndex() < b.record->entryIndex();
                       });
    rebuild();
}

void zelqExpandedRecords::removeCollapsed() noexcept {
    try {
        zelqExpandedRecords rest = forRemoval();
        rest.takeOutCollapsed();
        swap(rest);
    } catch (const std::bad_alloc&) {  // one by one takes longer, but no memory
        for (Index tree = first(root_); tree != kNone;) {
            const zelqBCnrObject& record = *nodes_[tree].record;
            tree = next(tree);
            if (!record.expanded()) {
                remove(record);
            }
        }
    }
}

zelqExpandedRecords zelqExpandedRecords::forRemoval() const {
    zelqExpandedRecords rest(countLines_, *sources_);
    rest.nodes_ = inOrder(0);
    return rest;
}

void zelqExpandedRecords::takeOutCollapsed() noexcept {
    std::erase_if(nodes_, [](const Node& node) {
        return node.record != nullptr && !node.record->expanded();
    });
    rebuild();
}

/// The nodes in display order behind the one that stands for none, with room for more.
std::vector<zelqExpandedRecords::Node> zelqExpandedRecords::inOrder(std::size_t more) const {
    const std::size_t size = 1 + recordCount() + more;
    zelqHeap::require(size * sizeof(Node));
    std::vector<Node> order;
    order.reserve(size);
    order.emplace_back();
    for (Index tree = first(root_); tree != kNone; tree = next(tree)) {
        order.push_back(nodes_[tree]);
    }
    return order;
}

/// Makes a tree, as flat as it can be, of the nodes in the order in which they stand.
void zelqExpandedRecords::rebuild() noexcept {
    free_ = kNone;
    root_ = build(1, nodes_.size());
    nodes_[root_].parent = kNone;
}

zelqExpandedRecords::Index zelqExpandedRecords::build(std::size_t first, std::size_t end) noexcept {
    if (first == end) {
        return kNone;
    }
    const std::size_t middle = first + (end - first) / 2;
    Node& node = nodes_[middle];
    const auto buildLeft = [&] { node.left = build(first, middle); };
    const auto buildRight = [&] { node.right = build(middle + 1, end); };
    // By two threads at the top of a large tree.
    if (zelqParallel::partsOf(end - first) > 1 && end - first > nodes_.size() / 2) {
        zelqParallel::both(buildLeft, buildRight);
    } else {
        buildLeft();
        buildRight();
    }
    const auto index = static_cast<Index>(middle);
    node.record->setExpansionNode(index);
    update(index);
    return index;
}
