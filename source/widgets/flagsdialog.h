#pragma once
#include <QDialog>
class QCheckBox;

/// A check box for each of some named bits, the last one being bit 0. Not modal: a click acts at once.
class FlagsDialog : public QDialog
{
    Q_OBJECT
public:
    FlagsDialog(const QString &caption, const QStringList &names, QWidget *parent);

    [[nodiscard]] quint32 value() const;
    void setValue(quint32 value);

public Q_SLOTS:
    void checkBoxClicked();

Q_SIGNALS:
    void valueChanged(quint32 value);

private:
    void addScrollArea(QWidget *flags);

    QList<QCheckBox *> m_checkBoxes;
};
