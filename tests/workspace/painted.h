#pragma once
#include "paragdata.h"
#include "syntaxhighlighter.h"
#include <QPlainTextDocumentLayout>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

/// Formats whose identifiers can be read back from highlighted text.
inline FormatTable readableFormats()
{
    FormatTable formats;
    for (int id = FormatId::Background; id <= FormatId::Label; ++id)
        formats[id].setFontPointSize(id + 1);
    return formats;
}

/// The format identifier of each character of @p block as a digit; a dot for none.
inline QString painted(const QTextBlock &block)
{
    QString digits(block.length() - 1, u'.');
    const QList<QTextLayout::FormatRange> ranges = block.layout()->formats();
    for (const QTextLayout::FormatRange &range : ranges) {
        const qsizetype length = std::min<qsizetype>(range.length, digits.size() - range.start);
        digits.replace(range.start, length, QString(length, QChar(u'0' + int(range.format.fontPointSize()) - 1)));
    }
    return digits;
}

/// The end state of @p block and then its brackets with their positions, such as "4 (0 )7".
inline QString stateAndBrackets(const QTextBlock &block)
{
    QString text = QString::number(block.userState());
    if (const ParagData *data = paragDataOf(block)) {
        for (const ParenEntry &entry : data->parenList)
            text += u' ' + QString(entry.character) + QString::number(entry.position);
    }
    return text;
}

/// The complete result of a highlighter for @p document.
inline QString painted(const QTextDocument &document)
{
    QString text;
    for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next())
        text += QStringLiteral("|%1\n|%2\n=%3\n").arg(block.text(), painted(block), stateAndBrackets(block));
    return text;
}

/// A document with the layout of the editor's documents.
inline std::unique_ptr<QTextDocument> plainDocument(const QString &text = {})
{
    auto document = std::make_unique<QTextDocument>();
    document->setDocumentLayout(new QPlainTextDocumentLayout(document.get()));
    document->setPlainText(text);
    return document;
}
