#include "debugactiondialog.h"
#include "messages.h"
#include "ui_debugactiondialogbase.h"

using namespace Qt::StringLiterals;

DebugActionDialog::DebugActionDialog(const QString &question, const QStringList &items, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::DebugActionDialogBase>())
{
    m_ui->setupUi(this);
    setObjectName(u"debugActionDialog"_s);
    setWindowTitle(messageCaption());
    m_ui->QuestionLabel->setText(question);
    m_ui->Button1->setText(items.value(First));
    m_ui->Button2->setText(items.value(Second));
    connect(m_ui->Button1, &QPushButton::clicked, this, [this] { choose(First); });
    connect(m_ui->Button2, &QPushButton::clicked, this, [this] { choose(Second); });
}

DebugActionDialog::~DebugActionDialog() = default;

bool DebugActionDialog::dontAskAgain() const
{
    return m_ui->DontAskCheck->isChecked();
}

void DebugActionDialog::choose(Choice choice)
{
    m_choice = choice;
    accept();
}
