#pragma once
#include <QLabel>
#include <QPointer>
class TextDocument;

/// How far the current text is loaded, in the status bar. Hidden unless a part of it is missing.
class LoadingLabel : public QLabel
{
    Q_OBJECT
public:
    explicit LoadingLabel(QWidget *parent);

    void setDocument(TextDocument *document); ///< Called once.

private:
    void refresh();

    QPointer<TextDocument> m_document;
};
