#include "stubobject.h"
#include <QPixmap>

using namespace Qt::StringLiterals;

class StubPlugin : public QObject, public IPluginFactory, public StubControl
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID VarnelPluginFactoryIid)
    Q_INTERFACES(IPluginFactory StubControl)

public:
    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override
    {
        *out =
            id == IPluginFactory::Iid || id == QUnknownInterface::Iid ? static_cast<IPluginFactory *>(this) : nullptr;
        return *out ? QS_OK : QE_NOINTERFACE;
    }
    unsigned long addRef() override { return 1; }
    unsigned long release() override { return 1; }

    QStringList featureList() override
    {
        m_log.hooks.act(u"IPluginFactory::featureList"_s);
        return m_log.hooks.take() == StubHooks::All ? m_scripts.keys() : QStringList();
    }
    IPluginObject *create(const QString &feature) override
    {
        const auto script = m_scripts.value(feature);
        if (!script)
            return nullptr;
        if (const std::function<void()> action = script->on.value(u"create"_s))
            action();
        m_log.hooks.act(u"IPluginFactory::create"_s);
        if (m_log.hooks.take() != StubHooks::All)
            return nullptr;
        return new StubObject(script, m_log);
    }
    QString name() override
    {
        m_log.hooks.act(u"IPluginFactory::name"_s);
        return m_log.hooks.take() == StubHooks::All ? u"Stub"_s : QString();
    }
    QPixmap logo() override
    {
        m_log.hooks.act(u"IPluginFactory::logo"_s);
        return {};
    }

    void reset() override
    {
        m_scripts.clear();
        m_log.calls.clear();
        m_log.hooks = {};
    }
    StubScript &script(const QString &feature) override
    {
        std::shared_ptr<StubScript> &script = m_scripts[feature];
        if (!script) {
            script = std::make_shared<StubScript>();
            script->label = feature;
        }
        return *script;
    }
    QStringList takeCalls() override { return std::exchange(m_log.calls, {}); }
    StubObjectState *object(const QString &label) override
    {
        StubObjectState *found = nullptr;
        for (StubObject *object : std::as_const(m_log.objects))
            found = object->label == label ? object : found;
        return found;
    }
    StubHooks &hooks() override { return m_log.hooks; }
    int objectCount() override { return int(m_log.objects.size()); }

private:
    QMap<QString, std::shared_ptr<StubScript>> m_scripts;
    StubObject::Log m_log;
};

#include "stubplugin.moc"
