#include "folderwalk.h"
#include <algorithm>
#include <dirent.h>
#include <memory>
#include <QByteArrayList>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <sys/stat.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
/// "*.*" means every file, with or without a dot.
bool isEveryFile(const QString &filter)
{
    return filter == u"*"_s || filter == u"*.*"_s;
}

QString joined(const QString &folder, const QString &name)
{
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

struct Folder
{
    QString name;
    bool isLink = false;
};
} // namespace

struct FolderWalk::Entries
{
    QByteArrayList files;
    QList<Folder> folders;

    void add(DIR *directory, const dirent &entry);
};

/// Most file systems say what an entry is, and nothing else has to be read of it.
void FolderWalk::Entries::add(DIR *directory, const dirent &entry)
{
    if (entry.d_name[0] == '.')
        return;
    auto type = entry.d_type;
    struct stat status = {};
    if (type == DT_LNK || type == DT_UNKNOWN) {
        if (::fstatat(::dirfd(directory), entry.d_name, &status, 0) != 0)
            return;
        type = S_ISREG(status.st_mode) ? DT_REG : S_ISDIR(status.st_mode) ? DT_DIR : DT_UNKNOWN;
    }
    if (type == DT_REG)
        files.append(entry.d_name);
    else if (type == DT_DIR)
        folders.append({QFile::decodeName(entry.d_name), entry.d_type != DT_DIR});
}

FolderWalk::FolderWalk(const QString &mask, bool recursive) : m_recursive(recursive)
{
    QStringList filters = QDir::nameFiltersFromString(mask);
    filters.removeAll(QString());
    if (std::ranges::any_of(filters, isEveryFile))
        return;
    for (const QString &filter : filters)
        m_filters.append(QRegularExpression::fromWildcard(filter, Qt::CaseInsensitive));
}

void FolderWalk::forEach(const QString &folder, const std::atomic<bool> &running, const Receiver &receive)
{
    visit(folder, QFileInfo(folder).canonicalFilePath(), running, receive);
}

bool FolderWalk::matches(const QByteArray &name) const
{
    if (m_filters.isEmpty())
        return true;
    const QString text = QFile::decodeName(name);
    const auto isMatch = [&text](const QRegularExpression &filter) { return filter.match(text).hasMatch(); };
    return std::ranges::any_of(m_filters, isMatch);
}

void FolderWalk::visit(const QString &folder, const QString &canonical, const std::atomic<bool> &running,
                       const Receiver &receive)
{
    if (!running || m_visited.contains(canonical))
        return;
    m_visited.insert(canonical);
    Entries entries;
    std::shared_ptr<const OpenFolder> open;
    if (DIR *directory = ::opendir(QFile::encodeName(folder).constData())) {
        open = std::make_shared<OpenFolder>(folder, ::dirfd(directory));
        const dirent *entry = nullptr;
        while (running && (entry = ::readdir(directory)))
            entries.add(directory, *entry);
        ::closedir(directory);
    } else {
        ++m_unreadable;
    }
    std::ranges::sort(entries.files);
    for (const QByteArray &name : std::as_const(entries.files)) {
        if (!running)
            return;
        if (matches(name))
            receive({open, name});
        else
            ++m_skipped;
    }
    open.reset(); // the files keep it as long as they need it
    if (!m_recursive)
        return;
    std::ranges::sort(entries.folders, {}, &Folder::name);
    for (const auto &[name, isLink] : std::as_const(entries.folders)) {
        const QString path = joined(folder, name);
        visit(path, isLink ? QFileInfo(path).canonicalFilePath() : joined(canonical, name), running, receive);
    }
}
