#include "helpwidget.h"
#include "helpcontents.h"
#include "messages.h"
#include "projecttreeitem.h"
#include "ui_helpwidgetbase.h"
#include "wholefile.h"
#include "windowservices.h"
#include <QApplication>
#include <QDir>
#include <QPointer>
#include <QProgressDialog>
#include <QTextStream>
#include <QTime>

using namespace Qt::StringLiterals;

namespace {
constexpr int PathRole = Qt::UserRole;

QString pathOf(const ListViewItem *item)
{
    return item->data(0, PathRole).toString();
}

class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(WaitCursor)
};

constexpr int ShortestText = 14; ///< characters for which the search field always has room

bool writePage(const QString &path, const QString &page)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream stream(&file);
    stream << page;
    stream.flush();
    return file.flush() && stream.status() == QTextStream::Ok;
}
} // namespace

HelpWidget::HelpWidget(const HelpFiles &files, WindowServices &window, QWidget *parent)
    : QWidget(parent), m_files(files), m_window(window), m_ui(std::make_unique<Ui::HelpWidgetBase>()), m_index(this)
{
    m_ui->setupUi(this);
    for (QWidget *widget : searchRow())
        widget->hide();
    setLeastWidths();
    loadIndexes();
    connect(m_ui->HelpListView, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem *item) { slotSelectionChanged(static_cast<ListViewItem *>(item)); });
    connect(m_ui->HelpListView, &ListView::returnPressed, this, &HelpWidget::slotSelectionChanged);
    connect(m_ui->SearchButton, &QPushButton::clicked, this, &HelpWidget::slotSearch);
    connect(m_ui->SearchEdit, &QLineEdit::returnPressed, this, &HelpWidget::slotSearch);
}

HelpWidget::~HelpWidget()
{
    for (const QString &file : std::as_const(m_tempFiles))
        QFile::remove(file);
}

// Contents ----------------------------------------------------------------

void HelpWidget::loadIndexes()
{
    const QDir directory(m_files.directory);
    for (const QString &name : directory.entryList({u"*.xml"_s})) {
        const std::optional<QByteArray> xml = readFile(directory.filePath(name));
        if (const auto document = xml ? readHelpContents(*xml) : std::nullopt)
            addEntry(nullptr, *document);
        else
            qWarning("Couldn't open help index");
    }
}

void HelpWidget::addEntry(ListViewItem *parent, const HelpEntry &entry)
{
    ListViewItem *item = insertItem(parent, entry);
    if (entry.kind == HelpEntry::Page) {
        const QString path = QDir::cleanPath(QDir(m_files.directory).filePath(entry.path));
        item->setData(0, PathRole, path);
        m_pages.insert(path, item);
    }
    for (const HelpEntry &child : entry.children)
        addEntry(item, child);
    if (entry.kind == HelpEntry::Document)
        item->setOpen(true);
}

ListViewItem *HelpWidget::insertItem(ListViewItem *parent, const HelpEntry &entry)
{
    ListView *list = m_ui->HelpListView;
    const bool isPage = entry.kind == HelpEntry::Page;
    const QIcon closed = m_window.icon(isPage ? u"treepage.png"_s : u"treebook.png"_s);
    const QIcon open = isPage ? QIcon() : m_window.icon(u"treebookopen.png"_s);
    QTreeWidgetItem *above = parent ? parent : list->invisibleRootItem();
    auto *last = static_cast<ListViewItem *>(above->child(above->childCount() - 1)); // null if there is none
    return parent ? new ProjectTreeItem(parent, last, entry.title, nullptr, nullptr, entry.kind, false, closed, open)
                  : new ProjectTreeItem(list, last, entry.title, nullptr, nullptr, entry.kind, false, closed, open);
}

void HelpWidget::select(ListViewItem *item)
{
    m_ui->HelpListView->setCurrentItem(item);
    m_ui->HelpListView->ensureItemVisible(item);
}

/// The next page in the direction of @p step, in closed books too; null if there is none.
ListViewItem *HelpWidget::pageBeside(ListViewItem *item, int step) const
{
    QTreeWidgetItemIterator it(item);
    for (it += step; *it; it += step) {
        if ((*it)->type() == HelpEntry::Page)
            return static_cast<ListViewItem *>(*it);
    }
    return nullptr;
}

void HelpWidget::helpSourceChanged(const QString &source)
{
    m_currentPage = QDir::cleanPath(source);
    ListViewItem *item = m_pages.value(m_currentPage);
    if (item)
        select(item);
    Q_EMIT previousAvailable(item && pageBeside(item, -1));
    Q_EMIT nextAvailable(item && pageBeside(item, 1));
}

