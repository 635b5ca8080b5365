#include "resources/zelqTextFileCheck.h"

#include <QByteArrayView>
#include <QtEndian>

namespace {

constexpr qsizetype kMagicSize = 16;
constexpr qsizetype kSectionHead = 5;  ///< a byte that says what it is, and the length
constexpr qsizetype kHashSize = 8;     ///< a hash, and the offset of its message

/// The sections that texts are looked up in. Only files compiled with -compress have contexts.
enum Section : unsigned char { Contexts = 0x2F, Hashes = 0x42, Messages = 0x69 };

/// The parts of a message. All but the first have a length and as many bytes.
enum Part : unsigned char { End = 1, Translation = 3, Source = 6, Context = 7, Comment = 8 };

quint32 numberAt(QByteArrayView bytes, qsizetype offset) {
    return qFromBigEndian<quint32>(bytes.data() + offset);
}

/// True if the message that begins at the offset ends within the bytes.
bool endsWithin(QByteArrayView messages, qsizetype offset) {
    constexpr qsizetype kPartHead = 5;
    while (offset < messages.size()) {
        const auto part = static_cast<unsigned char>(messages[offset]);
        if (part == End) {
            return true;
        }
        const bool isKnown =
            part == Translation || part == Source || part == Context || part == Comment;
        if (!isKnown || messages.size() - offset < kPartHead) {
            return false;
        }
        const qsizetype length = numberAt(messages, offset + 1);
        if (part == Translation && length % 2 != 0) {
            return true;  // there is no translation; nobody reads on
        }
        offset += kPartHead + length;
    }
    return false;
}

bool leadToMessages(QByteArrayView hashes, QByteArrayView messages) {
    if (hashes.size() % kHashSize != 0) {
        return false;
    }
    for (qsizetype at = 0; at < hashes.size(); at += kHashSize) {
        if (!endsWithin(messages, numberAt(hashes, at + kHashSize / 2))) {
            return false;
        }
    }
    return true;
}

/// A hash table: its size, and for each place half the offset of a list behind it, or 0. A list is
/// a run of texts after their lengths, and ends with an empty one.
bool areListsWhole(QByteArrayView contexts) {
    const auto number = [contexts](qsizetype at) {
        return qsizetype{qFromBigEndian<quint16>(contexts.data() + at)};
    };
    const qsizetype count = contexts.size() < 2 ? 0 : number(0);
    const qsizetype lists = 2 * (1 + count);
    if (count == 0 || lists > contexts.size()) {
        return false;
    }
    for (qsizetype place = 1; place <= count; ++place) {
        const qsizetype list = number(2 * place);
        qsizetype at = lists + 2 * list;
        while (list != 0 && at < contexts.size() && contexts[at] != 0) {
            at += 1 + static_cast<unsigned char>(contexts[at]);
        }
        if (list != 0 && at >= contexts.size()) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool zelqTextFileCheck::isIntact(const QByteArray& file) {
    QByteArrayView rest(file);
    QByteArrayView hashes;
    QByteArrayView messages;
    rest = rest.sliced(qMin(kMagicSize, rest.size()));
    while (rest.size() >= kSectionHead) {
        const auto section = static_cast<unsigned char>(rest[0]);
        const qsizetype length = numberAt(rest, 1);
        rest = rest.sliced(kSectionHead);
        if (length > rest.size() || (section == Contexts && !areListsWhole(rest.first(length)))) {
            return false;
        }
        if (section == Hashes) {
            hashes = rest.first(length);
        } else if (section == Messages) {
            messages = rest.first(length);
        }
        rest = rest.sliced(length);
    }
    return rest.isEmpty() && leadToMessages(hashes, messages);
}
