#include "symboltable.h"
#include "gdbsession.h"
#include "sourcepaths.h"
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr int SymbolLimit = 30000;
constexpr const char *ListFiles = "-file-list-exec-source-files --group-by-objfile";

/// The host's kinds of line numbers. Only code of the program itself has lines here, so both kinds are the same.
bool isKnownKind(int kind)
{
    return kind == 0 || kind == 1;
}
} // namespace

/// The questions for the lines of all files, whose answers arrive one after the other.
struct SymbolTable::LineRequest
{
    qsizetype open = -1; ///< questions without an answer; -1 before the files are known
    LineTable table;
};

SymbolTable::SymbolTable(GdbSession *session, QUnknownInterface *whole) : Facet(whole), m_session(session) {}

void SymbolTable::setSources(const std::function<QStringList()> &projectFiles, const QStringList &directories)
{
    m_projectFiles = projectFiles;
    m_directories = directories;
}

void SymbolTable::reset()
{
    m_localFiles.clear();
    m_gdbFiles.clear();
    m_lines = {};
    m_linesKnown = false;
    m_lineRequest.reset();
    m_shown = {};
}

void SymbolTable::setBasePath(const QString &path)
{
    m_basePath = QDir::cleanPath(path);
    m_realBasePath = QFileInfo(path).canonicalFilePath();
}

QString SymbolTable::localFile(const QString &gdbFile)
{
    if (gdbFile.isEmpty())
        return {};
    if (const auto known = m_localFiles.constFind(gdbFile); known != m_localFiles.constEnd())
        return *known;
    QString found = findLocalFile(gdbFile);
    m_localFiles.insert(gdbFile, found);
    if (found.isEmpty())
        Q_EMIT message(
            tr("The source file '%1' does not exist; the disassembly is shown instead. To find it elsewhere, "
               "set the project property \"Source directories\".\n")
                .arg(gdbFile),
            false);
    return found;
}

QString SymbolTable::findLocalFile(const QString &gdbFile) const
{
    if (QFileInfo(gdbFile).isFile())
        return withOtherRoot(QDir::cleanPath(gdbFile), m_realBasePath, m_basePath);
    for (const QString &directory : m_directories) {
        QString rest = QDir::fromNativeSeparators(gdbFile);
        for (qsizetype slash = 0; slash >= 0; slash = rest.indexOf(u'/')) {
            rest.remove(0, slash + 1); // finds the longest end of the path that exists in the directory
            if (const QString path = QDir(directory).filePath(rest); QFileInfo(path).isFile())
                return QDir::cleanPath(path);
        }
    }
    const QString match = m_projectFiles ? bestPathMatch(gdbFile, m_projectFiles()) : QString();
    return QFileInfo(match).isFile() ? match : QString();
}

/// The source files of the program itself, without those of system libraries, which can be thousands.
const QStringList &SymbolTable::gdbFiles()
{
    if (!m_gdbFiles.isEmpty())
        return m_gdbFiles;
    takeFiles(m_session->gdb()->ask(ListFiles, SymbolLimit));
    return m_gdbFiles;
}

void SymbolTable::takeFiles(const MiRecord &answer)
{
    m_gdbFiles.clear();
    const QStringList programs = m_session->programFiles();
    for (const MiValue &object : answer.results[u"files"].items()) {
        if (!programs.contains(object.text(u"filename")))
            continue;
        for (const MiValue &source : object[u"sources"].items())
            m_gdbFiles.append(source.text(u"fullname"));
    }
    m_gdbFiles.removeDuplicates();
}

/// A file with the same name is used only if the file that gdb names does not exist: otherwise it is another file.
QString SymbolTable::gdbFile(const QString &localFile)
{
    if (gdbFiles().contains(localFile))
        return localFile;
    if (const QString real = withOtherRoot(localFile, m_basePath, m_realBasePath); gdbFiles().contains(real))
        return real;
    for (auto known = m_localFiles.cbegin(); known != m_localFiles.cend(); ++known) {
        if (known.value() == localFile)
            return known.key();
    }
    QStringList moved;
    for (const QString &file : gdbFiles()) {
        if (!QFileInfo::exists(file))
            moved.append(file);
    }
    const QString match = bestPathMatch(localFile, moved);
    return match.isEmpty() ? localFile : match;
}

const LineTable &SymbolTable::lines()
{
    if (!fetchLines(SymbolLimit) && m_lineRequest)
        takeLines(); // those that have arrived
    return m_lines;
}

bool SymbolTable::fetchLines(int milliseconds)
{
    if (m_linesKnown || !m_session->isAlive())
        return true;
    if (!m_lineRequest)
        requestLines();
    const auto request = m_lineRequest;
    m_session->gdb()->waitUntil([&] { return request->open == 0 || request != m_lineRequest; }, milliseconds);
    if (request->open == 0 && request == m_lineRequest)
        takeLines();
    return m_linesKnown;
}

