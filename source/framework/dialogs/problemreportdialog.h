#pragma once
#include <QDialog>
class QPlainTextEdit;

/// A report of a problem that the user completes and copies. Nothing is sent.
class ProblemReportDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p warnings are the last lines of the warning channel.
    ProblemReportDialog(const QStringList &warnings, QWidget *parent, const QString &name);

    /// Shows what is known about the program, below what the user has written.
    void setDetails(const QString &details);
    [[nodiscard]] QString report() const; ///< The text that is copied.

private:
    void addTexts();
    void copy();

    const QStringList m_warnings;
    QPlainTextEdit *m_description;
    QPlainTextEdit *m_details;
};
