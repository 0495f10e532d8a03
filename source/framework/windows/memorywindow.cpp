#include "memorywindow.h"
#include "liveswitch.h"
#include "memoryaddressbox.h"
#include "memoryedit.h"
#include <algorithm>
#include <array>
#include <QActionGroup>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace {
QLabel *labelFor(QWidget *control, const QString &text)
{
    auto *label = new QLabel(text);
    label->setBuddy(control);
    control->setAccessibleName(text.chopped(1));
    return label;
}

template <typename Widget>
Widget *named(Widget *widget, const QString &name)
{
    widget->setObjectName(name);
    return widget;
}
} // namespace

MemoryWindow::MemoryWindow(QWidget *parent)
    : DebugPane(parent)
    , m_addressBox(named(new MemoryAddressBox, u"memoryAddress"_s))
    , m_regionBox(named(new QComboBox, u"memoryRegion"_s))
    , m_live(new LiveSwitch)
    , m_writeButton(named(new QPushButton(tr("Write Changes")), u"memoryWrite"_s))
    , m_readButton(named(new QPushButton(tr("Read Memory")), u"memoryRead"_s))
    , m_edit(named(new MemoryEdit, u"memoryEdit"_s))
    , m_scrollBar(named(new QScrollBar(Qt::Vertical), u"memoryScrollBar"_s))
{
    setObjectName(u"memory"_s);
    createLayout();
    connectControls();
    enableControls();
}

void MemoryWindow::createLayout()
{
    m_regionBox->setMinimumContentsLength(12); // names may be long
    m_regionBox->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_edit->setContextMenuPolicy(Qt::CustomContextMenu);
    m_edit->setAccessibleName(tr("Memory"));
    m_scrollBar->setAccessibleName(tr("Position in the region"));
    auto *top = new QHBoxLayout;
    top->setContentsMargins(4, 4, 4, 2);
    top->addWidget(labelFor(m_addressBox, tr("Address:")));
    top->addWidget(m_addressBox);
    top->addWidget(labelFor(m_regionBox, tr("Region:")));
    top->addWidget(m_regionBox);
    top->addStretch();
    top->addWidget(m_live);
    top->addWidget(m_writeButton);
    top->addWidget(m_readButton);
    auto *bottom = new QHBoxLayout;
    bottom->setSpacing(0);
    bottom->addWidget(m_edit);
    bottom->addWidget(m_scrollBar);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(2);
    layout->addLayout(top);
    layout->addLayout(bottom, 1);
}

void MemoryWindow::connectControls()
{
    connect(m_addressBox, &QComboBox::activated, this, &MemoryWindow::addressChanged);
    connect(m_addressBox->lineEdit(), &QLineEdit::inputRejected, this,
            [this] { Q_EMIT message(tr("An address is a number like 0x1000. Watch &name for that of a name.")); });
    connect(m_regionBox, &QComboBox::activated, this, &MemoryWindow::selectRegion);
    connect(m_writeButton, &QPushButton::clicked, this, &MemoryWindow::userUpdateMemory);
    connect(m_readButton, &QPushButton::clicked, this, &MemoryWindow::userRefreshDisplay);
    connect(m_live, &LiveSwitch::refresh, this, &MemoryWindow::readLive);
    connect(m_scrollBar, &QScrollBar::valueChanged, this, &MemoryWindow::scrollValueChanged);
    connect(m_edit, &MemoryEdit::updateMemory, this, &MemoryWindow::userUpdateMemory);
    connect(m_edit, &MemoryEdit::hexChanged, this, &MemoryWindow::hexChanged);
    connect(m_edit, &MemoryEdit::scrollPage, this, &MemoryWindow::scrollPage);
    connect(m_edit, &MemoryEdit::scrollLine, this, &MemoryWindow::scrollLine);
    connect(m_edit, &QWidget::customContextMenuRequested, this, &MemoryWindow::showPopup);
    m_edit->viewport()->installEventFilter(this);
    connect(&m_access, &MemoryCalls::answered, this, &MemoryWindow::showAnswer);
}

