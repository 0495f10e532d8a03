#include "batchbuilddialog.h"
#include "callplugin.h"
#include "ibuildenvironment.h"
#include "project.h"
#include "ui_batchbuilddialogbase.h"
#include "varnelassert.h"

BatchBuildDialog::BatchBuildDialog(const Project *project, IBuildEnvironment *buildEnvironment, QWidget *parent,
                                   const QString &name)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::BatchBuildDialogBase>())
    , m_project(project)
    , m_buildEnvironment(shareInterface(buildEnvironment))
{
    VARNEL_ASSERT(project);
    VARNEL_ASSERT(buildEnvironment);
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->ConfigList->header()->hide();
    ListViewItem *last = nullptr;
    for (const QString &configuration : project ? project->properties()->configurations() : QStringList()) {
        last = new ListViewItem(m_ui->ConfigList, last, configuration);
        last->setCheckState(0, Qt::Checked);
    }
    connect(m_ui->BuildButton, &QPushButton::clicked, this, &BatchBuildDialog::build);
    connect(m_ui->RebuildButton, &QPushButton::clicked, this, &BatchBuildDialog::rebuild);
    connect(m_ui->CleanButton, &QPushButton::clicked, this, &BatchBuildDialog::clean);
}

BatchBuildDialog::~BatchBuildDialog() = default;

QStringList BatchBuildDialog::tickedConfigurations() const
{
    QStringList names;
    for (const ListViewItem *item = m_ui->ConfigList->firstChild(); item; item = item->itemBelow()) {
        if (item->checkState(0) == Qt::Checked)
            names.append(item->text(0));
    }
    return names;
}

void BatchBuildDialog::build()
{
    Q_EMIT starting();
    finish(m_project && runPlugin<&IBuildEnvironment::build>(m_buildEnvironment, tickedConfigurations(), false));
}

void BatchBuildDialog::rebuild()
{
    Q_EMIT starting();
    finish(m_project && runPlugin<&IBuildEnvironment::build>(m_buildEnvironment, tickedConfigurations(), true));
}

void BatchBuildDialog::clean()
{
    Q_EMIT starting();
    finish(m_project && runPlugin<&IBuildEnvironment::clean>(m_buildEnvironment, tickedConfigurations()));
}

/// Does not accept the dialog if the build could not be started, because then no end would be reported. The environment
/// of a deleted project builds nothing.
void BatchBuildDialog::finish(bool started)
{
    if (started)
        accept();
    else
        reject();
}
