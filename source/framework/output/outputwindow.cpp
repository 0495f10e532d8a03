#include "outputwindow.h"
#include "commandlinewindow.h"
#include "focuswithin.h"
#include "objectnames.h"
#include "outputpage.h"
#include "pythoninterpreter.h"
#include "scriptdirectories.h"
#include "varnelassert.h"
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
QFont typewriterFont()
{
    QFont font(u"Courier"_s, 9);
    font.setStyleHint(QFont::TypeWriter);
    return font;
}

QLabel *artworkLabel(const QPixmap &artwork)
{
    auto *label = new QLabel;
    label->setPixmap(artwork);
    label->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    label->setLineWidth(2);
    QPalette palette = label->palette();
    palette.setColor(label->backgroundRole(), Qt::white);
    label->setPalette(palette);
    label->setAutoFillBackground(true);
    return label;
}

/// The main window, also while the dock floats.
QWidget *outermostParent(QWidget *widget)
{
    while (widget->parentWidget())
        widget = widget->parentWidget();
    return widget;
}
} // namespace

OutputWindow::OutputWindow(QWidget *parent, const QPixmap &artwork)
    : QWidget(parent), m_tabs(new QTabWidget), m_font(typewriterFont())
{
    setMinimumSize(200, 100);
    createLayout(artwork);
    for (const char *name : {QT_TR_NOOP("Build"), QT_TR_NOOP("Debug"), QT_TR_NOOP("Find In Files")})
        addPage(QString::fromLatin1(name)); // plug-ins refer to them by these names
    setLookupPattern(uR"((file)\((line)\))"_s, false);
    m_pages[Build]->setDiagnostics(true);
}

OutputWindow::~OutputWindow()
{
    m_tabs->disconnect(this);
}

void OutputWindow::createLayout(const QPixmap &artwork)
{
    auto *frame = new QFrame;
    frame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    frame->setLineWidth(1);
    auto *outer = new QHBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(frame);
    auto *inner = new QHBoxLayout(frame);
    inner->setContentsMargins(3, 3, 3, 3);
    inner->setSpacing(6);
    if (!artwork.isNull())
        inner->addWidget(artworkLabel(artwork));
    m_tabs->setObjectName(u"outputTabs"_s);
    m_tabs->setAccessibleName(tr("Output"));
    m_tabs->setTabPosition(QTabWidget::South);
    m_tabs->setTabShape(QTabWidget::Triangular);
    inner->addWidget(m_tabs, 1);
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] {
        if (hasFocusWithin(this))
            Q_EMIT selectAllAvailable(currentPage());
    });
}

template <typename Edit>
void OutputWindow::reportSelection(Edit *edit)
{
    edit->installEventFilter(this);
    connect(edit, &Edit::copyAvailable, this, [this, edit](bool available) {
        if (edit->hasFocus())
            Q_EMIT copyAvailable(available);
    });
}

// Console -----------------------------------------------------------------

void OutputWindow::startConsole(const ScriptDirectories &scripts)
{
    m_interpreter = std::make_unique<PythonInterpreter>(scripts);
    m_commandWindow = new CommandLineWindow;
    m_commandWindow->setObjectName(u"commandWindow"_s); // for test drivers, as for the tabs
    m_commandWindow->setAccessibleName(tr("Command Window"));
    m_commandWindow->setFont(m_font);
    m_commandWindow->setPalette(m_pages.front()->palette());
    m_commandWindow->setCompleter([this](const QString &word) { return m_interpreter->completions(word); });
    connectConsole();
    addStopButton();
    reportSelection(m_commandWindow);
    m_tabs->addTab(m_commandWindow, tr("Command Window"));
    // Who clicks at the tab wants to type. The page comes to the front after this signal.
    connect(m_tabs->tabBar(), &QTabBar::tabBarClicked, m_commandWindow, [this](int index) {
        if (m_tabs->widget(index) == m_commandWindow)
            QMetaObject::invokeMethod(m_commandWindow, qOverload<>(&QWidget::setFocus), Qt::QueuedConnection);
    });
    m_interpreter->start(scripts.file(u"startup.py"_s));
}

