#pragma once
#include <QWidget>
class LargeTextDocument;
class QCheckBox;
class QLabel;
class QToolButton;

/// The row below a large file: how large it is, whether it has changed on disk, and controls to reload and to follow
/// it.
class LargeTextBar : public QWidget
{
    Q_OBJECT
public:
    explicit LargeTextBar(LargeTextDocument *document, QWidget *parent = nullptr);

    void refresh();

Q_SIGNALS:
    void findRequested();

private:
    void refreshNotice();
    void reload();

    LargeTextDocument *const m_document;
    QLabel *m_status;
    QLabel *m_notice;
    QToolButton *m_reload;
    QCheckBox *m_follow;
    bool m_reloadFailed = false;
};
