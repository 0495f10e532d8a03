#pragma once
#include "markerwidget.h"
class TextParaView;

/// The margin of a view of paragraphs. The marks of a paragraph, whose number is the line minus 1, stand beside its
/// last line.
class TextParaMarkerWidget : public MarkerWidget
{
    Q_OBJECT
public:
    explicit TextParaMarkerWidget(TextParaView *view, QWidget *parent = nullptr);

    /// Draws an arrow from one paragraph to another. -1 for none.
    void setArrow(int fromPara, int toPara);

protected:
    [[nodiscard]] int lineAt(int y) const override;
    void paintMarkers(QPainter &painter) override;

private:
    [[nodiscard]] int arrowEnd(int para) const;
    void paintArrow(QPainter &painter);

    TextParaView *const m_paraView;
    int m_arrowFrom = -1;
    int m_arrowTo = -1;
};
