#pragma once
#include <QObject>
class QAction;
class QSettings;
class TextFormats;
class WindowServices;

/// The commands that magnify the text of all documents, in the View menu, and the mouse wheel with the Control key over
/// a document. They change the setting "Editor/Zoom", in percent.
class ZoomCommands : public QObject
{
    Q_OBJECT
public:
    static constexpr int Smallest = 50;
    static constexpr int Largest = 400;
    static constexpr int Step = 10;

    /// @p window outlives this object; its menus exist.
    explicit ZoomCommands(WindowServices &window, QObject *parent = nullptr);

    void setZoom(int percent); ///< Out of range, it becomes the nearest allowed value.

Q_SIGNALS:
    void zoomChanged(); ///< The fonts of all documents must be set again.

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAction *addAction(const QString &name, const QString &text, const QList<QKeySequence> &keys);

    WindowServices &m_window;
    int m_wheelAngle = 0; ///< in eighths of a degree, less than one notch
};

[[nodiscard]] int readZoom(const QSettings &settings); ///< In percent; 100 without a setting.
/// @p formats with the fonts of all text in documents at @p percent of their size.
[[nodiscard]] TextFormats zoomedFormats(TextFormats formats, int percent);
