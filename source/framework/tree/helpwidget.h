#pragma once
#include "fulltextindex.h"
#include <memory>
#include <QHash>
#include <QStringList>
#include <QWidget>
class ListViewItem;
class WindowServices;
struct HelpEntry;
namespace Ui {
class HelpWidgetBase;
}

/// Where the help is.
struct HelpFiles
{
    QString directory; ///< of the pages, the tables of contents and the full-text index
    QString userIndex; ///< the full-text index if the directory cannot be written
};

/// The table of contents of the help in the navigator, and the search in its pages.
class HelpWidget : public QWidget
{
    Q_OBJECT
public:
    /// @p window outlives this object.
    HelpWidget(const HelpFiles &files, WindowServices &window, QWidget *parent = nullptr);
    ~HelpWidget() override; ///< Also deletes the results pages.

    [[nodiscard]] QString searchText() const;
    /// Shows the search row, which is hidden until then.
    void showSearchRow();
    /// Searches for @p text as if it were typed into the search row.
    void search(const QString &text);

public Q_SLOTS:
    void helpSourceChanged(const QString &source);
    void home();
    void previous();
    void next();
    void slotSelectionChanged(ListViewItem *item);
    void slotSearch();

protected:
    void changeEvent(QEvent *event) override;

Q_SIGNALS:
    void openHelp(const QString &path);
    void previousAvailable(bool available);
    void nextAvailable(bool available);

private:
    [[nodiscard]] QList<QWidget *> searchRow() const;

    // Contents
    void loadIndexes();
    void addEntry(ListViewItem *parent, const HelpEntry &entry);
    ListViewItem *insertItem(ListViewItem *parent, const HelpEntry &entry);
    void select(ListViewItem *item);
    [[nodiscard]] ListViewItem *pageBeside(ListViewItem *item, int step) const;
    void goToPageBeside(int step);

    // Search
    void setLeastWidths();
    [[nodiscard]] QString showResults(const QString &query);
    bool provideIndex();
    bool loadIndex(const QString &file);
    bool buildIndex();
    [[nodiscard]] bool saveIndex() const;

    const HelpFiles m_files;
    WindowServices &m_window;
    const std::unique_ptr<Ui::HelpWidgetBase> m_ui;
    FullTextIndex m_index;
    QHash<QString, ListViewItem *> m_pages; ///< by their full paths
    QStringList m_tempFiles;                ///< results pages
    QString m_currentPage;
    bool m_searching = false;
};
