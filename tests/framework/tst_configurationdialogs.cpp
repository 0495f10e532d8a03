#include "../project/modeltext.h"
#include "editconfigurationsdialog.h"
#include "newconfigurationdialog.h"
#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

/// The dialogs that create, rename and remove configurations.
class ConfigurationDialogsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Project> m_project;
    std::unique_ptr<EditConfigurationsDialog> m_edit;
    std::unique_ptr<NewConfigurationDialog> m_new;
    QStringList m_messages;

    void openEdit()
    {
        m_edit = std::make_unique<EditConfigurationsDialog>(m_project.get(), nullptr, u"editConfigurationsDialog"_s);
        m_edit->show();
    }

    void openNew()
    {
        m_new = std::make_unique<NewConfigurationDialog>(m_project->properties(), nullptr, u"newConfigurationDialog"_s);
        m_new->show();
    }

    QListWidget *list() { return m_edit->findChild<QListWidget *>(u"ConfigList"_s); }
    QListWidget *bases() { return m_new->findChild<QListWidget *>(u"ConfigListBox"_s); }
    QLineEdit *nameEdit() { return m_new->findChild<QLineEdit *>(u"ConfigNameEdit"_s); }

    /// The rows, the selected one in brackets.
    static QString rows(const QListWidget *list)
    {
        QStringList texts;
        for (int i = 0; i < list->count(); ++i) {
            const QListWidgetItem *item = list->item(i);
            texts += item->isSelected() ? u"["_s + item->text() + u"]"_s : item->text();
        }
        return texts.join(u' ');
    }

    static void click(QDialog *dialog, const QString &button)
    {
        QTest::mouseClick(dialog->findChild<QPushButton *>(button), Qt::LeftButton);
    }

    /// Presses @p button in the next message box and records its text.
    void answer(QMessageBox::StandardButton button)
    {
        QTimer::singleShot(0, this, [this, button] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            QVERIFY(box);
            QCOMPARE(box->windowTitle(), u"Varnel"_s);
            QCOMPARE(box->icon(), QMessageBox::Information);
            m_messages += box->text();
            box->button(button)->click();
        });
    }

    /// Types @p text into the next input dialog and accepts or cancels it; then @p then may wait for the next dialog.
    void type(
        const QString &text, bool accept, const std::function<void()> &then = [] {})
    {
        QTimer::singleShot(0, this, [this, text, accept, then] {
            auto *dialog = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            m_messages += dialog->windowTitle() + u": "_s + dialog->labelText() + u' ' + dialog->textValue();
            dialog->setTextValue(text);
            then();
            accept ? dialog->accept() : dialog->reject();
        });
    }

    void setCurrent(QListWidget *list, const QString &name)
    {
        list->setCurrentItem(list->findItems(name, Qt::MatchExactly).constFirst());
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_messages.clear();
        m_project = std::make_unique<Project>(u"fw"_s, u"/work/fw"_s);
        ProjectProperties *properties = m_project->properties();
        properties->setProperty(u"opt"_s, u"-O2"_s, u"Release"_s);
        properties->setProperty(u"log"_s, QString(), u"Release"_s);
        properties->setProperty(u"opt"_s, u"-Og"_s, u"Debug"_s);
        m_project->setCurrentConfiguration(u"Release"_s);
        m_project->setModified(false);
    }

    void cleanup()
    {
        m_edit.reset();
        m_new.reset();
        m_project.reset();
    }

    // New

    void dialogAsksForNameAndBase()
    {
        openNew();
        QCOMPARE(m_new->objectName(), u"newConfigurationDialog"_s);
        QCOMPARE(m_new->windowTitle(), u"New Configuration"_s);
        QCOMPARE(rows(bases()), u"[Debug] Release"_s);
        QStringList labels;
        for (const QLabel *label : m_new->findChildren<QLabel *>())
            labels += label->text();
        QCOMPARE(labels, (QStringList{u"Name for new configuration:"_s, u"Base configuration on:"_s}));
        QCOMPARE(m_new->findChild<QPushButton *>(u"buttonOk"_s)->text(), u"&OK"_s);
        QCOMPARE(m_new->findChild<QPushButton *>(u"buttonCancel"_s)->text(), u"&Cancel"_s);
        QTRY_VERIFY(nameEdit()->hasFocus());
    }

    void newConfigurationHasTheValuesOfItsBase_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("expected");
        QTest::newRow("Debug") << u"Debug"_s << u"[Debug]\nopt=-Og\n[Fast]\nopt=-Og\n[Release]\nlog=\nopt=-O2\n"_s;
        QTest::newRow("Release") << u"Release"_s
                                 << u"[Debug]\nopt=-Og\n[Fast]\nlog=\nopt=-O2\n[Release]\nlog=\nopt=-O2\n"_s;
    }

    void newConfigurationHasTheValuesOfItsBase()
    {
        QFETCH(QString, base);
        QFETCH(QString, expected);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        m_project->addFile(file);
        file->properties()->setProperty(u"opt"_s, u"-O0"_s, base);
        openNew();
        QTest::keyClicks(nameEdit(), u"Fast"_s);
        setCurrent(bases(), base);
        click(m_new.get(), u"buttonOk"_s);
        QCOMPARE(m_new->result(), int(QDialog::Accepted));
        QCOMPARE(textOf(m_project->properties(), {}), expected);
        QCOMPARE(file->properties()->configurations(), QStringList{base});
        QCOMPARE(m_project->currentConfiguration(), u"Release"_s);
        QVERIFY(m_project->isModified());
    }

    void invalidNameKeepsTheDialogOpen_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        QTest::newRow("none") << QString() << u"Please enter a name for the new configuration."_s;
        QTest::newRow("taken") << u"Debug"_s << u"A configuration with that name already exists."_s;
    }

    void invalidNameKeepsTheDialogOpen()
    {
        QFETCH(QString, name);
        QFETCH(QString, message);
        openNew();
        nameEdit()->setText(name);
        bases()->setFocus();
        answer(QMessageBox::Ok);
        click(m_new.get(), u"buttonOk"_s);
        QCOMPARE(m_messages, QStringList{message});
        QVERIFY(m_new->isVisible());
        QCOMPARE(m_new->focusWidget(), nameEdit());
        QVERIFY(!m_project->isModified());
    }

    void namesAreComparedExactly()
    {
        openNew();
        nameEdit()->setText(u"debug"_s);
        click(m_new.get(), u"buttonOk"_s);
        QCOMPARE(m_project->properties()->configurations(), (QStringList{u"Debug"_s, u"Release"_s, u"debug"_s}));
    }

    void cancellingAddsNothing()
    {
        openNew();
        nameEdit()->setText(u"Fast"_s);
        click(m_new.get(), u"buttonCancel"_s);
        QCOMPARE(m_new->result(), int(QDialog::Rejected));
        QVERIFY(!m_project->isModified());
    }

    void projectWithoutConfigurationsGetsAnEmptyOne()
    {
        m_project = std::make_unique<Project>(u"fw"_s, u"/work/fw"_s);
        openNew();
        nameEdit()->setText(u"Debug"_s);
        click(m_new.get(), u"buttonOk"_s);
        QCOMPARE(textOf(m_project->properties(), {}), u"[Debug]\n"_s);
    }

    // Edit

    void configurationsAreListed()
    {
        openEdit();
        QCOMPARE(m_edit->objectName(), u"editConfigurationsDialog"_s);
        QCOMPARE(m_edit->windowTitle(), u"Edit Configurations"_s);
        QCOMPARE(m_edit->findChild<QLabel *>()->text(), u"Configurations:"_s);
        QCOMPARE(rows(list()), u"[Debug] Release"_s);
        QStringList buttons;
        for (const QPushButton *button : m_edit->findChildren<QPushButton *>())
            buttons += button->text();
        QCOMPARE(buttons, (QStringList{u"Re&name"_s, u"Re&move"_s, u"Close"_s}));
    }

    void editDialogHasNoCancel()
    {
        openEdit();
        answer(QMessageBox::Ok);
        click(m_edit.get(), u"RemoveButton"_s);
        click(m_edit.get(), u"CloseButton"_s);
        QVERIFY(!m_edit->isVisible());
        QCOMPARE(m_project->properties()->configurations(), QStringList{u"Release"_s});
    }

    void renamedConfigurationKeepsItsValues()
    {
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        m_project->addFile(file);
        file->properties()->setProperty(u"opt"_s, u"-O0"_s, u"Release"_s);
        openEdit();
        setCurrent(list(), u"Release"_s);
        type(u"Beta"_s, true);
        click(m_edit.get(), u"RenameButton"_s);
        QCOMPARE(m_messages, QStringList{u"Varnel: Enter a new name for configuration 'Release': Release"_s});
        QCOMPARE(textOf(m_project->properties(), {}), u"[Beta]\nlog=\nopt=-O2\n[Debug]\nopt=-Og\n"_s);
        QCOMPARE(file->properties()->configurations(), QStringList{u"Release"_s}); // this file was not reached
        QCOMPARE(m_project->currentConfiguration(), u"Beta"_s);
        QCOMPARE(rows(list()), u"Debug [Beta]"_s);
    }

    void renamingAnotherConfigurationKeepsTheCurrentOne()
    {
        openEdit();
        type(u"Beta"_s, true);
        click(m_edit.get(), u"RenameButton"_s);
        QCOMPARE(m_project->currentConfiguration(), u"Release"_s);
        QCOMPARE(m_project->properties()->configurations(), (QStringList{u"Beta"_s, u"Release"_s}));
    }

    void renamingIsRefusedOrCancelled_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("accept");
        QTest::addColumn<bool>("exists");
        QTest::newRow("cancelled") << u"Beta"_s << false << false;
        QTest::newRow("no name") << QString() << true << false;
        QTest::newRow("name of another") << u"Release"_s << true << true;
        QTest::newRow("its own name") << u"Debug"_s << true << true;
    }

    void renamingIsRefusedOrCancelled()
    {
        QFETCH(QString, name);
        QFETCH(bool, accept);
        QFETCH(bool, exists);
        openEdit();
        type(name, accept, [&] {
            if (exists)
                answer(QMessageBox::Ok);
        });
        click(m_edit.get(), u"RenameButton"_s);
        QCOMPARE(m_messages.mid(1),
                 exists ? QStringList{u"A configuration with that name already exists."_s} : QStringList());
        QCOMPARE(rows(list()), u"[Debug] Release"_s);
        QVERIFY(!m_project->isModified());
    }

    void removingAsksForConfirmation_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<QString>("expected");
        QTest::newRow("Ok") << int(QMessageBox::Ok) << u"[Release]"_s;
        QTest::newRow("No") << int(QMessageBox::No) << u"[Debug] Release"_s;
    }

    void removingAsksForConfirmation()
    {
        QFETCH(int, button);
        QFETCH(QString, expected);
        openEdit();
        QTimer::singleShot(0, this, [] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            QCOMPARE(box->standardButtons(), QMessageBox::Ok | QMessageBox::No);
        });
        answer(QMessageBox::StandardButton(button));
        click(m_edit.get(), u"RemoveButton"_s);
        QCOMPARE(m_messages, QStringList{u"Are you sure that you want to remove configuration 'Debug'."_s});
        QCOMPARE(rows(list()), expected);
        QCOMPARE(m_project->properties()->configurations().size(), list()->count());
        QCOMPARE(m_project->currentConfiguration(), u"Release"_s);
    }

    void removingTheCurrentConfigurationMakesTheSelectedOneCurrent_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("current");
        QTest::newRow("first") << u"A"_s << u"[B] C"_s << u"B"_s;
        QTest::newRow("middle") << u"B"_s << u"A [C]"_s << u"C"_s;
        QTest::newRow("last") << u"C"_s << u"A [B]"_s << u"B"_s;
    }

    void removingTheCurrentConfigurationMakesTheSelectedOneCurrent()
    {
        QFETCH(QString, name);
        QFETCH(QString, rows);
        QFETCH(QString, current);
        m_project = std::make_unique<Project>(u"fw"_s, u"/work/fw"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        m_project->addFile(file);
        file->properties()->setProperty(u"opt"_s, u"-O0"_s, name);
        for (const QString &each : {u"A"_s, u"B"_s, u"C"_s})
            m_project->properties()->addConfiguration(each);
        m_project->setCurrentConfiguration(name);
        openEdit();
        setCurrent(list(), name);
        answer(QMessageBox::Ok);
        click(m_edit.get(), u"RemoveButton"_s);
        QCOMPARE(ConfigurationDialogsTest::rows(list()), rows);
        QCOMPARE(m_project->currentConfiguration(), current);
        QCOMPARE(file->properties()->configurations(), QStringList{name});
    }

    void lastConfigurationIsNotRemoved()
    {
        m_project->properties()->removeConfiguration(u"Debug"_s);
        m_project->setModified(false);
        openEdit();
        answer(QMessageBox::Ok);
        click(m_edit.get(), u"RemoveButton"_s);
        QCOMPARE(m_messages, QStringList{u"The project must contain at least one configuration."_s});
        QVERIFY(!m_project->isModified());
    }

    void projectMayBeDeletedWhileAQuestionIsOpen()
    {
        openEdit();
        type(u"Beta"_s, true, [&] { m_project.reset(); });
        click(m_edit.get(), u"RenameButton"_s);
        QCOMPARE(rows(list()), u"[Debug] Release"_s);
    }
};

QTEST_MAIN(ConfigurationDialogsTest)
#include "tst_configurationdialogs.moc"
