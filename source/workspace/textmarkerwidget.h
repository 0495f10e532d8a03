#pragma once
#include <QHash>
#include <QWidget>
class TextViewEdit;

/// The margin left of a pane, which shows the markers of the lines and, if that is switched on, their numbers.
class TextMarkerWidget : public QWidget
{
    Q_OBJECT
public:
    static constexpr int Width = 18; ///< pixels, of the markers

    explicit TextMarkerWidget(TextViewEdit *edit);

    [[nodiscard]] int wantedWidth() const; ///< pixels, with the numbers
    /// Of the numbers of lines.
    [[nodiscard]] static QColor numberColour(const QPalette &palette);
    /// The marks of the lines on screen, which count from 1.
    [[nodiscard]] QMap<int, int> markers() const;

Q_SIGNALS:
    void toggleBreakpoint(int line); ///< counts from 1

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool event(QEvent *event) override;

private:
    void paintMarkers(QPainter &painter, quint32 marker, const QRectF &line);
    void paintNumber(QPainter &painter, int number, const QRectF &line) const;
    void drawPicture(QPainter &painter, const QString &name, const QRectF &line);
    void showToolTip(const QPoint &position);

    TextViewEdit *const m_edit;
    QHash<QString, QPixmap> m_pictures;
    qreal m_pictureRatio = 0; ///< device pixel ratio of the loaded pictures
};
