#pragma once
#include "parascan.h"
#include <memory>
#include <QObject>
#include <QTimer>
class IParaSource;

/// A search through all paragraphs of a view, in short pieces from the event loop, since each paragraph is fetched from
/// a plug-in. At an end of the source it continues at the other end.
class ParaSearch : public QObject
{
    Q_OBJECT
public:
    /// Both outlive this object.
    ParaSearch(TextParaView *view, IParaSource *source, QObject *parent = nullptr);
    ~ParaSearch() override;

    /// Ends the present search.
    void start(const ParaScan::Pattern &pattern, const TextParaView::Place &from);
    void cancel();
    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }

Q_SIGNALS:
    void progress(int percent);
    void found(const TextParaView::Place &place, bool wrapped);
    void notFound();

private:
    void step();
    void wrap();
    [[nodiscard]] int percent() const;

    TextParaView *const m_view;
    IParaSource *const m_source;
    ParaScan::Pattern m_pattern;
    std::unique_ptr<ParaScan> m_scan; ///< null while nothing runs
    int m_first = 0;                  ///< the paragraph at which the search began
    bool m_wrapped = false;
    int m_number = 0; ///< grows with each start and end of a search
    QTimer m_timer;
};
