#include "mdiviewmanager.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "tabbedviewmanager.h"
#include "textview.h"
#include "workspace.h"
#include <QMetaMethod>
#include <QTest>

using namespace Qt::StringLiterals;

/// The slots that test drivers list and call by name, in their order.
class SlotsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void classesHaveTheirSlotsInOrder_data()
    {
        QTest::addColumn<const QMetaObject *>("type");
        QTest::addColumn<QString>("names");
        QTest::newRow("view") << &View::staticMetaObject << u"update(View*) documentModified(bool)"_s;
        QTest::newRow("view manager") << &ViewManager::staticMetaObject
                                      << u"split() undo() redo() cut() copy() paste() remove() back() forward() "
                                         "previous() next() selectAll() slotViewActivated(View*) viewClosed(View*)"_s;
        QTest::newRow("tabs") << &TabbedViewManager::staticMetaObject
                              << u"viewTitleChanged(View*) tabClicked(int) closeButtonClicked()"_s;
        QTest::newRow("frames") << &MDIViewManager::staticMetaObject << u"titleBarClicked()"_s;
        QTest::newRow("documents") << &Workspace::staticMetaObject << u"documentDestroyed(QObject*)"_s;
        QTest::newRow("output page")
            << &OutputPage::staticMetaObject
            << u"outputLine(QString) lookupNextLine() doLookup() outputLine(QString,LookupPlace) clear()"_s;
        QTest::newRow("output window")
            << &OutputWindow::staticMetaObject
            << u"displayPage(uint) clearPage(uint) outputLine(uint,QString) outputLine(uint,QString,bool) "
               "outputLine(QString,QString) outputLine(QString,QString,bool) lookupNextLine() selectAll() copy() "
               "paste() outputLine(uint,QString,LookupPlace)"_s;
    }
    void classesHaveTheirSlotsInOrder()
    {
        QFETCH(const QMetaObject *, type);
        QStringList found;
        for (int i = type->methodOffset(); i < type->methodCount(); ++i) {
            if (type->method(i).methodType() == QMetaMethod::Slot)
                found.append(QString::fromLatin1(type->method(i).methodSignature()));
        }
        QTEST(found.join(u' '), "names");
    }
};

QTEST_MAIN(SlotsTest)
#include "tst_slots.moc"
