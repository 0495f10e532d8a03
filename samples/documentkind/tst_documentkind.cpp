#include <document.h>
#include <documenttemplate.h>
#include <icustomdocumentplugin.h>
#include <interfaceobject.h>
#include <memory>
#include <pluginfactory.h>
#include <QPlainTextEdit>
#include <QPluginLoader>
#include <QTemporaryDir>
#include <QTest>
#include <view.h>

using namespace Qt::StringLiterals;

/// The document type as Varnel uses it.
class DocumentKindTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_directory;
    std::unique_ptr<DocumentTemplate> m_template;

    [[nodiscard]] QString write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(m_directory.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
    }

private Q_SLOTS:
    void init()
    {
        QPluginLoader loader(QStringLiteral(PLUGIN_LIBRARY));
        auto *factory = qobject_cast<IPluginFactory *>(loader.instance());
        QVERIFY2(factory, qPrintable(loader.errorString()));
        const InterfacePtr<IPluginObject> object(factory->create(factory->featureList().constFirst()));
        QCOMPARE(object->type(), IPluginObject::CustomDocument);
        const auto kind = queryInterface<ICustomDocumentPlugin>(object.get());
        QVERIFY(kind);
        m_template.reset(kind->documentTemplate());
    }
    void cleanup() { m_template.reset(); }

    void filesAreKnownByTheirExtension()
    {
        QVERIFY(m_template->canOpen(u"/tmp/FLASH.BIN"_s));
        QVERIFY(!m_template->canOpen(u"/tmp/bin"_s));
        QCOMPARE(m_template->extension(), u"bin"_s);
    }

    void viewShowsTheBytes()
    {
        const std::unique_ptr<Document> document(m_template->createDocument());
        QVERIFY(document->open(write(u"a.bin"_s, "0123456789abcdef\xff")));
        QCOMPARE(document->title(), u"a.bin"_s);
        const std::unique_ptr<View> view(m_template->createView(document.get()));
        QCOMPARE(view->findChild<QPlainTextEdit *>()->toPlainText(),
                 u"00000000  30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66\n00000010  ff"_s);
    }

    void bytesAreSavedUnderAnotherName()
    {
        const std::unique_ptr<Document> document(m_template->createDocument());
        QVERIFY(document->open(write(u"a.bin"_s, "ab")));
        QVERIFY(document->saveAs(m_directory.filePath(u"b.bin"_s)));
        QCOMPARE(document->filename(), m_directory.filePath(u"b.bin"_s));
        QFile file(document->filename());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), "ab");
    }

    void fileThatWasChangedIsNewer()
    {
        const std::unique_ptr<Document> document(m_template->createDocument());
        const QString path = write(u"a.bin"_s, "ab");
        QVERIFY(document->open(path));
        QVERIFY(!document->isNewerOnDisk());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(10), QFileDevice::FileModificationTime));
        QVERIFY(document->isNewerOnDisk());
    }
};

QTEST_MAIN(DocumentKindTest)
#include "tst_documentkind.moc"
