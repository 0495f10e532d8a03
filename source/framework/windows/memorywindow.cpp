#include "memorywindow.h"
#include "callplugin.h"
#include "liveswitch.h"
#include "memoryedit.h"
#include <algorithm>
#include <limits>
#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {
constexpr quint64 EndOfAddresses = quint64(std::numeric_limits<uint>::max()) + 1;

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
    , m_addressBox(named(new QComboBox, u"memoryAddress"_s))
    , m_regionBox(named(new QComboBox, u"memoryRegion"_s))
    , m_live(new LiveSwitch)
    , m_writeButton(named(new QPushButton(tr("Write Changes")), u"memoryWrite"_s))
    , m_readButton(named(new QPushButton(tr("Read Memory")), u"memoryRead"_s))
    , m_edit(named(new MemoryEdit, u"memoryEdit"_s))
    , m_scrollBar(named(new QScrollBar(Qt::Vertical), u"memoryScrollBar"_s))
{
    createLayout();
    connectControls();
    enableControls();
}

void MemoryWindow::createLayout()
{
    m_addressBox->setEditable(true);
    m_addressBox->setCompleter(nullptr); // it would turn the start of an address into an old one
    m_addressBox->setValidator(new QRegularExpressionValidator(QRegularExpression(u"[\\da-fA-FxX]*"_s), m_addressBox));
    m_addressBox->setMinimumContentsLength(11);
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
}

void MemoryWindow::enableControls()
{
    const bool shows = m_regionIndex >= 0;
    for (QWidget *control : {static_cast<QWidget *>(m_addressBox), static_cast<QWidget *>(m_regionBox),
                             static_cast<QWidget *>(m_readButton), static_cast<QWidget *>(m_scrollBar)})
        control->setEnabled(shows);
    m_writeButton->setEnabled(shows && !m_region.readOnly);
    m_edit->setReadOnly(!shows || m_region.readOnly);
}

/// Calls the plug-in, which may call back. Returns whether this object, and its memory, are still there afterwards.
template <typename Call>
bool MemoryWindow::ask(const Call &call)
{
    const InterfacePtr<IMemory> memory = shareInterface(m_memory.get());
    const QPointer<MemoryWindow> self(this);
    m_asking = true;
    call(memory);
    if (!self)
        return false;
    m_asking = false;
    return m_memory.get() == memory.get();
}

void MemoryWindow::setInterface(IMemory *memory)
{
    m_memory = shareInterface(memory);
    m_cache = {};
    if (!m_memory)
        return clear();
    if (m_asking) // the memory that is asked now was another one
        QMetaObject::invokeMethod(this, &MemoryWindow::update, Qt::QueuedConnection);
    else
        update();
}

// Regions -----------------------------------------------------------------------

void MemoryWindow::update()
{
    if (!m_memory || m_asking)
        return;
    m_outdated = !isVisible();
    if (m_outdated)
        return;
    QList<MemoryRegion> regions;
    if (ask([&](const auto &memory) { regions = askPlugin<&IMemory::regions>(memory); }))
        setRegions(regions);
}

void MemoryWindow::setRegions(const QList<MemoryRegion> &regions)
{
    m_regions = regions;
    QList<SavedView> saved = std::exchange(m_views, {});
    for (const MemoryRegion &region : regions)
        m_views.append(viewOf(region, saved));
    showRegionNames();
    if (regions.isEmpty())
        clear();
    else
        selectRegion();
}

/// Takes the view out of the saved ones, so that each of several regions with the same name gets its own.
MemoryWindow::SavedView MemoryWindow::viewOf(const MemoryRegion &region, QList<SavedView> &saved)
{
    const auto it = std::ranges::find(saved, region.name, &SavedView::region);
    if (it == saved.end())
        return {region.name, region.lowAddress, widestWidth(region)};
    SavedView view = *it;
    saved.erase(it);
    if (view.address > region.highAddress || view.address < region.lowAddress)
        view.address = region.lowAddress;
    return view;
}

/// Equal lists are left alone, because the user may be choosing.
void MemoryWindow::showRegionNames()
{
    QStringList names;
    for (const MemoryRegion &region : std::as_const(m_regions))
        names.append(region.name);
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
    m_regionIndex = -1;
    m_region = {};
    m_regions.clear();
    m_regionBox->clear();
    m_addressText.clear();
    m_addressBox->clearEditText();
    m_lines.clear();
    m_edit->showLines({}, 0, 0, m_width);
    updateScrollBar();
    enableControls();
}

void MemoryWindow::selectRegion()
{
    const int index = m_regionBox->currentIndex();
    if (index < 0 || index >= m_regions.size())
        return;
    m_regionIndex = index;
    m_region = m_regions[index];
    m_regionBox->setToolTip(m_region.name);
    SavedView &view = m_views[index];
    if (!supportsWidth(m_region, view.width))
        view.width = widestWidth(m_region);
    setWidth(view.width);
    enableControls();
    setAddress(view.address);
}

void MemoryWindow::setWidth(int width)
{
    m_width = width;
    m_step = memoryStep(m_region, width);
}

void MemoryWindow::selectWidth(int width)
{
    if (m_regionIndex < 0)
        return;
    setWidth(width);
    saveView();
    redraw(false);
}

void MemoryWindow::saveView()
{
    m_views[m_regionIndex].address = m_address;
    m_views[m_regionIndex].width = m_width;
}

