#pragma once
#include <QTimer>
#include <QToolButton>

/// A switch "Live", off at first, with a menu of rates: while it is on, enabled and visible, it emits tick() several
/// times a second.
class RateSwitch : public QToolButton
{
    Q_OBJECT
public:
    explicit RateSwitch(QWidget *parent = nullptr);

    [[nodiscard]] int rate() const { return m_rate; } ///< Ticks a second.
    void setRate(int rate);                           ///< One that the menu does not offer is ignored.
    [[nodiscard]] bool isTicking() const { return m_timer.isActive(); }

Q_SIGNALS:
    void tick();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void addRates();
    void startOrStop();

    QTimer m_timer{this};
    int m_rate = 5;
};