void MemoryWindow::enableControls()
{
    const bool shows = m_regions.hasCurrent();
    for (QWidget *control : {static_cast<QWidget *>(m_addressBox), static_cast<QWidget *>(m_regionBox),
                             static_cast<QWidget *>(m_readButton), static_cast<QWidget *>(m_scrollBar)})
        control->setEnabled(shows);
    m_writeButton->setEnabled(shows && !m_page.region().readOnly);
    m_edit->setReadOnly(!shows || m_page.region().readOnly);
}

void MemoryWindow::setInterface(IMemory *memory)
{
    setInterfaces(memory, nullptr);
}

void MemoryWindow::setInterfaces(IMemory *memory, IMemory64 *wide, IMemoryRequests *requests)
{
    m_access.setMemory(memory, wide, requests);
    m_page.setCache({});
    if (!memory)
        return clear();
    if (m_access.isBusy()) // the memory that is asked now was another one
        QMetaObject::invokeMethod(this, &MemoryWindow::update, Qt::QueuedConnection);
    else
        update();
}

// Regions -----------------------------------------------------------------------

void MemoryWindow::update()
{
    if (!m_access.hasMemory() || m_access.isBusy())
        return;
    m_outdated = !isVisible();
    if (m_outdated)
        return;
    QList<MemoryRegion64> regions;
    if (m_access.readRegions(regions))
        setRegions(regions);
}

void MemoryWindow::setRegions(const QList<MemoryRegion64> &regions)
{
    m_regions.set(regions);
    showRegionNames();
    if (regions.isEmpty())
        clear();
    else
        selectRegion();
}

/// Equal lists are left alone, because the user may be choosing.
void MemoryWindow::showRegionNames()
{
    const QStringList names = m_regions.names();
    QStringList shown;
    for (int i = 0; i < m_regionBox->count(); ++i)
        shown.append(m_regionBox->itemText(i));
    if (names == shown)
        return;
    const QString current = m_regionBox->currentText();
    m_regionBox->clear();
    m_regionBox->addItems(names);
    if (!current.isEmpty() && names.contains(current))
        m_regionBox->setCurrentText(current);
}

void MemoryWindow::clear()
{
    m_regions.clear();
    m_page.clear();
    m_regionBox->clear();
    m_addressBox->showAddress({});
    m_edit->showLines({}, 0, 0, m_page.width());
    updateScrollBar();
    enableControls();
}

void MemoryWindow::selectRegion()
{
    if (!m_regions.select(m_regionBox->currentIndex()))
        return;
    const MemoryRegion64 &region = m_regions.current();
    const MemoryRegions::View view = m_regions.view();
    m_regionBox->setToolTip(region.name);
    m_page.setRegion(region, view.width);
    enableControls();
    setAddress(view.address);
}

void MemoryWindow::selectWidth(int width)
{
    if (!m_regions.hasCurrent())
        return;
    m_page.setWidth(width);
    m_regions.saveView(m_page.address(), width);
    redraw(false);
}

// Address -----------------------------------------------------------------------

/// The box also activates the address that it shows when it loses the focus: that one is read again only after Return.
void MemoryWindow::addressChanged()
{
    if (!m_regions.hasCurrent())
        return;
    const QString text = m_addressBox->currentText();
    const quint64 typed = typedMemoryAddress(text);
    const bool isNumber = typed != 0 || text.trimmed().startsWith(u'0');
    if (const int region = m_regions.regionOf(typed); isNumber && region >= 0) {
        m_regionBox->setCurrentIndex(region);
        selectRegion();
    }
    const quint64 address = addressInRegion(typed, m_page.region(), m_page.columns());
    const bool isShown = text == m_addressBox->shownAddress() && m_page.aligned(address) == m_page.address();
    if (!m_addressBox->takeReturn() && isShown)
        return;
    const QPointer<MemoryWindow> self(this);
    setAddress(address);
    if (!self)
        return;
    m_addressBox->remember();
    if (!isMemoryAddress(text))
        Q_EMIT message(tr("'%1' is not an address: the start of the region is shown.").arg(text));
}

