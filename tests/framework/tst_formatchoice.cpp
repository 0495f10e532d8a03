#include "formatchoice.h"
#include <QGuiApplication>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QByteArray formats(const char *colour)
{
    return QByteArray("<textformats><section name='Text editor'><format name='Standard text' fontFamily='Monospace' "
                      "fontSize='9' fgColour='")
           + colour + "' bgColour='808080'/></section></textformats>";
}

QString colourOf(const TextFormats &formats)
{
    return formats.fgColour(u"Text editor"_s, u"Standard text"_s).name();
}
} // namespace

class FormatChoiceTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;

    [[nodiscard]] QDir config() const { return QDir(m_directory->path()); }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(m_directory->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    static void setDark(bool dark)
    {
        QPalette palette;
        palette.setColor(QPalette::Window, dark ? Qt::black : Qt::white);
        palette.setColor(QPalette::WindowText, dark ? Qt::white : Qt::black);
        QGuiApplication::setPalette(palette);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_directory->filePath(u"settings.ini"_s), QSettings::IniFormat);
        write(u"textformats.xml"_s, formats("111111"));
        write(u"textformats-dark.xml"_s, formats("eeeeee"));
    }

    void formatsOfTheProductFollowThePalette()
    {
        setDark(false);
        QCOMPARE(colourOf(productFormats(config())), u"#111111"_s);
        setDark(true);
        QCOMPARE(colourOf(productFormats(config())), u"#eeeeee"_s);
        QFile::remove(m_directory->filePath(u"textformats-dark.xml"_s));
        QCOMPARE(colourOf(productFormats(config())), u"#111111"_s);
    }

    void withoutAChoiceTheFormatsAreTheProducts()
    {
        setDark(false);
        QCOMPARE(colourOf(chosenFormats(*m_settings, config())), u"#111111"_s);
    }

    void theUsersChoiceStaysOnEveryPalette()
    {
        write(u"mine.xml"_s, formats("cc0000"));
        TextFormats mine;
        QVERIFY(mine.loadFromFile(m_directory->filePath(u"mine.xml"_s)));
        mine.saveToSettings(*m_settings);
        for (const bool dark : {false, true}) {
            setDark(dark);
            QCOMPARE(colourOf(chosenFormats(*m_settings, config())), u"#cc0000"_s);
        }
        QVERIFY(!areProductFormats(mine, config()));
    }

    void storedFormatsOfTheProductDoNotCountAsAChoice()
    {
        setDark(true);
        productFormats(config()).saveToSettings(*m_settings);
        setDark(false);
        QCOMPARE(colourOf(chosenFormats(*m_settings, config())), u"#111111"_s);
        QVERIFY(areProductFormats(productFormats(config()), config()));
    }
};

QTEST_MAIN(FormatChoiceTest)
#include "tst_formatchoice.moc"
