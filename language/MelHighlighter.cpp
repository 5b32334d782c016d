#include "language/MelHighlighter.h"

#include "editor/CodeEditorBlockData.h"
#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"

namespace
{
// Keywords and commands are looked up by the pieces between these characters; a dash or a
// dollar sign keeps "-flag" and "$variable" whole.
bool IsPartChar(char16_t c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_' ||
           c == u'-' || c == u'$';
}
} // namespace

MelHighlighter::MelHighlighter(QTextDocument* document) : Highlighter(document)
{
    FetchWords();

    rules.append(MakeRule(QStringLiteral(R"(\b[0-9]*[.]?[0-9]*)"), ColorSettings::MEL_NUMBERS, QString(),
                          QStringLiteral("0123456789.")));
    rules.append(MakeRule(QStringLiteral(R"((?<![A-Za-z0-9_])(\$)[A-Za-z0-9_]+)"),
                          ColorSettings::MEL_VARIABLES, QStringLiteral("$")));
    rules.append(MakeRule(QStringLiteral(R"((?<=\bproc)\s+[A-Za-z0-9_]+(?=\s*\())"), ColorSettings::MEL_PROCS,
                          QStringLiteral("proc"), QStringLiteral("(")));
    earlyRules.append(MakeRule(QStringLiteral(R"((?<![A-Za-z0-9_\-])[A-Za-z0-9_]+(?=\s*\())"),
                               ColorSettings::MEL_PROCS, QStringLiteral("(")));

    MultiLineHighlightingRule lineComment =
        MakeMultiLineRule(QStringLiteral("//"), EOL_PATTERN, ColorSettings::MEL_COMMENTS, 2);
    lineComment.singleLineComment = true;
    MultiLineHighlightingRule blockComment =
        MakeMultiLineRule(QStringLiteral(R"(/\*)"), QStringLiteral(R"(\*/)"), ColorSettings::MEL_COMMENTS, 2);
    blockComment.blockComment = true;
    MultiLineHighlightingRule string =
        MakeMultiLineRule(QStringLiteral("\""), QStringLiteral("\""), ColorSettings::MEL_STRINGS, 1);
    string.continuesWithBackslash = true;
    string.escapable = true;
    multiLineRules = {lineComment, blockComment, string};
}

// The host is asked once per process; procedures sourced later do not join the list.
void MelHighlighter::FetchWords()
{
    if (sMelKeywords.isEmpty())
    {
        sMelKeywords = MayaUtil::MelKeywords();
        MelKeywordIndex().SetWords(sMelKeywords);
    }
    if (sMelCommands.isEmpty())
    {
        sMelCommands = MayaUtil::MelCommands() + MayaUtil::MelRunTimeCommands() + MayaUtil::MelProcedures();
        MelCommandIndex().SetWords(sMelCommands);
    }
    if (!sMelKeywordFormat)
        sMelKeywordFormat = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MEL_KEYWORDS, false);
    if (!sMelCommandFormat)
        sMelCommandFormat = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MEL_COMMANDS, false);
}

void MelHighlighter::HighlightKeywords(const QString& text)
{
    WordHits hits;
    ForEachPart(text, IsPartChar,
                [&](int start, int length)
                {
                    const QStringView part = QStringView(text).mid(start, length);
                    if (part.front() == u'$' || part.front() == u'-')
                        return;
                    // A keyword is finished there and never looked up among the commands.
                    if (MelKeywordIndex().Contains(part))
                        hits.append({part, sMelKeywordFormat, WordPlacement::NotAfterDollarOrDash});
                    else if (MelCommandIndex().Contains(part))
                        hits.append({part, sMelCommandFormat, WordPlacement::NotAfterDollarOrDash});
                });
    FormatWordHits(text, hits);
}

void MelHighlighter::UpdateSmartIndentData(CodeEditorBlockData* data, QStringView segment)
{
    const QStringView trimmed = segment.trimmed();
    if (trimmed.endsWith(QLatin1Char('(')) || trimmed.endsWith(QLatin1Char('[')))
    {
        data->SetSmartIndentCount(1);
        return;
    }
    // All curly braces the block has so far: it can be negative.
    int count = 0;
    for (const CodeEditorBlockData::Entry& entry : data->GetBraces(QLatin1Char('{')))
        count += entry.delta;
    data->SetSmartIndentCount(count);
}
