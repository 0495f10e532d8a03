#include "uifile.h"
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <sys/stat.h>
using namespace Qt::StringLiterals;

namespace {
constexpr char Panel[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>Panel</class>
 <widget class="QWidget" name="panel">
  <property name="geometry"><rect><x>0</x><y>0</y><width>200</width><height>90</height></rect></property>
  <property name="windowTitle"><string>Panel</string></property>
  <layout class="QVBoxLayout" name="layout">
   <item><widget class="QLabel" name="label"><property name="text"><string>Text</string></property></widget></item>
   <item><widget class="QPushButton" name="button"><property name="text"><string>Press</string></property></widget></item>
   <item><widget class="QComboBox" name="combo"><item><property name="text"><string>One</string></property></item></widget></item>
  </layout>
 </widget>
 <connections><connection><sender>button</sender><signal>clicked()</signal><receiver>label</receiver><slot>clear()</slot></connection></connections>
</ui>
)";

QByteArray nested(int depth)
{
    return "<ui version='4.0'>" + QByteArray("<widget class='QWidget'>").repeated(depth)
           + QByteArray("</widget>").repeated(depth) + "</ui>";
}
} // namespace

class UiFileTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_directory;

    [[nodiscard]] QString path(const QString &name) const { return m_directory.filePath(name); }
    [[nodiscard]] std::unique_ptr<QWidget> load(const QByteArray &content) const
    {
        QFile file(path(u"test.ui"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write a file");
        file.close();
        return std::unique_ptr<QWidget>(loadUiFile(file.fileName()));
    }
    /// What the loader prints on the warning channel about bad files is not tested.
    template <typename Function>
    static auto quietly(const Function &function)
    {
        const QtMessageHandler old =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        const auto restore = qScopeGuard([old] { qInstallMessageHandler(old); });
        return function();
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void fileBecomesAHiddenWindow()
    {
        const std::unique_ptr<QWidget> window = load(Panel);
        QVERIFY(window);
        QVERIFY(!window->isVisible());
        QCOMPARE(window->parent(), nullptr);
        QCOMPARE(window->windowTitle(), u"Panel"_s);
        auto *label = window->findChild<QLabel *>(u"label"_s);
        QCOMPARE(label->parent(), window.get());
        window->findChild<QPushButton *>(u"button"_s)->click();
        QCOMPARE(label->text(), QString()); // the connection of the file
    }

    void badFileIsRefused_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("some text");
        QTest::newRow("other XML") << QByteArray("<html/>");
        QTest::newRow("no widget") << QByteArray("<ui version='4.0'/>");
        QTest::newRow("unknown class") << QByteArray("<ui version='4.0'><widget class='NoSuchClass'/></ui>");
        QTest::newRow("old version") << QByteArray("<!DOCTYPE UI><UI version='3.3'><widget class='QWidget'/></UI>");
        QTest::newRow("end is missing") << QByteArray(Panel).chopped(20);
        QTest::newRow("nested too deep") << nested(100000);
        QTest::newRow("entities of entities") << QByteArray(
            "<!DOCTYPE ui [<!ENTITY a 'aaaaaaaaaaaaaaaaaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;'>"
            "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;&c;'>]>"
            "<ui version='4.0'><widget class='QWidget'><property name='windowTitle'><string>&d;&d;&d;&d;"
            "</string></property></widget></ui>");
        QTest::newRow("zeros") << QByteArray(100, '\0');
    }

    void badFileIsRefused()
    {
        QFETCH(QByteArray, content);
        QVERIFY(!quietly([&] { return load(content); }));
    }

    void hugeFileIsNotRead()
    {
        QFile file(path(u"huge.ui"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(Panel) > 0 && file.resize(qint64(1) << 40));
        QVERIFY(!loadUiFile(file.fileName()));
    }

    void widgetsMayBeNested() { QVERIFY(load(nested(100))); }

    void onlyRegularFilesAreRead()
    {
        QVERIFY(!loadUiFile(path(u"missing.ui"_s)));
        QVERIFY(!loadUiFile(m_directory.path()));
        QVERIFY(!loadUiFile(u"/dev/zero"_s));
        QVERIFY(!loadUiFile({}));
        QCOMPARE(mkfifo(path(u"pipe"_s).toLocal8Bit().constData(), 0600), 0);
        QVERIFY(!loadUiFile(path(u"pipe"_s)));
    }

    void widgetOfAClassIsCreated()
    {
        const std::unique_ptr<QWidget> button(createUiWidget(u"QPushButton"_s, u"press"_s));
        QVERIFY(qobject_cast<QPushButton *>(button.get()));
        QCOMPARE(button->objectName(), u"press"_s);
        QCOMPARE(button->parent(), nullptr);
        for (const QString &name : {u"NoSuchClass"_s, u""_s, u"QObject"_s, u"QTimer"_s})
            QVERIFY(!quietly([&name] { return createUiWidget(name, {}); }));
    }

    /// Each change of a good file gives a window or none.
    void changedFileIsSafe()
    {
        QRandomGenerator random(20260102);
        const QList<QByteArray> words{
            "QMainWindow", "QTabWidget",  "QTableWidget", "-1", "99999", "<item/>", "<row/>", "layout",
            "widget",      "<property/>", "enum",         "\"", "&#0;",  "QWizard", "name",   "<"};
        for (int i = 0; i < 600; ++i) {
            QByteArray content = Panel;
            for (int change = 0; change <= i % 4; ++change) {
                const int at = random.bounded(int(content.size()));
                content.replace(at, random.bounded(12), words.at(random.bounded(int(words.size()))));
            }
            quietly([&] { return load(content); });
        }
    }
};

QTEST_MAIN(UiFileTest)
#include "tst_uifile.moc"
