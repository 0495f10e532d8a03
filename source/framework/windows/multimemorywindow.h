#pragma once
#include "multiwidget.h"

/// The memories of all processors: one MemoryWindow for each environment that offers IMemory.
class MultiMemoryWindow : public MultiWidget
{
    Q_OBJECT
public:
    using MultiWidget::MultiWidget;

protected:
    DebugPane *createWidget(QWidget *parent, IExecutionEnvironment *environment, bool force) override;
};
