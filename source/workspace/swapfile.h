#pragma once
#include <optional>
#include <QDateTime>
#include <QLockFile>
#include <QObject>
#include <QThreadPool>
#include <QTimer>
class TextDocument;

/// Keeps a copy of a modified document's text on disk, in case the program ends without saving it. The copy is updated
/// within seconds, written in the background, and deleted when the document is saved or closed.
class SwapFile : public QObject
{
    Q_OBJECT
public:
    static constexpr int Delay = 2000; ///< milliseconds from the first change to its copy

    /// @p directory is created if it does not exist. The document is watched until it or this object is deleted.
    SwapFile(const QString &directory, TextDocument *document);
    ~SwapFile() override;

    void setDelay(int milliseconds) { m_timer.setInterval(milliseconds); }
    /// A copy is due soon, if the document is modified by then.
    void textChanged();
    /// Writes the copy if it is due, and waits until it is on disk.
    void flush();

private:
    void write();
    void remove();

    TextDocument *const m_document;
    const QString m_path;
    QLockFile m_lock; ///< shows other processes that the owner of the copy is running
    QTimer m_timer;
    QThreadPool m_writer; ///< one thread, so that copies are written in order
};

/// A text that was not saved because the program ended.
struct RecoverableText
{
    QString swapFile;
    QString filename;        ///< of the document
    QDateTime time;          ///< of the copy
    QDateTime fileTime = {}; ///< of the file when its text was read; invalid if it is unknown
    /// Whether the document's file was written after its text was read.
    [[nodiscard]] bool isNewerOnDisk() const;
};

/// The copies in @p directory whose program has ended, ordered by document and then by time. Other files are skipped.
[[nodiscard]] QList<RecoverableText> recoverableTexts(const QString &directory);
/// The text of a copy; nothing if it cannot be read.
[[nodiscard]] std::optional<QString> recoverText(const RecoverableText &text);
/// Removes the copy, when its text was recovered or is not needed.
void discardRecoverableText(const RecoverableText &text);
