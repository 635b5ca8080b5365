// The German variant of the texts, against the original and in the menus.

#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <map>

#include "ui/zelqMenus.h"

#include "GuiTest.h"

namespace {

struct Text {
    QString source;
    QString translation;
};

std::map<int, Text> textsOf(const QString& name) {
    QFile file(QStringLiteral(RESOURCES "/") + name + QStringLiteral(".ts"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    std::map<int, Text> texts;
    int id = 0;
    QString none;
    QString* text = &none;
    while (!xml.atEnd()) {
        xml.readNext();
        const bool starts = xml.isStartElement();
        if (starts && xml.name() == u"message") {
            id = xml.attributes().value("id").toInt();
        } else if (starts && xml.name() == u"source") {
            text = &texts[id].source;
        } else if (starts && xml.name() == u"translation") {
            text = &texts[id].translation;
            EXPECT_FALSE(xml.attributes().hasAttribute("type")) << id;  // as where unfinished
        } else if (starts && xml.name() == u"byte") {
            *text += QChar(xml.attributes().value("value").mid(1).toInt(nullptr, 16));
        } else if (xml.isCharacters() && !xml.isWhitespace()) {
            *text += xml.text();
        }
    }
    EXPECT_FALSE(xml.hasError());
    return texts;
}

/// What a translation must have as well: the places of values, file patterns, a key, the dots of an
/// item that opens a dialog.
QStringList fixedParts(const QString& text) {
    static const QRegularExpression pattern(QStringLiteral("%\\d|\\(\\*.*\\)|\t|\\.\\.\\.$"));
    QStringList parts;
    for (const QRegularExpressionMatch& match : pattern.globalMatch(text)) {
        parts += match.captured();
    }
    parts.sort();
    return parts;
}

TEST(Languages, EachTextOfTheOriginalIsTranslated) {
    std::map<int, Text> german = textsOf("ZLQUOR3U_de");
    for (const auto& [id, original] : textsOf("ZLQUOR3U")) {
        EXPECT_EQ(german[id].source, original.translation) << id;
        EXPECT_NE(german[id].translation, QString()) << id;
        EXPECT_EQ(fixedParts(german[id].translation), fixedParts(original.translation)) << id;
        german.erase(id);
    }
    EXPECT_THAT(german, testing::IsEmpty());
}

TEST(Languages, MenusAndTheirItemsHaveMnemonicsOfTheirOwn) {
    for (const QString language : {"en_GB", "de_CH"}) {
        QLocale::setDefault(QLocale(language));
        const zelqResourceLibrary library;
        QMenuBar bar;
        const zelqMenus menus(bar, [](int) {});
        QList<QList<QAction*>> groups{bar.actions()};
        for (const QAction* menu : bar.actions()) {
            groups += menu->menu()->actions();
        }
        EXPECT_EQ(groups[0][0]->text(), language == "de_CH" ? "&Datei" : "&File");
        for (const QList<QAction*>& group : groups) {
            std::map<QString, QString> owners;
            for (const QAction* action : group) {
                const QString text = action->text();
                const QString key = QKeySequence::mnemonic(text).toString();
                if (!action->isSeparator() && text != "Mi&&nor error") {  // which shows its "&"
                    EXPECT_NE(key, QString()) << text.toStdString();
                    EXPECT_TRUE(owners.emplace(key, text).second)
                        << text.toStdString() << " and " << owners[key].toStdString();
                }
            }
        }
    }
    QLocale::setDefault(QLocale::c());
}

}  // namespace
