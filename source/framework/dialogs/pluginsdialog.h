#pragma once
#include <QDialog>
#include <QStringList>
class QLabel;
class QPlainTextEdit;
class QTreeWidget;
struct PluginLibrary;

/// Lists the plug-in libraries with their features, paths and problems. Each can be switched off and on for the next
/// start of the program.
class PluginsDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p disabled are the paths of the libraries that will not be loaded at the next start.
    PluginsDialog(const QList<PluginLibrary> &libraries, const QStringList &disabled, QWidget *parent = nullptr);

    /// The same as the dialog shows them, with the given paths of libraries that are not in the list.
    [[nodiscard]] QStringList disabled() const;

private:
    void addLibrary(const PluginLibrary &library);
    void showNotice();
    void showDetails();

    QTreeWidget *m_list;
    QPlainTextEdit *m_details; ///< the texts of the current library, which are cut in narrow columns
    QLabel *m_notice;          ///< shows when a change takes effect
    const QStringList m_disabled;
};
