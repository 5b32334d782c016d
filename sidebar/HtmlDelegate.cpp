#include "sidebar/HtmlDelegate.h"

#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

HtmlDelegate::HtmlDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

QTextDocument* HtmlDelegate::Document(const QString& html, const QFont& font) const
{
    if (font != documentsFont)
    {
        documents.clear();
        documentsFont = font;
    }
    if (QTextDocument* cached = documents.object(html))
        return cached;
    auto* document = new QTextDocument;
    document->setDocumentMargin(0);
    document->setDefaultFont(font);
    document->setHtml(html);
    documents.insert(html, document);
    return document;
}

void HtmlDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    QStyleOptionViewItem options = option;
    initStyleOption(&options, index);

    const QTextDocument& document = *Document(options.text, options.font);

    // The style draws the selection and the icon; the text is ours.
    options.text = QString();
    QStyle* style = options.widget ? options.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &options, painter, options.widget);

    const QRect textRect = style->subElementRect(QStyle::SE_ItemViewItemText, &options, options.widget);
    QAbstractTextDocumentLayout::PaintContext context;
    const bool selected = options.state & QStyle::State_Selected;
    const QPalette::ColorGroup group =
        options.state & QStyle::State_Enabled ? QPalette::Normal : QPalette::Disabled;
    context.palette.setColor(
        QPalette::Text, options.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));

    painter->save();
    // Centre the one line of text in the row, as the style would place plain text.
    const int offset = qMax(0, (textRect.height() - static_cast<int>(document.size().height())) / 2);
    painter->translate(textRect.topLeft() + QPoint(0, offset));
    painter->setClipRect(textRect.translated(-textRect.topLeft() - QPoint(0, offset)));
    context.clip = QRectF(0, 0, textRect.width(), textRect.height());
    document.documentLayout()->draw(painter, context);
    painter->restore();
}

QSize HtmlDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem options = option;
    initStyleOption(&options, index);

    const QTextDocument& document = *Document(options.text, options.font);
    // Rows are one line: laid out at the width of a view not yet shown, the text would wrap and
    // make every row as tall as the wrapped one.

    const QSize iconSize =
        options.features & QStyleOptionViewItem::HasDecoration ? options.decorationSize : QSize();
    const int height = qMax(static_cast<int>(document.size().height()), iconSize.height()) + 4;
    return QSize(static_cast<int>(document.idealWidth()) + iconSize.width() + 8, height);
}
