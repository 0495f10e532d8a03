#include "branding.h"
#include <patchlevel.h>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace {
QString tr(const char *text)
{
    return QCoreApplication::translate("AboutBox", text);
}

QPixmap productIcon(int size, qreal ratio)
{
    QPixmap pixmap(QSize(size, size) * ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(u":/branding/appicon.svg"_s).render(&painter);
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QLabel *addLabel(QGridLayout *layout, int row, const QString &objectName, const QString &text)
{
    auto *label = new QLabel(text);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(label, row, 1);
    return label;
}

QListWidget *pluginList(const QStringList &names)
{
    auto *list = new QListWidget;
    list->setObjectName(u"pluginList"_s);
    list->setAccessibleName(tr("Plug-ins"));
    list->setSelectionMode(QAbstractItemView::NoSelection);
    list->addItems(names);
    if (names.isEmpty())
        list->addItem(tr("No plug-ins are installed"));
    list->setMinimumSize(320, 96);
    list->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    return list;
}

/// Hidden until the program sets a text.
QPlainTextEdit *detailsText()
{
    auto *details = new QPlainTextEdit;
    details->setObjectName(u"detailsText"_s);
    details->setAccessibleName(tr("Versions"));
    details->setReadOnly(true);
    details->setTabChangesFocus(true);
    details->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    details->setLineWrapMode(QPlainTextEdit::NoWrap);
    details->hide();
    QObject::connect(details, &QPlainTextEdit::textChanged, details, [details] { details->setVisible(true); });
    return details;
}

/// All that the box says, for the clipboard.
QString boxText(const QDialog &dialog)
{
    QStringList lines;
    for (const QLabel *label : dialog.findChildren<QLabel *>())
        lines.append(label->text());
    const auto *list = dialog.findChild<QListWidget *>();
    for (int row = 0; row < list->count(); ++row)
        lines.append(u"  "_s + list->item(row)->text());
    lines.append(dialog.findChild<QPlainTextEdit *>()->toPlainText());
    lines.removeAll(QString());
    return lines.join(u'\n') + u'\n';
}

void enlarge(QLabel *label)
{
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.8);
    font.setBold(true);
    label->setFont(font);
}
} // namespace

QDialog *aboutBox(const QStringList &names, const QString &text)
{
    auto *dialog = new QDialog(QApplication::activeWindow());
    dialog->setObjectName(u"aboutBox"_s);
    dialog->setWindowTitle(tr("About Varnel"));

    auto *layout = new QGridLayout(dialog);
    layout->setHorizontalSpacing(16);
    auto *icon = new QLabel;
    icon->setObjectName(u"iconLabel"_s);
    icon->setPixmap(productIcon(64, dialog->devicePixelRatio()));
    layout->addWidget(icon, 0, 0, 2, 1, Qt::AlignTop);

    enlarge(addLabel(layout, 0, u"nameLabel"_s, u"Varnel"_s));
    addLabel(layout, 1, u"versionLabel"_s, tr("Version %1").arg(text));
    addLabel(layout, 2, u"pluginLabel"_s, tr("Plug-ins:"));
    layout->addWidget(pluginList(names), 3, 1);
    addLabel(layout, 4, u"librariesLabel"_s,
             tr("Running on Qt %1 with Python %2").arg(QLatin1StringView(qVersion()), QLatin1StringView(PY_VERSION)));
    addLabel(layout, 5, u"licenceLabel"_s, tr("Copyright © The Varnel authors. Free software under the MIT licence."));

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    buttons->setObjectName(u"buttonBox"_s);
    QPushButton *ok = buttons->button(QDialogButtonBox::Ok);
    ok->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QPushButton *copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(u"copyButton"_s);
    QObject::connect(copy, &QPushButton::clicked, dialog,
                     [dialog] { QGuiApplication::clipboard()->setText(boxText(*dialog)); });
    layout->addWidget(detailsText(), 6, 1);
    layout->addWidget(buttons, 7, 0, 1, 2);
    ok->setFocus();
    return dialog;
}
