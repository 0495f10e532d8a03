#pragma once
#include "helphost.h"
#include <memory>
#include <QTextBrowser>

/// Shows an HTML file. Everything that the page names must be a regular file of limited size; nothing is loaded from a
/// network.
///
/// Links with "execute://" lose the two slashes, because what follows "//" in a URL is the name of a host, which is
/// converted to lower case.
class HelpBrowser : public QTextBrowser
{
    Q_OBJECT
public:
    static constexpr qint64 LargestPage = 1'000'000; ///< bytes
    static constexpr qint64 LargestPicture = 10'000'000;

    /// @p site outlives this object.
    explicit HelpBrowser(const HelpSite &site, QWidget *parent = nullptr);

    QVariant loadResource(int type, const QUrl &name) override;
    /// Reads the page again if the host would fill in something else now. The place in the page stays.
    void refresh();
    /// The page for a printer: in dark colours on white. It must not outlive this object.
    [[nodiscard]] std::unique_ptr<QTextDocument> forPaper();

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QString page(const QString &path) const;
    void updateStyle();
    void reloadHere();

    const HelpSite &m_site;
    QString m_page; ///< as HTML
};

/// The style sheet of pages in the colours of @p palette, which may be light or dark.
[[nodiscard]] QString helpStyleSheet(const QPalette &palette);
