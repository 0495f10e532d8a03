#include "largetextbar.h"
#include "largetextdocument.h"
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QToolButton>

using namespace Qt::StringLiterals;

LargeTextBar::LargeTextBar(LargeTextDocument *document, QWidget *parent)
    : QWidget(parent)
    , m_document(document)
    , m_status(new QLabel)
    , m_notice(new QLabel)
    , m_reload(new QToolButton)
    , m_follow(new QCheckBox(tr("F&ollow the end")))
{
    setBackgroundRole(QPalette::Window); // the space around documents is darker
    setAutoFillBackground(true);
    auto *find = new QToolButton;
    find->setText(tr("Find..."));
    m_reload->setText(tr("Reload"));
    m_status->setObjectName(u"LargeTextStatus"_s);
    m_notice->setObjectName(u"LargeTextNotice"_s);
    m_reload->setObjectName(u"LargeTextReload"_s);
    m_follow->setObjectName(u"LargeTextFollow"_s);
    find->setObjectName(u"LargeTextFind"_s);
    m_follow->setToolTip(tr("Shows what is written to the file, as it is written"));
    m_status->setMinimumWidth(0);
    m_notice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 2, 4, 2);
    layout->addWidget(m_status);
    layout->addSpacing(12);
    layout->addWidget(m_notice, 1);
    layout->addWidget(m_reload);
    layout->addWidget(m_follow);
    layout->addWidget(find);

    connect(find, &QToolButton::clicked, this, &LargeTextBar::findRequested);
    connect(m_reload, &QToolButton::clicked, this, &LargeTextBar::reload);
    connect(m_follow, &QCheckBox::toggled, document, &LargeTextDocument::setFollowing);
    connect(document, &LargeTextDocument::followingChanged, m_follow, &QCheckBox::setChecked);
    connect(document, &LargeTextDocument::renumbered, this, &LargeTextBar::refresh);
    connect(document, &LargeTextDocument::fileChanged, this, &LargeTextBar::refresh);
    m_follow->setChecked(document->isFollowing());
    refresh();
}

void LargeTextBar::refresh()
{
    const QLocale locale;
    const QString size = locale.formattedDataSize(m_document->size());
    if (m_document->isIndexed())
        m_status->setText(tr("%1, %2 lines").arg(size, locale.toString(m_document->lineCount())));
    else
        m_status->setText(tr("%1, counting lines: %2 %").arg(size).arg(m_document->indexedPercent()));
    refreshNotice();
}

void LargeTextBar::refreshNotice()
{
    using Change = LargeTextDocument::Change;
    QString notice;
    switch (m_document->change()) {
    case Change::None:
        m_reloadFailed = false;
        break;
    case Change::Grown:
        notice = tr("The file has grown by %1.")
                     .arg(QLocale().formattedDataSize(m_document->presentSize() - m_document->size()));
        break;
    case Change::Shrunk:
        notice = tr("The file has become shorter.");
        break;
    case Change::Rewritten:
        notice = tr("The file has been changed.");
        break;
    case Change::Replaced:
        notice = tr("The file has been replaced by another one.");
        break;
    case Change::Gone:
        notice = tr("The file has been deleted or moved.");
        break;
    }
    if (m_reloadFailed)
        notice = tr("The file cannot be read.");
    m_notice->setText(notice);
    m_notice->setToolTip(notice);
    m_reload->setVisible(!notice.isEmpty());
    m_reload->setEnabled(m_document->change() != Change::Gone);
}

void LargeTextBar::reload()
{
    m_reloadFailed = !m_document->reload();
    refresh();
}