void OutputWindow::connectConsole()
{
    PythonInterpreter *python = m_interpreter.get();
    connect(m_commandWindow, &CommandLineWindow::inputLine, python, &PythonInterpreter::inputLine);
    connect(python, &PythonInterpreter::outputLine, m_commandWindow, &CommandLineWindow::outputLine);
    connect(m_commandWindow, &CommandLineWindow::breakExecution, python, &PythonInterpreter::breakExecution);
    connect(m_commandWindow, &CommandLineWindow::interruptRequested, python, &PythonInterpreter::interrupt);
    python->setInputAvailable([this] { return outermostParent(this)->isVisible(); });
    connect(python, &PythonInterpreter::inputRefused, this, &OutputWindow::consoleNeeded);
    connect(python, &PythonInterpreter::inputRequested, this, [this] {
        Q_EMIT consoleNeeded();
        m_tabs->setCurrentWidget(m_commandWindow);
        m_commandWindow->setFocus();
    });
}

/// Beside the tabs, enabled while a statement runs.
void OutputWindow::addStopButton()
{
    auto *button = new QToolButton;
    button->setObjectName(u"stopScriptButton"_s);
    button->setText(tr("Stop Script"));
    button->setToolTip(tr("Interrupts the statement that runs in the Command Window"));
    button->setAutoRaise(true);
    button->hide();
    m_tabs->setCornerWidget(button, Qt::BottomRightCorner);
    m_interpreter->addInterruptWidget(button);
    connect(button, &QToolButton::clicked, m_interpreter.get(), &PythonInterpreter::interrupt);
    connect(m_interpreter.get(), &PythonInterpreter::runningChanged, button, &QWidget::setVisible);
}

QStringList OutputWindow::consoleHistory() const
{
    return m_commandWindow ? m_commandWindow->history() : QStringList();
}

void OutputWindow::setConsoleHistory(const QStringList &lines)
{
    if (m_commandWindow)
        m_commandWindow->setHistory(lines);
}

bool OutputWindow::runScript(const QString &path)
{
    return m_interpreter && m_interpreter->runFile(path);
}

// Pages ---------------------------------------------------------------------

void OutputWindow::addPage(const QString &name)
{
    auto *page = new OutputPage;
    page->setObjectName(partOfObjectName(name) + u"Page"_s);
    const QString caption = tr(name.toUtf8()); // plug-ins translate the names of their pages
    page->setWindowTitle(caption);
    page->setAccessibleName(caption);
    page->setFont(m_font);
    if (!m_pages.empty())
        page->setPalette(m_pages.front()->palette());
    m_tabs->addTab(page, QString(caption).replace(u'&', u"&&"_s));
    m_pages.push_back(page);
    m_names.append(name);
    reportSelection(page);
    connect(page, &OutputPage::lookupSource, this, &OutputWindow::lookupSource);
    connect(page, &OutputPage::countsChanged, this, [this, page] { showCounts(page); });
}

/// Shows the numbers of errors and warnings on the tab.
void OutputWindow::showCounts(const OutputPage *page)
{
    const QString counts = page->countsText();
    QString caption = page->windowTitle();
    if (!counts.isEmpty())
        caption += u" ("_s + counts + u')';
    m_tabs->setTabText(m_tabs->indexOf(page), caption.replace(u'&', u"&&"_s));
}

OutputPage *OutputWindow::page(uint pageNum) const
{
    return pageNum < m_pages.size() ? m_pages[pageNum] : nullptr;
}

OutputPage *OutputWindow::page(const QString &name) const
{
    const qsizetype index = m_names.indexOf(name);
    return index < 0 ? nullptr : m_pages[size_t(index)];
}

void OutputWindow::showPage(OutputPage *page)
{
    m_tabs->setCurrentWidget(page);
}

OutputPage *OutputWindow::currentPage() const
{
    return qobject_cast<OutputPage *>(m_tabs->currentWidget());
}

