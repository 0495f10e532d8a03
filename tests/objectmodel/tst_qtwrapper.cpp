#include "pythoncompletion.h"
#include "pythonscope.h"
#include "qtwrapper.h"
#include <QColor>
#include <QLineEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <stdexcept>
using namespace Qt::StringLiterals;

/// An object with one member of each kind that scripts can or cannot use.
class ReflectedObject : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text MEMBER text NOTIFY textChanged)
    Q_PROPERTY(QByteArray bytes MEMBER bytes)
    Q_PROPERTY(int number MEMBER number)
    Q_PROPERTY(uint natural MEMBER natural)
    Q_PROPERTY(bool flag MEMBER flag)
    Q_PROPERTY(double real MEMBER real)
    Q_PROPERTY(float small MEMBER small)
    Q_PROPERTY(Mode mode MEMBER mode)
    Q_PROPERTY(Qt::Alignment alignment MEMBER alignment)
    Q_PROPERTY(QColor colour MEMBER colour)
    Q_PROPERTY(QStringList list MEMBER list)
    Q_PROPERTY(int hidden MEMBER number SCRIPTABLE false)
    Q_PROPERTY(int constant MEMBER number CONSTANT)
    Q_PROPERTY(int throwing READ throwingValue)
public:
    enum Mode : int { First, Second, Third };
    Q_ENUM(Mode)

    QString text = QStringLiteral("text");
    QByteArray bytes = "bytes";
    int number = 1;
    uint natural = 0xFFFFFFFF;
    bool flag = true;
    double real = 1.5;
    float small = 0.25f;
    Mode mode = Second;
    Qt::Alignment alignment = Qt::AlignLeft;
    QColor colour = Qt::red;
    QStringList list = {QStringLiteral("a")};
    QString log;
    QObject *object = nullptr;

    [[nodiscard]] static int throwingValue() { throw std::runtime_error("from the property"); }

public Q_SLOTS:
    int exec()
    {
        log += QStringLiteral("exec ");
        return 7;
    }
    void close(int status) { log += QStringLiteral("close%1 ").arg(status); }
    void overloaded(int) { log += QStringLiteral("int "); }
    void overloaded(const QString &) { log += QStringLiteral("string "); }
    void withDefault(int a, int b = 2) { log += QStringLiteral("%1,%2 ").arg(a).arg(b); }
    void setValues(const QString &s, bool b, int i, double d, const char *c)
    {
        log += QStringLiteral("%1 %2 %3 %4 %5|").arg(s).arg(b).arg(i).arg(d).arg(QString::fromUtf8(c));
    }
    void setWidget(QWidget *widget) { log += widget->objectName() + u' '; }
    void setColour(const QColor &) { log += QStringLiteral("colour "); }
    [[nodiscard]] QString stringResult() const { return QStringLiteral("räksmörgås"); }
    [[nodiscard]] bool boolResult() const { return true; }
    [[nodiscard]] double doubleResult() const { return 2.5; }
    [[nodiscard]] const char *charResult() const { return "chars"; }
    [[nodiscard]] QObject *objectResult() const { return object; }
    [[nodiscard]] QWidget *widgetResult() const { return qobject_cast<QWidget *>(object); }
    [[nodiscard]] ReflectedObject *reflectedResult() const { return nullptr; }
    [[nodiscard]] QColor colourResult() const { return Qt::red; }
    void throwError() { throw std::runtime_error("from the slot"); }
    void throwNumber() { throw 5; }
    void deleteObject() { delete object; }
    void deleteThis() { delete this; }
    void emitTextChanged() { Q_EMIT textChanged(text); }
    void emitEverything(const QString &s, int i) { Q_EMIT everything(s, true, i, 1.5, "c", this); }
    void emitColour() { Q_EMIT colourPicked(Qt::red); }
    void emitReflected() { Q_EMIT reflected(this); }
    void emitWithDefault() { Q_EMIT toggledTo(true); }
    void emitCounted(int count)
    {
        for (int i = 0; i < count; ++i)
            Q_EMIT counted(i);
    }
    void emitLast() { Q_EMIT counted(0); }

public:
    Q_INVOKABLE void invokable() {}

protected Q_SLOTS:
    void protectedSlot() {}
private Q_SLOTS:
    void privateSlot() {}

Q_SIGNALS:
    void textChanged(const QString &text);
    void everything(const QString &s, bool b, int i, double d, const char *c, QObject *object);
    void colourPicked(const QColor &colour);
    void reflected(ReflectedObject *object);
    void toggledTo(bool on = false);
    void counted(int value);
    void counted(const QString &value);
};

class QtWrapperTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<PythonScope> m_python;
    QPointer<ReflectedObject> m_object;

    void offer(const char *name, QObject *object, bool owned = false)
    {
        m_python->set(name, QtWrapper::get(object, owned)->pythonObject());
    }
    QString run(const QByteArray &script) { return m_python->run(script); }
    QString value(const QByteArray &expression) { return m_python->value(expression); }
    QString error(const QByteArray &script) { return m_python->error(script); }
    [[nodiscard]] QString takeLog() const { return std::exchange(m_object->log, {}).trimmed(); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_python = std::make_unique<PythonScope>();
        m_object = new ReflectedObject;
        m_object->setObjectName(u"sample"_s);
        offer("w", m_object);
        run("calls = []");
    }

    void cleanup()
    {
        QVERIFY(!PyErr_Occurred());
        QVERIFY(!PythonCall::isRunning());
        delete m_object;
        m_python.reset();
        QtWrapper::deleteAll();
        QCOMPARE(QtWrapper::count(), 0);
    }

    // The registry

    void objectHasOneWrapper()
    {
        QtWrapper *wrapper = QtWrapper::get(m_object, true); // the flag of the first call stays
        QCOMPARE(QtWrapper::get(m_object, false), wrapper);
        QCOMPARE(QtWrapper::count(), 1);
        QCOMPARE(wrapper->object(), m_object.data());
        const PythonReference object = wrapper->pythonObject();
        QCOMPARE(object.get(), m_python->get("w").get());
        QCOMPARE(QtWrapper::of(object.get()), wrapper);
        QCOMPARE(QtWrapper::of(Py_None), nullptr);
        QtWrapper::deleteAll();
        QVERIFY(m_object);
    }

    void wrapperDeletesOnlyTheObjectThatItOwns()
    {
        const QPointer<QObject> owned = new QObject;
        QtWrapper::get(owned, true);
        QtWrapper::deleteAll();
        QVERIFY(!owned);
        QVERIFY(m_object);
    }

    void wrapperOfADeadObjectServesALaterOneAtItsAddress()
    {
        alignas(QObject) std::byte place[sizeof(QObject)];
        auto *first = new (place) QObject;
        QtWrapper *wrapper = QtWrapper::get(first, false);
        first->~QObject();
        auto *second = new (place) QObject;
        QCOMPARE(QtWrapper::get(second, false), wrapper);
        QCOMPARE(wrapper->object(), nullptr);
        second->~QObject();
    }

    void deadObjectIsReportedByEveryAccess()
    {
        run("w.onTextChanged = lambda *given: None; close = w.close");
        delete m_object;
        QCOMPARE(value("w"), u"<Destroyed object>"_s);
        for (const char *access : {"w.text", "w.x", "w.slots", "w.children", "w.onTextChanged", "w.text = 'a'",
                                   "w.x = 1", "w.onTextChanged = None", "close(1)"})
            QCOMPARE(error(access), u"RuntimeError: Object has been destroyed"_s);
        QCOMPARE(QtWrapper::count(), 1); // it stays until the end
    }

    void scriptMayKeepTheObjectOfADeletedWrapper()
    {
        run("close = w.close");
        QtWrapper::deleteAll();
        QCOMPARE(value("w"), u"<Destroyed object>"_s);
        for (const char *access : {"w.text", "w.text = 'a'", "close(1)"})
            QCOMPARE(error(access), u"RuntimeError: Object has been destroyed"_s);
        QCOMPARE(value("dir(w)"), u"[]"_s);
    }

    void endReleasesHandlers()
    {
        run("def handler(*given): pass\n"
            "w.onTextChanged = handler");
        const PythonReference handler = m_python->get("handler");
        const Py_ssize_t before = Py_REFCNT(handler.get());
        QtWrapper::deleteAll();
        QCOMPARE(Py_REFCNT(handler.get()), before - 1);
    }

    // Names

    void textShowsClassNameAndAddress()
    {
        const QString address = QString::asprintf("%.8llX", qulonglong(quintptr(m_object.data())));
        QCOMPARE(value("w"), u"<ReflectedObject instance 'sample' at 0x"_s + address + u'>');
        m_object->setObjectName(u"a%1%3"_s);
        QCOMPARE(value("w"), u"<ReflectedObject instance 'a%1%3' at 0x"_s + address + u'>');
        m_object->setObjectName(QString());
        QCOMPARE(value("w"), u"<ReflectedObject instance 'unnamed' at 0x"_s + address + u'>');
    }

    void listsAreSortedAndWithoutParameters()
    {
        QPushButton button;
        offer("b", &button);
        QCOMPARE(value("b.slots"),
                 u"['animateClick', 'click', 'close', 'deleteLater', 'hide', 'lower', 'raise', 'repaint', "
                 "'setChecked', 'setDisabled', 'setEnabled', 'setFocus', 'setHidden', 'setIconSize', 'setStyleSheet', "
                 "'setVisible', 'setWindowModified', 'setWindowTitle', 'show', 'showFullScreen', 'showMaximized', "
                 "'showMenu', 'showMinimized', 'showNormal', 'toggle', 'update']"_s);
        QCOMPARE(value("b.signals"),
                 u"['onClicked', 'onCustomContextMenuRequested', 'onDestroyed', 'onObjectNameChanged', 'onPressed', "
                 "'onReleased', 'onToggled', 'onWindowIconChanged', 'onWindowIconTextChanged', "
                 "'onWindowTitleChanged']"_s);
        QCOMPARE(value("sorted(b.properties) == b.properties and 'checkable' in b.properties"), u"True"_s);
    }

    void onlyPublicSlotsAndScriptablePropertiesAreMembers()
    {
        const QString slots = value("w.slots");
        QVERIFY(slots.contains(u"'execute'"_s));
        for (const QString &name : {u"exec'"_s, u"protectedSlot"_s, u"privateSlot"_s, u"invokable"_s})
            QVERIFY2(!slots.contains(name), qPrintable(name));
        QVERIFY(!value("w.properties").contains(u"hidden"_s));
    }

    void dirListsAllNames()
    {
        auto *child = new QObject(m_object);
        child->setObjectName(u"firstChild"_s);
        (new QObject(m_object))->setObjectName(u"_secret"_s);
        run("names = dir(w)");
        for (const char *name :
             {"firstChild", "text", "close", "onTextChanged", "properties", "signals", "slots", "children"})
            QCOMPARE(value("'"_ba + name + "' in names"), u"True"_s);
        QCOMPARE(value("'_secret' in names or '' in names"), u"False"_s);
    }

    void consoleCompletesNames()
    {
        QCOMPARE(pythonCompletions(m_python->globals(), u"w.clo"_s), QStringList({u"w.close"_s}));
        QCOMPARE(pythonCompletions(m_python->globals(), u"w.col"_s), QStringList({u"w.colour"_s, u"w.colourResult"_s}));
    }

    // Children

    void childrenAreAttributesByName()
    {
        for (const QString &name : {u"one"_s, u"_secret"_s, u""_s, u"two"_s})
            (new QObject(m_object))->setObjectName(name);
        (new QObject(m_object->children().first()))->setObjectName(u"grandchild"_s);
        QCOMPARE(value("[c.objectName for c in w.children]"), u"['one', '', 'two']"_s);
        QCOMPARE(value("w.one is w.children[0]"), u"True"_s);
        QCOMPARE(error("w._secret"), u"AttributeError: Unknown property '_secret'"_s);
        QCOMPARE(error("w.grandchild"), u"AttributeError: Unknown property 'grandchild'"_s);
        QCOMPARE(error("getattr(w, '')"), u"AttributeError: Unknown property ''"_s);
        QCOMPARE(error("w.one = 1"), u"AttributeError: Unknown property"_s);
    }

    void childIsNotOwnedByItsWrapper()
    {
        const QPointer<QObject> child = new QObject(m_object);
        child->setObjectName(u"one"_s);
        run("w.one");
        QtWrapper::deleteAll();
        QVERIFY(child);
    }

    void childHidesAPropertyAndAListHidesAChild()
    {
        (new QObject(m_object))->setObjectName(u"number"_s);
        (new QObject(m_object))->setObjectName(u"slots"_s);
        QVERIFY(value("w.number").startsWith(u"<QObject instance 'number'"_s));
        QVERIFY(value("w.slots").startsWith(u"['boolResult'"_s));
        run("w.number = 5"); // assignments skip children
        QCOMPARE(m_object->number, 5);
    }

    // Properties

    void propertyIsRead_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("string") << u"text"_s << u"'text'"_s;
        QTest::newRow("bytes") << u"bytes"_s << u"'bytes'"_s;
        QTest::newRow("int") << u"number"_s << u"1"_s;
        QTest::newRow("unsigned int is signed") << u"natural"_s << u"-1"_s;
        QTest::newRow("bool is an int") << u"flag"_s << u"1"_s;
        QTest::newRow("double") << u"real"_s << u"1.5"_s;
        QTest::newRow("float") << u"small"_s << u"0.25"_s;
        QTest::newRow("enumeration") << u"mode"_s << u"1"_s;
        QTest::newRow("flags") << u"alignment"_s << u"1"_s;
    }

    void propertyIsRead()
    {
        QFETCH(QString, name);
        QTEST(value("w." + name.toUtf8()), "expected");
    }

    void propertyOfAnotherTypeIsRefused()
    {
        QCOMPARE(error("w.colour"), u"TypeError: Property type is unsupported (QColor)"_s);
        QCOMPARE(error("w.list"), u"TypeError: Property type is unsupported (QStringList)"_s);
        QCOMPARE(error("w.hidden"), u"AttributeError: Unknown property 'hidden'"_s);
        QCOMPARE(error("w.throwing"), u"RuntimeError: from the property"_s);
    }

    void propertyIsWritten_data()
    {
        QTest::addColumn<QString>("assignment");
        QTest::addColumn<QString>("expected");
        QTest::newRow("string") << u"w.text = 'åŁ😀'"_s << u"'åŁ😀'"_s;
        QTest::newRow("empty string") << u"w.text = ''"_s << u"''"_s;
        QTest::newRow("null character") << u"w.text = 'a\\0b'"_s << u"'a\\x00b'"_s;
        QTest::newRow("string subclass") << u"w.text = type('S', (str,), {})('s')"_s << u"'s'"_s;
        QTest::newRow("int as string") << u"w.text = 5"_s << u"'5'"_s;
        QTest::newRow("int") << u"w.number = -5"_s << u"-5"_s;
        QTest::newRow("bool for an int") << u"w.number = True"_s << u"1"_s;
        QTest::newRow("string as int") << u"w.number = '12'"_s << u"12"_s;
        QTest::newRow("float as int") << u"w.number = 2.2"_s << u"2"_s;
        QTest::newRow("32 bits") << u"w.natural = 0xFFFFFFFE"_s << u"-2"_s;
        QTest::newRow("bool") << u"w.flag = 0"_s << u"0"_s;
        QTest::newRow("int as double") << u"w.real = 3"_s << u"3.0"_s;
        QTest::newRow("enumeration") << u"w.mode = 2"_s << u"2"_s;
        QTest::newRow("enumeration by name") << u"w.mode = 'Third'"_s << u"2"_s;
        QTest::newRow("flags") << u"w.alignment = 0x84"_s << u"132"_s;
        QTest::newRow("string as colour") << u"w.colour = 'blue'"_s << u"'-'"_s;
    }

    void propertyIsWritten()
    {
        QFETCH(QString, assignment);
        QCOMPARE(run(assignment.toUtf8()), QString());
        if (assignment.contains(u"colour"_s))
            QCOMPARE(m_object->colour, QColor(Qt::blue));
        else
            QTEST(value(assignment.section(u' ', 0, 0).toUtf8()), "expected");
    }

    void propertyRefusesAValue_data()
    {
        QTest::addColumn<QString>("assignment");
        QTest::addColumn<QString>("expected");
        const auto unsupported = u"TypeError: Unsupported Python type"_s;
        QTest::newRow("None") << u"w.text = None"_s << unsupported;
        QTest::newRow("list") << u"w.text = []"_s << unsupported;
        QTest::newRow("bytes") << u"w.text = b'a'"_s << unsupported;
        QTest::newRow("wrapper") << u"w.text = w"_s << unsupported;
        QTest::newRow("no number") << u"w.number = 'abc'"_s << u"AttributeError: Could not set property"_s;
        QTest::newRow("no list") << u"w.list = 1.5"_s << u"AttributeError: Could not set property"_s;
        QTest::newRow("large number") << u"w.number = 1 << 32"_s << u"OverflowError: The number is too large"_s;
        QTest::newRow("small number") << u"w.number = -(1 << 31) - 1"_s << u"OverflowError: The number is too large"_s;
        QTest::newRow("read only") << u"w.constant = 1"_s << u"AttributeError: Property is read-only"_s;
        QTest::newRow("read only before type") << u"w.constant = None"_s << u"AttributeError: Property is read-only"_s;
        QTest::newRow("not scriptable") << u"w.hidden = 1"_s << u"AttributeError: Unknown property"_s;
        QTest::newRow("unknown name") << u"w.nosuch = 1"_s << u"AttributeError: Unknown property"_s;
        QTest::newRow("slot") << u"w.close = 1"_s << u"AttributeError: Unknown property"_s;
        QTest::newRow("list of names") << u"w.slots = 1"_s << u"AttributeError: Unknown property"_s;
        QTest::newRow("deletion") << u"del w.text"_s << u"AttributeError: Attributes cannot be deleted"_s;
    }

    void propertyRefusesAValue()
    {
        QFETCH(QString, assignment);
        QTEST(error(assignment.toUtf8()), "expected");
        QCOMPARE(m_object->number, 1);
        QCOMPARE(m_object->text, u"text"_s);
    }

    void unknownNameIsAnAttributeError()
    {
        QCOMPARE(error("w.nosuch"), u"AttributeError: Unknown property 'nosuch'"_s);
        QCOMPARE(error("w.__class__"), u"AttributeError: Unknown property '__class__'"_s);
        QCOMPARE(error("w.exec"), u"AttributeError: Unknown property 'exec'"_s);
        QCOMPARE(value("hasattr(w, 'nosuch')"), u"False"_s);
        QCOMPARE(value("isinstance(w, type(w))"), u"True"_s);
    }

    // Slots

    void slotIsCalled()
    {
        QCOMPARE(value("w.execute()"), u"7"_s);
        QCOMPARE(value("w.close(3)"), u"None"_s);
        run("w.setValues('s', 1, -2, 2.5, 'c'); w.setValues('', False, 2.9, 1, ''); w.setValues('s', 0.5, True, 0, "
            "'å')");
        QCOMPARE(takeLog(), u"exec close3 s 1 -2 2.5 c| 0 2 1 |s 0 1 0 å|"_s);
    }

    void resultIsConverted_data()
    {
        QTest::addColumn<QString>("slot");
        QTest::addColumn<QString>("expected");
        QTest::newRow("string") << u"stringResult"_s << u"'räksmörgås'"_s;
        QTest::newRow("bool") << u"boolResult"_s << u"1"_s;
        QTest::newRow("double") << u"doubleResult"_s << u"2.5"_s;
        QTest::newRow("chars") << u"charResult"_s << u"'chars'"_s;
        QTest::newRow("null pointer") << u"objectResult"_s << u"None"_s;
    }

    void resultIsConverted()
    {
        QFETCH(QString, slot);
        QTEST(value("w." + slot.toUtf8() + "()"), "expected");
    }

    void resultOfAnotherTypeIsRefused()
    {
        QCOMPARE(error("w.colourResult()"), u"TypeError: Unsupported parameter type (QColor)"_s);
        QCOMPARE(error("w.reflectedResult()"), u"TypeError: Unsupported pointer type (ReflectedObject*)"_s);
    }

    void objectsAreResultsAndArguments()
    {
        QLineEdit edit;
        edit.setObjectName(u"edit"_s);
        m_object->object = &edit;
        QVERIFY(value("w.objectResult()").startsWith(u"<QLineEdit instance 'edit'"_s));
        QCOMPARE(value("w.widgetResult() is w.objectResult()"), u"True"_s);
        run("w.setWidget(w.objectResult())");
        QCOMPARE(takeLog(), u"edit"_s);
    }

    void wrongArgumentIsRefused_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("expected");
        QTest::newRow("too many") << u"w.close(1, 2)"_s << u"TypeError: close expects 1 arguments"_s;
        QTest::newRow("too few") << u"w.close()"_s << u"TypeError: close expects 1 arguments"_s;
        QTest::newRow("name of the toolkit") << u"w.execute(1)"_s << u"TypeError: exec expects 0 arguments"_s;
        QTest::newRow("keyword") << u"w.close(status=1)"_s << u"TypeError: close takes no keyword arguments"_s;
        QTest::newRow("string for int") << u"w.close('1')"_s
                                        << u"TypeError: 'str' object cannot be interpreted as an integer"_s;
        QTest::newRow("None for int") << u"w.close(None)"_s
                                      << u"TypeError: 'NoneType' object cannot be interpreted as an integer"_s;
        QTest::newRow("large int") << u"w.close(1 << 70)"_s << u"OverflowError: int too big to convert"_s;
        QTest::newRow("infinite int") << u"w.close(float('inf'))"_s
                                      << u"OverflowError: cannot convert float infinity to integer"_s;
        QTest::newRow("int for string") << u"w.setValues(1, 1, 1, 1, 'c')"_s
                                        << u"TypeError: String expected, int found"_s;
        QTest::newRow("bytes for string")
            << u"w.setValues(b's', 1, 1, 1, 'c')"_s << u"TypeError: String expected, bytes found"_s;
        QTest::newRow("string for double")
            << u"w.setValues('s', 1, 1, '1', 'c')"_s << u"TypeError: must be real number, not str"_s;
        QTest::newRow("None for chars") << u"w.setValues('s', 1, 1, 1, None)"_s
                                        << u"TypeError: String expected, NoneType found"_s;
        QTest::newRow("object of another class") << u"w.setWidget(w)"_s << u"TypeError: Expected QWidget*"_s;
        QTest::newRow("no object") << u"w.setWidget(5)"_s << u"TypeError: Expected QWidget*"_s;
        QTest::newRow("None for an object") << u"w.setWidget(None)"_s << u"TypeError: Expected QWidget*"_s;
        QTest::newRow("type without conversion")
            << u"w.setColour('red')"_s << u"TypeError: Unsupported parameter type (QColor)"_s;
    }

    void wrongArgumentIsRefused()
    {
        QFETCH(QString, call);
        QTEST(error(call.toUtf8()), "expected");
        QCOMPARE(takeLog(), QString()); // the slot was not called
    }

    void loneSurrogateIsNoCString()
    {
        QVERIFY(error("w.setValues('s', 1, 1, 1, '\\ud800')").startsWith(u"UnicodeEncodeError"_s));
        QCOMPARE(takeLog(), QString());
    }

    void deadObjectIsNoArgument()
    {
        auto *edit = new QLineEdit;
        offer("edit", edit);
        delete edit;
        QCOMPARE(error("w.setWidget(edit)"), u"TypeError: Expected QWidget*"_s);
    }

    void lastOverloadHasTheName()
    {
        QCOMPARE(error("w.overloaded(1)"), u"TypeError: String expected, int found"_s);
        run("w.overloaded('a')");
        QCOMPARE(takeLog(), u"string"_s);
        QCOMPARE(error("w.withDefault(1, 5)"), u"TypeError: withDefault expects 1 arguments"_s);
        run("w.withDefault(1)");
        QCOMPARE(takeLog(), u"1,2"_s);
    }

    void exceptionOfASlotBecomesARuntimeError()
    {
        QCOMPARE(error("w.throwError()"), u"RuntimeError: from the slot"_s);
        QCOMPARE(error("w.throwNumber()"), u"RuntimeError: unknown exception"_s);
    }

    void slotMayDeleteItsObject()
    {
        QCOMPARE(value("w.deleteThis()"), u"None"_s);
        QVERIFY(!m_object);
        QCOMPARE(value("w"), u"<Destroyed object>"_s);
    }

    void slotObjectAnswersOnlyItsName()
    {
        run("slot = w.close.__func__");
        QCOMPARE(value("type(slot).__name__, type(w).__name__"), u"('PySlotWrapper', 'PyQtWrapper')"_s);
        QCOMPARE(value("slot.__name__, slot.__qualname__"), u"('close', 'close')"_s);
        QVERIFY(error("slot.__doc__").startsWith(u"SystemError: "_s));
        QVERIFY(error("slot.name").startsWith(u"SystemError: "_s));
        run("slot('any object', 4)"); // the first item is not looked at
        QCOMPARE(takeLog(), u"close4"_s);
        QCOMPARE(error("slot()"), u"TypeError: close expects 1 arguments"_s);
        QVERIFY(value("w.close").startsWith(u"<bound method close of <ReflectedObject instance"_s));
    }

    void typesCannotBeInstantiated()
    {
        QCOMPARE(error("type(w)()"), u"TypeError: cannot create 'PyQtWrapper' instances"_s);
        QVERIFY(error("class C(type(w)): pass\nC()").startsWith(u"TypeError: "_s));
        QVERIFY(error("object.__new__(type(w))").startsWith(u"TypeError: "_s));
        QVERIFY(error("object.__new__(C)").startsWith(u"TypeError: "_s));
        QVERIFY(error("type(w.close.__func__)()").startsWith(u"TypeError: "_s));
    }

    // Handlers

    void handlerGetsTheSenderAndTheArguments()
    {
        run("w.onEverything = lambda *given: calls.append(given); w.emitEverything('så', 5)");
        QCOMPARE(value("calls[0][1:6]"), u"('så', 1, 5, 1.5, 'c')"_s);
        QCOMPARE(value("calls[0][0] is w and calls[0][6] is w"), u"True"_s);
    }

    void handlerIsReadAndRemoved()
    {
        QCOMPARE(value("w.onTextChanged"), u"None"_s);
        run("def handler(*given): calls.append(len(given))\n"
            "w.onTextChanged = handler");
        QCOMPARE(value("w.onTextChanged is handler"), u"True"_s);
        run("w.emitTextChanged()\n"
            "w.onTextChanged = None\n"
            "w.onTextChanged = None\n"
            "w.emitTextChanged()");
        QCOMPARE(value("calls, w.onTextChanged"), u"([2], None)"_s);
        QCOMPARE(error("w.onTextChanged = 5"), u"TypeError: Function expected"_s);
    }

    void refusedHandlerKeepsTheOldOne()
    {
        run("w.onTextChanged = lambda *given: calls.append(1)");
        QCOMPARE(error("w.onTextChanged = 'print'"), u"TypeError: Function expected"_s);
        run("w.emitTextChanged()");
        QCOMPARE(value("calls"), u"[1]"_s);
    }

    void anySignalCallsItsHandlerAlone()
    {
        run("w.onTextChanged = lambda *given: calls.append('text'); w.onCounted = lambda *given: "
            "calls.append('counted')");
        Q_EMIT m_object->textChanged({});
        QCOMPARE(value("calls"), u"['text']"_s);
    }

    void signalWithDefaultArgumentsPassesNone()
    {
        run("w.onToggledTo = lambda *given: calls.append(given[1:]); w.emitWithDefault()");
        QCOMPARE(value("calls"), u"[()]"_s);
        QPushButton button;
        offer("b", &button);
        run("b.onClicked = lambda *given: calls.append(given == (b,))");
        button.click();
        QCOMPARE(value("calls"), u"[(), True]"_s);
    }

    void lastOverloadOfASignalHasTheName()
    {
        run("w.onCounted = lambda sender, value: calls.append(value)");
        Q_EMIT m_object->counted(5);
        Q_EMIT m_object->counted(u"six"_s);
        QCOMPARE(value("calls"), u"['six']"_s);
    }

    void signalThatCannotBeConvertedIsDropped()
    {
        run("w.onColourPicked = lambda *given: calls.append(1); w.onReflected = w.onColourPicked");
        Q_EMIT m_object->colourPicked(Qt::red);
        QCOMPARE(m_python->shown(), QString()); // the error waits for the next call
        QVERIFY(!PyErr_Occurred());
        QVERIFY(run("calls.append(2)").endsWith(u"TypeError: Unsupported parameter type (QColor)\n"_s));
        QVERIFY(run("w.emitReflected(); calls.append(3)")
                    .endsWith(u"TypeError: Unsupported pointer type (ReflectedObject*)\n"_s));
        QCOMPARE(value("calls"), u"[2, 3]"_s);
    }

    void exceptionInAHandlerIsPrinted()
    {
        run("w.onTextChanged = lambda *given: 1 / 0");
        Q_EMIT m_object->textChanged({});
        const QString shown = m_python->shown();
        QVERIFY(shown.startsWith(u"Traceback"_s));
        QVERIFY(shown.endsWith(u"ZeroDivisionError: division by zero\n"_s));
        QVERIFY(run("w.emitTextChanged(); calls.append('on')").contains(u"ZeroDivisionError"_s));
        QCOMPARE(value("calls"), u"['on']"_s);
    }

    void handlerMayReplaceItself()
    {
        run("class Handler:\n"
            "  name = 'first'\n"
            "  def __call__(self, *given):\n"
            "    w.onTextChanged = None\n"
            "    calls.append(self.name)\n"
            "w.onTextChanged = Handler()\n" // the only reference
            "w.emitTextChanged(); w.emitTextChanged()");
        QCOMPARE(value("calls"), u"['first']"_s);
    }

    void destructorOfAHandlerMaySetAnother()
    {
        run("class Last:\n"
            "  def __call__(self, *given): pass\n"
            "  def __del__(self): w.onTextChanged = lambda *given: calls.append('next')\n"
            "w.onTextChanged = Last()\n"
            "w.onTextChanged = None\n"
            "w.emitTextChanged()");
        QCOMPARE(value("calls"), u"['next']"_s);
    }

    void handlerMayDeleteItsSender()
    {
        auto *killer = new ReflectedObject;
        killer->object = m_object;
        offer("killer", killer, true);
        run("def handler(sender, text):\n"
            "  killer.deleteObject()\n"
            "  calls.append(repr(sender))\n"
            "w.onTextChanged = handler");
        Q_EMIT m_object->textChanged({});
        QVERIFY(!m_object);
        QCOMPARE(value("calls"), u"['<Destroyed object>']"_s);
    }

    void handlerMayDeleteAllWrappers()
    {
        const QPointer<QObject> owned = new ReflectedObject;
        offer("owned", owned, true);
        connect(m_object, qOverload<int>(&ReflectedObject::counted), m_object, [] { QtWrapper::deleteAll(); });
        run("def handler(*given):\n"
            "  w.emitLast()\n"
            "  calls.append(repr(w))\n"
            "owned.onTextChanged = handler\n"
            "owned.emitTextChanged()\n"
            "calls.append('end')");
        QCOMPARE(value("calls"), u"['<Destroyed object>', 'end']"_s);
        QVERIFY(owned); // its signal was being emitted
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!owned);
    }

    void endOfAnObjectReachesItsHandler()
    {
        run("w.onDestroyed = lambda *given: calls.append((len(given), repr(given[0])))");
        delete m_object;
        QCOMPARE(value("calls"), u"[(1, '<Destroyed object>')]"_s);
    }

    void recursionEndsWithAnError()
    {
        run("w.onTextChanged = lambda *given: w.emitTextChanged()");
        const QString shown = run("w.emitTextChanged()");
        QVERIFY(shown.contains(u"RecursionError"_s));
        run("w.onTextChanged = lambda *given: calls.append(1)\nw.emitTextChanged()");
        QCOMPARE(value("calls"), u"[1]"_s);
    }

    void signalOfAnotherThreadIsQueued()
    {
        run("import threading; w.onTextChanged = lambda sender, text: calls.append(text)");
        const std::unique_ptr<QThread> thread(
            QThread::create([this] { Q_EMIT m_object->textChanged(u"from afar"_s); }));
        thread->start();
        QVERIFY(thread->wait());
        QCOMPARE(value("calls"), u"[]"_s);
        QCoreApplication::processEvents();
        QCOMPARE(value("calls"), u"['from afar']"_s);
    }

    // Growth and hostile use

    void tenThousandRoundsDoNotGrow_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("property read") << QByteArray("w.text");
        QTest::newRow("property write") << QByteArray("w.text = 'a'");
        QTest::newRow("slot") << QByteArray("w.setValues('s', 1, 2, 3, 'c')");
        QTest::newRow("result") << QByteArray("w.stringResult()");
        QTest::newRow("handler") << QByteArray("w.onTextChanged = lambda *given: None");
        QTest::newRow("signal") << QByteArray("w.emitTextChanged()");
        QTest::newRow("lists") << QByteArray("w.slots; w.signals; w.properties; w.children; dir(w)");
        QTest::newRow("child") << QByteArray("w.one.objectName");
        QTest::newRow("unknown name") << QByteArray("hasattr(w, 'nosuch')");
        QTest::newRow("refused call") << QByteArray("try: w.close()\n  except TypeError: pass");
        QTest::newRow("text") << QByteArray("repr(w); repr(w.close)");
    }

    void tenThousandRoundsDoNotGrow()
    {
        QFETCH(QByteArray, script);
        (new QObject(m_object))->setObjectName(u"one"_s);
        run("import gc, sys\nw.one\nw.onTextChanged = lambda *given: None\n"
            "def work(n):\n"
            " for i in range(n):\n  "
            + script
            + "\n"
              "work(100); gc.collect(); objects = len(gc.get_objects()); blocks = sys.getallocatedblocks()\n"
              "work(10000); gc.collect()\n"
              "grown = len(gc.get_objects()) - objects, sys.getallocatedblocks() - blocks");
        QVERIFY2(value("grown[0]").toInt() <= 0, qPrintable(value("grown")));
        QVERIFY2(value("grown[1]").toInt() < 100, qPrintable(value("grown")));
        QCOMPARE(QtWrapper::count(), 2);
    }

    void thousandsOfWrappersShareTheNamesOfTheirClass()
    {
        QObject parent;
        for (int i = 0; i < 5000; ++i)
            (new QTimer(&parent))->setObjectName(u"t%1"_s.arg(i));
        offer("p", &parent);
        QCOMPARE(value("len(p.children), p.t4999.objectName"), u"(5000, 't4999')"_s);
        QCOMPARE(QtWrapper::count(), 5002);
    }

    /// Any name and any value gives a result or one of the exceptions for scripts, and never changes another member.
    void anyAttributeNameAndValueIsSafe()
    {
        const QtMessageHandler old =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        const auto restore = qScopeGuard([old] { qInstallMessageHandler(old); }); // widgets warn of absurd values
        QRandomGenerator random(20260101);
        QWidget widget;
        QLineEdit edit(&widget);
        edit.setObjectName(u"edit"_s);
        offer("p", &widget);
        offer("edit", &edit);
        run("import warnings\n"
            "refused = (AttributeError, TypeError, RuntimeError, OverflowError, SystemError, UnicodeEncodeError, "
            "ValueError)\n"
            "skipped = {'deleteLater', 'deleteThis', 'deleteObject', 'showFullScreen'}\n"
            "values = [None, 0, 1, -1, 2**31, 2**64, 1.5, float('nan'), float('inf'), '', 'a', '\\0', '\\ud800', 'x' * "
            "5000, b'',\n"
            "  [], {}, (), w, p, w.close, type(w), len, object(), True]\n"
            "names = ['', '_', '__class__', '__dict__', 'nosuch', '\\0', '\\ud800', 'é', 'x' * 5000]\n"
            "def attempt(function, *given):\n"
            "  try: function(*given)\n"
            "  except refused: pass\n"
            "def round(target, name, value, count):\n"
            "  if name in skipped: return\n"
            "  attempt(setattr, target, name, value)\n"
            "  attempt(delattr, target, name)\n"
            "  attempt(getattr, target, name)\n"
            "  try: slot = getattr(target, name)\n"
            "  except refused: return\n"
            "  if name in target.slots: attempt(slot, *[value] * count)\n"
            "targets = [(t, names + dir(t)) for t in (w, p, edit)]\n");
        for (int i = 0; i < 3000; ++i) {
            const QString shown =
                run(QByteArray("t, n = targets[%1 % 3]\nround(t, n[%2 % len(n)], values[%3 % len(values)], %4)")
                        .replace("%1", QByteArray::number(random.bounded(1000)))
                        .replace("%2", QByteArray::number(random.bounded(100000)))
                        .replace("%3", QByteArray::number(random.bounded(1000)))
                        .replace("%4", QByteArray::number(random.bounded(4))));
            // Handlers may be set to types and functions that refuse the arguments.
            QVERIFY2(shown.isEmpty() || shown.contains(u"Error"_s), qPrintable(shown));
        }
        QVERIFY(m_object);
    }
};

QTEST_MAIN(QtWrapperTest)
#include "tst_qtwrapper.moc"
