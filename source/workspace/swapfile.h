#pragma once
#include <optional>
#include <QDateTime>
#include <QLockFile>
#include <QObject>
#include <QThreadPool>
#include <QTimer>
class TextDocument;

/// Keeps a copy of a modified document's text on disk, for the case that the program ends without saving it. The copy
/// follows the text within seconds, is written beside the typing, and goes when the document is saved or closed.
class SwapFile : public QObject
{
    Q_OBJECT
public:
    static constexpr int Delay = 2000; ///< milliseconds from the first change to its copy

    /// @p directory is created if it is not there. The document is watched until it or this object dies.
    SwapFile(const QString &directory, TextDocument *document);
    ~SwapFile() override;

    void setDelay(int milliseconds) { m_timer.setInterval(milliseconds); }
    /// Writes the copy if it is due, and waits until it is on disk.
    void flush();

private:
    void textChanged();
    void write();
    void remove();

    TextDocument *const m_document;
    const QString m_path;
    QLockFile m_lock; ///< tells others that the owner of the copy is alive
    QTimer m_timer;
    QThreadPool m_writer; ///< one thread, so that copies follow each other
};

/// A text that was not saved because the program ended.
struct RecoverableText
{
    QString swapFile;
    QString filename; ///< of the document
    QDateTime time;   ///< of the copy
};

/// The copies in @p directory whose program is gone, ordered by document and then by time; files that are no copies are
/// left out.
[[nodiscard]] QList<RecoverableText> recoverableTexts(const QString &directory);
/// The text of a copy; nothing if it cannot be read.
[[nodiscard]] std::optional<QString> recoverText(const RecoverableText &text);
/// Removes the copy, when its text has been taken over or is not wanted.
void discardRecoverableText(const RecoverableText &text);
