#include "uiconfig.h"
#include "popupmenu.h"
#include "producttext.h"
#include "toolbar.h"
#include "uidocument.h"
#include <QAction>
#include <QMainWindow>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace {
QString childText(const QDomElement &element, const QString &name)
{
    return element.firstChildElement(name).text();
}

/// A text of @p element for the user. Translators see the element's name, since mnemonics depend on the menu.
QString userText(const QDomElement &element, const QString &text)
{
    return productText("UiConfig", text, element.attribute(u"name"_s));
}

/// A child of the root. Keep @p document while using it: otherwise each access to a list of elements searches again.
QDomElement section(const QDomDocument &document, const QString &name)
{
    return document.documentElement().namedItem(name).toElement();
}

/// The name of a member function in the form for the string-based connect: '1' stands for a slot, '2' for a signal.
QByteArray memberName(char kind, const QString &name, const char *arguments)
{
    return kind + name.toUtf8() + arguments;
}
} // namespace

UiConfig::UiConfig(QMainWindow *window, QString fileName, IconSource loadIcon)
    : m_window(window), m_fileName(std::move(fileName)), m_loadIcon(std::move(loadIcon))
{}

void UiConfig::addCompanion(const QString &name, const Companion &companion)
{
    m_companions.insert(name, companion);
}

void UiConfig::setupActions()
{
    const QDomDocument document = read();
    const QDomNodeList elements = section(document, u"actions"_s).elementsByTagName(u"action"_s);
    for (int i = 0; i < elements.size(); ++i)
        createAction(elements.at(i).toElement());
}

void UiConfig::createAction(const QDomElement &element)
{
    auto *action = new QAction(m_window);
    action->setObjectName(element.attribute(u"name"_s));
    const QString text = userText(element, childText(element, u"text"_s));
    const QString menuText = userText(element, childText(element, u"menutext"_s));
    action->setText(menuText.isEmpty() ? text : menuText);
    action->setIconText(text);
    action->setStatusTip(userText(element, childText(element, u"statustip"_s)));
    action->setWhatsThis(userText(element, childText(element, u"whatsthis"_s)));
    action->setShortcut(QKeySequence(element.attribute(u"accel"_s)));
    if (element.hasAttribute(u"icon"_s))
        action->setIcon(m_loadIcon(element.attribute(u"icon"_s)));
    if (element.hasAttribute(u"toggle"_s)) {
        action->setCheckable(true);
        action->setChecked(element.attribute(u"toggle"_s) == "on"_L1);
    }
    connectAction(action, element);
    m_window->addAction(action); // its shortcut works even if no menu or tool bar shows it
    m_actions.insert(action->objectName(), action);
}

void UiConfig::connectAction(QAction *action, const QDomElement &element)
{
    const QString name = action->objectName();
    QObject::connect(action, &QAction::triggered, m_window, [this, action] {
        if (m_observer)
            m_observer(*action);
    });
    if (element.attribute(u"slot"_s) == "none"_L1)
        ; // the class of its subject connects it
    else if (action->isCheckable())
        QObject::connect(action, SIGNAL(toggled(bool)), m_window, memberName('1', name, "(bool)"));
    else
        QObject::connect(action, SIGNAL(triggered()), m_window, memberName('1', name, "()"));
    const QDomElement enable = element.firstChildElement(u"enable"_s);
    if (!enable.isNull())
        QObject::connect(m_window, memberName('2', enable.attribute(u"signal"_s), "(bool)"), action,
                         SLOT(setEnabled(bool)));
}

void UiConfig::setupToolbars()
{
    const QDomDocument document = read();
    const QDomNodeList elements = section(document, u"toolbars"_s).elementsByTagName(u"toolbar"_s);
    for (int i = 0; i < elements.size(); ++i)
        createToolBar(elements.at(i).toElement());
}

void UiConfig::createToolBar(const QDomElement &element)
{
    auto *bar = new ToolBar(m_window);
    bar->setObjectName(element.attribute(u"name"_s));
    bar->setWindowTitle(userText(element, element.attribute(u"displayname"_s)));
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (child.tagName() == "separator"_L1)
            bar->addSeparator();
        if (child.tagName() != "action"_L1)
            continue;
        const QString name = child.attribute(u"name"_s);
        QAction *known = action(name);
        if (!known) {
            qWarning("MainWindow::setupToolbars: Action not understood (%s)", qPrintable(name));
            continue;
        }
        bar->addAction(known);
        if (const Companion companion = m_companions.value(name))
            companion(bar);
    }
    m_window->addToolBar(bar);
    m_toolBars.append(bar);
}

void UiConfig::setupMenus()
{
    auto *bar = new QMenuBar(m_window);
    bar->setObjectName(u"menubar"_s);
    m_window->setMenuBar(bar);
    const QDomDocument document = read();
    const QDomElement menus = section(document, u"menus"_s);
    for (QDomElement child = menus.firstChildElement(u"menu"_s); !child.isNull();
         child = child.nextSiblingElement(u"menu"_s))
        bar->addMenu(createSubMenu(child));
}

PopupMenu *UiConfig::createSubMenu(const QDomElement &element)
{
    auto *menu = new PopupMenu(m_window);
    menu->setObjectName(element.attribute(u"name"_s));
    menu->setTitle(userText(element, element.attribute(u"displayname"_s)));
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        const QString name = child.attribute(u"name"_s);
        if (child.tagName() == "separator"_L1)
            menu->addSeparator();
        else if (child.tagName() == "menu"_L1)
            menu->addMenu(createSubMenu(child));
        else if (child.tagName() != "action"_L1)
            continue;
        else if (QAction *known = action(name))
            menu->addAction(known);
        else
            qWarning("MainWindow::createSubMenu: no such action (%s)", qPrintable(name));
    }
    return menu;
}

QString UiConfig::title() const
{
    return read().documentElement().attribute(u"title"_s, u"Varnel"_s);
}

QAction *UiConfig::action(const QString &name) const
{
    return m_actions.value(name);
}

PopupMenu *UiConfig::menu(const QString &name) const
{
    return m_window->findChild<PopupMenu *>(name, Qt::FindDirectChildrenOnly);
}

QDomDocument UiConfig::read() const
{
    return readUiDocument(m_fileName, "MainWindow::getUIConfigDocument");
}

void UiConfig::setActionVisible(const QString &name, bool visible) const
{
    if (QAction *found = action(name))
        found->setVisible(visible);
}

void UiConfig::setActionEnabled(const QString &name, bool enabled) const
{
    if (QAction *found = action(name))
        found->setEnabled(enabled);
}

void UiConfig::setActionChecked(const QString &name, bool checked) const
{
    if (QAction *found = action(name)) {
        const QSignalBlocker quiet(found);
        found->setChecked(checked);
    }
}
