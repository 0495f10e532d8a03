// Any text as the definitions of a property editor, with its first line as the selector: every page and every row.
#include "listview.h"
#include "propertydefinitions.h"
#include "propertyeditor.h"
#include "propertyitem.h"
#include "propertylist.h"
#include <QApplication>
#include <QLineEdit>

using namespace Qt::StringLiterals;

/// The font library keeps what it has read for the whole run.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig";
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {}); // reports are no failures
    new QApplication(*argc, *argv); // lives as long as the process
    return 0;
}

namespace {
void editEveryRow(PropertyEditor &editor)
{
    auto *list = editor.findChild<PropertyList *>();
    for (QTreeWidgetItemIterator it(list); *it; ++it) {
        list->setCurrentItem(*it);
        list->currentItem()->acceptEditor();
    }
}
/// Types a digit into every row of the page, and takes it back.
void typeIntoEveryRow(PropertyEditor &editor)
{
    auto *list = editor.findChild<PropertyList *>();
    for (QTreeWidgetItemIterator it(list); *it; ++it) {
        list->setCurrentItem(*it);
        const QWidget *editing = list->currentItem()->editor();
        if (auto *edit = editing ? editing->findChild<QLineEdit *>() : nullptr)
            edit->insert(u"7"_s);
        list->currentItem()->acceptEditor();
        const QString key = list->currentItem()->key();
        if (!sameValue(list->currentItem()->value(), editor.value(key)))
            qFatal("A typed value is lost.");
        editor.resetToDefault(key);
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString input = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString selector = input.section(u'\n', 0, 0);
    const QString definitions = input.section(u'\n', 1);
    if (!readPropertyDefinitions(definitions, selector))
        return 0; // most inputs; an editor for each would take a thousand times as long
    PropertyEditor editor;
    if (!editor.setPropertyDefinitions(definitions, selector))
        qFatal("Definitions are read once and refused then.");
    auto *tree = editor.findChild<ListView *>(u"GroupTree"_s);
    for (QTreeWidgetItemIterator it(tree); *it; ++it) {
        tree->setCurrentItem(*it);
        editEveryRow(editor);
        typeIntoEveryRow(editor);
    }
    for (const QString &key : editor.keys()) {
        bool isChanged = false;
        (void)editor.value(key, &isChanged);
        if (isChanged)
            qFatal("A row that was only looked at is changed.");
        editor.setValue(key, QVariant());
        editor.setValue(key, selector);
    }
    editor.findChild<QLineEdit *>(u"FilterEdit"_s)->setText(u"e"_s);
    editEveryRow(editor);
    editor.clearValues();
    return 0;
}
