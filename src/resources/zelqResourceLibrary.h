#pragma once

#include <QString>
#include <QStringList>
#include <QTranslator>
#include <memory>
#include <stdexcept>
#include <vector>

/// The resource library cannot be used.
class zelqResourceError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The texts of the program, which stand in the separate file ZLQUOR3U so that a translator can
/// replace them. While an object of this class lives, text() answers. GUI thread only.
class zelqResourceLibrary {
public:
    /// Opens ZLQUOR3U.qm in the first of the folders that has it and, over it, the variant for the
    /// user's language (ZLQUOR3U_de.qm) if there is one. Throws zelqResourceError if it is missing
    /// or unusable.
    explicit zelqResourceLibrary(const QStringList& folders = dataFolders());
    ~zelqResourceLibrary();
    zelqResourceLibrary(const zelqResourceLibrary&) = delete;
    zelqResourceLibrary& operator=(const zelqResourceLibrary&) = delete;

    /// The text with a number of zelqId; the number itself if the library has no such text.
    [[nodiscard]] static QString text(int id);

    /// Where the program's data files are looked for: beside the executable, then where they are
    /// installed.
    [[nodiscard]] static QStringList dataFolders();

private:
    void install(std::unique_ptr<QTranslator> translator);

    std::vector<std::unique_ptr<QTranslator>> translators_;
};
