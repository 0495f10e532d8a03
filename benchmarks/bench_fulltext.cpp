// The full-text index of a help of 2,863 pages and 100 MB, beside SQLite's FTS5 over the same pages: building, the
// file's size, loading, queries.
#include "fulltextindex.h"
#include "wholefile.h"
#include <benchmark/benchmark.h>
#include <cmath>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {
constexpr int PageCount = 2863;
constexpr int PageLength = 35'000; // bytes: 100 MB together
constexpr int WordCount = 30'000;  // different words
constexpr int RareWord = 20'000;
constexpr int FrequentWord = 30;

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

QByteArray word(int number)
{
    QByteArray letters;
    for (int rest = number + 26; rest > 0; rest /= 26)
        letters.prepend(char('a' + rest % 26));
    return letters + "word";
}

/// The most frequent words are about as frequent as in natural texts.
QByteArray randomWord(QRandomGenerator &random)
{
    return word(int(std::pow(double(WordCount), random.generateDouble())) - 1);
}

QByteArray page(int number, QRandomGenerator &random)
{
    QByteArray html = "<html><head><title>Page " + QByteArray::number(number) + "</title></head><body>";
    while (html.size() < PageLength) {
        html += "\n<p class=\"text\">";
        for (int i = 0; i < 60; ++i)
            html += randomWord(random) + ' ';
        html += "<a href=\"page.html\">more</a></p>";
    }
    return html + "</body></html>\n";
}

/// The directory of the pages. They are the same at each run.
const QString &pages()
{
    static const QTemporaryDir directory;
    static const QString path = [] {
        QRandomGenerator random(1);
        for (int i = 0; i < PageCount; ++i) {
            QFile file(directory.filePath(u"page%1.html"_s.arg(i)));
            require(file.open(QIODevice::WriteOnly), "cannot write the pages");
            file.write(page(i, random));
        }
        return directory.path();
    }();
    return path;
}

QString scratch(const QString &name)
{
    static const QTemporaryDir directory;
    return directory.filePath(name);
}

// Ours --------------------------------------------------------------------

FullTextIndex &builtIndex()
{
    static FullTextIndex index;
    if (!index.isLoaded())
        require(index.build(pages()) && index.save(scratch(u"index"_s)), "cannot build the index");
    return index;
}

void build(benchmark::State &state)
{
    (void)pages();
    for (auto _ : state) {
        FullTextIndex index;
        require(index.build(pages()) && index.save(scratch(u"index"_s)), "cannot build the index");
    }
    state.counters["file_bytes"] = double(QFileInfo(scratch(u"index"_s)).size());
}

void load(benchmark::State &state)
{
    (void)builtIndex();
    for (auto _ : state) {
        FullTextIndex index;
        require(index.load(scratch(u"index"_s)), "cannot load the index");
    }
    state.counters["file_bytes"] = double(QFileInfo(scratch(u"index"_s)).size());
}

void query(benchmark::State &state, const QByteArray &text)
{
    const FullTextIndex &index = builtIndex();
    qsizetype found = 0;
    for (auto _ : state)
        found = index.search(QString::fromLatin1(text)).size();
    require(found > 0, "nothing found");
    state.counters["found"] = double(found);
}

// The peer ----------------------------------------------------------------

using Database = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;
using Statement = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

Database openDatabase(const QString &path)
{
    sqlite3 *database = nullptr;
    require(sqlite3_open(path.toLocal8Bit().constData(), &database) == SQLITE_OK, "cannot open the database");
    return {database, &sqlite3_close};
}

void execute(const Database &database, const char *sql)
{
    require(sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql);
}

Statement prepare(const Database &database, const char *sql)
{
    sqlite3_stmt *statement = nullptr;
    require(sqlite3_prepare_v2(database.get(), sql, -1, &statement, nullptr) == SQLITE_OK, sql);
    return {statement, &sqlite3_finalize};
}

void bindText(const Statement &statement, int position, const QByteArray &text)
{
    sqlite3_bind_text(statement.get(), position, text.constData(), int(text.size()), SQLITE_TRANSIENT);
}

