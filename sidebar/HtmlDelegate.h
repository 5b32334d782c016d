#pragma once

#include <QtCore/QCache>
#include <QtGui/QFont>
#include <QtGui/QTextDocument>
#include <QtWidgets/QStyledItemDelegate>

// Paints an item view's rows as rich text, so that a row can dim part of its text.
class HtmlDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit HtmlDelegate(QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    // The laid-out document of a row's text. A keystroke in a filtered list repaints mostly rows
    // it painted before, and parsing and laying out their rich text again was a fifth of its cost.
    QTextDocument* Document(const QString& html, const QFont& font) const;

    static constexpr int CACHED_DOCUMENT_COUNT = 256;
    mutable QCache<QString, QTextDocument> documents{CACHED_DOCUMENT_COUNT};
    mutable QFont documentsFont;
};
