#pragma once
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

/// A program that answers like gdb, from a table: for failures that a real one shows rarely, and without its time.
///
/// It is started by the option "gdb". A command gets the lines of the first entry whose text it begins with, and
/// "^done" if there is none. In lines, "TOKEN" is the token of the command; "SLEEP seconds" waits and "EXIT" ends the
/// program.
class FakeGdb
{
public:
    struct Answer
    {
        QString command;
        QStringList lines;
    };

    explicit FakeGdb(const QList<Answer> &answers = {})
    {
        QJsonArray table;
        for (const Answer &answer : answers + usual())
            table += QJsonArray{answer.command, QJsonArray::fromStringList(answer.lines)};
        QFile file(m_directory.filePath(QStringLiteral("table.json")));
        if (!file.open(QIODevice::WriteOnly) || !QFile::copy(QStringLiteral(PROGRAM_DIRECTORY "/fakegdb.py"), path()))
            qFatal("cannot write the program");
        file.write(QJsonDocument(table).toJson(QJsonDocument::Compact));
        file.close();
        QFile program(path());
        program.setPermissions(program.permissions() | QFile::ExeUser);
    }
    Q_DISABLE_COPY_MOVE(FakeGdb)

    [[nodiscard]] QString path() const { return m_directory.filePath(QStringLiteral("gdb")); }
    static Answer error(const QString &command, const QString &text)
    {
        return {command, {QStringLiteral("TOKEN^error,msg=\"%1\"").arg(text)}};
    }
    /// A stop in line 20 of "native.c".
    static QString stop(const QString &reason)
    {
        return QStringLiteral("*stopped,%1,").arg(reason) + frame()
               + QStringLiteral(",thread-id=\"1\",stopped-threads=\"all\"");
    }
    static QStringList running()
    {
        return {QStringLiteral("TOKEN^running"), QStringLiteral("*running,thread-id=\"all\"")};
    }

private:
    static QString frame()
    {
        return QStringLiteral("frame={addr=\"0x1000\",func=\"main\",fullname=\"" PROGRAM_DIRECTORY
                              "/native.c\",line=\"20\"}");
    }
    static QList<Answer> usual()
    {
        const auto lines = [](const char *text) { return QStringList{QString::fromLatin1(text)}; };
        return {
            {QStringLiteral("-break-insert -t"), lines("TOKEN^done,bkpt={number=\"1\",addr=\"0x1000\"}")},
            {QStringLiteral("-break-insert"),
             lines("TOKEN^done,bkpt={number=\"2\",addr=\"0x1010\",fullname=\"" PROGRAM_DIRECTORY
                   "/native.c\",line=\"21\"}")},
            {QStringLiteral("-exec-run"),
             running() + QStringList{stop(QStringLiteral("reason=\"breakpoint-hit\",disp=\"del\",bkptno=\"1\""))}},
            {QStringLiteral("-exec-interrupt"),
             {QStringLiteral("TOKEN^done"), stop(QStringLiteral("reason=\"signal-received\",signal-name=\"SIGINT\""))}},
            {QStringLiteral("-exec-"), running()},
            {QStringLiteral("-stack-info-frame"), {QStringLiteral("TOKEN^done,") + frame()}}};
    }

    QTemporaryDir m_directory;
};
