#pragma once
#include "debugpane.h"
#include "memorycalls.h"
#include "memorypage.h"
#include "memoryregions.h"
class IExecutionEnvironment;
class LiveSwitch;
class MemoryAddressBox;
class MemoryEdit;
class QComboBox;
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
    /// The same for a memory that has whole addresses of up to 64 bits as well, or answers later; these may be null.
    void setInterfaces(IMemory *memory, IMemory64 *wide, IMemoryRequests *requests = nullptr);
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
    void createLayout();
    void connectControls();
    void enableControls();

    void setRegions(const QList<MemoryRegion64> &regions);
    void showRegionNames();
    void clear();
    void setAddress(quint64 address);
    void selectWidth(int width);
    void scrollLine(int direction) { scrollBy(direction); }
    void scrollBy(qint64 units);
    void updateScrollBar();

    void updateIfOutdated();
    void redraw(bool force);
    void showCells();
    void readLive();
    void measure();
    bool readCells();
    bool readBlock();
    void showAnswer(const MemoryCache &cache);
    void showPopup(QPoint position);
    [[nodiscard]] QMenu *createPopupMenu();

    MemoryCalls m_access;
    MemoryRegions m_regions;
    MemoryPage m_page; ///< of the current region
    bool m_autoRead = false;
    bool m_outdated = true;  ///< to be updated when it is shown
    bool m_askAgain = false; ///< a callback of the plug-in would have read

    MemoryAddressBox *m_addressBox;
    QComboBox *m_regionBox;
    LiveSwitch *m_live;
    QPushButton *m_writeButton;
    QPushButton *m_readButton;
    MemoryEdit *m_edit;
    QScrollBar *m_scrollBar;
};
