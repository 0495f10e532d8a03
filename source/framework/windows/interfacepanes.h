#pragma once
#include "callplugin.h"
#include "iexecutionenvironment.h"
#include "multiwidget.h"

/// A MultiWidget whose panes show one optional interface of the execution environments: @p SetInterface is the pane's
/// function that takes it.
template <typename Interface, typename Pane, auto SetInterface>
class InterfacePanes : public MultiWidget
{
public:
    using MultiWidget::MultiWidget;

protected:
    DebugPane *createWidget(QWidget *parent, IExecutionEnvironment *environment, bool force) override
    {
        const auto found = queryPlugin<Interface>(environment);
        if (!found && !force)
            return nullptr;
        auto *pane = new Pane(parent);
        (pane->*SetInterface)(found.get());
        return pane;
    }
};
