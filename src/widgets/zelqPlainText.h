#pragma once

#include <QString>
#include <string>

/// Text from outside the program, made fit to be shown.
namespace zelqPlainText {

/// The text with what could change how the rest of a line looks replaced by "\u" and four
/// hexadecimal digits: control characters, marks of writing direction and lone surrogates.
[[nodiscard]] QString visible(const QString& text);

/// A file's name as the file system has it, made visible.
[[nodiscard]] QString ofFileName(const std::string& name);
/// The same without folders.
[[nodiscard]] QString ofLastName(const std::string& name);

}  // namespace zelqPlainText
