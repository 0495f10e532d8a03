#include "textprint.h"
#include <QPainter>
#include <QPrinter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

namespace {
constexpr int NumberDistance = 5; ///< pixels of the screen between text and page number

/// Fills pages with lines.
class Pages
{
public:
    Pages(const QTextDocument &document, QPrinter &printer)
        : m_printer(printer)
        , m_painter(&printer)
        , m_font(document.defaultFont(), &printer)
        , m_option(document.defaultTextOption())
        , m_body(QRectF(0, 0, printer.width(), printer.height())
                     .adjusted(printer.logicalDpiX(), printer.logicalDpiY(), -printer.logicalDpiX(),
                               -printer.logicalDpiY()))
        , m_y(m_body.top())
    {
        m_option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        m_painter.setFont(m_font);
        printNumber();
    }

    void printParagraph(const QString &text)
    {
        QTextLayout layout(text, m_font, &m_printer);
        layout.setTextOption(m_option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine())
            line.setLineWidth(m_body.width());
        layout.endLayout();
        for (int i = 0; i < layout.lineCount(); ++i)
            printLine(layout.lineAt(i));
    }

private:
    void printLine(const QTextLine &line)
    {
        if (m_y + line.height() > m_body.bottom()) {
            m_printer.newPage();
            ++m_page;
            m_y = m_body.top();
            printNumber();
        }
        line.draw(&m_painter, {m_body.left(), m_y - line.y()});
        m_y += line.height();
    }

    void printNumber()
    {
        const qreal distance = NumberDistance * m_printer.logicalDpiY() / 96.0;
        const QRectF foot(m_body.left(), m_body.bottom() + distance, m_body.width(), m_printer.logicalDpiY());
        m_painter.drawText(foot, Qt::AlignRight | Qt::AlignTop, QString::number(m_page));
    }

    QPrinter &m_printer;
    QPainter m_painter;
    const QFont m_font;
    QTextOption m_option;
    const QRectF m_body;
    qreal m_y;
    int m_page = 1;
};
} // namespace

void printText(const QTextDocument &document, QPrinter &printer)
{
    Pages pages(document, printer);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        pages.printParagraph(block.text());
}
