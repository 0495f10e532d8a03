#include "pluginfactory.h"
#include <stdexcept>

using namespace Qt::StringLiterals;

// Built as several libraries, each of which throws or fails in another function.

/// Declared but not defined.
void missingFunction();

#ifdef BROKENPLUGIN_NEEDS_OTHER_EDITOR
extern "C" const int varnelEditor_2_8; // defined by the editor's library of that version
const int *editorVersion()
{
    return &varnelEditor_2_8;
}
#endif

namespace {
void fail(const char *moment)
{
    using namespace std::string_literals;
    if (moment == std::string(BROKENPLUGIN_THROWS_IN))
        throw std::runtime_error("broken in "s + moment);
}
} // namespace

class BrokenPlugin : public QObject, public IPluginFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID VarnelPluginFactoryIid)
#ifndef BROKENPLUGIN_LACKS_INTERFACES
    Q_INTERFACES(IPluginFactory)
#endif

public:
    BrokenPlugin()
    {
        fail("constructor");
    }

    QRESULT queryInterface(const QUuid &, QUnknownInterface **out) override
    {
        *out = nullptr;
        return QE_NOINTERFACE;
    }
    unsigned long addRef() override
    {
        return 1;
    }
    unsigned long release() override
    {
        return 1;
    }

    QStringList featureList() override
    {
        fail("featureList");
        return {u"{broken}"_s};
    }
    IPluginObject *create(const QString &) override
    {
        fail("create");
#ifdef BROKENPLUGIN_LACKS_SYMBOL
        missingFunction();
#endif
        return nullptr;
    }
    QString name() override
    {
        fail("name");
        return u"Broken"_s;
    }
    QPixmap logo() override
    {
        return {};
    }
};

#include "brokenplugin.moc"
