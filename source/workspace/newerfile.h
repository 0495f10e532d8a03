#pragma once
class Document;
class QWidget;

// The files of open documents that other programs have written meanwhile.

/// Notes that the user knows of the present version of the file of @p document, so that there is no further question
/// about it.
void noteReported(Document *document);
/// Whether there is a newer version that the user does not know of.
[[nodiscard]] bool hasUnreportedFile(Document *document);

/// Whether @p document may be saved: if its file is newer, the user is asked.
[[nodiscard]] bool maySave(QWidget *parent, Document *document);
