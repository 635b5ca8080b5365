#pragma once

#include <QByteArray>

/// Looks whether a file of compiled texts (*.qm) is what its compiler writes. QTranslator follows
/// the lengths and offsets in it wherever they lead, out of the file too.
class zelqTextFileCheck {
public:
    /// `file`: all bytes of it. False if a part of it leads out of it. A file without
    /// texts is intact.
    [[nodiscard]] static bool isIntact(const QByteArray& file);
};