void MemoryWindow::setAddress(quint64 address)
{
    m_addressBox->showAddress(memoryAddressText(address, addressDigits(m_page.region())));
    m_page.setAddress(address);
    m_regions.saveView(m_page.address(), m_page.width());
    redraw(false);
}

void MemoryWindow::scrollValueChanged(int value)
{
    if (m_regions.hasCurrent())
        setAddress(m_page.addressOfUnit(value));
}

void MemoryWindow::scrollPage(int direction)
{
    scrollBy(qint64(direction) * m_scrollBar->pageStep());
}

void MemoryWindow::scrollBy(qint64 units)
{
    const qint64 value = m_scrollBar->value() + units;
    m_scrollBar->setValue(int(std::clamp<qint64>(value, m_scrollBar->minimum(), m_scrollBar->maximum())));
}

void MemoryWindow::updateScrollBar()
{
    const QSignalBlocker blocker(m_scrollBar);
    m_scrollBar->setRange(0, m_page.lastUnit());
    m_scrollBar->setPageStep(m_page.unitsPerPage());
    m_scrollBar->setValue(m_page.unit());
}

// Display -----------------------------------------------------------------------

void MemoryWindow::userRefreshDisplay()
{
    redraw(true);
}

/// With @p force the target is read in any case.
void MemoryWindow::redraw(bool force)
{
    if (!m_access.hasMemory() || !m_regions.hasCurrent())
        return;
    m_outdated = m_outdated || !isVisible();
    if (!force && m_outdated)
        return;
    measure();
    if ((force || m_autoRead) && !readCells())
        return;
    showCells();
}

void MemoryWindow::showCells()
{
    m_page.buildLines();
    m_edit->showLines(m_page.lines(), addressDigits(m_page.region()), m_page.columns(), m_page.width());
    updateScrollBar();
}

void MemoryWindow::setLive(IExecutionEnvironment *environment)
{
    m_live->setEnvironment(environment);
}

void MemoryWindow::releaseEnvironment()
{
    m_access.setMemory(nullptr);
    m_live->setEnvironment(nullptr);
}

void MemoryWindow::setPaused(bool paused)
{
    setAutoRead(paused);
    m_live->follow();
}

/// Not while there are changes of the user, which it would undo.
void MemoryWindow::readLive()
{
    const InterfacePtr<ILiveMemory> live = m_live->memory();
    if (!live || !m_access.hasMemory() || m_access.isBusy() || !m_regions.hasCurrent() || !m_page.changes().isEmpty())
        return;
    measure();
    MemoryCache cache = m_page.request();
    const int count = m_page.cellsToRead();
    if (count <= 0 || !m_access.readLive(*live, cache, count))
        return;
    m_page.setCache(cache);
    showCells();
}

void MemoryWindow::measure()
{
    m_page.setSize(m_edit->visibleLines(), m_edit->visibleCharacters());
}

/// False if this object, or its memory, is gone. If the plug-in calls back during the read, the present contents are
/// shown and the read is repeated afterwards: once only, since the plug-in may call back in each read.
bool MemoryWindow::readCells()
{
    if (m_access.isBusy()) {
        m_askAgain = true;
        return true;
    }
    m_askAgain = false;
    return readBlock() && (!m_askAgain || readBlock());
}

bool MemoryWindow::readBlock()
{
    MemoryCache cache = m_page.request();
    const int count = m_page.cellsToRead();
    if (count > 0 && m_access.answersLater()) {
        const QPointer<MemoryWindow> self(this);
        m_access.request(cache, count);
        return self; // until the answer, the window shows what it has
    }
    if (count > 0 && !m_access.read(cache, count))
        return false;
    m_page.setCache(cache);
    return true;
}

