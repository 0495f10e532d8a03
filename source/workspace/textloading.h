#pragma once
#include "textsource.h"
#include <QObject>
#include <QTimer>
class QTextDocument;

/// Gives a text document the text of a file. Of a large file, the first screens are taken at once and the rest while
/// the program is idle, in slices that are too short to delay input. Meanwhile the document has no undo, and adding the
/// slices does not mark it as modified.
class TextLoading : public QObject
{
    Q_OBJECT
public:
    static constexpr qsizetype LargestAtOnce = 200'000; ///< bytes of a file that is taken as a whole

    explicit TextLoading(QTextDocument *text, QObject *parent = nullptr);

    /// Replaces the text of the document by that of a file of @p size bytes.
    void start(TextSource source, qsizetype size);
    /// Whether a part of the text is missing.
    [[nodiscard]] bool isActive() const { return m_active; }
    [[nodiscard]] int percent() const { return m_source.percent(); }
    /// Takes the rest at once. Costs nothing if nothing is left. Do not call it while the document changes.
    void finish();
    /// Takes what is missing of the lines up to @p line, counted from 1, and of the next one.
    void loadTo(int line);

Q_SIGNALS:
    void activeChanged(bool active);
    void aboutToGrow();
    void grown(); ///< for each aboutToGrow()

private:
    template <typename Condition>
    void growWhile(Condition condition, qsizetype slice);
    void addSlice();
    void setActive(bool active);

    QTextDocument *const m_text;
    TextSource m_source;
    bool m_active = false;
    bool m_growing = false;
    QTimer m_timer;
};
