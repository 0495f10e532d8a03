#include "pluginsdialog.h"
#include "pluginmanager.h"
#include <QDialogButtonBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
enum Column { NameColumn, FeatureColumn, PathColumn, ProblemColumn };
constexpr int PathRole = Qt::UserRole;
constexpr int DetailLines = 6;
constexpr int ProblemRole = Qt::UserRole + 2; ///< whether it could not be loaded
constexpr int LoadedRole = Qt::UserRole + 1;  ///< whether it is switched on in the running program

/// The first library that could not be loaded, else the first one; null without any.
QTreeWidgetItem *firstProblem(const QTreeWidget &list)
{
    for (int i = 0; i < list.topLevelItemCount(); ++i) {
        if (list.topLevelItem(i)->data(NameColumn, ProblemRole).toBool())
            return list.topLevelItem(i);
    }
    return list.topLevelItem(0);
}
} // namespace

PluginsDialog::PluginsDialog(const QList<PluginLibrary> &libraries, const QStringList &disabled, QWidget *parent)
    : QDialog(parent)
    , m_list(new QTreeWidget)
    , m_details(new QPlainTextEdit)
    , m_notice(new QLabel)
    , m_disabled(disabled)
{
    setObjectName(u"pluginsDialog"_s);
    setWindowTitle(tr("Plug-ins"));
    resize(760, 460);
    m_list->setObjectName(u"PluginList"_s);
    m_list->setHeaderLabels({tr("Name"), tr("Features"), tr("Library"), tr("State")});
    m_list->setAccessibleName(tr("Libraries"));
    m_list->setRootIsDecorated(false);
    m_list->setWordWrap(true);
    m_details->setObjectName(u"DetailsEdit"_s);
    m_details->setAccessibleName(tr("State"));
    m_details->setReadOnly(true);
    m_details->setMaximumHeight(m_details->fontMetrics().lineSpacing() * DetailLines);
    m_notice->setObjectName(u"NoticeLabel"_s);
    m_notice->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addWidget(m_details);
    layout->addWidget(m_notice);
    layout->addWidget(buttons);
    for (const PluginLibrary &library : libraries)
        addLibrary(library);
    for (const int column : {NameColumn, FeatureColumn, PathColumn})
        m_list->resizeColumnToContents(column);
    showNotice();
    connect(m_list, &QTreeWidget::currentItemChanged, this, &PluginsDialog::showDetails);
    m_list->setCurrentItem(firstProblem(*m_list));
    connect(m_list, &QTreeWidget::itemChanged, this, &PluginsDialog::showNotice);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void PluginsDialog::addLibrary(const PluginLibrary &library)
{
    auto *item = new QTreeWidgetItem(m_list);
    item->setText(NameColumn, library.name);
    item->setText(FeatureColumn, library.features.join(u'\n'));
    item->setText(PathColumn, QDir::toNativeSeparators(library.path));
    item->setText(ProblemColumn, !library.enabled            ? tr("Switched off")
                                 : library.problem.isEmpty() ? tr("Loaded")
                                                             : library.problem);
    for (const int column : {PathColumn, ProblemColumn})
        item->setToolTip(column, item->text(column));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(NameColumn, m_disabled.contains(library.path) ? Qt::Unchecked : Qt::Checked);
    item->setData(NameColumn, PathRole, library.path);
    item->setData(NameColumn, ProblemRole, library.enabled && !library.problem.isEmpty());
    item->setData(NameColumn, LoadedRole, library.enabled);
}

void PluginsDialog::showNotice()
{
    bool differs = false;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *item = m_list->topLevelItem(i);
        differs |= (item->checkState(NameColumn) == Qt::Checked) != item->data(NameColumn, LoadedRole).toBool();
    }
    m_notice->setText(differs ? tr("The change takes effect when Varnel is started again.")
                              : tr("A plug-in without a check mark is not loaded when Varnel starts."));
}

void PluginsDialog::showDetails()
{
    const QTreeWidgetItem *item = m_list->currentItem();
    m_details->setPlainText(item ? item->text(ProblemColumn) + u"\n\n"_s + item->text(PathColumn) + u'\n'
                                       + item->text(FeatureColumn)
                                 : QString());
}

QStringList PluginsDialog::disabled() const
{
    QStringList paths = m_disabled;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *item = m_list->topLevelItem(i);
        const QString path = item->data(NameColumn, PathRole).toString();
        paths.removeAll(path);
        if (item->checkState(NameColumn) == Qt::Unchecked)
            paths.append(path);
    }
    return paths;
}
