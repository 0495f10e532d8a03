#pragma once
#include "applicationpaths.h"
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>

/// An installation below a temporary directory. While it is the newest one, the settings are stored there as well.
class Installation
{
public:
    Installation()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_root.filePath(QStringLiteral("settings")));
    }

    [[nodiscard]] QString path(const QString &name) const { return m_root.filePath(name); }
    [[nodiscard]] QString settingsFile() const { return path(QStringLiteral("settings/Ostrand Labs/Varnel/1.0.ini")); }

    /// The table of its directories; it is also the user's data directory and documents folder.
    [[nodiscard]] std::function<ApplicationPaths()> paths() const
    {
        return [root = QDir(m_root.path())] { return ApplicationPaths(root, [] { return std::nullopt; }); };
    }

    void write(const QString &name, const QByteArray &content) const
    {
        makeFolderOf(name);
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
    }

    /// Writes minimal versions of the files that a main window needs.
    void writeWindowFiles() const
    {
        write(QStringLiteral("config/uiconfig.xml"), "<ui/>");
        write(QStringLiteral("config/textformats.xml"),
              "<textformats><section name='Text editor'><format name='Standard text' fontFamily='Monospace' "
              "fontSize='9'/></section><section name='Output window'><format name='Text' fontFamily='Monospace' "
              "fontSize='9'/></section></textformats>");
        for (const char *picture :
             {"appicon",       "headerfile",           "csourcefile",         "pythonsourcefile",
              "textfile",      "treefolder",           "treefolderopen",      "treesourcefile",
              "treeworkspace", "treeproject",          "treeprojectinactive", "markercurrent",
              "markerlookup",  "markerenabledbreak",   "markerenabledbreak2", "markerdisabledbreak",
              "markercaller",  "markerdisabledbreak2", "markermultiplebreak", "markermultiplebreak2"})
            write(QStringLiteral("images/%1.svg").arg(QLatin1StringView(picture)),
                  "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'>"
                  "<rect width='8' height='8' fill='blue'/></svg>");
    }

    void copy(const QString &file, const QString &name) const
    {
        makeFolderOf(name);
        if (!QFile::copy(file, path(name)))
            qFatal("cannot copy %s", qPrintable(file));
    }

private:
    void makeFolderOf(const QString &name) const { QDir().mkpath(QFileInfo(path(name)).path()); }

    QTemporaryDir m_root;
};

/// The arguments of a program in the form of the parameters of main().
class Arguments
{
public:
    explicit Arguments(const QList<QByteArray> &arguments = {"varnel"}) : m_texts(arguments)
    {
        for (QByteArray &text : m_texts)
            m_pointers.append(text.data());
        m_pointers.append(nullptr);
        m_count = int(arguments.size());
    }

    [[nodiscard]] int &count() { return m_count; }
    [[nodiscard]] char **values() { return m_pointers.data(); }

private:
    QList<QByteArray> m_texts;
    QList<char *> m_pointers;
    int m_count = 0;
};
