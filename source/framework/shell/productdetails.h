#pragma once
#include <QMap>
#include <QObject>
#include <QStringList>
class QDir;
class QProcess;

/// What a report of a problem needs to know: the versions of the program, its libraries, this computer and the tools
/// that the plug-ins use. The tools are asked in the background.
class ProductDetails : public QObject
{
    Q_OBJECT
public:
    static constexpr int ToolTime = 3000; ///< milliseconds until a tool that does not answer is ended

    /// @p root is the directory of the installation.
    ProductDetails(const QString &version, const QDir &root, const QStringList &plugins, QObject *parent = nullptr);
    ~ProductDetails() override;

    /// Starts to ask the tools for their versions, one after the other. changed() is emitted for each.
    void askTools(const QStringList &tools);
    [[nodiscard]] QString text() const; ///< Lines; tools that have not answered yet are marked.

Q_SIGNALS:
    void changed();
    void complete(); ///< All tools have answered.

private:
    void askNext();
    void answered(const QString &version);

    QStringList m_lines;
    QStringList m_tools;            ///< all of them
    QStringList m_waiting;          ///< the first is being asked
    QMap<QString, QString> m_found; ///< their versions
    std::unique_ptr<QProcess> m_process;
};

/// The tools that the shipped plug-ins start.
[[nodiscard]] QStringList usedTools();
/// The commit from which the installation below @p root was built; empty if it was built outside a repository.
[[nodiscard]] QString productCommit(const QDir &root);
