#include "session/zelqExpandedRecords.h"

#include <algorithm>
#include <utility>

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

std::uint64_t zelqExpandedRecords::random(std::uint64_t below) noexcept {
    randomState_ ^= randomState_ << 13;
    randomState_ ^= randomState_ >> 7;
    randomState_ ^= randomState_ << 17;
    return randomState_ % below;
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
                                                        zelqAddressForm form) {
    constexpr std::uint32_t kMostLines = 0x7FFFFFFF;
    Node node;
    node.record = &record;
    node.ownLines =
        static_cast<std::uint32_t>(zelqRecordFormatter::lineCount(record, form)) & kMostLines;
    node.reversed = form == zelqAddressForm::Reversed ? 1 : 0;
    return node;
}

zelqExpandedRecords::Index zelqExpandedRecords::newNode(zelqBCnrObject& record,
                                                        zelqAddressForm form) {
    Index index = static_cast<Index>(nodes_.size());
    if (free_.empty()) {
        nodes_.emplace_back();
    } else {
        index = free_.back();
        free_.pop_back();
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

void zelqExpandedRecords::insert(zelqBCnrObject& record, zelqAddressForm form) {
    const Index node = newNode(record, form);
    Index left = kNone;
    Index right = kNone;
    splitBefore(root_, record.entryIndex(), left, right);
    root_ = join(join(left, node), right);
    nodes_[root_].parent = kNone;
}

void zelqExpandedRecords::insertAll(std::vector<zelqBCnrObject*> records) {
    // Building the tree anew is worth it for many; and the walk that finds a record's place is a
    // merge only where the records are in order.
    std::vector<Node> order = records.size() > recordCount() / 16 ? inOrder() : std::vector<Node>();
    const auto before = [](const Node& a, const Node& b) {
        return a.record->entryIndex() < b.record->entryIndex();
    };
    if (order.size() != recordCount() || !std::is_sorted(order.begin(), order.end(), before)) {
        for (zelqBCnrObject* record : records) {
            insert(*record, record->nextAddressForm());
        }
        return;
    }
    std::stable_sort(records.begin(), records.end(),
                     [](const zelqBCnrObject* a, const zelqBCnrObject* b) {
                         return a->entryIndex() < b->entryIndex();
                     });
    const auto oldEnd = static_cast<std::ptrdiff_t>(order.size());
    order.reserve(order.size() + records.size() + 1);
    for (zelqBCnrObject* record : records) {
        order.push_back(makeNode(*record, record->nextAddressForm()));
    }
    std::inplace_merge(order.begin(), order.begin() + oldEnd, order.end(), before);
    rebuild(std::move(order));
}

void zelqExpandedRecords::remove(const zelqBCnrObject& record) {
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
    free_.push_back(index);
}

void zelqExpandedRecords::removeCollapsed() {
    std::vector<Node> order = inOrder();
    std::erase_if(order, [](const Node& node) { return !node.record->expanded(); });
    rebuild(std::move(order));
}

void zelqExpandedRecords::clear() {
    nodes_ = std::vector<Node>(1);
    free_ = std::vector<Index>();
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
    rebuild(inOrder());
}

std::vector<zelqExpandedRecords::Node> zelqExpandedRecords::inOrder() const {
    std::vector<Node> order;
    order.reserve(recordCount());
    std::vector<Index> path;
    for (Index tree = root_; tree != kNone || !path.empty();) {
        if (tree != kNone) {
            path.push_back(tree);
            tree = nodes_[tree].left;
            continue;
        }
        order.push_back(nodes_[path.back()]);
        tree = nodes_[path.back()].right;
        path.pop_back();
    }
    return order;
}

/// Builds the tree anew, as flat as it can be, in the memory of `order`.
void zelqExpandedRecords::rebuild(std::vector<Node> order) {
    clear();
    order.insert(order.begin(), Node{});
    nodes_ = std::move(order);
    root_ = build(1, nodes_.size());
    nodes_[root_].parent = kNone;
}

zelqExpandedRecords::Index zelqExpandedRecords::build(std::size_t first, std::size_t end) {
    if (first == end) {
        return kNone;
    }
    const std::size_t middle = first + (end - first) / 2;
    const auto index = static_cast<Index>(middle);
    nodes_[middle].left = build(first, middle);
    nodes_[middle].right = build(middle + 1, end);
    nodes_[middle].record->setExpansionNode(index);
    update(index);
    return index;
}
