#pragma once
#include "multiwidget.h"

/// A MultiWidget with a pane for every environment, which shows itself what its environment does not offer.
template <typename Pane>
class EnvironmentPanes : public MultiWidget
{
public:
    using MultiWidget::MultiWidget;

protected:
    DebugPane *createWidget(QWidget *parent, IExecutionEnvironment *environment, bool /*force*/) override
    {
        auto *pane = new Pane(parent);
        pane->setEnvironment(environment);
        return pane;
    }
};
