#pragma once
#include "debugpane.h"
#include "memorylayout.h"
class IExecutionEnvironment;
class LiveSwitch;
class MemoryEdit;
class QComboBox;
class QLabel;
class QMenu;
class QPushButton;
class QScrollBar;

/// A part of the target's memory in hexadecimal, which the user can change.
///
/// It reads no more than it shows, in one block, and only when it is visible: while the program is paused (auto read)
/// or at the user's request. Otherwise it shows what was read last, and question marks for the rest.
class MemoryWindow : public DebugPane
{
    Q_OBJECT
public:
    explicit MemoryWindow(QWidget *parent = nullptr);

    /// Shows another memory, to which the window keeps a reference; nothing for null.
    void setInterface(IMemory *memory);
    /// Whether a redraw may read the target.
    void setAutoRead(bool autoRead) { m_autoRead = autoRead; }
    void setFont(const QFont &font);
    void setColours(const QColor &text, const QColor &base);

    void setLive(IExecutionEnvironment *environment); ///< Offers to read it while it runs; not for null.
    void releaseEnvironment() override;
    void setPaused(bool paused) override;
    void setAppearance(const PaneAppearance &appearance) override;

public Q_SLOTS:
    void update() override; ///< Asks for the regions and redraws; a hidden window does that when it is shown.
    void selectRegion();
    void addressChanged();
    void userRefreshDisplay();
    void userUpdateMemory(); ///< Writes the changes.
    void scrollValueChanged(int value);
    void selectByteView() { selectWidth(1); }
    void selectWord16View() { selectWidth(2); }
    void selectWord24View() { selectWidth(3); }
    void selectWord32View() { selectWidth(4); }
    void hexChanged(int para, int index, int value);
    void scrollPage(int direction);

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Where a region was left, and in which width.
    struct SavedView
    {
        QString region;
        uint address = 0;
        int width = 2;
    };
    struct Change
    {
        uint address = 0;
        uint value = 0;
    };

    void createLayout();
    void connectControls();
    void enableControls();
    template <typename Call>
    bool ask(const Call &call);

    void setRegions(const QList<MemoryRegion> &regions);
    void showRegionNames();
    [[nodiscard]] static SavedView viewOf(const MemoryRegion &region, QList<SavedView> &saved);
    void clear();
    void setAddress(uint address);
    /// Exact for steps that are powers of two.
    [[nodiscard]] uint aligned(uint address) const { return address & ~(m_step - 1); }
    void saveView();
    void selectWidth(int width);
    void setWidth(int width);
    void scrollLine(int direction);
    void scrollBy(qint64 units);
    void rememberAddress();

    void updateIfOutdated();
    void redraw(bool force);
    void showCells();
    void readLive();
    void measure();
    bool readCells();
    bool readBlock();
    [[nodiscard]] int cellsToRead() const;
    void buildLines();
    [[nodiscard]] quint64 cellAddress(int row, int column) const;
    void updateScrollBar();
    [[nodiscard]] quint64 linesPerUnit() const;
    [[nodiscard]] QList<Change> changes() const;
    void showPopup(QPoint position);
    [[nodiscard]] QMenu *createPopupMenu();

    InterfacePtr<IMemory> m_memory;
    bool m_autoRead = false;
    bool m_outdated = true;  ///< to be updated when it is shown
    bool m_asking = false;   ///< a call into the plug-in, which may call back, is running
    bool m_askAgain = false; ///< such a callback would have read
    QList<MemoryRegion> m_regions;
    QList<SavedView> m_views; ///< one for each region
    int m_regionIndex = -1;   ///< of the current region; -1 for none
    MemoryRegion m_region;
    uint m_address = 0;    ///< of the first cell shown
    QString m_addressText; ///< as it was shown last
    int m_width = 2;
    uint m_step = 1;
    int m_columns = 16;
    int m_rows = 0;
    MemoryCache m_cache;
    QList<MemoryLine> m_lines;

    QComboBox *m_addressBox;
    QComboBox *m_regionBox;
    LiveSwitch *m_live;
    QPushButton *m_writeButton;
    QPushButton *m_readButton;
    MemoryEdit *m_edit;
    QScrollBar *m_scrollBar;
};
