#pragma once
#include "toolentry.h"
#include <memory>
#include <QSet>
#include <QWidget>
class QLineEdit;
namespace Ui {
class ToolsDialogBase;
}

/// The page of the options dialog that edits the list of external tools.
class ToolsDialog : public QWidget
{
    Q_OBJECT
public:
    ToolsDialog(const QList<ToolEntry> &tools, QWidget *parent, const QString &name);
    ~ToolsDialog() override;

    void apply();  ///< Takes the edits over into tools(). No tool is current afterwards.
    void revert(); ///< Drops the edits: tools() is as it was at first. No tool is current afterwards.
    [[nodiscard]] QList<ToolEntry> tools() const { return m_tools; }
    /// Marks the entry @p id as one whose process runs, so that it can be stopped.
    void setRunning(int id, bool running);

public Q_SLOTS:
    void toolChanged();
    void newClicked();
    void removeClicked();
    void upClicked();
    void downClicked();
    void browseClicked();
    void macro1Clicked();
    void macro2Clicked();

Q_SIGNALS:
    void stopRequested(int id);

private:
    void refresh();
    void loadEdits();
    void storeEdits();
    void selectRow(qsizetype row);
    void move(int step);
    void updateButtons();
    void popUpMacros(QWidget *button, QLineEdit *edit);

    const std::unique_ptr<Ui::ToolsDialogBase> m_ui;
    const QList<ToolEntry> m_original;
    QList<ToolEntry> m_tools;
    int m_current = -1; ///< the tool in the edits; -1 for none
    QSet<int> m_running;
};
