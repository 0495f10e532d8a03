#pragma once
#include "optionvalues.h"
#include <QDir>
#include <QList>
#include <QString>
#include <QTranslator>

/// Shows the texts of the program, its plug-ins and its product files in another language, while it exists.
class Translation : public QObject
{
public:
    /// Reads varnel_@p code.qm of @p directory. A file that is missing or damaged is reported on the warning channel,
    /// and the texts stay English; for an empty code they stay English without a report.
    Translation(const QDir &directory, const QString &code, QObject *parent = nullptr);

    [[nodiscard]] bool isLoaded() const { return !m_texts.isEmpty(); }

private:
    QTranslator m_texts;
    QTranslator m_toolkitTexts; ///< those of Qt's own dialogs; empty if Qt's translations are not installed
};

/// Where the files are: beside the folder of the configuration.
[[nodiscard]] QDir translationDirectory(const QDir &config);
/// English, then those for which @p directory has a file.
[[nodiscard]] QList<LanguageChoice> availableLanguages(const QDir &directory);
