#include "textprint.h"
#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QPrinter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

namespace {
constexpr int NumberDistance = 5; ///< pixels of the screen between text and page number

/// The page without its margins.
QRectF bodyOf(const QPrinter &printer)
{
    const QSizeF inch(printer.logicalDpiX(), printer.logicalDpiY());
    return QRectF(0, 0, printer.width(), printer.height())
        .adjusted(inch.width(), inch.height(), -inch.width(), -inch.height());
}

void drawNumber(QPainter &painter, const QRectF &body, int page, int dpi)
{
    const QRectF foot(body.left(), body.bottom() + NumberDistance * dpi / 96.0, body.width(), dpi);
    painter.drawText(foot, Qt::AlignRight | Qt::AlignTop, QString::number(page));
}

/// Fills pages with lines.
class Pages
{
public:
    Pages(const QTextDocument &document, QPrinter &printer)
        : m_printer(printer)
        , m_painter(&printer)
        , m_font(document.defaultFont(), &printer)
        , m_option(document.defaultTextOption())
        , m_body(bodyOf(printer))
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

    void printNumber() { drawNumber(m_painter, m_body, m_page, m_printer.logicalDpiY()); }

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

void printRichText(QTextDocument &document, const QFont &font, QPrinter &printer)
{
    const QRectF body = bodyOf(printer);
    document.documentLayout()->setPaintDevice(&printer);
    document.setDefaultFont(font);
    document.setDocumentMargin(0);
    document.setPageSize(body.size());
    QPainter painter(&printer);
    painter.setFont(QFont(font, &printer));
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black); // on paper, with any theme
    for (int page = 0; page < document.pageCount(); ++page) {
        if (page > 0)
            printer.newPage();
        context.clip = QRectF(0, page * body.height(), body.width(), body.height());
        painter.save();
        painter.translate(body.left(), body.top() - context.clip.top());
        painter.setClipRect(context.clip);
        document.documentLayout()->draw(&painter, context);
        painter.restore();
        drawNumber(painter, body, page + 1, printer.logicalDpiY());
    }
}
