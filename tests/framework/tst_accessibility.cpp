#include "../plugins/stub/stub.h"
#include "ibuildenvironment.h"
#include "windowfixture.h"
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QDockWidget>
#include <QKeySequenceEdit>
#include <QPluginLoader>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QSet<int> controlRoles{QAccessible::PushButton, QAccessible::CheckBox,     QAccessible::RadioButton,
                             QAccessible::ComboBox,   QAccessible::EditableText, QAccessible::SpinBox,
                             QAccessible::Slider,     QAccessible::List,         QAccessible::Tree,
                             QAccessible::Table,      QAccessible::PageTab,      QAccessible::MenuItem,
                             QAccessible::ButtonMenu, QAccessible::HotkeyField,  QAccessible::StaticText};

/// Parts of the toolkit's controls that stand for their control, and labels without text.
bool isInner(const QAccessibleInterface *accessible)
{
    const auto *widget = qobject_cast<QWidget *>(accessible->object());
    if (!widget)
        return false;
    const QByteArray name = widget->metaObject()->className();
    const QWidget *parent = widget->parentWidget();
    return name == "QComboBoxListView" || name == "QLineEditIconButton" || accessible->role() == QAccessible::StaticText
           || qobject_cast<const QAbstractSpinBox *>(parent) || qobject_cast<const QComboBox *>(parent)
           || qobject_cast<const QKeySequenceEdit *>(parent);
}

bool isControl(const QAccessibleInterface *accessible)
{
    const auto *widget = qobject_cast<QWidget *>(accessible->object());
    const bool isPane = qobject_cast<const QTabWidget *>(widget) || (widget && widget->inherits("QTabBar"));
    const bool takesKeys = widget && widget->focusPolicy() & Qt::TabFocus && !isPane;
    return (controlRoles.contains(accessible->role()) || takesKeys) && !isInner(accessible);
}

QString pathOf(QAccessibleInterface *accessible)
{
    QString path;
    for (const QObject *object = accessible->object(); object; object = object->parent())
        path.prepend(u'/' + QLatin1StringView(object->metaObject()->className()) + u':' + object->objectName());
    return path.isEmpty() ? pathOf(accessible->parent()) + u"/item"_s : path;
}

/// The controls of a tree without a name, as paths.
QStringList unnamed(QAccessibleInterface *accessible)
{
    QStringList result;
    if (!accessible || !accessible->isValid())
        return result;
    if (isControl(accessible) && accessible->text(QAccessible::Name).isEmpty())
        result.append(pathOf(accessible));
    if (accessible->tableInterface())
        return result; // cells have their texts
    for (int i = 0; i < accessible->childCount(); ++i)
        result += unnamed(accessible->child(i));
    return result;
}

QStringList unnamed(QWidget *widget)
{
    return unnamed(QAccessible::queryAccessibleInterface(widget));
}

/// All pages of the tabs of a dialog.
QStringList unnamedOnAllPages(QWidget *dialog)
{
    QStringList result = unnamed(dialog);
    for (QTabWidget *tabs : dialog->findChildren<QTabWidget *>()) {
        for (int page = 0; page < tabs->count(); ++page) {
            tabs->setCurrentIndex(page);
            result += unnamed(dialog);
        }
    }
    result.removeDuplicates();
    return result;
}

/// Whether Tab leads to the control. Radio buttons are reached by arrow keys from the one that is checked.
bool isTabStop(const QWidget *widget)
{
    const auto *radio = qobject_cast<const QRadioButton *>(widget);
    return widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy()
           && (!radio || radio->isChecked() || !radio->autoExclusive()) && !qobject_cast<const QTabBar *>(widget);
}

/// Whether the style marks the control itself when it has the focus: lists and texts mark their current row or cursor,
/// and a default button is marked without the focus, too.
bool isMarked(const QWidget *widget)
{
    const auto *button = qobject_cast<const QPushButton *>(widget);
    return !qobject_cast<const QAbstractScrollArea *>(widget) && !(button && button->isDefault());
}

/// The controls of a dialog that Tab does not reach, or that look the same with the focus and without it.
QStringList missedByKeys(QDialog *dialog)
{
    QSet<QWidget *> reached;
    QStringList result;
    QTest::keyClick(dialog, Qt::Key_Tab);
    for (QWidget *focus = dialog->focusWidget(); focus && !reached.contains(focus); focus = dialog->focusWidget()) {
        reached.insert(focus);
        const QRect place(focus->mapTo(dialog, QPoint()), focus->size());
        const QImage with = dialog->grab(place).toImage();
        QTest::keyClick(focus, Qt::Key_Tab);
        if (isMarked(focus) && dialog->focusWidget() != focus && dialog->grab(place).toImage() == with)
            result.append(focus->objectName() + u": the focus is not seen"_s);
    }
    for (QWidget *widget : dialog->findChildren<QWidget *>()) {
        if (widget->window() == dialog && isTabStop(widget) && !reached.contains(widget))
            result.append(QLatin1StringView(widget->metaObject()->className()) + u' ' + widget->objectName()
                          + u": not reached"_s);
    }
    return result;
}

/// The stub plug-in with a build environment.
struct BuildPlugin
{
    BuildPlugin()
    {
        auto *stub = qobject_cast<StubControl *>(QPluginLoader(QStringLiteral(TESTPLUGIN_STUB)).instance());
        stub->reset();
        StubScript &script = stub->script(u"{cc}"_s);
        script.label = u"cc"_s;
        script.offers = {IBuildEnvironment::Iid};
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
    }
};

