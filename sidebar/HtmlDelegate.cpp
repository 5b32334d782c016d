#include "sidebar/HtmlDelegate.h"

#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QPainter>
#include <QtGui/QTextDocument>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

HtmlDelegate::HtmlDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

void HtmlDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    QStyleOptionViewItem options = option;
    initStyleOption(&options, index);

    QTextDocument document;
    document.setDocumentMargin(0);
    document.setDefaultFont(options.font);
    document.setHtml(options.text);

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

    QTextDocument document;
    document.setDocumentMargin(0);
    document.setDefaultFont(options.font);
    document.setHtml(options.text);
    // Rows are one line: laid out at the width of a view not yet shown, the text would wrap and
    // make every row as tall as the wrapped one.

    const QSize iconSize =
        options.features & QStyleOptionViewItem::HasDecoration ? options.decorationSize : QSize();
    const int height = qMax(static_cast<int>(document.size().height()), iconSize.height()) + 4;
    return QSize(static_cast<int>(document.idealWidth()) + iconSize.width() + 8, height);
}
