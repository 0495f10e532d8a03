#include "debugoptionspage.h"
#include "ui_debugoptionspagebase.h"

DebugOptionsPage::DebugOptionsPage(const QList<QStringList> &texts, const QList<int> &actions, QWidget *parent,
                                   const QString &name)
    : QWidget(parent), m_ui(std::make_unique<Ui::DebugOptionsPageBase>()), m_original(actions)
{
    m_ui->setupUi(this);
    setObjectName(name);
    const QList<QComboBox *> combos = this->combos();
    for (qsizetype event = 0; event < combos.size(); ++event) {
        combos[event]->addItems(texts.value(event));
        combos[event]->setCurrentIndex(actions.value(event));
    }
}

DebugOptionsPage::~DebugOptionsPage() = default;

QList<QComboBox *> DebugOptionsPage::combos() const
{
    return {m_ui->RunComboBox, m_ui->PauseComboBox, m_ui->RestartComboBox, m_ui->WakeupComboBox,
            m_ui->BreakpointComboBox};
}

QList<int> DebugOptionsPage::actions() const
{
    QList<int> actions = m_original;
    const QList<QComboBox *> combos = this->combos();
    for (qsizetype event = 0; event < std::min(combos.size(), actions.size()); ++event) {
        if (combos[event]->currentIndex() >= 0)
            actions[event] = combos[event]->currentIndex();
    }
    return actions;
}
