// How the windows are set up, against a list: each part in which it differs from Qt's own part of
// its class. With ZELQ_TEST_WRITE in the environment the list is written anew.

#include <QAbstractSlider>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QMetaProperty>
#include <QProgressBar>
#include <QShortcut>
#include <QStatusBar>
#include <QTableView>
#include <QToolButton>
#include <map>

#include "dialogs/zelqExpansionFinder.h"
#include "ui/zelqRecordFinder.h"

#include "GuiTest.h"

namespace {

/// Depend on fonts, on where a window is, or on the release of Qt.
const QStringList kNotListed{"objectName",
                             "focus",
                             "isActiveWindow",
                             "pos",
                             "x",
                             "y",
                             "width",
                             "height",
                             "mouseTracking",
                             "minimumWidth",
                             "minimumHeight",
                             "maximumWidth",
                             "maximumHeight",
                             "defaultSectionSize",
                             "minimumSectionSize",
                             "maximumSectionSize",
                             "underMouse",
                             "cursorPosition",
                             "displayText",
                             "windowModified",
                             "windowIconText",
                             "updatesEnabled"};

template <typename... Part>
std::map<QByteArray, QObject*> newParts() {
    std::map<QByteArray, QObject*> parts;
    ((parts[Part::staticMetaObject.className()] = new Part), ...);
    return parts;
}

QString valueText(const QMetaProperty& property, const QVariant& value) {
    if (value.userType() == QMetaType::QSizePolicy) {
        const auto policy = value.value<QSizePolicy>();
        return QStringLiteral("%1/%2").arg(policy.horizontalPolicy()).arg(policy.verticalPolicy());
    }
    if (value.userType() == qMetaTypeId<QMargins>()) {
        const auto margins = value.value<QMargins>();
        return QStringLiteral("%1/%2").arg(margins.left()).arg(margins.top());
    }
    return property.isEnumType() ? QString::number(value.toInt(), 16) : value.toString();
}

class SetUpTest : public GuiTest {
protected:
    SetUpTest() {
        for (const auto& [name, part] : plain_) {
            if (auto* const layout = qobject_cast<QLayout*>(part)) {
                (new QWidget(&host_))->setLayout(layout);
            }
        }
    }
    ~SetUpTest() override {
        for (const auto& [name, part] : plain_) {
            delete part;
        }
    }
    void list(const QObject& object, int depth) {
        const QMetaObject* type = &plainClassOf(object);
        const auto plain = plain_.find(type->className());
        if (plain == plain_.end() || object.objectName().startsWith("qt_")) {
            return;
        }
        QString line = QString(depth, ' ') + type->className() + ' ' + object.objectName();
        for (int i = 0; i < type->propertyCount(); ++i) {
            const QMetaProperty property = type->property(i);
            const QString text = valueText(property, property.read(&object));
            if (!kNotListed.contains(property.name()) &&
                text != valueText(property, property.read(plain->second))) {
                line += QStringLiteral(" %1=%2").arg(property.name(), text);
            }
        }
        lines_ += line.replace(QString::fromStdString(folder.file("")), "").replace('\n', ' ');
        for (const QObject* part : object.children()) {
            const bool isOwn = object.inherits("QAbstractScrollArea")
                                   ? part->inherits("QHeaderView")
                                   : !object.inherits("QComboBox") &&
                                         !object.inherits("QLineEdit") &&
                                         !object.inherits("QMenuBar");
            if (isOwn && !(part->isWidgetType() && static_cast<const QWidget*>(part)->isWindow())) {
                list(*part, depth + 1);
            }
        }
    }

    QStringList lines_;

private:
    static const QMetaObject& plainClassOf(const QObject& object) {
        const QMetaObject* type = object.metaObject();
        while (type->className()[0] != 'Q') {
            type = type->superClass();
        }
        return *type;
    }
    struct Header : QHeaderView {
        Header() : QHeaderView(Qt::Horizontal) {}
    };
    struct Shortcut : QShortcut {
        Shortcut() : QShortcut(static_cast<QObject*>(qApp)) {}
    };

    QWidget host_;
    std::map<QByteArray, QObject*> plain_ =
        newParts<QAction, QCheckBox, QComboBox, QDialog, QFrame, QGridLayout, QHBoxLayout, Header,
                 QLabel, QLineEdit, QListView, QListWidget, QMainWindow, QMenuBar, QProgressBar,
                 QPushButton, Shortcut, QAbstractSlider, QStatusBar, QTableView, QToolButton,
                 QVBoxLayout, QWidget>();
};

TEST_F(SetUpTest, IsAsListed) {
    const std::string image = logImage({{.pid = 1}, {.pid = 2, .blocks = {{1, "abc"}}}});
    load(folder.write("a.log", image.substr(0, image.size() - 1)));
    window().command(zelqId::kExpandAll);
    browser.expansionWindow().finder().open();
    window().finder().open();
    QTest::keyClick(&window(), Qt::Key_G, Qt::ControlModifier);
    QTest::mouseClick(window().statusBar()->findChild<QPushButton*>(), Qt::LeftButton);
    window().statusLine().showProgress(0, 100);  // however far the loading was seen to be
    list(window(), 0);
    list(browser.expansionWindow(), 0);
    list(*window().findChild<QDialog*>(), 0);
    for (const int command : {zelqId::kWriteLog, zelqId::kUnload, zelqId::kPidFilter}) {
        onModalDialog([this](QDialog& dialog) {
            list(dialog, 0);
            dialog.done(0);
        });
        window().command(command);
    }
    QFile file(QStringLiteral(SETUP_LIST));
    if (qEnvironmentVariableIsSet("ZELQ_TEST_WRITE")) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write((lines_.join('\n') + '\n').toUtf8());
        return;
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList expected = QString::fromUtf8(file.readAll()).trimmed().split('\n');
    EXPECT_THAT(lines_, testing::ElementsAreArray(expected));
}

}  // namespace
