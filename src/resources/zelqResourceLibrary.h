#pragma once

#include <QLibraryInfo>
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
    /// Opens ZLQUOR3U.qm in the first of `folders` that has it and, over it, the variant for the
    /// user's language (ZLQUOR3U_de.qm) if there is one. Beneath it come Qt's own texts in that
    /// language, for Qt's dialogs, if `qtFolder` has them. A variant that is damaged is left out
    /// with a warning. Throws zelqResourceError, with the reason, if no folder has the library or
    /// it cannot be read or is damaged.
    explicit zelqResourceLibrary(
        const QStringList& folders = dataFolders(),
        const QString& qtFolder = QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    ~zelqResourceLibrary();
    zelqResourceLibrary(const zelqResourceLibrary&) = delete;
    zelqResourceLibrary& operator=(const zelqResourceLibrary&) = delete;

    /// The text with a number of zelqId; the number itself if the library has no such text.
    [[nodiscard]] static QString text(int id);

    /// Where the program's data files are looked for: beside the executable, then where they are
    /// installed.
    [[nodiscard]] static QStringList dataFolders();

private:
    /// These texts take precedence over those that are installed.
    void install(std::unique_ptr<QTranslator> texts);
    /// Installs the texts of the file for the user's language, if there is one.
    void installForLanguage(const QString& name, const QString& folder);

    std::vector<std::unique_ptr<QTranslator>> translators_;
};
