#include "outputpage.h"
#include "outputwindow.h"
#include "popupmenu.h"
#include "producttext.h"
#include "translation.h"
#include "windowfixture.h"
#include <QDockWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QDir Product(QStringLiteral(VARNEL_STAGE_DIR "/translations"));

QByteArray germanFile()
{
    QFile file(Product.filePath(u"varnel_de.qm"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString newFile()
{
    return productText("UiConfig", u"&New File..."_s, u"fileNew"_s);
}

/// An application that shows texts in German.
struct GermanApplication
{
    Arguments arguments;
    QApplication application{arguments.count(), arguments.values()};
    Translation translation{Product, u"de"_s};
};

/// A main window with the menus of the product.
class ProductWindow : public WindowFixture
{
public:
    ProductWindow()
    {
        QFile ui(QStringLiteral(VARNEL_SOURCE_DIR "/config/uiconfig.xml"));
        if (!ui.open(QIODevice::ReadOnly))
            qFatal("cannot read");
        static const QRegularExpression icons(u" icon=\"[^\"]*\""_s);
        installation.write(u"config/uiconfig.xml"_s, QString::fromUtf8(ui.readAll()).remove(icons).toUtf8());
        restart();
    }

    /// The names of all objects, in an order that no text changes.
    [[nodiscard]] QStringList names() const
    {
        QStringList result;
        for (const QObject *object : window->findChildren<QObject *>()) {
            if (!object->objectName().isEmpty())
                result.append(object->objectName());
        }
        result.sort();
        return result;
    }
};
} // namespace

class TranslationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        QVERIFY(!germanFile().isEmpty());
    }

    void englishNeedsNoFile()
    {
        const Translation translation(QDir(u"/nonexistent"_s), {});
        QVERIFY(!translation.isLoaded());
        QCOMPARE(newFile(), u"&New File..."_s);
    }

    void textsAreGermanWhileTheTranslationExists()
    {
        {
            const GermanApplication german;
            QVERIFY(german.translation.isLoaded());
            QCOMPARE(newFile(), u"&Neue Datei..."_s);
            QCOMPARE(productText("KeySets", u"unknown"_s), u"unknown"_s);
        }
        QCOMPARE(newFile(), u"&New File..."_s);
    }

    void sameTextDiffersByItsMenu()
    {
        const GermanApplication german;
        QCOMPARE(productText("UiConfig", u"&Build"_s, u"buildBuild"_s), u"&Erstellen"_s);
        QCOMPARE(productText("UiConfig", u"&Build"_s, u"buildBuildAlt"_s), u"Er&stellen"_s);
    }

    void pluralFormsFollowTheNumber()
    {
        const GermanApplication german;
        QCOMPARE(QCoreApplication::translate("Recovery", "and %n more", nullptr, 1), u"und eine weitere"_s);
        QCOMPARE(QCoreApplication::translate("Recovery", "and %n more", nullptr, 5), u"und 5 weitere"_s);
    }

    void emptyTextOfAProductFileStaysEmpty()
    {
        const GermanApplication german;
        QVERIFY(productText("Templates", QString()).isNull());
        QVERIFY(productText("Templates", u""_s).isEmpty());
    }

    void fileThatIsMissingOrDamagedIsReportedAndTextsStayEnglish_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("code");
        QTest::newRow("missing") << QByteArray() << u"de"_s;
        QTest::newRow("text") << QByteArray("<TS version='2.1'/>") << u"de"_s;
        QTest::newRow("first half") << germanFile().left(germanFile().size() / 2) << u"de"_s;
        QTest::newRow("wrong size of a part") << germanFile().replace(17, 4, QByteArray(4, '\x7f')) << u"de"_s;
        QTest::newRow("path to elsewhere") << germanFile() << u"x/../de"_s;
    }
    void fileThatIsMissingOrDamagedIsReportedAndTextsStayEnglish()
    {
        QFETCH(const QByteArray, content);
        QFETCH(const QString, code);
        const Installation installation;
        if (!content.isEmpty())
            installation.write(u"varnel_de.qm"_s, content);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Translation: cannot read the texts"_s));
        const Translation translation(QDir(installation.path(u"."_s)), code);
        QVERIFY(!translation.isLoaded());
        QCOMPARE(newFile(), u"&New File..."_s);
    }

    void languagesAreThoseWithAFile()
    {
        const Installation installation;
        for (const char *name :
             {"varnel_de.qm", "varnel_pt_BR.qm", "varnel_xx.qm", "varnel_..qm", "other_fr.qm", "varnel_it.ts"})
            installation.write(QString::fromLatin1(name), "x");
        const QList<LanguageChoice> expected{{{}, u"English"_s},
                                             {u"de"_s, u"Deutsch"_s},
                                             {u"pt_BR"_s, QLocale(u"pt_BR"_s).nativeLanguageName()},
                                             {u"xx"_s, u"xx"_s}};
        QCOMPARE(availableLanguages(QDir(installation.path(u"."_s))), expected);
    }

    void directoryIsBesideTheConfiguration()
    {
        QCOMPARE(translationDirectory(QDir(u"/opt/varnel/config"_s)).path(), u"/opt/varnel/translations"_s);
    }

    void languageOfTheSettingsIsLoadedAtTheStart()
    {
        const Installation installation;
        installation.writeWindowFiles();
        installation.write(u"translations/varnel_de.qm"_s, germanFile());
        installation.write(u"settings/Ostrand Labs/Varnel/1.0.ini"_s, "[Startup]\nLanguage=de\n");
        Arguments arguments;
        {
            const IDEApplication application(arguments.count(), arguments.values(), installation.paths());
            QCOMPARE(newFile(), u"&Neue Datei..."_s);
        }
        QCOMPARE(newFile(), u"&New File..."_s);
    }

    void windowIsGermanAndItsObjectsKeepTheirNames()
    {
        ProductWindow f;
        const QStringList names = f.names();
        const Translation translation(Product, u"de"_s);
        f.restart();
        QCOMPARE(f.window->findChild<QAction *>(u"fileNew"_s)->text(), u"&Neue Datei..."_s);
        QCOMPARE(f.window->findChild<PopupMenu *>(u"editMenu"_s)->title(), u"&Bearbeiten"_s);
        QCOMPARE(f.window->findChild<QDockWidget *>(u"memoryDockWindow"_s)->windowTitle(), u"Speicher"_s);
        QCOMPARE(f.names(), names);
    }

    void pluginsReachPagesByTheirEnglishNames()
    {
        const WindowFixture f;
        const Translation translation(Product, u"de"_s);
        OutputWindow window;
        window.outputLine(u"Build"_s, u"built"_s);
        window.outputLine(u"Find In Files"_s, u"found"_s);
        QCOMPARE(window.page(OutputWindow::Build)->windowTitle(), u"Erstellen"_s);
        QCOMPARE(window.page(OutputWindow::Build)->toPlainText().trimmed(), u"built"_s);
        QCOMPARE(window.page(OutputWindow::FindInFiles)->toPlainText().trimmed(), u"found"_s);
        QVERIFY(!window.page(3)); // no page was added
    }
};

int main(int argc, char **argv)
{
    TranslationTest test; // makes an application in some functions
    return QTest::qExec(&test, argc, argv);
}
#include "tst_translation.moc"
