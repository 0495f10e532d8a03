#include "problemreportdialog.h"
#include "productdetails.h"
#include "warninglog.h"
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;

class ProductDetailsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;

    QString write(const QString &name, const QByteArray &content) const
    {
        QDir(m_directory->path()).mkpath(QFileInfo(name).path());
        QFile file(m_directory->filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()
            || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner))
            qFatal("cannot write");
        return file.fileName();
    }

    QString lineOf(const ProductDetails &details, const QString &start) const
    {
        for (const QString &line : details.text().split(u'\n')) {
            if (line.trimmed().startsWith(start))
                return line.trimmed();
        }
        return {};
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support|test:)"_s));
        m_directory = std::make_unique<QTemporaryDir>();
    }

    void commitIsThatOfTheInstallation_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("expected");
        QTest::newRow("commit") << QByteArray("0123456789ab\n") << u"Varnel 2.9 (commit 0123456789ab)"_s;
        QTest::newRow("built outside a repository") << QByteArray() << u"Varnel 2.9"_s;
    }
    void commitIsThatOfTheInstallation()
    {
        QFETCH(const QByteArray, content);
        write(u"data/commit"_s, content);
        const ProductDetails details(u"2.9"_s, QDir(m_directory->path()), {});
        QTEST(lineOf(details, u"Varnel"_s), "expected");
        QVERIFY(!details.text().contains(u"Tools:"_s));
    }

    void pluginsAreListed()
    {
        QCOMPARE(lineOf(ProductDetails(u"1"_s, QDir(), {u"A"_s, u"B"_s}), u"Plug-ins"_s), u"Plug-ins: A, B"_s);
        QCOMPARE(lineOf(ProductDetails(u"1"_s, QDir(), {}), u"Plug-ins"_s), u"Plug-ins: none"_s);
    }

    void toolsAreAskedForTheirVersions()
    {
        const QByteArray path = qgetenv("PATH");
        write(u"good"_s, "#!/bin/sh\n[ \"$1\" = --version ] && printf 'good 1.2\\nmore\\n'\n");
        write(u"silent"_s, "#!/bin/sh\n");
        write(u"killed"_s, "#!/bin/sh\nkill -9 $$\n");
        write(u"reads"_s, "#!/bin/sh\ncat\necho reads 3\n");
        write(u"broken"_s, "#!/no/such/interpreter\n");
        qputenv("PATH", m_directory->path().toLocal8Bit() + ":/bin:/usr/bin");
        ProductDetails details(u"1"_s, QDir(), {});
        const QSignalSpy complete(&details, &ProductDetails::complete);
        const QSignalSpy changed(&details, &ProductDetails::changed);
        details.askTools({u"good"_s, u"reads"_s, u"silent"_s, u"killed"_s, u"broken"_s, u"no-such-tool"_s});
        QVERIFY(details.text().contains(u"\nTools:\n  good: ...\n"_s));
        QTRY_COMPARE(complete.size(), 1);
        qputenv("PATH", path);
        QCOMPARE(changed.size(), 6);
        QCOMPARE(lineOf(details, u"good"_s), u"good: good 1.2"_s);
        QCOMPARE(lineOf(details, u"reads"_s), u"reads: reads 3"_s);
        QCOMPARE(lineOf(details, u"silent"_s), u"silent: does not answer"_s);
        QCOMPARE(lineOf(details, u"killed"_s), u"killed: does not answer"_s);
        QCOMPARE(lineOf(details, u"broken"_s), u"broken: cannot be started"_s);
        QCOMPARE(lineOf(details, u"no-such-tool"_s), u"no-such-tool: not found"_s);
    }

    void toolThatStillRunsIsEndedWithTheDetails()
    {
        const QByteArray path = qgetenv("PATH");
        const QString started = m_directory->filePath(u"started"_s);
        write(u"slow"_s, "#!/bin/sh\ntouch " + started.toLocal8Bit() + "\nexec sleep 60\n");
        qputenv("PATH", m_directory->path().toLocal8Bit() + ":/bin:/usr/bin");
        {
            ProductDetails details(u"1"_s, QDir(), {});
            details.askTools({u"slow"_s});
            QTRY_VERIFY(QFile::exists(started));
        }
        qputenv("PATH", path);
        QCoreApplication::processEvents();
    }

    void logKeepsTheLastWarnings()
    {
        QVERIFY(WarningLog::lines().isEmpty());
        {
            const WarningLog log;
            qDebug("test: not kept");
            for (int i = 0; i < WarningLog::MostLines + 5; ++i)
                qWarning("test: %d", i);
            QCOMPARE(WarningLog::lines().size(), WarningLog::MostLines);
            QVERIFY(WarningLog::lines().first().endsWith(u"warning: test: 5"));
            qWarning("test: %s/secret", qPrintable(QDir::homePath()));
            qDebug("test: not kept");
            qInfo("test: not kept");
            QVERIFY(WarningLog::lines().last().endsWith(u"test: ~/secret"));
            qCritical("test: worse");
            QVERIFY(WarningLog::lines().last().endsWith(u"critical: test: worse"));
        }
        QVERIFY(WarningLog::lines().isEmpty());
    }

    void logTakesLinesOfOtherThreads()
    {
        const WarningLog log;
        const std::unique_ptr<QThread> thread(QThread::create([] { qWarning("test: other"); }));
        thread->start();
        QVERIFY(thread->wait());
        QVERIFY(WarningLog::lines().value(0).endsWith(u"test: other"));
    }

    void reportIsCopied()
    {
        ProblemReportDialog dialog({u"12:00:00 warning: careful"_s}, nullptr, u"dialog"_s);
        dialog.setDetails(u"Varnel 2.9"_s);
        dialog.findChild<QPlainTextEdit *>(u"descriptionEdit"_s)->setPlainText(u"It stops.\n"_s);
        QTest::mouseClick(dialog.findChild<QPushButton *>(u"copyButton"_s), Qt::LeftButton);
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 u"It stops.\n\nVarnel 2.9\n\nLast warnings: \n12:00:00 warning: careful\n"_s);
        QVERIFY(dialog.findChild<QPlainTextEdit *>(u"detailsEdit"_s)->isReadOnly());
    }

    void newDetailsKeepWhatTheUserHasWritten()
    {
        ProblemReportDialog dialog({}, nullptr, u"dialog"_s);
        dialog.findChild<QPlainTextEdit *>(u"descriptionEdit"_s)->setPlainText(u"It stops."_s);
        dialog.setDetails(u"one"_s);
        dialog.setDetails(u"two"_s);
        QCOMPARE(dialog.report(), u"It stops.\n\ntwo\n\nLast warnings: none\n"_s);
    }
};

QTEST_MAIN(ProductDetailsTest)
#include "tst_productdetails.moc"