void SymbolTable::requestLines()
{
    const auto request = std::make_shared<LineRequest>();
    m_lineRequest = request;
    if (!m_gdbFiles.isEmpty()) {
        requestLinesOf(request);
        return;
    }
    m_session->gdb()->send(ListFiles, [this, request](const MiRecord &answer) {
        if (request != m_lineRequest)
            return;
        takeFiles(answer);
        requestLinesOf(request);
    });
}

void SymbolTable::requestLinesOf(const std::shared_ptr<LineRequest> &request)
{
    request->open = m_gdbFiles.size();
    for (const QString &file : std::as_const(m_gdbFiles)) {
        m_session->gdb()->send("-symbol-list-lines " + miQuoted(file), [file, request](const MiRecord &answer) {
            --request->open;
            if (answer.isDone())
                request->table.add(file, answer.results[u"lines"]);
        });
    }
}

void SymbolTable::takeLines()
{
    const std::shared_ptr<LineRequest> request = std::exchange(m_lineRequest, nullptr);
    const ElfImage &elf = m_session->program().elf;
    request->table.finish(elf.relocatable ? QList<quint64>() : elf.functions, elf.dataAtZero);
    m_lines = request->table;
    m_linesKnown = true;
}

quint64 SymbolTable::widen(uint address)
{
    if (!m_session->program().elf.wide)
        return address;
    if (const quint64 shown = (m_shown.start & ~quint64(0xffffffff)) | address; m_shown.contains(shown))
        return shown;
    const QList<quint64> starts = lines().starts();
    const quint64 code = starts.isEmpty() ? m_session->frame().address : starts.first();
    return (code & ~quint64(0xffffffff)) | address;
}

std::optional<quint64> SymbolTable::addressOfSymbol(const QString &name)
{
    if (!m_session->isAlive() || name.isEmpty())
        return std::nullopt;
    const int machine = m_session->program().elf.machine;
    const QString cast = machine == ElfImage::Avr ? QString() : u"(unsigned long)"_s; // would count words of code there
    const auto ask = [&](const QString &symbol) {
        return m_session->gdb()->ask("-data-evaluate-expression " + miQuoted(cast + u"&("_s + symbol + u')'));
    };
    MiRecord answer = ask(name);
    if (answer.isError() && name.contains("::"_L1) && !name.contains(u'\'')) // a member function has no plain address
        answer = ask(u'\'' + name + u'\'');
    if (!answer.isDone())
        return std::nullopt;
    const quint64 found = pointerValue(answer.results.text(u"value"));
    return machine == ElfImage::Arm ? found & ~quint64(1) : found;
}

std::optional<quint64> SymbolTable::addressOfLine(const QString &file, int line)
{
    quint64 found = 0;
    const bool known = m_session->isAlive() && lines().addressOf(gdbFile(file), line, &found);
    return known ? std::optional(found) : std::nullopt;
}

bool SymbolTable::placeOf(quint64 address, int kind, QString &file, int &line)
{
    const LineTable::Row *row = isKnownKind(kind) ? lines().at(address) : nullptr;
    if (!row)
        return false;
    const QString &known = m_lines.files().at(row->file);
    const QString local = localFile(known);
    file = local.isEmpty() ? known : local;
    line = row->line;
    return true;
}

QString SymbolTable::symbolNear(quint64 address)
{
    QString text;
    if (!m_session->isAlive()
        || m_session->gdb()->askConsole(u"info symbol 0x"_s + QString::number(address, 16), &text).isError())
        return {};
    const qsizetype end = text.indexOf(" in section "_L1);
    return end < 0 ? QString() : text.left(end);
}

// With the host's addresses -------------------------------------------------------------------------------------------

bool SymbolTable::symbolAddress(const QString &name, uint &address)
{
    const std::optional<quint64> found = addressOfSymbol(name);
    address = uint(found.value_or(address));
    return found.has_value();
}

bool SymbolTable::sourceLocation(uint address, int kind, QString &file, int &line)
{
    return placeOf(widen(address), kind, file, line);
}

bool SymbolTable::addressOf(const QString &file, int line, uint &address)
{
    const std::optional<quint64> found = addressOfLine(file, line);
    address = uint(found.value_or(address));
    return found.has_value();
}

bool SymbolTable::symbolAt(uint address, int, QString &name)
{
    const QString found = m_session->isAlive() ? symbolNear(widen(address)) : QString();
    if (!found.isEmpty())
        name = found;
    return !found.isEmpty();
}
