#include "newerfile.h"
#include "document.h"
#include <QFileInfo>

namespace {
constexpr const char *ReportedTime = "reportedTime";

QDateTime fileTime(Document *document)
{
    return QFileInfo(document->filename()).lastModified();
}
} // namespace

void noteReported(Document *document)
{
    document->setProperty(ReportedTime, fileTime(document));
}

bool hasUnreportedFile(Document *document)
{
    return document->isNewerOnDisk() && document->property(ReportedTime).toDateTime() != fileTime(document);
}

/// The file is noted first: when the message gives the focus back, the window looks for changed files.
bool maySave(QWidget *parent, Document *document)
{
    if (!document->isNewerOnDisk())
        return true;
    noteReported(document);
    return mayOverwriteNewer(parent, document->filename());
}
