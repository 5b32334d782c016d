#include "output/OutputArrivalBuffer.h"

void OutputArrivalBuffer::Append(const QString& more, int maximumBlockCount)
{
    text += more;
    lineFeeds += more.count(QLatin1Char('\n'));
    // Trimming at twice the cap keeps the cost of the scan below at a constant per line.
    if (maximumBlockCount <= 0 || lineFeeds < 2 * static_cast<qsizetype>(maximumBlockCount))
        return;
    const qsizetype start = SurvivingStart(text, lineFeeds, maximumBlockCount);
    text.remove(0, start);
    lineFeeds = maximumBlockCount - 1;
    replacesDocument = true;
}

QString OutputArrivalBuffer::Take()
{
    QString taken = std::move(text);
    Clear();
    return taken;
}

void OutputArrivalBuffer::Clear()
{
    text = QString();
    lineFeeds = 0;
    replacesDocument = false;
}

qsizetype OutputArrivalBuffer::SurvivingStart(const QString& text, qsizetype lineFeeds, int maximumBlockCount)
{
    if (maximumBlockCount <= 0 || lineFeeds < maximumBlockCount)
        return -1;
    // Appending n line feeds makes n new blocks, and the document keeps the last `cap` of them:
    // the text after line feed number n - cap + 1.
    qsizetype toSkip = lineFeeds - maximumBlockCount + 1;
    const QChar* data = text.constData();
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i)
    {
        if (data[i] == QLatin1Char('\n') && --toSkip == 0)
            return i + 1;
    }
    return size;
}
