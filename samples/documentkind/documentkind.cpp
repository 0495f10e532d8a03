#include <document.h>
#include <documenttemplate.h>
#include <icustomdocumentplugin.h>
#include <interfaceobject.h>
#include <pluginfactory.h>
#include <QFileInfo>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QSaveFile>
#include <QVBoxLayout>
#include <view.h>

using namespace Qt::StringLiterals;

/// The bytes of a file, read-only.
class BinaryDocument : public Document
{
    Q_OBJECT
public:
    using Document::Document;

    bool open(const QString &filename) override
    {
        QFile file(filename);
        if (!file.open(QIODevice::ReadOnly)) {
            showDocumentWarning(tr("The following file could not be opened:\n%1").arg(filename));
            return false;
        }
        m_filename = filename;
        m_bytes = file.readAll();
        m_lastModified = QFileInfo(file).lastModified();
        return true;
    }
    bool create(const QString &) override { return false; }
    bool save() override { return true; }
    bool saveAs(const QString &filename) override
    {
        QSaveFile file(filename);
        if (!file.open(QIODevice::WriteOnly) || file.write(m_bytes) != m_bytes.size() || !file.commit())
            return false;
        m_filename = filename;
        m_lastModified = QFileInfo(filename).lastModified();
        Q_EMIT documentModified(false); // the views update their titles
        return true;
    }
    QDateTime lastModified() override { return m_lastModified; }
    QString filename() override { return m_filename; }
    QString title() override { return QFileInfo(m_filename).fileName(); }
    bool isNewerOnDisk() override { return QFileInfo(m_filename).lastModified() > m_lastModified; }

    /// The bytes as hexadecimal digits, sixteen per line; each line starts with the offset of its first byte.
    [[nodiscard]] QString dump() const
    {
        QStringList lines;
        for (qsizetype at = 0; at < m_bytes.size(); at += 16)
            lines += u"%1  %2"_s.arg(at, 8, 16, '0'_L1).arg(QLatin1StringView(m_bytes.mid(at, 16).toHex(' ')));
        return lines.join(u'\n');
    }

private:
    QString m_filename;
    QByteArray m_bytes;
    QDateTime m_lastModified;
};

/// Shows the bytes of a file.
class BinaryView : public View
{
    Q_OBJECT
public:
    explicit BinaryView(BinaryDocument *document) : View(document), m_binary(document), m_text(new QPlainTextEdit)
    {
        m_text->setReadOnly(true);
        m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        m_text->setPlainText(document->dump());
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(m_text);
        setFocusProxy(m_text);
        m_text->installEventFilter(this);
        connect(m_text, &QPlainTextEdit::copyAvailable, this, &View::copyAvailable);
    }

    void print() override {}
    bool queryInterface(const QString &, void **out) override
    {
        *out = nullptr;
        return false;
    }
    void copy() override { m_text->copy(); }
    void selectAll() override { m_text->selectAll(); }
    using View::update;
    void update(View *, bool) override { m_text->setPlainText(m_binary->dump()); }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::FocusIn)
            Q_EMIT viewActivated(this);
        return View::eventFilter(object, event);
    }

private:
    BinaryDocument *const m_binary;
    QPlainTextEdit *const m_text;
};

/// Opens files with the extension "bin".
class BinaryTemplate : public DocumentTemplate
{
    Q_OBJECT
public:
    BinaryTemplate() : DocumentTemplate(tr("Binary File"), tr("View the bytes of a file"), picture()) {}

    bool canOpen(const QString &filename) override { return QFileInfo(filename).suffix().toLower() == extension(); }
    Document *createDocument() override { return new BinaryDocument(this); }
    View *createView(Document *document) override
    {
        auto *view = new BinaryView(static_cast<BinaryDocument *>(document));
        view->setWindowIcon(icon());
        return view;
    }
    QString extension() override { return u"bin"_s; }

private:
    static QPixmap picture()
    {
        QPixmap picture(16, 16);
        picture.fill(Qt::darkYellow);
        return picture;
    }
};

/// The plug-in object: the template of the document type.
class Binary : public InterfaceObject<IPluginObject, ICustomDocumentPlugin>
{
public:
    int type() override { return CustomDocument; }
    DocumentTemplate *documentTemplate() override { return new BinaryTemplate; }
};

/// The root object of the plug-in library.
class DocumentKindFactory : public QObject, public InterfaceObject<IPluginFactory>
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID VarnelPluginFactoryIid)
    Q_INTERFACES(IPluginFactory)
public:
    QStringList featureList() override { return {u"{c1b84d52-7a0e-4a5b-8d40-3a7f6f0b6c22}"_s}; }
    IPluginObject *create(const QString &feature) override
    {
        return featureList().contains(feature) ? new Binary : nullptr;
    }
    QString name() override { return u"Binary Files"_s; }
    QPixmap logo() override
    {
        QPixmap picture(32, 32);
        picture.fill(Qt::darkYellow);
        return picture;
    }
};

#include "documentkind.moc"
