#include "scriptnames.h"
#include "timer.h"
#include <QMetaMethod>
#include <QMetaProperty>
#include <QTest>
using namespace Qt::StringLiterals;

/// Members whose names are not simply their own.
class NamedMembers : public QObject
{
    Q_OBJECT
public Q_SLOTS:
    int exec() { return 0; }
    void overloaded(int) {}
    void overloaded(const QString &) {}
    void withDefault(int, int = 2) {}

Q_SIGNALS:
    void toggledTo(bool on = false);
    void counted(int value);
    void counted(const QString &value);
};

class ScriptNamesTest : public QObject
{
    Q_OBJECT

private:
    static QByteArray signature(const QMetaObject &meta, const QString &method)
    {
        return meta.method(scriptNames(meta).methods.value(method, -1)).methodSignature();
    }
    static QByteArray signal(const QMetaObject &meta, const QString &handler)
    {
        return meta.method(scriptNames(meta).handlers.value(handler, -1)).methodSignature();
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void lastOverloadAndTheFormWithoutDefaultsHaveTheName()
    {
        const QMetaObject &meta = NamedMembers::staticMetaObject;
        QCOMPARE(signature(meta, u"overloaded"_s), "overloaded(QString)");
        QCOMPARE(signature(meta, u"withDefault"_s), "withDefault(int)");
        QCOMPARE(signal(meta, u"onToggledTo"_s), "toggledTo()");
        QCOMPARE(signal(meta, u"onCounted"_s), "counted(QString)");
        QCOMPARE(signal(meta, u"onDestroyed"_s), "destroyed()");
    }

    void execIsRenamed()
    {
        QCOMPARE(signature(NamedMembers::staticMetaObject, u"execute"_s), "exec()");
        QCOMPARE(signature(NamedMembers::staticMetaObject, u"exec"_s), "");
    }

    void slotOfASubclassHidesThatOfItsBase()
    {
        QCOMPARE(signature(QTimer::staticMetaObject, u"start"_s), "start()");
        QCOMPARE(signature(Timer::staticMetaObject, u"start"_s), "start(bool)");
        const int interval = scriptNames(Timer::staticMetaObject).properties.value(u"interval"_s);
        QCOMPARE(Timer::staticMetaObject.property(interval).enclosingMetaObject(), &Timer::staticMetaObject);
    }

    void namesAreRememberedForEachClass()
    {
        const ScriptNames timer = cachedScriptNames(Timer::staticMetaObject);
        QCOMPARE(timer.methods, scriptNames(Timer::staticMetaObject).methods);
        QCOMPARE(cachedScriptNames(QTimer::staticMetaObject).methods, scriptNames(QTimer::staticMetaObject).methods);
        QVERIFY(timer.methods.isSharedWith(cachedScriptNames(Timer::staticMetaObject).methods));
    }

    /// A plug-in may make meta-objects at run time, and delete them.
    void classAtTheAddressOfAnotherOneHasItsOwnNames()
    {
        QMetaObject meta = QTimer::staticMetaObject;
        QVERIFY(cachedScriptNames(meta).methods.contains(u"start"_s));
        meta = NamedMembers::staticMetaObject;
        QVERIFY(cachedScriptNames(meta).methods.contains(u"execute"_s));
    }
};

QTEST_GUILESS_MAIN(ScriptNamesTest)
#include "tst_scriptnames.moc"