QByteArray withoutTags(const QByteArray &html)
{
    QByteArray text;
    text.reserve(html.size());
    bool inTag = false;
    for (const char byte : html) {
        if (byte == '<')
            text += ' ';
        inTag = byte == '<' || (inTag && byte != '>');
        if (!inTag && byte != '>')
            text += byte;
    }
    return text;
}

/// It keeps, as ours does, how often a word occurs in a page, but neither places nor texts.
void buildDatabase()
{
    QFile::remove(scratch(u"peer"_s));
    const Database database = openDatabase(scratch(u"peer"_s));
    execute(database, "CREATE VIRTUAL TABLE pages USING fts5(text, content='', detail=none)");
    execute(database, "CREATE TABLE paths(id INTEGER PRIMARY KEY, path TEXT)");
    execute(database, "BEGIN");
    const Statement insertText = prepare(database, "INSERT INTO pages(rowid, text) VALUES(?, ?)");
    const Statement insertPath = prepare(database, "INSERT INTO paths(id, path) VALUES(?, ?)");
    int id = 0;
    for (const QFileInfo &file : QDir(pages()).entryInfoList({u"*.html"_s})) {
        ++id;
        for (const Statement *statement : {&insertText, &insertPath}) {
            sqlite3_reset(statement->get());
            sqlite3_bind_int(statement->get(), 1, id);
        }
        bindText(insertText, 2, withoutTags(readFile(file.filePath()).value_or(QByteArray())));
        bindText(insertPath, 2, file.filePath().toLocal8Bit());
        require(sqlite3_step(insertText.get()) == SQLITE_DONE && sqlite3_step(insertPath.get()) == SQLITE_DONE,
                "cannot insert");
    }
    execute(database, "COMMIT");
}

qsizetype matches(const Database &database, const QByteArray &text)
{
    const Statement select =
        prepare(database, "SELECT path FROM pages JOIN paths ON id = pages.rowid WHERE pages MATCH ? ORDER BY rank");
    bindText(select, 1, text);
    qsizetype found = 0;
    while (sqlite3_step(select.get()) == SQLITE_ROW)
        ++found;
    return found;
}

void buildPeer(benchmark::State &state)
{
    (void)pages();
    for (auto _ : state)
        buildDatabase();
    state.counters["file_bytes"] = double(QFileInfo(scratch(u"peer"_s)).size());
}

void ensureDatabase()
{
    if (!QFileInfo::exists(scratch(u"peer"_s)))
        buildDatabase();
}

void loadPeer(benchmark::State &state)
{
    ensureDatabase();
    for (auto _ : state)
        benchmark::DoNotOptimize(matches(openDatabase(scratch(u"peer"_s)), word(RareWord)));
}

void queryPeer(benchmark::State &state, const QByteArray &text)
{
    ensureDatabase();
    const Database database = openDatabase(scratch(u"peer"_s));
    qsizetype found = 0;
    for (auto _ : state)
        found = matches(database, text);
    require(found > 0, "nothing found");
    state.counters["found"] = double(found);
}

const QByteArray Rare = word(RareWord);
const QByteArray Both = word(FrequentWord) + ' ' + word(FrequentWord + 1);
const QByteArray Beginning = word(RareWord).first(2) + '*';

BENCHMARK(build)->Name("build and save")->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(buildPeer)->Name("build and save, peer: FTS5")->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(load)->Name("load")->Unit(benchmark::kMillisecond);
BENCHMARK(loadPeer)->Name("load, peer: FTS5, with a query")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, rare, Rare)->Name("query: rare word")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(queryPeer, rare, Rare)->Name("query: rare word, peer: FTS5")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(query, both, Both)->Name("query: two frequent words")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(queryPeer, both, Both)->Name("query: two frequent words, peer: FTS5")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(query, pattern, Beginning)->Name("query: wildcard, anywhere in words")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(queryPeer, pattern, Beginning)
    ->Name("query: wildcard, peer: FTS5, beginnings of words")
    ->Unit(benchmark::kMicrosecond);
} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
