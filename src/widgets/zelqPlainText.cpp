#include "widgets/zelqPlainText.h"

#include <QFile>

namespace {

/// Whether the character changes how others look. Surrogates are looked at by the caller.
bool isHidden(char16_t c) {
    return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x061C || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

}  // namespace

QString zelqPlainText::visible(const QString& text) {
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            result += c;
            result += text[++i];
        } else if (c.isSurrogate() || isHidden(c.unicode())) {
            result += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        } else {
            result += c;
        }
    }
    return result;
}

QString zelqPlainText::ofFileName(const std::string& name) {
    return visible(QFile::decodeName(QByteArray::fromStdString(name)));
}

QString zelqPlainText::ofLastName(const std::string& name) {
    return ofFileName(name.substr(name.rfind('/') + 1));
}
