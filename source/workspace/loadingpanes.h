#pragma once
#include <QList>
#include <QObject>
#include <QPointer>
class QKeyEvent;
class TextLoading;
class TextView;
class TextViewEdit;

/// The panes of a view while their text is being loaded: they are read-only, and what the user sees and has selected
/// stays as it is.
class LoadingPanes : public QObject
{
    Q_OBJECT
public:
    explicit LoadingPanes(TextView *view);

    void add(TextViewEdit *pane);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    struct Held
    {
        QPointer<TextViewEdit> pane;
        bool isStill; ///< nothing on the screen will change
        int anchor;   ///< of the selection; -1 if neither it nor the cursor is at the end
        int position;
    };

    void setReadOnly(TextViewEdit *pane) const;
    void hold();
    void release();
    [[nodiscard]] bool takesKey(TextViewEdit *pane, QKeyEvent *event);

    TextView *const m_view;
    TextLoading *const m_loading;
    QList<Held> m_held;
};
