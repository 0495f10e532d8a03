#include "textfile.h"
#include <fcntl.h>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringConverter>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
QStringConverter::Encoding converterEncoding(TextFileFormat::Encoding encoding)
{
    switch (encoding) {
    case TextFileFormat::Utf16LE:
        return QStringConverter::Utf16LE;
    case TextFileFormat::Utf16BE:
        return QStringConverter::Utf16BE;
    case TextFileFormat::Latin1:
        return QStringConverter::Latin1;
    case TextFileFormat::Utf8:
        break;
    }
    return QStringConverter::Utf8;
}

QByteArrayView byteOrderMark(TextFileFormat::Encoding encoding)
{
    switch (encoding) {
    case TextFileFormat::Utf8:
        return "\xEF\xBB\xBF";
    case TextFileFormat::Utf16LE:
        return "\xFF\xFE";
    case TextFileFormat::Utf16BE:
        return "\xFE\xFF";
    case TextFileFormat::Latin1:
        break;
    }
    return {};
}

TextFileFormat detectFormat(const QByteArray &bytes)
{
    TextFileFormat format = newTextFileFormat();
    for (const auto encoding : {TextFileFormat::Utf8, TextFileFormat::Utf16LE, TextFileFormat::Utf16BE}) {
        if (bytes.startsWith(byteOrderMark(encoding))) {
            format.encoding = encoding;
            format.byteOrderMark = true;
            break;
        }
    }
    return format;
}

/// Whether decoded text encodes to the bytes that it came from.
bool keepsBytes(const QByteArray &bytes, qsizetype mark, const QString &text, TextFileFormat::Encoding encoding)
{
    if (encoding == TextFileFormat::Utf8)
        return true; // the decoder has found every fault
    QStringEncoder encoder(converterEncoding(encoding));
    return QByteArray(encoder(text)) == QByteArrayView(bytes).sliced(mark);
}

void normaliseLineEnds(QString &text, TextFileFormat &format)
{
    const qsizetype returns = text.count(u'\r');
    if (returns == 0) {
        format.crlf = format.crlf && !text.contains(u'\n');
        return;
    }
    const qsizetype pairs = text.count(u"\r\n"_s);
    const bool uniform = pairs == returns && pairs == text.count(u'\n');
    format.crlf = uniform || newTextFileFormat().crlf;
    text.replace(u"\r\n"_s, u"\n"_s);
    text.replace(u'\r', u'\n');
}
} // namespace

TextFileFormat newTextFileFormat()
{
    TextFileFormat format;
#ifdef Q_OS_WIN
    format.crlf = true;
#endif
    return format;
}

DecodedText decodeText(const QByteArray &bytes)
{
    DecodedText result;
    result.format = detectFormat(bytes);
    const qsizetype mark = result.format.byteOrderMark ? byteOrderMark(result.format.encoding).size() : 0;
    QStringDecoder decoder(converterEncoding(result.format.encoding),
                           QStringConverter::Flag::ConvertInitialBom | QStringConverter::Flag::Stateless);
    result.text = decoder(QByteArrayView(bytes).sliced(mark));
    if (decoder.hasError() || !keepsBytes(bytes, mark, result.text, result.format.encoding)) {
        result.format = newTextFileFormat();
        result.format.encoding = TextFileFormat::Latin1;
        result.text = QString::fromLatin1(bytes);
    }
    normaliseLineEnds(result.text, result.format);
    return result;
}

QByteArray encodeText(QStringView text, TextFileFormat &format)
{
    const auto beyondLatin1 = [](QChar c) { return c.unicode() > 0xFF; };
    if (format.encoding == TextFileFormat::Latin1 && std::any_of(text.begin(), text.end(), beyondLatin1))
        format.encoding = TextFileFormat::Utf8;
    QString withLineEnds;
    if (format.crlf) {
        withLineEnds = text.toString().replace(u'\n', u"\r\n"_s);
        text = withLineEnds;
    }
    QStringEncoder encoder(converterEncoding(format.encoding));
    QByteArray bytes;
    if (format.byteOrderMark)
        bytes += byteOrderMark(format.encoding);
    bytes += QByteArray(encoder(text));
    return bytes;
}

// Writing -----------------------------------------------------------------

