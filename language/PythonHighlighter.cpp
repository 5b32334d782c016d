#include "language/PythonHighlighter.h"

#include "editor/CodeEditorBlockData.h"
#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"

namespace
{
bool IsWordChar(char16_t c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_';
}

bool IsKeywordPartChar(char16_t c)
{
    return IsWordChar(c) || c == u'-' || c == u'$';
}

// A dotted path stays one piece, so that "os.open" alone is no builtin.
bool IsBuiltinPartChar(char16_t c)
{
    return IsWordChar(c) || c == u'.';
}
} // namespace

PythonHighlighter::PythonHighlighter(QTextDocument* document) : Highlighter(document)
{
    FetchWords();

    const QString open = QStringLiteral("(");
    rules.append(
        MakeRule(QStringLiteral(R"(\bself\b)"), ColorSettings::PYTHON_SELF_CLS, QStringLiteral("self")));
    rules.append(
        MakeRule(QStringLiteral(R"(\bcls\b)"), ColorSettings::PYTHON_SELF_CLS, QStringLiteral("cls")));
    rules.append(MakeRule(QStringLiteral(R"(\b[0-9]*[.]?[0-9]*)"), ColorSettings::PYTHON_NUMBERS, QString(),
                          QStringLiteral("0123456789.")));
    rules.append(MakeRule(QStringLiteral(R"((?<=\bclass)\s+[A-Za-z0-9_]+(?=\s*\())"),
                          ColorSettings::PYTHON_CLASSES, QStringLiteral("class"), open));
    rules.append(MakeRule(QStringLiteral(R"((?<=\bdef)\s+[A-Za-z0-9_]+(?=\s*\())"),
                          ColorSettings::PYTHON_METHODS, QStringLiteral("def"), open));
    rules.append(
        MakeRule(QStringLiteral(R"(^[\s]*[@](.)*)"), ColorSettings::PYTHON_DECORATORS, QStringLiteral("@")));
    earlyRules.append(
        MakeRule(QStringLiteral(R"(\b[A-Za-z0-9_]+(?=\s*\())"), ColorSettings::PYTHON_METHODS, open));

    // The order is a priority: three quotes beat one because their rules stand first.
    MultiLineHighlightingRule comment =
        MakeMultiLineRule(QStringLiteral("#"), EOL_PATTERN, ColorSettings::PYTHON_COMMENTS, 1);
    comment.singleLineComment = true;
    MultiLineHighlightingRule tripleDouble = MakeMultiLineRule(
        QStringLiteral("\"\"\""), QStringLiteral("\"\"\""), ColorSettings::PYTHON_DOC_STRINGS, 3);
    tripleDouble.escapable = true;
    MultiLineHighlightingRule tripleSingle =
        MakeMultiLineRule(QStringLiteral("'''"), QStringLiteral("'''"), ColorSettings::PYTHON_DOC_STRINGS, 3);
    tripleSingle.escapable = true;
    MultiLineHighlightingRule doubleQuoted =
        MakeMultiLineRule(QStringLiteral("\""), QStringLiteral("\""), ColorSettings::PYTHON_STRINGS, 1);
    doubleQuoted.continuesWithBackslash = true;
    doubleQuoted.escapable = true;
    MultiLineHighlightingRule singleQuoted =
        MakeMultiLineRule(QStringLiteral("'"), QStringLiteral("'"), ColorSettings::PYTHON_STRINGS, 1);
    singleQuoted.continuesWithBackslash = true;
    singleQuoted.escapable = true;
    multiLineRules = {comment, tripleDouble, tripleSingle, doubleQuoted, singleQuoted};
}

// The host is asked once per process; an empty answer is asked again by the next highlighter.
void PythonHighlighter::FetchWords()
{
    if (sPythonKeywords.isEmpty())
    {
        sPythonKeywords = MayaUtil::PythonKeywords();
        PythonKeywordIndex().SetWords(sPythonKeywords);
    }
    if (sPythonBuiltins.isEmpty())
    {
        sPythonBuiltins = MayaUtil::PythonBuiltins();
        PythonBuiltinIndex().SetWords(sPythonBuiltins);
    }
    if (sPythonMelCommands.isEmpty())
    {
        sPythonMelCommands = MayaUtil::MelCommands();
        PythonMelCommandIndex().SetWords(sPythonMelCommands);
    }
    if (!sPythonKeywordFormat)
        sPythonKeywordFormat = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::PYTHON_KEYWORDS, false);
    if (!sPythonBuiltinsFormat)
        sPythonBuiltinsFormat = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::PYTHON_BUILTINS, false);
    if (!sPythonMelCommandFormat)
        sPythonMelCommandFormat =
            ColorSettings::GetCodeEditorFormatPtr(ColorSettings::PYTHON_MEL_COMMANDS, false);
}

void PythonHighlighter::HighlightBuiltins(const QString& text)
{
    WordHits hits;
    ForEachPart(text, IsBuiltinPartChar,
                [&](int start, int length)
                {
                    const QStringView part = QStringView(text).mid(start, length);
                    if (PythonBuiltinIndex().Contains(part))
                        hits.append({part, sPythonBuiltinsFormat, WordPlacement::Anywhere});
                });
    FormatWordHits(text, hits);
}

void PythonHighlighter::HighlightKeywords(const QString& text)
{
    WordHits hits;
    ForEachPart(text, IsKeywordPartChar,
                [&](int start, int length)
                {
                    const QStringView part = QStringView(text).mid(start, length);
                    if (part.front() == u'$' || part.front() == u'-')
                        return;
                    if (PythonKeywordIndex().Contains(part))
                        hits.append({part, sPythonKeywordFormat, WordPlacement::Anywhere});
                    // Command names light up only as attributes of a module.
                    else if (PythonMelCommandIndex().Contains(part))
                        hits.append({part, sPythonMelCommandFormat, WordPlacement::AfterDot});
                });
    FormatWordHits(text, hits);
}

void PythonHighlighter::UpdateSmartIndentData(CodeEditorBlockData* data, QStringView segment)
{
    const QStringView trimmed = segment.trimmed();
    if (trimmed.isEmpty())
        return;
    const QChar last = trimmed.back();
    if (last == QLatin1Char(':') || last == QLatin1Char('(') || last == QLatin1Char('[') ||
        last == QLatin1Char('{'))
        data->SetSmartIndentCount(1);
}
