#pragma once
#include "document.h"
#include "largefile.h"
#include "linemap.h"
#include "linesource.h"
#include <QTimer>

/// A file that is too large for the editor, read-only. Lines are read from the file when they are asked for; a thread
/// counts them. Until it is ready, numbers of lines far from the start are estimates.
class LargeTextDocument : public Document, public ILineSource
{
    Q_OBJECT
public:
    using Change = LargeFile::Change;
    /// Both count from 0; the column in characters of the line as it is stored.
    struct Place
    {
        int line = 0;
        int column = 0;
    };

    explicit LargeTextDocument(DocumentTemplate *docTemplate);
    ~LargeTextDocument() override;

    bool open(const QString &filename) override;
    bool create(const QString &filename) override;
    bool save() override;
    bool saveAs(const QString &filename) override;
    [[nodiscard]] QDateTime lastModified() override { return m_lastModified; }
    [[nodiscard]] QString filename() override { return m_filename; }
    [[nodiscard]] QString title() override;

    [[nodiscard]] QString line(int index) override;
    [[nodiscard]] int lineCount() override;

    [[nodiscard]] const std::shared_ptr<LargeFile> &file() const { return m_file; } ///< null before open()
    [[nodiscard]] qint64 size() const;                                              ///< bytes that are shown
    /// How much of the file has been counted.
    [[nodiscard]] int indexedPercent() const;
    [[nodiscard]] bool isIndexed() const { return !m_map || m_map->isExact(); }
    [[nodiscard]] bool isIndexed(int line) const { return !m_map || m_map->isExact(line); }

    [[nodiscard]] qint64 offsetOf(const Place &place);
    [[nodiscard]] Place placeOf(qint64 offset);

    /// What has become of the file since it was loaded.
    [[nodiscard]] Change change() const { return m_change; }
    [[nodiscard]] qint64 presentSize() const { return m_presentSize; } ///< of the file, when it was checked last
    /// Loads the file again. On failure returns false and goes on showing what is left of the old one.
    bool reload();
    /// Shows what other programs append to the file; loads it again if it was replaced.
    void setFollowing(bool following);
    [[nodiscard]] bool isFollowing() const { return m_following; }
    void checkFile(); ///< Checks whether the file has changed; called by a timer.

Q_SIGNALS:
    void renumbering(); ///< the lines are about to get other numbers, or there will be more of them
    void renumbered();
    void reloaded();
    void fileChanged(); ///< change() or presentSize() has changed
    void followingChanged(bool following);

private:
    struct IndexJob;
    struct StoredLine
    {
        QString text;
        /// Of the text: a byte order mark and a character that the line before has begun are not part of it.
        qint64 start = 0;
        bool isUtf8 = true;
        bool hasReturn = false; ///< before its line end, which is not part of the text
    };

    bool load();
    void startIndex();
    void stopIndex();
    void takeIndex();
    void extend();
    [[nodiscard]] StoredLine storedLine(int index);

    QString m_filename;
    QDateTime m_lastModified;
    std::shared_ptr<LargeFile> m_file;
    std::shared_ptr<SharedIndex> m_index;
    std::shared_ptr<IndexJob> m_job; ///< null when everything is counted
    std::unique_ptr<LineMap> m_map;
    Change m_change = Change::None;
    qint64 m_presentSize = 0;
    bool m_following = false;
    QTimer m_indexTimer;
    QTimer m_fileTimer;
};