void OutputWindow::removePagesAfter(uint pageNum)
{
    while (m_pages.size() > size_t(pageNum) + 1) {
        delete m_pages.back();
        m_pages.pop_back();
        m_names.removeLast();
    }
}

void OutputWindow::displayPage(uint pageNum)
{
    VARNEL_ASSERT(pageNum < m_pages.size());
    if (OutputPage *page = this->page(pageNum))
        m_tabs->setCurrentWidget(page);
}

void OutputWindow::clearPage(uint pageNum)
{
    VARNEL_ASSERT(pageNum < m_pages.size());
    if (OutputPage *page = this->page(pageNum))
        page->clear();
}

// Output ----------------------------------------------------------------------

void OutputWindow::outputLine(uint pageNum, const QString &text)
{
    outputLine(pageNum, text, false);
}

void OutputWindow::outputLine(uint pageNum, const QString &text, bool serious)
{
    VARNEL_ASSERT(pageNum < m_pages.size());
    OutputPage *page = this->page(pageNum);
    if (!page)
        return;
    if (serious) {
        QApplication::beep();
        displayPage(pageNum);
    }
    page->outputLine(text);
}

void OutputWindow::outputLine(uint pageNum, const QString &text, const LookupPlace &place)
{
    VARNEL_ASSERT(pageNum < m_pages.size());
    if (OutputPage *page = this->page(pageNum))
        page->outputLine(text, place);
}

void OutputWindow::outputLine(const QString &name, const QString &text)
{
    outputLine(name, text, false);
}

void OutputWindow::outputLine(const QString &name, const QString &text, bool serious)
{
    if (!page(name))
        addPage(name);
    const auto found = std::find(m_pages.begin(), m_pages.end(), page(name));
    outputLine(uint(found - m_pages.begin()), text, serious);
}

// Edit commands ---------------------------------------------------------------

bool OutputWindow::setLookupPattern(const QString &pattern, bool greedy)
{
    return m_pages[Build]->setLookupPattern(pattern, greedy);
}

void OutputWindow::lookupNextLine()
{
    if (OutputPage *page = currentPage())
        page->lookupNextLine();
}

bool OutputWindow::lookupMessage(bool forward, const std::function<bool(const QString &)> &isFile)
{
    OutputPage *page = currentPage() ? currentPage() : m_pages[Build];
    m_tabs->setCurrentWidget(page);
    return page->lookupMessage(forward, isFile);
}

void OutputWindow::selectAll()
{
    if (OutputPage *page = currentPage())
        page->selectAll();
}

void OutputWindow::copy()
{
    if (OutputPage *page = currentPage())
        page->copy();
    else if (m_commandWindow)
        m_commandWindow->copy();
}

void OutputWindow::paste()
{
    if (m_commandWindow && m_tabs->currentWidget() == m_commandWindow)
        m_commandWindow->paste();
}

bool OutputWindow::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        const auto *page = qobject_cast<OutputPage *>(object);
        Q_EMIT copyAvailable(page ? page->textCursor().hasSelection() : m_commandWindow->textCursor().hasSelection());
        Q_EMIT cutAvailable(false);
        Q_EMIT pasteAvailable(!page);
    }
    return QWidget::eventFilter(object, event);
}

// Looks ---------------------------------------------------------------------

void OutputWindow::setFont(const QFont &font)
{
    m_font = font;
    forEachPane([&font](QWidget *pane) { pane->setFont(font); });
}

void OutputWindow::setTextColour(const QColor &colour)
{
    setPaneColour(QPalette::Text, colour);
}

void OutputWindow::setPaperColour(const QColor &colour)
{
    setPaneColour(QPalette::Base, colour);
}

void OutputWindow::setPaneColour(QPalette::ColorRole role, const QColor &colour)
{
    forEachPane([role, &colour](QWidget *pane) {
        QPalette palette = pane->palette();
        palette.setColor(role, colour);
        pane->setPalette(palette);
    });
}

void OutputWindow::forEachPane(const std::function<void(QWidget *)> &change) const
{
    std::for_each(m_pages.begin(), m_pages.end(), change);
    if (m_commandWindow)
        change(m_commandWindow);
}
