#include "pluginfactory.h"

using namespace Qt::StringLiterals;

// Built as several libraries; the build file defines name, features and type of each.

#ifdef TESTPLUGIN_STRANGER
#define TESTPLUGIN_IID "com.example.Stranger"
#else
#define TESTPLUGIN_IID VarnelPluginFactoryIid
#endif

namespace {
/// An object whose type is the number of its library.
class TestObject : public IPluginObject
{
public:
    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override
    {
        *out = id == QUnknownInterface::Iid ? this : nullptr;
        return *out ? addRef(), QS_OK : QE_NOINTERFACE;
    }
    unsigned long addRef() override { return ++m_references; }
    unsigned long release() override
    {
        const unsigned long left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }
    int type() override { return TESTPLUGIN_TYPE; }

private:
    virtual ~TestObject() = default;

    unsigned long m_references = 1;
};
} // namespace

#ifdef TESTPLUGIN_NO_FACTORY
class TestPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TESTPLUGIN_IID)
};
#else
class TestPlugin : public QObject, public IPluginFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TESTPLUGIN_IID)
    Q_INTERFACES(IPluginFactory)

public:
    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override
    {
        *out = id == IPluginFactory::Iid || id == QUnknownInterface::Iid ? this : nullptr;
        return *out ? QS_OK : QE_NOINTERFACE;
    }
    unsigned long addRef() override { return 1; }
    unsigned long release() override { return 1; }

    QStringList featureList() override { return QString::fromLatin1(TESTPLUGIN_FEATURES).split(u' '); }
    IPluginObject *create(const QString &feature) override
    {
        return featureList().contains(feature) ? new TestObject : nullptr;
    }
    QString name() override { return QString::fromLatin1(TESTPLUGIN_NAME); }
    QPixmap logo() override
    {
        QPixmap picture(TESTPLUGIN_LOGO_WIDTH, 30);
        picture.fill(QColor(TESTPLUGIN_LOGO_COLOUR));
        return picture;
    }
};
#endif

#include "testplugin.moc"
