#include "pluginprogress.h"
#include "callplugin.h"
#include <algorithm>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

PluginProgress::PluginProgress(const QString &text, int number, IProgressCancel *cancel)
    : m_bar(new QProgressBar), m_cancel(shareInterface(cancel))
{
    constexpr int barWidth = 120; // pixels
    setObjectName(u"PluginProgress%1"_s.arg(number));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(text));
    layout->addWidget(m_bar);
    m_bar->setMaximumWidth(barWidth);
    setPercent(-1);
    if (!m_cancel)
        return;
    auto *button = new QToolButton;
    button->setText(tr("Cancel"));
    layout->addWidget(button);
    connect(button, &QToolButton::clicked, this, [this, button, number] {
        button->setEnabled(false);
        const auto called = shareInterface(m_cancel.get()); // it may end the progress
        runPlugin<&IProgressCancel::cancelled>(called, number);
    });
}

PluginProgress::~PluginProgress() = default;

void PluginProgress::setPercent(int percent)
{
    m_bar->setRange(0, percent < 0 ? 0 : 100);
    m_bar->setValue(std::min(percent, 100));
}

void PluginProgress::end()
{
    hide();
    m_cancel.reset();
    deleteLater();
}
