#include "fakegdb.h"
#include "miconnection.h"
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// The dialogue with gdb, with recorded answers.
class tst_MiConnection : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void handlerOfARunCommandGetsALateError();
    void handlerIsForgottenAtTheStop();
    void lateAnswerEndsTheStuckState();
    void endOfGdbAnswersOpenCommands();
    void connectionThatIsNotOpenAnswersAtOnce();
    void otherLinesAreEmitted();
    void outputIsReadDuringAWait();
    void closeEndsAGdbThatOnlyReadsItsInput();
};

void tst_MiConnection::handlerOfARunCommandGetsALateError()
{
    const FakeGdb fake({{u"-exec-continue"_s,
                         {u"TOKEN^running"_s, u"*running,thread-id=\"all\""_s, u"&\"Cannot insert breakpoint 2.\\n\""_s,
                          u"TOKEN^error,msg=\"Command aborted.\""_s}}});
    MiConnection gdb;
    QString error;
    QVERIFY2(gdb.open(fake.path(), &error), qPrintable(error));
    QSignalSpy log(&gdb, &MiConnection::logText);
    QStringList answers;
    gdb.send("-exec-continue",
             [&answers](const MiRecord &answer) { answers += answer.className + answer.errorText(); });
    QTRY_COMPARE(answers, (QStringList{u"running"_s, u"errorCommand aborted."_s}));
    QCOMPARE(log.size(), 1);
    QCOMPARE(log[0][0].toString(), u"Cannot insert breakpoint 2.\n"_s);
}

void tst_MiConnection::handlerIsForgottenAtTheStop()
{
    const FakeGdb fake({{u"-exec-continue"_s,
                         {u"TOKEN^running"_s, u"*stopped,reason=\"breakpoint-hit\""_s,
                          u"TOKEN^error,msg=\"Remote connection closed\""_s}}});
    MiConnection gdb;
    QString error;
    QVERIFY(gdb.open(fake.path(), &error));
    QSignalSpy failed(&gdb, &MiConnection::failed);
    int answers = 0;
    gdb.send("-exec-continue", [&answers](const MiRecord &) { ++answers; });
    QTRY_COMPARE(failed.size(), 1); // the connection is lost after the stop, which is no failure of the command
    QCOMPARE(answers, 1);
}

void tst_MiConnection::lateAnswerEndsTheStuckState()
{
    const FakeGdb fake({{u"-slow"_s, {u"SLEEP 0.3"_s, u"TOKEN^done,value=\"late\""_s}}});
    MiConnection gdb;
    QString error;
    QVERIFY(gdb.open(fake.path(), &error));
    QCOMPARE(gdb.ask("-slow", 20).errorText(), u"gdb did not answer '-slow' within 20 ms."_s);
    QCOMPARE(gdb.ask("-data").errorText(), u"gdb does not answer."_s); // at once
    QTRY_VERIFY(gdb.ask("-data").isDone());
}

void tst_MiConnection::endOfGdbAnswersOpenCommands()
{
    const FakeGdb fake({{u"-crash"_s, {u"EXIT"_s}}});
    MiConnection gdb;
    QString error;
    QVERIFY(gdb.open(fake.path(), &error));
    QSignalSpy closed(&gdb, &MiConnection::closed);
    QString sent;
    gdb.send("-crash", [&sent](const MiRecord &answer) { sent = answer.errorText(); });
    const QString end = gdb.ask("-data").errorText(); // it may have ended before the command was sent
    QVERIFY2(end == u"gdb ended before it answered '-data'."_s || end == u"gdb ended."_s, qPrintable(end));
    QTRY_COMPARE(closed.size(), 1);
    QCOMPARE(sent, u"gdb ended."_s);
    QVERIFY(!gdb.isOpen());
}

void tst_MiConnection::connectionThatIsNotOpenAnswersAtOnce()
{
    MiConnection gdb;
    QCOMPARE(gdb.ask("-data").errorText(), u"gdb is not running."_s);
    QVERIFY(!gdb.waitUntil([] { return false; }, 10000));
}

void tst_MiConnection::otherLinesAreEmitted()
{
    const FakeGdb fake(
        {{u"-x"_s, {u"plain text"_s, u"~\"to the user\\n\""_s, u"@\"of the target\""_s, u"TOKEN^done"_s}},
         {u"-interpreter-exec"_s, {u"~\"first \""_s, u"~\"second\""_s, u"TOKEN^done"_s}}});
    MiConnection gdb;
    QString error;
    QVERIFY(gdb.open(fake.path(), &error));
    QStringList texts;
    connect(&gdb, &MiConnection::strayText, this, [&texts](const QString &text) { texts += u"stray "_s + text; });
    connect(&gdb, &MiConnection::console, this, [&texts](const QString &text) { texts += u"console "_s + text; });
    connect(&gdb, &MiConnection::targetText, this, [&texts](const QString &text) { texts += u"target "_s + text; });
    QVERIFY(gdb.ask("-x").isDone());
    QCOMPARE(texts, (QStringList{u"stray plain text\n"_s, u"console to the user\n"_s, u"target of the target"_s}));
    QString output;
    QVERIFY(gdb.askConsole(u"info line"_s, &output).isDone());
    QCOMPARE(output, u"first second"_s);
}

void tst_MiConnection::outputIsReadDuringAWait()
{
    const FakeGdb fake({{u"-slow"_s, {u"SLEEP 0.2"_s, u"TOKEN^done"_s}}});
    MiConnection gdb;
    QString error;
    QVERIFY(gdb.open(fake.path(), &error));
    int calls = 0;
    gdb.setWorkWhileWaiting([&calls] { return ++calls < 3; });
    QVERIFY(gdb.ask("-slow").isDone());
    QVERIFY2(calls > 3, qPrintable(QString::number(calls)));
}

/// Such as one that waits for an answer to a question of its own.
void tst_MiConnection::closeEndsAGdbThatOnlyReadsItsInput()
{
    const QTemporaryDir directory;
    QFile program(directory.filePath(u"gdb"_s));
    QVERIFY(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\necho '(gdb) '\ncat > \"$0.input\"\ntouch \"$0.ended\"\n");
    program.close();
    QVERIFY(program.setPermissions(program.permissions() | QFile::ExeUser));
    MiConnection gdb;
    QString error;
    QVERIFY2(gdb.open(program.fileName(), &error), qPrintable(error));
    gdb.close();
    QVERIFY(QFile::exists(program.fileName() + u".ended"_s)); // it was not killed
    QFile input(program.fileName() + u".input"_s);
    QVERIFY(input.open(QIODevice::ReadOnly));
    QCOMPARE(input.readAll(), QByteArray("-gdb-exit\n"));
}

QTEST_GUILESS_MAIN(tst_MiConnection)
#include "tst_miconnection.moc"
