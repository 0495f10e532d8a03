#include "translation.h"
#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
const auto Prefix = u"varnel_"_s;
const auto Suffix = u".qm"_s;

/// A code from the settings must not lead to a file elsewhere.
bool isLanguageCode(const QString &code)
{
    static const QRegularExpression pattern(u"\\A[A-Za-z]{2,3}(_[A-Za-z]{2,4})?\\z"_s);
    return pattern.match(code).hasMatch();
}

QString nameOf(const QString &code)
{
    const QString name = QLocale(code).nativeLanguageName();
    return name.isEmpty() ? code : name;
}
} // namespace

Translation::Translation(const QDir &directory, const QString &code, QObject *parent) : QObject(parent)
{
    if (code.isEmpty())
        return;
    const QString file = directory.filePath(Prefix + code + Suffix);
    if (!isLanguageCode(code) || !m_texts.load(file)) {
        qWarning("Translation: cannot read the texts of the language '%s' (%s)", qPrintable(code), qPrintable(file));
        return;
    }
    if (m_toolkitTexts.load(u"qtbase_"_s + code, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_toolkitTexts);
    QCoreApplication::installTranslator(&m_texts);
}

QDir translationDirectory(const QDir &config)
{
    return QDir(QDir::cleanPath(config.filePath(u"../translations"_s)));
}

QList<LanguageChoice> availableLanguages(const QDir &directory)
{
    QList<LanguageChoice> languages{{QString(), u"English"_s}};
    for (const QString &file : directory.entryList({Prefix + u'*' + Suffix}, QDir::Files, QDir::Name)) {
        const QString code = file.mid(Prefix.size()).chopped(Suffix.size());
        if (isLanguageCode(code))
            languages.append({code, nameOf(code)});
    }
    return languages;
}
