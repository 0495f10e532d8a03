#include <patchlevel.h>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QLibrary>
#include <QListWidget>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
std::unique_ptr<QPixmap> splash(const QString &version)
{
    const auto make = reinterpret_cast<QPixmap *(*)(const QString &)>(
        QLibrary::resolve(QStringLiteral(VARNEL_STAGE_DIR "/bin/branding"), "splashScreenPixmap"));
    return std::unique_ptr<QPixmap>(make ? make(version) : nullptr);
}

std::unique_ptr<QDialog> about(const QStringList &names, const QString &text = u"2.9"_s)
{
    const auto make = reinterpret_cast<QDialog *(*)(const QStringList &, const QString &)>(
        QLibrary::resolve(QStringLiteral(VARNEL_STAGE_DIR "/bin/branding"), "aboutBox"));
    return std::unique_ptr<QDialog>(make ? make(names, text) : nullptr);
}

QString textOf(const QDialog &dialog, const QString &label)
{
    const auto *found = dialog.findChild<QLabel *>(label);
    return found ? found->text() : u"no such label"_s;
}

QString plugins(const QDialog &dialog)
{
    QString text;
    const auto *list = dialog.findChild<QListWidget *>(u"pluginList"_s);
    for (int row = 0; list && row < list->count(); ++row)
        text += list->item(row)->text() + u'\n';
    return text;
}
} // namespace

class tst_branding : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void splashHasItsLogicalSize()
    {
        const auto pixmap = splash(u"2.9"_s);
        QVERIFY(pixmap);
        QCOMPARE(pixmap->deviceIndependentSize(), QSizeF(480, 300));
        QCOMPARE(pixmap->devicePixelRatio(), qApp->primaryScreen()->devicePixelRatio());
        QVERIFY(!pixmap->toImage().hasAlphaChannel());
    }

    void splashShowsTheVersion()
    {
        const QImage first = splash(u"2.9"_s)->toImage();
        QCOMPARE(splash(u"2.9"_s)->toImage(), first);
        QVERIFY(splash(u"3.0"_s)->toImage() != first);
    }

    void splashHasALightStripForLogosWithBlackNames()
    {
        const QImage image = splash(u"2.9"_s)->toImage();
        const qreal ratio = image.devicePixelRatio();
        const QRgb colour = image.pixel(0, image.height() - 1);
        QVERIFY(qGray(colour) > 200);
        for (int y = image.height() - qRound(60 * ratio); y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                QCOMPARE(image.pixel(x, y), colour);
    }

    void splashHasAPicture()
    {
        const QImage image = splash(u"2.9"_s)->toImage();
        QSet<QRgb> colours;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                colours.insert(image.pixel(x, y));
        QVERIFY(colours.size() > 100);
    }

    void aboutBoxShowsProductVersionAndLibraries()
    {
        const auto dialog = about({}, u"2.9 (Multi-processor support enabled)"_s);
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), u"About Varnel"_s);
        QCOMPARE(textOf(*dialog, u"nameLabel"_s), u"Varnel"_s);
        QCOMPARE(textOf(*dialog, u"versionLabel"_s), u"Version 2.9 (Multi-processor support enabled)"_s);
        QCOMPARE(
            textOf(*dialog, u"librariesLabel"_s),
            u"Running on Qt %1 with Python %2"_s.arg(QLatin1StringView(qVersion()), QLatin1StringView(PY_VERSION)));
        QCOMPARE(textOf(*dialog, u"licenceLabel"_s),
                 u"Copyright © The Varnel authors. Free software under the MIT licence."_s);
        QVERIFY(!dialog->findChild<QLabel *>(u"iconLabel"_s)->pixmap().isNull());
    }

    void aboutBoxListsPlugins_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << QStringList() << u"No plug-ins are installed\n"_s;
        QTest::newRow("in the given order") << QStringList{u"Zeta"_s, u"Alpha"_s} << u"Zeta\nAlpha\n"_s;
        QTest::newRow("as plain text") << QStringList{u"<b>A</b> & B"_s} << u"<b>A</b> & B\n"_s;
    }
    void aboutBoxListsPlugins()
    {
        QFETCH(const QStringList, names);
        QTEST(plugins(*about(names)), "expected");
    }

    void aboutBoxShowsAndCopiesDetails()
    {
        const auto dialog = about({u"Alpha"_s}, u"2.9"_s);
        auto *details = dialog->findChild<QPlainTextEdit *>(u"detailsText"_s);
        QVERIFY(details && details->isReadOnly());
        QVERIFY(details->isHidden());
        details->setPlainText(u"gdb 13"_s);
        QVERIFY(!details->isHidden());
        QTest::mouseClick(dialog->findChild<QPushButton *>(u"copyButton"_s), Qt::LeftButton);
        const QString copied = QGuiApplication::clipboard()->text();
        for (const QString &line : {u"Version 2.9\n"_s, u"  Alpha\n"_s, u"gdb 13\n"_s})
            QVERIFY2(copied.contains(line), qPrintable(copied));
    }

    void aboutBoxClosesByKey_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<int>("result");
        QTest::newRow("Escape") << Qt::Key_Escape << int(QDialog::Rejected);
        QTest::newRow("Return presses the default button") << Qt::Key_Return << int(QDialog::Accepted);
    }
    void aboutBoxClosesByKey()
    {
        QFETCH(const Qt::Key, key);
        const auto dialog = about({u"Alpha"_s});
        dialog->setResult(-1);
        QTest::ignoreMessage(QtWarningMsg,
                             "This plugin does not support propagateSizeHints()"); // of the offscreen platform
        dialog->show();
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
        QVERIFY(qobject_cast<QPushButton *>(dialog->focusWidget()));
        QTest::keyClick(dialog.get(), key);
        QTEST(dialog->result(), "result");
        QVERIFY(!dialog->isVisible());
    }

    void callerDeletesTheAboutBoxBeforeItsWindow()
    {
        QWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto dialog = about({});
        QCOMPARE(dialog->parentWidget(), &window);
        dialog.reset();
        QVERIFY(window.children().isEmpty());
    }
};

QTEST_MAIN(tst_branding)
#include "tst_branding.moc"