// Display -----------------------------------------------------------------------

void MemoryWindow::userRefreshDisplay()
{
    redraw(true);
}

/// With @p force the target is read in any case.
void MemoryWindow::redraw(bool force)
{
    if (!m_memory || m_regionIndex < 0)
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
    buildLines();
    m_edit->showLines(m_lines, addressDigits(m_region), m_columns, m_width);
    updateScrollBar();
}

void MemoryWindow::setLive(IExecutionEnvironment *environment)
{
    m_live->setEnvironment(environment);
}

void MemoryWindow::releaseEnvironment()
{
    m_memory.reset();
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
    if (!live || !m_memory || m_asking || m_regionIndex < 0 || !changes().isEmpty())
        return;
    measure();
    MemoryCache cache{m_region.id, memoryMode(m_width), m_address, {}};
    const int count = cellsToRead();
    bool read = false;
    const auto call = [&](const auto &) {
        read = askPlugin<&ILiveMemory::readLive>(live, cache.region, cache.mode, cache.address, count, cache.block);
    };
    if (count <= 0 || !ask(call) || !read)
        return;
    m_cache = cache;
    showCells();
}

void MemoryWindow::measure()
{
    m_rows = m_edit->visibleLines();
    m_columns = memoryColumns(m_edit->visibleCharacters(), addressDigits(m_region), m_width);
}

/// False if this object, or its memory, is gone. A callback of the plug-in shows what there is, and what it would have
/// read is read afterwards; once, since the plug-in may call back in each read.
bool MemoryWindow::readCells()
{
    if (m_asking) {
        m_askAgain = true;
        return true;
    }
    m_askAgain = false;
    return readBlock() && (!m_askAgain || readBlock());
}

bool MemoryWindow::readBlock()
{
    MemoryCache cache{m_region.id, memoryMode(m_width), m_address, {}};
    const int count = cellsToRead();
    const auto read = [&](const auto &memory) {
        runPlugin<&IMemory::readBlock>(memory, cache.region, cache.mode, cache.address, count, cache.block);
    };
    if (count > 0 && !ask(read))
        return false;
    m_cache = cache;
    return true;
}

/// Addresses end at 32 bits.
int MemoryWindow::cellsToRead() const
{
    if (m_address > m_region.highAddress)
        return 0;
    return int(std::min(quint64(m_columns) * quint64(m_rows), (EndOfAddresses - m_address + m_step - 1) / m_step));
}

quint64 MemoryWindow::cellAddress(int row, int column) const
{
    return m_address + quint64(m_step) * (quint64(m_columns) * quint64(row) + quint64(column));
}

void MemoryWindow::buildLines()
{
    m_lines.clear();
    const int mode = memoryMode(m_width);
    for (int row = 0; row < m_rows && cellAddress(row, 0) <= m_region.highAddress; ++row) {
        MemoryLine line{uint(cellAddress(row, 0)), {}};
        line.cells.reserve(m_columns);
        for (int column = 0; column < m_columns; ++column) {
            MemoryCell cell = m_cache.cell(m_region.id, mode, cellAddress(row, column), m_step);
            cell.value = maskedWord(cell.value, m_width);
            line.cells.append(cell);
        }
        m_lines.append(line);
    }
}

void MemoryWindow::setFont(const QFont &font)
{
    m_edit->setFont(font);
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
    m_edit->setFont(appearance.font);
    setColours(appearance.text, appearance.paper);
}

// Changes -----------------------------------------------------------------------

void MemoryWindow::hexChanged(int para, int index, int value)
{
    const int digits = 2 * m_width;
    const int position = index - memoryEditRange(addressDigits(m_region), m_columns, m_width).first;
    const int column = position / (digits + 1);
    const int nibble = digits - position % (digits + 1) - 1;
    if (para < 0 || para >= m_lines.size() || position < 0 || column >= m_lines[para].cells.size() || nibble < 0)
        return;
    MemoryCell &cell = m_lines[para].cells[column];
    cell.value = (cell.value & ~(0xFU << (4 * nibble))) | (uint(value) & 0xF) << (4 * nibble);
    cell.changed = true;
    m_edit->markChanged(para, index - position % (digits + 1), digits);
    m_edit->setCursorPosition(para, index + 1);
}

QList<MemoryWindow::Change> MemoryWindow::changes() const
{
    QList<Change> found;
    for (const MemoryLine &line : m_lines) {
        uint address = line.address;
        for (const MemoryCell &cell : line.cells) {
            if (cell.changed)
                found.append({address, cell.value});
            address += m_step;
        }
    }
    return found;
}

/// The results of the writes are not looked at: what is read afterwards shows the truth.
void MemoryWindow::userUpdateMemory()
{
    if (!m_memory || m_asking || m_regionIndex < 0)
        return;
    const QList<Change> changed = changes();
    const int region = m_region.id;
    const int mode = memoryMode(m_width);
    for (const Change &change : changed) {
        const auto write = [&](const auto &memory) {
            runPlugin<&IMemory::write>(memory, region, mode, change.address, change.value, false);
        };
        if (!ask(write))
            return;
    }
    const QPointer<MemoryWindow> self(this);
    redraw(true);
    if (!self || changed.isEmpty())
        return;
    m_asking = true; // this window shows the new values already
    Q_EMIT doUpdate();
    if (self)
        m_asking = false;
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
