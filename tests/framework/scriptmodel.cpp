#include "scriptmodel.h"

using namespace Qt::StringLiterals;

namespace {
const QString Destroyed = u"RuntimeError: Object has been destroyed"_s;
const QString None = u"None"_s;
const QStringList Names{u"fw"_s, u"dsp"_s};
} // namespace

ScriptModel::ScriptModel(QRandomGenerator &random, const QString &directory)
    : m_random(random), m_directory(quoted(directory))
{
    for (uint address = 0x100; address <= 0x1FF; ++address)
        m_words[address] = address & 0xFF;
    for (Project &project : m_projects)
        project.files = {u"main.c"_s};
}

QByteArray ScriptModel::preparation() const
{
    return "base = " + m_directory + R"py(
base = base.rstrip('/')
events, stale = [], []
def note(name): return lambda: events.append('%s %d' % (name, app.state))
def taken():
    found = events[:]
    events.clear()
    return found
def use():
    global debugger, p, m
    debugger = app.debugger
    p = debugger.processors['fw']
    m = p.memory
def close():
    for file, line, state in p.breakpoints:
        p.removeBreakpoint(file, line + 1 if file == 'disassembler:' else line)
    app.saveWorkspace()
    stale[:] = [app.projects['fw'], p, m, app.projects[1].properties]
    app.closeWorkspace()
def open():
    app.openWorkspace(base + '/all.vnw')
    app.currentProject = app.projects[0]
    use()
use()
)py";
}

QByteArray ScriptModel::next(QString *expected)
{
    if (!m_open)
        return chance(6) ? openWorkspace(expected) : closedCall(expected);
    if (chance(1500))
        return closeWorkspace(expected);
    if (chance(200))
        return changeSession(expected);
    static constexpr Call Calls[] = {
        &ScriptModel::readWord,
        &ScriptModel::writeWord,
        &ScriptModel::readSlice,
        &ScriptModel::writeSlice,
        &ScriptModel::changeMode,
        &ScriptModel::changeRegion,
        &ScriptModel::readRegister,
        &ScriptModel::writeRegister,
        &ScriptModel::usePeripheral,
        &ScriptModel::changeBreakpoint,
        &ScriptModel::listBreakpoints,
        &ScriptModel::evaluate,
        &ScriptModel::verify,
        &ScriptModel::staleObject,
        &ScriptModel::readState,
        &ScriptModel::setHandler,
        &ScriptModel::takeEvents,
        &ScriptModel::lookUpProject,
        &ScriptModel::setCurrentProject,
        &ScriptModel::setProperty,
        &ScriptModel::readProject,
        &ScriptModel::addFile,
        &ScriptModel::changeUpdates,
    };
    return (this->*Calls[m_random.bounded(int(std::size(Calls)))])(expected);
}

// The workspace

QByteArray ScriptModel::closedCall(QString *expected)
{
    const std::pair<const char *, QString> calls[] = {
        {"app.projects, app.debugger, app.currentProject, app.state", u"(None, None, None, 0)"_s},
        {"app.saveWorkspace()", u"RuntimeError: No workspace is open"_s},
        {"setattr(app, 'currentProject', 5)", u"TypeError: Project expected"_s},
        {"app.closeWorkspace()", None},
        {"debugger.currentProcessor, len(debugger.processors)", u"(None, 0)"_s},
        {"m[0x100]", Destroyed},
        {"p.breakpoints", Destroyed},
    };
    const auto &[call, result] = calls[m_random.bounded(int(std::size(calls)))];
    *expected = result;
    return call;
}

QByteArray ScriptModel::openWorkspace(QString *expected)
{
    m_open = true;
    m_current = 0;
    m_region = 0;
    m_mode = 1;
    fire(u"onWorkspaceLoaded"_s, 0);
    *expected = None;
    return "open()";
}

/// A session is ended by it; unsaved changes are saved before.
QByteArray ScriptModel::closeWorkspace(QString *expected)
{
    if (m_state == 2)
        return changeSession(expected);
    m_open = false;
    m_hasStale = true;
    m_breakpoints.clear();
    saveAll();
    *expected = None;
    return "close()";
}

QByteArray ScriptModel::staleObject(QString *expected)
{
    const QByteArray uses[] = {"stale[0].name", "stale[1].run()", "stale[2][0x100]", "stale[3].propertyKeys('Debug')"};
    *expected = m_hasStale ? Destroyed : u"IndexError: list index out of range"_s;
    return uses[m_random.bounded(4)];
}

// The session and its events

void ScriptModel::fire(const QString &event, int state)
{
    if (m_handlers.value(event))
        m_events.append(u'\'' + event + u' ' + QString::number(state) + u'\'');
}

/// A session, too, begins with it.
void ScriptModel::saveAll()
{
    for (Project &project : m_projects)
        project.modified = false;
}

QByteArray ScriptModel::changeSession(QString *expected)
{
    *expected = None;
    if (m_state == 2 && chance(2)) {
        m_state = 0;
        fire(u"onStopped"_s, 0);
        return "debugger.stop()";
    }
    if (m_state == 0 && chance(2)) {
        saveAll();
        m_state = 2;
        fire(u"onPreAttach"_s, 0);
        fire(u"onAttach"_s, 2);
        return "debugger.attach()";
    }
    if (m_state == 0)
        saveAll();
    m_state = 2;
    fire(u"onRestart"_s, 2);
    return "debugger.restart()";
}