/// A window with the menus of the product, a workspace whose project can be built, and a file.
class ProductWindow : private BuildPlugin, public WindowFixture
{
public:
    ProductWindow()
    {
        QFile ui(QStringLiteral(VARNEL_SOURCE_DIR "/config/uiconfig.xml"));
        if (!ui.open(QIODevice::ReadOnly))
            qFatal("cannot read");
        QByteArray content = ui.readAll();
        static const QRegularExpression icons(u" icon=\"[^\"]*\""_s);
        installation.write(u"config/uiconfig.xml"_s, QString::fromUtf8(content).remove(icons).toUtf8());
        installation.write(u"help/html/index.html"_s, "<html><title>Home</title>home</html>");
        restart();
        write(u"one.vnp"_s, "<project buildenvironment='{cc}'><file path='main.c'/>"
                            "<properties currentconfiguration='Default'><configuration name='Default'/></properties>"
                            "</project>");
        write(u"main.c"_s, "int main;\n");
        window->openWorkspace(writeWorkspace(u"one.vnw"_s, {u"one.vnp"_s}), false);
        window->openFile(path(u"main.c"_s), false);
    }
};
} // namespace

class AccessibilityTest : public QObject
{
    Q_OBJECT

private:
    static void dialogs()
    {
        QTest::addColumn<QString>("action");
        for (const char *action :
             {"fileNew", "fileProperties", "editFind", "editReplace", "editFindInFiles", "viewGotoLine", "projectNew",
              "projectProperties", "buildBatchBuild", "buildConfigurationsNew", "buildConfigurationsEdit",
              "debugBreakpoints", "toolsCustomise", "toolsOptions", "helpSearch", "helpPlugins", "helpReport"})
            QTest::newRow(action) << QString::fromLatin1(action);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support|Slot not implemented)"_s));
    }

    void controlWithoutANameIsFound()
    {
        const WindowFixture application;
        QWidget window;
        auto *edit = new QLineEdit(&window);
        edit->setObjectName(u"edit"_s);
        QCOMPARE(unnamed(&window), QStringList(u"/QWidget:/QLineEdit:edit"_s));
        edit->setAccessibleName(u"Name"_s);
        QVERIFY(unnamed(&window).isEmpty());
    }

    void everyControlOfTheWindowHasAName()
    {
        ProductWindow f;
        f.window->helpHome();
        for (QDockWidget *dock : f.window->findChildren<QDockWidget *>())
            dock->show();
        QCOMPARE(unnamed(f.window.get()).join(u'\n'), QString());
    }

    void everyControlOfADialogHasAName_data() { dialogs(); }
    void everyControlOfADialogHasAName()
    {
        QFETCH(const QString, action);
        ProductWindow f;
        bool shown = false;
        QStringList found;
        const auto look = [&](QDialog *dialog) {
            shown = true;
            found = unnamedOnAllPages(dialog);
            dialog->reject();
        };
        f.answers->prepend(look);
        auto *command = f.window->findChild<QAction *>(action);
        QVERIFY(command);
        command->setEnabled(true);
        command->trigger();
        for (QWidget *widget : QApplication::topLevelWidgets()) { // the dialogs for searching are not modal
            if (auto *dialog = qobject_cast<QDialog *>(widget); dialog && dialog->isVisible() && !shown)
                look(dialog);
        }
        QVERIFY(shown);
        QCOMPARE(found.join(u'\n'), QString());
    }

    void editorsMarginIsAccessible()
    {
        const ProductWindow f;
        auto *margin = f.window->findChild<QWidget *>(u"main/margin"_s);
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(margin);
        QCOMPARE(accessible->text(QAccessible::Name), u"Margin"_s);
        f.view()->setMarker(1, TextView::EnabledBreakpointMarker, true, false);
        QCOMPARE(accessible->text(QAccessible::Value), u"Line 1: breakpoint"_s);
    }

    void everyControlOfADialogIsReachedByTabAndShowsTheFocus_data() { dialogs(); }
    void everyControlOfADialogIsReachedByTabAndShowsTheFocus()
    {
        QFETCH(const QString, action);
        ProductWindow f;
        bool shown = false;
        QStringList found;
        const auto look = [&](QDialog *dialog) {
            shown = true;
            QApplication::setActiveWindow(dialog); // the platform keeps the window above which it is shown active
            if (!dialog->isActiveWindow())
                found.append(u"is not active"_s);
            found += missedByKeys(dialog);
            for (QTabWidget *tabs : dialog->findChildren<QTabWidget *>()) {
                for (int page = 1; page < tabs->count(); ++page) {
                    tabs->setCurrentIndex(page);
                    found += missedByKeys(dialog);
                }
            }
            dialog->reject();
        };
        f.answers->prepend(look);
        auto *command = f.window->findChild<QAction *>(action);
        command->setEnabled(true);
        command->trigger();
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *dialog = qobject_cast<QDialog *>(widget); dialog && dialog->isVisible() && !shown)
                look(dialog);
        }
        QVERIFY(shown);
        QCOMPARE(found.join(u'\n'), QString());
    }
};

int main(int argc, char **argv)
{
    AccessibilityTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_accessibility.moc"
