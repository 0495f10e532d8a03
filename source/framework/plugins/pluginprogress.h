#pragma once
#include "ihost.h"
#include <QWidget>
class QProgressBar;

/// The progress of a plug-in's work in the status bar: a text, a bar and, if the work can be cancelled, a button.
class PluginProgress : public QWidget
{
    Q_OBJECT
public:
    /// A reference to @p cancel, which may be null, is kept; the button calls it once with @p number.
    PluginProgress(const QString &text, int number, IProgressCancel *cancel);
    ~PluginProgress() override;

    void setPercent(int percent); ///< A number below 0 means that it is not known, as at the start.
    void end(); ///< Hides it and releases the object; deletes it later, since its button may call this.

private:
    QProgressBar *m_bar;
    InterfacePtr<IProgressCancel> m_cancel;
};