QByteArray ScriptModel::readState(QString *expected)
{
    *expected = QString::number(m_state);
    return "app.state";
}

QByteArray ScriptModel::setHandler(QString *expected)
{
    const QByteArray names[] = {"onPreAttach", "onAttach", "onStopped", "onRestart", "onWorkspaceLoaded"};
    const int index = m_random.bounded(5);
    const QByteArray &name = names[index];
    const QByteArray object = index == 4 ? "app" : "debugger";
    const bool refused = chance(5);
    const bool set = !refused && chance(2);
    if (!refused)
        m_handlers[QString::fromLatin1(name)] = set;
    *expected = refused ? u"TypeError: Function expected"_s : None;
    const QByteArray value = refused ? "'no function'" : set ? "note('" + name + "')" : "None";
    return "setattr(" + object + ", '" + name + "', " + value + ')';
}

QByteArray ScriptModel::takeEvents(QString *expected)
{
    *expected = listOf(std::exchange(m_events, {}));
    return "taken()";
}

QByteArray ScriptModel::changeUpdates(QString *expected)
{
    if (chance(2)) {
        *expected = QString::number(m_updates);
        return "debugger.uiUpdatesEnabled";
    }
    m_updates = chance(2);
    *expected = None;
    return "setattr(debugger, 'uiUpdatesEnabled', " + text(m_updates) + ')';
}

// Projects

QByteArray ScriptModel::lookUpProject(QString *expected)
{
    const std::pair<QByteArray, QString> keys[] = {{"'fw'", u"'fw'"_s},
                                                   {"'FW'", u"'fw'"_s},
                                                   {"'s'", u"'dsp'"_s},
                                                   {"1", u"'dsp'"_s},
                                                   {"''", u"KeyError: Key '' is ambiguous"_s},
                                                   {"'x'", u"KeyError: Key not found"_s},
                                                   {"2", u"IndexError: Index out of range"_s},
                                                   {"-1", u"IndexError: Index out of range"_s}};
    const auto &[key, result] = keys[m_random.bounded(int(std::size(keys)))];
    *expected = result;
    return chance(2) ? "app.projects[" + key + "].name" : "debugger.processors[" + key + "].project.name";
}

QByteArray ScriptModel::setCurrentProject(QString *expected)
{
    if (chance(2)) {
        *expected = u"('%1', '%1')"_s.arg(Names[m_current]);
        return "app.currentProject.name, debugger.currentProcessor.project.name";
    }
    m_current = m_random.bounded(2);
    *expected = None;
    return "setattr(app, 'currentProject', app.projects[" + text(m_current) + "])";
}

QByteArray ScriptModel::setProperty(QString *expected)
{
    const int index = m_random.bounded(2);
    const QString key = u"key%1"_s.arg(m_random.bounded(5));
    const QString value = u"v%1"_s.arg(m_random.bounded(1000));
    Project &project = m_projects[uint(index)];
    project.modified |= project.properties.value(key) != value;
    project.properties[key] = value;
    *expected = None;
    return "app.projects[" + text(index) + "].properties.setProperty(" + quoted(key) + ", " + quoted(value)
           + ", 'Debug')";
}

QByteArray ScriptModel::readProject(QString *expected)
{
    const int index = m_random.bounded(2);
    Project &project = m_projects[uint(index)];
    const QByteArray object = "app.projects[" + text(index) + "]";
    const QString key = u"key%1"_s.arg(m_random.bounded(6));
    switch (m_random.bounded(5)) {
    case 0:
        *expected = QString::number(project.modified);
        return object + ".isModified";
    case 1:
        *expected = u'\'' + project.properties.value(key) + u'\'';
        return object + ".properties.property(" + quoted(key) + ", 'Debug')";
    case 2: {
        QStringList keys;
        for (const QString &name : project.properties.keys())
            keys.append(u'\'' + name + u'\'');
        *expected = listOf(keys);
        return object + ".properties.propertyKeys('Debug')";
    }
    case 3: {
        QStringList files;
        for (const QString &file : project.files)
            files.append(u'\'' + file + u'\'');
        *expected = listOf(files);
        return "[file.path for file in " + object + ".files]";
    }
    default:
        if (!chance(20))
            return readState(expected);
        project.modified = false;
        *expected = None;
        return object + ".save()";
    }
}

QByteArray ScriptModel::addFile(QString *expected)
{
    const int index = m_random.bounded(2);
    Project &project = m_projects[uint(index)];
    if (project.files.size() > 15)
        return readState(expected);
    const QString file = u"src/f%1.c"_s.arg(m_random.bounded(8));
    project.files.append(file);
    project.modified = true;
    *expected = None;
    return "app.projects[" + text(index) + "].addFile(base + " + quoted(u'/' + file) + ')';
}

QString ScriptModel::listOf(const QStringList &texts)
{
    return u'[' + texts.join(u", "_s) + u']';
}