namespace {
/// An open file descriptor, closed at the end of its life.
class FileDescriptor
{
public:
    explicit FileDescriptor(int fd) : m_fd(fd) {}
    ~FileDescriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Q_DISABLE_COPY_MOVE(FileDescriptor)
    operator int() const { return m_fd; }

private:
    int m_fd;
};

bool writeAll(int fd, const QByteArray &bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t written = ::pwrite(fd, bytes.constData() + done, size_t(bytes.size() - done), done);
        if (written < 0 && errno != EINTR)
            return false;
        done += std::max<ssize_t>(written, 0);
    }
    return true;
}

/// Overwrites an open file of @p oldSize bytes. What could not be written to the end is put back.
bool overwrite(const QString &path, int fd, qint64 oldSize, const QByteArray &bytes)
{
    QFile old(path);
    const QByteArray before = old.open(QIODevice::ReadOnly) ? old.readAll() : QByteArray();
    const bool hasRoom = bytes.size() <= oldSize || ::posix_fallocate(fd, 0, bytes.size()) == 0;
    if (hasRoom && writeAll(fd, bytes) && ::ftruncate(fd, bytes.size()) == 0 && ::fsync(fd) == 0)
        return true;
    if (before.size() == oldSize)
        writeAll(fd, before);
    [[maybe_unused]] const int ignored = ::ftruncate(fd, oldSize);
    return false;
}

bool writeInPlace(const QString &path, const QByteArray &bytes, const struct stat &status)
{
    const FileDescriptor fd(::open(QFile::encodeName(path).constData(), O_WRONLY | O_CLOEXEC));
    if (fd < 0)
        return false;
    if (!S_ISREG(status.st_mode))
        return ::write(fd, bytes.constData(), size_t(bytes.size())) == bytes.size();
    return overwrite(path, fd, status.st_size, bytes);
}

bool writeNewFile(const QString &path, const QByteArray &bytes)
{
    const QByteArray name = QFile::encodeName(path);
    const FileDescriptor fd(::open(name.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666));
    if (fd < 0)
        return false;
    if (writeAll(fd, bytes) && ::fsync(fd) == 0)
        return true;
    ::unlink(name.constData());
    return false;
}

bool copyAttributes(const QByteArray &from, int to)
{
    const ssize_t size = ::listxattr(from.constData(), nullptr, 0);
    if (size <= 0)
        return true; // none, or a file system without
    QByteArray names(size, '\0');
    if (::listxattr(from.constData(), names.data(), size_t(size)) != size)
        return false;
    for (const QByteArray &name : names.chopped(1).split('\0')) {
        QByteArray value(::getxattr(from.constData(), name.constData(), nullptr, 0) + 1, '\0');
        value.chop(1);
        if (::getxattr(from.constData(), name.constData(), value.data(), size_t(value.size())) != value.size()
            || ::fsetxattr(to, name.constData(), value.constData(), size_t(value.size()), 0) != 0)
            return false;
    }
    return true;
}

/// Makes the new file @p fd the equal of the one at @p path in all but its bytes.
bool takeOver(const QByteArray &path, const struct stat &status, int fd)
{
    struct stat own = {};
    if (::fstat(fd, &own) != 0)
        return false;
    const bool sameOwner = own.st_uid == status.st_uid && own.st_gid == status.st_gid;
    return (sameOwner || ::fchown(fd, status.st_uid, status.st_gid) == 0) && copyAttributes(path, fd)
           && ::fchmod(fd, status.st_mode & 07777) == 0;
}

enum class Beside { Done, Failed, NotAllowed };

Beside writeBeside(const QString &path, const QByteArray &bytes, const struct stat &status)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Beside::NotAllowed;
    if (!takeOver(QFile::encodeName(path), status, file.handle()))
        return Beside::NotAllowed;
    return file.write(bytes) == bytes.size() && file.commit() ? Beside::Done : Beside::Failed;
}
} // namespace

bool writeFileSafely(const QString &path, const QByteArray &bytes)
{
    const QFileInfo info(path);
    const QString target = info.isSymLink() && info.exists() ? info.canonicalFilePath() : path;
    const QByteArray name = QFile::encodeName(target);
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0)
        return writeNewFile(target, bytes);
    if (S_ISDIR(status.st_mode) || ::access(name.constData(), W_OK) != 0)
        return false; // a read-only file is not to be replaced behind its owner's back
    if (!S_ISREG(status.st_mode) || status.st_nlink > 1)
        return writeInPlace(target, bytes, status);
    const Beside result = writeBeside(target, bytes, status);
    return result == Beside::Done || (result == Beside::NotAllowed && writeInPlace(target, bytes, status));
}
