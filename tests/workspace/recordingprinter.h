#pragma once
#include <QPaintEngine>
#include <QPrintEngine>
#include <QPrinter>

/// Records which texts are painted where on pages of 600 by 800 dots, with 100 dots per inch.
class PageRecorder : public QPaintEngine, public QPrintEngine
{
public:
    struct Drawn
    {
        int page;
        QPointF baseline;
        QString text;
        qreal points; ///< size of the font
        QRectF clip;  ///< what may be painted; empty if there is no limit
    };

    PageRecorder() : QPaintEngine(AllFeatures) {}
    bool begin(QPaintDevice *) override
    {
        m_state = QPrinter::Active;
        return true;
    }
    bool end() override
    {
        m_state = QPrinter::Idle;
        return true;
    }
    void updateState(const QPaintEngineState &state) override
    {
        if (state.state() & DirtyTransform)
            m_transform = state.transform();
    }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
    void drawTextItem(const QPointF &baseline, const QTextItem &item) override
    {
        drawn.append({m_page, m_transform.map(baseline), item.text(), item.font().pointSizeF(),
                      m_transform.mapRect(painter()->clipBoundingRect())});
    }
    [[nodiscard]] Type type() const override { return User; }

    void setProperty(PrintEnginePropertyKey, const QVariant &) override {}
    [[nodiscard]] QVariant property(PrintEnginePropertyKey) const override { return {}; }
    bool newPage() override { return ++m_page > 0; }
    bool abort() override { return false; }
    [[nodiscard]] QPrinter::PrinterState printerState() const override { return m_state; }
    [[nodiscard]] int metric(QPaintDevice::PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case QPaintDevice::PdmWidth:
            return 600;
        case QPaintDevice::PdmHeight:
            return 800;
        case QPaintDevice::PdmDevicePixelRatio:
            return 1;
        case QPaintDevice::PdmDevicePixelRatioScaled:
            return int(QPaintDevice::devicePixelRatioFScale());
        default:
            return 100;
        }
    }

    QList<Drawn> drawn;

private:
    QPrinter::PrinterState m_state = QPrinter::Idle;
    int m_page = 1;
    QTransform m_transform;
};

class RecordingPrinter : public QPrinter
{
public:
    explicit RecordingPrinter(PageRecorder *recorder) { setEngines(recorder, recorder); }
};
