#include "session/zelqExpandedRecords.h"

#include <algorithm>
#include <utility>

#include "session/zelqInvariant.h"

void zelqExpandedRecords::update(Index index) noexcept {
    Node& node = nodes_[index];
    const Node& left = nodes_[node.left];
    const Node& right = nodes_[node.right];
    node.size = left.size + right.size + 1;
    node.lines = left.lines + right.lines + node.ownLines;
    node.largest = std::max({left.largest, right.largest, node.record->entryIndex()});
    if (node.left != kNone) {
        nodes_[node.left].parent = index;
    }
    if (node.right != kNone) {
        nodes_[node.right].parent = index;
    }
}

/// 0 to `below` - 1.
std::uint64_t zelqExpandedRecords::random(std::uint64_t below) noexcept {
    return (std::uint64_t{random_()} * below) >> 32;
}

/// The larger tree is the likelier root; that keeps trees balanced whatever is inserted and
/// removed.
zelqExpandedRecords::Index zelqExpandedRecords::join(Index left, Index right) noexcept {
    if (left == kNone || right == kNone) {
        return left + right;
    }
    const std::uint64_t leftSize = nodes_[left].size;
    if (random(leftSize + nodes_[right].size) < leftSize) {
        nodes_[left].right = join(nodes_[left].right, right);
        update(left);
        return left;
    }
    nodes_[right].left = join(left, nodes_[right].left);
    update(right);
    return right;
}

/// Splits before the first record whose entry index is above `index`.
void zelqExpandedRecords::splitBefore(Index tree, std::int32_t index, Index& left,
                                      Index& right) noexcept {
    if (tree == kNone) {
        left = right = kNone;
        return;
    }
    Node& node = nodes_[tree];
    if (nodes_[node.left].largest > index || node.record->entryIndex() > index) {
        Index rest = kNone;
        if (nodes_[node.left].largest > index) {
            splitBefore(node.left, index, left, rest);
        } else {
            left = node.left;
        }
        node.left = rest;
        right = tree;
    } else {
        Index rest = kNone;
        splitBefore(node.right, index, rest, right);
        node.right = rest;
        left = tree;
    }
    update(tree);
}

zelqExpandedRecords::Node zelqExpandedRecords::makeNode(zelqBCnrObject& record,
                                                        zelqAddressForm form) const noexcept {
    constexpr std::uint32_t kMostLines = 0x7FFFFFFF;
    Node node;
    node.record = &record;
    node.ownLines = static_cast<std::uint32_t>(lineCountOf(record, form)) & kMostLines;
    node.reversed = form == zelqAddressForm::Reversed ? 1 : 0;
    return node;
}

zelqExpandedRecords::Index zelqExpandedRecords::newNode(zelqBCnrObject& record,
                                                        zelqAddressForm form) {
    Index index = free_;
    if (index == kNone) {
        index = static_cast<Index>(nodes_.size());
        nodes_.emplace_back();
    } else {
        free_ = nodes_[index].right;
    }
    nodes_[index] = makeNode(record, form);
    record.setExpansionNode(index);
    update(index);
    return index;
}

std::size_t zelqExpandedRecords::insertionLine(const zelqBCnrObject& record) const noexcept {
    const std::int32_t index = record.entryIndex();
    std::size_t line = 0;
    for (Index tree = root_; tree != kNone;) {
        const Node& node = nodes_[tree];
        if (nodes_[node.left].largest > index) {
            tree = node.left;
            continue;
        }
        line += nodes_[node.left].lines;
        if (node.record->entryIndex() > index) {
            break;
        }
        line += node.ownLines;
        tree = node.right;
    }
    return line;
}

std::size_t zelqExpandedRecords::lineOfRecord(std::size_t number) const noexcept {
    std::size_t line = 0;
    for (Index tree = root_; tree != kNone;) {
        const Node& node = nodes_[tree];
        const Node& left = nodes_[node.left];
        if (number < left.size) {
            tree = node.left;
            continue;
        }
        line += left.lines;
        if (number == left.size) {
            break;
        }
        number -= left.size + std::size_t{1};
        line += node.ownLines;
        tree = node.right;
    }
    return line;
}

std::size_t zelqExpandedRecords::numberOf(const zelqBCnrObject& record) const noexcept {
    Index index = record.expansionNode();
    std::size_t number = nodes_[nodes_[index].left].size;
    for (Index above = nodes_[index].parent; above != kNone; above = nodes_[above].parent) {
        if (nodes_[above].right == index) {
            number += nodes_[nodes_[above].left].size + std::size_t{1};
        }
        index = above;
    }
    return number;
}

std::vector<zelqExpandedRecords::Place> zelqExpandedRecords::places() const {
    std::vector<Place> places;
    places.reserve(recordCount());
    for (Index tree = first(root_); tree != kNone; tree = next(tree)) {
        const Node& node = nodes_[tree];
        places.push_back(
            {.record = node.record,
             .form = node.reversed != 0 ? zelqAddressForm::Reversed : zelqAddressForm::True,
             .line = 0});
    }
    return places;
}