/// Digits that the user has typed meanwhile stay until they are written.
void MemoryWindow::showAnswer(const MemoryCache &cache)
{
    if (!m_regions.hasCurrent())
        return;
    m_page.setCache(cache);
    if (m_page.changes().isEmpty())
        showCells();
}

void MemoryWindow::setFont(const QFont &font)
{
    m_edit->setTextFont(font);
    redraw(false);
}

void MemoryWindow::setColours(const QColor &text, const QColor &base)
{
    QPalette palette = m_edit->palette();
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Base, base);
    m_edit->setPalette(palette);
    redraw(false);
}

void MemoryWindow::setAppearance(const PaneAppearance &appearance)
{
    m_edit->setTextFont(appearance.font);
    setColours(appearance.text, appearance.paper);
}

// Changes -----------------------------------------------------------------------

void MemoryWindow::hexChanged(int para, int index, int value)
{
    const int word = m_page.setDigit(para, index, value);
    if (word < 0)
        return;
    m_edit->markChanged(para, word, 2 * m_page.width());
    m_edit->setCursorPosition(para, index + 1);
}

/// The results of the writes are not looked at: what is read afterwards shows the truth.
void MemoryWindow::userUpdateMemory()
{
    if (!m_access.hasMemory() || m_access.isBusy() || !m_regions.hasCurrent())
        return;
    const QList<MemoryPage::Change> changes = m_page.changes();
    const MemoryCache place = m_page.request();
    for (const MemoryPage::Change &change : changes) {
        if (!m_access.write(place.region, place.mode, change.address, change.value))
            return;
    }
    const QPointer<MemoryWindow> self(this);
    redraw(true);
    if (!self || changes.isEmpty())
        return;
    m_access.setBusy(true); // this window shows the new values already
    Q_EMIT doUpdate();
    if (!self)
        return;
    m_access.setBusy(false);
    if (m_access.answersLater())
        redraw(true); // the first answer belongs to the time before the change
}

// Context menu ------------------------------------------------------------------

void MemoryWindow::showPopup(QPoint position)
{
    QMenu *menu = createPopupMenu();
    if (menu->isEmpty())
        return delete menu;
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(m_edit->viewport()->mapToGlobal(position));
}

QMenu *MemoryWindow::createPopupMenu()
{
    struct Item
    {
        QString text;
        int width;
        void (MemoryWindow::*select)();
    };
    const std::array<Item, 4> items{{{tr("&Byte View"), 1, &MemoryWindow::selectByteView},
                                     {tr("16-bit Word View"), 2, &MemoryWindow::selectWord16View},
                                     {tr("24-bit Word View"), 3, &MemoryWindow::selectWord24View},
                                     {tr("32-bit Word View"), 4, &MemoryWindow::selectWord32View}}};
    auto *menu = new QMenu(this);
    menu->setObjectName(u"memoryMenu"_s);
    auto *group = new QActionGroup(menu);
    for (const Item &item : items) {
        if (!m_regions.hasCurrent() || !supportsWidth(m_page.region(), item.width))
            continue;
        QAction *action = menu->addAction(item.text, this, item.select);
        action->setCheckable(true);
        action->setChecked(item.width == m_page.width());
        group->addAction(action);
    }
    return menu;
}

// Events ------------------------------------------------------------------------

void MemoryWindow::showEvent(QShowEvent *event)
{
    DebugPane::showEvent(event);
    if (m_outdated) // the dock may update it now; and its size is not final
        QMetaObject::invokeMethod(this, &MemoryWindow::updateIfOutdated, Qt::QueuedConnection);
}

void MemoryWindow::updateIfOutdated()
{
    if (m_outdated)
        update();
}

void MemoryWindow::changeEvent(QEvent *event)
{
    DebugPane::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        redraw(false);
}

bool MemoryWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_edit->viewport())
        return DebugPane::eventFilter(watched, event);
    if (event->type() == QEvent::Wheel) {
        QCoreApplication::sendEvent(m_scrollBar, event);
        return true;
    }
    if (event->type() == QEvent::Resize)
        redraw(false);
    return false;
}
