#include "glyphwarmup.h"
#include "textdocument.h"
#include "textformats.h"
#include "windowfixture.h"
#include "zoomcommands.h"
#include <QMenu>
#include <QMenuBar>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

/// The commands that magnify documents, in the whole window.
class ZoomCommandsTest : public QObject
{
    Q_OBJECT

    static int lineHeight(const WindowFixture &f) { return f.view()->textDocument()->lineSpacing(); }
    static int zoom(const WindowFixture &f) { return readZoom(*f.settings()); }

    static void turnWheel(QWidget *widget, int angle, Qt::KeyboardModifiers modifiers)
    {
        const QPointF centre = widget->rect().center();
        QWheelEvent event(centre, widget->mapToGlobal(centre), {}, {0, angle}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(widget, &event);
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void commandsAreAtTheEndOfTheViewMenu()
    {
        WindowFixture f;
        f.installation.write(u"config/uiconfig.xml"_s,
                             R"(<ui><menus><menu name="viewMenu" displayname="&amp;View"/></menus></ui>)");
        f.restart();
        QStringList texts;
        for (const QAction *action : f.window->findChild<QMenu *>(u"viewMenu"_s)->actions())
            texts.append(action->isSeparator() ? u"-"_s : action->text() + u'|' + action->shortcut().toString());
        QCOMPARE(texts.mid(texts.size() - 4),
                 (QStringList{u"-"_s, u"Zoom &In|Ctrl++"_s, u"Zoom O&ut|Ctrl+-"_s, u"Zoom &100 %|Ctrl+0"_s}));
    }

    void keysChangeTheTextOfAllDocumentsAtOnce()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        const int before = lineHeight(f);
        for (int i = 0; i < 5; ++i)
            QTest::keyClick(f.window.get(), Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(zoom(f), 150);
        QVERIFY(lineHeight(f) > before * 13 / 10);
        QCOMPARE(f.status(), u"Zoom: 150 %"_s);
        f.open(u"b.c"_s);
        QVERIFY(lineHeight(f) > before * 13 / 10);
        QTest::keyClick(f.window.get(), Qt::Key_Equal, Qt::ControlModifier);
        QCOMPARE(zoom(f), 160);
        QTest::keyClick(f.window.get(), Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(zoom(f), 150);
        QTest::keyClick(f.window.get(), Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(zoom(f), 100);
        QCOMPARE(lineHeight(f), before);
    }

    void zoomStaysWithinItsLimits()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        auto *in = f.window->findChild<QAction *>(u"viewZoomIn"_s);
        auto *out = f.window->findChild<QAction *>(u"viewZoomOut"_s);
        for (int i = 0; i < 50; ++i)
            in->trigger();
        QCOMPARE(zoom(f), int(ZoomCommands::Largest));
        for (int i = 0; i < 50; ++i)
            out->trigger();
        QCOMPARE(zoom(f), int(ZoomCommands::Smallest));
    }

    void wheelWithControlZoomsOverADocumentOnly()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, QByteArray(500, '\n'));
        QWidget *viewport = f.view()->findChild<TextViewEdit *>()->viewport();
        turnWheel(viewport, 120, Qt::ControlModifier);
        QCOMPARE(zoom(f), 110);
        turnWheel(viewport, 60, Qt::ControlModifier); // half a notch, as touch pads send
        QCOMPARE(zoom(f), 110);
        turnWheel(viewport, 60, Qt::ControlModifier);
        QCOMPARE(zoom(f), 120);
        turnWheel(viewport, -240, Qt::ControlModifier);
        QCOMPARE(zoom(f), 100);
        for (int i = 0; i < 3; ++i)
            turnWheel(viewport, 80, Qt::ControlModifier); // what is left of one notch belongs to the next
        QCOMPARE(zoom(f), 120);
        turnWheel(viewport, -240, Qt::ControlModifier);
        QCOMPARE(zoom(f), 100);
        turnWheel(viewport, -120, Qt::NoModifier);
        turnWheel(viewport, 120, Qt::ControlModifier | Qt::ShiftModifier);
        turnWheel(f.window->menuBar(), 120, Qt::ControlModifier);
        QCOMPARE(zoom(f), 100);
    }

    void zoomOutlivesTheProgram()
    {
        WindowFixture f;
        f.open(u"a.c"_s);
        const int before = lineHeight(f);
        for (int i = 0; i < 5; ++i)
            f.window->findChild<QAction *>(u"viewZoomIn"_s)->trigger();
        f.discard();
        f.restart();
        f.open(u"a.c"_s);
        QVERIFY(lineHeight(f) > before);
    }

    void onlyDocumentsAreZoomed()
    {
        TextFormats formats;
        const QByteArray xml =
            "<textformats><section name='Text editor'><format name='a' fontSize='10'/><format name='b'/>"
            "</section><section name='Output window'><format name='c' fontSize='10'/></section>"
            "</textformats>";
        QTemporaryDir directory;
        QFile file(directory.filePath(u"f.xml"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(xml) == xml.size());
        file.close();
        QVERIFY(formats.loadFromFile(file.fileName()));
        const TextFormats zoomed = zoomedFormats(formats, 150);
        QCOMPARE(zoomed.fontSize(u"Text editor"_s, u"a"_s), 15);
        QCOMPARE(zoomed.fontSize(u"Text editor"_s, u"b"_s), 0); // the default size
        QCOMPARE(zoomed.fontSize(u"Output window"_s, u"c"_s), 10);
        QCOMPARE(zoomedFormats(formats, 1).fontSize(u"Text editor"_s, u"a"_s), 1);
    }

    /// The pictures of their characters are made before they are typed.
    void fontsOfTheFirstAndOfEachNewSizeArePrepared()
    {
        const WindowFixture f;
        auto *glyphs = f.window->findChild<GlyphWarmUp *>();
        QVERIFY(glyphs);
        QTRY_VERIFY(glyphs->fonts().isEmpty());
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        QTest::keyClick(f.window.get(), Qt::Key_Plus, Qt::ControlModifier);
        const QList<QFont> fonts = glyphs->fonts();
        QVERIFY(!fonts.isEmpty());
        QCOMPARE(fonts.first().pointSize(), 10); // 110 % of 9
        QTRY_VERIFY(glyphs->fonts().isEmpty());
        QCOMPARE(f.window->findChildren<GlyphWarmUp *>().size(), 1);
    }
};

QTEST_APPLESS_MAIN(ZoomCommandsTest)
#include "tst_zoomcommands.moc"
