#include "contexthelp.h"
#include "shortcutkeys.h"
#include "uidocument.h"
#include <algorithm>
#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>
#include <QKeySequenceEdit>
#include <QMenu>
#include <QWhatsThis>

using namespace Qt::StringLiterals;

namespace {
const auto Scheme = u"help:"_s;

/// Panes have the name of their project before their own.
QString ownName(const QObject *object)
{
    return object->objectName().section(u'/', -1);
}

bool isExplanation(const QObject *object)
{
    return object->inherits("QWhatsThat"); // the toolkit's window for them, which has no public class
}

/// Whether the widget takes every key as input, as the fields for shortcuts do.
bool entersKeys(const QObject *object)
{
    return qobject_cast<const QKeySequenceEdit *>(object) || qobject_cast<const QKeySequenceEdit *>(object->parent());
}
} // namespace

ContextHelp::ContextHelp(const QString &tableFile, QWidget *window, QObject *parent) : QObject(parent), m_window(window)
{
    if (QFileInfo::exists(tableFile))
        readTable(tableFile);
    for (QAction *action : window->findChildren<QAction *>())
        extendExplanation(action);
    QCoreApplication::instance()->installEventFilter(this);
}

void ContextHelp::readTable(const QString &file)
{
    const QDomDocument document = readUiDocument(file, "ContextHelp::readTable");
    for (QDomElement entry = document.documentElement().firstChildElement(); !entry.isNull();
         entry = entry.nextSiblingElement()) {
        auto &pages = entry.tagName() == "action"_L1 ? m_actions : m_windows;
        pages.insert(entry.attribute(u"name"_s), entry.attribute(u"page"_s));
    }
}

void ContextHelp::extendExplanation(QAction *action) const
{
    const QString page = pageOfAction(action->objectName());
    if (page.isEmpty())
        return;
    const QString text = action->whatsThis().isEmpty() ? action->statusTip() : action->whatsThis();
    action->setWhatsThis(u"<p>%1</p><p><a href=\"%2%3\">%4</a></p>"_s.arg(
        text.toHtmlEscaped(), Scheme, page.toHtmlEscaped(), tr("More in the manual (F1)")));
}

QString ContextHelp::pageOf(const QObject *widget) const
{
    for (const QObject *object = widget; object; object = object->parent()) {
        const QString ofName = m_windows.value(ownName(object));
        QString page = m_windows.value(QString::fromLatin1(object->metaObject()->className()), ofName);
        if (!page.isEmpty())
            return page;
    }
    return {};
}

// Events ------------------------------------------------------------------

bool ContextHelp::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::WhatsThisClicked) {
        const QString link = static_cast<QWhatsThisClickedEvent *>(event)->href();
        if (!link.startsWith(Scheme))
            return false;
        leaveExplanation(link.mid(Scheme.size()));
        return true;
    }
    if (event->type() == QEvent::Hide && isExplanation(watched))
        m_explained.clear(); // the next explanation may be one of something else
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    const QString page = pageForKey(watched, *static_cast<QKeyEvent *>(event));
    if (page.isEmpty())
        return false;
    if (event->type() == QEvent::ShortcutOverride)
        event->accept(); // the key follows, and no command gets it
    else
        leaveExplanation(page);
    return true;
}

/// Whether the user has given the key to a command that can run now.
bool ContextHelp::keyIsTaken() const
{
    if (!m_window || QApplication::activeModalWidget())
        return false;
    const QList<QAction *> actions = m_window->findChildren<QAction *>();
    return std::ranges::any_of(actions, [](const QAction *action) {
        const QList<QKeySequence> keys = action->shortcuts();
        return action->objectName() != "helpHome"_L1 && !action->associatedObjects().isEmpty()
               && std::ranges::any_of(keys, [](const QKeySequence &each) { return areInConflict(each, Qt::Key_F1); });
    });
}

/// The page to which a key leads; empty if it keeps its meaning.
QString ContextHelp::pageForKey(QObject *watched, const QKeyEvent &event)
{
    if (event.key() != Qt::Key_F1 || event.modifiers() != Qt::NoModifier || !watched->isWidgetType())
        return {};
    if (const auto *menu = qobject_cast<QMenu *>(watched)) {
        m_explained = menu->activeAction() ? pageOfAction(menu->activeAction()->objectName()) : QString();
        return {}; // the menu shows the explanation
    }
    if (isExplanation(watched))
        return m_explained;
    return entersKeys(watched) || keyIsTaken() ? QString() : pageOf(watched);
}

void ContextHelp::leaveExplanation(const QString &page)
{
    QWhatsThis::hideText();
    m_explained.clear();
    Q_EMIT pageRequested(page);
}