void HelpWidget::goToPageBeside(int step)
{
    ListViewItem *item = m_pages.value(m_currentPage);
    ListViewItem *page = item ? pageBeside(item, step) : nullptr;
    if (!page)
        return;
    const QPointer<HelpWidget> self(this);
    Q_EMIT openHelp(pathOf(page));
    if (self)
        select(page);
}

void HelpWidget::previous()
{
    goToPageBeside(-1);
}

void HelpWidget::next()
{
    goToPageBeside(1);
}

void HelpWidget::home()
{
    const QString path = QDir(m_files.directory).filePath(u"html/index.html"_s);
    if (QFile::exists(path))
        Q_EMIT openHelp(path);
}

void HelpWidget::slotSelectionChanged(ListViewItem *item)
{
    if (item && item->rtti() == HelpEntry::Page)
        Q_EMIT openHelp(pathOf(item));
}

// Search ------------------------------------------------------------------

QList<QWidget *> HelpWidget::searchRow() const
{
    return {m_ui->SearchLabel, m_ui->SearchEdit, m_ui->SearchButton};
}

/// In a narrow navigator the field needs the room more than the button, which would take what the style gives each
/// button.
void HelpWidget::setLeastWidths()
{
    const QFontMetrics metrics = fontMetrics();
    const QString text = m_ui->SearchButton->text();
    m_ui->SearchButton->setMinimumWidth(metrics.size(Qt::TextShowMnemonic, text).width() + 2 * metrics.maxWidth() / 3);
    m_ui->SearchEdit->setMinimumWidth(metrics.averageCharWidth() * ShortestText);
}

void HelpWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        setLeastWidths();
}

void HelpWidget::showSearchRow()
{
    for (QWidget *widget : searchRow())
        widget->show();
}

QString HelpWidget::searchText() const
{
    return m_ui->SearchEdit->text();
}

void HelpWidget::search(const QString &text)
{
    m_ui->SearchEdit->setText(text);
    slotSearch();
}

/// The index lets events run while it is read or built, so a second search may be asked for, or this object deleted.
void HelpWidget::slotSearch()
{
    const QString query = searchText();
    if (query.isEmpty() || m_searching)
        return;
    const QPointer<HelpWidget> self(this);
    QString failure;
    {
        const WaitCursor cursor;
        m_searching = true;
        const bool hasIndex = provideIndex();
        if (!self)
            return;
        m_searching = false;
        failure = hasIndex ? showResults(query) : tr("The index file could not be generated.");
    }
    if (self && !failure.isEmpty())
        showWarning(window(), failure);
}

/// Returns a message if the page cannot be written.
QString HelpWidget::showResults(const QString &query)
{
    const QString name = u"tarnish"_s + QTime::currentTime().toString(u"hhmmsszzz"_s) + u".html"_s;
    const QString path = QDir::home().filePath(name);
    m_tempFiles.append(path);
    if (!writePage(path, m_index.searchResultsPage(query)))
        return tr("The search results file could not be written:\n\n%1").arg(QDir::toNativeSeparators(path));
    Q_EMIT openHelp(path);
    return {};
}

bool HelpWidget::provideIndex()
{
    if (m_index.isLoaded())
        return true;
    const QPointer<HelpWidget> self(this);
    const QString userIndex = m_files.userIndex;
    bool loaded = loadIndex(QDir(m_files.directory).filePath(u"index"_s));
    if (self && !loaded)
        loaded = loadIndex(userIndex);
    return self && (loaded || buildIndex());
}

/// The index may be that of another installation, which it was copied from, or which the same user has used.
bool HelpWidget::loadIndex(const QString &file)
{
    const QPointer<HelpWidget> self(this);
    return m_index.load(file) && self && m_index.docPath() == m_files.directory;
}

bool HelpWidget::buildIndex()
{
    const QPointer<HelpWidget> self(this);
    const QPointer<QProgressDialog> progress = new QProgressDialog(window());
    progress->setObjectName(u"progress"_s);
    progress->setWindowTitle(messageCaption());
    progress->setLabelText(tr("Building full-text index. Please wait..."));
    progress->setCancelButton(nullptr);
    progress->setRange(0, 100);
    progress->setMinimumDuration(0);
    progress->setModal(true);
    connect(&m_index, &FullTextIndex::indexing, progress, &QProgressDialog::setValue);
    progress->show(); // modal from the first event on
    const bool built = m_index.build(m_files.directory);
    delete progress;
    return built && self && saveIndex();
}

bool HelpWidget::saveIndex() const
{
    if (m_index.save(QDir(m_files.directory).filePath(u"index"_s)))
        return true;
    QDir().mkpath(QFileInfo(m_files.userIndex).path());
    return m_index.save(m_files.userIndex);
}
