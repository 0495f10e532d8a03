#include "problemreportdialog.h"
#include "pasteguard.h"
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
QPlainTextEdit *addText(QVBoxLayout *layout, const QString &objectName, const QString &caption)
{
    auto *label = new QLabel(caption);
    label->setWordWrap(true);
    auto *edit = new PasteGuard<QPlainTextEdit>;
    edit->setObjectName(objectName);
    edit->setTabChangesFocus(true);
    label->setBuddy(edit);
    layout->addWidget(label);
    layout->addWidget(edit);
    return edit;
}
} // namespace

ProblemReportDialog::ProblemReportDialog(const QStringList &warnings, QWidget *parent, const QString &name)
    : QDialog(parent), m_warnings(warnings)
{
    setObjectName(name);
    setWindowTitle(tr("Report a Problem"));
    addTexts();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->setObjectName(u"buttonBox"_s);
    QPushButton *copyButton = buttons->addButton(tr("C&opy Report"), QDialogButtonBox::ActionRole);
    copyButton->setObjectName(u"copyButton"_s);
    connect(copyButton, &QPushButton::clicked, this, &ProblemReportDialog::copy);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout()->addWidget(buttons);
    setTabOrder(m_details, copyButton); // the box leaves out a button that it got before another one
    setTabOrder(copyButton, buttons->button(QDialogButtonBox::Close));
    resize(620, 480);
}

void ProblemReportDialog::addTexts()
{
    auto *layout = new QVBoxLayout(this);
    m_description =
        addText(layout, u"descriptionEdit"_s, tr("&What did you do, what did you expect, and what happened?"));
    m_details =
        addText(layout, u"detailsEdit"_s,
                tr("&Details that are part of the report. Nothing is sent: copy the report, look through it, and "
                   "pass it on yourself."));
    m_details->setReadOnly(true);
    m_details->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    m_details->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    layout->setStretch(1, 1);
    layout->setStretch(3, 2);
    setDetails({});
}

void ProblemReportDialog::setDetails(const QString &details)
{
    const QString warnings = m_warnings.isEmpty() ? tr("none") : u'\n' + m_warnings.join(u'\n');
    m_details->setPlainText(details + u"\n\n"_s + tr("Last warnings: %1").arg(warnings));
}

QString ProblemReportDialog::report() const
{
    return m_description->toPlainText().trimmed() + u"\n\n"_s + m_details->toPlainText() + u'\n';
}

void ProblemReportDialog::copy()
{
    QGuiApplication::clipboard()->setText(report());
}
