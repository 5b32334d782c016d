#pragma once

#include "language/AutoCompleter.h"

class QStandardItemModel;
class QTextBlock;

// Completes Python by asking the analysis script in the host's interpreter. The buffer is broken
// at the moment of completing, so the statement at the cursor is replaced by a locator statement
// that parses and tells the analysis where the cursor stands; empty blocks are repaired and
// exception blocks neutralised before the text is sent.
class PythonAutoCompleter : public AutoCompleter
{
    Q_OBJECT

public:
    explicit PythonAutoCompleter(QWidget* parent);

    void Update(const QTextCursor& cursor, const QRect& rect, bool autoApply) override;
    void UpdateModel() override;
    bool ValidateAndSetPrefix(QTextCursor cursor) override;
    Qt::CaseSensitivity GetCaseSensitivity() const override;
    void UpdatePython(QTextCursor cursor);

    QString GetObjectPath() const { return objectPath; }
    QString GetImportStatement() const { return importStatement; }
    bool IsImportContext() const { return isImportContext; }

    // The text sent for the cursor, before it is escaped; `namesOnly` tells whether keywords and
    // builtins stay out, as when a new name is being defined.
    QString BuildSource(const QTextCursor& cursor, bool& namesOnly) const;
    // Ready to stand between the double quotes of a Python literal.
    static QString EscapeForPython(const QString& text);

private:
    void ShowRows(const QRect& rect, bool autoApply);
    void NarrowVisibleRows();
    void SetImportForm(const QStringList& parts, const QString& lineText);
    void SetPlainPath(const QTextCursor& moved);
    QString ReplaceStatement(const QString& text, const QString& statement, const QString& indent, int start,
                             int end, int joinedLines, bool& namesOnly) const;
    static QString RepairEmptyBlocks(const QString& text);
    static QString NeutraliseExceptionBlocks(const QString& text);

    QStandardItemModel* itemModel = nullptr; // child
    QString objectPath;
    QString importStatement;
    bool isImportContext = false;
    int completionPosition = 0;
};