void zelqExpandedRecords::insert(zelqBCnrObject& record, zelqAddressForm form) {
    const Index node = newNode(record, form);
    Index left = kNone;
    Index right = kNone;
    splitBefore(root_, record.entryIndex(), left, right);
    root_ = join(join(left, node), right);
    nodes_[root_].parent = kNone;
}

void zelqExpandedRecords::reserve(std::size_t more) {
    const std::size_t needed = 1 + recordCount() + more;  // those that are free are used first
    if (needed > nodes_.capacity()) {  // grows as a vector does by itself, not by one at a time
        nodes_.reserve(std::max(needed, nodes_.capacity() + nodes_.capacity() / 2));
    }
}

void zelqExpandedRecords::remove(const zelqBCnrObject& record) noexcept {
    const Index index = record.expansionNode();
    const Node removed = nodes_[index];
    const Index rest = join(removed.left, removed.right);
    nodes_[rest].parent = rest != kNone ? removed.parent : kNone;
    if (removed.parent == kNone) {
        root_ = rest;
    } else {
        Node& parent = nodes_[removed.parent];
        (parent.left == index ? parent.left : parent.right) = rest;
        for (Index above = removed.parent; above != kNone; above = nodes_[above].parent) {
            update(above);
        }
    }
    nodes_[index] = {};
    nodes_[index].right = free_;
    free_ = index;
}

void zelqExpandedRecords::swap(zelqExpandedRecords& other) noexcept {
    nodes_.swap(other.nodes_);
    std::swap(free_, other.free_);
    std::swap(root_, other.root_);
}

void zelqExpandedRecords::clear() noexcept {
    nodes_.resize(1);
    nodes_.shrink_to_fit();
    free_ = kNone;
    root_ = kNone;
}

bool zelqExpandedRecords::contains(const zelqBCnrObject& record) const noexcept {
    const Index index = record.expansionNode();
    return index != kNone && index < nodes_.size() && nodes_[index].record == &record;
}

zelqExpandedRecords::Place zelqExpandedRecords::at(std::size_t line) const noexcept {
    Index tree = root_;
    for (;;) {
        const Node& node = nodes_[tree];
        const std::size_t before = nodes_[node.left].lines;
        if (line < before) {
            tree = node.left;
        } else if (line < before + node.ownLines) {
            return {.record = node.record,
                    .form = node.reversed != 0 ? zelqAddressForm::Reversed : zelqAddressForm::True,
                    .line = line - before};
        } else {
            line -= before + node.ownLines;
            tree = node.right;
        }
    }
}

zelqExpandedRecords::Lines zelqExpandedRecords::linesOf(
    const zelqBCnrObject& record) const noexcept {
    Index index = record.expansionNode();
    const std::size_t count = nodes_[index].ownLines;
    std::size_t first = nodes_[nodes_[index].left].lines;
    for (Index parent = nodes_[index].parent; parent != kNone; parent = nodes_[index].parent) {
        if (nodes_[parent].right == index) {
            first += nodes_[nodes_[parent].left].lines + nodes_[parent].ownLines;
        }
        index = parent;
    }
    return {.first = first, .count = count};
}

void zelqExpandedRecords::refreshKeys() noexcept {
    refreshKeys(root_);
}

/// Writes nothing that is read to look up lines.
std::int32_t zelqExpandedRecords::refreshKeys(Index tree) noexcept {
    if (tree == kNone) {
        return INT32_MIN;
    }
    Node& node = nodes_[tree];
    node.largest =
        std::max({refreshKeys(node.left), refreshKeys(node.right), node.record->entryIndex()});
    return node.largest;
}

/// The first node in display order of the tree under `tree`.
zelqExpandedRecords::Index zelqExpandedRecords::first(Index tree) const noexcept {
    while (nodes_[tree].left != kNone) {
        tree = nodes_[tree].left;
    }
    return tree;
}

zelqExpandedRecords::Index zelqExpandedRecords::next(Index index) const noexcept {
    if (nodes_[index].right != kNone) {
        return first(nodes_[index].right);
    }
    Index parent = nodes_[index].parent;
    while (parent != kNone && nodes_[parent].right == index) {
        index = parent;
        parent = nodes_[index].parent;
    }
    return parent;
}

void zelqExpandedRecords::checkInvariants() const {
    std::size_t records = 0;
    std::size_t lines = 0;
    for (Index tree = first(root_); tree != kNone; tree = next(tree)) {
        const Node& node = nodes_[tree];
        ++records;
        lines += node.ownLines;
        zelqInvariant::require(contains(*node.record), "an expanded record knows its node");
        zelqInvariant::require(node.record->expanded(), "a record whose text is shown is marked");
        zelqInvariant::require(
            node.largest == std::max({nodes_[node.left].largest, nodes_[node.right].largest,
                                      node.record->entryIndex()}),
            "a subtree knows its largest number");
    }
    zelqInvariant::require(records == recordCount(), "the tree knows how many records it has");
    zelqInvariant::require(lines == lineCount(), "the tree knows how many lines it has");
}
